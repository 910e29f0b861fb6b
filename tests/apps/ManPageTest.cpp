#include "apps/xov/documents/Documents.h"

#include <gtest/gtest.h>

namespace xov::cli {
namespace {

OptionRow option(const char* name, std::vector<std::string> values) {
  OptionRow row;
  row.longName = name;
  row.values = std::move(values);
  return row;
}

std::vector<CommandOptions> table() {
  CommandOptions draw;
  draw.name = "draw";
  draw.options = {option("--gain", {"G"}), option("--place", {"LON", "LAT"}), option("--fill", {})};
  draw.argument = "FILES";
  draw.manyArguments = true;
  CommandOptions list;
  list.name = "list";
  list.options = {option("--fill", {})};
  return {draw, list};
}

std::string problemOf(const std::string& pattern) {
  try {
    manPage(table(), pattern);
  } catch (const DocumentError& error) {
    return error.what();
  }
  return {};
}

TEST(ManPage, writesSynopsesAndItemsOfOptions) {
  EXPECT_EQ(manPage(table(), "@synopsis@\n"
                             ".Ss xov draw\n"
                             "@options --gain --place@\nText.\n"
                             "@options --fill@\n"
                             ".Ss xov list\n"
                             "@as draw --fill@\nText.\n"),
            ".Nm\n.Cm draw\n.Op Fl -gain Ar G\n.Op Fl -place Ar lon lat\n.Op Fl -fill\n.Ar\n"
            ".Nm\n.Cm list\n.Op Fl -fill\n"
            ".Ss xov draw\n"
            ".It Fl -gain Ar G , Fl -place Ar lon lat\nText.\n"
            ".It Fl -fill\n"
            ".Ss xov list\n"
            "Text.\n");
}

TEST(ManPage, describesOptionsOfSeveralCommandsInASectionOfItsOwn) {
  EXPECT_EQ(problemOf(".Ss Shared\n@options --fill@\n.Ss xov draw\n@options --gain --place@\n"), "");
}

TEST(ManPage, refusesWhatIsNotDescribedAndWhatThereIsNot) {
  EXPECT_EQ(problemOf(".Ss Shared\n@options --fill@\n.Ss xov draw\n@options --gain@\n"),
            "the man page does not describe draw --place");
  EXPECT_EQ(problemOf(".Ss xov draw\n@options --gain --place --fill@\n"),
            "the man page does not describe list --fill");
  EXPECT_EQ(problemOf(".Ss xov list\n@options --gain@\n"),
            "the man page describes --gain in 'xov list', where there is no such option");
}

} // namespace
} // namespace xov::cli
