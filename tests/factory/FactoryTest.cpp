#include <gtest/gtest.h>

#include "frame/Registration.h"
#include "host/component/ZefNotification.h"
#include "manufassly/TuvEUpdateManufAssly.h"

namespace {

struct Call {
  ZefBaseUnknown* extended = nullptr;
  ZefBaseUnknown* outer = nullptr;
  ZefMetaClass* meta = nullptr;
  _GUID interface {};
  ZefBaseUnknown* (*create)() = nullptr;
};

Call call;
ZefBaseUnknown* answer = nullptr;

}  // namespace

// This program stands in front of the platform, so the library's factory calls this one.
ZefBaseUnknown* ToCreateBOA(ZefBaseUnknown* iExtended, ZefBaseUnknown* iOuter, ZefMetaClass* iMeta,
                            const _GUID& iIID, ZefBaseUnknown* (*iCreate)()) {
  call = {iExtended, iOuter, iMeta, iIID, iCreate};
  return answer;
}

namespace {

TEST(FactoryTest, HandsBothObjectsOnUnchangedAndAnswersWhatThePlatformAnswers) {
  const auto extended = Make<ZefNotification>(), outer = Make<ZefNotification>();
  for (ZefBaseUnknown* const result :
       {static_cast<ZefBaseUnknown*>(extended.Get()), static_cast<ZefBaseUnknown*>(nullptr)}) {
    answer = result;
    EXPECT_EQ(CreateBOATuvIUpdateManufAsslyTuvEUpdateManufAssly(extended, outer), result);
    EXPECT_EQ(call.extended, extended.Get());
    EXPECT_EQ(call.outer, outer.Get());
    EXPECT_EQ(call.meta, TuvEUpdateManufAssly::MetaObject());
    EXPECT_EQ(call.interface, IID_TuvIUpdateManufAssly);
    EXPECT_EQ(call.create, &TuvEUpdateManufAssly::CreateItself);
  }
}

}  // namespace
