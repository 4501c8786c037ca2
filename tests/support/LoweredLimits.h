#pragma once

#include "embedded/storage/JsonLimits.h"

namespace tests {

// Texts may be as large as this while it lives.
class LoweredLimits {
 public:
  explicit LoweredLimits(const embedded::JsonLimits& iLimits) : limits_(iLimits) {
    embedded::JsonLimits::Replace(&limits_);
  }
  ~LoweredLimits() { embedded::JsonLimits::Replace(nullptr); }
  LoweredLimits(const LoweredLimits&) = delete;
  LoweredLimits& operator=(const LoweredLimits&) = delete;

 private:
  embedded::JsonLimits limits_;
};

}  // namespace tests
