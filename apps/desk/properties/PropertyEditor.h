#pragma once

#include <QMetaProperty>
#include <QWidget>

namespace xov::desk {

/// Edits one property of a view, as the text that cli::plotPropertyText() writes: a box to tick, a list of names, or
/// a line to type into, which says what is wrong with it.
class PropertyEditor : public QWidget {
  Q_OBJECT
public:
  explicit PropertyEditor(const QMetaProperty& property, QWidget* parent = nullptr);

  QString name() const { return QLatin1String(property_.name()); }
  /// Shows a value, unless the user is at work on another one.
  virtual void show(const QString& text) = 0;

  /// What suits the type of the property.
  static PropertyEditor* make(const QMetaProperty& property, QWidget* parent = nullptr);

Q_SIGNALS:
  /// The user wants this value, which is one of the property's.
  void edited(const QString& text);

protected:
  const QMetaProperty& property() const { return property_; }

private:
  QMetaProperty property_;
};

/// The name of a property in words: "Line width" of lineWidth.
QString propertyTitle(const QString& name);

} // namespace xov::desk
