#include "host/processdb/ZefIIPDAdapter.h"
#include "host/processdb/ZefIIPDDataMgt.h"
#include "host/processdb/ZefIIPDVersionMgt.h"

constinit const _GUID IID_ZefIIPDAdapter = NameIdentifier(ZefIIPDAdapter::Name);
constinit const _GUID IID_ZefIIPDDataMgt = NameIdentifier(ZefIIPDDataMgt::Name);
constinit const _GUID IID_ZefIIPDVersionMgt = NameIdentifier(ZefIIPDVersionMgt::Name);
