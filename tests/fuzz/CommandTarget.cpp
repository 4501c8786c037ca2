#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <sstream>

#include "embedded/storage/DocumentFile.h"
#include "host/component/ZefTrace.h"
#include "planner/Program.h"
#include "tests/fuzz/Targets.h"
#include "tests/planner/Harm.h"
#include "tests/support/ScratchFolder.h"
#include "tests/support/SourceFiles.h"

namespace tests {

namespace {

// The current folder while it lives; what the commands leave in it goes with the folder.
class InFolder {
 public:
  explicit InFolder(const std::filesystem::path& folder) { std::filesystem::current_path(folder); }
  ~InFolder() {
    std::filesystem::current_path(before_);
    SwitchTrace("TuvKelBIWUtilsTrace", false);
  }
  InFolder(const InFolder&) = delete;
  InFolder& operator=(const InFolder&) = delete;

 private:
  std::filesystem::path before_ = std::filesystem::current_path();
};

void ExpectJsonLines(const std::string& results) {
  std::istringstream lines(results);
  for (std::string line; std::getline(lines, line);) {
    EXPECT_TRUE(nlohmann::json::parse(line, nullptr, false).is_object()) << line;
  }
}

void Run(const std::string& script) {
  const bool isJson = script.starts_with("# json");
  std::vector<std::string> arguments = {"--keep-going", "door.json"};
  if (isJson) arguments.insert(arguments.begin(), "--json");
  std::istringstream lines(script);
  std::ostringstream results;
  std::ostringstream messages;
  int status = 0;
  {
    biwplan::Console console{results, messages};
    status = biwplan::RunProgram(arguments, {lines}, console);
  }
  EXPECT_TRUE(status == 0 || status == 2) << status;
  EXPECT_EQ(HarmIn(results.str()), "") << results.str();
  EXPECT_EQ(HarmIn(messages.str()), "") << messages.str();
  if (isJson) ExpectJsonLines(results.str());
}

}  // namespace

// A script, then the files that it finds. It runs in a folder of its own, which no name in it leads
// out of.
void FuzzCommands(std::string_view iBytes) {
  const ScratchFolder scratch;
  auto files = FilesIn(iBytes);
  std::string script = files[""];
  files.erase("");
  std::replace(script.begin(), script.end(), '/', '_');
  files.try_emplace("door.json", BytesOf(SourceFile("tests/storage/everything.json")));
  for (const auto& [name, text] : files) {
    const bool isPlain = std::all_of(name.begin(), name.end(), [](char c) {
      return (c >= 'a' && c <= 'z') || c == '_' || c == '.';
    });
    if (isPlain && !name.starts_with('.')) scratch.Write(name, text);
  }
  const InFolder folder(scratch.Path());
  Run(script);
  const std::string bytes = BytesOf("door.json");
  if (bytes == files["door.json"]) return;
  EXPECT_TRUE(embedded::WriteDocument(*embedded::LoadDocument("door.json")) == bytes) << bytes;
}

}  // namespace tests
