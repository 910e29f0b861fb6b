#include "XOV_Graphics/seismic/signal/ComplexTransform.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <kissfft.hh>
#include <numbers>

namespace xov {

namespace {

using Complex = std::complex<double>;

// What a transform in one go may take: values, result and roots stay in the processor's cache.
constexpr std::size_t kInOneGo = 1 << 14;

// Columns that share cache lines, and are taken together.
constexpr std::size_t kTogether = 8;

/// The divisor next to the square root, from below.
std::size_t middleDivisor(std::size_t n) {
  auto divisor = std::size_t(std::sqrt(double(n)));
  while (n % divisor != 0)
    --divisor;
  return divisor;
}

/// A table of `rows` times `columns` values, row behind row, as one long transform: transforms of the columns, a turn
/// of each value, transforms of the rows, and the table read by columns (Bailey, D. H. (1990), FFTs in external or
/// hierarchical memory, J. Supercomputing 4, 23-35).
class LongTransform {
public:
  LongTransform(std::span<Complex> values, std::size_t rows, bool isBackward)
      : values_(values),
        rows_(rows),
        columns_(values_.size() / rows),
        isBackward_(isBackward) {}

  void run(std::span<Complex> result) {
    transformColumns();
    transformRows(result);
  }

private:
  void transformColumns() {
    const UnitRoots roots(values_.size());
    const kissfft<double> transform(rows_, isBackward_);
    std::vector<Complex> columns(kTogether * rows_);
    std::vector<Complex> transformed(rows_);
    for (std::size_t first = 0; first < columns_; first += kTogether) {
      const std::size_t together = std::min(kTogether, columns_ - first);
      for (std::size_t row = 0; row < rows_; ++row) {
        for (std::size_t i = 0; i < together; ++i)
          columns[i * rows_ + row] = values_[row * columns_ + first + i];
      }
      for (std::size_t i = 0; i < together; ++i) {
        transform.transform(&columns[i * rows_], transformed.data());
        turn(transformed, roots, first + i);
        std::ranges::copy(transformed, columns.begin() + std::ptrdiff_t(i * rows_));
      }
      for (std::size_t row = 0; row < rows_; ++row) {
        for (std::size_t i = 0; i < together; ++i)
          values_[row * columns_ + first + i] = columns[i * rows_ + row];
      }
    }
  }

  void turn(std::span<Complex> column, const UnitRoots& roots, std::size_t index) const {
    for (std::size_t row = 0; row < column.size(); ++row) {
      const Complex root = roots.at(row * index);
      column[row] = product(column[row], isBackward_ ? root : std::conj(root));
    }
  }

  void transformRows(std::span<Complex> result) const {
    const kissfft<double> transform(columns_, isBackward_);
    std::vector<Complex> transformed(kTogether * columns_);
    for (std::size_t first = 0; first < rows_; first += kTogether) {
      const std::size_t together = std::min(kTogether, rows_ - first);
      for (std::size_t i = 0; i < together; ++i)
        transform.transform(&values_[(first + i) * columns_], &transformed[i * columns_]);
      for (std::size_t column = 0; column < columns_; ++column) {
        for (std::size_t i = 0; i < together; ++i)
          result[column * rows_ + first + i] = transformed[i * columns_ + column];
      }
    }
  }

  std::span<Complex> values_;
  std::size_t rows_;
  std::size_t columns_;
  bool isBackward_;
};

} // namespace

UnitRoots::UnitRoots(std::size_t n) : shift_(unsigned(std::bit_width(n)) / 2) {
  const auto root = [n](std::size_t m) { return std::polar(1.0, 2 * std::numbers::pi * double(m) / double(n)); };
  fine_.resize(std::size_t(1) << shift_);
  coarse_.resize((n >> shift_) + 1);
  for (std::size_t m = 0; m < fine_.size(); ++m)
    fine_[m] = root(m);
  for (std::size_t m = 0; m < coarse_.size(); ++m)
    coarse_[m] = root(m << shift_);
}

struct ComplexPlan::InOneGo {
  InOneGo(std::size_t n, bool isBackward) : transform(n, isBackward) {}
  kissfft<double> transform;
};

ComplexPlan::ComplexPlan(std::size_t n, TransformDirection direction) : direction_(direction) {
  if (n <= kInOneGo) inOneGo_ = std::make_unique<InOneGo>(n, direction == TransformDirection::Backward);
}

ComplexPlan::~ComplexPlan() = default;

void ComplexPlan::run(std::span<Complex> values, std::span<Complex> result) const {
  if (inOneGo_) {
    inOneGo_->transform.transform(values.data(), result.data());
  } else {
    LongTransform(values, middleDivisor(values.size()), direction_ == TransformDirection::Backward).run(result);
  }
}

void complexTransform(std::span<Complex> values, std::span<Complex> result, TransformDirection direction) {
  ComplexPlan(values.size(), direction).run(values, result);
}

} // namespace xov
