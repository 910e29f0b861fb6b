#include "XOV_Graphics/seismic/arrivals/SeismicPhase.h"

#include <gtest/gtest.h>

namespace xov {
namespace {

TEST(SeismicPhase, namesLeadBackToTheirPhases) {
  for (const SeismicPhase phase : allSeismicPhases())
    EXPECT_EQ(phaseNamed(phaseName(phase)), phase) << phaseName(phase).toStdString();
  EXPECT_EQ(allSeismicPhases().size(), 25U);
  EXPECT_EQ(phaseName(SeismicPhase::PKiKP), "PKiKP");
}

TEST(SeismicPhase, theOtherNameOfPKPdfIsKnown) { EXPECT_EQ(phaseNamed("PKIKP"), SeismicPhase::PKPdf); }

TEST(SeismicPhase, caseTellsPhasesApartAndOtherNamesAreNone) {
  EXPECT_EQ(phaseNamed("pP"), SeismicPhase::pP);
  EXPECT_EQ(phaseNamed("PP"), SeismicPhase::PP);
  for (const char* name : {"", "p", "Pp", "PKIKS", "Lg", "P "})
    EXPECT_FALSE(phaseNamed(name)) << name;
}

TEST(SeismicPhase, aNameTellsTheWaveAtBothEnds) {
  struct {
    SeismicPhase phase;
    BodyWave source, surface;
  } const rows[] = {
      {SeismicPhase::P, BodyWave::P, BodyWave::P},     {SeismicPhase::sP, BodyWave::S, BodyWave::P},
      {SeismicPhase::Pdiff, BodyWave::P, BodyWave::P}, {SeismicPhase::PKiKP, BodyWave::P, BodyWave::P},
      {SeismicPhase::SKS, BodyWave::S, BodyWave::S},   {SeismicPhase::ScS, BodyWave::S, BodyWave::S},
      {SeismicPhase::Sdiff, BodyWave::S, BodyWave::S}, {SeismicPhase::PKPab, BodyWave::P, BodyWave::P},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(waveAtSource(row.phase), row.source) << phaseName(row.phase).toStdString();
    EXPECT_EQ(waveAtSurface(row.phase), row.surface) << phaseName(row.phase).toStdString();
  }
}

} // namespace
} // namespace xov
