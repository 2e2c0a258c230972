// clsSectionProperties: area, centroid, section modulus and moment of
// inertia of the member cross-sections. The object holds nothing from other
// classes and does no work when it is made or released.
#pragma once

namespace zelkora {

class clsSectionProperties {
 public:
  clsSectionProperties() = default;
};

}  // namespace zelkora
