#pragma once

#include <functional>
#include <utility>
#include <vector>

#include "embedded/dialog/DialogPresenter.h"

namespace embedded {

// Keeps the dialogs of an unattended run instead of showing them. Each is answered at once, with
// the default button unless an answer was given.
class RecordedDialogs : public DialogPresenter {
 public:
  using Answer = std::function<int(const DialogRequest&)>;

  // Asked for each dialog after it was recorded.
  void SetAnswer(Answer iAnswer) { answer_ = std::move(iAnswer); }

  int Show(const DialogRequest& iRequest) override {
    shown_.push_back(iRequest);
    return answer_ ? answer_(iRequest) : 0;
  }

  // In the order in which they were shown. A request's parent may have been closed since.
  const std::vector<DialogRequest>& Shown() const { return shown_; }
  void Forget() { shown_.clear(); }

 private:
  std::vector<DialogRequest> shown_;
  Answer answer_;
};

}  // namespace embedded
