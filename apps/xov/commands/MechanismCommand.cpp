#include "apps/xov/commands/MechanismCommand.h"

#include "apps/xov/inputs/EventInputs.h"
#include "apps/xov/inputs/Validators.h"

#include <XOV_Graphics/base/FileName.h>
#include <XOV_Graphics/seismic/Undefined.h>
#include <XOV_Graphics/seismic/mechanism/SourceGeometry.h>

namespace xov::cli {

namespace {

constexpr double kLargestAngle = 360;
constexpr double kSteepest = 90;
constexpr double kLargestElement = 1e33; // N m
constexpr int kMostEvents = 1000000;

// The day, the magnitude and the region, as far as they are known.
QString captionOf(const Hypocentre& event) {
  QStringList parts;
  if (event.oDate().isValid()) parts << event.oDate().toUTC().toString(QStringLiteral("yyyy-MM-dd"));
  if (isDefined(event.magnitude())) parts << QStringLiteral("M %1").arg(double(event.magnitude()), 0, 'f', 1);
  if (!event.values().name.isEmpty()) parts << event.values().name;
  return parts.join(QLatin1Char(' '));
}

std::string checkColor(const std::string& name) {
  if (QColor::isValidColor(QString::fromStdString(name))) return {};
  return "found '" + name + "', expected a colour such as red or #c02020";
}

} // namespace

void MechanismCommand::addOptions(const Options& options) {
  options.add("FILES", files_, "Event files that tell mechanisms, as QuakeML and NDK do").typeName("FILE");
  Option strike = options.add("--strike", strike_, "Strike of a nodal plane in degrees")
                      .typeName("S")
                      .check(numberFromTo(-kLargestAngle, kLargestAngle));
  Option dip = options.add("--dip", dip_, "Its dip, to the right of the strike")
                   .typeName("D")
                   .check(numberFromTo(0, kSteepest));
  Option rake = options.add("--rake", rake_, "The rake of the slip on it")
                    .typeName("R")
                    .check(numberFromTo(-kLargestAngle, kLargestAngle));
  strike.needs(dip).needs(rake);
  dip.needs(strike);
  rake.needs(strike);
  options.add("--tensor", tensor_, "Moment tensor in N m: r is up, t south, p east")
      .typeName("RR TT PP RT RP TP")
      .check(numberFromTo(-kLargestElement, kLargestElement))
      .excludes(strike)
      .takesExactly(6);
  options.add("--event", event_, "Draw the N-th mechanism of the files alone")
      .typeName("N")
      .check(wholeNumberFromTo(1, kMostEvents));
  options.add("--color", color_, "Colour of compressional first motions (default black)")
      .typeName("COLOR")
      .check(Check{checkColor, {}});
  options.addFlag("--plain", plain_, "Draw beach balls alone, without axes, planes and numbers");
  output_.addOptions(options);
  options.afterParsing([this] { checkOptions(); });
}

void MechanismCommand::checkOptions() {
  if (files_.empty() && !strike_ && !tensor_)
    throw UsageError("FILES", "expected a file of events, or --strike, --dip and --rake, or --tensor");
}

std::optional<CaptionedMechanism> MechanismCommand::given() const {
  CaptionedMechanism found;
  if (strike_) {
    found.mechanism.planes[0] = {float(*strike_), float(*dip_), float(*rake_)};
    return found;
  }
  if (!tensor_) return {};
  const auto& [rr, tt, pp, rt, rp, tp] = *tensor_;
  found.mechanism.tensor = MomentTensor{rr, tt, pp, rt, rp, tp};
  return found;
}

bool MechanismCommand::readFile(const std::string& path, std::vector<CaptionedMechanism>& found) const {
  const std::optional<EventFile> file = readEventsOrComplain(path);
  if (!file) return false;
  const std::size_t before = found.size();
  for (const std::shared_ptr<Hypocentre>& event : file->events) {
    const std::optional<FocalMechanism>& mechanism = event->values().mechanism;
    if (mechanism && radiatingTensorOf(*mechanism)) found.push_back({*mechanism, captionOf(*event)});
  }
  if (found.size() > before) return true;
  complain(QStringLiteral("%1: tells no mechanism of an event").arg(fileNameFromBytes(path)));
  return false;
}

ExitCode MechanismCommand::run() {
  std::vector<CaptionedMechanism> mechanisms;
  bool all = true;
  for (const std::string& file : files_)
    all = readFile(file, mechanisms) && all;
  if (const auto single = given()) mechanisms.push_back(*single);
  if (event_ && std::size_t(*event_) > mechanisms.size()) {
    if (!mechanisms.empty())
      complain(QStringLiteral("--event: found %1, expected 1 to %2").arg(*event_).arg(mechanisms.size()));
    return ExitCode::Failed;
  }
  if (event_) mechanisms = {mechanisms[std::size_t(*event_) - 1]};
  if (mechanisms.empty()) return ExitCode::Failed;
  if (mechanisms.size() == 1 && !radiatingTensorOf(mechanisms.front().mechanism)) {
    complain(QStringLiteral("--tensor: found zeros, expected a tensor"));
    return ExitCode::Failed;
  }
  if (mechanisms.size() > kMostBalls) {
    complain(QStringLiteral("draws the first %1 of %2 mechanisms").arg(kMostBalls).arg(mechanisms.size()));
    mechanisms.resize(kMostBalls);
  }
  QString title;
  if (mechanisms.size() == 1) title = std::exchange(mechanisms.front().caption, {});
  const ExitCode delivered = output_.deliver([&](const QRectF& frame) {
    auto view = std::make_unique<FocalMechanismView>(frame);
    view->setMechanisms(mechanisms);
    view->setCompressionalColor(QColor(QString::fromStdString(color_)));
    view->setShowPrincipalAxes(!plain_);
    view->setShowNodalPlanes(!plain_);
    view->setShowDetails(!plain_);
    view->setTitle(output_.titleOr(title));
    return view;
  });
  return all ? delivered : ExitCode::Failed;
}

} // namespace xov::cli
