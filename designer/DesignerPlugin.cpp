#include "designer/DesignerPlugin.h"

#include "designer/DesignerIcons.h"

#include <XOV_Graphics/platform/View.h>

namespace xov::designer {

ViewPlugin::ViewPlugin(const DesignerView& view) : view_(view) {
  const std::unique_ptr<QWidget> sample(view.make(nullptr));
  size_ = sample->sizeHint();
  if (const auto* drawn = qobject_cast<const View*>(sample.get())) kind_ = drawn->kind();
}

QString ViewPlugin::name() const { return QStringLiteral("xov::") + QLatin1String(view_.className); }

QString ViewPlugin::group() const { return QStringLiteral("XOV Graphics"); }

QString ViewPlugin::toolTip() const { return kind_; }

QString ViewPlugin::whatsThis() const { return QStringLiteral("A view that shows: %1").arg(kind_); }

QString ViewPlugin::includeFile() const { return QStringLiteral("<%1>").arg(QLatin1String(view_.header)); }

QIcon ViewPlugin::icon() const { return designerIcon(view_.motif); }

bool ViewPlugin::isContainer() const { return false; }

QWidget* ViewPlugin::createWidget(QWidget* parent) { return view_.make(parent); }

QString ViewPlugin::domXml() const {
  QString object = QLatin1String(view_.className);
  object[0] = object[0].toLower();
  return QStringLiteral("<ui language=\"c++\"><widget class=\"%1\" name=\"%2\"><property name=\"geometry\"><rect>"
                        "<x>0</x><y>0</y><width>%3</width><height>%4</height></rect></property></widget></ui>\n")
      .arg(name(), object)
      .arg(size_.width())
      .arg(size_.height());
}

DesignerPlugin::DesignerPlugin(QObject* parent) : QObject(parent) {
  for (const DesignerView& view : designerViews())
    views_.push_back(std::make_unique<ViewPlugin>(view));
}

DesignerPlugin::~DesignerPlugin() = default;

QList<QDesignerCustomWidgetInterface*> DesignerPlugin::customWidgets() const {
  QList<QDesignerCustomWidgetInterface*> views;
  for (const auto& view : views_)
    views.append(view.get());
  return views;
}

} // namespace xov::designer
