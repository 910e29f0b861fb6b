// Whatever the files of the desk hold, settings and presets are what is well-formed in them, which is read back as it
// is written. The first byte chooses between the two.

#include "apps/desk/processing/ProcessingSteps.h"
#include "apps/desk/settings/DeskSettings.h"
#include "tests/fuzz/Claims.h"

#include <QSize>

#include <cstdint>

using namespace xov;
using fuzz::require;

namespace {

void readSettings(const QByteArray& text) {
  const Result<desk::DeskSettings> settings = desk::DeskSettings::fromJson(text);
  if (!settings) {
    require(!settings.error().contains(QLatin1Char('\n')), "an error is one line", settings.error());
    return;
  }
  require(settings->panes.size() <= desk::DeskSettings::kMostPanes &&
              settings->recent.size() <= desk::DeskSettings::kMostRecent,
          "what is remembered is bounded");
  for (const desk::RememberedPane& pane : settings->panes) {
    require(pane.number > 0 && pane.page >= 0, "a pane has a number and a page");
    (void)pane.request.words();
    (void)pane.request.commandLine(QSize(800, 600));
    (void)desk::keptWords(desk::listOfKept(pane.request.steps));
  }
  const Result<desk::DeskSettings> again = desk::DeskSettings::fromJson(settings->toJson());
  require(again && *again == *settings, "settings are read back as they are written");
}

void readPreset(const QByteArray& text) {
  const desk::Preset preset = desk::parsePreset(QString::fromUtf8(text), QStringLiteral("in"));
  for (const QString& problem : preset.problems)
    fuzz::requireOneLine(problem);
  for (const desk::ProcessingStep& step : preset.steps)
    require(!desk::problemOf(step).contains(QLatin1Char('\n')), "a problem is one line");
  const desk::Preset again = desk::parsePreset(desk::presetText(preset.steps), QStringLiteral("in"));
  require(again.steps == preset.steps && again.problems.isEmpty(), "a preset is read back as it is written");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const QByteArray text(reinterpret_cast<const char*>(data) + 1, qsizetype(size) - 1);
  if ((data[0] & 1) != 0)
    readSettings(text);
  else
    readPreset(text);
  return 0;
}
