#pragma once

#include "XOV_Graphics/seismic/Picks.h"
#include "XOV_Graphics/seismic/SacFooter.h"
#include "XOV_Graphics/seismic/SacHeader.h"

namespace xov {

/// Where a pick stands in a SAC header.
struct SacPickFields {
  int key;
  float SacHeader::*time;
  double SacFooter::*precise;
  SacText<8> SacHeader::*label;
  const char* name; ///< without a label
};

/// All of them; A and F come first.
inline constexpr SacPickFields kSacPickFields[] = {
    {kFirstArrivalKey, &SacHeader::a, &SacFooter::a, &SacHeader::ka, "A"},
    {kEndOfSignalKey, &SacHeader::f, &SacFooter::f, &SacHeader::kf, "F"},
    {0, &SacHeader::t0, &SacFooter::t0, &SacHeader::kt0, "T0"},
    {1, &SacHeader::t1, &SacFooter::t1, &SacHeader::kt1, "T1"},
    {2, &SacHeader::t2, &SacFooter::t2, &SacHeader::kt2, "T2"},
    {3, &SacHeader::t3, &SacFooter::t3, &SacHeader::kt3, "T3"},
    {4, &SacHeader::t4, &SacFooter::t4, &SacHeader::kt4, "T4"},
    {5, &SacHeader::t5, &SacFooter::t5, &SacHeader::kt5, "T5"},
    {6, &SacHeader::t6, &SacFooter::t6, &SacHeader::kt6, "T6"},
    {7, &SacHeader::t7, &SacFooter::t7, &SacHeader::kt7, "T7"},
    {8, &SacHeader::t8, &SacFooter::t8, &SacHeader::kt8, "T8"},
    {9, &SacHeader::t9, &SacFooter::t9, &SacHeader::kt9, "T9"},
};

} // namespace xov
