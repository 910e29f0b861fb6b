#include "XOV_Graphics/seismic/signal/BiquadCascade.h"

#include "XOV_Graphics/seismic/signal/Stretches.h"

#include <array>
#include <cmath>
#include <utility>

namespace xov {

namespace {

// Samples that stay in the cache while they go through the sections, a few at a time.
constexpr std::size_t kBlock = 2048;

// Sections whose memories fit into the processor's registers together.
constexpr std::size_t kSectionsAtOnce = 4;

// What fades away below this is nothing: numbers without their full precision (below 1e-308) take a hundred times as
// long.
constexpr double kNothing = 1e-200;

// How far a stretch is continued: three times as many samples as the filter has coefficients.
constexpr std::size_t kContinuation = 3;

std::size_t continuationOf(std::span<const Biquad> sections) {
  std::size_t coefficients = 1;
  for (const Biquad& section : sections)
    coefficients += section.b2 == 0 && section.a2 == 0 ? 1 : 2;
  return kContinuation * coefficients;
}

} // namespace

std::complex<double> responseOf(std::span<const Biquad> sections, double radians) {
  const std::complex<double> delay = std::polar(1.0, -radians);
  std::complex<double> response = 1;
  for (const Biquad& section : sections)
    response *=
        (section.b0 + delay * (section.b1 + delay * section.b2)) / (1.0 + delay * (section.a1 + delay * section.a2));
  return response;
}

BiquadCascade::BiquadCascade(std::vector<Biquad> sections)
    : sections_(std::move(sections)),
      memories_(sections_.size()) {}

void BiquadCascade::steadyAt(double value) {
  for (std::size_t k = 0; k < sections_.size(); ++k) {
    const Biquad& section = sections_[k];
    const double next = value * (section.b0 + section.b1 + section.b2) / (1 + section.a1 + section.a2);
    memories_[k].second = section.b2 * value - section.a2 * next;
    memories_[k].first = section.b1 * value - section.a1 * next + memories_[k].second;
    value = next;
  }
}

namespace {

/// Takes `count` samples through that many sections. The memories are those of the transposed direct form II, whose
/// sums lose least.
template <std::size_t sectionCount, int direction, class Memory>
void runSections(double* sample, std::size_t count, const Biquad* sections, Memory* memories) {
  std::array<Biquad, sectionCount> own;
  std::array<Memory, sectionCount> memory;
  for (std::size_t k = 0; k < sectionCount; ++k) {
    own[k] = sections[k];
    memory[k] = memories[k];
  }
  for (std::size_t i = 0; i < count; ++i, sample += direction) {
    double value = *sample;
    for (std::size_t k = 0; k < sectionCount; ++k) {
      const double next = own[k].b0 * value + memory[k].first;
      memory[k].first = own[k].b1 * value + memory[k].second - own[k].a1 * next;
      memory[k].second = own[k].b2 * value - own[k].a2 * next;
      value = next;
    }
    *sample = value;
  }
  for (std::size_t k = 0; k < sectionCount; ++k)
    memories[k] = memory[k];
}

} // namespace

template <int direction>
void BiquadCascade::runBlock(double* first, std::size_t count) {
  for (std::size_t k = 0; k < sections_.size();) {
    const std::size_t together = std::min(sections_.size() - k, kSectionsAtOnce);
    const Biquad* const sections = sections_.data() + k;
    Memory* const memories = memories_.data() + k;
    if (together == 4)
      runSections<4, direction>(first, count, sections, memories);
    else if (together == 3)
      runSections<3, direction>(first, count, sections, memories);
    else if (together == 2)
      runSections<2, direction>(first, count, sections, memories);
    else
      runSections<1, direction>(first, count, sections, memories);
    k += together;
  }
  for (Memory& memory : memories_) {
    if (std::abs(memory.first) < kNothing && std::abs(memory.second) < kNothing) memory = {};
  }
}

template <int direction>
void BiquadCascade::run(double* first, std::size_t count) {
  for (std::size_t done = 0; done < count; done += kBlock)
    runBlock<direction>(first + direction * std::ptrdiff_t(done), std::min(kBlock, count - done));
}

void BiquadCascade::filter(std::span<double> samples) { run<1>(samples.data(), samples.size()); }

void BiquadCascade::filterBackwards(std::span<double> samples) {
  if (!samples.empty()) run<-1>(&samples.back(), samples.size());
}

namespace {

void filterWithZeroPhase(std::span<double> stretch, BiquadCascade& cascade) {
  const std::size_t length = std::min(continuationOf(cascade.sections()), stretch.size() - 1);
  std::vector<double> before;
  std::vector<double> behind;
  const std::size_t last = stretch.size() - 1;
  for (std::size_t i = 1; i <= length; ++i) {
    before.push_back(2 * stretch.front() - stretch[length + 1 - i]);
    behind.push_back(2 * stretch.back() - stretch[last - i]);
  }
  cascade.steadyAt(before.empty() ? stretch.front() : before.front());
  cascade.filter(before);
  cascade.filter(stretch);
  cascade.filter(behind);
  cascade.steadyAt(behind.empty() ? stretch.back() : behind.back());
  cascade.filterBackwards(behind);
  cascade.filterBackwards(stretch);
}

} // namespace

// The continuation and the steady state are those of Gustafsson, F. (1996), Determining the initial states in
// forward-backward filtering, IEEE Trans. Signal Process. 44, 988-992, section II.
void applyFilter(std::span<double> values, std::vector<Biquad> sections, FilterPhase phase) {
  BiquadCascade cascade(std::move(sections));
  forEachStretch(values, [&](std::span<double> stretch) {
    if (phase == FilterPhase::Zero) {
      filterWithZeroPhase(stretch, cascade);
      return;
    }
    cascade.reset();
    cascade.filter(stretch);
  });
}

} // namespace xov
