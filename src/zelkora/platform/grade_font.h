/// The project's own font of the four steel-grade symbols, U+E000 to U+E003
/// (HPB300, HRB335, HRB400, HRB500), as the design codes draw them. The font
/// is built from its description in tools/font/ and compiled into the library
/// (resources/fonts/); the document writers embed it in PDF, DOCX and HTML, and the
/// desktop program shows the symbols with it.
///
///   std::string_view ttf = grade_font_ttf();   // TrueType bytes @file
#pragma once

#include <string_view>

namespace zelkora::platform {

/// The family name the font file declares.
inline constexpr char kGradeFontFamily[] = "Zelkora Grade";

/// The TrueType file, or empty when the library was built without it.
std::string_view grade_font_ttf();

}  // namespace zelkora::platform
