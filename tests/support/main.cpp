#include <gtest/gtest.h>

#include <QApplication>

#ifdef __SANITIZE_ADDRESS__
// Where a thread's memory for a library that was loaded later begins 16 bytes into a page, AddressSanitizer takes
// what lies before it for the header of an older C library; its search for leaks then reads anywhere and ends the
// program, once in hundreds of runs. So it does not follow such memory.
extern "C" __attribute__((used, visibility("default"))) const char* __asan_default_options() {
  return "intercept_tls_get_addr=0";
}
#endif

// Every test program runs inside a Qt application without a display, so that fonts, widgets and clipboard work.
int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", qgetenv("QT_QPA_PLATFORM").isEmpty() ? "offscreen" : qgetenv("QT_QPA_PLATFORM"));
  ::testing::InitGoogleTest(&argc, argv);
  QApplication app(argc, argv);
  return RUN_ALL_TESTS();
}
