#pragma once

#include <cstddef>
#include <span>
#include <vector>

namespace xov {

/// The rows of a spectrogram, from the highest frequency down, and how they follow from a spectrum.
class FrequencyRows {
public:
  /// `rows` of them between two frequencies, the lower one above 0 where they are logarithmic.
  FrequencyRows(int rows, double lowestHz, double highestHz, bool logarithmic);

  /// Prepares for spectra of so many densities `stepHz` apart, from 0 Hz on.
  void setBins(std::size_t bins, double stepHz);

  /// Adds a spectrum's rows to those of a column, which is as long as there are rows. A row is the
  /// mean of the densities in it; one without any lies between the neighbours of its middle, by their decibels. A row
  /// beyond the last density stays as it is.
  void addTo(std::span<double> column, std::span<const double> density) const;

private:
  /// The mean of some densities, or a mixture of two neighbours.
  struct Source {
    std::size_t first = 0;
    std::size_t count = 0; ///< 0: `first` and the next one
    double share = 0;      ///< of the next one
    bool exists = false;
  };

  int rows_;
  std::vector<double> edges_; ///< falling, one more than rows
  bool logarithmic_;
  std::vector<Source> sources_;
};

} // namespace xov
