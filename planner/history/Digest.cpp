#include "planner/history/Digest.h"

#include <cstdint>

#include "embedded/storage/Fingerprint.h"

namespace biwplan {

std::string DigestOf(std::string_view iText) {
  const embedded::Fingerprint print = embedded::FingerprintOf(iText);
  std::string bytes;
  for (const std::uint64_t half : {print.high, print.low}) {
    for (int shift = 56; shift >= 0; shift -= 8) bytes += static_cast<char>(half >> shift & 0xFF);
  }
  return bytes;
}

}  // namespace biwplan
