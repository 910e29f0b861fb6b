#include "apps/xov/CommandLine.h"

int main(int argc, char** argv) { return xov::cli::runCommandLine(argc, argv); }
