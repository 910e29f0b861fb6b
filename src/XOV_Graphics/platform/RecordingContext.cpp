#include "XOV_Graphics/platform/RecordingContext.h"

#include "XOV_Graphics/platform/trace/TraceLobes.h"

#include <QtMath>

#include <algorithm>
#include <cmath>
#include <cstring>

namespace xov {

namespace {

QString number(double value) {
  QString text = QString::number(value, 'f', 3);
  while (text.endsWith(QLatin1Char('0')))
    text.chop(1);
  if (text.endsWith(QLatin1Char('.'))) text.chop(1);
  return text == QLatin1String("-0") ? QStringLiteral("0") : text;
}

QString pointText(QPointF point) { return QStringLiteral("(%1,%2)").arg(number(point.x()), number(point.y())); }

QString rectText(const QRectF& rect) {
  return QStringLiteral("[%1,%2 %3x%4]")
      .arg(number(rect.x()), number(rect.y()), number(rect.width()), number(rect.height()));
}

QString polylinesText(const Path& path) {
  QStringList lines;
  for (const QPolygonF& line : path.polylines()) {
    QStringList points;
    for (const QPointF& point : line)
      points << pointText(point);
    lines << points.join(QLatin1Char('-'));
  }
  return lines.join(QLatin1Char(' '));
}

QString capText(Path::Cap cap) {
  switch (cap) {
  case Path::Cap::Round:
    return QStringLiteral(" cap=round");
  case Path::Cap::Square:
    return QStringLiteral(" cap=square");
  case Path::Cap::Butt:
    break;
  }
  return {};
}

QString strokeText(const Path& path) {
  QString text = QStringLiteral(" w=%1").arg(number(path.lineWidth())) + capText(path.lineCap());
  if (path.dashes().empty()) return text;
  QStringList dashes;
  for (double length : path.dashes())
    dashes << number(length);
  return text + QStringLiteral(" dash=%1+%2").arg(dashes.join(QLatin1Char(',')), number(path.dashPhase()));
}

// What fills of traces cover that are not closed from end to end; that of the first stands for all.
QString areaText(const Path& path) {
  if (path.traces().empty() || path.traces().front().area == TraceArea::Enclosed) return {};
  const Trace& trace = path.traces().front();
  const auto side = trace.area == TraceArea::AboveLevel ? QLatin1String("above") : QLatin1String("below");
  return QStringLiteral(" %1=%2").arg(side, number(double(trace.level)));
}

QString colorText(const QColor& color) {
  if (!color.isValid()) return QStringLiteral("none");
  return color.name(color.alpha() == 255 ? QColor::HexRgb : QColor::HexArgb);
}

QString lookText(const SymbolLook& look) {
  const QString often = look.strokes == 1 ? QString() : QStringLiteral(" strokes=%1").arg(look.strokes);
  return QStringLiteral(" %1 %2 w=%3 r=%4")
             .arg(colorText(look.fill), colorText(look.stroke), number(look.lineWidth), number(look.radius)) +
         often;
}

QString symbolsText(const RecordedItem& item) {
  const Symbols& symbols = item.symbols;
  const QString clipped = item.clip ? QStringLiteral(" clip=") + rectText(*item.clip) : QString();
  const bool alike = symbols.looks == nullptr;
  QString text = QStringLiteral("symbols") + (alike ? lookText(symbols) : QString()) + clipped;
  for (std::int64_t i = symbols.first; i < symbols.last; ++i) {
    const auto center = symbols.center(i);
    if (!center) continue;
    text += (alike ? QString() : lookText(symbols.look(i))) + QLatin1Char(' ') + pointText(*center);
  }
  return text;
}

// Where element 0 would stand if element `first` stood at `data`: traces count from there whatever part of them is
// kept. By way of a number, since a pointer must not point before what it points into.
template <typename T>
const T* elementZero(const T* data, std::int64_t first) {
  const auto place = reinterpret_cast<std::uintptr_t>(data) - std::uintptr_t(first) * sizeof(T);
  return reinterpret_cast<const T*>(place); // NOLINT(performance-no-int-to-ptr)
}

// Turned traces are spelled out as lines, of which nobody knows any more where their lobes were.
Path withLobesSpelledOut(const Path& path) {
  QPainterPath shape = path.shape();
  std::vector<Trace> enclosed;
  for (const Trace& trace : path.traces()) {
    if (trace.area == TraceArea::Enclosed) {
      enclosed.push_back(trace);
      continue;
    }
    Path alone;
    alone.appendTrace(trace);
    const bool upwards = (trace.area == TraceArea::AboveLevel) == (trace.yScale > 0);
    std::vector<QPolygonF> lobes;
    for (const QPolygonF& line : alone.polylines())
      appendLobes(line, trace.yOf(trace.level), upwards ? LobeSide::Above : LobeSide::Below, lobes);
    for (const QPolygonF& lobe : lobes)
      shape.addPolygon(lobe);
  }
  Path result = Path::fromShape(shape);
  result.setWindingRule(path.windingRule());
  for (const Trace& trace : enclosed)
    result.appendTrace(trace);
  return result;
}

} // namespace

std::vector<RecordedItem> RecordedItem::steps() const {
  if (kind != Kind::Symbols) return {*this};
  std::vector<RecordedItem> steps;
  RecordedItem step;
  step.clip = clip;
  step.clipPath = clipPath;
  for (std::int64_t i = symbols.first; i < symbols.last; ++i) {
    const auto center = symbols.center(i);
    if (!center) continue;
    const SymbolLook& look = symbols.look(i);
    step.path = look.circle(*center);
    step.kind = Kind::Fill;
    step.color = look.fill;
    if (look.fill.isValid()) steps.push_back(step);
    step.kind = Kind::Stroke;
    step.color = look.stroke;
    for (int stroke = 0; look.hasOutline() && stroke < look.strokes; ++stroke)
      steps.push_back(step);
  }
  return steps;
}

std::vector<QLineF> RecordedItem::segments() const {
  std::vector<QLineF> segments;
  for (const QPolygonF& line : path.polylines()) {
    for (qsizetype i = 1; i < line.size(); ++i)
      segments.emplace_back(line[i - 1], line[i]);
  }
  return segments;
}

QString RecordedItem::toText() const {
  const QString ink = color.name(color.alpha() == 255 ? QColor::HexRgb : QColor::HexArgb);
  const QString clipped = clip ? QStringLiteral(" clip=") + rectText(*clip) : QString();
  switch (kind) {
  case Kind::Stroke:
    return QStringLiteral("stroke %1%2%3 %4").arg(ink, strokeText(path), clipped, polylinesText(path));
  case Kind::Fill:
    return QStringLiteral("fill %1%2%3 %4").arg(ink, areaText(path), clipped, polylinesText(path));
  case Kind::Text: {
    QString line = QStringLiteral("text %1 %2 %3%4 at %5")
                       .arg(ink, attributes.family(), number(attributes.pointSize()), clipped, pointText(position));
    if (angleDegrees != 0) line += QStringLiteral(" angle=%1").arg(number(angleDegrees));
    QString quoted = text;
    quoted.replace(QLatin1Char('\n'), QLatin1String("\\n"));
    return line + QStringLiteral(" \"%1\"").arg(quoted);
  }
  case Kind::Symbols:
    return symbolsText(*this);
  case Kind::Image:
    break;
  }
  return QStringLiteral("image %1x%2%3 part %4 at %5 fraction=%6")
      .arg(QString::number(image.width()), QString::number(image.height()), clipped, rectText(source),
           rectText(target), number(fraction));
}

RecordingContext::~RecordingContext() = default;

std::vector<RecordedItem> RecordingContext::itemsOf(RecordedItem::Kind kind) const {
  std::vector<RecordedItem> found;
  const auto isWanted = [kind](const RecordedItem& item) { return item.kind == kind; };
  for (const RecordedItem& item : items_) {
    if (isWanted(item)) found.push_back(item);
    if (item.kind != RecordedItem::Kind::Symbols) continue;
    const std::vector<RecordedItem> steps = item.steps();
    std::copy_if(steps.begin(), steps.end(), std::back_inserter(found), isWanted);
  }
  return found;
}

QStringList RecordingContext::strings() const {
  QStringList strings;
  for (const RecordedItem& item : texts())
    strings << item.text;
  return strings;
}

std::optional<RecordedItem> RecordingContext::textReading(const QString& text) const {
  const auto found = std::find_if(items_.begin(), items_.end(), [&](const RecordedItem& item) {
    return item.kind == RecordedItem::Kind::Text && item.text == text;
  });
  return found == items_.end() ? std::nullopt : std::optional(*found);
}

QString RecordingContext::toText() const {
  QString text;
  for (const RecordedItem& item : items_)
    text += item.toText() + QLatin1Char('\n');
  return text;
}

void RecordingContext::clear() {
  items_.clear();
  numbers_.clear();
}

RecordedItem& RecordingContext::add(RecordedItem::Kind kind) {
  RecordedItem& item = items_.emplace_back();
  item.kind = kind;
  item.color = kind == RecordedItem::Kind::Fill ? state().fillColor : state().strokeColor;
  item.clip = state().clipRect;
  if (!state().clipIsRect) item.clipPath = state().clipPath;
  return item;
}

// Keeps the numbers first to last for an item, and returns where number 0 would stand. What stood at the same place
// and is still the same is kept already.
const float* RecordingContext::keepNumbers(RecordedItem& item, const float* numbers, std::int64_t first,
                                           std::int64_t last) {
  const float* const begin = numbers + first;
  const float* const end = numbers + last;
  const auto sameBytes = [&](const std::vector<float>& copy) {
    const std::size_t bytes = copy.size() * sizeof(float);
    return copy.size() == std::size_t(last - first) && std::memcmp(copy.data(), begin, bytes) == 0; // NaN included
  };
  const auto [from, to] = numbers_.equal_range(begin);
  const auto known = std::find_if(from, to, [&](const auto& entry) { return sameBytes(*entry.second); });
  const auto copy = known != to ? known->second : std::make_shared<const std::vector<float>>(begin, end);
  if (known == to) numbers_.emplace(begin, copy);
  item.kept.push_back(copy);
  return elementZero(copy->data(), first);
}

void RecordingContext::keep(RecordedItem& item, const Path& path) {
  item.path = path.transformed(state().transform);
  std::vector<Trace> traces = item.path.traces();
  item.path.removeTraces();
  for (Trace& trace : traces) {
    const HeldSamples held = trace.held(trace.first, trace.last);
    trace.borrow({keepNumbers(item, trace.samples, trace.first, trace.last)});
    if (trace.time.rule == TraceTime::Rule::Explicit && trace.time.values != nullptr)
      trace.time.values = keepNumbers(item, trace.time.values, trace.first, trace.last);
    item.path.appendTrace(trace);
  }
}

void RecordingContext::onStroke(const Path& path) { keep(add(RecordedItem::Kind::Stroke), path); }

void RecordingContext::onFill(const Path& path) {
  const bool isTurned = state().transform.type() > QTransform::TxScale;
  keep(add(RecordedItem::Kind::Fill), isTurned ? withLobesSpelledOut(path) : path);
}

void RecordingContext::onSymbols(const Symbols& symbols) {
  // Under any other transform than a move the circles change size or shape: each is then recorded as it comes out.
  const QTransform& t = state().transform;
  if (t.type() > QTransform::TxTranslate) return GraphicsContext::onSymbols(symbols);
  RecordedItem& item = add(RecordedItem::Kind::Symbols);
  item.color = symbols.fill;
  item.symbols = symbols;
  item.symbols.x = keepNumbers(item, symbols.x, symbols.first, symbols.last);
  item.symbols.y = keepNumbers(item, symbols.y, symbols.first, symbols.last);
  if (symbols.looks != nullptr) {
    const auto looks =
        std::make_shared<const std::vector<SymbolLook>>(symbols.looks + symbols.first, symbols.looks + symbols.last);
    item.symbols.looks = elementZero(looks->data(), symbols.first);
    item.kept.push_back(looks);
  }
  item.symbols.xOffset += t.dx();
  item.symbols.yOffset += t.dy();
}

void RecordingContext::onText(const QString& text, QPointF position, const TextAttributes& attributes) {
  RecordedItem& item = add(RecordedItem::Kind::Text);
  item.text = text;
  item.attributes = attributes;
  item.color = attributes.effectiveColor();
  item.transform = state().transform;
  item.origin = position;
  item.position = state().transform.map(position);
  item.angleDegrees = qRadiansToDegrees(std::atan2(state().transform.m12(), state().transform.m11()));
}

void RecordingContext::onImage(const QImage& image, const QRectF& target, const QRectF& source, double fraction,
                               ImageKind kind) {
  RecordedItem& item = add(RecordedItem::Kind::Image);
  item.image = image;
  item.transform = state().transform;
  item.drawnTarget = target;
  item.target = state().transform.mapRect(target);
  item.source = source;
  item.fraction = fraction;
  item.imageKind = kind;
}

void RecordingContext::replay(GraphicsContext& onto) const {
  for (const RecordedItem& item : items_) {
    const SavedState saved(onto);
    if (!item.clipPath.isEmpty()) {
      onto.clipToPath(Path::fromShape(item.clipPath));
    } else if (item.clip) {
      onto.clipToRect(*item.clip);
    }
    onto.setColor(item.color);
    switch (item.kind) {
    case RecordedItem::Kind::Stroke:
      onto.strokePath(item.path);
      break;
    case RecordedItem::Kind::Fill:
      onto.fillPath(item.path);
      break;
    case RecordedItem::Kind::Symbols:
      onto.drawSymbols(item.symbols);
      break;
    case RecordedItem::Kind::Text:
      onto.concat(item.transform);
      onto.drawText(item.text, item.origin, item.attributes);
      break;
    case RecordedItem::Kind::Image:
      onto.concat(item.transform);
      onto.drawImage(item.image, item.drawnTarget, item.source, item.fraction, item.imageKind);
      break;
    }
  }
}

} // namespace xov
