#pragma once

#include "host/component/ComponentObject.h"
#include "host/process/ZefISPPProductIO.h"

namespace embedded {

class Activity;

// A product output of an activity. It holds its product, also after it was removed.
class ProductOutput final : public ComponentObject<ZefISPPProductIO> {
 public:
  // The activity is not counted.
  explicit ProductOutput(Activity* iActivity) : activity_(iActivity) {}
  ~ProductOutput() override;
  ZefMetaClass* GetMetaObject() const override;
  HRESULT GetProduct(ZefBaseUnknown*& oProduct) override;
  HRESULT SetProduct(const ZefISPPItem_var& iItem) override;

  // Null once the output was removed.
  Activity* OwnActivity() const { return activity_; }
  const ZefBaseUnknown_var& OwnProduct() const { return product_; }
  // Gives the output its product and notifies it.
  void Produce(const ZefBaseUnknown_var& iProduct);
  // The same without notification: loading a file is no gesture.
  void Hold(const ZefBaseUnknown_var& iProduct);
  void Leave();

 private:
  Activity* activity_;
  ZefBaseUnknown_var product_;
};

}  // namespace embedded
