#pragma once

#include <string_view>

namespace embedded {

// False for bytes that are not well-formed UTF-8.
bool IsUtf8(std::string_view iText);

}  // namespace embedded
