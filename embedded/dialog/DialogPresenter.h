#pragma once

#include "host/HostApplication.h"

namespace embedded {

// Shows the application's dialogs. It must not change the model, nor close the dialog's window.
class DialogPresenter {
 public:
  virtual ~DialogPresenter() = default;
  // Returns when the user closed the dialog; answers the button, 0 for the default.
  virtual int Show(const DialogRequest& iRequest) = 0;
};

}  // namespace embedded
