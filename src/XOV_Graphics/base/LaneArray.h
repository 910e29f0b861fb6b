#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

// Stands in for the vectors of a compiler that has none of its own: the same operators, lane by lane.

namespace xov {

template <class Element, int count>
struct LaneArray {
  Element lanes[count];

  Element& operator[](int lane) { return lanes[lane]; }
  const Element& operator[](int lane) const { return lanes[lane]; }
};

/// What a comparison gives: all bits of a lane where it holds, none where it does not.
template <class Element>
using LaneMask = std::conditional_t<sizeof(Element) == sizeof(std::int16_t), std::int16_t, std::int32_t>;

/// The result of an operation on each lane.
template <class Result, class Element, int count, class Operation>
inline LaneArray<Result, count> eachLane(const LaneArray<Element, count>& a, const LaneArray<Element, count>& b,
                                         const Operation& operation) {
  LaneArray<Result, count> result;
  for (int lane = 0; lane < count; ++lane)
    result[lane] = static_cast<Result>(operation(a[lane], b[lane]));
  return result;
}

template <class Element, int count>
inline LaneArray<Element, count> everyLane(Element value) {
  LaneArray<Element, count> result;
  for (int lane = 0; lane < count; ++lane)
    result[lane] = value;
  return result;
}

// A number on one side of an operator stands for a vector that holds it in every lane.
#define XOV_LANE_OPERATOR(op, Result, value)                                                                         \
  template <class Element, int count>                                                                                \
  inline LaneArray<Result, count> operator op(const LaneArray<Element, count>& a,                                    \
                                              const LaneArray<Element, count>& b) {                                  \
    return eachLane<Result>(a, b, [](Element x, Element y) { return value; });                                       \
  }                                                                                                                  \
  template <class Element, int count>                                                                                \
  inline LaneArray<Result, count> operator op(const LaneArray<Element, count>& a, std::type_identity_t<Element> b) { \
    return a op everyLane<Element, count>(b);                                                                        \
  }                                                                                                                  \
  template <class Element, int count>                                                                                \
  inline LaneArray<Result, count> operator op(std::type_identity_t<Element> a, const LaneArray<Element, count>& b) { \
    return everyLane<Element, count>(a) op b;                                                                        \
  }
#define XOV_LANE_ARITHMETIC(op)                                                                                      \
  XOV_LANE_OPERATOR(op, Element, x op y)                                                                             \
  template <class Element, int count, class Other>                                                                   \
  inline LaneArray<Element, count>& operator op##=(LaneArray<Element, count>& a, const Other& b) {                   \
    return a = a op b;                                                                                               \
  }
#define XOV_LANE_COMPARISON(op) XOV_LANE_OPERATOR(op, LaneMask<Element>, x op y ? -1 : 0)

XOV_LANE_ARITHMETIC(+)
XOV_LANE_ARITHMETIC(-)
XOV_LANE_ARITHMETIC(*)
XOV_LANE_ARITHMETIC(/)
XOV_LANE_ARITHMETIC(&)
XOV_LANE_ARITHMETIC(|)
XOV_LANE_ARITHMETIC(<<)
XOV_LANE_ARITHMETIC(>>)
XOV_LANE_COMPARISON(<)
XOV_LANE_COMPARISON(>)
XOV_LANE_COMPARISON(<=)
XOV_LANE_COMPARISON(>=)
XOV_LANE_COMPARISON(==)
XOV_LANE_COMPARISON(!=)

#undef XOV_LANE_COMPARISON
#undef XOV_LANE_ARITHMETIC
#undef XOV_LANE_OPERATOR

template <class Element, int count>
inline LaneArray<Element, count> operator-(const LaneArray<Element, count>& a) {
  return eachLane<Element>(a, a, [](Element x, Element) { return -x; });
}
template <class Element, int count>
inline LaneArray<Element, count> operator~(const LaneArray<Element, count>& a) {
  return eachLane<Element>(a, a, [](Element x, Element) { return ~x; });
}

/// In each lane `yes` where a comparison holds and `no` elsewhere; of two numbers one.
template <class Mask, class Element, int count>
inline LaneArray<Element, count> chosen(const LaneArray<Mask, count>& mask, const LaneArray<Element, count>& yes,
                                        const LaneArray<Element, count>& no) {
  LaneArray<Element, count> result;
  for (int lane = 0; lane < count; ++lane)
    result[lane] = mask[lane] != 0 ? yes[lane] : no[lane];
  return result;
}
inline float chosen(bool mask, float yes, float no) { return mask ? yes : no; }

template <class To, class Element, int count>
inline To converted(const LaneArray<Element, count>& from) {
  To result;
  for (int lane = 0; lane < count; ++lane)
    result[lane] = static_cast<std::remove_cvref_t<decltype(result[lane])>>(from[lane]);
  return result;
}

template <int... numbers, class Element, int count>
inline LaneArray<Element, int(sizeof...(numbers))> picked(const LaneArray<Element, count>& a,
                                                          const LaneArray<Element, count>& b) {
  return {{(numbers < count ? a[numbers % count] : b[numbers % count])...}};
}

} // namespace xov
