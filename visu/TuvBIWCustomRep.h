#pragma once

#include "frame/Export.h"
#include "host/values/ZefUnicodeString.h"
#include "host/visu/Zef3DAnnotationTextGP.h"
#include "host/visu/Zef3DCustomRep.h"

// The identifier of a weld, shown in the 3D view under the weld's own representation. Nothing is
// shown of a weld without identifier. The weld is not counted: the representation must end with it.
class TUV_EXPORT TuvBIWCustomRep : public Zef3DCustomRep {
 public:
  // Opaque black.
  explicit TuvBIWCustomRep(ZefBaseUnknown* iWeld);
  // `iRGBA` is four components of 0 to 255, or null for opaque black. Of a component above 255 the
  // colour gets 0, alpha 255; of a negative one its low byte.
  TuvBIWCustomRep(ZefBaseUnknown* iWeld, int* iRGBA);
  ~TuvBIWCustomRep() override;

  // Empty until a build could read it.
  ZefUnicodeString GetID() const;
  // No reference taken.
  ZefBaseUnknown* GetWeld() const;
  // Owned by the representation; null until a build could make it.
  Zef3DAnnotationTextGP* Get3DAnnotation() const;
  ZefGraphicAttributeSet GetAttributeSet() const;

  // Reads the identifier and adds its text; both constructors do it. Again adds a further text.
  // The text of a spot weld stands at the translation of its inverted frame, that of a seam at its
  // first point, any other at the origin. E_FAIL in every case.
  HRESULT Build();

  static ZefMetaClass* MetaObject();
  static const _GUID& ClassId();
  static const char* ClassName();
  // Null: the platform cannot create the class by name.
  static ZefBaseUnknown* CreateItself();
  ZefMetaClass* GetMetaObject() const override;
  const char* IsA() const override;
  int IsAKindOf(const char* iName) const override;

  // Null until the class is first described.
  static ZefMetaClass* meta_object;

 private:
  ZefBaseUnknown* _Weld;
  ZefUnicodeString _ID;
  Zef3DAnnotationTextGP* _Annotation = nullptr;
  ZefGraphicAttributeSet _AttributeSet;
};
