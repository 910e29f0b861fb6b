#pragma once

#include "apps/desk/panes/LiveRequests.h"

#include <QDialog>

#include <XOV_Graphics/base/Result.h>
#include <XOV_Graphics/seismic/realtime/seedlink/SeedLinkStreams.h>
#include <memory>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;

namespace xov::desk {

/// Asks which streams of which SeedLink server a pane is to show, and how. What the server has is listed on request,
/// without holding anything up, and can be chosen from.
class ConnectDialog : public QDialog {
  Q_OBJECT
public:
  explicit ConnectDialog(QWidget* parent = nullptr);
  ~ConnectDialog() override;

  /// What is written there at first.
  void setSource(const LiveSource& source);
  /// What is to be shown.
  PlotRequest request() const;

  void accept() override;

private:
  void check();
  void ask();
  void take(const Result<std::vector<SeedLinkStream>>& streams);
  void choose();

  QLineEdit* server_;
  QLineEdit* stations_;
  QComboBox* kind_;
  QCheckBox* today_;
  QPushButton* ask_;
  QListWidget* streams_;
  QLabel* problem_;
  QPushButton* connect_;
  std::unique_ptr<SeedLinkInquiry> inquiry_;
};

} // namespace xov::desk
