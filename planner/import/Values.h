#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace biwplan {

inline constexpr std::size_t kMostNameBytes = 200;

// Each throws a RowError that begins with the field's name `iField`.

// A finite number with a decimal point, a million at most in magnitude.
double ParseNumber(std::string_view iField, std::string_view iText);
// The text itself: one line of at most kMostNameBytes, not empty.
std::string_view CheckName(std::string_view iField, std::string_view iText);
// The same for a name that an assembly may get: it has no $, which separates names in warnings.
std::string_view CheckTitle(std::string_view iField, std::string_view iText);

// Lower-case letters and digits alone: "Weld ID" and "weld_id" are both "weldid".
std::string Folded(std::string_view iText);
std::string_view Trimmed(std::string_view iText);
// The trimmed pieces that are not empty.
std::vector<std::string_view> Split(std::string_view iText, std::string_view iSeparators);

}  // namespace biwplan
