#pragma once

#include "apps/desk/panes/PlotMaker.h"
#include "apps/desk/panes/PlotRequest.h"

#include <QWidget>

class QLabel;
class QProgressBar;
class QStackedLayout;

namespace xov::desk {

/// A plot and what it is a plot of: shows what a command of xov draws for a request.
class Pane : public QWidget {
  Q_OBJECT
public:
  explicit Pane(CommandRunner run, QWidget* parent = nullptr);
  ~Pane() override;

  const PlotRequest& request() const { return request_; }
  /// Makes the plot anew. The one before stays until the new one is there, or for good when that fails. Where only
  /// properties of the view are others nothing is read again.
  void setRequest(const PlotRequest& request);

  /// The plot; nullptr while there is none. Another one after each viewMade().
  XOVView* view() const { return view_.get(); }
  std::size_t page() const { return page_; }
  std::size_t pages() const;
  /// The page of the plot that is being made, where it has that many.
  void setFirstPage(std::size_t page) { page_ = page; }
  /// Shows another page of a plot of several, counted from 0.
  void showPage(std::size_t page);

  /// The request with all properties of the view that are others than the command makes them at this size, the user's
  /// zoom among them.
  PlotRequest requestAsShown();

  /// Whether a plot is being made.
  bool isBusy() const { return next_ != nullptr; }
  /// Gives the making up; a pane without a plot says so.
  void cancel();

  /// What this pane is called in tabs: the kind and the files.
  QString name() const;
  /// What the command said when it made the plot.
  const QStringList& messages() const { return messages_; }

protected:
  void resizeEvent(QResizeEvent* event) override;

Q_SIGNALS:
  void requestChanged();
  void viewMade(xov::XOVView* view);
  /// The view goes.
  void viewGoing(xov::XOVView* view);
  /// The plot is of another number of pages, or another one is shown.
  void pageChanged();
  /// A plot is being made, or not any more.
  void busyChanged(bool isBusy);
  /// The command had nothing to show.
  void failed();
  void said(const QString& text);

private:
  void start();
  void takePlot();
  std::unique_ptr<XOVView> make(PlotMaker& maker, std::size_t page);
  void writeProperties(XOVView& view);
  void say(const QString& text);
  void showView(std::unique_ptr<XOVView> view);
  /// Leaves as much room beside a plot of two like axes as gives both one scale.
  void fitLikeAxes();
  void showFailure();
  void showAdvance(const QString& what, qint64 done, qint64 total);

  CommandRunner run_;
  PlotRequest request_;
  std::unique_ptr<PlotMaker> maker_; // of the view
  std::unique_ptr<PlotMaker> next_;  // at work
  std::unique_ptr<XOVView> view_;    // before its maker
  std::size_t page_ = 0;
  QStringList messages_;
  QStackedLayout* layers_;
  QWidget* waiting_;
  QLabel* text_;
  QProgressBar* bar_;
  QWidget* cancel_;
};

} // namespace xov::desk
