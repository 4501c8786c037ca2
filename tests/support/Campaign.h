#pragma once

#include <algorithm>
#include <cstdlib>

namespace tests {

// How often a random test runs: `iOrdinary` times, and as many times that as TUV_CAMPAIGN says.
inline int CampaignSize(int iOrdinary) {
  const char* const factor = std::getenv("TUV_CAMPAIGN");
  return factor ? iOrdinary * std::max(1, std::atoi(factor)) : iOrdinary;
}

}  // namespace tests
