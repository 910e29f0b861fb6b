#include "apps/desk/window/Theme.h"

#include "apps/desk/desktop/Painting.h"
#include "apps/desk/window/MainWindow.h"

#include <QActionGroup>
#include <QApplication>
#include <QMenu>
#include <QPalette>
#include <QStyle>
#include <QStyleFactory>

#include <algorithm>

namespace xov::desk {

namespace {

struct ThemeRow {
  const char* name;
  const char* title;
};

constexpr ThemeRow kThemes[] = {
    {"system", QT_TRANSLATE_NOOP("ThemeActions", "&System Colours")},
    {"light", QT_TRANSLATE_NOOP("ThemeActions", "&Light")},
    {"dark", QT_TRANSLATE_NOOP("ThemeActions", "&Dark")},
};

struct PaletteRow {
  QPalette::ColorRole role;
  QRgb light;
  QRgb dark;
};

constexpr PaletteRow kPalette[] = {
    {QPalette::Window, 0xffeff0f1, 0xff2b2d30},
    {QPalette::WindowText, 0xff232627, 0xffe6e6e6},
    {QPalette::Base, 0xffffffff, 0xff1e1f22},
    {QPalette::AlternateBase, 0xfff5f5f5, 0xff26282b},
    {QPalette::Text, 0xff232627, 0xffe6e6e6},
    {QPalette::Button, 0xffe6e7e8, 0xff393b40},
    {QPalette::ButtonText, 0xff232627, 0xffe6e6e6},
    {QPalette::ToolTipBase, 0xfffcfcfc, 0xff393b40},
    {QPalette::ToolTipText, 0xff232627, 0xffe6e6e6},
    {QPalette::Highlight, 0xff2a6fb0, 0xff3f7fbf},
    {QPalette::HighlightedText, 0xffffffff, 0xffffffff},
    {QPalette::Link, 0xff1f5f9f, 0xff7fb2e5},
    {QPalette::PlaceholderText, 0xff7f8c8d, 0xff9a9da1},
    {QPalette::Light, 0xffffffff, 0xff4a4d52},
    {QPalette::Midlight, 0xfff7f7f8, 0xff424549},
    {QPalette::Mid, 0xffb8babd, 0xff1b1c1f},
    {QPalette::Dark, 0xff8d9093, 0xff141517},
    {QPalette::Shadow, 0xff5f6265, 0xff0b0b0c},
};

QPalette paletteOf(bool isDark) {
  QPalette palette;
  for (const PaletteRow& row : kPalette)
    palette.setColor(row.role, QColor::fromRgb(isDark ? row.dark : row.light));
  const QColor faint = QColor::fromRgb(isDark ? 0xff7b7e83 : 0xffa0a3a6);
  for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
    palette.setColor(QPalette::Disabled, role, faint);
  return palette;
}

} // namespace

void turnLightness(QImage& image) {
  image.convertTo(QImage::Format_ARGB32_Premultiplied);
  for (int y = 0; y < image.height(); ++y) {
    auto* const row = reinterpret_cast<QRgb*>(image.scanLine(y));
    std::transform(row, row + image.width(), row, [](QRgb pixel) {
      const auto [least, most] = std::minmax({qRed(pixel), qGreen(pixel), qBlue(pixel)});
      const int shift = qAlpha(pixel) - least - most;
      return qRgba(qRed(pixel) + shift, qGreen(pixel) + shift, qBlue(pixel) + shift, qAlpha(pixel));
    });
  }
}

void DarkPaper::draw(QPainter* painter) {
  QPoint offset;
  const QPixmap plot = sourcePixmap(Qt::DeviceCoordinates, &offset, QGraphicsEffect::NoPad);
  QImage image = plot.toImage();
  turnLightness(image);
  paintInDevice(*painter, offset, image);
}

ThemeActions::ThemeActions(MainWindow& window)
    : QObject(&window),
      window_(window),
      theme_(QLatin1String(kThemes[0].name)),
      themes_(new QActionGroup(this)),
      darkPlots_(nullptr) {
  QMenu* const menu = window.menu(QStringLiteral("tools"))->addMenu(tr("&Colours"));
  for (const ThemeRow& row : kThemes) {
    QAction* const action = themes_->addAction(tr(row.title));
    action->setObjectName(QStringLiteral("theme_") + QLatin1String(row.name));
    action->setCheckable(true);
    action->setData(QLatin1String(row.name));
    connect(action, &QAction::triggered, this, [this, &row] { setTheme(QLatin1String(row.name)); });
  }
  themes_->actions().constFirst()->setChecked(true);
  menu->addActions(themes_->actions());
  menu->addSeparator();
  darkPlots_ = menu->addAction(tr("Plots on Dark &Paper"));
  darkPlots_->setObjectName(QStringLiteral("darkPlots"));
  darkPlots_->setCheckable(true);
  darkPlots_->setShortcut(Qt::CTRL | Qt::SHIFT | Qt::Key_D);
  connect(darkPlots_, &QAction::toggled, this, &ThemeActions::showPlots);
  connect(&window, &MainWindow::paneOpened, this,
          [this](Pane* pane) { connect(pane, &Pane::viewMade, this, &ThemeActions::showPlots); });
}

void ThemeActions::setTheme(const QString& theme) {
  const auto* const row =
      std::ranges::find_if(kThemes, [&theme](const ThemeRow& known) { return theme == QLatin1String(known.name); });
  theme_ = QLatin1String(row == std::end(kThemes) ? kThemes[0].name : row->name);
  for (QAction* const action : themes_->actions())
    action->setChecked(action->data().toString() == theme_);
  if (theme_ == QLatin1String(kThemes[0].name)) return QApplication::setPalette(QPalette());
  // The style that takes every colour from the palette.
  QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
  QApplication::setPalette(paletteOf(theme_ == QLatin1String("dark")));
}

bool ThemeActions::darkPlots() const { return darkPlots_->isChecked(); }

void ThemeActions::setDarkPlots(bool dark) { darkPlots_->setChecked(dark); }

void ThemeActions::showPlots() const {
  for (const Pane* const pane : window_.panes()) {
    XOVView* const view = pane->view();
    if (view != nullptr && darkPlots() != (view->graphicsEffect() != nullptr))
      view->setGraphicsEffect(darkPlots() ? new DarkPaper(view) : nullptr);
  }
}

} // namespace xov::desk
