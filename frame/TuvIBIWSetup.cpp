#include "frame/TuvIBIWSetup.h"

#include "frame/ClassRecord.h"

constinit const _GUID IID_TuvIBIWSetup = {
    0x13727A5C, 0xF893, 0x11D4, {0x80, 0xCF, 0x00, 0x50, 0x04, 0x0C, 0xCF, 0xB4}};

constinit ZefMetaClass* TuvIBIWSetup::meta_object = nullptr;

ZefMetaClass* TuvIBIWSetup::MetaObject() {
  if (meta_object) return meta_object;
  meta_object = new ZefMetaClass(&IID_TuvIBIWSetup, "TuvIBIWSetup", ZefBaseUnknown::MetaObject(),
                                 nullptr, TypeInterface);
  AddDictionary(&IID_TuvIBIWSetup, &CLSID_ZefMetaClass, "TuvIBIWSetup", "MetaObject", nullptr,
                meta_object, nullptr, nullptr, 1, 0, 2, nullptr);
  if (meta_object) meta_object->SetFWname(FrameworkName);
  return meta_object;
}

const _GUID& TuvIBIWSetup::ClassId() { return IdentifierOf(MetaObject()); }
const char* TuvIBIWSetup::ClassName() { return NameOf(MetaObject()); }
