#pragma once

#include <string>
#include <string_view>

namespace biwplan {

std::string Compress(std::string_view iBytes);
// DamagedHistory for bytes that Compress did not make, before memory is asked for them.
std::string Decompress(std::string_view iBytes);

}  // namespace biwplan
