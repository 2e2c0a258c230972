# Writes OUT, a C++ source that holds every file below ROOT as a byte array,
# listed by its path relative to ROOT ("catalogue/core.tsv").
file(GLOB_RECURSE files RELATIVE ${ROOT} ${ROOT}/*)
list(SORT files)
set(body "")
set(table "")
set(n 0)
foreach(rel ${files})
  file(READ ${ROOT}/${rel} hex HEX)
  string(LENGTH "${hex}" hexlen)
  math(EXPR size "${hexlen} / 2")
  string(REGEX REPLACE "([0-9a-f][0-9a-f])" "0x\\1," bytes "${hex}")
  string(REGEX REPLACE "((0x..,){24})" "\\1\n" bytes "${bytes}")
  string(APPEND body "static const unsigned char k${n}[] = {\n${bytes}0};\n")
  string(APPEND table "    {\"${rel}\", k${n}, ${size}},\n")
  math(EXPR n "${n} + 1")
endforeach()
file(WRITE ${OUT}.tmp
"// Generated at build time from resources/: do not edit.
#include \"zelkora/platform/embedded.h\"

namespace zelkora::platform {
namespace {
${body}
const EmbeddedFile kFiles[] = {
${table}    {nullptr, nullptr, 0}};
}  // namespace

std::span<const EmbeddedFile> embedded_files() {
  return {kFiles, ${n}};
}
}  // namespace zelkora::platform
")
execute_process(COMMAND ${CMAKE_COMMAND} -E copy_if_different ${OUT}.tmp ${OUT})
file(REMOVE ${OUT}.tmp)
