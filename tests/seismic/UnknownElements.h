#pragma once

#include <QRegularExpression>
#include <QString>

namespace xov::test {

/// An XML document with an element that no format knows before the first child of each element, and as its last one;
/// it holds elements with the names of others.
inline QByteArray withUnknownElements(const QByteArray& document) {
  const QString unknown = QStringLiteral("<unknown a=\"1\">far<value>7</value><Value>8</Value><unknown/></unknown>");
  QString text = QString::fromUtf8(document);
  const QString childFollows = QStringLiteral("(?=\\s*<[^/!?])"), childBefore = QStringLiteral("(?<=>)(\\s*</)");
  text.replace(QRegularExpression(QStringLiteral("(<[A-Za-z][^<>]*[^/<>]>)") + childFollows), "\\1" + unknown);
  text.replace(QRegularExpression(childBefore), unknown + "\\1");
  return text.toUtf8();
}

} // namespace xov::test
