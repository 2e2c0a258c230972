// The zelkora tool's entry point on Windows: the arguments come from the
// system in UTF-16, so Chinese arguments survive whatever the ANSI code page,
// and are handed on in UTF-8 as on every system. Output is UTF-8 bytes, with
// no translation of line ends, so it is the same as on Linux.
#include <fcntl.h>
#include <io.h>

#include <cstdio>
#include <iostream>
#include <string>
#include <vector>

#include "tools/zelkora/cli.h"
#include "zelkora/platform/text.h"

int wmain(int argc, wchar_t** argv) {
  for (std::FILE* stream : {stdin, stdout, stderr}) _setmode(_fileno(stream), _O_BINARY);
  std::vector<std::string> args;
  for (int i = 1; i < argc; ++i) {
    const std::wstring_view arg(argv[i]);
    args.push_back(zelkora::to_utf8(zelkora::Text(arg.begin(), arg.end())));
  }
  return zelkora::cli::run(args, std::cout, std::cerr);
}
