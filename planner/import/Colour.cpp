#include "planner/import/Colour.h"

#include <charconv>
#include <string>
#include <vector>

#include "planner/import/RowFault.h"
#include "planner/import/Values.h"

namespace biwplan {

namespace {

bool ReadDigits(std::string_view digits, int base, int& number) {
  const char* const end = digits.data() + digits.size();
  const auto [stop, error] = std::from_chars(digits.data(), end, number, base);
  return error == std::errc() && stop == end && number >= 0 && number <= 255;
}

std::vector<std::string_view> Components(std::string_view text, int& base) {
  base = text.starts_with('#') ? 16 : 10;
  if (base == 10) return Split(text, " ;,/");
  if (text.size() != 7) return {};
  return {text.substr(1, 2), text.substr(3, 2), text.substr(5, 2)};
}

}  // namespace

std::optional<std::array<int, 3>> ParseColour(std::string_view iText) {
  if (iText.empty()) return std::nullopt;
  int base = 10;
  const std::vector<std::string_view> components = Components(iText, base);
  std::array<int, 3> colour{};
  bool isColour = components.size() == colour.size();
  for (std::size_t i = 0; isColour && i < colour.size(); ++i) {
    isColour = ReadDigits(components[i], base, colour[i]);
  }
  if (isColour) return colour;
  throw RowError(FaultKind::UnknownWord,
                 "colour is " + Quoted(iText) + "; write #1E90FF or \"30 144 255\"");
}

}  // namespace biwplan
