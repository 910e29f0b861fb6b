// Writes what documents the command line from the command's own declarations, while it is built:
//   xov_documents MAN_PAGE_TEMPLATE FOLDER
#include "apps/xov/documents/Documents.h"

#include <cstdio>
#include <exception>
#include <fstream>
#include <iterator>
#include <string>

namespace {

void write(const std::string& path, const std::string& text) {
  std::ofstream file(path, std::ios::binary);
  file << text << std::flush;
  if (!file) throw xov::cli::DocumentError(path + ": cannot be written");
}

std::string contentsOf(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) throw xov::cli::DocumentError(path + ": cannot be read");
  return {std::istreambuf_iterator<char>(file), {}};
}

} // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fputs("usage: xov_documents MAN_PAGE_TEMPLATE FOLDER\n", stderr);
    return 2;
  }
  try {
    const std::string folder = argv[2];
    const auto table = xov::cli::optionTable();
    write(folder + "/xov.1", xov::cli::manPage(table, contentsOf(argv[1])));
    write(folder + "/xov.bash", xov::cli::bashCompletion(table));
    write(folder + "/_xov", xov::cli::zshCompletion(table));
    write(folder + "/xov.fish", xov::cli::fishCompletion(table));
  } catch (const std::exception& error) {
    std::fprintf(stderr, "xov_documents: %s\n", error.what());
    return 1;
  }
  return 0;
}
