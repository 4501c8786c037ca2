#include "embedded/storage/JsonLimits.h"

namespace embedded {

namespace {

constexpr JsonLimits kUsual;
const JsonLimits* current = &kUsual;

}  // namespace

std::string JsonLimits::BytesInWords() const {
  const std::size_t mebibytes = bytes >> 20;
  return mebibytes > 0 ? std::to_string(mebibytes) + " MiB" : std::to_string(bytes) + " bytes";
}

const JsonLimits& JsonLimits::Current() { return *current; }

void JsonLimits::Replace(const JsonLimits* iLimits) { current = iLimits ? iLimits : &kUsual; }

}  // namespace embedded
