#pragma once

#include "apps/xov/options/Options.h"

#include <QHash>
#include <QStringList>

#include <XOV_Graphics/seismic/SeismogramRecord.h>
#include <optional>
#include <string>
#include <vector>

namespace xov {
class SeismogramView;
class XOVView;
} // namespace xov

namespace xov::cli {

/// The option --line-width.
class LineWidthOption {
public:
  void addOptions(const Options& options);

  /// Leaves the view's own width where the user has not given one.
  void apply(XOVView& view) const;

private:
  std::optional<double> points_;
};

/// The options --colors, --color-by, --legend and --line-width of commands for seismograms.
class TraceStyle {
public:
  void addOptions(const Options& options);
  /// --colors and --line-width alone, for plots whose traces belong together by their places.
  void addPlainOptions(const Options& options);

  /// The groups that records belong to, with their files: numbers that stay the same from page to page.
  std::vector<std::size_t> groupsOf(const SeismogramArray& records);
  /// Takes these numbers for records, which may be other ones than those that groupsOf() was asked of.
  void keepGroups(const SeismogramArray& records, const std::vector<std::size_t>& groups);

  /// Hands width, colours and legend to a view of such records: the colours of the list, or else of categoryColor(),
  /// one for each group, as soon as the user wants groups or a legend.
  void apply(SeismogramView& view, const SeismogramArray& records) const;

private:
  bool isWanted() const { return !colors_.empty() || !groups_.empty() || !legend_.empty(); }

  LineWidthOption width_;
  bool isPlain_ = false;
  std::vector<std::string> colors_;
  std::string groups_;
  std::string legend_; // its place; empty for none
  QStringList names_;  // of the groups
  QHash<const SeismogramRecord*, std::size_t> groupOf_;
};

} // namespace xov::cli
