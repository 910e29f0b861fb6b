#pragma once

#include <QObject>

#include <XOV_Graphics/views/base/XOVView.h>

namespace xov::cli {

/// Tells beside the pointer what the view under it shows there. On a map, distances count from the last click. Owned
/// by the view.
class HoverReadout : public QObject {
public:
  explicit HoverReadout(XOVView& view);

protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

private:
  XOVView& view_;
};

} // namespace xov::cli
