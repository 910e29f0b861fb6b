#include "apps/desk/processing/ProcessingSteps.h"

#include "apps/xov/prepare/PreparationStep.h"

#include <QCoreApplication>

#include <XOV_Graphics/base/InputFile.h>
#include <XOV_Graphics/base/TextLines.h>
#include <XOV_Graphics/base/WholeFile.h>
#include <XOV_Graphics/seismic/signal/Butterworth.h>
#include <algorithm>

namespace xov::desk {

namespace {

using Parse = Result<cli::PreparationStep> (*)(const QString& value);

constexpr char kFile[] = QT_TRANSLATE_NOOP("ProcessingStep", "the name of a file");
constexpr char kCorners[] = QT_TRANSLATE_NOOP("ProcessingStep", "a whole number from 1 to 20");
constexpr char kFrequencies[] = QT_TRANSLATE_NOOP("ProcessingStep", "four frequencies in Hz that do not fall");
constexpr char kDecibels[] = QT_TRANSLATE_NOOP("ProcessingStep", "decibels from 0 to 1000");

// A new step: a row here, where xov has the option.
constexpr StepKind kKinds[] = {
    {"--stations", QT_TRANSLATE_NOOP("ProcessingStep", "Stations"), "", nullptr},
    {"--event", QT_TRANSLATE_NOOP("ProcessingStep", "Event"), "", nullptr},
    {"--start", QT_TRANSLATE_NOOP("ProcessingStep", "Cut before"), "0", nullptr},
    {"--end", QT_TRANSLATE_NOOP("ProcessingStep", "Cut after"), "60", nullptr},
    {"--around", QT_TRANSLATE_NOOP("ProcessingStep", "Window around a phase"), "P -10 60", nullptr},
    {"--filter", QT_TRANSLATE_NOOP("ProcessingStep", "Filter"), "bandpass 0.5 4", nullptr},
    {"--corners", QT_TRANSLATE_NOOP("ProcessingStep", "Filter poles"), "4", "--filter"},
    {"--zero-phase", QT_TRANSLATE_NOOP("ProcessingStep", "Zero-phase filters"), nullptr, "--filter"},
    {"--detrend", QT_TRANSLATE_NOOP("ProcessingStep", "Detrend"), "linear", nullptr},
    {"--taper", QT_TRANSLATE_NOOP("ProcessingStep", "Taper"), "0.05", nullptr},
    {"--normalize", QT_TRANSLATE_NOOP("ProcessingStep", "Normalise"), "record", nullptr},
    {"--integrate", QT_TRANSLATE_NOOP("ProcessingStep", "Integrate"), nullptr, nullptr},
    {"--differentiate", QT_TRANSLATE_NOOP("ProcessingStep", "Differentiate"), nullptr, nullptr},
    {"--decimate", QT_TRANSLATE_NOOP("ProcessingStep", "Decimate"), "2", nullptr},
    {"--remove-response", QT_TRANSLATE_NOOP("ProcessingStep", "Remove response"), "vel", nullptr},
    {"--pre-filter", QT_TRANSLATE_NOOP("ProcessingStep", "Response: pre-filter"), "0.005 0.01 10 20",
     "--remove-response"},
    {"--water-level", QT_TRANSLATE_NOOP("ProcessingStep", "Response: water level"), "60", "--remove-response"},
    {"--rotate", QT_TRANSLATE_NOOP("ProcessingStep", "Rotate"), "ZRT", nullptr},
};

struct ValueParser {
  const char* option;
  Parse parse;
};

constexpr ValueParser kParsers[] = {
    {"--start", cli::parseStart},         {"--end", cli::parseEnd},
    {"--around", cli::parseAround},       {"--filter", cli::parseFilter},
    {"--detrend", cli::parseDetrend},     {"--taper", cli::parseTaper},
    {"--normalize", cli::parseNormalize}, {"--decimate", cli::parseDecimate},
    {"--rotate", cli::parseRotate},       {"--remove-response", cli::parseRemoveResponse},
};

constexpr char kOff[] = "#";
constexpr char kHeading[] = "# xov processing 1\n";
constexpr qint64 kMostPresetBytes = 1 << 20;
constexpr double kMostHz = 1e6;
constexpr double kMostDecibels = 1000;
constexpr qsizetype kFrequencyCount = 4;

QStringList wordsIn(const QString& text) { return text.split(QLatin1Char(' '), Qt::SkipEmptyParts); }

/// Numbers between two bounds, none below the one before it; nothing else.
bool areRising(const QStringList& words, qsizetype count, double least, double most) {
  if (words.size() != count) return false;
  for (const QString& word : words) {
    bool ok = false;
    const double number = word.toDouble(&ok);
    if (!ok || !(number >= least && number <= most)) return false;
    least = number;
  }
  return true;
}

QString unexpectedValue(const QString& value, const char* expected) {
  return QCoreApplication::translate("ProcessingStep", "found '%1', expected %2")
      .arg(shortened(value), QCoreApplication::translate("ProcessingStep", expected));
}

/// What is wrong with the value of a step that belongs to another one, or names a file.
QString settingProblem(const ProcessingStep& step) {
  const QStringList words = wordsIn(step.value);
  if (takesFile(step.option)) return step.value.isEmpty() ? unexpectedValue(step.value, kFile) : QString();
  if (step.option == QLatin1String("--corners")) {
    bool ok = false;
    const int corners = step.value.toInt(&ok);
    return ok && corners >= 1 && corners <= kMostFilterOrder ? QString() : unexpectedValue(step.value, kCorners);
  }
  if (step.option == QLatin1String("--pre-filter"))
    return areRising(words, kFrequencyCount, 0, kMostHz) ? QString() : unexpectedValue(step.value, kFrequencies);
  if (step.option == QLatin1String("--water-level"))
    return areRising(words, 1, 0, kMostDecibels) ? QString() : unexpectedValue(step.value, kDecibels);
  return {};
}

QStringList stepWords(const ProcessingStep& step) {
  QStringList words{step.option};
  if (takesFile(step.option))
    words.append(step.value);
  else
    words += wordsIn(step.value);
  return words;
}

ProcessingStep stepOfWords(const QStringList& words, bool isOn) {
  return {words.value(0), words.mid(1).join(QLatin1Char(' ')), isOn};
}

} // namespace

std::span<const StepKind> stepKinds() { return kKinds; }

const StepKind* stepKindOf(const QString& option) {
  const auto* const kind =
      std::ranges::find_if(kKinds, [&](const StepKind& known) { return option == QLatin1String(known.option); });
  return kind == std::end(kKinds) ? nullptr : kind;
}

bool takesFile(const QString& option) {
  return option == QLatin1String("--stations") || option == QLatin1String("--event");
}

QString stepTitle(const StepKind& kind) { return QCoreApplication::translate("ProcessingStep", kind.title); }

QString problemOf(const ProcessingStep& step) {
  const StepKind* const kind = stepKindOf(step.option);
  if (kind == nullptr)
    return QCoreApplication::translate("ProcessingStep", "found '%1', expected a step such as filter bandpass 1 10")
        .arg(shortened(step.option));
  if (kind->usual == nullptr)
    return step.value.isEmpty() ? QString()
                                : QCoreApplication::translate("ProcessingStep", "found '%1', expected nothing behind")
                                      .arg(shortened(step.value));
  const auto* const parser = std::ranges::find_if(
      kParsers, [&](const ValueParser& known) { return step.option == QLatin1String(known.option); });
  return parser == std::end(kParsers) ? settingProblem(step) : parser->parse(step.value).error();
}

QList<QStringList> wordsOf(const ProcessingList& steps) {
  const auto isDone = [&](const char* option) {
    return std::ranges::any_of(
        steps, [&](const ProcessingStep& step) { return step.isOn && step.option == QLatin1String(option); });
  };
  QList<QStringList> words;
  for (const ProcessingStep& step : steps) {
    const StepKind* const kind = stepKindOf(step.option);
    if (step.isOn && kind != nullptr && (kind->needs == nullptr || isDone(kind->needs)))
      words.append(stepWords(step));
  }
  return words;
}

QList<QStringList> keptWords(const ProcessingList& steps) {
  QList<QStringList> kept;
  for (const ProcessingStep& step : steps)
    kept.append((step.isOn ? QStringList() : QStringList{QLatin1String(kOff)}) + stepWords(step));
  return kept;
}

ProcessingList listOfKept(const QList<QStringList>& kept) {
  ProcessingList steps;
  for (const QStringList& words : kept) {
    const bool isOff = words.value(0) == QLatin1String(kOff);
    const ProcessingStep step = stepOfWords(isOff ? words.mid(1) : words, !isOff);
    if (stepKindOf(step.option) != nullptr) steps.push_back(step);
  }
  return steps;
}

QString presetText(const ProcessingList& steps) {
  QString text = QLatin1String(kHeading);
  for (const ProcessingStep& step : steps) {
    if (!step.isOn) text += QLatin1String("off ");
    text += QStringView(step.option).mid(2);
    if (!step.value.isEmpty()) text += QLatin1Char(' ') + step.value;
    text += QLatin1Char('\n');
  }
  return text;
}

Preset parsePreset(const QString& text, const QString& name) {
  Preset preset;
  int number = 0;
  for (const QString& line : text.split(QLatin1Char('\n'))) {
    ++number;
    QString rest = line.trimmed();
    if (rest.isEmpty() || rest.startsWith(QLatin1Char('#'))) continue;
    const QString first = rest.section(QLatin1Char(' '), 0, 0);
    const bool isOff = first == QLatin1String("off");
    if (isOff) rest = rest.mid(first.size()).trimmed();
    const ProcessingStep step = {QLatin1String("--") + rest.section(QLatin1Char(' '), 0, 0),
                                 rest.section(QLatin1Char(' '), 1).trimmed(), !isOff};
    const QString problem = problemOf(step);
    if (problem.isEmpty())
      preset.steps.push_back(step);
    else
      preset.problems.append(
          QCoreApplication::translate("ProcessingStep", "%1: line %2: %3").arg(name).arg(number).arg(problem));
  }
  return preset;
}

Result<Preset> readPreset(const QString& path) {
  const Result<QByteArray> bytes = readWholeFile(path, kMostPresetBytes);
  if (!bytes) return Error{bytes.error()};
  return parsePreset(QString::fromUtf8(*bytes), path);
}

Status writePreset(const QString& path, const ProcessingList& steps) {
  QString problem;
  if (writeFileAtomically(path, presetText(steps).toUtf8(), &problem)) return {};
  return Error{problem};
}

} // namespace xov::desk
