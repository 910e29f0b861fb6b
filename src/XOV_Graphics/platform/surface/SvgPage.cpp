#include "XOV_Graphics/platform/surface/SvgPage.h"

#include "XOV_Graphics/platform/ImageFile.h"
#include "XOV_Graphics/platform/pixels/ImageResampling.h"
#include "XOV_Graphics/platform/surface/PaperTraces.h"
#include "XOV_Graphics/platform/surface/Pens.h"
#include "XOV_Graphics/platform/surface/SurfaceContext.h"
#include "XOV_Graphics/platform/surface/SvgPath.h"
#include "XOV_Graphics/platform/surface/Typeface.h"
#include "XOV_Graphics/platform/symbol/SymbolCulling.h"
#include "XOV_Graphics/platform/trace/TraceReduction.h"

#include <QCryptographicHash>

#include <new>
#include <set>
#include <utility>

namespace xov {

namespace {

constexpr int kOpaque = 255;
constexpr int kTraceDecimals = 2; // those of kPaperTraceGrid
// Fonts with Helvetica's widths, and what there is without them.
constexpr char kFallbackFonts[] = "'Nimbus Sans','Liberation Sans',Arial,sans-serif";

QByteArray attribute(const char* name, const QByteArray& value) {
  return ' ' + QByteArray(name) + "=\"" + value + '"';
}

// Characters that XML has no place for become the one that stands for such.
QByteArray escaped(QString text) {
  for (QChar& c : text) {
    if ((c < QLatin1Char(' ') && c != QLatin1Char('\t')) || c.isNonCharacter()) c = QChar::ReplacementCharacter;
  }
  return text.toHtmlEscaped().toUtf8(); // lone surrogates are replaced there
}

QByteArray paint(const char* what, const QColor& color) {
  QByteArray text = attribute(what, color.isValid() ? color.name().toLatin1() : QByteArray("none"));
  if (color.isValid() && color.alpha() != kOpaque)
    text += attribute((QByteArray(what) + "-opacity").constData(), svgNumber(color.alphaF()));
  return text;
}

QByteArray strokeOf(const QPen& pen) {
  QByteArray text = attribute("fill", "none") + paint("stroke", pen.color());
  if (pen.widthF() != 1) text += attribute("stroke-width", svgNumber(pen.widthF()));
  if (pen.capStyle() == Qt::RoundCap) text += attribute("stroke-linecap", "round");
  if (pen.capStyle() == Qt::SquareCap) text += attribute("stroke-linecap", "square");
  if (pen.joinStyle() == Qt::RoundJoin) text += attribute("stroke-linejoin", "round");
  if (pen.joinStyle() == Qt::BevelJoin) text += attribute("stroke-linejoin", "bevel");
  if (pen.joinStyle() == Qt::SvgMiterJoin) text += attribute("stroke-miterlimit", svgNumber(pen.miterLimit()));
  if (pen.style() != Qt::CustomDashLine) return text;
  QByteArray dashes;
  for (const qreal length : pen.dashPattern())
    dashes += (dashes.isEmpty() ? "" : " ") + svgNumber(length * pen.widthF());
  return text + attribute("stroke-dasharray", dashes) +
         attribute("stroke-dashoffset", svgNumber(pen.dashOffset() * pen.widthF()));
}

// An image in the text of an attribute. Readers refuse attributes of more than ten million characters, so that cells,
// too, have to do with a JPEG where they are too many.
QByteArray dataOf(const QImage& image, bool isOpaque, ImageKind kind) {
  constexpr qsizetype kLargestPng = 7'000'000;
  const auto jpeg = [&] {
    const QByteArray file = encodeJpeg(image, kPageJpegQuality);
    return file.isEmpty() ? file : "data:image/jpeg;base64," + file.toBase64();
  };
  if (isJpegOnPaper(image, isOpaque, kind)) return jpeg();
  const QByteArray png = encodeImage(image, ImageFormat::Png);
  if (png.isEmpty()) return {};
  return png.size() > kLargestPng && isOpaque ? jpeg() : "data:image/png;base64," + png.toBase64();
}

class SvgContext final : public SurfaceContext {
public:
  explicit SvgContext(const QRectF& rect)
      : SurfaceContext(QTransform(1, 0, 0, -1, -rect.left(), rect.y() + rect.height()), rect) {}

  QByteArray body() {
    openClip({});
    return std::exchange(body_, {});
  }

protected:
  void onStroke(const Path& path) override;
  void onFill(const Path& path) override;
  void onSymbols(const Symbols& symbols) override;
  void onImage(const QImage& image, const QRectF& target, const QRectF& source, double fraction,
               ImageKind kind) override;
  void drawTextLine(const QString& line, QPointF baseline, const TextAttributes& attributes) override;

private:
  /// Where coordinates go: onto the page themselves, or into an element that has a transform.
  struct Place {
    QTransform coordinates;
    QByteArray attribute;
  };

  Place place() const;
  void add(const QByteArray& element);
  void openClip(const QByteArray& id);
  QByteArray defineClip();
  void strokeTraces(const Path& path);

  QByteArray body_;
  QByteArray openClip_;
  std::set<QByteArray> clips_;
};

SvgContext::Place SvgContext::place() const {
  const QTransform matrix = toDevice();
  const bool onlyMoves = matrix.m11() == 1 && matrix.m22() == -1 && matrix.m12() == 0 && matrix.m21() == 0;
  return onlyMoves ? Place{matrix, {}} : Place{{}, attribute("transform", svgMatrix(matrix))};
}

// Named after what it is, so that documents that stand in one page share it where they share the name.
QByteArray SvgContext::defineClip() {
  const QByteArray shape = attribute("d", svgPathData(state().clipPath, viewToDevice()));
  const QByteArray rule =
      state().clipPath.fillRule() == Qt::OddEvenFill ? attribute("clip-rule", "evenodd") : QByteArray();
  const QByteArray id = "clip-" + QCryptographicHash::hash(shape + rule, QCryptographicHash::Sha1).toHex();
  if (clips_.insert(id).second)
    body_ += "<clipPath" + attribute("id", id) + "><path" + shape + rule + "/></clipPath>\n";
  return id;
}

void SvgContext::openClip(const QByteArray& id) {
  if (id == openClip_) return;
  if (!openClip_.isEmpty()) body_ += "</g>\n";
  if (!id.isEmpty()) body_ += "<g" + attribute("clip-path", "url(#" + id + ')') + ">\n";
  openClip_ = id;
}

void SvgContext::add(const QByteArray& element) {
  if (state().clipRect) {
    const QByteArray id = defineClip();
    openClip(id);
  } else {
    openClip({});
  }
  body_ += element + '\n';
}

void SvgContext::onStroke(const Path& path) {
  if (clippedRect().isEmpty()) return;
  if (const QPainterPath& shape = path.shape(); shape.elementCount() > 0) {
    const auto [coordinates, transform] = place();
    add("<path" + transform + strokeOf(penFor(path, shape, state().strokeColor)) +
        attribute("d", svgPathData(shape, coordinates)) + "/>");
  }
  if (!path.traces().empty()) strokeTraces(path);
}

// Translucent ink must not double where lines overlap, so it stays one path.
void SvgContext::strokeTraces(const Path& path) {
  const auto [coordinates, transform] = place();
  const QColor& color = state().strokeColor;
  const QRectF visible = visibleRect(path.lineWidth());
  QByteArray paths;
  QByteArray onePath;
  const auto dataOf = [&coordinates = coordinates](const auto& points) {
    QPainterPath stroke(points.front());
    for (const QPointF& point : std::span(points).subspan(1))
      stroke.lineTo(point);
    return svgPathData(stroke, coordinates, kTraceDecimals);
  };
  for (const Trace& trace : path.traces()) {
    for (const QPolygonF& line : reduceTrace(trace, kPaperTraceColumn, visible, 0)) {
      if (color.alpha() == kOpaque) {
        forEachStroke(line, [&](std::span<const QPointF> stroke) {
          paths += "\n<path" + attribute("d", dataOf(stroke)) + "/>";
        });
      } else {
        onePath += dataOf(std::span<const QPointF>(line));
      }
    }
  }
  if (!onePath.isEmpty()) paths = "\n<path" + attribute("d", onePath) + "/>";
  if (!paths.isEmpty()) add("<g" + transform + strokeOf(tracePen(path.lineWidth(), color)) + ">" + paths + "\n</g>");
}

void SvgContext::onFill(const Path& path) {
  if (clippedRect().isEmpty()) return;
  const auto [coordinates, transform] = place();
  const QPainterPath shape = filledShape(path);
  const QByteArray rule = shape.fillRule() == Qt::OddEvenFill ? attribute("fill-rule", "evenodd") : QByteArray();
  add("<path" + transform + paint("fill", state().fillColor) + rule +
      attribute("d", svgPathData(shape, coordinates)) + "/>");
}

void SvgContext::onSymbols(const Symbols& symbols) {
  if (clippedRect().isEmpty()) return;
  const auto [coordinates, transform] = place();
  const SymbolLook* last = nullptr;
  QByteArray circles;
  for (const std::int64_t i : symbolsOnPaper(symbols, clippedRect())) {
    const SymbolLook& look = symbols.look(i);
    if (&look != std::exchange(last, &look)) {
      circles += circles.isEmpty() ? "" : "\n</g>\n";
      circles += "<g" + transform + paint("fill", look.fill);
      if (look.hasOutline())
        circles += paint("stroke", look.stroke) + attribute("stroke-width", svgNumber(look.lineWidth));
      circles += '>';
    }
    const QPointF center = coordinates.map(*symbols.center(i));
    const QByteArray circle = "\n<circle" + attribute("cx", svgNumber(center.x(), kTraceDecimals)) +
                              attribute("cy", svgNumber(center.y(), kTraceDecimals)) +
                              attribute("r", svgNumber(look.radius));
    circles += circle + "/>";
    for (int stroke = 1; look.hasOutline() && stroke < look.strokes; ++stroke)
      circles += circle + attribute("fill", "none") + "/>";
  }
  if (!circles.isEmpty()) add(circles + "\n</g>");
}

void SvgContext::drawTextLine(const QString& line, QPointF baseline, const TextAttributes& attributes) {
  if (clippedRect().isEmpty()) return;
  const QTransform upright = QTransform(1, 0, 0, -1, baseline.x(), baseline.y()) * toDevice();
  const double width = Typeface::forFamily(attributes.family()).advance(line) * attributes.pointSize();
  // Other fonts are stretched to the width that the layout was made for.
  QByteArray text = "<text";
  if (upright.type() <= QTransform::TxTranslate) {
    text += attribute("x", svgNumber(upright.dx())) + attribute("y", svgNumber(upright.dy()));
  } else {
    text += attribute("transform", svgMatrix(upright));
  }
  QString family = attributes.family();
  family.remove(QLatin1Char('\''));
  text += attribute("font-family", '\'' + escaped(family) + "'," + kFallbackFonts) +
          attribute("font-size", svgNumber(attributes.pointSize())) + paint("fill", attributes.effectiveColor());
  if (width > 0) text += attribute("textLength", svgNumber(width)) + attribute("lengthAdjust", "spacingAndGlyphs");
  add(text + attribute("xml:space", "preserve") + '>' + escaped(line) + "</text>");
}

void SvgContext::onImage(const QImage& image, const QRectF& target, const QRectF& source, double fraction,
                         ImageKind kind) {
  if (clippedRect().isEmpty()) return;
  const QImage page = imageForPaper(image, source, target.size(), kind);
  if (page.isNull()) return;
  const QByteArray data = dataOf(page, !image.hasAlphaChannel(), kind);
  if (data.isEmpty()) throw std::bad_alloc(); // the only reason why a picture has no file
  const QTransform upright = QTransform(1, 0, 0, -1, target.left(), target.top() + target.height()) * toDevice();
  QByteArray element = "<image" + attribute("transform", svgMatrix(upright)) +
                       attribute("width", svgNumber(target.width())) +
                       attribute("height", svgNumber(target.height())) + attribute("preserveAspectRatio", "none");
  if (fraction < 1) element += attribute("opacity", svgNumber(fraction));
  add(element + attribute("xlink:href", data) + "/>");
}

} // namespace

QByteArray svgPage(const QRectF& rect, const Drawing& draw) {
  if (!(rect.width() > 0 && rect.height() > 0)) return {};
  SvgContext context(rect);
  draw(context);
  const QByteArray width = svgNumber(rect.width()), height = svgNumber(rect.height());
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
         "<svg xmlns=\"http://www.w3.org/2000/svg\" xmlns:xlink=\"http://www.w3.org/1999/xlink\" version=\"1.1\"" +
         attribute("width", width + "pt") + attribute("height", height + "pt") +
         attribute("viewBox", "0 0 " + width + ' ' + height) + attribute("style", "font-kerning:none") + ">\n" +
         context.body() + "</svg>\n";
}

} // namespace xov
