#pragma once

#include "embedded/Application.h"
#include "embedded/dialog/RecordedDialogs.h"
#include "tests/support/Plant.h"

namespace tests {

// A plant whose document is edited in an application; its dialogs are recorded.
class EditedPlant : public Plant {
 public:
  explicit EditedPlant(Kind kind = Kind::Process) : Plant(kind) { application.Edit(Document()); }

  embedded::RecordedDialogs dialogs;
  embedded::Application application{dialogs};
};

}  // namespace tests
