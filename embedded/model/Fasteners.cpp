#include "embedded/model/Fasteners.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

#include "embedded/model/Document.h"
#include "embedded/model/ObjectClass.h"
#include "embedded/model/Product.h"
#include "embedded/processdb/ProcessDatabase.h"

namespace embedded {

void FastenerFacet::Describe(const FastenerData& iData) {
  data_ = iData;
  for (Product* const part : data_.parts) parts_.Append(part->Identity());
  ShowStatus();
}

HRESULT FastenerFacet::GetRepresentedObject(ZefBaseUnknown*& oObject) {
  if (FaultPoint::Strikes()) return E_FAIL;
  oObject = nullptr;
  if (represented_) oObject = parts_.Size() > 0 ? parts_[1].Get() : OwnIdentity();
  return S_OK;
}

HRESULT FastenerFacet::SetDisplayStatus(int iStatus, int) {
  if (FaultPoint::Strikes()) return E_FAIL;
  status_ = iStatus;
  ShowStatus();
  return S_OK;
}

void FastenerFacet::ShowStatus() {
  if (status_ == kAssignedStatus) {
    OwnLook().SetColour(0, 158, 115);
  } else {
    OwnLook().SetColour(213, 94, 0);
  }
}

HRESULT FastenerFacet::GetJointedParts(ZefListValZefBaseUnknown_var& oParts) {
  if (FaultPoint::Strikes()) return E_FAIL;
  oParts.Append(parts_);
  return S_OK;
}

HRESULT FastenerFacet::GetFastenerType(ZefUnicodeString& oType) {
  if (FaultPoint::Strikes()) return E_FAIL;
  oType = data_.type;
  return S_OK;
}

SpotWeld::SpotWeld(const SpotWeldData& iData, MembershipPointer iMembership)
    : position_(iData.position), diameter_(iData.diameter) {
  alias_ = iData.key;
  Describe(iData);
  Join(std::move(iMembership));
}

ZefMetaClass* SpotWeld::GetMetaObject() const { return ObjectClass<SpotWeld>("SpotWeld"); }

double* SpotWeld::GetPositionAndOrientation() {
  if (FaultPoint::Strikes()) return nullptr;
  auto* const position = new double[6];
  std::copy(position_.begin(), position_.end(), position);
  return position;
}

HRESULT SpotWeld::IsAssignedInPask() {
  if (FaultPoint::Strikes()) return E_FAIL;
  ProcessDatabase* const database = OwnDocument() ? OwnDocument()->Database() : nullptr;
  return database ? database->IsAssigned(Key()) : E_FAIL;
}

HRESULT SpotWeld::GetCarrier(ZefBaseUnknown*& oCarrier) {
  if (FaultPoint::Strikes()) return E_FAIL;
  oCarrier = OwnParts().Size() > 0 ? OwnParts()[1].Get() : nullptr;
  return S_OK;
}

CurveFastener::CurveFastener(const CurveFastenerData& iData, MembershipPointer iMembership)
    : points_(iData.points) {
  alias_ = iData.key;
  Describe(iData);
  Join(std::move(iMembership));
}

ZefMetaClass* CurveFastener::GetMetaObject() const {
  return ObjectClass<CurveFastener>("CurveFastener");
}

HRESULT CurveFastener::GetPoint(int iIndex, double* oXYZ) {
  if (iIndex < 1 || iIndex > static_cast<int>(points_.size()) || !oXYZ) return E_FAIL;
  if (FaultPoint::Strikes()) return E_FAIL;
  const auto& point = points_[static_cast<std::size_t>(iIndex - 1)];
  std::copy(point.begin(), point.end(), oXYZ);
  return S_OK;
}

double CurveFastener::Length() const {
  double length = 0;
  for (std::size_t i = 1; i < points_.size(); ++i) {
    length += std::hypot(points_[i][0] - points_[i - 1][0], points_[i][1] - points_[i - 1][1],
                         points_[i][2] - points_[i - 1][2]);
  }
  return length;
}

PointFeature::PointFeature(const PointFeatureData& iData, MembershipPointer iMembership)
    : data_(iData) {
  alias_ = iData.key;
  Join(std::move(iMembership));
  AnswerInterface(IID_TuvIBIWLocatingPoint, !iData.isClamp);
  AnswerInterface(IID_TuvIBIWClampingPoint, iData.isClamp);
}

ZefMetaClass* PointFeature::GetMetaObject() const {
  return ObjectClass<PointFeature>("PointFeature");
}

}  // namespace embedded
