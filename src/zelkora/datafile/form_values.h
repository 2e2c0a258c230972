/// The values that the form-state writers and readers of clsLoadSave take
/// besides the controls: the column force record and the arrays of two and
/// three dimensions (record_numbers.h has the record patterns). @file
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "zelkora/platform/fault.h"

namespace zelkora {

/// One set of column forces of a load case, as the column forms keep them.
/// Fields in record order 4001..4008; forces in kN, moments in kN·m.
struct rColForce {
  bool bCal = false;      ///< 4001: the case takes part in the calculation
  int16_t iLoadCase = 0;  ///< 4002: the number of the load case
  double N = 0;           ///< 4003: axial force
  double Mx = 0;          ///< 4004: moment about the x axis
  double My = 0;          ///< 4005: moment about the y axis
  double Vx = 0;          ///< 4006: shear along x
  double Vy = 0;          ///< 4007: shear along y
  double T = 0;           ///< 4008: torque
  friend bool operator==(const rColForce&, const rColForce&) = default;
};

/// A two-dimensional array with the bounds 0..U1 and 0..U2 (an upper bound of
/// -1 is an empty dimension), held in one vector with the second index
/// running fastest: element (i, j) is Values[i * (U2 + 1) + j].
template <class T>
struct Array2 {
  int32_t U1 = -1;        ///< The first upper bound.
  int32_t U2 = -1;        ///< The second upper bound.
  std::vector<T> Values;  ///< The elements.
  /// @{ An empty array, or one 0..u1 × 0..u2 of default values (Fault below -1).
  Array2() = default;
  Array2(int32_t u1, int32_t u2) : U1(u1), U2(u2), Values(extent(u1) * extent(u2)) {}  /// @}
  /// @{ Element (i, j); Fault(IndexOutOfRange) outside the bounds.
  T& operator()(int32_t i, int32_t j) { return Values[offset(i, j)]; }
  const T& operator()(int32_t i, int32_t j) const { return Values[offset(i, j)]; }  /// @}
  friend bool operator==(const Array2&, const Array2&) = default;

 private:
  static std::size_t extent(int32_t upper) {
    if (upper < -1) throw Fault(FaultKind::IndexOutOfRange, "array bound below -1");
    return static_cast<std::size_t>(upper) + 1;
  }
  std::size_t offset(int32_t i, int32_t j) const {
    if (i < 0 || i > U1 || j < 0 || j > U2) {
      throw Fault(FaultKind::IndexOutOfRange, "array index out of range");
    }
    return static_cast<std::size_t>(i) * extent(U2) + static_cast<std::size_t>(j);
  }
};

/// A three-dimensional array with the bounds 0..U1, 0..U2, 0..U3, the third
/// index running fastest, then the second: element (i, j, k) is
/// Values[(i * (U2 + 1) + j) * (U3 + 1) + k].
template <class T>
struct Array3 {
  int32_t U1 = -1;        ///< The first upper bound.
  int32_t U2 = -1;        ///< The second upper bound.
  int32_t U3 = -1;        ///< The third upper bound.
  std::vector<T> Values;  ///< The elements.
  /// @{ An empty array, or one 0..u1 × 0..u2 × 0..u3 of default values (Fault below -1).
  Array3() = default;
  Array3(int32_t u1, int32_t u2, int32_t u3)
      : U1(u1), U2(u2), U3(u3), Values(extent(u1) * extent(u2) * extent(u3)) {}  /// @}
  /// @{ Element (i, j, k); Fault(IndexOutOfRange) outside the bounds.
  T& operator()(int32_t i, int32_t j, int32_t k) { return Values[offset(i, j, k)]; }
  const T& operator()(int32_t i, int32_t j, int32_t k) const { return Values[offset(i, j, k)]; }
  friend bool operator==(const Array3&, const Array3&) = default;
  /// @}
 private:
  static std::size_t extent(int32_t upper) {
    if (upper < -1) throw Fault(FaultKind::IndexOutOfRange, "array bound below -1");
    return static_cast<std::size_t>(upper) + 1;
  }
  std::size_t offset(int32_t i, int32_t j, int32_t k) const {
    if (i < 0 || i > U1 || j < 0 || j > U2 || k < 0 || k > U3) {
      throw Fault(FaultKind::IndexOutOfRange, "array index out of range");
    }
    return (static_cast<std::size_t>(i) * extent(U2) + static_cast<std::size_t>(j)) * extent(U3) +
           static_cast<std::size_t>(k);
  }
};

}  // namespace zelkora
