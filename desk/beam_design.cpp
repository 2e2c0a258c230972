// The design of a rectangular beam section; see the header.
#include "desk/beam_design.h"

#include "zelkora/frame/variant.h"

namespace zelkora::desk {

namespace {

// Items of "clsBeamSteel".
constexpr int32_t kWidth = 10, kDepth = 11, kCover = 14;

std::optional<double> number_at(const std::vector<Text>& values, int32_t item,
                                const clsCharacter& chr) {
  const auto at = static_cast<std::size_t>(item);
  if (at >= values.size()) return std::nullopt;
  return frame::Variant(Text(trim(values[at]))).number(chr.number_symbols());
}

}  // namespace

BeamInput beam_input(const std::vector<Text>& values, const clsCharacter& chr,
                     std::vector<Text>* /*unread*/) {
  BeamInput in;
  if (auto v = number_at(values, kWidth, chr)) in.b = *v;
  if (auto v = number_at(values, kDepth, chr)) in.h = *v;
  if (auto v = number_at(values, kCover, chr)) in.cover = *v;
  return in;
}

SectionSketch beam_sketch(const std::vector<Text>& values, clsCharacter& chr) {
  const BeamInput in = beam_input(values, chr);
  SectionSketch sketch;
  if (in.b <= 0 || in.h <= 0) return sketch;
  sketch.b = in.b;
  sketch.h = in.h;
  sketch.cover = in.cover;
  sketch.stirrup_d = 8;
  return sketch;
}

}  // namespace zelkora::desk
