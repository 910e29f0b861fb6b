#pragma once

#include <QObject>

namespace xov::desk {

class MainWindow;

/// Tells in the status bar and on the terminal which samples could not be read while plots were drawn, as of a file
/// that was cut short or lies on a disk that fails: the plots have gaps there.
class ReadingFailures : public QObject {
  Q_OBJECT
public:
  explicit ReadingFailures(MainWindow& window);
  ~ReadingFailures() override;

private:
  void tell();

  MainWindow& window_;
};

} // namespace xov::desk
