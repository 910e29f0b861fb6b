#include "XOV_Graphics/platform/trace/SnippetClusters.h"

#include <algorithm>

namespace xov {

void SnippetClusters::reset(const float* samples, float gap) {
  samples_ = samples;
  gap_ = gap;
  lines_ = 0;
  clusters_.clear();
}

void SnippetClusters::add(std::int64_t begin, std::int64_t end) {
  ++lines_;
  Cluster line{begin, begin, kNone, kNone};
  if (end - begin > 2) {
    const auto [low, high] = std::minmax_element(samples_ + begin + 1, samples_ + end - 1);
    line = {low - samples_, high - samples_, low - samples_, high - samples_};
  }
  for (const std::int64_t i : {begin, end - 1}) {
    if (samples_[i] < samples_[line.lowest]) line.lowest = i;
    if (samples_[i] > samples_[line.highest]) line.highest = i;
  }
  if (!clusters_.empty() && overlap(clusters_.back(), line))
    include(clusters_.back(), line);
  else
    clusters_.push_back(line);
}

bool SnippetClusters::overlap(const Cluster& a, const Cluster& b) const {
  return low(b) <= high(a) + gap_ && high(b) >= low(a) - gap_;
}

void SnippetClusters::include(Cluster& cluster, const Cluster& other) const {
  const auto isLower = [this](std::int64_t i, std::int64_t than) { return samples_[i] < samples_[than]; };
  if (isLower(other.lowest, cluster.lowest)) cluster.lowest = other.lowest;
  if (isLower(cluster.highest, other.highest)) cluster.highest = other.highest;
  if (other.innerLowest == kNone) return;
  const bool first = cluster.innerLowest == kNone;
  if (first || isLower(other.innerLowest, cluster.innerLowest)) cluster.innerLowest = other.innerLowest;
  if (first || isLower(cluster.innerHighest, other.innerHighest)) cluster.innerHighest = other.innerHighest;
}

const std::vector<SnippetClusters::Cluster>& SnippetClusters::unite() {
  std::sort(clusters_.begin(), clusters_.end(),
            [this](const Cluster& a, const Cluster& b) { return low(a) < low(b); });
  std::size_t last = 0;
  for (std::size_t k = 1; k < clusters_.size(); ++k) {
    if (overlap(clusters_[last], clusters_[k]))
      include(clusters_[last], clusters_[k]);
    else
      clusters_[++last] = clusters_[k];
  }
  if (!clusters_.empty()) clusters_.resize(last + 1);
  return clusters_;
}

} // namespace xov
