#include "apps/desk/properties/PropertyPanel.h"

#include "apps/xov/output/PlotProperties.h"

#include <QFormLayout>
#include <QLabel>
#include <QScrollBar>

#include <algorithm>

namespace xov::desk {

PropertyPanel::PropertyPanel(QWidget* parent) : QScrollArea(parent) {
  setWidgetResizable(true);
  setFrameShape(QFrame::NoFrame);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setAccessibleName(tr("Properties of the plot"));
  build();
}

void PropertyPanel::setView(XOVView* view) {
  if (view_) view_->disconnect(this);
  view_ = view;
  if (view != nullptr) {
    connect(view, &XOVView::settingsChanged, this, &PropertyPanel::showValues);
    connect(view, &XOVView::limitsChanged, this, &PropertyPanel::showValues);
  }
  if (shown_ != (view != nullptr ? view->metaObject() : nullptr)) build();
  showValues();
}

// What is particular to the kind of view stands first.
void PropertyPanel::build() {
  editors_.clear();
  shown_ = view_ ? view_->metaObject() : nullptr;
  auto* const form = new QWidget;
  auto* const rows = new QFormLayout(form);
  rows->setFieldGrowthPolicy(QFormLayout::ExpandingFieldsGrow);
  rows->setRowWrapPolicy(QFormLayout::DontWrapRows);
  if (view_) {
    std::vector<QMetaProperty> properties = cli::plotProperties(*view_);
    const int own = XOVView::staticMetaObject.propertyCount();
    std::stable_partition(properties.begin(), properties.end(),
                          [own](const QMetaProperty& p) { return p.propertyIndex() >= own; });
    for (const QMetaProperty& property : properties) {
      PropertyEditor* const editor = PropertyEditor::make(property, form);
      connect(editor, &PropertyEditor::edited, this,
              [this, name = editor->name()](const QString& text) { Q_EMIT edited(name, text); });
      rows->addRow(propertyTitle(editor->name()), editor);
      editors_.push_back(editor);
    }
  } else {
    rows->addRow(new QLabel(tr("No plot is shown.")));
  }
  setWidget(form);
  setMinimumWidth(form->minimumSizeHint().width() + verticalScrollBar()->sizeHint().width());
}

void PropertyPanel::showValues() {
  if (!view_) return;
  const std::vector<QMetaProperty> properties = cli::plotProperties(*view_);
  for (PropertyEditor* const editor : editors_) {
    const auto property = std::ranges::find_if(
        properties, [editor](const QMetaProperty& p) { return editor->name() == QLatin1String(p.name()); });
    if (property != properties.end()) editor->show(cli::plotPropertyText(*property, property->read(view_)));
  }
}

} // namespace xov::desk
