#pragma once

#include <QGraphicsEffect>
#include <QImage>
#include <QObject>
#include <QString>

class QActionGroup;
class QAction;

namespace xov::desk {

class MainWindow;

/// Turns the lightness of each pixel about, so that white paper becomes black and colours keep their hue.
void turnLightness(QImage& image);

/// Shows a plot on dark paper. The plot itself stays as it is, and so does what is written of it.
class DarkPaper : public QGraphicsEffect {
  Q_OBJECT
public:
  using QGraphicsEffect::QGraphicsEffect;

protected:
  void draw(QPainter* painter) override;
};

/// Light and dark windows, by the menu. Plots stay on white, unless they are wanted dark, too.
class ThemeActions : public QObject {
  Q_OBJECT
public:
  explicit ThemeActions(MainWindow& window);

  /// "light", "dark", or "system" for what the desktop has, which any other name means, too.
  QString theme() const { return theme_; }
  void setTheme(const QString& theme);
  bool darkPlots() const;
  void setDarkPlots(bool dark);

private:
  void showPlots() const;

  MainWindow& window_;
  QString theme_;
  QActionGroup* themes_;
  QAction* darkPlots_;
};

} // namespace xov::desk
