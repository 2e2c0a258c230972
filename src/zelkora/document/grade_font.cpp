#include "zelkora/document/grade_font.h"

#include "zelkora/platform/embedded.h"

namespace zelkora::document {

std::string_view grade_font_ttf() {
  const platform::EmbeddedFile* file = platform::embedded_file("fonts/zelkora-grade.ttf");
  return file ? file->bytes() : std::string_view();
}

}  // namespace zelkora::document
