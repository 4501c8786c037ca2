#pragma once

#include <gtest/gtest.h>
#include <initializer_list>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "embedded/Application.h"
#include "embedded/dialog/RecordedDialogs.h"
#include "tests/support/Plant.h"
#include "tests/support/ReferenceAudit.h"
#include "tests/support/TraceRecorder.h"

namespace tests {

using Strings = std::vector<std::string>;

// A planner at work: a plant whose document is edited in an application that records its dialogs.
struct Desk {
  explicit Desk(Plant iPlant = Plant()) : plant(std::move(iPlant)) {
    application.Edit(plant.Document());
  }
  Plant plant;
  embedded::RecordedDialogs dialogs;
  embedded::Application application{dialogs};
};

// Fixture with a desk and the lines of the library's trace; nothing of it is left behind.
class PlantTest : public ReferenceAudit {
 protected:
  void TearDown() override {
    desk_.reset();
    ReferenceAudit::TearDown();
  }

 private:
  std::unique_ptr<Desk> desk_ = std::make_unique<Desk>();

 protected:
  Plant& plant = desk_->plant;
  embedded::Application& application = desk_->application;
  embedded::RecordedDialogs& dialogs = desk_->dialogs;
  TraceRecorder trace{"TuvKelBIWUtilsTrace"};
};

// The lines of operations one after another; "X" stands for the entry and exit lines of
// TuvBIWServices::X, "X>" and "<X" for one of them, and "=text" for the text alone.
Strings Lines(const Strings& operations);
Strings Joined(std::initializer_list<Strings> parts);

}  // namespace tests
