// Runs every file of corpus folders through a fuzz target, for builds without the fuzzer.

#include <QDirIterator>
#include <QFile>

#include <cstdint>
#include <cstdio>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
// What targets have that need more than bytes; nullptr for the others.
extern "C" __attribute__((weak)) int LLVMFuzzerInitialize(int* argc, char*** argv);

namespace {

int replayFolder(const QString& folder) {
  int count = 0;
  QDirIterator files(folder, QDir::Files);
  while (files.hasNext()) {
    QFile file(files.next());
    if (!file.open(QIODevice::ReadOnly)) {
      std::fprintf(stderr, "%s cannot be opened\n", qPrintable(file.fileName()));
      return 0;
    }
    const QByteArray contents = file.readAll();
    // A copy without spare room behind it, so that a sanitizer sees the first byte read too far.
    const std::vector<std::uint8_t> bytes(contents.begin(), contents.end());
    std::printf("%s\n", qPrintable(file.fileName()));
    std::fflush(stdout);
    LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
    ++count;
  }
  return count;
}

} // namespace

int main(int argc, char** argv) {
  if (argc < 2) {
    std::fprintf(stderr, "usage: %s FOLDER...\n", argv[0]);
    return 2;
  }
  if (LLVMFuzzerInitialize != nullptr) LLVMFuzzerInitialize(&argc, &argv);
  int count = 0;
  for (int i = 1; i < argc; ++i) {
    const int found = replayFolder(QFile::decodeName(argv[i]));
    if (found == 0) return 1;
    count += found;
  }
  std::printf("%d files\n", count);
  return 0;
}
