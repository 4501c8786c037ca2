#pragma once

#include "host/component/Identifier.h"
#include "host/component/Result.h"
#include "host/component/ZefMetaClass.h"

class ZefBaseUnknown;

// The platform's dictionary: classes and interfaces by name and identifier, and the factories of
// extensions. It copies every text that it is given and keeps meta-objects for ever.
//
// A class or an interface is found by name once its meta-object was asked for (MetaObject), and
// queries by name go the same way. The first query of a ComponentObject asks for those of all its
// interfaces; a class that queries on its own asks for those of its own.

extern const _GUID CLSID_ZefMetaClass;

using ExtensionFactory = ZefBaseUnknown* (*)(ZefBaseUnknown* iExtended, ZefBaseUnknown* iOuter);

// Finds the meta-object of a class by name or builds it; a class that is registered again (its
// library was loaded a second time) has its record refreshed. "Zefnull" and "ZefNull" as extended
// type both mean none; the text is kept as it was given.
ZefMetaClass* fct_RetrieveMetaObject(const char* iClass, ENUMTypeOfClass iKind, ZefMetaClass* iBase,
                                     const char* iExtendedType, const char* iFramework,
                                     int iInstanceSize);

// Makes an interface known by identifier and name; again is harmless. A null meta-object is
// tolerated.
HRESULT AddDictionary(const _GUID* iIID, const _GUID* iClsid, const char* iName, const char* iEntry,
                      const char* iNull1, ZefMetaClass* iMeta, void* iNull2, void* iNull3, int i1,
                      int i0, int i2, const char* iNull4);

// The interface's meta-object, made on the first call.
ZefMetaClass* RegisterInterface(const _GUID& iIID, const char* iName, ZefMetaClass* iBase);

// Registration objects: constructing one makes the dictionary entry.
class ZefFillDictionary {
 public:
  // Objects of the late type that `iExtension` extends answer `iInterface` through an extension
  // that `iFactory` creates.
  ZefFillDictionary(ZefMetaClass* iExtension, ZefMetaClass* iInterface, ExtensionFactory iFactory,
                    void* iCondition, int iMode);
  // An interface with its meta-object.
  ZefFillDictionary(const _GUID& iIID, const _GUID& iClsid, ZefMetaClass* iMeta, void* iCondition);
};

// Creates an extension with `iCreate`, ties it to `iExtended`, which owns it from then on, and
// answers it with a reference for the caller; null when `iCreate` gives null.
ZefBaseUnknown* ToCreateBOA(ZefBaseUnknown* iExtended, ZefBaseUnknown* iOuter, ZefMetaClass* iMeta,
                            const _GUID& iIID, ZefBaseUnknown* (*iCreate)());

// Look-ups; null when nothing of that name or identifier is registered.
ZefMetaClass* FindMetaClass(const char* iName);
ZefMetaClass* FindInterface(const _GUID& iIID);
ZefMetaClass* FindInterface(const char* iName);
ExtensionFactory FindExtensionFactory(const ZefMetaClass* iLateType, const _GUID& iIID);

// Forgets every factory whose code lies in [iBegin, iEnd): its library is about to be unloaded.
// Answers how many were forgotten.
int PurgeFactories(const void* iBegin, const void* iEnd);
