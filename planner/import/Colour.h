#pragma once

#include <array>
#include <optional>
#include <string_view>

namespace biwplan {

// Red, green and blue from 0 to 255 out of "#1E90FF" or "30 144 255"; none for an empty text.
// RowError for any other text.
std::optional<std::array<int, 3>> ParseColour(std::string_view iText);

}  // namespace biwplan
