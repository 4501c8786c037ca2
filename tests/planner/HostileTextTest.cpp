#include <gmock/gmock.h>
#include <nlohmann/json.hpp>
#include <optional>
#include <set>

#include "host/component/ZefTrace.h"
#include "planner/language/CommandTable.h"
#include "planner/language/Interpreter.h"
#include "planner/language/Shell.h"
#include "planner/language/Syntax.h"
#include "planner/report/Csv.h"
#include "planner/report/Printable.h"
#include "planner/report/PrintableStream.h"
#include "tests/planner/Harm.h"
#include "tests/planner/Planner.h"

namespace tests {
namespace {

using biwplan::NameKind;
using testing::HasSubstr;
using Words = std::vector<std::string>;

// What a terminal acts on, in a name: escape sequences of seven and of eight bits, line ends, a
// blind line, turned reading.
const std::string kHostile =
    "\x1b]0;title\a\x1b[2J\r\nFORGED\b\t\x7f\u0085\u009b31m\u061c\u200e\u200f\u2028\u2029\u202a"
    "\u202eeman\u2066\u2069";
// In a file name and in a word of a command line, also bytes that are no text.
const std::string kHostileBytes = kHostile + "\x9b\xff\xc3";

// A plan in which everything has a hostile name, with what is said about it.
class HostileTextTest : public PlannerTest {
 protected:
  HostileTextTest() {
    Begin();
    folder_.Write("lists/processes.csv", "process,name,parent\nA,,\nB,,\n");
    for (const char* const line :
         {"update on", "assign OP10 SW-1 SW-2", "assign OP30 SM-1", "add station ST20",
          "output ST10 Front", "drop P1 OP10", "link ST10 ST20", "output ST20 Rear"}) {
      EXPECT_EQ(Do(line).status, 0) << line;
    }
    auto plan = nlohmann::ordered_json::parse(Bytes("door.json"));
    Poison(plan);
    plan_ = plan.dump();
  }
  ~HostileTextTest() override { SwitchTrace("TuvKelBIWUtilsTrace", false); }

  // Runs the program in words and in JSON, on the plan as it was at first.
  void Try(const Words& words, const std::string& document = "@door.json") {
    Words arguments = {document};
    arguments.insert(arguments.end(), words.begin(), words.end());
    for (const char* const option : {"--trace", "--json"}) {
      folder_.Write("door.json", plan_);
      arguments.insert(arguments.begin(), option);
      Judge(Run(arguments), words);
      arguments.erase(arguments.begin());
    }
  }

  void Judge(const Spoken& spoken, const Words& words) {
    const std::string command = testing::PrintToString(words);
    EXPECT_EQ(HarmIn(spoken.results), "") << command << '\n' << spoken.results;
    EXPECT_EQ(HarmIn(spoken.messages), "") << command << '\n' << spoken.messages;
    if (spoken.status != 2 && !words.empty()) answered_.insert(words[0]);
    if (!spoken.results.starts_with('{')) return;
    std::istringstream lines(spoken.results);
    for (std::string line; std::getline(lines, line);) {
      EXPECT_TRUE(nlohmann::json::accept(line)) << command << '\n' << line;
    }
  }

  // Something that an argument of this kind names; what is not there when it shall be strange.
  std::string Word(const biwplan::Syntax::Candidates& wanted, bool isStrange) const {
    if (wanted.kind == NameKind::File) return Path("picture" + kHostileBytes + ".dot");
    if (isStrange) return "X" + kHostileBytes;
    if (!wanted.words.empty()) return wanted.words.front();
    if (wanted.kind == NameKind::Activity) return "OP10" + kHostile;
    if (wanted.kind == NameKind::Weld) return "SW-1" + kHostile;
    return (wanted.kind == NameKind::Part ? "P1" : "new") + kHostile;
  }

  std::string plan_;
  // The first words of the commands that did not fail.
  std::set<std::string> answered_;

 private:
  static void Poison(nlohmann::ordered_json& value) {
    static const std::set<std::string> kNames = {
        "Process",     "ST10",   "ST20", "OP10", "OP20", "OP30", "Tack",
        "Geo station", "Respot", "Seal", "P1",   "P2",   "P3",   "Inner panel",
        "Outer panel", "Hinge",  "SW-1", "SW-2", "SW-3", "SM-1", "L-1",
        "C-1",         "Front",  "Rear", "MA-1", "MA-2"};
    if (value.is_structured()) {
      for (auto& inner : value) Poison(inner);
    } else if (value.is_string() && kNames.contains(value.get<std::string>())) {
      value = value.get<std::string>() + kHostile;
    }
  }
};

TEST_F(HostileTextTest, DoesNothingToTheTerminalWhateverTheCommand) {
  constexpr std::size_t kMostArguments = 4;
  std::size_t commands = 0;
  for (const auto& group : biwplan::CommandTable::All().Groups()) {
    for (const biwplan::CommandEntry& entry : group.entries) {
      ++commands;
      biwplan::Syntax syntax(entry.verb, entry.summary);
      const auto command = entry.make();
      command->Declare(syntax);
      const Words verb = biwplan::SplitWords(entry.verb);
      const auto attempt = [&](const Words& rest) {
        Words words = verb;
        words.insert(words.end(), rest.begin(), rest.end());
        Try(words);
      };
      for (const bool isStrange : {false, true}) {
        for (Words words; words.size() <= kMostArguments;) {
          attempt(words);
          words.push_back(Word(syntax.After(words), isStrange));
        }
      }
      for (const std::string& option : syntax.OptionNames()) {
        const auto wanted = syntax.After({option});
        for (const bool isStrange : {false, true}) {
          const std::string value = Word(wanted, isStrange);
          attempt({option, value});
          attempt({Word(syntax.After({}), false), option, value});
          attempt({Word(syntax.After({}), false), option});
        }
      }
      attempt({"--" + kHostileBytes});
    }
  }
  EXPECT_GT(answered_.size(), commands / 2) << "most commands answer, not only refuse";
}

TEST_F(HostileTextTest, DoesNothingToTheTerminalWhateverFails) {
  const std::string bad = "bad" + kHostileBytes;
  folder_.Write(bad + ".json", "{\"format\": \"" + bad);
  folder_.Write(bad + ".biw", "show\n" + kHostile + "\nassign \"" + kHostile + "\n");
  folder_.Write("names.biw", "assign 'OP\u009b31m\u202e' SW-1\n");
  folder_.Write(bad + ".csv", "number," + kHostileBytes + "\nP1,x\nP1,y\n" + kHostile + "\n");
  folder_.Write("parts\u202e.csv", "number,name\nP1,\u009b2J\nP1,\u202e\nP2,x\n");
  folder_.Write("welds\u202e.csv",
                "id,x,y,z,parts,type\nA\u202e,1,2,\u009b3,P1,\nB,1,2,3,Q\u2066,\nC,1,2,3,P1,"
                "\u009b\nA\u009b,1,2,3,P1,\nA\u009b,1,2,3,P1,\n");
  folder_.Write("process\u202e.csv", "id,parent,type\nA,\u202e,station\nB,B\u009b,\u009b\n");
  folder_.Write("lists" + bad + "/processes.csv", bad + "\n");
  const Words lists = {"new",     "--replace",        "--parts",   "@parts\u202e.csv",
                       "--welds", "@welds\u202e.csv", "--process", "@process\u202e.csv"};
  const struct {
    std::string document;
    Words words;
  } cases[] = {
      {"@none" + bad, {"show"}},
      {"@none" + bad, {"new", "--parts", bad, "--welds", bad, "--process", bad}},
      {"@" + bad + ".json", {"show"}},
      {"@" + bad + ".json", {"new", "--parts", "@parts.csv", "--welds", "a", "--process", "b"}},
      {"@door.json", {bad}},
      {"@door.json", {"external", bad}},
      {"@door.json", {"--script", "@" + bad}},
      {"@door.json", {"--script", "@" + bad + ".biw", "--keep-going", "--echo"}},
      {"@door.json", {"--script", "@names.biw", "--echo"}},
      {"@door.json", {"--language", bad}},
      {"--" + bad, {"show"}},
      {"help", {bad}},
      {"@door.json",
       {"new", "--replace", "--parts", "@" + bad + ".csv", "--welds", "@" + bad + ".csv",
        "--process", "@" + bad + ".csv"}},
      {"@door.json",
       {"new", "--replace", "--parts", "@parts.csv", "--welds", "@welds\u202e.csv", "--process",
        "@process.csv", "--name", bad}},
      {"@door.json",
       {"new", "--replace", "--strict", "--parts", "@parts.csv", "--welds", "@welds\u202e.csv",
        "--process", "@process.csv"}},
      {"@door.json", lists},
      {"@door.json", {"external", "create", "@base" + bad, "@lists"}},
      {"@door.json", {"external", "create", "@base" + bad, "@lists" + bad}},
      {"@door.json", {"external", "attach", "@" + bad + ".json"}},
      {"@door.json", {"flow", "--output", "@" + bad + ".svg"}},
      {"@door.json", {"scene", "--output", "@" + bad + ".glb"}},
      {"@door.json", {"scene", "--output", "@no/" + bad + ".glb"}},
      {"@door.json", {"save", "@" + bad + ".json"}},
  };
  for (const auto& each : cases) Try(each.words, each.document);
  // Dialogs, whose texts have lines: two outputs to fill, two stations to hand over to.
  folder_.Write("door.json", plan_);
  const std::string h = kHostile;
  for (const Words& words : std::vector<Words>{{"output", "ST10" + h},
                                               {"drop", "P2" + h, "OP10" + h},
                                               {"assign", "OP10" + h, "SW-1" + h}}) {
    Words arguments = {"@door.json"};
    arguments.insert(arguments.end(), words.begin(), words.end());
    const Spoken spoken = Run(arguments);
    Judge(spoken, words);
    EXPECT_TRUE(words[0] == "output" || !spoken.messages.empty()) << words[0];
  }
}

TEST_F(HostileTextTest, KeepsValuesInJson) {
  folder_.Write("door.json", plan_);
  const Spoken spoken = Run({"--json", "@door.json", "activities-of", "SW-1" + kHostile});
  const auto answer = nlohmann::json::parse(spoken.results);
  EXPECT_EQ(answer.at("welds").at(0).at("activities").at(0), "OP10" + kHostile);
}

// Answers one line and then leaves.
class Typist : public biwplan::LineSource {
 public:
  explicit Typist(std::string line) : line_(std::move(line)) {}
  std::optional<std::string> Ask(const std::string& iPrompt) override {
    prompts += iPrompt;
    return std::exchange(line_, std::nullopt);
  }
  std::string prompts;

 private:
  std::optional<std::string> line_;
};

TEST_F(HostileTextTest, DoesNothingToTheTerminalInTheShell) {
  const std::string file = "door" + kHostileBytes + ".json";
  folder_.Write(file, plan_);
  std::ostringstream results;
  std::ostringstream messages;
  biwplan::Console console{results, messages, true};
  biwplan::Session session(Path(file), console);
  biwplan::Interpreter interpreter(session, console);
  Typist user("unassign OP30* SM-1*");
  biwplan::RunShell(user, session, interpreter, console);
  EXPECT_EQ(HarmIn(user.prompts + results.str() + messages.str()), "");
  for (const char* const line : {"assign ", "assign OP", "assign OP10 SW", "welds --part P"}) {
    for (const std::string& offered : biwplan::Complete(line, session)) {
      EXPECT_EQ(HarmIn(offered), "");
    }
  }
}

TEST(PrintableTest, ReplacesWhatATerminalActsOnAndNothingElse) {
  const struct {
    std::string text;
    std::string printable;
    std::string json;
  } cases[] = {
      {"Tür 日本 😀 \u00a0\u200b", "Tür 日本 😀 \u00a0\u200b", "Tür 日本 😀 \u00a0\u200b"},
      {"a\x1b[1mb\x7f", "a [1mb ", "a\\u001b[1mb\\u007f"},
      {"\u0080\u009f\u00a0", "  \u00a0", "\\u0080\\u009f\u00a0"},
      {"\u2027\u2028\u202e\u202f", "\u2027  \u202f", "\u2027\\u2028\\u202e\u202f"},
      {"\u2065\u2066\u2069\u2070", "\u2065  \u2070", "\u2065\\u2066\\u2069\u2070"},
      {std::string("a\0b", 3), "a b", "a\\u0000b"},
  };
  for (const auto& each : cases) {
    EXPECT_EQ(biwplan::Printable(each.text), each.printable);
    EXPECT_EQ(biwplan::PrintableJson(each.text), each.json);
  }
  const std::string replaced = "\ufffd";
  EXPECT_EQ(biwplan::Printable("\xff"
                               "a\xc3"),
            replaced + "a" + replaced);
  EXPECT_EQ(biwplan::Printable("\xed\xa0\x80"), replaced + replaced + replaced) << "surrogates";
  EXPECT_EQ(biwplan::PrintableLines("a\r\n\tb\n"), "a \n b\n");
}

TEST(PrintableTest, JudgesTextThatComesInPiecesAsAWhole) {
  const std::string text = "Tür \u009b2J 日本\u202e 😀\n";
  for (std::size_t cut = 0; cut <= text.size(); ++cut) {
    std::ostringstream target;
    biwplan::PrintableStream stream(target);
    stream << text.substr(0, cut) << text.substr(cut) << std::flush;
    EXPECT_EQ(target.str(), "Tür  2J 日本  😀\n") << cut;
  }
  std::ostringstream target;
  biwplan::PrintableStream stream(target);
  for (const char byte : text) stream.put(byte);
  stream << std::string(70'000, 'x') << "\xc3" << std::flush << "a";
  EXPECT_EQ(target.str(), "Tür  2J 日本  😀\n" + std::string(70'000, 'x') + "\ufffd" + "a");
  target.setstate(std::ios::badbit);
  EXPECT_FALSE(stream << "lost" << std::flush);
}

TEST(PrintableTest, KeepsSpreadsheetsFromCalculating) {
  const struct {
    std::string field;
    std::string written;
  } cases[] = {
      {"plain", "plain"},
      {"=1+1", "'=1+1"},
      {"+cmd|' /C calc'!A0", "'+cmd|' /C calc'!A0"},
      {"-2+3", "'-2+3"},
      {"@SUM(A1)", "'@SUM(A1)"},
      {"\t=1", "' =1"},
      {"\rx", "' x"},
      {"  =1", "'  =1"},
      {"\x1b=1", "' =1"},
      {"-12.5", "-12.5"},
      {"+3", "+3"},
      {"-1e3", "-1e3"},
      {"-inf", "'-inf"},
      {"+-3", "'+-3"},
      {"--3", "'--3"},
      {"a=b", "a=b"},
      {"a,b", "\"a,b\""},
      {"say \"x\"", "\"say \"\"x\"\"\""},
      {"=\"a\"", "\"'=\"\"a\"\"\""},
      {"", ""},
      {"-", "'-"},
      {"a\nb", "a b"},
  };
  for (const auto& each : cases) EXPECT_EQ(biwplan::CsvLine({each.field}), each.written + "\n");
  EXPECT_EQ(biwplan::CsvLine({"", "b", ""}), ",b,\n");
}

}  // namespace
}  // namespace tests
