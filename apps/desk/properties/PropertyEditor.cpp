#include "apps/desk/properties/PropertyEditor.h"

#include "apps/xov/output/PlotProperties.h"

#include <QAction>
#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QMetaEnum>
#include <QToolButton>

namespace xov::desk {

namespace {

constexpr int kSwatch = 16;

class TickEditor : public PropertyEditor {
public:
  explicit TickEditor(const QMetaProperty& property, QWidget* parent)
      : PropertyEditor(property, parent),
        box_(new QCheckBox(this)) {
    layout()->addWidget(box_);
    setFocusProxy(box_);
    box_->setAccessibleName(propertyTitle(name()));
    connect(box_, &QCheckBox::clicked, this,
            [this](bool isOn) { Q_EMIT edited(isOn ? QStringLiteral("true") : QStringLiteral("false")); });
  }
  void show(const QString& text) override { box_->setChecked(text == QLatin1String("true")); }

private:
  QCheckBox* box_;
};

class ChoiceEditor : public PropertyEditor {
public:
  explicit ChoiceEditor(const QMetaProperty& property, QWidget* parent)
      : PropertyEditor(property, parent),
        box_(new QComboBox(this)) {
    layout()->addWidget(box_);
    setFocusProxy(box_);
    box_->setAccessibleName(propertyTitle(name()));
    const QMetaEnum names = property.enumerator();
    for (int i = 0; i < names.keyCount(); ++i)
      box_->addItem(propertyTitle(QLatin1String(names.key(i))), QLatin1String(names.key(i)));
    connect(box_, &QComboBox::activated, this, [this] { Q_EMIT edited(box_->currentData().toString()); });
  }
  void show(const QString& text) override { box_->setCurrentIndex(box_->findData(text)); }

private:
  QComboBox* box_;
};

class LineEditor : public PropertyEditor {
public:
  explicit LineEditor(const QMetaProperty& property, QWidget* parent)
      : PropertyEditor(property, parent),
        line_(new QLineEdit(this)) {
    layout()->addWidget(line_);
    setFocusProxy(line_);
    line_->setAccessibleName(propertyTitle(name()));
    connect(line_, &QLineEdit::editingFinished, this, &LineEditor::finish);
    connect(line_, &QLineEdit::textEdited, this, [this] { tell({}); });
  }
  // A line with the keyboard ends its editing when it goes, behind this.
  ~LineEditor() override { line_->disconnect(this); }
  void show(const QString& text) override {
    if (line_->hasFocus() && line_->isModified()) return;
    shown_ = text;
    line_->setText(text);
    tell({});
  }

protected:
  void edit(const QString& text) {
    line_->setText(text);
    line_->setModified(true);
    finish();
  }
  QString text() const { return line_->text(); }

private:
  void finish() {
    if (!line_->isModified() || line_->text() == shown_) return;
    const Result<QVariant> value = cli::plotPropertyValue(property(), line_->text());
    tell(value.error());
    if (!value) return;
    line_->setModified(false);
    shown_ = line_->text();
    Q_EMIT edited(shown_);
  }
  void tell(const QString& wrong) {
    line_->setToolTip(wrong);
    line_->setAccessibleDescription(wrong);
    QPalette palette = QWidget::palette();
    if (!wrong.isEmpty()) palette.setColor(QPalette::Text, QColor(0xd5, 0x5e, 0x00));
    line_->setPalette(palette);
  }

  QLineEdit* line_;
  QString shown_;
};

class ColorEditor : public LineEditor {
public:
  explicit ColorEditor(const QMetaProperty& property, QWidget* parent)
      : LineEditor(property, parent),
        button_(new QToolButton(this)) {
    layout()->addWidget(button_);
    button_->setAccessibleName(tr("Choose %1").arg(propertyTitle(name())));
    button_->setToolTip(button_->accessibleName());
    connect(button_, &QToolButton::clicked, this, &ColorEditor::choose);
  }
  void show(const QString& text) override {
    LineEditor::show(text);
    QPixmap swatch(kSwatch, kSwatch);
    swatch.fill(text.isEmpty() ? QColor(Qt::transparent) : QColor(text));
    button_->setIcon(swatch);
  }

private:
  void choose() {
    auto* const dialog = new QColorDialog(QColor(text()), this);
    dialog->setOption(QColorDialog::ShowAlphaChannel);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &QColorDialog::colorSelected, this,
            [this](const QColor& color) { edit(cli::plotPropertyText(property(), color)); });
    dialog->open();
  }

  QToolButton* button_;
};

} // namespace

PropertyEditor::PropertyEditor(const QMetaProperty& property, QWidget* parent)
    : QWidget(parent),
      property_(property) {
  setObjectName(QStringLiteral("property_") + name());
  auto* const row = new QHBoxLayout(this);
  row->setContentsMargins({});
}

PropertyEditor* PropertyEditor::make(const QMetaProperty& property, QWidget* parent) {
  if (property.isEnumType()) return new ChoiceEditor(property, parent);
  switch (property.typeId()) {
  case QMetaType::Bool:
    return new TickEditor(property, parent);
  case QMetaType::QColor:
    return new ColorEditor(property, parent);
  default:
    return new LineEditor(property, parent);
  }
}

QString propertyTitle(const QString& name) {
  QString words;
  for (qsizetype i = 0; i < name.size(); ++i) {
    const QChar c = name[i];
    const bool isBeforeSmall = i + 1 < name.size() && name[i + 1].isLower();
    const bool startsWord = c.isUpper() && i > 0 && (isBeforeSmall || name[i - 1].isLower());
    if (startsWord) words += QLatin1Char(' ');
    words += i == 0 ? c.toUpper() : startsWord && isBeforeSmall ? c.toLower() : c;
  }
  return words;
}

} // namespace xov::desk
