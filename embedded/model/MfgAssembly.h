#pragma once

#include <string>
#include <vector>

#include "embedded/model/DisplayedObject.h"
#include "embedded/model/Owned.h"
#include "host/fastening/TuvIMfgAssembly.h"
#include "host/process/ZefISPPItem.h"
#include "host/product/ZefINavigateObject.h"
#include "host/product/ZefIProduct.h"

namespace embedded {

class ProductOutput;

// A manufacturing assembly; as a product, too: its part number and text are its name.
class MfgAssembly final
    : public DisplayedObject<TuvIMfgAssembly, ZefIProduct, ZefINavigateObject, ZefISPPItem> {
 public:
  // The key is unique in the document.
  MfgAssembly(const std::string& iKey, MembershipPointer iMembership);
  ZefMetaClass* GetMetaObject() const override;

  // E_FAIL for a name with "$", which separates names in messages.
  HRESULT SetName(const ZefUnicodeString& iName) override;
  ZefUnicodeString GetName() override;
  HRESULT GetChildren(ZefListValZefBaseUnknown_var*& oChildren) override;
  HRESULT AddChild(const ZefBaseUnknown_var& iChild) override;
  HRESULT RemoveChild(const ZefBaseUnknown_var& iChild) override;

  HRESULT GetReferenceProduct(ZefIProduct_var& oReference) override;
  int GetChildrenCount() override;
  ZefListValZefBaseUnknown_var* GetAllChildren(const char* iType) override;
  HRESULT GetProductText(ZefUnicodeString& oText) override;
  ZefUnicodeString GetPartNumber() override;
  ZefListValZefBaseUnknown_var* GetChildren() override;

  const std::string& OwnName() const { return name_; }
  const ZefListValZefBaseUnknown_var& OwnChildren() const { return children_; }
  // Adds a child without any test, to build what the assembly would refuse.
  void ForceChild(const ZefBaseUnknown_var& iChild) { children_.Append(iChild); }
  void DropChildren() { children_.RemoveAll(); }

  // The outputs whose product the assembly is; not counted.
  const std::vector<ProductOutput*>& ProducedBy() const { return producers_; }
  void AddProducer(ProductOutput* iOutput) { producers_.push_back(iOutput); }
  void DropProducer(ProductOutput* iOutput) { std::erase(producers_, iOutput); }
  // Those of activities whose document ended.
  void DropEndedProducers();

 private:
  bool Contains(const MfgAssembly& iSearched) const;

  std::string name_;
  ZefListValZefBaseUnknown_var children_;
  std::vector<ProductOutput*> producers_;
};

}  // namespace embedded
