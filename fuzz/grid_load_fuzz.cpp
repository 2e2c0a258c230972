// A project file may hold any bytes: loading it into the beam form's grid
// never crashes; a file refused leaves the values as they were.
#include <cstdint>
#include <memory>

#include "fuzz/fuzz_input.h"
#include "zelkora/grid/form_session.h"
#include "zelkora/platform/headless/headless.h"
#include "zelkora/platform/headless/headless_form.h"
#include "zelkora/platform/headless/memory_files.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace zelkora;  // NOLINT(google-build-using-namespace)
  static const auto files = std::make_shared<platform::headless::MemoryFileService>();
  static const auto platform =
      fuzz::headless_platform([](platform::Platform& p) { p.files = files; });
  static platform::headless::HeadlessForm view;
  static grid::FormSession session(platform, view.grid, view.title, view.panel, view.form);
  static const bool built = (session.build(63706), true);
  (void)built;
  std::vector<Text> before;
  session.cell().GetCurrentText(before);
  files->put(u"f", std::string(reinterpret_cast<const char*>(data), size));
  Text add;
  const bool loaded = session.cell().bLoadOrSaveData(u"Load", u"f", u"clsBeamSteel", {}, add);
  std::vector<Text> after;
  session.cell().GetCurrentText(after);
  if (!loaded && after != before) __builtin_trap();
  return 0;
}
