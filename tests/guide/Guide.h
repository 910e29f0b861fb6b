#pragma once

#include <gtest/gtest.h>

#include <QString>
#include <QTemporaryDir>

/// A block of a page that is run by itself, in a folder of its own that has the example data. What it warns of fails.
class Guide : public testing::Test {
protected:
  void SetUp() override;
  void TearDown() override;

private:
  QTemporaryDir folder_;
  QString before_;
};

/// Programs of the pages, by the name of their namespace.
using GuideMain = int (*)(int, char**);
bool addGuideProgram(const char* name, GuideMain program);
/// Starts one in a process of its own, with seismograms as its arguments; it has to succeed without a word on
/// standard error. A window is closed after a moment.
void runGuideProgram(const char* name);

#define GUIDE_PROGRAM(name)                                                                                          \
  const bool name##Added = addGuideProgram(#name, &name::main);                                                      \
  TEST_F(Guide, name) {                                                                                              \
    ASSERT_TRUE(name##Added);                                                                                        \
    runGuideProgram(#name);                                                                                          \
  }
