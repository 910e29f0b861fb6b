#include "apps/xov/inputs/Inputs.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace xov::cli {
namespace {

class Inputs : public ::testing::Test {
protected:
  void touch(const QString& name) {
    QDir(folder_.path()).mkpath(QFileInfo(name).path());
    QFile file(folder_.filePath(name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
  }
  QString at(const QString& name) const { return folder_.filePath(name); }

  /// The paths of the files, relative to the folder.
  QStringList expand(const QStringList& names) {
    QStringList arguments;
    for (const QString& name : names)
      arguments.append(name.isEmpty() ? name : at(name));
    list_ = expandInputs(arguments);
    QStringList paths;
    for (const InputFile& file : list_.files)
      paths.append(QDir(folder_.path()).relativeFilePath(file.path));
    return paths;
  }

  QTemporaryDir folder_;
  InputList list_;
};

TEST_F(Inputs, keepsTheOrderOfNamesAndTheirRepetition) {
  touch("b");
  touch("a");
  EXPECT_EQ(expand({"b", "a", "b"}), (QStringList{"b", "a", "b"}));
  EXPECT_TRUE(list_.errors.isEmpty());
  EXPECT_TRUE(list_.files[0].folder.isEmpty());
}

TEST_F(Inputs, leavesAMissingFileForItsReaderToReport) {
  EXPECT_EQ(expand({"missing"}), QStringList{"missing"});
  EXPECT_TRUE(list_.errors.isEmpty());
}

TEST_F(Inputs, takesAFolderForAllFilesInAndBelowItSorted) {
  touch("data/b.SAC");
  touch("data/a.SAC");
  touch("data/2011/c.SAC");
  EXPECT_EQ(expand({"data"}), (QStringList{"data/2011/c.SAC", "data/a.SAC", "data/b.SAC"}));
  for (const InputFile& file : list_.files)
    EXPECT_EQ(file.folder, at("data"));
}

TEST_F(Inputs, leavesHiddenFilesInAFolderOut) {
  touch("data/a.SAC");
  touch("data/.hidden");
  touch("data/.git/config");
  EXPECT_EQ(expand({"data"}), QStringList{"data/a.SAC"});
}

TEST_F(Inputs, reportsAFolderWithoutFiles) {
  QDir(folder_.path()).mkpath("empty/deeper");
  EXPECT_EQ(expand({"empty"}), QStringList{});
  EXPECT_EQ(list_.errors, QStringList{at("empty") + ": the folder holds no files"});
}

TEST_F(Inputs, expandsPatternsInAlphabeticalOrder) {
  touch("b.SAC");
  touch("a.SAC");
  touch("a.txt");
  EXPECT_EQ(expand({"*.SAC"}), (QStringList{"a.SAC", "b.SAC"}));
  EXPECT_EQ(expand({"?.txt"}), QStringList{"a.txt"});
  EXPECT_EQ(expand({"[bc].SAC"}), QStringList{"b.SAC"});
  EXPECT_EQ(expand({"{b,a}.SAC"}), (QStringList{"a.SAC", "b.SAC"}));
  EXPECT_TRUE(list_.errors.isEmpty());
}

TEST_F(Inputs, takesFilesThatMatchAPatternForNamedOnes) {
  touch("a.SAC");
  expand({"*"});
  ASSERT_EQ(list_.files.size(), 1U);
  EXPECT_TRUE(list_.files[0].folder.isEmpty());
}

TEST_F(Inputs, goesIntoFoldersThatMatchAPattern) {
  touch("2011/a.SAC");
  touch("2012/b.SAC");
  EXPECT_EQ(expand({"201*"}), (QStringList{"2011/a.SAC", "2012/b.SAC"}));
}

TEST_F(Inputs, prefersAFileOfThatNameToThePattern) {
  touch("[a].SAC");
  touch("a.SAC");
  EXPECT_EQ(expand({"[a].SAC"}), QStringList{"[a].SAC"});
}

TEST_F(Inputs, reportsAPatternThatNothingMatches) {
  EXPECT_EQ(expand({"*.SAC"}), QStringList{});
  EXPECT_EQ(list_.errors, QStringList{at("*.SAC") + ": no file matches"});
}

TEST_F(Inputs, reportsAnEmptyNameAndGoesOn) {
  touch("a");
  EXPECT_EQ(expand({"", "a"}), QStringList{"a"});
  EXPECT_EQ(list_.errors, QStringList{"'': a file name is empty"});
}

TEST_F(Inputs, keepsNamesBeyondAscii) {
  touch(QStringLiteral("Fór/Ærø.SAC"));
  EXPECT_EQ(expand({QStringLiteral("F*/*.SAC")}), QStringList{QStringLiteral("Fór/Ærø.SAC")});
}

} // namespace
} // namespace xov::cli
