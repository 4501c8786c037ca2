#include "embedded/storage/Fingerprint.h"

#include <memory>
#include <vector>
#include <xxhash.h>

#include "embedded/storage/Descriptor.h"
#include "embedded/storage/FileCalls.h"

namespace embedded {

namespace {

constexpr std::size_t kPortion = std::size_t{1} << 20;

struct StateDeleter {
  void operator()(XXH3_state_t* state) const { XXH3_freeState(state); }
};

}  // namespace

Fingerprint FingerprintOf(std::string_view iBytes) {
  const XXH128_hash_t hash = XXH3_128bits(iBytes.data(), iBytes.size());
  return {hash.high64, hash.low64};
}

std::optional<Fingerprint> FingerprintOfFile(const std::filesystem::path& iFile) {
  const Descriptor file(iFile, O_RDONLY | O_NONBLOCK);
  const std::unique_ptr<XXH3_state_t, StateDeleter> state(XXH3_createState());
  if (!file.IsOpen() || !state || XXH3_128bits_reset(state.get()) != XXH_OK) return std::nullopt;
  std::vector<char> bytes(kPortion);
  while (true) {
    const ssize_t read = Retried(
        [&] { return FileCalls::Current().Read(file.Number(), bytes.data(), bytes.size()); });
    if (read < 0) return std::nullopt;
    if (read == 0) break;
    XXH3_128bits_update(state.get(), bytes.data(), static_cast<std::size_t>(read));
  }
  const XXH128_hash_t hash = XXH3_128bits_digest(state.get());
  return Fingerprint{hash.high64, hash.low64};
}

}  // namespace embedded
