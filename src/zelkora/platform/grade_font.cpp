#include "zelkora/platform/grade_font.h"

#include "zelkora/platform/embedded.h"

namespace zelkora::platform {

std::string_view grade_font_ttf() {
  const platform::EmbeddedFile* file = platform::embedded_file("fonts/zelkora-grade.ttf");
  return file ? file->bytes() : std::string_view();
}

}  // namespace zelkora::platform
