#pragma once

#include <cstdint>
#include <limits>
#include <vector>

namespace xov {

/// Short lines between gaps, all in one column of a page, united where they overlap: a few lines stand for thousands.
///
/// A line's first and last sample end in butts, those between have round joins. So of each cluster four samples
/// count: the lowest and the highest of all, and of those between.
class SnippetClusters {
public:
  static constexpr std::int64_t kNone = -1;

  struct Cluster {
    std::int64_t lowest = kNone, highest = kNone;           ///< samples
    std::int64_t innerLowest = kNone, innerHighest = kNone; ///< none where all lines have two samples
  };

  /// Forgets all. Lines that lie no further apart than `gap`, in values, are taken to overlap.
  void reset(const float* samples, float gap);

  /// Adds the line begin <= i < end, of two samples at least, all of which are numbers.
  void add(std::int64_t begin, std::int64_t end);

  std::int64_t lines() const { return lines_; }
  /// In no order of time.
  const std::vector<Cluster>& unite();

private:
  float low(const Cluster& cluster) const { return samples_[cluster.lowest]; }
  float high(const Cluster& cluster) const { return samples_[cluster.highest]; }
  bool overlap(const Cluster& a, const Cluster& b) const;
  void include(Cluster& cluster, const Cluster& other) const;

  const float* samples_ = nullptr;
  float gap_ = 0;
  std::int64_t lines_ = 0;
  std::vector<Cluster> clusters_;
};

} // namespace xov
