#pragma once

#include "apps/xov/terminal/Messages.h"

#include <QRectF>
#include <QSizeF>
#include <QString>

#include <XOV_Graphics/views/base/XOVView.h>
#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace CLI {
class App;
}

namespace xov::cli {

/// Where the plot of a command goes, with the options that all drawing commands share: -o, --size, --scale, --title.
///
/// With -o the plot is written to a file whose extension tells the format. Without it, the plot opens in a window
/// where there is a display; where there is none it becomes a PNG file in the current folder, named after the
/// command.
class Output {
public:
  static constexpr double kLargestSize = 20000;
  static constexpr double kSmallestScale = 0.1;
  static constexpr double kLargestScale = 32;

  /// `command` names the window and the default file; `size` in points is the default of --size.
  Output(const char* command, const QSizeF& size) : command_(command), defaultSize_(size) {}

  void addOptions(CLI::App& options);

  /// Another default of --size, for what the command has found in its input.
  void setDefaultSize(const QSizeF& size) { defaultSize_ = size; }

  /// True when the user gave the name of a file.
  bool toFile() const { return !file_.empty(); }

  /// The title that the user gave, an empty one included, or else `fallback`.
  QString titleOr(const QString& fallback) const;

  /// Makes the view of a plot, of the frame that it is given.
  using MakeView = std::function<std::unique_ptr<XOVView>(const QRectF& frame)>;

  /// Completes a view before it is written to a file; a window shows it as it was made.
  using BeforeWriting = std::function<void(XOVView& view)>;

  /// Starts Qt, makes the view and shows or writes it. Says what could not be written.
  ExitCode deliver(const MakeView& makeView, const BeforeWriting& beforeWriting = {}) const;

private:
  QRectF frame() const;
  ExitCode write(XOVView& view, const QString& path) const;

  const char* command_;
  std::string file_;
  QSizeF defaultSize_;
  std::array<double, 2> size_ = {0, 0}; // not given
  double scale_ = 1;
  std::optional<std::string> title_;
};

} // namespace xov::cli
