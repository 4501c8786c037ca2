#include "embedded/model/Product.h"

#include <cmath>
#include <memory>
#include <unordered_set>
#include <utility>

#include "embedded/model/ObjectClass.h"
#include "embedded/model/ProductWalk.h"

namespace embedded {

Product::Product(const ProductData& iData, Product* iReference, MembershipPointer iMembership)
    : data_(iData), reference_(iReference) {
  if (data_.partNumber.empty()) data_.partNumber = data_.key;
  alias_ = data_.key;
  Join(std::move(iMembership));
}

ZefMetaClass* Product::GetMetaObject() const { return ObjectClass<Product>("Product"); }

const std::vector<Product*>& Product::Below() const {
  return reference_ ? reference_->children_ : children_;
}

bool Product::LeadsTo(const Product& iOther) const {
  std::vector<const Product*> open{this};
  std::unordered_set<const Product*> seen;
  while (!open.empty()) {
    const Product* const product = open.back();
    open.pop_back();
    if (product == &iOther) return true;
    if (!seen.insert(product).second) continue;
    if (product->reference_) open.push_back(product->reference_);
    open.insert(open.end(), product->children_.begin(), product->children_.end());
  }
  return false;
}

HRESULT Product::GetReferenceProduct(ZefIProduct_var& oReference) {
  if (FaultPoint::Strikes()) return E_FAIL;
  oReference = reference_ ? reference_->Identity() : Identity();
  return S_OK;
}

int Product::GetChildrenCount() {
  return FaultPoint::Strikes() ? 0 : static_cast<int>(Below().size());
}

ZefListValZefBaseUnknown_var* Product::GetAllChildren(const char* iType) {
  return FaultPoint::Strikes() ? nullptr : ListAllBelow(Identity(), iType);
}

HRESULT Product::GetProductText(ZefUnicodeString& oText) {
  if (FaultPoint::Strikes()) return E_FAIL;
  oText = data_.name;
  return S_OK;
}

ZefUnicodeString Product::GetPartNumber() {
  return FaultPoint::Strikes() ? ZefUnicodeString() : ZefUnicodeString(data_.partNumber);
}

ZefListValZefBaseUnknown_var* Product::GetChildren() {
  if (FaultPoint::Strikes()) return nullptr;
  return std::make_unique<ZefListValZefBaseUnknown_var>(ChildrenBelow(Identity())).release();
}

HRESULT Product::GetAbsPosition(ZefMathTransformation& oPosition) {
  if (FaultPoint::Strikes()) return E_FAIL;
  oPosition = TransformationOf(data_.position);
  return S_OK;
}

HRESULT Product::GetColor(int& oRed, int& oGreen, int& oBlue) {
  if (FaultPoint::Strikes()) return E_FAIL;
  oRed = data_.colour[0];
  oGreen = data_.colour[1];
  oBlue = data_.colour[2];
  return S_OK;
}

ZefMathTransformation TransformationOf(const double (&iPosition)[6]) {
  const auto turn = [&](int axis) { return iPosition[axis] * ZefDegreeToRadian; };
  const double ca = std::cos(turn(5)), sa = std::sin(turn(5));
  const double cb = std::cos(turn(4)), sb = std::sin(turn(4));
  const double cc = std::cos(turn(3)), sc = std::sin(turn(3));
  const ZefMath3x3Matrix aboutZ({ca, sa, 0}, {-sa, ca, 0}, {0, 0, 1});
  const ZefMath3x3Matrix aboutY({cb, 0, -sb}, {0, 1, 0}, {sb, 0, cb});
  const ZefMath3x3Matrix aboutX({1, 0, 0}, {0, cc, sc}, {0, -sc, cc});
  return {aboutZ * (aboutY * aboutX), ZefMathVector(iPosition[0], iPosition[1], iPosition[2])};
}

}  // namespace embedded
