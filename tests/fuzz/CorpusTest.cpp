#include <algorithm>
#include <gtest/gtest.h>
#include <random>

#include "tests/fuzz/Targets.h"
#include "tests/support/Campaign.h"
#include "tests/support/ReferenceAudit.h"
#include "tests/support/ScratchFolder.h"
#include "tests/support/SourceFiles.h"

namespace {

using tests::FuzzTarget;

class CorpusTest : public testing::TestWithParam<FuzzTarget> {
 protected:
  CorpusTest() {
    std::vector<std::filesystem::path> files;
    const std::string folder = tests::SourceFile("tests/fuzz/corpus/") + GetParam().name;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
      files.push_back(entry.path());
    }
    std::sort(files.begin(), files.end());
    for (const auto& file : files) inputs.push_back(tests::BytesOf(file));
  }

  void Run(const std::string& input) const {
    tests::RunTarget(GetParam(), input);
    if (HasFailure()) FAIL() << "with the input\n" << testing::PrintToString(input);
  }

  std::vector<std::string> inputs;
};

TEST_P(CorpusTest, IsClean) {
  ASSERT_FALSE(inputs.empty());
  for (const std::string& input : inputs) ASSERT_NO_FATAL_FAILURE(Run(input));
}

TEST_P(CorpusTest, IsCleanWithPiecesOfItPutElsewhere) {
  const std::string pieces[] = {
      "{",    "}",    "[",       "]", ",", ":",  "\"",   "\\", "1e9", "-1",
      "null", "\xC3", "\\ud800", "",  "0", "\n", "\r\n", "\t", ";",   std::string(1, '\0')};
  std::mt19937 random(20);
  const auto below = [&](std::size_t limit) { return random() % limit; };
  const auto anyOf = [&](const auto& list) { return list[below(std::size(list))]; };
  for (int i = 0; i < tests::CampaignSize(GetParam().mutations); ++i) {
    std::string input = anyOf(inputs);
    for (std::size_t changes = 1 + below(3); changes > 0; --changes) {
      const std::string other = anyOf(inputs);
      const std::string piece =
          below(2) == 0 ? anyOf(pieces) : other.substr(below(other.size() + 1), 1 + below(16));
      input.replace(below(input.size() + 1), below(4), piece);
    }
    if (below(8) == 0) input.resize(below(input.size() + 1));
    ASSERT_NO_FATAL_FAILURE(Run(input));
  }
}

INSTANTIATE_TEST_SUITE_P(Fuzz, CorpusTest, testing::ValuesIn(tests::kFuzzTargets),
                         [](const auto& each) {
                           std::string name = each.param.name;
                           std::replace(name.begin(), name.end(), '-', '_');
                           return name;
                         });

}  // namespace
