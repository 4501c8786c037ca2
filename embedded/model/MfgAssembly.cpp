#include "embedded/model/MfgAssembly.h"

#include <memory>
#include <unordered_set>
#include <utility>

#include "embedded/model/Activity.h"
#include "embedded/model/ObjectClass.h"
#include "embedded/model/ProductOutput.h"
#include "embedded/model/ProductWalk.h"

namespace embedded {

MfgAssembly::MfgAssembly(const std::string& iKey, MembershipPointer iMembership) {
  alias_ = iKey;
  Join(std::move(iMembership));
}

ZefMetaClass* MfgAssembly::GetMetaObject() const { return ObjectClass<MfgAssembly>("MfgAssembly"); }

HRESULT MfgAssembly::SetName(const ZefUnicodeString& iName) {
  if (iName.SearchSubString("$") >= 0 || FaultPoint::Strikes()) return E_FAIL;
  name_ = iName.Bytes();
  return S_OK;
}

ZefUnicodeString MfgAssembly::GetName() {
  return FaultPoint::Strikes() ? ZefUnicodeString() : ZefUnicodeString(name_);
}

HRESULT MfgAssembly::GetChildren(ZefListValZefBaseUnknown_var*& oChildren) {
  if (FaultPoint::Strikes()) return E_FAIL;
  oChildren = std::make_unique<ZefListValZefBaseUnknown_var>(children_).release();
  return S_OK;
}

HRESULT MfgAssembly::AddChild(const ZefBaseUnknown_var& iChild) {
  if (!iChild || FaultPoint::Strikes()) return E_FAIL;
  if (children_.Locate(iChild) != 0) return S_OK;
  const auto* const assembly = ObjectAs<MfgAssembly>(iChild.Get());
  if (assembly && assembly->Contains(*this)) return E_FAIL;
  children_.Append(iChild);
  return S_OK;
}

HRESULT MfgAssembly::RemoveChild(const ZefBaseUnknown_var& iChild) {
  if (children_.Locate(iChild) == 0 || FaultPoint::Strikes()) return E_FAIL;
  children_.RemoveValue(iChild);
  return S_OK;
}

bool MfgAssembly::Contains(const MfgAssembly& iSearched) const {
  std::vector<const MfgAssembly*> open{this};
  std::unordered_set<const MfgAssembly*> seen;
  while (!open.empty()) {
    const MfgAssembly* const assembly = open.back();
    open.pop_back();
    if (assembly == &iSearched) return true;
    if (!seen.insert(assembly).second) continue;
    for (int i = 1; i <= assembly->children_.Size(); ++i) {
      const auto* const child = ObjectAs<MfgAssembly>(assembly->children_[i].Get());
      if (child) open.push_back(child);
    }
  }
  return false;
}

void MfgAssembly::DropEndedProducers() {
  std::erase_if(producers_,
                [](const ProductOutput* output) { return !output->OwnActivity()->OwnDocument(); });
}

HRESULT MfgAssembly::GetReferenceProduct(ZefIProduct_var& oReference) {
  if (FaultPoint::Strikes()) return E_FAIL;
  oReference = Identity();
  return S_OK;
}

int MfgAssembly::GetChildrenCount() { return FaultPoint::Strikes() ? 0 : children_.Size(); }

ZefListValZefBaseUnknown_var* MfgAssembly::GetAllChildren(const char* iType) {
  return FaultPoint::Strikes() ? nullptr : ListAllBelow(Identity(), iType);
}

HRESULT MfgAssembly::GetProductText(ZefUnicodeString& oText) {
  if (FaultPoint::Strikes()) return E_FAIL;
  oText = name_;
  return S_OK;
}

ZefUnicodeString MfgAssembly::GetPartNumber() { return GetName(); }

ZefListValZefBaseUnknown_var* MfgAssembly::GetChildren() {
  if (FaultPoint::Strikes()) return nullptr;
  return std::make_unique<ZefListValZefBaseUnknown_var>(children_).release();
}

}  // namespace embedded
