// The zelkora tool's entry point.
#include <iostream>

#include "tools/zelkora/cli.h"

int main(int argc, char** argv) {
  std::vector<std::string> args(argv + 1, argv + argc);
  return zelkora::cli::run(args, std::cout, std::cerr);
}
