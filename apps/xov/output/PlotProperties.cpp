#include "apps/xov/output/PlotProperties.h"

#include <QColor>
#include <QDateTime>
#include <QLocale>
#include <QMetaEnum>

#include <algorithm>
#include <cmath>
#include <optional>

namespace xov::cli {

namespace {

constexpr std::size_t kNumbersOfPart = 5;
constexpr const char* kNotOfPlots[] = {"exportPixelRatio", "mouseTrackInterval", "showZoomRect", "trackMouse"};

Error expected(const QString& found, const QString& what) {
  return {QStringLiteral("found '%1', expected %2").arg(found, what)};
}

Result<QVariant> booleanOf(const QString& text) {
  if (text == QLatin1String("true")) return QVariant(true);
  if (text == QLatin1String("false")) return QVariant(false);
  return expected(text, QStringLiteral("true or false"));
}

Result<QVariant> wholeNumberOf(const QString& text) {
  bool isNumber = false;
  const int number = QLocale::c().toInt(text, &isNumber);
  return isNumber ? Result<QVariant>(QVariant(number)) : expected(text, QStringLiteral("a whole number"));
}

Result<QVariant> numberOf(const QString& text) {
  bool isNumber = false;
  const double number = QLocale::c().toDouble(text, &isNumber);
  return isNumber && std::isfinite(number) ? Result<QVariant>(QVariant(number))
                                           : expected(text, QStringLiteral("a number"));
}

Result<QVariant> colorOf(const QString& text) {
  const QColor color(text);
  if (text.isEmpty() || color.isValid()) return QVariant(color);
  return expected(text, QStringLiteral("a colour as red or #d55e00"));
}

Result<QVariant> momentOf(const QString& text) {
  const QDateTime moment = QDateTime::fromString(text, Qt::ISODateWithMs);
  if (text.isEmpty() || moment.isValid()) return QVariant(moment.toUTC());
  return expected(text, QStringLiteral("a time as 2011-03-11T05:46:24Z"));
}

Result<QVariant> enumeratorOf(const QMetaEnum& names, const QString& text) {
  bool isName = false;
  const int value = names.keyToValue(text.toLatin1().constData(), &isName);
  if (isName) return QVariant(value);
  QStringList known;
  for (int i = 0; i < names.keyCount(); ++i)
    known.append(QLatin1String(names.key(i)));
  return expected(text, known.join(QStringLiteral(", ")));
}

Status showPart(XOVView& view, const QString& text) {
  std::vector<double> numbers;
  for (const QString& word : text.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
    const Result<QVariant> number = numberOf(word);
    if (!number) return Error{number.error()};
    numbers.push_back(number->toDouble());
  }
  if (!numbers.empty() && numbers.size() != kNumbersOfPart)
    return expected(text, QStringLiteral("the ends of x and of y and a gain, as 0 60 -1 1 2"));
  // What the whole is, many a view computes when it draws.
  view.pictureOfRect(QRectF(0, 0, 1, 1));
  if (numbers.empty())
    view.showPart({});
  else
    view.showPart(PlotPart{{numbers[0], numbers[1]}, {numbers[2], numbers[3]}, numbers[4]});
  return {};
}

} // namespace

std::vector<QMetaProperty> plotProperties(const XOVView& view) {
  std::vector<QMetaProperty> properties;
  const QMetaObject& type = *view.metaObject();
  for (int i = View::staticMetaObject.propertyOffset(); i < type.propertyCount(); ++i) {
    const QMetaProperty property = type.property(i);
    const auto isSame = [&property](const char* name) { return qstrcmp(property.name(), name) == 0; };
    if (property.isWritable() && std::ranges::none_of(kNotOfPlots, isSame)) properties.push_back(property);
  }
  return properties;
}

QString plotPropertyText(const QMetaProperty& property, const QVariant& value) {
  if (property.isEnumType()) return QLatin1String(property.enumerator().valueToKey(value.toInt()));
  switch (property.typeId()) {
  case QMetaType::Bool:
    return value.toBool() ? QStringLiteral("true") : QStringLiteral("false");
  case QMetaType::Double:
    return QString::number(value.toDouble(), 'g', QLocale::FloatingPointShortest);
  case QMetaType::QColor: {
    const auto color = value.value<QColor>();
    if (!color.isValid()) return {};
    return color.name(color.alpha() == 255 ? QColor::HexRgb : QColor::HexArgb);
  }
  case QMetaType::QDateTime:
    return value.toDateTime().toUTC().toString(Qt::ISODateWithMs);
  default:
    return value.toString();
  }
}

Result<QVariant> plotPropertyValue(const QMetaProperty& property, const QString& text) {
  if (property.isEnumType()) return enumeratorOf(property.enumerator(), text);
  switch (property.typeId()) {
  case QMetaType::Bool:
    return booleanOf(text);
  case QMetaType::Int:
    return wholeNumberOf(text);
  case QMetaType::Double:
    return numberOf(text);
  case QMetaType::QColor:
    return colorOf(text);
  case QMetaType::QDateTime:
    return momentOf(text);
  default:
    return QVariant(text);
  }
}

QString shownPartText(const XOVView& view) {
  const std::optional<PlotPart>& part = view.shownPart();
  if (!part) return {};
  QStringList numbers;
  for (const double number : {part->x.lower, part->x.upper, part->y.lower, part->y.upper, part->gain})
    numbers.append(QString::number(number, 'g', QLocale::FloatingPointShortest));
  return numbers.join(QLatin1Char(' '));
}

Status setPlotProperty(XOVView& view, const QString& assignment) {
  const QString name = assignment.section(QLatin1Char('='), 0, 0);
  if (name == QLatin1String(kShownPart)) {
    const Status shown = showPart(view, assignment.section(QLatin1Char('='), 1));
    return shown ? Status() : Status(Error{name + QStringLiteral(": ") + shown.error()});
  }
  const std::vector<QMetaProperty> properties = plotProperties(view);
  const auto property = std::ranges::find_if(
      properties, [&name](const QMetaProperty& candidate) { return name == QLatin1String(candidate.name()); });
  if (property == properties.end()) {
    QStringList names;
    for (const QMetaProperty& candidate : properties)
      names.append(QLatin1String(candidate.name()));
    return expected(name, QStringLiteral("one of ") + names.join(QStringLiteral(", ")));
  }
  const Result<QVariant> value = plotPropertyValue(*property, assignment.section(QLatin1Char('='), 1));
  if (!value) return Error{name + QStringLiteral(": ") + value.error()};
  property->write(&view, *value);
  return {};
}

} // namespace xov::cli
