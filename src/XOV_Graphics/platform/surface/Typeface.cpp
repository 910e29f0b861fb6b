#include "XOV_Graphics/platform/surface/Typeface.h"

#include <QFontDatabase>
#include <QFontMetricsF>
#include <QHash>

#include <algorithm>
#include <array>
#include <memory>

namespace xov {

namespace {

// Fonts with Helvetica's advance widths, best first.
constexpr std::array kHelveticaTwins = {"Helvetica",       "Nimbus Sans", "Nimbus Sans L", "TeX Gyre Heros",
                                        "Liberation Sans", "Arial",       "Arimo"};

constexpr int kKeptLines = 1024;

// A family that several foundries made is listed as "Family [foundry]".
bool isInstalled(const QString& family) {
  const QStringList families = QFontDatabase::families();
  return std::any_of(families.begin(), families.end(), [&](const QString& listed) {
    return listed.compare(family, Qt::CaseInsensitive) == 0 ||
           listed.startsWith(family + QLatin1String(" ["), Qt::CaseInsensitive);
  });
}

QString installedFamily(const QString& family) {
  if (isInstalled(family)) return family;
  for (const char* twin : kHelveticaTwins) {
    if (isInstalled(QLatin1String(twin))) return QLatin1String(twin);
  }
  return QStringLiteral("sans-serif");
}

} // namespace

const Typeface& Typeface::forFamily(const QString& family) {
  // Never freed: Qt takes its font database down before anything of ours that is static.
  static auto& faces = *new QHash<QString, Typeface*>;
  Typeface*& face = faces[family];
  if (face == nullptr) face = new Typeface(family);
  return *face;
}

Typeface::Typeface(const QString& family) : font_(installedFamily(family)), lines_(kKeptLines) {
  font_.setPixelSize(kDesignSize);
  font_.setHintingPreference(QFont::PreferNoHinting);
  font_.setKerning(false);
  font_.setStyleStrategy(QFont::PreferOutline);
}

const Typeface::Line& Typeface::shaped(const QString& line) const {
  if (const Line* known = lines_.object(line)) return *known;
  auto shaped = std::make_unique<Line>();
  shaped->advance = QFontMetricsF(font_).horizontalAdvance(line) / kDesignSize;
  shaped->outline.setFillRule(Qt::WindingFill);
  shaped->outline.addText(0, 0, font_, line);
  const Line& result = *shaped;
  lines_.insert(line, shaped.release());
  return result;
}

double Typeface::advance(const QString& line) const { return line.isEmpty() ? 0 : shaped(line).advance; }

QPainterPath Typeface::outline(const QString& line) const {
  return line.isEmpty() ? QPainterPath() : shaped(line).outline;
}

} // namespace xov
