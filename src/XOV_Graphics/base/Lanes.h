#pragma once

#include <cstdint>
#include <cstring>

// Loops over samples are written once, for vectors of any width, and compiled for the widths that processors have;
// the best one for the processor at hand is chosen at run time. Everything is inlined into functions that carry the
// processor's name, so that a build for the oldest 64-bit processors stays runnable on them.

#if defined(__x86_64__) && defined(__GNUC__)
#define XOV_WIDE_VECTORS 1
#define XOV_TARGET_AVX2 __attribute__((target("avx2")))
#define XOV_TARGET_AVX512 __attribute__((target("avx512f,avx512bw,avx512vl,avx512dq")))
#else
#define XOV_WIDE_VECTORS 0
#endif
#define XOV_INLINE __attribute__((always_inline)) inline
#define XOV_INLINE_LAMBDA __attribute__((always_inline))

namespace xov {

using Float4 = float __attribute__((vector_size(16)));
using Float8 = float __attribute__((vector_size(32)));
using Float16 = float __attribute__((vector_size(64)));
using Int4 = std::int32_t __attribute__((vector_size(16)));
using Int8 = std::int32_t __attribute__((vector_size(32)));
using Int16 = std::int32_t __attribute__((vector_size(64)));
using Shorts8 = std::uint16_t __attribute__((vector_size(16)));
using Shorts16 = std::uint16_t __attribute__((vector_size(32)));

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
  value = value < other ? value : other;
}
template <class Vector>
XOV_INLINE void keepGreater(Vector& value, const Vector& other) {
  value = value > other ? value : other;
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
  return laneBits(__builtin_shufflevector(mask, mask, 0, 1, 2, 3)) |
         laneBits(__builtin_shufflevector(mask, mask, 4, 5, 6, 7)) << 4;
}

template <class Vector>
XOV_INLINE float sumOfLanes(const Vector& value) {
  float sum = 0;
  for (int lane = 0; lane < kLanes<Vector>; ++lane)
    sum += value[lane];
  return sum;
}

/// True when a comparison holds in no lane.
XOV_INLINE bool inNoLane(const Int4& mask) { return laneBits(mask) == 0; }
XOV_INLINE bool inNoLane(const Int8& mask) {
  return inNoLane(__builtin_shufflevector(mask, mask, 0, 1, 2, 3) | __builtin_shufflevector(mask, mask, 4, 5, 6, 7));
}

/// How wide the vectors of the processor at hand are.
enum class VectorWidth { Baseline, Avx2, Avx512 };

inline VectorWidth vectorWidth() {
#if XOV_WIDE_VECTORS
  static const VectorWidth width = [] {
    __builtin_cpu_init();
    const bool avx512 = __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512bw") &&
                        __builtin_cpu_supports("avx512vl") && __builtin_cpu_supports("avx512dq");
    if (avx512) return VectorWidth::Avx512;
    return __builtin_cpu_supports("avx2") ? VectorWidth::Avx2 : VectorWidth::Baseline;
  }();
  return width;
#else
  return VectorWidth::Baseline;
#endif
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
