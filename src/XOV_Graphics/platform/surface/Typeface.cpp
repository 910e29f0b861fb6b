#include "XOV_Graphics/platform/surface/Typeface.h"

#include "XOV_Graphics/base/Log.h"
#include "XOV_Graphics/base/MemoryReserve.h"

#include <QCoreApplication>
#include <QFontDatabase>
#include <QFontInfo>
#include <QFontMetricsF>
#include <QThread>

#include <algorithm>
#include <array>
#include <map>
#include <memory>

namespace xov {

namespace {

// Fonts with Helvetica's advance widths, best first.
constexpr std::array kHelveticaTwins = {"Helvetica",       "Nimbus Sans", "Nimbus Sans L", "TeX Gyre Heros",
                                        "Liberation Sans", "Arial",       "Arimo"};

constexpr int kKeptLines = 1024;
constexpr std::size_t kBytesALetter = 8192; // of an outline that grows: a hundred points, three times

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

// Where a font's file cannot be read, or there is no memory for it, Qt takes another one without a word.
void tellOfOther(const QFont& font) {
  constexpr std::array kNamesOfOthers = {"Sans Serif", "Serif", "Monospace"};
  const QString family = font.family(), loaded = QFontInfo(font).family();
  const bool isName = std::find(kNamesOfOthers.begin(), kNamesOfOthers.end(), family) != kNamesOfOthers.end();
  const bool isLoaded = loaded.section(QLatin1String(" ["), 0, 0).compare(family, Qt::CaseInsensitive) == 0;
  if (!isLoaded && !isName && isInstalled(family))
    qCWarning(log, "the font %s cannot be loaded; texts are in %s", qUtf8Printable(family), qUtf8Printable(loaded));
}

using Faces = std::map<QString, std::unique_ptr<Typeface>>;

// Qt takes its font database down before anything of the main thread's goes at the end of the process: those stay.
class FreedWithItsThread {
public:
  void operator()(Faces* faces) const {
    [[maybe_unused]] static Faces* volatile kept = nullptr; // not lost
    if (isMain_)
      kept = faces;
    else
      delete faces;
  }

private:
  bool isMain_ =
      QCoreApplication::instance() == nullptr || QThread::currentThread() == QCoreApplication::instance()->thread();
};

} // namespace

const Typeface& Typeface::forFamily(const QString& family) {
  static thread_local std::unique_ptr<Faces, FreedWithItsThread> faces(new Faces);
  std::unique_ptr<Typeface>& face = (*faces)[family];
  if (!face) face.reset(new Typeface(family));
  return *face;
}

Typeface::Typeface(const QString& family) : font_(installedFamily(family)), lines_(kKeptLines) {
  font_.setPixelSize(kDesignSize);
  font_.setHintingPreference(QFont::PreferNoHinting);
  font_.setKerning(false);
  font_.setStyleStrategy(QFont::PreferOutline);
  tellOfOther(font_);
}

Typeface::Line Typeface::shapedByQt(const QString& line) const {
  Line shaped;
  shaped.advance = QFontMetricsF(font_).horizontalAdvance(line);
  shaped.outline.setFillRule(Qt::WindingFill);
  shaped.outline.addText(0, 0, font_, line);
  return shaped;
}

const Typeface::Line& Typeface::letter(QChar letter) const {
  const auto known = letters_.constFind(letter);
  return known != letters_.constEnd() ? *known : *letters_.insert(letter, shapedByQt(letter));
}

/// The letters of a line side by side.
Typeface::Line Typeface::spelled(const QString& line) const {
  Line spelled;
  spelled.outline.setFillRule(Qt::WindingFill);
  for (const QChar each : line) {
    const Line& next = letter(each);
    spelled.outline.addPath(next.outline.translated(spelled.advance, 0));
    spelled.advance += next.advance;
  }
  return spelled;
}

/// True for a line that is no more than its letters: of ASCII, without a pair that the font draws in another way.
bool Typeface::isSpelled(const QString& line) const {
  const auto isPlain = [](QChar each) { return each >= QLatin1Char(' ') && each <= QLatin1Char('~'); };
  if (!std::all_of(line.begin(), line.end(), isPlain)) return false;
  for (qsizetype i = 0; i + 1 < line.size(); ++i) {
    const quint32 pair = quint32(line[i].unicode()) << 16 | line[i + 1].unicode();
    auto known = pairs_.constFind(pair);
    if (known == pairs_.constEnd()) {
      const Line whole = shapedByQt(line.mid(i, 2)), parts = spelled(line.mid(i, 2));
      known = pairs_.insert(pair, whole.outline == parts.outline && whole.advance == parts.advance);
    }
    if (!*known) return false;
  }
  return true;
}

// Qt finds the outline of each letter anew, and a section of thousands of records has as many captions, no two the
// same.
const Typeface::Line& Typeface::shaped(const QString& line) const {
  if (const Line* known = lines_.object(line)) return *known;
  // Qt adds to outlines without a look at whether it was given memory for them.
  needMemory(std::size_t(line.size()) * kBytesALetter);
  auto shaped = std::make_unique<Line>(isSpelled(line) ? spelled(line) : shapedByQt(line));
  const Line& result = *shaped;
  lines_.insert(line, shaped.release());
  return result;
}

double Typeface::advance(const QString& line) const {
  return line.isEmpty() ? 0 : shaped(line).advance / kDesignSize;
}

QPainterPath Typeface::outline(const QString& line) const {
  return line.isEmpty() ? QPainterPath() : shaped(line).outline;
}

} // namespace xov
