#include "apps/xov/terminal/System.h"

#include <XOV_Graphics/base/FileName.h>

#ifdef Q_OS_UNIX
#include <clocale>
#include <cstdlib>
#include <cstring>
#include <langinfo.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace xov::cli {

#ifdef Q_OS_UNIX

namespace {

bool isPipe(const struct stat& status) { return S_ISFIFO(status.st_mode) || S_ISSOCK(status.st_mode); }

} // namespace

void useUtf8() {
  std::setlocale(LC_CTYPE, "");
  if (std::strcmp(nl_langinfo(CODESET), "UTF-8") != 0) ::setenv("LC_ALL", "C.UTF-8", 1);
}

bool isTerminal(StandardStream stream) {
  return ::isatty(stream == StandardStream::Input ? STDIN_FILENO : STDERR_FILENO) == 1;
}

bool standardInputIsPipe() {
  struct stat status = {};
  return ::fstat(STDIN_FILENO, &status) == 0 && (isPipe(status) || isTerminal(StandardStream::Input));
}

bool isPipe(const QString& name) {
  struct stat status = {};
  return ::stat(fileNameBytes(name).constData(), &status) == 0 && isPipe(status);
}

#else

void useUtf8() {}

bool isTerminal(StandardStream /*stream*/) { return false; }

bool standardInputIsPipe() { return true; }

bool isPipe(const QString& /*name*/) { return false; }

#endif

} // namespace xov::cli
