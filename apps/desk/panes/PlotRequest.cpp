#include "apps/desk/panes/PlotRequest.h"

#include "apps/desk/processing/ProcessingSteps.h"
#include "apps/xov/output/PlotProperties.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QJsonArray>
#include <QRegularExpression>
#include <QSize>

namespace xov::desk {

namespace {

constexpr char kKind[] = "kind";
constexpr char kOptions[] = "options";
constexpr char kSteps[] = "steps";
constexpr char kProperties[] = "properties";
constexpr char kFiles[] = "files";
constexpr char kRaw[] = "raw";

QStringList textsOf(const QJsonValue& value) {
  QStringList texts;
  const QJsonArray array = value.toArray();
  for (const auto& item : array) {
    if (item.isString()) texts.append(item.toString());
  }
  return texts;
}

} // namespace

QStringList PlotRequest::words() const {
  QStringList words{kind};
  words += options;
  if (!isRaw) {
    for (const QStringList& step : wordsOf(listOfKept(steps)))
      words += step;
  }
  for (const QString& assignment : assignments())
    words += {QStringLiteral("--set"), assignment};
  if (!files.isEmpty()) words += QStringLiteral("--");
  return words + files;
}

// Properties that are set end a part.
QStringList PlotRequest::assignments() const {
  QStringList list;
  QStringList part;
  for (auto property = properties.cbegin(); property != properties.cend(); ++property) {
    const bool isPart = property.key() == QLatin1String(cli::kShownPart);
    (isPart ? part : list).append(property.key() + QLatin1Char('=') + property.value());
  }
  return list + part;
}

PlotRequest PlotRequest::withoutProperties() const {
  PlotRequest request = *this;
  request.properties.clear();
  return request;
}

QString PlotRequest::commandLine(const QSize& size) const {
  QStringList line = words();
  line.insert(1, QStringLiteral("--size"));
  line.insert(2, QString::number(size.width()));
  line.insert(3, QString::number(size.height()));
  for (QString& word : line)
    word = shellWord(word);
  return QStringLiteral("xov ") + line.join(QLatin1Char(' '));
}

QString filesText(const QStringList& files) {
  if (files.isEmpty()) return {};
  const QString first = QFileInfo(files.front()).fileName();
  if (files.size() == 1) return first;
  return QCoreApplication::translate("PlotRequest", "%1 and %n more", nullptr, int(files.size() - 1)).arg(first);
}

QJsonObject PlotRequest::toJson() const {
  QJsonArray stepArray;
  for (const QStringList& step : steps)
    stepArray.append(QJsonArray::fromStringList(step));
  QJsonObject propertyObject;
  for (auto property = properties.cbegin(); property != properties.cend(); ++property)
    propertyObject[property.key()] = property.value();
  return {{QLatin1String(kKind), kind},
          {QLatin1String(kOptions), QJsonArray::fromStringList(options)},
          {QLatin1String(kSteps), stepArray},
          {QLatin1String(kProperties), propertyObject},
          {QLatin1String(kFiles), QJsonArray::fromStringList(files)},
          {QLatin1String(kRaw), isRaw}};
}

PlotRequest PlotRequest::fromJson(const QJsonObject& object) {
  PlotRequest request;
  request.kind = object[QLatin1String(kKind)].toString();
  request.options = textsOf(object[QLatin1String(kOptions)]);
  request.files = textsOf(object[QLatin1String(kFiles)]);
  request.isRaw = object[QLatin1String(kRaw)].toBool();
  const QJsonArray stepArray = object[QLatin1String(kSteps)].toArray();
  for (const auto& step : stepArray)
    request.steps.append(textsOf(step));
  const QJsonObject propertyObject = object[QLatin1String(kProperties)].toObject();
  for (auto property = propertyObject.begin(); property != propertyObject.end(); ++property)
    request.properties[property.key()] = property.value().toString();
  return request;
}

QString shellWord(const QString& text) {
  static const QRegularExpression plain(QStringLiteral("^[A-Za-z0-9_@%+=:,./-]+$"));
  if (plain.match(text).hasMatch()) return text;
  return QLatin1Char('\'') + QString(text).replace(QLatin1Char('\''), QStringLiteral("'\\''")) + QLatin1Char('\'');
}

} // namespace xov::desk
