#include "visu/TuvBIWCustomRep.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <memory>

#include "frame/ClassRecord.h"
#include "frame/Trace.h"
#include "host/fastening/TuvIBIWCurveFastener.h"
#include "host/fastening/TuvISpotWeld.h"
#include "host/values/Geometry.h"
#include "services/TuvBIWServices.h"

constinit ZefMetaClass* TuvBIWCustomRep::meta_object = nullptr;

namespace {

constexpr std::uint32_t kExplicitColor = 0xFF000000u;

std::uint32_t Component(int value, std::uint32_t tooLarge) {
  return value < 256 ? static_cast<std::uint32_t>(value) & 0xFFu : tooLarge;
}

std::uint32_t Pack(const int* rgba) {
  return Component(rgba[0], 0) << 24 | Component(rgba[1], 0) << 16 | Component(rgba[2], 0) << 8 |
         Component(rgba[3], 255);
}

// Rotations about X, then Y, then Z, in radians.
ZefMath3x3Matrix Rotation(double x, double y, double z) {
  const double cx = std::cos(x), sx = std::sin(x);
  const double cy = std::cos(y), sy = std::sin(y);
  const double cz = std::cos(z), sz = std::sin(z);
  return {{cz * cy, sz * cy, -sy},
          {cz * sy * sx - sz * cx, sz * sy * sx + cz * cx, cy * sx},
          {cz * sy * cx + sz * sx, sz * sy * cx - cz * sx, cy * cx}};
}

ZefMathTransformation Frame(TuvISpotWeld& weld) {
  const std::unique_ptr<double[]> place(weld.GetPositionAndOrientation());
  if (!place) return {};
  return {Rotation(place[3] * ZefDegreeToRadian, place[4] * ZefDegreeToRadian,
                   place[5] * ZefDegreeToRadian),
          {place[0], place[1], place[2]}};
}

ZefMathPointf Point(double x, double y, double z) {
  return {static_cast<float>(x), static_cast<float>(y), static_cast<float>(z)};
}

ZefMathPointf TextPosition(ZefBaseUnknown* weld) {
  if (const TuvISpotWeld_var spot = weld) {
    const ZefMathVector origin = Frame(*spot).Inverse().GetVector();
    return Point(origin.GetX(), origin.GetY(), origin.GetZ());
  }
  const TuvIBIWCurveFastener_var seam = weld;
  std::array<double, 6> first{};
  if (!seam || Failed(seam->GetPoint(1, first.data()))) return {};
  return Point(first[0], first[1], first[2]);
}

}  // namespace

TuvBIWCustomRep::TuvBIWCustomRep(ZefBaseUnknown* iWeld) : TuvBIWCustomRep(iWeld, nullptr) {}

TuvBIWCustomRep::TuvBIWCustomRep(ZefBaseUnknown* iWeld, int* iRGBA) : _Weld(iWeld) {
  const TraceScope trace("TuvBIWCustomRep --> IN", "TuvBIWCustomRep <-- OUT");
  if (iRGBA) {
    _AttributeSet.Attributes |= kExplicitColor;
    _AttributeSet.Color = Pack(iRGBA);
  }
  Build();
}

TuvBIWCustomRep::~TuvBIWCustomRep() { TuvKelBIWUtilsTrace.TraPutLN("TuvBIWCustomRep <-- OUT"); }

ZefUnicodeString TuvBIWCustomRep::GetID() const { return _ID; }
ZefBaseUnknown* TuvBIWCustomRep::GetWeld() const { return _Weld; }
Zef3DAnnotationTextGP* TuvBIWCustomRep::Get3DAnnotation() const { return _Annotation; }
ZefGraphicAttributeSet TuvBIWCustomRep::GetAttributeSet() const { return _AttributeSet; }

HRESULT TuvBIWCustomRep::Build() {
  const TraceScope trace("TuvBIWCustomRep::Build --> IN", "TuvBIWCustomRep::Build --> OUT");
  if (!_Weld) return E_FAIL;
  _ID = TuvBIWServices::GetWeldID(_Weld);
  if (_ID.GetLengthInChar() == 0) return E_FAIL;
  const ZefMathPointf position = TextPosition(_Weld);
  _Annotation = new Zef3DAnnotationTextGP(position, _ID, BASE_LEFT, 0.0f, 0);
  AddGP(_Annotation, _AttributeSet);
  return E_FAIL;
}

ZefMetaClass* TuvBIWCustomRep::MetaObject() {
  if (!meta_object) {
    meta_object =
        fct_RetrieveMetaObject("TuvBIWCustomRep", Implementation, Zef3DCustomRep::MetaObject(),
                               "Zefnull", FrameworkName, sizeof(TuvBIWCustomRep));
  }
  return meta_object;
}

const _GUID& TuvBIWCustomRep::ClassId() { return IdentifierOf(MetaObject()); }
const char* TuvBIWCustomRep::ClassName() { return NameOf(MetaObject()); }
ZefBaseUnknown* TuvBIWCustomRep::CreateItself() { return nullptr; }
ZefMetaClass* TuvBIWCustomRep::GetMetaObject() const { return MetaObject(); }
const char* TuvBIWCustomRep::IsA() const { return NameOf(MetaObject()); }
int TuvBIWCustomRep::IsAKindOf(const char* iName) const { return IsKindOf(MetaObject(), iName); }
