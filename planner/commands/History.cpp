#include "planner/history/History.h"

#include <algorithm>
#include <charconv>

#include "embedded/Error.h"
#include "planner/Session.h"
#include "planner/commands/Commands.h"
#include "planner/history/TouchedNames.h"
#include "planner/history/Worker.h"
#include "planner/import/RowFault.h"
#include "planner/language/CommandTable.h"
#include "planner/language/Syntax.h"
#include "planner/report/Csv.h"
#include "planner/report/Text.h"

namespace biwplan {

namespace {

std::int64_t ParseCount(const std::string& name, const std::string& text, std::int64_t lowest) {
  std::int64_t number = 0;
  const char* const end = text.data() + text.size();
  const auto [behind, error] = std::from_chars(text.data(), end, number);
  if (error == std::errc() && behind == end && number >= lowest) return number;
  throw embedded::InputError(name + " " + Quoted(text) + " is no number of steps; give one from " +
                             std::to_string(lowest) + " on");
}

Json Describe(const Step& step) {
  return {{"step", step.number},
          {"time", TimeInWords(step.at)},
          {"user", step.user},
          {"command", step.command}};
}

std::string InLine(const Json& step) {
  return "step " + std::to_string(step.at("step").get<std::int64_t>()) + ": " +
         Printable(step.at("command").get<std::string>());
}

// What going back and forth have in common.
class Travel : public Command {
 public:
  bool MayChange() const override { return true; }
  Answer Run(Session& ioSession) override {
    History::Move move = Way(ioSession.Steps());
    Json steps = Json::array();
    for (const Step& step : move.steps) steps.push_back(Describe(step));
    const bool isBack = !move.steps.empty() && move.to < move.steps.front().number;
    Answer answer{{{"undone", isBack ? steps : Json::array()},
                   {"redone", isBack ? Json::array() : steps},
                   {"at", move.to}},
                  move.steps.empty()};
    if (!move.steps.empty()) ioSession.Go(std::move(move));
    return answer;
  }

  std::string InWords(const Json& iData) const override {
    std::string text;
    for (const Json& step : iData.at("undone")) text += "undone: " + InLine(step) + "\n";
    for (const Json& step : iData.at("redone")) text += "redone: " + InLine(step) + "\n";
    return text.empty() ? Nothing() : text;
  }

 protected:
  virtual History::Move Way(History& history) const = 0;
  virtual std::string Nothing() const = 0;
  std::size_t Count() const {
    return count_.empty() ? 1 : static_cast<std::size_t>(ParseCount("N", count_, 1));
  }

  std::string count_;
};

class Undo : public Travel {
 public:
  void Declare(Syntax& ioSyntax) override {
    ioSyntax.Optional(NameKind::Word, "N", count_, "How many steps, 1 by default.");
    ioSyntax.Option(NameKind::Word, "--to", "STEP", target_,
                    "To the plan as it was after that step; 0 is before the first.");
    ioSyntax.Note("The plan gets back byte for byte what it was. Status 1 when there is no step.");
  }

 protected:
  History::Move Way(History& history) const override {
    if (target_.empty()) return history.Back(Count());
    if (!count_.empty()) throw embedded::InputError("N and --to are named; give one of them");
    return history.To(ParseCount("--to", target_, 0));
  }
  std::string Nothing() const override { return "nothing is there to be undone\n"; }

 private:
  std::string target_;
};

class Redo : public Travel {
 public:
  void Declare(Syntax& ioSyntax) override {
    ioSyntax.Optional(NameKind::Word, "N", count_, "How many steps, 1 by default.");
    ioSyntax.Note("Status 1 when there is no step.");
  }

 protected:
  History::Move Way(History& history) const override { return history.Forth(Count()); }
  std::string Nothing() const override { return "nothing is there to be redone\n"; }
};

class ShowHistory : public Command {
 public:
  void Declare(Syntax& ioSyntax) override {
    ioSyntax.Option(NameKind::Weld, "--weld", "W", weld_, "Steps that touched this weld.");
    ioSyntax.Option(NameKind::Activity, "--activity", "A", activity_,
                    "Steps that touched this activity.");
    ioSyntax.Option(NameKind::Word, "--last", "N", last_, "The last of them.");
    ioSyntax.Flag("--csv", isCsv_, "One line for each step, with commas.");
    ioSyntax.Note("Times are UTC. Status 1 when there is no step.");
  }

  Answer Run(Session& ioSession) override {
    const std::string activity = activity_.empty() ? "" : KeyOf(ioSession, activity_);
    Json steps = Json::array();
    for (const History::Entry& entry : ioSession.Steps().Entries()) {
      const TouchedNames& names = entry.names;
      if (!weld_.empty() && !Has(names.welds, weld_)) continue;
      if (!activity.empty() && !Has(names.activities, activity)) continue;
      Json step = Describe(entry.step);
      step["isUndone"] = entry.isUndone;
      step["isSaved"] = entry.isSaved;
      step["isOutside"] = entry.step.isOutside;
      step["welds"] = names.welds;
      step["activities"] = names.activities;
      steps.push_back(std::move(step));
    }
    const auto most =
        last_.empty() ? steps.size() : static_cast<std::size_t>(ParseCount("--last", last_, 0));
    const auto dropped = steps.size() - std::min(most, steps.size());
    steps.erase(steps.begin(), steps.begin() + static_cast<std::ptrdiff_t>(dropped));
    const bool isEmpty = steps.empty();
    return {{{"steps", std::move(steps)}}, isEmpty};
  }

  std::string InWords(const Json& iData) const override {
    return isCsv_ ? AsCsv(iData.at("steps")) : AsText(iData.at("steps"));
  }

 private:
  static bool Has(const std::vector<std::string>& names, const std::string& name) {
    return std::find(names.begin(), names.end(), name) != names.end();
  }

  // An activity may be gone, or the document; then the name is its key.
  static std::string KeyOf(Session& session, const std::string& name) {
    try {
      return session.Find().ActivityOf(name).Data().key;
    } catch (const embedded::InputError&) {
      return name;
    }
  }

  static std::string Note(const Json& step) {
    const std::string undone = step.at("isUndone") == true ? "undone" : "";
    if (step.at("isSaved") == true) return undone;
    return undone.empty() ? "not saved" : "undone, not saved";
  }

  static std::string AsCsv(const Json& steps) {
    std::string text = CsvLine({"step", "time", "user", "command", "note", "welds", "activities"});
    for (const Json& step : steps) {
      text += CsvLine({std::to_string(step.at("step").get<std::int64_t>()), step.at("time"),
                       step.at("user"), step.at("command"), Note(step), Joined(step.at("welds")),
                       Joined(step.at("activities"))});
    }
    return text;
  }

  static std::string Joined(const Json& names) {
    std::string text;
    for (const Json& name : names) text += (text.empty() ? "" : ";") + name.get<std::string>();
    return text;
  }

  static std::string AsText(const Json& steps) {
    Table table({{"step", true}, {"time"}, {"user"}, {"note"}, {"command"}});
    for (const Json& step : steps) {
      table.Add({std::to_string(step.at("step").get<std::int64_t>()), step.at("time"),
                 step.at("user"), Note(step), step.at("command")});
    }
    return steps.empty() ? "no step\n" : table.Text();
  }

  std::string weld_;
  std::string activity_;
  std::string last_;
  bool isCsv_ = false;
};

// The work that a word names, or else the only one.
History::Lost Choose(const std::vector<History::Lost>& all, const std::string& word) {
  if (all.empty()) throw embedded::InputError("no steps are there that were not saved");
  if (word.empty() && all.size() == 1) return all.front();
  std::vector<std::string> numbers;
  for (const History::Lost& lost : all) {
    numbers.push_back(std::to_string(lost.work.id));
    if (numbers.back() == word) return lost;
  }
  throw embedded::InputError("give the number of the steps, one of " + Listed(numbers));
}

class RecoverSteps : public Command {
 public:
  void Declare(Syntax& ioSyntax) override {
    ioSyntax.Optional(NameKind::Word, "N", number_, "Whose steps, when there are several.");
    ioSyntax.Flag("--overwrite", isOverwriting_, "Also when the plan was changed after them.");
  }

  bool MayChange() const override { return true; }
  Answer Run(Session& ioSession) override {
    const History::Lost lost = Choose(ioSession.Steps().FindLost(), number_);
    ioSession.Recover(lost, isOverwriting_);
    return {{{"steps", lost.steps}, {"user", lost.work.worker.user}}};
  }

  std::string InWords(const Json& iData) const override {
    return Counted(iData.at("steps").get<std::size_t>(), "step") + " recovered\n";
  }

 private:
  std::string number_;
  bool isOverwriting_ = false;
};

class DiscardSteps : public Command {
 public:
  void Declare(Syntax& ioSyntax) override {
    ioSyntax.Optional(NameKind::Word, "N", number_, "Whose steps, when there are several.");
  }

  bool MayChange() const override { return true; }
  Answer Run(Session& ioSession) override {
    const History::Lost lost = Choose(ioSession.Steps().FindLost(), number_);
    ioSession.Steps().Discard(lost);
    return {{{"steps", lost.steps}, {"user", lost.work.worker.user}}};
  }

  std::string InWords(const Json& iData) const override {
    return Counted(iData.at("steps").get<std::size_t>(), "step") + " dropped\n";
  }

 private:
  std::string number_;
};

class HistorySettings : public Command {
 public:
  void Declare(Syntax& ioSyntax) override {
    ioSyntax.Required(NameKind::Word, "N|off|status", word_, "How many steps are kept at most.");
    ioSyntax.Note(
        "The oldest go first, also when all take more than 64 MB. 'off' drops every step.");
  }

  bool MayChange() const override { return word_ != "status"; }
  Answer Run(Session& ioSession) override {
    History& history = ioSession.Steps();
    if (word_ == "off") history.SetBound(0);
    if (MayChange() && word_ != "off") history.SetBound(ParseCount("N", word_, 1));
    const History::Bounds bounds = history.GetBounds();
    return {{{"mostSteps", bounds.mostSteps}, {"steps", bounds.steps}, {"bytes", bounds.bytes}}};
  }

  std::string InWords(const Json& iData) const override {
    const auto most = iData.at("mostSteps").get<std::size_t>();
    if (most == 0) return "no history is kept\n";
    return "the history keeps " + Counted(most, "step") + ", and has " +
           std::to_string(iData.at("steps").get<std::int64_t>()) + " in " +
           Counted(iData.at("bytes").get<std::size_t>(), "byte") + "\n";
  }

 private:
  std::string word_;
};

}  // namespace

void AddHistoryCommands(CommandTable& ioTable) {
  ioTable.Add<Undo>("undo", "Takes steps back, also those of earlier commands.");
  ioTable.Add<Redo>("redo", "Takes steps that were undone again.");
  ioTable.Add<ShowHistory>("history", "Lists the steps: when, who, which command.");
  ioTable.Add<RecoverSteps>("recover", "Brings back steps that a shell did not save.");
  ioTable.Add<DiscardSteps>("discard", "Drops steps that a shell did not save.");
  ioTable.Add<HistorySettings>("settings history", "How many steps are kept.");
}

}  // namespace biwplan
