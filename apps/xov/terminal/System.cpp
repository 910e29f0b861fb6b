#include "apps/xov/terminal/System.h"

#include <XOV_Graphics/base/FileName.h>

#ifdef Q_OS_UNIX
#include <cerrno>
#include <clocale>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
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

void holdStandardStreams() {
  for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    if (::fcntl(stream, F_GETFD) != -1 || errno != EBADF) continue;
    // The least number that is free is that of the stream. Open for reading only, writing fails as without it.
    if (::open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY) < 0) return;
  }
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

void holdStandardStreams() {}

bool isTerminal(StandardStream /*stream*/) { return false; }

bool standardInputIsPipe() { return true; }

bool isPipe(const QString& /*name*/) { return false; }

#endif

} // namespace xov::cli
