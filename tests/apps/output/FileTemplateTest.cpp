#include "apps/xov/output/FileTemplate.h"

#include <gtest/gtest.h>

namespace xov::cli {
namespace {

const QStringList kKnown = {"station", "date"};

QString filled(const char* text, const NameFields& fields) {
  const auto pattern = FileTemplate::parse(QString::fromUtf8(text), kKnown);
  EXPECT_TRUE(pattern) << qPrintable(pattern.error());
  return pattern->filledWith(fields);
}

TEST(FileTemplate, fieldsStandForTheirValues) {
  EXPECT_EQ(filled("{station}.{date}.png", {{"station", "TLY"}, {"date", "2011-03-11"}}), "TLY.2011-03-11.png");
  EXPECT_EQ(filled("plots/a {station}{station}", {{"station", "TLY"}}), "plots/a TLYTLY");
  EXPECT_EQ(filled("plot.png", {{"station", "TLY"}}), "plot.png");
}

TEST(FileTemplate, doubledBracesAreBraces) {
  EXPECT_EQ(filled("{{station}}.png", {{"station", "TLY"}}), "{station}.png");
  EXPECT_EQ(filled("a}b{{", {}), "a}b{");
  EXPECT_EQ(filled("{{{station}}}", {{"station", "TLY"}}), "{TLY}");
}

TEST(FileTemplate, unknownFieldsAndOpenBracesAreRefusedWithWhatIsKnown) {
  EXPECT_EQ(FileTemplate::parse("a{statoin}.png", kKnown).error(),
            "found '{statoin}' in the file name, expected {station}, {date}; '{{' is a brace");
  EXPECT_EQ(FileTemplate::parse("a{station.png", kKnown).error(),
            "found '{station.png' in the file name, expected {station}, {date}; '{{' is a brace");
  EXPECT_FALSE(FileTemplate::parse("{}", kKnown));
  EXPECT_FALSE(FileTemplate::parse("{", kKnown));
}

TEST(FileTemplate, valuesNeverLeaveTheFolder) {
  EXPECT_EQ(filled("out/{station}.png", {{"station", "../../etc/passwd"}}), "out/_._.._etc_passwd.png");
  EXPECT_EQ(filled("{station}.png", {{"station", "/etc"}}), "_etc.png");
  EXPECT_EQ(filled("{station}/{date}", {{"station", ".."}, {"date", "."}}), "_./_");
  EXPECT_EQ(filled("{station}", {{"station", "C:\\x"}}), "C__x");
}

TEST(FileTemplate, valuesBeginNoNameWithAPointOrDash) {
  EXPECT_EQ(filled("{station}.png", {{"station", ".hidden"}}), "_hidden.png");
  EXPECT_EQ(filled("{station}.png", {{"station", "-rf"}}), "_rf.png");
  EXPECT_EQ(filled("{station}.{date}.png", {{"station", ""}, {"date", "x"}}), "_.x.png");
  EXPECT_EQ(filled("a{station}.png", {{"station", "-rf"}}), "a-rf.png");
  EXPECT_EQ(filled("./{station}", {{"station", "-rf"}}), "./_rf");
}

TEST(FileTemplate, valuesHoldNoControlCharactersAndNoMarksOfDirection) {
  EXPECT_EQ(filled("{station}", {{"station", QStringLiteral("a\nb\x1b[31m")}}), "a_b__31m");
  EXPECT_EQ(filled("{station}", {{"station", QStringLiteral("a\u202eb*?\"<>|$`")}}), "a_b________");
  EXPECT_EQ(filled("{station}", {{"station", QStringLiteral("Žďár+1_2.3")}}), QStringLiteral("Žďár+1_2.3"));
}

TEST(FileTemplate, longValuesAreCut) {
  EXPECT_EQ(filled("{station}.png", {{"station", QString(1000, 'x')}}), QString(64, 'x') + ".png");
}

TEST(FilesOfPages, pagesOfOneNameShareAFileThatHoldsPages) {
  const auto files = filesOfPages({"a.pdf", "b.pdf", "a.pdf"}, true);
  ASSERT_EQ(files->size(), 2U);
  EXPECT_EQ((*files)[0].name, "a.pdf");
  EXPECT_EQ((*files)[0].pages, (std::vector<std::size_t>{0, 2}));
  EXPECT_EQ((*files)[1].pages, (std::vector<std::size_t>{1}));
}

TEST(FilesOfPages, otherPagesOfOneNameAreNumbered) {
  QStringList names;
  for (int i = 0; i < 10; ++i)
    names << "plot.v1.png";
  names << "other.png";
  const auto files = filesOfPages(names, false);
  ASSERT_EQ(files->size(), 11U);
  EXPECT_EQ((*files)[0].name, "plot.v1_01.png");
  EXPECT_EQ((*files)[9].name, "plot.v1_10.png");
  EXPECT_EQ((*files)[9].pages, (std::vector<std::size_t>{9}));
  EXPECT_EQ((*files)[10].name, "other.png");
}

TEST(FilesOfPages, namesThatMeetAfterAllAreRefused) {
  const auto files = filesOfPages({"a_1.png", "a.png", "a.png"}, false);
  EXPECT_EQ(files.error(), "a_1.png: two pages would be written to this file");
}

TEST(FilesOfPages, numbersOfPagesSortAsTheyCount) {
  EXPECT_EQ(pageNumber(7, 9), "7");
  EXPECT_EQ(pageNumber(7, 10), "07");
  EXPECT_EQ(pageNumber(100, 100), "100");
  EXPECT_EQ(numberedName("section.png", 2), "section_2.png");
}

} // namespace
} // namespace xov::cli
