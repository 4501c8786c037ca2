// What libFuzzer runs: the target that --target=NAME names.

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <gtest/gtest.h>

#include "tests/fuzz/Targets.h"

namespace {

const tests::FuzzTarget* chosen = nullptr;

const tests::FuzzTarget* FindTarget(std::string_view argument) {
  constexpr std::string_view kOption = "--target=";
  for (const tests::FuzzTarget& target : tests::kFuzzTargets) {
    if (argument.starts_with(kOption) && argument.substr(kOption.size()) == target.name) {
      return &target;
    }
  }
  return nullptr;
}

}  // namespace

// Assimp loses the pieces that it has begun when it refuses an STL file of text.
extern "C" const char* __lsan_default_suppressions() { return "leak:libassimp"; }

extern "C" int LLVMFuzzerInitialize(int* ioCount, char*** ioArguments) {
  for (int i = 1; i < *ioCount && !chosen; ++i) chosen = FindTarget((*ioArguments)[i]);
  if (chosen) return 0;
  std::fputs("--target=NAME is missing; the names are:\n", stderr);
  for (const tests::FuzzTarget& target : tests::kFuzzTargets) {
    std::fprintf(stderr, "%s\n", target.name);
  }
  std::exit(2);
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* iBytes, std::size_t iCount) {
  tests::RunTarget(*chosen, {reinterpret_cast<const char*>(iBytes), iCount});
  if (testing::UnitTest::GetInstance()->ad_hoc_test_result().Failed()) std::abort();
  return 0;
}
