#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <iterator>
#include <map>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>

namespace tests {

// A binary glTF file, read by its definition. What stands below the root node is found by name.
class GlbReader {
 public:
  using Json = nlohmann::json;
  using Point = std::array<double, 3>;

  explicit GlbReader(const std::string& bytes) {
    const auto number = [&](std::size_t at) { return Read<std::uint32_t>(bytes, at); };
    if (bytes.substr(0, 4) != "glTF" || number(4) != 2 || number(8) != bytes.size()) {
      throw std::runtime_error("the header is wrong");
    }
    const std::size_t length = number(12);
    if (number(16) != 0x4E4F534A || length % 4) throw std::runtime_error("there is no JSON");
    json = Json::parse(bytes.substr(20, length));
    if (bytes.size() > 20 + length) binary_ = bytes.substr(28 + length, number(20 + length));
    const Json& root = json["nodes"][json["scenes"][0]["nodes"][0].get<std::size_t>()];
    for (const std::size_t child : root["children"]) {
      const Json& node = json["nodes"][child];
      nodes.emplace(node.at("name"), node);
    }
  }

  const Json& Extras(const std::string& name) const { return nodes.at(name).at("extras"); }

  // A point in a node's own axes, as a viewer shows it: metres, Y up.
  Point World(const std::string& name, const Point& own = {}) const {
    const Json& node = nodes.at(name);
    Point at = own;
    if (node.contains("matrix")) {
      for (std::size_t row = 0; row < 3; ++row) {
        at[row] = node["matrix"][12 + row];
        for (std::size_t i = 0; i < 3; ++i)
          at[row] += node["matrix"][4 * i + row].get<double>() * own[i];
      }
    }
    for (std::size_t i = 0; i < 3 && node.contains("translation"); ++i) {
      at[i] += node["translation"][i].get<double>();
    }
    const Json& root = json["nodes"][0];
    const std::array<double, 4> turn = root["rotation"];
    for (std::size_t i = 0; i < 3; ++i) at[i] *= root["scale"][i].get<double>();
    return Turned(turn, at);
  }

  // The box around a node's shape in its own axes: least and most.
  std::array<Point, 2> Bounds(const std::string& name) const {
    const Json& accessor =
        json["accessors"][Primitive(name)["attributes"]["POSITION"].get<std::size_t>()];
    const std::size_t start = json["bufferViews"][accessor["bufferView"].get<std::size_t>()].value(
        "byteOffset", std::size_t{0});
    std::array<Point, 2> bounds{Point{1e9, 1e9, 1e9}, Point{-1e9, -1e9, -1e9}};
    for (std::size_t i = 0; i < accessor["count"].get<std::size_t>() * 3; ++i) {
      const double value = Read<float>(binary_, start + 4 * i);
      bounds[0][i % 3] = std::min(bounds[0][i % 3], value);
      bounds[1][i % 3] = std::max(bounds[1][i % 3], value);
    }
    return bounds;
  }

  std::size_t Triangles(const std::string& name) const {
    return json["accessors"][Primitive(name)["indices"].get<std::size_t>()]["count"]
               .get<std::size_t>() /
           3;
  }

  const Json& Material(const std::string& name) const {
    return json["materials"][Primitive(name)["material"].get<std::size_t>()];
  }

  Json json;
  std::map<std::string, Json> nodes;

 private:
  template <class T>
  static T Read(const std::string& bytes, std::size_t at) {
    T value;
    std::memcpy(&value, bytes.substr(at, sizeof value).data(), sizeof value);
    return value;
  }

  const Json& Primitive(const std::string& name) const {
    return json["meshes"][nodes.at(name).at("mesh").get<std::size_t>()]["primitives"][0];
  }

  // By a quaternion.
  static Point Turned(const std::array<double, 4>& q, const Point& p) {
    const Point t{2 * (q[1] * p[2] - q[2] * p[1]), 2 * (q[2] * p[0] - q[0] * p[2]),
                  2 * (q[0] * p[1] - q[1] * p[0])};
    return {p[0] + q[3] * t[0] + q[1] * t[2] - q[2] * t[1],
            p[1] + q[3] * t[1] + q[2] * t[0] - q[0] * t[2],
            p[2] + q[3] * t[2] + q[0] * t[1] - q[1] * t[0]};
  }

  std::string binary_;
};

}  // namespace tests
