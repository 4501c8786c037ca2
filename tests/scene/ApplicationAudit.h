#pragma once

#include <memory>
#include <string>

#include "embedded/Application.h"
#include "embedded/dialog/RecordedDialogs.h"
#include "embedded/scene/SceneText.h"
#include "host/visu/Visu.h"
#include "tests/support/Plant.h"
#include "tests/support/ReferenceAudit.h"

namespace tests {

// Fixture: an application that edits a plant's document. Both end before the audit.
class ApplicationAudit : public ReferenceAudit {
 protected:
  void SetUp() override {
    plant = std::make_unique<Plant>();
    application = std::make_unique<embedded::Application>(dialogs);
    application->Edit(plant->Document());
  }
  void TearDown() override {
    application.reset();
    plant.reset();
    ReferenceAudit::TearDown();
  }
  std::string Scene() const { return TextOf(SceneOf(application->MainViewer())); }
  // A label as the weld services make one: a text drawn by a representation.
  static Handle<Zef3DCustomRep> Label(const char* text, const ZefMathPointf& at = {}) {
    return Make<Zef3DCustomRep>(new Zef3DAnnotationTextGP(at, text, BASE_LEFT, 0, 0),
                                ZefGraphicAttributeSet{0, 0x0A141EFFu});
  }

  embedded::RecordedDialogs dialogs;
  std::unique_ptr<Plant> plant;
  std::unique_ptr<embedded::Application> application;
};

}  // namespace tests
