#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string_view>

namespace embedded {

// Tells contents of files apart.
struct Fingerprint {
  std::uint64_t high = 0;
  std::uint64_t low = 0;
  bool operator==(const Fingerprint&) const = default;
};

Fingerprint FingerprintOf(std::string_view iBytes);
// Of what a file holds now; nothing when there is none or it cannot be read.
std::optional<Fingerprint> FingerprintOfFile(const std::filesystem::path& iFile);

}  // namespace embedded
