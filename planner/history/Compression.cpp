#include "planner/history/Compression.h"

#include <cstddef>
#include <new>
#include <zstd.h>

#include "planner/history/Damage.h"

namespace biwplan {

namespace {

constexpr int kLevel = 1;
// More than two documents of the largest size.
constexpr unsigned long long kMostBytes = 1ULL << 30;

}  // namespace

std::string Compress(std::string_view iBytes) {
  std::string packed(ZSTD_compressBound(iBytes.size()), '\0');
  const std::size_t size =
      ZSTD_compress(packed.data(), packed.size(), iBytes.data(), iBytes.size(), kLevel);
  if (ZSTD_isError(size)) throw std::bad_alloc();
  packed.resize(size);
  return packed;
}

std::string Decompress(std::string_view iBytes) {
  const unsigned long long size = ZSTD_getFrameContentSize(iBytes.data(), iBytes.size());
  if (size > kMostBytes) throw DamagedHistory();
  std::string bytes(static_cast<std::size_t>(size), '\0');
  const std::size_t found =
      ZSTD_decompress(bytes.data(), bytes.size(), iBytes.data(), iBytes.size());
  if (ZSTD_isError(found) || found != bytes.size()) throw DamagedHistory();
  return bytes;
}

}  // namespace biwplan
