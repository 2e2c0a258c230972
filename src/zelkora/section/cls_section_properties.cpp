// clsSectionProperties: the shape codes mapped onto the closed forms of
// section_properties.h.
#include "zelkora/section/cls_section_properties.h"

#include "zelkora/platform/fault.h"
#include "zelkora/section/section_properties.h"

namespace zelkora {

double clsSectionProperties::dIx_InertiaMoment() {
  y_ = h_ / 2;
  std::optional<section::SectionProperties> p;
  bool keep_y = false;    // the ring leaves Y at H/2
  bool from_top = false;  // the inverted cone and stepped sections
  switch (shape_) {
    case Rectangular_Shaped:
      p = section::rectangle(b_, h_);
      break;
    case Inverted_T_Shaped:
      p = section::bottom_flange(b_, h_, bf_, hf_);
      break;
    case T_Shaped:
    case Inverted_L_Shaped:
      p = section::top_flange(b_, h_, bf1_, hf1_);
      break;
    case I_Shaped_Symmetry:
      p = section::symmetric_i(b_, h_, bf_, hf_);
      break;
    case I_Shaped_Asymmetric:
    case I_Shaped:
      p = section::i_section(b_, h_, bf_, hf_, bf1_, hf1_);
      break;
    case Circular_Shaped:
      p = section::circle(b_);
      break;
    case Ring_Shaped:
      p = section::ring(b_, h_);
      keep_y = true;
      break;
    case Inverted_Cone_Shape:
      from_top = true;
      [[fallthrough]];
    case Cone_Shape:
      p = section::cone(b_, h_, bf_, hf_);
      break;
    case Inverted_Stepped_Shape:
      from_top = true;
      [[fallthrough]];
    case Stepped_Shape:
      p = steps_ == 2 ? section::two_steps(b_, h_, h1_, bf_, hf_)
                      : section::three_steps(b_, h_, h1_, bf_, hf_, bf1_, hf1_);
      break;
    case Box_Shape:
      p = section::box(b_, h_, bf_, hf_, hf1_);
      break;
    default:
      return 0;  // square, beam stair and unknown codes: A stays
  }
  if (!p) {
    // The only division of the closed forms is by the area, which was zero.
    a_ = 0;
    throw Fault(FaultKind::DivisionByZero, "the section has an area of zero");
  }
  a_ = p->area;
  if (!keep_y) y_ = from_top ? h_ - p->centroid : p->centroid;
  return p->inertia;
}

double clsSectionProperties::dWx_ElasticResistanceMoment() {
  const double inertia = dIx_InertiaMoment();
  if (y_ == 0) {
    throw Fault(FaultKind::DivisionByZero,
                "the centroid lies on the tension edge (Y = 0): no section modulus");
  }
  return inertia / y_;
}

}  // namespace zelkora
