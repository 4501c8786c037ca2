#pragma once

#include "host/component/Component.h"
#include "host/component/DescribeClass.h"
#include "host/fastening/TuvIRabBltMgr.h"
#include "host/process/Process.h"

namespace tests {

// An object with three interfaces of its own, one of them below another.
class Step : public ComponentObject<ZefISPPActivity, ZefISPPItem> {
 public:
  static const char* ClassName() { return "Step"; }
  static ZefMetaClass* MetaObject() {
    static ZefMetaClass* const meta = DescribeClass<Step>(ZefBaseUnknown::MetaObject());
    return meta;
  }
  ZefMetaClass* GetMetaObject() const override { return MetaObject(); }

  explicit Step(Step* iNext = nullptr) : next(iNext ? iNext->Identity() : nullptr) {}
  HRESULT GetParentActivity(ZefISPPAbstractActivity_var& oParent) override {
    oParent = nullptr;
    return S_OK;
  }
  ZefUnicodeString GetLabel() override { return "step"; }
  // No reference taken.
  ZefISPPActivity* Next() { return next.Get(); }

  ZefISPPActivity_var next;
};

// What every step answers besides, through an extension.
class StepUpdates : public TuvIRabBltMgr {
 public:
  static ZefMetaClass* MetaObject() {
    return fct_RetrieveMetaObject("StepUpdates", TypeExtension, TuvIRabBltMgr::MetaObject(), "Step",
                                  "Tests", sizeof(StepUpdates));
  }
  ZefMetaClass* GetMetaObject() const override { return MetaObject(); }
  HRESULT ProcessPendingUpdates() override { return ++processed; }

  static ZefBaseUnknown* Create(ZefBaseUnknown* extended, ZefBaseUnknown* outer) {
    return ToCreateBOA(extended, outer, MetaObject(), TuvIRabBltMgr::InterfaceId(),
                       []() -> ZefBaseUnknown* { return new StepUpdates; });
  }

  int processed = 0;
};

// The registration of the extension; it ends with its scope.
class WithStepUpdates {
 public:
  WithStepUpdates() {
    const ZefFillDictionary registered(StepUpdates::MetaObject(), TuvIRabBltMgr::MetaObject(),
                                       &StepUpdates::Create, nullptr, 1);
  }
  ~WithStepUpdates() {
    const auto code = reinterpret_cast<const char*>(&StepUpdates::Create);
    PurgeFactories(code, code + 1);
  }
  WithStepUpdates(const WithStepUpdates&) = delete;
  WithStepUpdates& operator=(const WithStepUpdates&) = delete;
};

inline ZefBaseUnknown_var MakeStep() { return Adopt((new Step)->Identity()); }

}  // namespace tests
