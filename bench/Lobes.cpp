#include "bench/Lobes.h"

#include "XOV_Graphics/platform/Colors.h"
#include "XOV_Graphics/platform/View.h"
#include "bench/Contest.h"
#include "bench/Works.h"

#include <vector>

namespace xov::bench {

namespace {

constexpr const char* kSections[] = {"W8", "W3", "W9"};

enum class Lobes { Open, Filled };

class SectionView : public View {
public:
  SectionView(const Work& work, Lobes lobes) : View(QRectF(QPointF(0, 0), QSizeF(work.size))) {
    for (Trace trace : work.traces) {
      traces_.appendTrace(trace);
      trace.area = TraceArea::AboveLevel;
      if (lobes == Lobes::Filled) filled_.appendTrace(trace);
    }
  }

  void drawRect(const QRectF&) override {
    GraphicsContext& context = GraphicsContext::current();
    context.setColor(colors::white);
    context.fillRect(bounds());
    context.setColor(colors::black);
    if (!filled_.isEmpty()) context.fillPath(filled_);
    context.strokePath(traces_);
  }

private:
  Path traces_;
  Path filled_;
};

} // namespace

QString lobesTable(int rounds) {
  QString text =
      QStringLiteral("| lobes filled under the strokes | CPU ms | strokes alone: CPU ms | ratio | ms | its ms |\n"
                     "|---|---:|---:|---:|---:|---:|\n");
  for (const char* name : kSections) {
    const Work work = makeWork(name);
    SectionView filled(work, Lobes::Filled);
    SectionView open(work, Lobes::Open);
    std::vector<Contest> contests = {{work.description.c_str(), [&] { filled.pictureOfRect(filled.bounds()); }},
                                     {"", [&] { open.pictureOfRect(open.bounds()); }}};
    runInTurn(contests, rounds);
    text += pairedRows(contests);
  }
  return text;
}

} // namespace xov::bench
