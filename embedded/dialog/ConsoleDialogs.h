#pragma once

#include <iosfwd>
#include <memory>

#include "embedded/dialog/DialogPresenter.h"

namespace embedded {

// Dialogs as text: the title, a rule under it, the message.
class ConsoleDialogs : public DialogPresenter {
 public:
  // With `iKeys` each dialog waits for a line from there, the user's Enter. The streams outlive
  // the object.
  explicit ConsoleDialogs(std::ostream& iOut, std::istream* iKeys = nullptr)
      : out_(iOut), keys_(iKeys) {}

  // On standard error, so that results in a pipe stay clean; waits only when a user sits at both
  // ends.
  static std::unique_ptr<ConsoleDialogs> OnStandardStreams();

  int Show(const DialogRequest& iRequest) override;

 private:
  std::ostream& out_;
  std::istream* keys_;
};

}  // namespace embedded
