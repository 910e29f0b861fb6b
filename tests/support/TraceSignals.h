#pragma once

#include <cstddef>
#include <functional>
#include <random>
#include <vector>

namespace xov {

/// What a trace may look like: the value at x points for sample i, `perPoint` of them to a point.
struct Signal {
  const char* name;
  std::function<float(double x, std::size_t i, double perPoint, std::mt19937& random)> value;
};

/// Noise, bursts, a sine, steps, spikes, a flat line and gaps, made for pictures of 48 points height.
const std::vector<Signal>& signalKinds();

/// `points` points of a signal.
std::vector<float> samplesOf(const Signal& signal, double perPoint, double points, std::mt19937& random);

float normal(std::mt19937& random, double deviation);

/// White noise.
std::vector<float> noise(std::size_t count, float deviation, unsigned seed);

} // namespace xov
