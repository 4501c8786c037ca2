#include "embedded/scene/SceneText.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace embedded {

namespace {

// Deeper nodes are not indented further: a chain of products may be as long as its file.
constexpr int kMostLevels = 50;

// Does not depend on the locale.
std::string Millimetres(double length) {
  char digits[400];  // the largest number has 309 before its point
  const double rounded = std::abs(length) < 0.0005 ? 0.0 : length;
  const auto end =
      std::to_chars(std::begin(digits), std::end(digits), rounded, std::chars_format::fixed, 3);
  std::string text(std::begin(digits), end.ptr);
  if (text.find('.') == std::string::npos) return text;
  text.erase(text.find_last_not_of('0') + 1);
  if (text.ends_with('.')) text.pop_back();
  return text;
}

std::string Millimetres(const ZefMathVector& place) {
  return Millimetres(place.GetX()) + ' ' + Millimetres(place.GetY()) + ' ' +
         Millimetres(place.GetZ());
}

std::string Quoted(const std::string& name) {
  constexpr char kHex[] = "0123456789abcdef";
  std::string quoted = "\"";
  for (const char c : name) {
    const auto code = static_cast<unsigned char>(c);
    if (c == '"' || c == '\\') quoted += '\\';
    if (code < 0x20 || code == 0x7F) {
      quoted.append("\\x").append(1, kHex[code >> 4]).append(1, kHex[code & 0xFu]);
    } else {
      quoted += c;
    }
  }
  return quoted + '"';
}

std::string LineOf(const SceneNode& node) {
  std::string line(2 * static_cast<std::size_t>(std::min(node.depth, kMostLevels)), ' ');
  line += node.kind;
  if (!node.name.empty()) line += ' ' + Quoted(node.name);
  if (node.place) line += " at " + Millimetres(*node.place) + " mm";
  if (node.colour) {
    const auto& [red, green, blue] = *node.colour;
    line += ", colour " + std::to_string(red) + ' ' + std::to_string(green) + ' ' +
            std::to_string(blue);
  }
  if (node.hidden) line += ", hidden";
  if (node.highlighted) line += ", highlighted";
  if (node.preselected) line += ", preselected";
  return line + '\n';
}

std::string SetLine(const char* title, const std::vector<std::string>& names) {
  std::string line;
  for (const std::string& name : names) line += (line.empty() ? " " : ", ") + Quoted(name);
  return line.empty() ? line : title + line + '\n';
}

}  // namespace

std::string TextOf(const SceneTree& iTree) {
  std::string text;
  for (const SceneNode& node : iTree.nodes) text += LineOf(node);
  text += SetLine("highlighted:", iTree.highlighted);
  text += SetLine("preselected:", iTree.preselected);
  if (iTree.framed) {
    text += "framed: " + Millimetres(iTree.framed->low) + " to " + Millimetres(iTree.framed->high) +
            " mm\n";
  }
  return text;
}

}  // namespace embedded
