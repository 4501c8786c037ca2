#pragma once

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "planner/language/Shell.h"
#include "tests/planner/Planner.h"

namespace tests {

// A user who types these lines and leaves.
class Typist : public biwplan::LineSource {
 public:
  explicit Typist(std::deque<std::string> lines) : lines_(std::move(lines)) {}
  std::optional<std::string> Ask(const std::string& iPrompt) override {
    prompts.push_back(iPrompt);
    if (onPrompt) onPrompt(prompts.size());
    if (lines_.empty()) return std::nullopt;
    std::string line = lines_.front();
    lines_.pop_front();
    return line;
  }
  void Remember(const std::string& iLine) override { remembered.push_back(iLine); }

  // Called with the number of the prompt, from 1.
  std::function<void(std::size_t)> onPrompt;
  std::vector<std::string> prompts;
  std::vector<std::string> remembered;

 private:
  std::deque<std::string> lines_;
};

class ShellFixture : public PlannerTest {
 protected:
  Spoken Type(Typist& user) {
    std::ostringstream results;
    std::ostringstream messages;
    biwplan::Console console{results, messages};
    biwplan::Session session(Path("door.json"), console);
    biwplan::Interpreter interpreter(session, console);
    biwplan::RunShell(user, session, interpreter, console);
    return {0, WithoutPaths(results.str()), WithoutPaths(messages.str())};
  }
  Spoken Type(std::deque<std::string> lines) {
    Typist user(std::move(lines));
    return Type(user);
  }
  bool IsAssigned(const std::string& weld) { return Do("activities-of " + weld).status == 0; }
};

}  // namespace tests
