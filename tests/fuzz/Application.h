#pragma once

#include <QApplication>

#include <cstdio>
#include <cstdlib>

namespace xov::fuzz {

/// For LLVMFuzzerInitialize() of targets that draw: an application without a window system, and a quiet log.
inline void beginApplication() {
  static int argc = 1;
  static char name[] = "fuzz";
  static char* argv[] = {name, nullptr};
  qputenv("QT_QPA_PLATFORM", "offscreen");
  qInstallMessageHandler([](QtMsgType type, const QMessageLogContext&, const QString& text) {
    if (type != QtFatalMsg) return;
    std::fprintf(stderr, "%s\n", qPrintable(text));
    std::abort();
  });
  // Never taken apart: the sanitizers look at what is reachable from it when the program ends.
  static auto* const application = new QApplication(argc, argv);
  (void)application;
}

} // namespace xov::fuzz

/// Fontconfig loses a few patterns of its own for each font that is looked for.
extern "C" __attribute__((used)) inline const char* __lsan_default_suppressions() { return "leak:libfontconfig\n"; }
