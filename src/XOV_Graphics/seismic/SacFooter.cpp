#include "XOV_Graphics/seismic/SacFooter.h"

#include <cmath>
#include <limits>

namespace xov {

namespace {

struct SharedValue {
  double SacFooter::*precise;
  float SacHeader::*single;
};

constexpr SharedValue kSharedValues[] = {
    {&SacFooter::delta, &SacHeader::delta}, {&SacFooter::b, &SacHeader::b},
    {&SacFooter::e, &SacHeader::e},         {&SacFooter::o, &SacHeader::o},
    {&SacFooter::a, &SacHeader::a},         {&SacFooter::t0, &SacHeader::t0},
    {&SacFooter::t1, &SacHeader::t1},       {&SacFooter::t2, &SacHeader::t2},
    {&SacFooter::t3, &SacHeader::t3},       {&SacFooter::t4, &SacHeader::t4},
    {&SacFooter::t5, &SacHeader::t5},       {&SacFooter::t6, &SacHeader::t6},
    {&SacFooter::t7, &SacHeader::t7},       {&SacFooter::t8, &SacHeader::t8},
    {&SacFooter::t9, &SacHeader::t9},       {&SacFooter::f, &SacHeader::f},
    {&SacFooter::evlo, &SacHeader::evlo},   {&SacFooter::evla, &SacHeader::evla},
    {&SacFooter::stlo, &SacHeader::stlo},   {&SacFooter::stla, &SacHeader::stla},
    {&SacFooter::sb, &SacHeader::sb},       {&SacFooter::sdelta, &SacHeader::sdelta},
};
static_assert(std::size(kSharedValues) == sizeof(SacFooter) / sizeof(double));

} // namespace

SacFooter footerFromHeader(const SacHeader& header) {
  SacFooter footer;
  for (const SharedValue& value : kSharedValues)
    footer.*value.precise = double(header.*value.single);
  return footer;
}

void refineHeader(SacHeader& header, SacFooter& footer) {
  for (const SharedValue& value : kSharedValues) {
    double& precise = footer.*value.precise;
    float& single = header.*value.single;
    if (isDefined(precise) && std::abs(precise) <= double(std::numeric_limits<float>::max()))
      single = float(precise);
    else
      precise = double(single);
  }
}

} // namespace xov
