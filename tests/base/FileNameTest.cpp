#include "XOV_Graphics/base/FileName.h"

#include "tests/seismic/TemporaryFiles.h"

#include <cstdio>

namespace xov {
namespace {

TEST(FileName, keepsNamesThatAreUtf8AsTheyAre) {
  const QByteArray name = "trace-\xC3\xA9\xF0\x9F\x8C\x8D.SAC"; // e acute, and a character of four bytes
  EXPECT_EQ(fileNameFromBytes(name), QString::fromUtf8(name));
  EXPECT_EQ(fileNameBytes(QString::fromUtf8(name)), name);
  EXPECT_FALSE(isByteName(fileNameFromBytes(name)));
}

TEST(FileName, keepsBytesThatAreNotUtf8) {
  // Latin-1, a cut character, a byte that starts none, one encoded too long, and a surrogate.
  const QByteArray names[] = {"caf\xE9.SAC", "\xC3",         "\xFF\xFE",
                              "a\xC0\x80z",  "\xED\xB2\x80", "\xC3\xA9\xE9\xC3\xA9"};
  for (const QByteArray& name : names) {
    const QString text = fileNameFromBytes(name);
    EXPECT_TRUE(isByteName(text)) << name.toHex().constData();
    EXPECT_EQ(fileNameBytes(text), name) << name.toHex().constData();
  }
  EXPECT_EQ(fileNameFromBytes("caf\xE9"), QString("caf") + QChar(0xDCE9));
}

TEST(FileName, tellsEveryPairOfBytesApart) {
  for (int first = 1; first < 256; ++first) {
    for (int second = 1; second < 256; ++second) {
      const char pair[] = {char(first), char(second)};
      const QByteArray name(pair, 2);
      ASSERT_EQ(fileNameBytes(fileNameFromBytes(name)), name) << first << ' ' << second;
    }
  }
}

TEST(FileName, ofAFolderIsToldFromThoseOfFilesAndOfNothing) {
  const test::TemporaryFiles files;
  const QString folder = fileNameFromBytes(QFile::encodeName(files.folder()) + "/caf\xE9");
  EXPECT_FALSE(isFolder(folder));
  EXPECT_TRUE(makeFolder(folder));
  EXPECT_TRUE(isFolder(folder));
  EXPECT_EQ(std::remove(fileNameBytes(folder).constData()), 0); // Qt would not find it
  EXPECT_FALSE(isFolder(files.write("file", "")));
}

} // namespace
} // namespace xov
