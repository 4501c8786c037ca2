#include "planner/scene/Shapes.h"

#include <cmath>
#include <cstddef>
#include <numbers>

namespace biwplan {

namespace {

constexpr std::size_t kSphereRings = 8;
constexpr std::size_t kSphereSides = 12;
constexpr std::size_t kTubeSides = 8;

std::uint32_t Index(std::size_t i) { return static_cast<std::uint32_t>(i); }

TriangleMesh::Triple Single(const Point& point) {
  return {static_cast<float>(point[0]), static_cast<float>(point[1]), static_cast<float>(point[2])};
}

Point Sum(const Point& a, double factor, const Point& b) {
  return {a[0] + factor * b[0], a[1] + factor * b[1], a[2] + factor * b[2]};
}

double Dot(const Point& a, const Point& b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }

Point Cross(const Point& a, const Point& b) {
  return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

double Length(const Point& a) { return std::hypot(a[0], a[1], a[2]); }

Point Scaled(double factor, const Point& a) { return Sum({}, factor, a); }

// A direction at a right angle to this one.
Point Across(const Point& direction) {
  const Point axis = std::abs(direction[0]) < 0.7 ? Point{1, 0, 0} : Point{0, 1, 0};
  const Point across = Cross(direction, axis);
  return Scaled(1 / Length(across), across);
}

void AddVertex(TriangleMesh& mesh, const Point& place, const Point& normal) {
  mesh.points.push_back(Single(place));
  mesh.normals.push_back(Single(normal));
}

// Joins two rings of vertices, which run around the way from the first to the second.
void JoinRings(TriangleMesh& mesh, std::size_t first, std::size_t second, std::size_t sides) {
  for (std::size_t side = 0; side < sides; ++side) {
    const std::size_t next = (side + 1) % sides;
    mesh.triangles.push_back({Index(first + side), Index(first + next), Index(second + next)});
    mesh.triangles.push_back({Index(first + side), Index(second + next), Index(second + side)});
  }
}

// Joins a ring with one vertex, on the side to which the ring runs around or on the other.
void CloseRing(TriangleMesh& mesh, std::size_t ring, std::size_t tip, std::size_t sides,
               bool isAhead) {
  for (std::size_t side = 0; side < sides; ++side) {
    const std::size_t next = (side + 1) % sides;
    mesh.triangles.push_back(
        {Index(tip), Index(ring + (isAhead ? side : next)), Index(ring + (isAhead ? next : side))});
  }
}

// The points of the line without those that repeat the one before.
std::vector<Point> Distinct(const std::vector<Point>& points) {
  std::vector<Point> distinct;
  for (const Point& point : points) {
    if (distinct.empty() || Length(Sum(point, -1, distinct.back())) > 1e-6) {
      distinct.push_back(point);
    }
  }
  return distinct;
}

// Where the line goes at each of its points, of length 1.
std::vector<Point> Directions(const std::vector<Point>& points) {
  std::vector<Point> ways;
  for (std::size_t i = 1; i < points.size(); ++i) {
    const Point way = Sum(points[i], -1, points[i - 1]);
    ways.push_back(Scaled(1 / Length(way), way));
  }
  std::vector<Point> directions{ways.front()};
  for (std::size_t i = 1; i < ways.size(); ++i) {
    const Point both = Sum(ways[i - 1], 1, ways[i]);
    directions.push_back(Length(both) < 1e-3 ? ways[i] : Scaled(1 / Length(both), both));
  }
  directions.push_back(ways.back());
  return directions;
}

void AddRing(TriangleMesh& mesh, const Point& centre, const Point& direction, const Point& across,
             double radius) {
  const Point third = Cross(direction, across);
  for (std::size_t side = 0; side < kTubeSides; ++side) {
    const double angle = 2 * std::numbers::pi * static_cast<double>(side) / kTubeSides;
    const Point normal = Sum(Scaled(std::cos(angle), across), std::sin(angle), third);
    AddVertex(mesh, Sum(centre, radius, normal), normal);
  }
}

// The direction across that turns least from the one before.
Point Carried(const Point& across, const Point& direction) {
  const Point carried = Sum(across, -Dot(across, direction), direction);
  const double length = Length(carried);
  return length < 1e-3 ? Across(direction) : Scaled(1 / length, carried);
}

}  // namespace

TriangleMesh Sphere(double iRadius) {
  TriangleMesh mesh;
  AddVertex(mesh, {0, 0, -iRadius}, {0, 0, -1});
  for (std::size_t ring = 1; ring < kSphereRings; ++ring) {
    const double height = std::numbers::pi * (static_cast<double>(ring) / kSphereRings - 0.5);
    for (std::size_t side = 0; side < kSphereSides; ++side) {
      const double angle = 2 * std::numbers::pi * static_cast<double>(side) / kSphereSides;
      const Point normal{std::cos(height) * std::cos(angle), std::cos(height) * std::sin(angle),
                         std::sin(height)};
      AddVertex(mesh, Scaled(iRadius, normal), normal);
    }
  }
  AddVertex(mesh, {0, 0, iRadius}, {0, 0, 1});
  const auto start = [](std::size_t ring) { return 1 + (ring - 1) * kSphereSides; };
  CloseRing(mesh, start(1), 0, kSphereSides, false);
  for (std::size_t ring = 1; ring + 1 < kSphereRings; ++ring) {
    JoinRings(mesh, start(ring), start(ring + 1), kSphereSides);
  }
  CloseRing(mesh, start(kSphereRings - 1), mesh.points.size() - 1, kSphereSides, true);
  return mesh;
}

TriangleMesh Octahedron(double iRadius) {
  const auto r = static_cast<float>(iRadius);
  TriangleMesh mesh;
  mesh.points = {{0, 0, -r}, {r, 0, 0}, {0, r, 0}, {-r, 0, 0}, {0, -r, 0}, {0, 0, r}};
  CloseRing(mesh, 1, 0, 4, false);
  CloseRing(mesh, 1, 5, 4, true);
  return mesh;
}

TriangleMesh BoxBetween(const Point& iLeast, const Point& iMost) {
  TriangleMesh mesh;
  const auto add = [&](double x, double y, double z) { mesh.points.push_back(Single({x, y, z})); };
  for (const double z : {iLeast[2], iMost[2]}) {
    add(iLeast[0], iLeast[1], z);
    add(iMost[0], iLeast[1], z);
    add(iMost[0], iMost[1], z);
    add(iLeast[0], iMost[1], z);
  }
  mesh.triangles = {{0, 2, 1}, {0, 3, 2}, {4, 5, 6}, {4, 6, 7}};
  JoinRings(mesh, 0, 4, 4);
  return mesh;
}

TriangleMesh Tube(const std::vector<Point>& iPoints, double iRadius) {
  const std::vector<Point> points = Distinct(iPoints);
  if (points.size() < 2) return Sphere(iRadius);
  const std::vector<Point> directions = Directions(points);
  TriangleMesh mesh;
  Point across = Across(directions.front());
  for (std::size_t i = 0; i < points.size(); ++i) {
    across = Carried(across, directions[i]);
    AddRing(mesh, points[i], directions[i], across, iRadius);
    if (i > 0) JoinRings(mesh, (i - 1) * kTubeSides, i * kTubeSides, kTubeSides);
  }
  const std::size_t last = mesh.points.size() - kTubeSides;
  AddVertex(mesh, points.front(), Scaled(-1, directions.front()));
  CloseRing(mesh, 0, mesh.points.size() - 1, kTubeSides, false);
  AddVertex(mesh, points.back(), directions.back());
  CloseRing(mesh, last, mesh.points.size() - 1, kTubeSides, true);
  return mesh;
}

}  // namespace biwplan
