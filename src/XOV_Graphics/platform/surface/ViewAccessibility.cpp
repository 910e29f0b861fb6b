#include "XOV_Graphics/platform/surface/ViewAccessibility.h"

#include "XOV_Graphics/platform/View.h"

#include <QAccessible>
#include <QAccessibleWidget>

namespace xov {

namespace {

class AccessibleView : public QAccessibleWidget {
public:
  explicit AccessibleView(View* view) : QAccessibleWidget(view, QAccessible::Chart) {}

  QString text(QAccessible::Text kind) const override {
    const QString told = QAccessibleWidget::text(kind); // what the host has set
    const auto* view = static_cast<const View*>(widget());
    if (!told.isEmpty() || view == nullptr) return told;
    if (kind == QAccessible::Name) return view->spokenName();
    if (kind == QAccessible::Description) return view->spokenDescription();
    return told;
  }
};

QAccessibleInterface* makeAccessible(const QString&, QObject* object) {
  auto* view = qobject_cast<View*>(object);
  return view != nullptr ? new AccessibleView(view) : nullptr;
}

} // namespace

void installViewAccessibility() {
  [[maybe_unused]] static const bool installed = [] {
    QAccessible::installFactory(makeAccessible);
    return true;
  }();
}

} // namespace xov
