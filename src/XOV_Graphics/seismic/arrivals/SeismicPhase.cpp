#include "XOV_Graphics/seismic/arrivals/SeismicPhase.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace xov {

namespace {

struct NameRow {
  SeismicPhase phase;
  const char* name;
};

using enum SeismicPhase;

// In the order of the enumerators, then other names.
constexpr NameRow kNames[] = {
    {P, "P"},   {Pg, "Pg"},   {Pb, "Pb"},   {Pn, "Pn"},       {Pdiff, "Pdiff"}, {PcP, "PcP"},     {PP, "PP"},
    {pP, "pP"}, {sP, "sP"},   {PKP, "PKP"}, {PKPab, "PKPab"}, {PKPbc, "PKPbc"}, {PKPdf, "PKPdf"}, {PKiKP, "PKiKP"},
    {S, "S"},   {Sg, "Sg"},   {Sb, "Sb"},   {Sn, "Sn"},       {Sdiff, "Sdiff"}, {ScS, "ScS"},     {SS, "SS"},
    {sS, "sS"}, {SKS, "SKS"}, {LQ, "LQ"},   {LR, "LR"},       {PKPdf, "PKIKP"},
};
constexpr std::size_t kPhaseCount = std::size_t(LR) + 1;

constexpr std::array<SeismicPhase, kPhaseCount> kPhases = [] {
  std::array<SeismicPhase, kPhaseCount> phases{};
  for (std::size_t i = 0; i < kPhaseCount; ++i)
    phases[i] = kNames[i].phase;
  return phases;
}();
static_assert(std::ranges::is_sorted(kPhases) && kPhases.back() == LR);

BodyWave waveOf(char letter) { return letter == 'P' || letter == 'p' ? BodyWave::P : BodyWave::S; }

} // namespace

std::span<const SeismicPhase> allSeismicPhases() { return kPhases; }

QString phaseName(SeismicPhase phase) { return QString::fromLatin1(kNames[std::size_t(phase)].name); }

std::optional<SeismicPhase> phaseNamed(const QString& name) {
  const auto* const row =
      std::ranges::find_if(kNames, [&](const NameRow& r) { return name == QLatin1String(r.name); });
  return row == std::end(kNames) ? std::nullopt : std::optional(row->phase);
}

BodyWave waveAtSource(SeismicPhase phase) { return waveOf(kNames[std::size_t(phase)].name[0]); }

// The last capital letter tells: what follows it says where the wave went.
BodyWave waveAtSurface(SeismicPhase phase) {
  const QLatin1String name(kNames[std::size_t(phase)].name);
  const auto last = std::find_if(std::make_reverse_iterator(name.end()), std::make_reverse_iterator(name.begin()),
                                 [](char letter) { return letter == 'P' || letter == 'S'; });
  return last.base() == name.begin() ? BodyWave::S : waveOf(*last);
}

} // namespace xov
