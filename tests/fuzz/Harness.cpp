#include <exception>
#include <gtest/gtest.h>

#include "embedded/storage/DocumentFile.h"
#include "host/component/LiveObjects.h"
#include "tests/fuzz/Targets.h"

namespace tests {

const std::vector<FuzzTarget> kFuzzTargets = {
    {"document", FuzzDocument, 2000},
    {"lists", FuzzLists, 1000},
    {"database-lists", FuzzDatabaseLists, 100},
    {"database", FuzzDatabase, 100},
    {"mesh", FuzzMesh, 500},
    {"catalog", FuzzCatalog, 500},
    {"commands", FuzzCommands, 100},
    {"history", FuzzHistory, 50},
    {"gestures", FuzzGestures, 500},
};

void RunTarget(const FuzzTarget& iTarget, std::string_view iBytes) {
  const long alive = CountLiveObjects();
  try {
    iTarget.run(iBytes);
  } catch (const std::exception& error) {
    ADD_FAILURE() << error.what();
  }
  EXPECT_EQ(CountLiveObjects(), alive);
}

std::map<std::string, std::string, std::less<>> FilesIn(std::string_view iBytes) {
  constexpr std::string_view kMark = "%% ";
  std::map<std::string, std::string, std::less<>> files;
  std::string name;
  while (!iBytes.empty()) {
    const std::size_t length = std::min(iBytes.find('\n'), iBytes.size() - 1) + 1;
    const std::string_view line = iBytes.substr(0, length);
    iBytes.remove_prefix(length);
    if (line.starts_with(kMark)) {
      name = line.substr(kMark.size(), line.find_last_not_of('\n') + 1 - kMark.size());
    } else {
      files[name] += line;
    }
  }
  return files;
}

void ExpectStored(const embedded::Document& iDocument) {
  const std::string text = embedded::WriteDocument(iDocument);
  const std::string again = embedded::WriteDocument(*embedded::ReadDocument(text, "written again"));
  EXPECT_TRUE(again == text) << text << "\nbecomes\n" << again;
}

}  // namespace tests
