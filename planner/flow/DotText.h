#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace biwplan {

// Any text as part of a DOT file: what has a meaning there is written so that it shows as it is.

// An identifier in quotes; different texts without control characters stay different.
std::string DotName(std::string_view iText);
// For a label in angle brackets. Line ends become line breaks, other control characters blanks.
std::string DotLabel(std::string_view iText);
// The same, broken at blanks, or else anywhere, into lines of at most so many characters.
std::string DotLines(std::string_view iText, std::size_t iWidth);
// `<font ...>` around a label.
std::string DotFont(const std::string& iAttributes, const std::string& iLabel);

}  // namespace biwplan
