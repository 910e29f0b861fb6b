#pragma once

#include "designer/DesignerViews.h"

#include <QObject>
#include <QtUiPlugin/QDesignerCustomWidgetCollectionInterface>

#include <memory>
#include <vector>

namespace xov::designer {

/// One view in Designer's box of widgets.
class ViewPlugin : public QObject, public QDesignerCustomWidgetInterface {
  Q_OBJECT
  Q_INTERFACES(QDesignerCustomWidgetInterface)

public:
  explicit ViewPlugin(const DesignerView& view);

  QString name() const override;
  QString group() const override;
  QString toolTip() const override;
  QString whatsThis() const override;
  QString includeFile() const override;
  QIcon icon() const override;
  bool isContainer() const override;
  QWidget* createWidget(QWidget* parent) override;
  /// The view as it is dropped on a form, with its usual size.
  QString domXml() const override;

private:
  const DesignerView& view_;
  QString kind_; // what the view shows, as its class says
  QSize size_;
};

/// All of them, which is what Designer and QUiLoader load.
class DesignerPlugin : public QObject, public QDesignerCustomWidgetCollectionInterface {
  Q_OBJECT
  Q_PLUGIN_METADATA(IID "org.qt-project.Qt.QDesignerCustomWidgetCollectionInterface")
  Q_INTERFACES(QDesignerCustomWidgetCollectionInterface)

public:
  explicit DesignerPlugin(QObject* parent = nullptr);
  ~DesignerPlugin() override;

  QList<QDesignerCustomWidgetInterface*> customWidgets() const override;

private:
  std::vector<std::unique_ptr<ViewPlugin>> views_;
};

} // namespace xov::designer
