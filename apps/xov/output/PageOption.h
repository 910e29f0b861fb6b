#pragma once

#include "apps/xov/options/Options.h"
#include "apps/xov/output/Output.h"

#include <XOV_Graphics/seismic/SeismogramRecord.h>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace xov::cli {

/// Makes records ready for one plot: one time axis, order and the like.
using MakeReady = std::function<SeismogramArray(SeismogramArray records)>;

/// Records on the pages of a plot.
class RecordPages {
public:
  /// For the names of files.
  const std::vector<PlotPage>& plotPages() const { return plotPages_; }
  /// The size that a page has unless the user gives one.
  void setSize(std::size_t page, const QSizeF& size) { plotPages_[page].size = size; }

  std::size_t count() const { return pages_.size(); }
  /// How many records a page has.
  std::size_t recordsOn(std::size_t page) const { return pages_[page].size(); }
  /// The records of a page, which are ready only where all pages are.
  const SeismogramArray& recordsAsRead(std::size_t page) const { return pages_[page]; }
  /// The records of a page, ready to be drawn, which views do not hold themselves: they stay until another page's are
  /// asked for.
  const std::shared_ptr<const SeismogramArray>& recordsOf(std::size_t page);

private:
  friend class PageOption;
  std::vector<SeismogramArray> pages_;
  std::vector<PlotPage> plotPages_;
  MakeReady makeReady_; // empty where the pages are ready
  std::shared_ptr<const SeismogramArray> shown_;
};

/// The option --page: how the records of a plot are laid on pages.
class PageOption {
public:
  /// A page holds so many times `unit` records, which stay together: two of a pair. `things` is what help calls them;
  /// null where a page cannot hold so many of anything, but only a station or event.
  explicit PageOption(const char* things, std::size_t unit = 1) : things_(things), unit_(unit) {}

  void addOptions(const Options& options);

  /// All records on one page unless the user wants pages: of so many each, which are made ready together and share
  /// their time axis, or one a station or event, in the order of their first records, each made ready by itself.
  RecordPages pagesOf(SeismogramArray records, const MakeReady& makeReady) const;

private:
  std::vector<SeismogramArray> grouped(const SeismogramArray& records) const;

  const char* things_;
  std::size_t unit_;
  std::string page_; // a number, "station" or "event"; empty for one page
};

} // namespace xov::cli
