#pragma once

#include <array>

// Vehicle coordinates: millimetres, Z up. Angles are radians unless a name says otherwise.

extern const double ZefDegreeToRadian;

class ZefMathPointf {
 public:
  ZefMathPointf() = default;
  ZefMathPointf(float iX, float iY, float iZ) : x_(iX), y_(iY), z_(iZ) {}
  float GetX() const { return x_; }
  float GetY() const { return y_; }
  float GetZ() const { return z_; }

  friend bool operator==(const ZefMathPointf&, const ZefMathPointf&) = default;

 private:
  float x_ = 0;
  float y_ = 0;
  float z_ = 0;
};

class ZefMathVector {
 public:
  ZefMathVector() = default;
  ZefMathVector(double iX, double iY, double iZ) : x_(iX), y_(iY), z_(iZ) {}
  double GetX() const { return x_; }
  double GetY() const { return y_; }
  double GetZ() const { return z_; }

  friend ZefMathVector operator+(const ZefMathVector& a, const ZefMathVector& b) {
    return {a.x_ + b.x_, a.y_ + b.y_, a.z_ + b.z_};
  }
  friend ZefMathVector operator-(const ZefMathVector& a) { return {-a.x_, -a.y_, -a.z_}; }
  friend ZefMathVector operator*(double factor, const ZefMathVector& a) {
    return {factor * a.x_, factor * a.y_, factor * a.z_};
  }
  friend double Dot(const ZefMathVector& a, const ZefMathVector& b) {
    return a.x_ * b.x_ + a.y_ * b.y_ + a.z_ * b.z_;
  }

 private:
  double x_ = 0;
  double y_ = 0;
  double z_ = 0;
};

// Made of its three columns; the identity by default.
class ZefMath3x3Matrix {
 public:
  ZefMath3x3Matrix() = default;
  ZefMath3x3Matrix(const ZefMathVector& iFirst, const ZefMathVector& iSecond,
                   const ZefMathVector& iThird)
      : columns_{iFirst, iSecond, iThird} {}
  // Columns count from 0.
  const ZefMathVector& Column(int iColumn) const {
    return columns_[static_cast<unsigned>(iColumn)];
  }

  double Determinant() const;
  // Of a matrix without an inverse: the matrix of zeros.
  ZefMath3x3Matrix Inverse() const;

  friend ZefMathVector operator*(const ZefMath3x3Matrix& m, const ZefMathVector& v);
  friend ZefMath3x3Matrix operator*(const ZefMath3x3Matrix& a, const ZefMath3x3Matrix& b);

 private:
  std::array<ZefMathVector, 3> columns_{ZefMathVector{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
};

// x -> matrix * x + vector; the identity by default.
class ZefMathTransformation {
 public:
  ZefMathTransformation() = default;
  ZefMathTransformation(const ZefMath3x3Matrix& iMatrix, const ZefMathVector& iVector)
      : matrix_(iMatrix), vector_(iVector) {}

  const ZefMath3x3Matrix& GetMatrix() const { return matrix_; }
  const ZefMathVector& GetVector() const { return vector_; }
  ZefMathTransformation Inverse() const;

 private:
  ZefMath3x3Matrix matrix_;
  ZefMathVector vector_;
};

// Axis system: origin and three directions; that of the vehicle by default.
class ZefMathAxis {
 public:
  ZefMathAxis() = default;
  ZefMathAxis(const ZefMathVector& iOrigin, const ZefMath3x3Matrix& iDirections)
      : origin_(iOrigin), directions_(iDirections) {}
  const ZefMathVector& GetOrigin() const { return origin_; }
  const ZefMath3x3Matrix& GetDirections() const { return directions_; }

  friend ZefMathAxis operator*(const ZefMathTransformation& t, const ZefMathAxis& axis);

 private:
  ZefMathVector origin_;
  ZefMath3x3Matrix directions_;
};

// Homogeneous matrix that maps coordinates in an axis system to those outside, row by row.
class Zef4x4Matrix {
 public:
  Zef4x4Matrix() : Zef4x4Matrix(ZefMathAxis()) {}
  explicit Zef4x4Matrix(const ZefMathAxis& iAxis);
  // Rows and columns count from 0.
  double At(int iRow, int iColumn) const {
    return values_[static_cast<unsigned>(4 * iRow + iColumn)];
  }

 private:
  std::array<double, 16> values_;
};
