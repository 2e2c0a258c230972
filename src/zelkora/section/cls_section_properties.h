/// clsSectionProperties: area, centroid, section modulus and moment of
/// inertia of the member cross-sections. The object holds nothing from other
/// classes and does no work when it is made or released.
///
/// Set the shape and the dimensions in millimetres (stored in metres), then
/// ask for the moment of inertia or the section modulus; the area and the
/// centroid distance are left behind by that call:
/// @code{.unparsed}
///   zelkora::clsSectionProperties sp;
///   sp.Section_Shape(zelkora::Rectangular_Shaped);
///   sp.B_SectionWidth(200);
///   sp.H_SectionDepth(500);
///   sp.dIx_InertiaMoment();            // 0.5² × 0.1 / 12 m⁴
///   sp.A_SectionArea();                // 0.1 m²
///   sp.Y_CentroidToTensionEdge();      // 0.25 m
/// @endcode
/// What each dimension means depends on the shape:
///   B    web width; diameter of a circle; outer diameter of a ring; bottom
///        width of cone and stepped sections; total web width of a box
///   H    total depth; inner diameter of a ring
///   Bf   bottom (tension) flange width; top width of a cone; width of the
///        second step; flange width of a box
///   Hf   bottom flange depth; edge depth of a cone; height of the second step
///   Bf1  top (compression) flange width; width of the third step
///   Hf1  top flange depth; height of the third step
///   H1   height of the lowest step
///   StepsNumber_SteppedShape  2 for two steps, any other value three
///
/// Conventions kept from the suite's programs, on purpose:
///   - Y is first set to H/2 for every shape. A ring leaves it there, so Y is
///     half the inner diameter and the section modulus of a ring divides by
///     the inner radius.
///   - Square_Shaped, Slab_BeamStair and any code outside the table are not
///     computed: the inertia is 0 and the area keeps its earlier value.
///   - T_Shaped and Inverted_L_Shaped share one formula, with the top flange
///     Bf1 × Hf1 whichever of the two is given; Bf and Hf are not used.
///   - I_Shaped is computed as I_Shaped_Asymmetric; I_Shaped_Symmetry uses
///     Bf × Hf for both flanges and ignores Bf1 and Hf1.
///   - The inverted cone and stepped sections have the same area and inertia
///     as the upright ones; only Y is measured from the other edge (H − y).
///   - Nothing is validated. An area of zero where the centroid needs it, or
///     a Y of zero in dWx_ElasticResistanceMoment, throws
///     Fault(DivisionByZero); A and Y then keep what was written before the
///     division (Y = H/2 and the new area, in the first case). @file
#pragma once

#include <cstdint>

#include "zelkora/frame/shared_types.h"
#include "zelkora/platform/fault.h"

namespace zelkora {
/// The properties of a cross-section: area, centroid and moments.
class clsSectionProperties {
 public:
  clsSectionProperties() = default;  ///< An empty rectangular section.

  void Section_Shape(Section_Shapes shape) { shape_ = shape; }  ///< Sets the shape.
  /// @{ Dimensions in millimetres.
  void B_SectionWidth(double mm) { b_ = mm * kMetresPerMillimetre; }
  void H_SectionDepth(double mm) { h_ = mm * kMetresPerMillimetre; }
  void Bf_FlangeWidth_TensionZone(double mm) { bf_ = mm * kMetresPerMillimetre; }
  void Hf_FlangeDepth_TensionZone(double mm) { hf_ = mm * kMetresPerMillimetre; }
  void Bf1_FlangeWidth_CompressionZone(double mm) { bf1_ = mm * kMetresPerMillimetre; }
  void Hf1_FlangeDepth_CompressionZone(double mm) { hf1_ = mm * kMetresPerMillimetre; }
  void H1_SectionDepth_Stepped(double mm) { h1_ = mm * kMetresPerMillimetre; }
  void StepsNumber_SteppedShape(int32_t steps) { steps_ = steps; }  /// @}

  /// @{ The area (m²) and the distance from the centroid to the tension edge (m)
  /// left by the last dIx_InertiaMoment; 0 before the first.
  double A_SectionArea() const { return a_; }
  double Y_CentroidToTensionEdge() const { return y_; }  /// @}

  /// dIx_InertiaMoment / Y, m³.
  double dWx_ElasticResistanceMoment();
  /// The moment of inertia about the horizontal centroidal axis, m⁴; stores
  /// A and Y.
  double dIx_InertiaMoment();

 private:
  static constexpr double kMetresPerMillimetre = 0.001;

  Section_Shapes shape_ = static_cast<Section_Shapes>(0);
  double b_ = 0;
  double h_ = 0;
  double bf_ = 0;
  double hf_ = 0;
  double bf1_ = 0;
  double hf1_ = 0;
  double h1_ = 0;
  int32_t steps_ = 0;
  double y_ = 0;
  double a_ = 0;
};

}  // namespace zelkora
