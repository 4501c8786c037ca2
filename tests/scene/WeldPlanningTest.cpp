#include <gtest/gtest.h>

#include "services/TuvBIWServices.h"
#include "tests/scene/ApplicationAudit.h"
#include "tests/support/SourceFiles.h"

namespace {

using namespace embedded;

// The library's services on this host, from a gesture to what its user sees.
class WeldPlanningTest : public tests::ApplicationAudit {
 protected:
  void SetUp() override {
    ApplicationAudit::SetUp();
    application->Catalogs().AddFolder(tests::SourceFile("resources/catalogs"));
    op = plant->Operation("OP10").Identity();
    first = &plant->Weld("SW-1", {100, 200, 300});
    second = &plant->Weld("SW-2", {110, 200, 300});
  }
  void TearDown() override {
    op = nullptr;
    ApplicationAudit::TearDown();
  }
  HRESULT Assign(ZefListValZefBaseUnknown_var welds) {
    return TuvBIWServices::AssignListOfWelds(&welds, op, nullptr, 0);
  }

  ZefISPPActivity_var op;
  SpotWeld* first = nullptr;
  SpotWeld* second = nullptr;
};

TEST_F(WeldPlanningTest, ADuplicateIsWarnedOfInTheUsersLanguageAndTheRestIsAssigned) {
  EXPECT_EQ(Assign(tests::ListOf(*first)), S_OK);
  EXPECT_TRUE(dialogs.Shown().empty());
  EXPECT_EQ(Assign(tests::ListOf(*first, *second)), S_OK);
  application->Catalogs().SetLanguage("de");
  EXPECT_EQ(Assign(tests::ListOf(*first, *second)), E_FAIL);
  ASSERT_EQ(dialogs.Shown().size(), 2u);
  EXPECT_EQ(dialogs.Shown()[0].title, "WARNING");
  EXPECT_EQ(dialogs.Shown()[0].message,
            "Duplicated weld assignements to \nthe SAME activity are illegal and\nignored.");
  EXPECT_EQ(dialogs.Shown()[1].title, "WARNUNG");
  EXPECT_EQ(dialogs.Shown()[1].message,
            "Ein Schweißpunkt kann DERSELBEN Aktivität\nnicht mehrfach zugeordnet werden.\n"
            "Doppelte Zuordnungen wurden übergangen.");
  for (const DialogRequest& shown : dialogs.Shown()) {
    EXPECT_EQ(shown.name, shown.title);
    EXPECT_EQ(shown.style, 0x8100200u);
    EXPECT_EQ(shown.parent, &application->Windows().Main());
  }
  EXPECT_EQ(ObjectAs<Activity>(op.Get())->Links().Size(), 2);
}

TEST_F(WeldPlanningTest, LabelsComeAndGoInTheSceneAndEndWithIt) {
  Assign(tests::ListOf(*first));
  auto welds = tests::ListOf(*first, *second);
  const auto visualise = [&] {
    return TuvBIWServices::VisualizationKoraWeldList(&welds, 0, 0, 1, 2, 3, 4);
  };
  const std::string bare =
      "spot weld \"SW-1\" at 100 200 300 mm, colour 0 158 115\n"
      "spot weld \"SW-2\" at 110 200 300 mm, colour 213 94 0\n";
  EXPECT_EQ(Scene(), bare);
  EXPECT_EQ(visualise(), S_OK);
  EXPECT_EQ(Scene(),
            "spot weld \"SW-1\" at 100 200 300 mm, colour 0 158 115\n"
            "  label \"SW-1\" at -100 -200 -300 mm, colour 0 0 0\n"
            "spot weld \"SW-2\" at 110 200 300 mm, colour 213 94 0\n"
            "  label \"SW-2\" at -110 -200 -300 mm, colour 0 0 0\n");
  EXPECT_EQ(application->MainViewer().Draws(), 1);
  visualise();
  EXPECT_EQ(Scene(), bare);

  visualise();
  list<ZefModelForRep3D> labels;
  TuvBIWServices::ActivateListWeldVisualization(&welds, labels);
  TuvBIWServices::SetHighlight(first->Identity());
  TuvBIWServices::HideShowWeldPointsInList(&welds, 0);
  const std::string scene = Scene();
  for (const char* const part :
       {"mm, colour 0 158 115, hidden, highlighted\n", "mm, colour 213 94 0, hidden\n",
        "temporary label \"SW-2\" at 110 200 300 mm, colour 240 228 66\n",
        "highlighted: \"SW-1\"\n"}) {
    EXPECT_NE(scene.find(part), std::string::npos) << part << "is not in\n" << scene;
  }
  TuvBIWServices::DeactivateListWeldVisualization(labels);
  application->Edit({});
  const auto bag = dynamic_cast<Zef3DBagRep*>(first->MainRep());
  EXPECT_EQ(TuvBIWServices::CheckForTuvBIWCustomRep(bag), E_FAIL);
}

}  // namespace
