#include <cstddef>
#include <utility>

#include "frame/Registration.h"
#include "frame/TuvIBIWSetup.h"
#include "host/component/Dictionary.h"
#include "manufassly/TuvEUpdateManufAssly.h"
#include "services/TuvBIWActivityIntelligenceServices.h"
#include "services/TuvBIWServices.h"
#include "tests/support/PlantTest.h"
#include "visu/TuvBIWCustomRep.h"
#include "visu/TuvBIWPreviewWindow.h"

namespace {

using namespace tests;

using RegistrationTest = ReferenceAudit;

TEST_F(RegistrationTest, EachClassIsRegisteredUnderItsNameWithItsBaseAndType) {
  const struct {
    ZefMetaClass* (*metaObject)();
    const char* (*className)();
    const _GUID& (*classId)();
    const char *name, *base, *extendedType;
    ENUMTypeOfClass kind;
    std::size_t size;
  } cases[] = {
      {TuvBIWCustomRep::MetaObject, TuvBIWCustomRep::ClassName, TuvBIWCustomRep::ClassId,
       "TuvBIWCustomRep", "Zef3DCustomRep", "Zefnull", Implementation, sizeof(TuvBIWCustomRep)},
      {TuvBIWPreviewWindow::MetaObject, TuvBIWPreviewWindow::ClassName,
       TuvBIWPreviewWindow::ClassId, "TuvBIWPreviewWindow", "ZefEventSubscriber", "ZefNull",
       Implementation, sizeof(TuvBIWPreviewWindow)},
      {TuvEUpdateManufAssly::MetaObject, TuvEUpdateManufAssly::ClassName,
       TuvEUpdateManufAssly::ClassId, "TuvEUpdateManufAssly", "TuvIUpdateManufAssly",
       "PhysicalActivity", TypeExtension, sizeof(TuvEUpdateManufAssly)},
      {TuvIBIWSetup::MetaObject, TuvIBIWSetup::ClassName, TuvIBIWSetup::ClassId, "TuvIBIWSetup",
       "ZefBaseUnknown", "", TypeInterface, 0},
  };
  for (const auto& [metaObject, className, classId, name, base, type, kind, size] : cases) {
    EXPECT_STREQ(className(), name);
    const ZefMetaClass* const meta = metaObject();
    EXPECT_EQ(meta, metaObject()) << "built once";
    EXPECT_EQ(meta, kind == TypeInterface ? FindInterface(name) : FindMetaClass(name));
    EXPECT_TRUE(classId() == meta->GetClassId());
    EXPECT_STREQ(meta->GetBase()->GetClassName(), base);
    EXPECT_EQ(meta->GetExtendedType(), type);
    EXPECT_STREQ(meta->GetFWname(), "TuvKelBodyInWhiteUI");
    EXPECT_EQ(meta->GetKind(), kind);
    EXPECT_EQ(meta->GetInstanceSize(), static_cast<int>(size));
  }
  EXPECT_EQ(FindMetaClass("Zefnull"), nullptr);
}

TEST_F(RegistrationTest, TheSetupInterfaceIsKnownByItsIdentifier) {
  const _GUID id{0x13727A5C, 0xF893, 0x11D4, {0x80, 0xCF, 0x00, 0x50, 0x04, 0x0C, 0xCF, 0xB4}};
  EXPECT_TRUE(IID_TuvIBIWSetup == id);
  EXPECT_EQ(FindInterface(id), TuvIBIWSetup::MetaObject());
  EXPECT_EQ(TuvIBIWSetup::meta_object, TuvIBIWSetup::MetaObject());
}

TEST_F(RegistrationTest, WithoutMemoryTheSetupInterfaceHasNoMetaObjectUntilItIsAskedAgain) {
  ZefMetaClass* const known = std::exchange(TuvIBIWSetup::meta_object, nullptr);
  FailAllocation(1);
  EXPECT_EQ(TuvIBIWSetup::MetaObject(), nullptr);
  FailAllocation(1);
  EXPECT_STREQ(TuvIBIWSetup::ClassName(), "");
  FailAllocation(0);
  EXPECT_EQ(FindInterface("TuvIBIWSetup"), known) << "what is registered stays";
  TuvIBIWSetup::meta_object = known;
}

TEST_F(RegistrationTest, TheServicesHaveNoClassOfTheirOwn) {
  const auto services = Make<TuvBIWServices>();
  const auto intelligence = Make<TuvBIWActivityIntelligenceServices>();
  for (const ZefBaseUnknown_var& object :
       {ZefBaseUnknown_var(services), ZefBaseUnknown_var(intelligence)}) {
    EXPECT_EQ(object->GetMetaObject(), ZefBaseUnknown::MetaObject());
    EXPECT_STREQ(object->IsA(), "ZefBaseUnknown");
  }
}

TEST_F(RegistrationTest, PhysicalActivitiesAreExtendedOnceAndOnDemand) {
  Plant plant;
  auto& physical = plant.Operation("OP10");
  auto& logical = plant.Document()->AddActivity(
      plant.Root(), {.key = "L", .kind = embedded::ActivityData::Kind::Logical});
  EXPECT_FALSE(TuvIUpdateManufAssly_var(logical.Identity()));
  const TuvIUpdateManufAssly_var update = physical.Identity();
  ASSERT_TRUE(update);
  EXPECT_STREQ(update->IsA(), "TuvEUpdateManufAssly");
  EXPECT_EQ(update->IsAKindOf("TuvIUpdateManufAssly"), 1);
  EXPECT_EQ(update->IsAKindOf("PhysicalActivity"), 0);
  EXPECT_TRUE(update == ZefISPPActivity_var(update)) << "one identity";
  EXPECT_EQ(TuvIUpdateManufAssly_var(physical.Identity()).Get(), update.Get());
}

TEST_F(RegistrationTest, TheFactoryTiesTheExtensionToItsObjectUnlessMemoryIsExhausted) {
  Plant plant;
  ZefBaseUnknown* const object = plant.Operation("OP10").Identity();
  FailAllocation(1);
  EXPECT_EQ(CreateBOATuvIUpdateManufAsslyTuvEUpdateManufAssly(object, object), nullptr);
  FailAllocation(1);
  EXPECT_FALSE(TuvIUpdateManufAssly_var(object));
  FailAllocation(0);
  const auto extension = Adopt(CreateBOATuvIUpdateManufAsslyTuvEUpdateManufAssly(object, object));
  EXPECT_EQ(extension->GetImpl(0), object);
  EXPECT_STREQ(extension->IsA(), "TuvEUpdateManufAssly");
  const auto bare = Adopt(CreateBOATuvIUpdateManufAsslyTuvEUpdateManufAssly(nullptr, nullptr));
  EXPECT_EQ(bare->GetImpl(0), nullptr);
}

TEST_F(RegistrationTest, LabelsAndPreviewWindowsCannotBeCreatedByName) {
  EXPECT_EQ(TuvBIWCustomRep::CreateItself(), nullptr);
  EXPECT_EQ(TuvBIWPreviewWindow::CreateItself(), nullptr);
  const auto created = Adopt(TuvEUpdateManufAssly::CreateItself());
  EXPECT_STREQ(created->IsA(), "TuvEUpdateManufAssly");
}

TEST_F(RegistrationTest, TheLibraryHasOneTraceWhichIsOffUntilItIsSwitchedOn) {
  EXPECT_TRUE(IsTraceRegistered("TuvKelBIWUtilsTrace"));
  EXPECT_FALSE(IsTraceOn("TuvKelBIWUtilsTrace"));
  testing::internal::CaptureStderr();
  TuvBIWServices::GetCurrentDocument();
  SwitchTrace("TuvKelBIWUtilsTrace", true);
  TuvBIWServices::GetCurrentDocument();
  SwitchTrace("TuvKelBIWUtilsTrace", false);
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "TuvBIWServices::GetCurrentDocument --> IN\n"
            "TuvBIWServices::GetCurrentDocument <-- OUT\n");
}

}  // namespace
