#pragma once

#include <atomic>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>

// Loops over samples are written once, for vectors of any width, and compiled for the widths that processors have;
// the best one for the processor at hand is chosen at run time. Everything is inlined into functions that carry the
// processor's name, so that a build for the oldest 64-bit processors stays runnable on them.
//
// What is drawn does not depend on the width: where the order of sums matters, they are taken in the same order at
// every width, in as many lanes as the widest vectors have.
//
// A compiler without vectors of its own takes arrays of four lanes. XOV_VECTOR_EXTENSIONS=0 asks for these anywhere.

#if !defined(XOV_VECTOR_EXTENSIONS)
#if defined(__GNUC__)
#define XOV_VECTOR_EXTENSIONS 1
#else
#define XOV_VECTOR_EXTENSIONS 0
#endif
#endif

#if XOV_VECTOR_EXTENSIONS && defined(__x86_64__)
#define XOV_WIDE_VECTORS 1
#define XOV_TARGET_AVX2 __attribute__((target("avx2")))
#define XOV_TARGET_AVX512 __attribute__((target("avx512f,avx512bw,avx512vl,avx512dq")))
#else
#define XOV_WIDE_VECTORS 0
#endif

#if defined(__GNUC__)
#define XOV_INLINE __attribute__((always_inline)) inline
#define XOV_INLINE_LAMBDA __attribute__((always_inline))
/// Asks for memory ahead of its use: an address, whether it will be written, and how long it is to stay.
#define XOV_PREFETCH(...) __builtin_prefetch(__VA_ARGS__)
#elif defined(_MSC_VER)
#define XOV_INLINE __forceinline
#define XOV_INLINE_LAMBDA
#define XOV_PREFETCH(...) static_cast<void>(0)
#else
#define XOV_INLINE inline
#define XOV_INLINE_LAMBDA
#define XOV_PREFETCH(...) static_cast<void>(0)
#endif

// The operations that are no operators. They are macros, since vectors that are wider than the baseline's cannot be
// handed to functions or back.
#if XOV_VECTOR_EXTENSIONS
/// In each lane `yes` where a comparison holds and `no` elsewhere.
#define XOV_CHOOSE(mask, yes, no) ((mask) ? (yes) : (no))
/// Each lane converted to the element of another vector; fractions are cut off.
#define XOV_CONVERT(To, vector) __builtin_convertvector(vector, To)
/// The same bits as lanes of another kind.
#define XOV_SAME_BITS(To, vector) To(vector)
/// The lanes with these numbers, of two vectors counted on end.
#define XOV_PICK(a, b, ...) __builtin_shufflevector(a, b, __VA_ARGS__)
#else
#define XOV_CHOOSE(mask, yes, no) ::xov::chosen(mask, yes, no)
#define XOV_CONVERT(To, vector) ::xov::converted<To>(vector)
#define XOV_SAME_BITS(To, vector) ::std::bit_cast<To>(vector)
#define XOV_PICK(a, b, ...) ::xov::picked<__VA_ARGS__>(a, b)
#endif

#if !XOV_VECTOR_EXTENSIONS
#include "XOV_Graphics/base/LaneArray.h"
#endif

namespace xov {

#if XOV_VECTOR_EXTENSIONS
template <class Element, int count>
struct LanesWith {
  using Vector __attribute__((vector_size(count * sizeof(Element)))) = Element;
};
#else
template <class Element, int count>
struct LanesWith {
  using Vector = LaneArray<Element, count>;
};
#endif

using Float4 = LanesWith<float, 4>::Vector;
using Float8 = LanesWith<float, 8>::Vector;
using Float16 = LanesWith<float, 16>::Vector;
using Int4 = LanesWith<std::int32_t, 4>::Vector;
using Int8 = LanesWith<std::int32_t, 8>::Vector;
using Int16 = LanesWith<std::int32_t, 16>::Vector;
using Shorts8 = LanesWith<std::uint16_t, 8>::Vector;
using Shorts16 = LanesWith<std::uint16_t, 16>::Vector;
using Shorts32 = LanesWith<std::uint16_t, 32>::Vector;

template <class Vector, class Element>
XOV_INLINE void loadVector(const Element* from, Vector& to) {
  std::memcpy(&to, from, sizeof to);
}

template <class Vector, class Element>
XOV_INLINE void storeVector(const Vector& from, Element* to) {
  std::memcpy(to, &from, sizeof from);
}

/// Sets every lane that is greater than `other`'s to that, and the other way around. A NaN in `value` gives `other`.
template <class Vector>
XOV_INLINE void keepSmaller(Vector& value, const Vector& other) {
  value = XOV_CHOOSE(value < other, value, other);
}
template <class Vector>
XOV_INLINE void keepGreater(Vector& value, const Vector& other) {
  value = XOV_CHOOSE(value > other, value, other);
}

template <class Vector>
inline constexpr int kLanes = static_cast<int>(sizeof(Vector) / 4);
inline constexpr int kWidestVector = kLanes<Float16>;
/// Single-precision numbers that come from memory together.
inline constexpr std::int64_t kCacheLine = 16;

/// Vectors of integers that are as wide as one of single-precision numbers.
template <class Vector>
struct IntegersOf;
template <>
struct IntegersOf<Float4> {
  using Words = Int4;
  using Shorts = Shorts8;
};
template <>
struct IntegersOf<Float8> {
  using Words = Int8;
  using Shorts = Shorts16;
};
template <>
struct IntegersOf<Float16> {
  using Words = Int16;
  using Shorts = Shorts32;
};
template <class Vector>
using WordsOf = typename IntegersOf<Vector>::Words;
template <class Vector>
using ShortsOf = typename IntegersOf<Vector>::Shorts;

#if XOV_WIDE_VECTORS
// For the oldest processors the compiler does not see a minimum in a choice of vectors.
XOV_INLINE void keepSmaller(Float4& value, const Float4& other) { value = __builtin_ia32_minps(value, other); }
XOV_INLINE void keepGreater(Float4& value, const Float4& other) { value = __builtin_ia32_maxps(value, other); }
#endif

/// Adds 0 for a number and NaN for everything else, and NaN stays in a sum: so one look at the end tells whether all
/// of many were numbers. For vectors and for single numbers.
template <class Vector>
XOV_INLINE void addUnlessFinite(const Vector& value, Vector& broken) {
  const Vector same = value;
  broken += value - same;
}

/// One bit for each lane of a comparison that holds.
XOV_INLINE unsigned laneBits(const Int4& mask) {
#if XOV_WIDE_VECTORS
  return static_cast<unsigned>(__builtin_ia32_movmskps(Float4(mask)));
#else
  unsigned bits = 0;
  for (int lane = 0; lane < 4; ++lane)
    bits |= (mask[lane] < 0 ? 1U : 0U) << lane;
  return bits;
#endif
}
XOV_INLINE unsigned laneBits(const Int8& mask) {
  return laneBits(XOV_PICK(mask, mask, 0, 1, 2, 3)) | laneBits(XOV_PICK(mask, mask, 4, 5, 6, 7)) << 4;
}

/// The lowest bit that is set; there must be one.
XOV_INLINE int lowestBit(unsigned bits) {
#if defined(__GNUC__)
  return __builtin_ctz(bits);
#else
  return std::countr_zero(bits);
#endif
}

template <class Vector>
XOV_INLINE float sumOfLanes(const Vector& value) {
  float sum = 0;
  for (int lane = 0; lane < kLanes<Vector>; ++lane)
    sum += value[lane];
  return sum;
}

/// The sum over several vectors, lane by lane, as of one that is as wide as all of them.
template <class Vector, std::size_t parts>
XOV_INLINE float sumOfLanes(const Vector (&values)[parts]) {
  float sum = 0;
  for (const Vector& value : values) {
    for (int lane = 0; lane < kLanes<Vector>; ++lane)
      sum += value[lane];
  }
  return sum;
}

/// True when a comparison holds in no lane.
XOV_INLINE bool inNoLane(const Int4& mask) { return laneBits(mask) == 0; }
XOV_INLINE bool inNoLane(const Int8& mask) {
  return inNoLane(XOV_PICK(mask, mask, 0, 1, 2, 3) | XOV_PICK(mask, mask, 4, 5, 6, 7));
}

/// True when all lanes are 0. Comparisons of the widest vectors are taken apart by the compiler, lane by lane.
template <class Words>
XOV_INLINE bool areZero(const Words& lanes) {
  return inNoLane(lanes != 0);
}
XOV_INLINE bool areZero(const Int16& lanes) {
  return areZero(XOV_PICK(lanes, lanes, 0, 1, 2, 3, 4, 5, 6, 7) |
                 XOV_PICK(lanes, lanes, 8, 9, 10, 11, 12, 13, 14, 15));
}

/// Each lane becomes its square root. Processors take as long for eight as for twice four.
XOV_INLINE void takeRoot(Float4& value) {
#if XOV_WIDE_VECTORS
  value = __builtin_ia32_sqrtps(value);
#else
  for (int lane = 0; lane < kLanes<Float4>; ++lane)
    value[lane] = std::sqrt(value[lane]);
#endif
}
XOV_INLINE void takeRoot(Float8& value) {
  Float4 first = XOV_PICK(value, value, 0, 1, 2, 3), second = XOV_PICK(value, value, 4, 5, 6, 7);
  takeRoot(first);
  takeRoot(second);
  value = XOV_PICK(first, second, 0, 1, 2, 3, 4, 5, 6, 7);
}

/// How wide vectors are, narrowest first.
enum class VectorWidth { Baseline, Avx2, Avx512 };

/// Those of the processor at hand.
inline VectorWidth widestVectorWidth() {
#if XOV_WIDE_VECTORS
  __builtin_cpu_init();
  const bool avx512 = __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512bw") &&
                      __builtin_cpu_supports("avx512vl") && __builtin_cpu_supports("avx512dq");
  if (avx512) return VectorWidth::Avx512;
  return __builtin_cpu_supports("avx2") ? VectorWidth::Avx2 : VectorWidth::Baseline;
#else
  return VectorWidth::Baseline;
#endif
}

inline std::atomic<VectorWidth>& heldVectorWidth() {
  static std::atomic<VectorWidth> width{widestVectorWidth()};
  return width;
}

/// The width that loops are run with.
inline VectorWidth vectorWidth() { return heldVectorWidth().load(std::memory_order_relaxed); }

/// Runs loops with narrower vectors than the processor's, or with those again: so code for other processors is tested
/// on this one. A width that the processor does not have is not taken.
inline void holdVectorWidth(VectorWidth width) {
  const VectorWidth widest = widestVectorWidth();
  heldVectorWidth() = width < widest ? width : widest;
}

} // namespace xov

/// Defines a function `name(parameters)` that calls name##With<Vector>(arguments) compiled for the processor at hand.
#if XOV_WIDE_VECTORS
#define XOV_VECTOR_FUNCTION(result, name, parameters, arguments)                                                     \
  static XOV_TARGET_AVX512 result name##Avx512 parameters { return name##With<Float16> arguments; }                  \
  static XOV_TARGET_AVX2 result name##Avx2 parameters { return name##With<Float8> arguments; }                       \
  static result name##Baseline parameters { return name##With<Float4> arguments; }                                   \
  result name parameters {                                                                                           \
    switch (vectorWidth()) {                                                                                         \
    case VectorWidth::Avx512:                                                                                        \
      return name##Avx512 arguments;                                                                                 \
    case VectorWidth::Avx2:                                                                                          \
      return name##Avx2 arguments;                                                                                   \
    case VectorWidth::Baseline:                                                                                      \
      break;                                                                                                         \
    }                                                                                                                \
    return name##Baseline arguments;                                                                                 \
  }
/// The same for work that wider registers than those of eight lanes do not help, such as choices between lanes: the
/// compiler takes those apart for the widest.
#define XOV_VECTOR8_FUNCTION(result, name, parameters, arguments)                                                    \
  static XOV_TARGET_AVX2 result name##Avx2 parameters { return name##With<Float8> arguments; }                       \
  static result name##Baseline parameters { return name##With<Float4> arguments; }                                   \
  result name parameters {                                                                                           \
    return vectorWidth() == VectorWidth::Baseline ? name##Baseline arguments : name##Avx2 arguments;                 \
  }
#else
#define XOV_VECTOR_FUNCTION(result, name, parameters, arguments)                                                     \
  result name parameters { return name##With<Float4> arguments; }
#define XOV_VECTOR8_FUNCTION(result, name, parameters, arguments)                                                    \
  result name parameters { return name##With<Float4> arguments; }
#endif
