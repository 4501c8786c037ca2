#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace biwplan {

// A name, file name or message of any origin as one line that does nothing to a terminal. What
// controls it (escape sequences, line ends, tabs) and what turns the direction of reading becomes a
// blank; each byte that is not UTF-8 becomes U+FFFD.
std::string Printable(std::string_view iText);
// The same for text of several lines, which stay lines.
bool IsPrintable(std::string_view iLines);
std::string PrintableLines(std::string_view iText);
// The same for JSON: such characters are escaped, so that its values stay what they are. It is
// UTF-8 already.
std::string PrintableJson(std::string iJson);

// How many bytes at the end begin a character of UTF-8 that is cut off there.
std::size_t CutOffBytes(std::string_view iText);

}  // namespace biwplan
