#pragma once

#include "planner/language/Shell.h"

namespace biwplan {

// A terminal with line editing, history and completion. One at a time.
class EditLine : public LineSource {
 public:
  explicit EditLine(Session& ioSession);
  ~EditLine() override;
  EditLine(const EditLine&) = delete;
  EditLine& operator=(const EditLine&) = delete;

  std::optional<std::string> Ask(const std::string& iPrompt) override;
  void Remember(const std::string& iLine) override;
};

}  // namespace biwplan
