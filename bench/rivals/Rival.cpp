#include "bench/rivals/Rival.h"

#include <chrono>
#include <cstdlib>
#include <fstream>
#include <iostream>

namespace xov::bench {

namespace {

constexpr int kArguments = 8;

bool readWork(int argc, char** argv, RivalWork& work) {
  if (argc != kArguments) return false;
  work.rows = std::atoi(argv[2]);
  work.samplesPerRow = std::atoll(argv[3]);
  work.width = std::atof(argv[4]);
  work.height = std::atof(argv[5]);
  work.ratio = std::atof(argv[6]);
  work.deviation = std::atof(argv[7]);
  if (work.rows < 1 || work.samplesPerRow < 1) return false;
  work.samples.resize(std::size_t(work.rows) * std::size_t(work.samplesPerRow));
  std::ifstream file(argv[1], std::ios::binary);
  const auto bytes = std::streamsize(work.samples.size() * sizeof(float));
  return bool(file.read(reinterpret_cast<char*>(work.samples.data()), bytes));
}

template <typename Step>
double milliseconds(const Step& step) {
  const auto start = std::chrono::steady_clock::now();
  step();
  return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

} // namespace

int serve(Rival& rival, int argc, char** argv) {
  RivalWork work;
  if (!readWork(argc, argv, work)) {
    std::cerr << argv[0] << ": wants SAMPLES-FILE ROWS SAMPLES-PER-ROW WIDTH HEIGHT RATIO DEVIATION\n";
    return 2;
  }
  std::cout << "ready " << milliseconds([&] { rival.prepare(work); }) << std::endl;
  std::string line;
  while (std::getline(std::cin, line)) {
    bool able = true;
    double time = 0;
    if (line == "draw") {
      time = milliseconds([&] { rival.draw(); });
    } else if (line.rfind("pdf ", 0) == 0) {
      time = milliseconds([&] { able = rival.writePdf(line.substr(4)); });
    } else if (line.rfind("save ", 0) == 0) {
      able = rival.save(line.substr(5));
    } else {
      able = false;
    }
    if (able)
      std::cout << time << std::endl;
    else
      std::cout << "no" << std::endl;
  }
  return 0;
}

} // namespace xov::bench
