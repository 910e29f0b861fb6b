#pragma once

#include <gtest/gtest.h>

#include <QByteArray>
#include <QFile>
#include <QTemporaryDir>

namespace xov::test {

/// A folder that lives as long as the test.
class TemporaryFiles {
public:
  QString path(const char* name) const { return folder_.filePath(QString::fromLatin1(name)); }

  /// Writes a file and gives its path.
  QString write(const char* name, const QByteArray& contents) const {
    QFile file(path(name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_EQ(file.write(contents), contents.size());
    return file.fileName();
  }

  QByteArray read(const QString& name) const {
    QFile file(name);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return file.readAll();
  }

  QString folder() const { return folder_.path(); }

private:
  QTemporaryDir folder_;
};

} // namespace xov::test

/// Lets a failing comparison show a QString's text.
inline void PrintTo(const QString& text, std::ostream* out) { *out << '"' << text.toStdString() << '"'; }
