#pragma once

#include "apps/desk/panes/PlotRequest.h"

#include <QByteArray>
#include <QStringList>

#include <XOV_Graphics/base/Result.h>
#include <vector>

namespace xov::desk {

/// A pane as it is remembered.
struct RememberedPane {
  int number = 0;
  int page = 0;
  PlotRequest request;

  bool operator==(const RememberedPane&) const = default;
};

/// What the desk remembers from one start to the next.
struct DeskSettings {
  static constexpr int kMostRecent = 20;
  static constexpr int kMostPanes = 200;

  QByteArray geometry;  ///< of the window
  QByteArray tools;     ///< where tools stand
  QByteArray workspace; ///< where panes stand
  std::vector<RememberedPane> panes;
  int current = 0; ///< the number of the current pane
  QStringList recent;
  QString theme;
  bool darkPlots = false;
  QString picks;             ///< the file of the picks
  bool isPicking = false;    ///< by hand
  int sampleMegabytes = 512; ///< of memory for samples of large files

  bool operator==(const DeskSettings&) const = default;

  QByteArray toJson() const;
  /// Whatever of it is well-formed; the rest is as it is at first. The error says that it is no such text at all.
  static Result<DeskSettings> fromJson(const QByteArray& text);

  /// Puts a path in front of those opened last.
  void addRecent(const QString& path);
};

/// The file of the settings, below the user's folder for them.
QString settingsPath();

/// The settings of a file; those at first where there is none. A file that is broken is kept beside the new one, with
/// ".broken" behind its name, and `note` says so.
DeskSettings readSettings(const QString& path, QString* note);
/// Writes the whole file or nothing; the error names it.
Status writeSettings(const DeskSettings& settings, const QString& path);

} // namespace xov::desk
