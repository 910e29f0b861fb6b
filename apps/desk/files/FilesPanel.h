#pragma once

#include "apps/desk/files/CatalogueRequests.h"
#include "apps/desk/files/FileCatalogue.h"
#include "apps/desk/files/FileLoader.h"
#include "apps/desk/files/LeftOutFiles.h"

#include <QWidget>

class QComboBox;
class QDateTimeEdit;
class QLabel;
class QLayout;
class QLineEdit;
class QProgressBar;
class QPushButton;
class QSpinBox;
class QTableView;
class QToolButton;

namespace xov::desk {

/// The files that were opened, to be chosen from: a table with a filter, what could not be read below it, and a bar
/// with a button to give up while files are looked into.
class FilesPanel : public QWidget {
  Q_OBJECT
public:
  explicit FilesPanel(QWidget* parent = nullptr);
  ~FilesPanel() override;

  /// Lists files and folders without holding up the window.
  void add(const QStringList& paths);
  void cancel() { loader_.cancel(); }
  bool isBusy() const { return loader_.isBusy(); }

  /// Shows the rows that are selected; all that are shown where none is.
  void openSelected();
  void removeSelected();
  void clear();

  FileCatalogue& catalogue() { return catalogue_; }
  CatalogueFilter& shown() { return shown_; }
  LeftOutFiles& leftOut() { return leftOut_; }

  /// Where indexes of large files and of archives are kept; nowhere at first.
  void setIndexFolder(const QString& folder) { options_.indexFolder = folder; }
  /// Megabytes for samples that are read as they are drawn, 16 to 1048576; 512 at first.
  void setSampleMegabytes(int megabytes);
  int sampleMegabytes() const { return options_.sampleMegabytes; }
  /// What of archives is shown. An invalid time: the last day.
  void setArchiveTime(const QDateTime& from, const QDateTime& to);

  /// Plots of the seismograms that have something of a stretch of time; none where nothing listed has.
  std::vector<PlotRequest> seismogramsBetween(const QDateTime& from, const QDateTime& to) const;

Q_SIGNALS:
  /// A plot of rows that the user chose.
  void requested(const xov::desk::PlotRequest& request);
  /// All files have been looked into, or that was given up.
  void listed();

private:
  void buildFilter(QLayout& layout);
  void buildTable(QLayout& layout);
  void buildTimes(QLayout& layout);
  void buildProgress(QLayout& layout);
  QToolButton* button(const QString& name, const QString& text, void (FilesPanel::*act)());
  void showAdvance(qint64 done, qint64 total);
  void showCounts();
  void showTimes();
  FileEntries chosen() const;

  FileCatalogue catalogue_;
  CatalogueFilter shown_{catalogue_};
  LeftOutFiles leftOut_;
  FileLoader loader_;
  OpeningOptions options_;
  QLineEdit* filter_ = nullptr;
  QComboBox* kind_ = nullptr;
  QTableView* table_ = nullptr;
  QTableView* leftOutTable_ = nullptr;
  QWidget* times_ = nullptr;
  QDateTimeEdit* from_ = nullptr;
  QDateTimeEdit* to_ = nullptr;
  QLabel* counts_ = nullptr;
  QProgressBar* bar_ = nullptr;
  QPushButton* cancel_ = nullptr;
  QSpinBox* memory_ = nullptr;
};

} // namespace xov::desk
