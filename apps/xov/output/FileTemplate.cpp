#include "apps/xov/output/FileTemplate.h"

#include <QHash>
#include <QSet>

#include <utility>

namespace xov::cli {

namespace {

constexpr QChar kOpen = u'{';
constexpr QChar kClose = u'}';
constexpr QChar kReplacement = u'_';

bool mayBeginName(QChar c) { return c != u'.' && c != u'-'; }

QString safeValue(const QString& value) {
  QString safe = value.left(FileTemplate::kLongestValue);
  for (QChar& c : safe) {
    if (!c.isLetterOrNumber() && !QStringView(u"._-+").contains(c)) c = kReplacement;
  }
  return safe;
}

// "{a}, {b} and {c}"
QString listOf(const QStringList& fields) {
  QStringList inBraces;
  for (const QString& field : fields)
    inBraces.append(kOpen + field + kClose);
  return inBraces.join(QStringLiteral(", "));
}

QString digitsOf(std::size_t number, int digits) {
  return QStringLiteral("%1").arg(qulonglong(number), digits, 10, QLatin1Char('0'));
}

} // namespace

Result<FileTemplate> FileTemplate::parse(const QString& text, const QStringList& known) {
  FileTemplate result;
  QString literal;
  for (qsizetype at = 0; at < text.size(); ++at) {
    const bool isBrace = text[at] == kOpen || text[at] == kClose;
    if (isBrace && at + 1 < text.size() && text[at + 1] == text[at])
      ++at; // one of two
    else if (text[at] == kOpen) {
      const qsizetype end = text.indexOf(kClose, at);
      const QString name = text.mid(at + 1, end - at - 1);
      if (end < 0 || !known.contains(name))
        return Error{QStringLiteral("found '%1' in the file name, expected %2; '{{' is a brace")
                         .arg(end < 0 ? text.mid(at) : text.mid(at, end - at + 1), listOf(known))};
      if (!literal.isEmpty()) result.parts_.push_back({std::exchange(literal, {}), false});
      result.parts_.push_back({name, true});
      at = end;
      continue;
    }
    literal += text[at];
  }
  if (!literal.isEmpty()) result.parts_.push_back({literal, false});
  return result;
}

QString FileTemplate::filledWith(const NameFields& fields) const {
  QString name;
  for (const Part& part : parts_) {
    if (!part.isField) {
      name += part.text;
      continue;
    }
    const auto field = fields.find(part.text);
    QString value = field == fields.end() ? QString() : safeValue(field->second);
    const bool begins = name.isEmpty() || name.endsWith(u'/');
    if (begins && value.isEmpty()) value = kReplacement;
    if (begins && !mayBeginName(value[0])) value[0] = kReplacement;
    name += value;
  }
  return name;
}

QString numberedName(const QString& name, std::size_t number, int digits) {
  const qsizetype end = name.lastIndexOf(u'.');
  return name.left(end) + kReplacement + digitsOf(number, digits) + name.mid(end);
}

QString pageNumber(std::size_t number, std::size_t largest) {
  return digitsOf(number, int(QString::number(qulonglong(largest)).size()));
}

Result<std::vector<PageFile>> filesOfPages(const QStringList& names, bool sharing) {
  std::vector<PageFile> groups; // pages of the same name
  QHash<QString, std::size_t> groupOf;
  for (qsizetype page = 0; page < names.size(); ++page) {
    const auto known = groupOf.constFind(names[page]);
    const std::size_t group = known == groupOf.cend() ? groups.size() : *known;
    if (group == groups.size()) {
      groups.push_back({names[page], {}});
      groupOf.insert(names[page], group);
    }
    groups[group].pages.push_back(std::size_t(page));
  }
  if (sharing || groups.size() == std::size_t(names.size())) return groups;
  std::vector<PageFile> files(std::size_t(names.size()));
  QSet<QString> used;
  for (const PageFile& group : groups) {
    for (std::size_t i = 0; i < group.pages.size(); ++i) {
      const int digits = int(QString::number(group.pages.size()).size());
      const QString name = group.pages.size() == 1 ? group.name : numberedName(group.name, i + 1, digits);
      if (used.contains(name)) return Error{name + QStringLiteral(": two pages would be written to this file")};
      used.insert(name);
      files[group.pages[i]] = {name, {group.pages[i]}};
    }
  }
  return files;
}

} // namespace xov::cli
