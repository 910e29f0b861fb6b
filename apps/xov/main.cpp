#include "apps/xov/commands/CommandLine.h"

int main(int argc, char** argv) { return xov::cli::runCommandLine(argc, argv); }
