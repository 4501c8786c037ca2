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

std::string StandardPlan() { return BytesOf(SourceFile("tests/storage/everything.json")); }

void ExpectJsonLines(const std::string& results) {
  std::istringstream lines(results);
  for (std::string line; std::getline(lines, line);) {
    EXPECT_TRUE(nlohmann::json::parse(line, nullptr, false).is_object()) << line;
  }
}

// A folder in which the program runs.
class Workplace {
 public:
  Workplace() { std::filesystem::current_path(scratch_.Path()); }
  ~Workplace() {
    std::filesystem::current_path(before_);
    SwitchTrace("TuvKelBIWUtilsTrace", false);
  }
  Workplace(const Workplace&) = delete;
  Workplace& operator=(const Workplace&) = delete;

  void Write(const std::string& name, const std::string& bytes) const {
    scratch_.Write(name, bytes);
  }

  // Answers the exit status.
  static int Run(const std::string& script) {
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
    return status;
  }

 private:
  ScratchFolder scratch_;
  std::filesystem::path before_ = std::filesystem::current_path();
};

std::string Plan() { return BytesOf("door.json"); }

void ExpectPlan() {
  const std::string bytes = Plan();
  EXPECT_TRUE(embedded::WriteDocument(*embedded::LoadDocument("door.json")) == bytes) << bytes;
}

}  // namespace

// A script, then the files that it finds. It runs in a folder of its own, which no name in it leads
// out of. All of it can be undone and done again.
void FuzzCommands(std::string_view iBytes) {
  const Workplace place;
  auto files = FilesIn(iBytes);
  std::string script = files[""];
  files.erase("");
  std::replace(script.begin(), script.end(), '/', '_');
  files.try_emplace("door.json", StandardPlan());
  for (const auto& [name, text] : files) {
    const bool isPlain = std::all_of(name.begin(), name.end(), [](char c) {
      return (c >= 'a' && c <= 'z') || c == '_' || c == '.';
    });
    if (isPlain && !name.starts_with('.')) place.Write(name, text);
  }
  const std::string began = Plan();
  Workplace::Run(script);
  if (Plan() != began) ExpectPlan();
  const bool isHistorySet = script.find("settings") != script.npos;
  if (isHistorySet && script.find("history") != script.npos) return;
  Workplace::Run("redo 1000");
  const std::string ended = Plan();
  Workplace::Run("undo 1000");
  EXPECT_TRUE(Plan() == began) << Plan();
  Workplace::Run("redo 1000");
  EXPECT_TRUE(Plan() == ended) << Plan();
}

// A history that others changed stands in no way: each plan that comes of it is one, and what is
// done next is done.
void FuzzHistory(std::string_view iBytes) {
  static const auto [plan, history] = [] {
    const Workplace place;
    place.Write("door.json", StandardPlan());
    Workplace::Run("assign Process SW-3\nadd station ST20\nlink ST10 ST20");
    Workplace::Run("output ST20 Rear\nundo");
    return std::pair(Plan(), BytesOf("door.history"));
  }();
  const Workplace place;
  auto files = FilesIn(iBytes);
  place.Write("door.json", plan);
  place.Write("door.history", history);
  place.Write("door.history", ChangedBytes("door.history", files[""], files["bytes"]));
  Workplace::Run("history\nredo\nundo 2\nhistory --weld SW-3\nundo --to 2");
  ExpectPlan();
  const std::string before = Plan();
  EXPECT_EQ(Workplace::Run("add station ST90"), 0);
  ExpectPlan();
  const std::string after = Plan();
  EXPECT_TRUE(after != before);
  Workplace::Run("undo");
  EXPECT_TRUE(Plan() == before || Plan() == after) << "a history may be switched off";
}

}  // namespace tests
