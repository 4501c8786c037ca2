#pragma once

#include <cstddef>
#include <string>

namespace embedded {

// How large a JSON text may be, for who reads and for who writes it: nothing is written that could
// not be read. A plan of a million welds with eight parts each, all assigned, has room.
struct JsonLimits {
  std::size_t bytes = std::size_t{1} << 30;
  // Texts, numbers, flags, lists and objects.
  std::size_t values = std::size_t{48} << 20;
  std::size_t depth = 16;

  // "1024 MiB", or bytes where they are few.
  std::string BytesInWords() const;

  static const JsonLimits& Current();
  // Others in place of the usual ones; null brings these back. The caller keeps them meanwhile.
  static void Replace(const JsonLimits* iLimits);
};

}  // namespace embedded
