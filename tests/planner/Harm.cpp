#include "tests/planner/Harm.h"

#include "embedded/storage/Utf8.h"

namespace tests {

std::string HarmIn(const std::string& text) {
  if (!embedded::IsUtf8(text)) return "bytes that are no UTF-8";
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto byte = static_cast<unsigned char>(text[i]);
    if ((byte < 0x20 && byte != '\n') || byte == 0x7F) return "byte " + std::to_string(byte);
    const auto next = static_cast<unsigned char>(i + 1 < text.size() ? text[i + 1] : 0);
    if (byte == 0xC2 && next < 0xA0) return "U+00" + std::to_string(next);
  }
  for (const char* const turn :
       {"\u061c", "\u200e", "\u200f", "\u2028", "\u2029", "\u202a", "\u202b", "\u202c", "\u202d",
        "\u202e", "\u2066", "\u2067", "\u2068", "\u2069"}) {
    if (text.find(turn) != std::string::npos) return "a turn of the direction or a line end";
  }
  return ("\n" + text).find("\nFORGED") == std::string::npos ? "" : "a line that a name begins";
}

}  // namespace tests
