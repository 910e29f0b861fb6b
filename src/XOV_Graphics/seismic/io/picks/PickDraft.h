#pragma once

#include "XOV_Graphics/base/LeftOut.h"
#include "XOV_Graphics/seismic/io/picks/PickFiles.h"

#include <QSet>

namespace xov {

/// One pick while it is read, with the first problem that it has. Empty texts leave values unknown, but for the time.
struct PickDraft {
  Pick pick;
  QString problem; ///< empty when the pick can be used

  void note(const QString& found);
  void takeTime(const QString& text);
  void takeUncertainty(const QString& text, std::optional<double> Pick::*side);
  void takePolarity(const QString& text);
  void takeOnset(const QString& text);
  void takeMode(const QString& text);
};

/// The picks of a file as they are read, less those with a problem, which are counted.
class PickList {
public:
  explicit PickList(const QString& name) : leftOut_(name, "pick") {}

  /// Adds the pick that stands on that line, under an id that none before it has.
  void add(PickDraft draft, qint64 line);
  /// All picks, or what was wrong with the first where none can be used.
  Result<PickFile> result();

private:
  LeftOut leftOut_;
  PickFile file_;
  QSet<QString> ids_;
};

} // namespace xov
