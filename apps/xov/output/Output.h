#pragma once

#include "apps/xov/options/Options.h"
#include "apps/xov/output/FileTemplate.h"
#include "apps/xov/output/PlotSize.h"
#include "apps/xov/terminal/Messages.h"

#include <QRectF>
#include <QSizeF>
#include <QString>

#include <XOV_Graphics/views/base/XOVView.h>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace xov::cli {

/// One page of a plot: what the name of its file may say of it, and its size where the user gives none (that of the
/// command where this is empty).
struct PlotPage {
  NameFields fields;
  QSizeF size;
};

/// Where the plot of a command goes, with the options that all drawing commands share: -o, --size, --scale, --dpi,
/// --title, --set.
///
/// With -o the plot is written to a file whose extension tells the format, and whose name may have fields. Without
/// it, the plot opens in a window where there is a display; where there is none it becomes a file in the current
/// folder named after the command, PNG of one page and PDF of several, and takes the place of none. Where the thread
/// has a PlotReceiver the plot goes there, whatever the options say.
class Output {
public:
  static constexpr double kLargestSize = kLargestSide;
  static constexpr double kSmallestScale = 0.1;
  static constexpr double kLargestScale = 32;

  /// `command` names the window and the default file; `size` in points is the default of --size.
  Output(const char* command, const QSizeF& size) : command_(command), defaultSize_(size) {}

  /// Names of files may have these fields, and {page}, the number of the page from 1 on.
  void addOptions(const Options& options, const QStringList& fields = {});

  /// The option --kiosk, for commands whose window may stay on a wall; to be said besides addOptions().
  void addKioskOption(const Options& options);

  /// Another default of --size, for what the command has found in its input.
  void setDefaultSize(const QSizeF& size) { defaultSize_ = size; }

  /// True when the user gave the name of a file.
  bool toFile() const { return !file_.empty(); }

  /// The title that the user gave, an empty one included, or else `fallback`.
  QString titleOr(const QString& fallback) const;

  /// Makes the view of a page, of the frame that it is given.
  using MakePage = std::function<std::unique_ptr<XOVView>(const QRectF& frame, std::size_t page)>;
  /// Makes the view of a plot of one page.
  using MakeView = std::function<std::unique_ptr<XOVView>(const QRectF& frame)>;

  /// Completes a view before it is written to a file; a window shows it as it was made.
  using BeforeWriting = std::function<void(XOVView& view)>;

  /// Starts Qt, makes the view and shows or writes it. Says what could not be written.
  ExitCode deliver(const MakeView& makeView, const BeforeWriting& beforeWriting = {}) const;
  /// The same with what the name of the file may say.
  ExitCode deliver(const NameFields& fields, const MakeView& makeView, const BeforeWriting& beforeWriting = {}) const;

  /// The same for a plot of pages, each of which is made when it is its turn and does not outlive it.
  ExitCode deliver(const std::vector<PlotPage>& pages, const MakePage& makePage,
                   const BeforeWriting& beforeWriting = {}) const;

  /// What the view that is being made shows and does not hold itself, for a PlotReceiver.
  static void keep(std::shared_ptr<const void> shown);

private:
  struct Plot;
  QRectF frameOf(const PlotPage& page) const;
  double pixelsPerPoint() const;
  std::unique_ptr<XOVView> make(const Plot& plot, std::size_t page) const;
  /// Writes the properties of --set; throws where there is no such property or value.
  void writeProperties(XOVView& view) const;
  ExitCode writeAll(const Plot& plot, const QString& name) const;
  Status writePages(const Plot& plot, const PageFile& file) const;

  const char* command_;
  std::string file_;
  QStringList fields_;
  QSizeF defaultSize_;
  QSizeF size_; // empty where it is not given
  std::optional<double> scale_;
  std::optional<double> dpi_;
  std::optional<std::string> title_;
  bool isKiosk_ = false;
  Option properties_;
};

} // namespace xov::cli
