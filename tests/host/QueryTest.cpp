#include "host/component/FaultPoint.h"
#include "host/product/Product.h"
#include "tests/host/Step.h"

namespace {

using tests::MakeStep;
using tests::StepUpdates;

class QueryTest : public tests::ReferenceAudit {
 protected:
  void TearDown() override {
    step = nullptr;
    ReferenceAudit::TearDown();
  }
  // The pointer that is answered, its reference given back at once.
  static ZefBaseUnknown* Ask(ZefBaseUnknown* object, const _GUID& id) {
    void* answer = &answer;
    const HRESULT result = object->QueryInterface(id, &answer);
    EXPECT_EQ(Succeeded(result), answer != nullptr);
    return Adopt(static_cast<ZefBaseUnknown*>(answer)).Get();
  }

  const StepUpdates::Registration registration;
  ZefBaseUnknown_var step = MakeStep();
};

TEST_F(QueryTest, AnyInterfaceLeadsToAnyOtherToOneIdentityAndToOneCount) {
  const _GUID* const ids[] = {&IID_ZefBaseUnknown,          &IID_IUnknown,    &IID_ZefISPPActivity,
                              &IID_ZefISPPAbstractActivity, &IID_ZefISPPItem, &IID_TuvIRabBltMgr};
  for (const _GUID* const from : ids) {
    ZefBaseUnknown* const first = Ask(step.Get(), *from);
    ASSERT_NE(first, nullptr);
    for (const _GUID* const to : ids) EXPECT_EQ(Ask(first, *to), Ask(step.Get(), *to));
    EXPECT_EQ(Ask(first, IID_ZefIProduct), nullptr);
    EXPECT_EQ(first->QueryInterface(*from, nullptr), E_FAIL);
    EXPECT_TRUE(first->GetImpl(0) == step.Get() && first->IsEqual(step.Get()));
    EXPECT_EQ(first->AddRef(), 2u);
    EXPECT_EQ(step->Release(), 1u);
    const ZefMetaClass* const known = FindInterface(*from);
    const char* const name = known ? known->GetClassName() : nullptr;
    EXPECT_EQ(Adopt(step->QueryInterface(name)).Get(), known ? first : nullptr);
  }
  EXPECT_EQ(step->QueryInterface("ZefIProduct"), nullptr);
  EXPECT_STREQ(ZefISPPItem_var(step)->IsA(), "Step");
  EXPECT_EQ(step->IsAKindOf("ZefBaseUnknown") + step->IsAKindOf("Step"), 2);
  EXPECT_EQ(step->IsAKindOf("step") + step->IsAKindOf("ZefISPPItem") + step->IsAKindOf(nullptr), 0);
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
}

TEST_F(QueryTest, AnExtensionIsMadeOnceAndLivesWithItsObject) {
  const long before = CountLiveObjects();
  EXPECT_EQ(TuvIRabBltMgr_var(step)->ProcessPendingUpdates(), 1);
  TuvIRabBltMgr_var updates = ZefISPPItem_var(step);
  EXPECT_EQ(updates->ProcessPendingUpdates(), 2) << "the same object again";
  EXPECT_FALSE(TuvIRabBltMgr_var(Make<ZefNotification>())) << "objects of another late type";
  EXPECT_EQ(Ask(updates, IID_ZefBaseUnknown), step.Get());
  EXPECT_EQ(Adopt(updates->QueryInterface("ZefBaseUnknown")).Get(), step.Get());
  step = nullptr;
  EXPECT_EQ(CountLiveObjects(), before + 1) << "the extension keeps its object alive";
  EXPECT_EQ(ZefISPPActivity_var(updates)->GetLabel(), "step");
  updates = nullptr;
  EXPECT_EQ(CountLiveObjects(), before - 1);
  EXPECT_EQ(Make<StepUpdates>()->GetImpl(0), nullptr) << "a bare one extends nothing";
}

TEST_F(QueryTest, MemoryThatRunsOutGivesNull) {
  FailAllocation(1);
  EXPECT_FALSE(TuvIRabBltMgr_var(step));
  EXPECT_TRUE(TuvIRabBltMgr_var(step)) << "the next attempt";
  FailAllocation(2);
  EXPECT_TRUE(MakeStep());
  EXPECT_FALSE(Make<ZefNotification>());
  FailAllocation(1);
  EXPECT_EQ(new ZefMetaClass(nullptr, "None", nullptr, nullptr, Implementation), nullptr);
}

TEST_F(QueryTest, AFaultPointStrikesOnceOrFromThereOn) {
  for (const bool allAfter : {false, true}) {
    FaultPoint::Arm(2, allAfter);
    std::string answers;
    for (int i = 0; i < 4; ++i) answers += ZefISPPItem_var(step) ? 'y' : 'n';
    FaultPoint::Disarm();
    EXPECT_EQ(answers, allAfter ? "ynnn" : "ynyy");
    EXPECT_EQ(FaultPoint::Struck(), allAfter ? 3 : 1);
  }
  EXPECT_TRUE(ZefISPPItem_var(step));
}

TEST_F(QueryTest, TheDictionaryTakesARegistrationAnyNumberOfTimesAndCopiesItsTexts) {
  static constexpr _GUID id = NameIdentifier("TestInterface");
  static ZefMetaClass meta(&id, "TestInterface", nullptr, nullptr, TypeInterface);
  std::string name = "TestInterface";
  for (int i = 0; i < 2; ++i) {
    AddDictionary(&id, &CLSID_ZefMetaClass, name.c_str(), "MetaObject", nullptr, &meta, nullptr,
                  nullptr, 1, 0, 2, nullptr);
    ZefFillDictionary(id, CLSID_ZefMetaClass, &meta, nullptr);
    ZefFillDictionary(id, CLSID_ZefMetaClass, nullptr, nullptr);
  }
  name = "overwritten";
  EXPECT_EQ(FindInterface("TestInterface"), &meta);
  EXPECT_EQ(FindInterface(id), &meta);

  std::string text = "PhysicalActivity";
  ZefMetaClass* const known = fct_RetrieveMetaObject(
      "TestClass", TypeExtension, TuvIRabBltMgr::MetaObject(), text.c_str(), text.c_str(), 8);
  text = "overwritten";
  EXPECT_EQ(known->GetExtendedType() + known->GetFWname(), "PhysicalActivityPhysicalActivity");
  // Neither spelling names a late type.
  for (const char* const none : {"Zefnull", "ZefNull"}) {
    ZefMetaClass* const again = fct_RetrieveMetaObject("TestClass", TypeExtension,
                                                       TuvIRabBltMgr::MetaObject(), none, "F", 16);
    EXPECT_EQ(again, known) << "refreshed";
    EXPECT_EQ(again->GetExtendedType(), none);
    EXPECT_EQ(again->GetInstanceSize(), 16);
    ZefFillDictionary(again, TuvIRabBltMgr::MetaObject(), &StepUpdates::Create, nullptr, 1);
    const ZefMetaClass type(nullptr, none, nullptr, nullptr, Implementation);
    EXPECT_EQ(FindExtensionFactory(&type, TuvIRabBltMgr::InterfaceId()), nullptr);
  }
}

}  // namespace
