#pragma once

#include <array>
#include <string>
#include <vector>

#include "embedded/model/DisplayedObject.h"
#include "embedded/model/Owned.h"
#include "host/fastening/Fastening.h"
#include "host/process/ZefISPPItem.h"

namespace embedded {

class Product;

// Display statuses of fasteners and the colours that they are drawn in.
constexpr int kUnassignedStatus = 1;
constexpr int kAssignedStatus = 4;

// What every fastener is made from.
struct FastenerData {
  std::string key{};                        // unique among the document's features
  std::string type{};                       // such as "spot", "seam", "endo"
  std::vector<Product*> parts{};            // the parts that it joins; not counted
  std::vector<std::string> missingParts{};  // names of parts that no product has
};

struct SpotWeldData : FastenerData {
  std::array<double, 6> position{};  // mm, then degrees about X, Y and Z
  double diameter = 6.0;             // mm
};

struct CurveFastenerData : FastenerData {
  std::vector<std::array<double, 3>> points{};  // mm
};

// What spot welds and curve fasteners have in common.
class FastenerFacet : public TuvIBIWFastener {
 public:
  HRESULT GetRepresentedObject(ZefBaseUnknown*& oObject) override;
  HRESULT SetDisplayStatus(int iStatus, int iFlag) override;
  HRESULT GetJointedParts(ZefListValZefBaseUnknown_var& oParts) override;
  HRESULT GetFastenerType(ZefUnicodeString& oType) override;

  int DisplayStatus() const { return status_; }
  // A fastener that is not represented in the product is assigned, but not shown.
  void SetRepresented(bool iRepresented) { represented_ = iRepresented; }
  bool IsRepresented() const { return represented_; }
  const ZefListValZefBaseUnknown_var& OwnParts() const { return parts_; }
  const FastenerData& Fastening() const { return data_; }

 protected:
  void Describe(const FastenerData& iData);
  virtual ZefBaseUnknown* OwnIdentity() = 0;
  virtual Look& OwnLook() = 0;

 private:
  // Draws the fastener in the colour of its status.
  void ShowStatus();

  FastenerData data_;
  ZefListValZefBaseUnknown_var parts_;
  int status_ = kUnassignedStatus;
  bool represented_ = true;
};

class SpotWeld final : public DisplayedObject<ZefISPPItem, FastenerFacet, TuvIBIWPointFastener,
                                              TuvIBIWFeature, TuvISpotWeld> {
 public:
  SpotWeld(const SpotWeldData& iData, MembershipPointer iMembership);
  ZefMetaClass* GetMetaObject() const override;
  double* GetPositionAndOrientation() override;
  HRESULT IsAssignedInPask() override;
  double GetX() override { return position_[0]; }
  double GetY() override { return position_[1]; }
  double GetZ() override { return position_[2]; }
  HRESULT GetCarrier(ZefBaseUnknown*& oCarrier) override;

  const std::array<double, 6>& Position() const { return position_; }
  double Diameter() const { return diameter_; }

 private:
  ZefBaseUnknown* OwnIdentity() override { return Identity(); }
  Look& OwnLook() override { return Display(); }

  std::array<double, 6> position_;
  double diameter_;
};

class CurveFastener final
    : public DisplayedObject<ZefISPPItem, FastenerFacet, TuvIBIWCurveFastener, TuvIBIWFeature> {
 public:
  CurveFastener(const CurveFastenerData& iData, MembershipPointer iMembership);
  ZefMetaClass* GetMetaObject() const override;
  HRESULT GetPoint(int iIndex, double* oXYZ) override;

  const std::vector<std::array<double, 3>>& Points() const { return points_; }
  // Along the points, mm.
  double Length() const;

 private:
  ZefBaseUnknown* OwnIdentity() override { return Identity(); }
  Look& OwnLook() override { return Display(); }

  std::vector<std::array<double, 3>> points_;
};

// What a locating or clamping point is made from.
struct PointFeatureData {
  std::string key{};
  std::array<double, 3> position{};  // mm
  bool isClamp = false;
};

class PointFeature final : public DisplayedObject<TuvIBIWLocatingPoint, TuvIBIWClampingPoint,
                                                  TuvIBIWFeature, ZefISPPItem> {
 public:
  PointFeature(const PointFeatureData& iData, MembershipPointer iMembership);
  ZefMetaClass* GetMetaObject() const override;
  const PointFeatureData& Data() const { return data_; }

 private:
  PointFeatureData data_;
};

}  // namespace embedded
