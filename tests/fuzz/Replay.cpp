// Runs every file of a corpus folder through a fuzz target, for builds without the fuzzer.

#include <QDirIterator>
#include <QFile>

#include <cstdint>
#include <cstdio>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: %s FOLDER\n", argv[0]);
    return 2;
  }
  int count = 0;
  QDirIterator files(QFile::decodeName(argv[1]), QDir::Files);
  while (files.hasNext()) {
    QFile file(files.next());
    if (!file.open(QIODevice::ReadOnly)) {
      std::fprintf(stderr, "%s cannot be opened\n", qPrintable(file.fileName()));
      return 1;
    }
    const QByteArray contents = file.readAll();
    // A copy without spare room behind it, so that a sanitizer sees the first byte read too far.
    const std::vector<std::uint8_t> bytes(contents.begin(), contents.end());
    std::printf("%s\n", qPrintable(file.fileName()));
    std::fflush(stdout);
    LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
    ++count;
  }
  std::printf("%d files\n", count);
  return count > 0 ? 0 : 1;
}
