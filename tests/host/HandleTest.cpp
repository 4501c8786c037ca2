#include <gtest/gtest.h>

#include "host/component/Component.h"
#include "host/process/Process.h"

namespace {

class Step : public ComponentObject<ZefISPPActivity, ZefISPPItem> {
 public:
  static ZefMetaClass* MetaObject() {
    static ZefMetaClass* const meta = fct_RetrieveMetaObject(
        "Step", Implementation, ZefBaseUnknown::MetaObject(), nullptr, nullptr, sizeof(Step));
    return meta;
  }
  ZefMetaClass* GetMetaObject() const override { return MetaObject(); }
  HRESULT GetParentActivity(ZefISPPAbstractActivity_var& oParent) override {
    oParent = nullptr;
    return S_OK;
  }
  ZefUnicodeString GetLabel() override { return "step"; }
};

TEST(HandleTest, OneIdentityAndOneCountForAllInterfaces) {
  auto* const step = new Step;
  ZefISPPItem_var item = step->Identity();
  ASSERT_TRUE(item);
  ZefISPPActivity_var activity = item;
  ZefISPPAbstractActivity_var base = item;
  EXPECT_EQ(activity, item);
  EXPECT_EQ(step->Identity()->ReferenceCount(), 4u);
  EXPECT_STREQ(item->IsA(), "Step");
  step->Release();
  EXPECT_TRUE(AnswerInterface(item, IID_ZefISPPAbstractActivity, false));
  EXPECT_FALSE(ZefISPPAbstractActivity_var(item));
  EXPECT_TRUE(ZefISPPActivity_var(item));
}

}  // namespace
