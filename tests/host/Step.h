#pragma once

#include "host/component/Component.h"
#include "host/component/DescribeClass.h"
#include "host/fastening/TuvIRabBltMgr.h"
#include "host/process/Process.h"
#include "tests/support/ReferenceAudit.h"

namespace tests {

// An object with three interfaces of its own, one of them below another.
class Step : public ComponentObject<ZefISPPActivity, ZefISPPItem> {
 public:
  static const char* ClassName() { return "Step"; }
  ZefMetaClass* GetMetaObject() const override {
    return DescribeClass<Step>(ZefBaseUnknown::MetaObject());
  }
  HRESULT GetParentActivity(ZefISPPAbstractActivity_var&) override { return E_FAIL; }
  ZefUnicodeString GetLabel() override { return "step"; }

  ZefISPPActivity_var next;
};

inline ZefBaseUnknown_var MakeStep() { return Adopt((new Step)->Identity()); }

// What every step answers besides, through an extension, while the registration lives.
class StepUpdates : public TuvIRabBltMgr {
 public:
  static ZefMetaClass* MetaObject() {
    return fct_RetrieveMetaObject("StepUpdates", TypeExtension, TuvIRabBltMgr::MetaObject(), "Step",
                                  "Tests", sizeof(StepUpdates));
  }
  ZefMetaClass* GetMetaObject() const override { return MetaObject(); }
  HRESULT ProcessPendingUpdates() override { return ++processed_; }

  static ZefBaseUnknown* Create(ZefBaseUnknown* extended, ZefBaseUnknown* outer) {
    return ToCreateBOA(extended, outer, MetaObject(), TuvIRabBltMgr::InterfaceId(),
                       []() -> ZefBaseUnknown* { return new StepUpdates; });
  }
  struct Registration {
    Registration() {
      ZefFillDictionary(StepUpdates::MetaObject(), TuvIRabBltMgr::MetaObject(), &Create, nullptr,
                        1);
    }
    ~Registration() {
      const auto code = reinterpret_cast<const char*>(&Create);
      EXPECT_EQ(PurgeFactories(code, code + 1), 1);
    }
  };

 private:
  int processed_ = 0;
};

}  // namespace tests
