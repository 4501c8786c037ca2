#include <array>
#include <gtest/gtest.h>

#include "host/component/FaultPoint.h"
#include "host/product/Product.h"
#include "tests/host/Step.h"
#include "tests/support/ReferenceAudit.h"

namespace {

using tests::MakeStep;
using tests::Step;
using tests::StepUpdates;

class QueryTest : public tests::ReferenceAudit {
 protected:
  void TearDown() override {
    step = nullptr;
    ReferenceAudit::TearDown();
  }
  // A pointer of exactly the interface, given back at once: objects of this test live on.
  static ZefBaseUnknown* Ask(ZefBaseUnknown* object, const _GUID& id) {
    void* answer = &answer;
    const HRESULT result = object->QueryInterface(id, &answer);
    EXPECT_EQ(Succeeded(result), answer != nullptr);
    auto* const found = static_cast<ZefBaseUnknown*>(answer);
    if (found) found->Release();
    return found;
  }

  tests::WithStepUpdates registration;
  ZefBaseUnknown_var step = MakeStep();
};

TEST_F(QueryTest, AnyInterfaceLeadsToAnyOtherAndToOneIdentity) {
  const std::array<const _GUID*, 6> ids = {&IID_ZefBaseUnknown,  &IID_IUnknown,
                                           &IID_ZefISPPActivity, &IID_ZefISPPAbstractActivity,
                                           &IID_ZefISPPItem,     &IID_TuvIRabBltMgr};
  for (const _GUID* const from : ids) {
    ZefBaseUnknown* const first = Ask(step.Get(), *from);
    ASSERT_NE(first, nullptr);
    for (const _GUID* const to : ids) EXPECT_EQ(Ask(first, *to), Ask(step.Get(), *to));
    EXPECT_EQ(Ask(first, IID_ZefIProduct), nullptr);
    EXPECT_EQ(first->QueryInterface(*from, nullptr), E_FAIL);
    EXPECT_EQ(first->GetImpl(0), step.Get());
    EXPECT_EQ(first->IsEqual(step.Get()), 1);
    EXPECT_EQ(first->AddRef(), 2u) << "one count";
    EXPECT_EQ(step->Release(), 1u);
    const char* const name = FindInterface(*from) ? FindInterface(*from)->GetClassName() : nullptr;
    EXPECT_EQ(Adopt(step->QueryInterface(name)).Get(), name ? first : nullptr);
  }
  EXPECT_EQ(step->QueryInterface("ZefIProduct"), nullptr);
}

TEST_F(QueryTest, ALateClassIsTheObjectsWhicheverInterfaceIsAsked) {
  const ZefISPPItem_var item = step;
  EXPECT_STREQ(item->IsA(), "Step");
  const struct {
    const char* name;
    int expected;
  } cases[] = {{"Step", 1}, {"ZefBaseUnknown", 1}, {"step", 0}, {"ZefISPPItem", 0}, {nullptr, 0}};
  for (const auto& [name, expected] : cases) EXPECT_EQ(item->IsAKindOf(name), expected);
  const TuvIRabBltMgr_var updates = step;
  EXPECT_STREQ(updates->IsA(), "StepUpdates");
  EXPECT_EQ(updates->IsAKindOf("TuvIRabBltMgr"), 1);
}

TEST_F(QueryTest, AWithheldInterfaceIsNotAnsweredByAnyWay) {
  const ZefISPPItem_var item = step;
  EXPECT_TRUE(AnswerInterface(item, IID_ZefISPPAbstractActivity, false));
  EXPECT_FALSE(ZefISPPAbstractActivity_var(item));
  EXPECT_EQ(step->QueryInterface("ZefISPPAbstractActivity"), nullptr);
  EXPECT_TRUE(ZefISPPActivity_var(item)) << "the interface that extends it";
  EXPECT_TRUE(AnswerInterface(item, IID_ZefISPPAbstractActivity, true));
  EXPECT_TRUE(ZefISPPAbstractActivity_var(item));
  EXPECT_FALSE(AnswerInterface(item, IID_ZefBaseUnknown, false));
  EXPECT_FALSE(AnswerInterface(item, IID_ZefIProduct, false));
  EXPECT_FALSE(AnswerInterface(nullptr, IID_ZefISPPItem, false));
}

TEST_F(QueryTest, AnExtensionIsMadeOnceAndLivesWithItsObject) {
  const long before = CountLiveObjects();
  TuvIRabBltMgr_var updates = ZefISPPItem_var(step);
  ASSERT_TRUE(updates);
  EXPECT_EQ(updates->ProcessPendingUpdates(), 1);
  updates = nullptr;
  EXPECT_EQ(CountLiveObjects(), before + 1);
  updates = step;
  EXPECT_EQ(updates->ProcessPendingUpdates(), 2) << "the same object again";
  EXPECT_FALSE(TuvIRabBltMgr_var(Make<ZefNotification>())) << "objects of another late type";
  step = nullptr;
  EXPECT_EQ(CountLiveObjects(), before + 1) << "the extension keeps its object alive";
  EXPECT_EQ(ZefISPPActivity_var(updates)->GetLabel(), "step");
  updates = nullptr;
  EXPECT_EQ(CountLiveObjects(), before - 1);
}

TEST_F(QueryTest, ABareExtensionHasNoImplementation) {
  const Handle<StepUpdates> bare = Make<StepUpdates>();
  EXPECT_EQ(bare->GetImpl(0), nullptr);
  bare->SetImpl(step.Get());
  EXPECT_EQ(bare->GetImpl(0), step.Get());
  bare->SetImpl(nullptr);
  EXPECT_EQ(bare->GetImpl(0), nullptr);
}

TEST_F(QueryTest, MemoryThatRunsOutGivesNull) {
  FailAllocation(1);
  EXPECT_FALSE(TuvIRabBltMgr_var(step));
  EXPECT_TRUE(TuvIRabBltMgr_var(step)) << "the next attempt";
  FailAllocation(2);
  EXPECT_TRUE(MakeStep());
  EXPECT_EQ(new Step, nullptr);
  EXPECT_TRUE(Make<ZefNotification>());
  FailAllocation(1);
  EXPECT_EQ(new ZefMetaClass(nullptr, "None", nullptr, nullptr, Implementation), nullptr);
  FailAllocation(1);
  FailAllocation(0);
  EXPECT_TRUE(MakeStep());
}

TEST_F(QueryTest, AFaultPointStrikesOnceOrFromThereOn) {
  const auto answers = [&](bool allAfter) {
    FaultPoint::Arm(2, allAfter);
    std::string text;
    for (int i = 0; i < 4; ++i) text += ZefISPPItem_var(step) ? 'y' : 'n';
    FaultPoint::Disarm();
    return text + std::to_string(FaultPoint::Struck());
  };
  EXPECT_EQ(answers(false), "ynyy1");
  EXPECT_EQ(answers(true), "ynnn3");
  EXPECT_TRUE(ZefISPPItem_var(step)) << "disarmed";
}

TEST_F(QueryTest, TheDictionaryTakesARegistrationAnyNumberOfTimes) {
  static constexpr _GUID id = NameIdentifier("TestInterface");
  std::string name = "TestInterface";
  static ZefMetaClass meta(&id, name.c_str(), ZefBaseUnknown::MetaObject(), nullptr, TypeInterface);
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(AddDictionary(&id, &CLSID_ZefMetaClass, name.c_str(), "MetaObject", nullptr, &meta,
                            nullptr, nullptr, 1, 0, 2, nullptr),
              S_OK);
    const ZefFillDictionary again(id, CLSID_ZefMetaClass, &meta, nullptr);
    const ZefFillDictionary tolerated(id, CLSID_ZefMetaClass, nullptr, nullptr);
  }
  name = "overwritten";
  EXPECT_STREQ(FindInterface("TestInterface")->GetClassName(), "TestInterface");
  EXPECT_EQ(FindInterface(id), &meta);
  EXPECT_EQ(FindInterface("nothing"), nullptr);
  EXPECT_EQ(AddDictionary(nullptr, nullptr, "None", "", nullptr, &meta, nullptr, nullptr, 1, 0, 2,
                          nullptr),
            E_FAIL);
}

TEST_F(QueryTest, AClassRegisteredAgainHasItsRecordRefreshed) {
  std::string text = "PhysicalActivity";
  ZefMetaClass* const meta = fct_RetrieveMetaObject("TestClass", TypeExtension, Step::MetaObject(),
                                                    text.c_str(), text.c_str(), 8);
  text = "overwritten";
  EXPECT_EQ(meta->GetExtendedType(), "PhysicalActivity");
  EXPECT_STREQ(meta->GetFWname(), "PhysicalActivity");
  EXPECT_EQ(fct_RetrieveMetaObject("TestClass", Implementation, ZefBaseUnknown::MetaObject(),
                                   "Zefnull", "F", 16),
            meta);
  EXPECT_EQ(meta->GetKind(), Implementation);
  EXPECT_EQ(meta->GetBase(), ZefBaseUnknown::MetaObject());
  EXPECT_EQ(meta->GetInstanceSize(), 16);
  EXPECT_EQ(meta->GetClassId(), NameIdentifier("TestClass"));
  EXPECT_EQ(fct_RetrieveMetaObject(nullptr, Implementation, nullptr, "", "", 0), nullptr);
  // Neither spelling names a late type.
  const _GUID& id = TuvIRabBltMgr::InterfaceId();
  for (const char* const none : {"Zefnull", "ZefNull"}) {
    ZefMetaClass* const extension = fct_RetrieveMetaObject(
        "TestExtension", TypeExtension, TuvIRabBltMgr::MetaObject(), none, "F", 8);
    const ZefFillDictionary ignored(extension, TuvIRabBltMgr::MetaObject(), &StepUpdates::Create,
                                    nullptr, 1);
    EXPECT_EQ(extension->GetExtendedType(), none);
    EXPECT_EQ(
        FindExtensionFactory(fct_RetrieveMetaObject(none, Implementation, nullptr, "", "", 0), id),
        nullptr);
  }
}

}  // namespace
