#pragma once

#include "apps/desk/window/MainWindow.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

namespace xov::desk {

/// Records in a folder, and a window whose panes are drawn by the commands of xov.
class DeskTest : public testing::Test {
protected:
  DeskTest();
  ~DeskTest() override;

  QString at(const QString& name) const { return folder_.filePath(name); }
  /// A SAC file with a sine of that many samples at 10 Hz.
  QString writeRecord(const QString& name, const char* station, const char* component = "BHZ", int samples = 601);
  void writeFile(const QString& name, const QByteArray& contents);

  static CommandRunner runner();
  PlotRequest request(const QString& kind, const QStringList& files) const;
  /// Whether the pane has a plot, which it waits for.
  static bool hasPlot(const Pane& pane);
  /// The object of that name below the window; fails where there is none.
  template <typename T>
  T& child(const QString& name) {
    T* const found = window_->findChild<T*>(name);
    EXPECT_NE(found, nullptr) << qPrintable(name);
    return *found;
  }

  QTemporaryDir folder_;
  std::unique_ptr<MainWindow> window_;
};

} // namespace xov::desk
