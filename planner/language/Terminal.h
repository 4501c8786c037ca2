#pragma once

#include <memory>

#include "planner/language/Shell.h"

namespace biwplan {

// A terminal with line editing, completion, and a history that the next session finds again.
// Ctrl-C drops the line.
class Terminal : public LineSource {
 public:
  explicit Terminal(Session& ioSession);
  ~Terminal() override;

  std::optional<std::string> Ask(const std::string& iPrompt) override;
  void Remember(const std::string& iLine) override;

 private:
  struct Editor;
  std::unique_ptr<Editor> editor_;
};

}  // namespace biwplan
