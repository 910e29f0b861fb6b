#pragma once

#include "XOV_Graphics/base/Export.h"

#include <QString>

#include <functional>
#include <memory>

class QWidget;

namespace xov {

/// A sheet on a window that asks for the name of a file to save. It never blocks. A host or a test replaces the sheet
/// that views open with setFactory().
class XOV_EXPORT SavePanel {
public:
  /// What the user chose, as the completion is told.
  static constexpr int kCancelled = 0;
  static constexpr int kAccepted = 1; ///< the user chose a file
  /// Told once, when the sheet ends: kAccepted or kCancelled.
  using Completion = std::function<void(int returnCode)>;
  using Factory = std::function<std::shared_ptr<SavePanel>()>; ///< makes the panel that a view opens

  virtual ~SavePanel();

  /// A new panel from the factory that is set, else a file dialog of the platform. Null where the factory gives none:
  /// then views open no sheet.
  static std::shared_ptr<SavePanel> savePanel();
  /// An empty factory brings the platform's file dialog back.
  static void setFactory(Factory factory);

  /// The extension, without its dot, that is added to names that do not end in it.
  virtual void setRequiredFileType(const QString& extension) = 0;
  /// Opens the panel on a window with a proposed name, in a directory (empty: the one saved to last, at first the
  /// current one), and calls the completion once when the user is done. The panel stays alive until then.
  virtual void beginSheet(const QString& directory, const QString& file, QWidget* window, Completion completion) = 0;
  /// The full path chosen, or proposed while nothing else is; empty after a cancel.
  virtual QString filename() const = 0;
};

} // namespace xov
