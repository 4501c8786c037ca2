#include "host/values/Geometry.h"

#include <numbers>

constinit const double ZefDegreeToRadian = std::numbers::pi / 180.0;

namespace {

ZefMathVector Cross(const ZefMathVector& a, const ZefMathVector& b) {
  return {a.GetY() * b.GetZ() - a.GetZ() * b.GetY(), a.GetZ() * b.GetX() - a.GetX() * b.GetZ(),
          a.GetX() * b.GetY() - a.GetY() * b.GetX()};
}

}  // namespace

double ZefMath3x3Matrix::Determinant() const {
  return Dot(columns_[0], Cross(columns_[1], columns_[2]));
}

ZefMath3x3Matrix ZefMath3x3Matrix::Inverse() const {
  const double determinant = Determinant();
  if (determinant == 0) return {ZefMathVector(), ZefMathVector(), ZefMathVector()};
  // The rows of the inverse are the cross products of the columns.
  const ZefMathVector a = (1 / determinant) * Cross(columns_[1], columns_[2]);
  const ZefMathVector b = (1 / determinant) * Cross(columns_[2], columns_[0]);
  const ZefMathVector c = (1 / determinant) * Cross(columns_[0], columns_[1]);
  return {ZefMathVector(a.GetX(), b.GetX(), c.GetX()), ZefMathVector(a.GetY(), b.GetY(), c.GetY()),
          ZefMathVector(a.GetZ(), b.GetZ(), c.GetZ())};
}

ZefMathVector operator*(const ZefMath3x3Matrix& m, const ZefMathVector& v) {
  return v.GetX() * m.columns_[0] + v.GetY() * m.columns_[1] + v.GetZ() * m.columns_[2];
}

ZefMath3x3Matrix operator*(const ZefMath3x3Matrix& a, const ZefMath3x3Matrix& b) {
  return {a * b.columns_[0], a * b.columns_[1], a * b.columns_[2]};
}

ZefMathTransformation ZefMathTransformation::Inverse() const {
  const ZefMath3x3Matrix inverse = matrix_.Inverse();
  return {inverse, -(inverse * vector_)};
}

ZefMathAxis operator*(const ZefMathTransformation& t, const ZefMathAxis& axis) {
  return {t.GetMatrix() * axis.origin_ + t.GetVector(), t.GetMatrix() * axis.directions_};
}

Zef4x4Matrix::Zef4x4Matrix(const ZefMathAxis& iAxis) {
  const ZefMathVector columns[4] = {iAxis.GetDirections().Column(0),
                                    iAxis.GetDirections().Column(1),
                                    iAxis.GetDirections().Column(2), iAxis.GetOrigin()};
  for (unsigned c = 0; c < 4; ++c) {
    values_[c] = columns[c].GetX();
    values_[4 + c] = columns[c].GetY();
    values_[8 + c] = columns[c].GetZ();
    values_[12 + c] = c == 3 ? 1.0 : 0.0;
  }
}
