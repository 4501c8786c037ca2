#include "frame/Registration.h"

#include "frame/Trace.h"
#include "frame/TuvIBIWSetup.h"
#include "manufassly/TuvEUpdateManufAssly.h"

ZefBaseUnknown* CreateBOATuvIUpdateManufAsslyTuvEUpdateManufAssly(ZefBaseUnknown* iExtended,
                                                                  ZefBaseUnknown* iOuter) {
  return ToCreateBOA(iExtended, iOuter, TuvEUpdateManufAssly::MetaObject(),
                     IID_TuvIUpdateManufAssly, &TuvEUpdateManufAssly::CreateItself);
}

// What runs when the library is loaded, in this order. Only objects of one file are initialised in
// a fixed order, so nothing else of the library may need code to run at load.

ZefTrace TuvKelBIWUtilsTrace("TuvKelBIWUtilsTrace", "KelBIW Utilities Traces", 0, "STDERR", 1024);

static const ZefFillDictionary updateExtension(TuvEUpdateManufAssly::MetaObject(),
                                               TuvIUpdateManufAssly::MetaObject(),
                                               CreateBOATuvIUpdateManufAsslyTuvEUpdateManufAssly,
                                               nullptr, 1);

static const ZefFillDictionary setupInterface(IID_TuvIBIWSetup, CLSID_ZefMetaClass,
                                              TuvIBIWSetup::MetaObject(), nullptr);
