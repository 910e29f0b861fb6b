#include "XOV_Graphics/seismic/picks/SacPickPlaces.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace xov {

namespace {

class HeaderPlaces {
public:
  HeaderPlaces(std::span<const Pick* const> picks, const SacHeader& header)
      : header_(header),
        left_(picks.begin(), picks.end()) {
    std::ranges::stable_sort(left_, {}, [](const Pick* pick) { return pick->time; });
  }

  std::vector<PlacedPick> take() {
    placeEach([this](const SacPickFields& place, const Pick& pick) {
      return isDefined(double(header_.*place.time)) && (header_.*place.label).text() == pick.phase;
    });
    placeEach([](const SacPickFields& place, const Pick& pick) { return pick.phase == QLatin1String(place.name); });
    bool isFirst = true; // of those that may be the first arrival
    placeEach([&](const SacPickFields& place, const Pick& pick) {
      if (!pick.phase.startsWith(QLatin1Char('P')) && !pick.phase.startsWith(QLatin1Char('p'))) return false;
      return place.key == kFirstArrivalKey && std::exchange(isFirst, false);
    });
    placeEach([](const SacPickFields& place, const Pick&) { return place.key < kTimePickCount; });
    return std::move(placed_);
  }

private:
  /// Gives each pick the first place that is free and fits.
  template <typename Fits>
  void placeEach(Fits fits) {
    std::erase_if(left_, [&](const Pick* pick) {
      for (std::size_t i = 0; i < std::size(kSacPickFields); ++i) {
        if (isTaken_[i] || !fits(kSacPickFields[i], *pick)) continue;
        isTaken_[i] = true;
        placed_.push_back({&kSacPickFields[i], pick});
        return true;
      }
      return false;
    });
  }

  const SacHeader& header_;
  std::vector<const Pick*> left_;
  std::array<bool, std::size(kSacPickFields)> isTaken_{};
  std::vector<PlacedPick> placed_;
};

} // namespace

std::vector<PlacedPick> placesInHeader(std::span<const Pick* const> picks, const SacHeader& header) {
  return HeaderPlaces(picks, header).take();
}

void clearPicks(SacHeader& header, SacFooter& precise) {
  for (const SacPickFields& place : kSacPickFields) {
    header.*place.time = kUndefinedValue;
    precise.*place.precise = kUndefinedValue;
    header.*place.label = SacText<8>();
  }
}

void setPick(SacHeader& header, SacFooter& precise, const PlacedPick& placed, double seconds) {
  const auto& [place, pick] = placed;
  header.*place->time = float(seconds);
  precise.*place->precise = seconds;
  const bool isNamedAfterPlace = pick->phase.isEmpty() || pick->phase == QLatin1String(place->name);
  header.*place->label = isNamedAfterPlace ? SacText<8>() : SacText<8>(pick->phase.toLatin1().toStdString());
}

} // namespace xov
