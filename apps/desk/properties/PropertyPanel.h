#pragma once

#include "apps/desk/properties/PropertyEditor.h"

#include <QPointer>
#include <QScrollArea>

#include <XOV_Graphics/views/base/XOVView.h>
#include <vector>

namespace xov::desk {

/// All properties of a view, each with an editor. The panel changes nothing itself: it tells what the user wants, and
/// shows what the view has.
class PropertyPanel : public QScrollArea {
  Q_OBJECT
public:
  explicit PropertyPanel(QWidget* parent = nullptr);

  /// nullptr for none.
  void setView(XOVView* view);

Q_SIGNALS:
  void edited(const QString& name, const QString& text);

private:
  void build();
  void showValues();

  QPointer<XOVView> view_;
  const QMetaObject* shown_ = nullptr;
  std::vector<PropertyEditor*> editors_;
};

} // namespace xov::desk
