#pragma once

#include <QRectF>

namespace xov::cli {

/// A view under its title, which the view itself leaves to its host.
template <typename View>
class TitledView : public View {
public:
  using View::View;

  void drawRect(const QRectF& dirty) override {
    View::drawRect(dirty);
    this->drawTitleTopCentered();
  }
};

} // namespace xov::cli
