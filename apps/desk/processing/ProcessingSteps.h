#pragma once

#include <QString>
#include <QStringList>

#include <XOV_Graphics/base/Result.h>
#include <span>
#include <vector>

namespace xov::desk {

/// Something that may be done to records, by the words of an option of xov.
struct StepKind {
  const char* option; ///< "--filter"
  const char* title;  ///< in English; stepTitle() is that in the user's language
  const char* usual;  ///< the value that it begins with; nullptr where it takes none
  /// The option without which this one has nothing to say; nullptr where it stands for itself.
  const char* needs;
};

std::span<const StepKind> stepKinds();

/// The kind of that option; nullptr where there is none.
const StepKind* stepKindOf(const QString& option);

QString stepTitle(const StepKind& kind);

/// Whether an option names a file.
bool takesFile(const QString& option);

/// One step of a list.
struct ProcessingStep {
  QString option;
  QString value = {}; ///< as on a command line: "bandpass 1 10"
  bool isOn = true;

  bool operator==(const ProcessingStep&) const = default;
};

/// What is done to the records of a pane, in this order.
using ProcessingList = std::vector<ProcessingStep>;

/// What is wrong with a step, in one line; empty where nothing is.
QString problemOf(const ProcessingStep& step);

/// The words of the steps that are on, one list each, for a command line. Settings of another step, such as the
/// number of a filter's corners, are left out where there is no such step.
QList<QStringList> wordsOf(const ProcessingList& steps);

/// Lists as they are kept with a pane: the words of each step, behind a "#" where it is off.
QList<QStringList> keptWords(const ProcessingList& steps);
/// The same read back; what is no step is left out.
ProcessingList listOfKept(const QList<QStringList>& kept);

/// A list as text, to be kept and shared: a line for each step with its option, without the dashes, and its value, as
/// "filter bandpass 1 10"; "off" in front where it is off. Lines that begin with # are comments, the first of which
/// names the format; empty ones count for nothing.
QString presetText(const ProcessingList& steps);

/// What a preset holds.
struct Preset {
  ProcessingList steps;
  QStringList problems; ///< one for each line that is no step, which is left out
};

/// Reads such a text; `name` stands for it in the problems.
Preset parsePreset(const QString& text, const QString& name);

/// Reads and writes a file of it. Refuses one of more than a megabyte.
Result<Preset> readPreset(const QString& path);
Status writePreset(const QString& path, const ProcessingList& steps);

} // namespace xov::desk
