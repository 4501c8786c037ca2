#pragma once

#include <string>
#include <string_view>

namespace biwplan {

// 16 bytes that tell texts apart; no protection against somebody who wants them alike.
std::string DigestOf(std::string_view iText);

}  // namespace biwplan
