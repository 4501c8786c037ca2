#pragma once

#include <cstddef>
#include <string_view>

namespace embedded {

struct Utf8Character {
  char32_t code;
  // In bytes.
  std::size_t length;
};

// What a text that is not empty begins with; of length 0 where that is not well-formed UTF-8.
Utf8Character FirstCharacter(std::string_view iText);

// False for bytes that are not well-formed UTF-8.
bool IsUtf8(std::string_view iText);

}  // namespace embedded
