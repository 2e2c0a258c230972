// Any report lines, and any figure, written as DOCX, RTF and HTML: never a
// crash, and never a file the readers would refuse (the container and its
// CRCs whole, every XML part well-formed, RTF 7-bit with its groups closed,
// HTML valid UTF-8 without a raw "<" from the text).
#include <cmath>
#include <cstdint>
#include <limits>

#include "fuzz/document_check.h"
#include "fuzz/fuzz_input.h"
#include "zelkora/document/read_report.h"
#include "zelkora/document/writers.h"

namespace {

using namespace zelkora;  // NOLINT(google-build-using-namespace)

// A number of any kind, hostile ones among them.
double coordinate(fuzz::Input& in) {
  switch (in.byte() % 8) {
    case 0:
      return std::numeric_limits<double>::quiet_NaN();
    case 1:
      return std::numeric_limits<double>::infinity();
    case 2:
      return -1e300;
    case 3:
      return in.real();
    default:
      return in.number() / 16.0;
  }
}

document::Figure figure_of(fuzz::Input& in) {
  document::Figure figure;
  figure.width_mm = coordinate(in);
  figure.height_mm = coordinate(in);
  const int shapes = in.byte() % 8;
  for (int s = 0; s < shapes; ++s) {
    document::Shape shape;
    shape.kind = static_cast<document::Shape::Kind>(in.byte() % 6);
    const int points = in.byte() % 9;
    for (int p = 0; p < points; ++p) shape.points.push_back(coordinate(in));
    shape.stroke_mm = coordinate(in);
    shape.stroke = static_cast<document::Colour>(in.number()) << 12 | in.byte();
    if (in.byte() % 2) shape.fill = static_cast<document::Colour>(in.number()) << 16;
    shape.text = u"250×500";
    for (int n = in.byte() % 4; n > 0; --n)
      shape.text.push_back(static_cast<char16_t>(in.number()));
    shape.text_mm = coordinate(in);
    shape.text_align = static_cast<document::Align>(static_cast<int>(in.byte() % 3) - 1);
    figure.shapes.push_back(std::move(shape));
  }
  return figure;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  fuzz::Input in(data, size);
  document::Figure figure = figure_of(in);
  const std::vector<Text> t = in.texts(3);
  figure.caption = t[1];
  document::ReadOptions options;
  options.program = t[1];
  options.project = t[2];
  options.signature.checked_by = t[2];
  document::Document doc = document::read_report(t[0], options);
  doc.blocks.emplace_back(std::move(figure));
  (void)document::plain_text(doc);

  std::map<std::string, std::string> parts;
  if (!fuzz::unzip(document::write_docx(doc), parts) || !parts.contains("word/document.xml")) {
    __builtin_trap();
  }
  for (const auto& [name, bytes] : parts) {
    if ((name.ends_with(".xml") || name.ends_with(".rels")) && !fuzz::well_formed_xml(bytes)) {
      __builtin_trap();
    }
  }
  if (!fuzz::balanced_rtf(document::write_rtf(doc))) __builtin_trap();
  const std::string html = document::write_html(doc);
  for (std::size_t i = 0; i < html.size();) {
    if (fuzz::next_code_point(html, i) < 0) __builtin_trap();
  }
  return 0;
}
