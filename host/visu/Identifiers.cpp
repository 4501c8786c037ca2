#include "host/visu/ZefI3DGeoVisu.h"
#include "host/visu/ZefIModelEvents.h"
#include "host/visu/ZefIVisProperties.h"
#include "host/visu/ZefIVisu.h"

constinit const _GUID IID_ZefI3DGeoVisu = NameIdentifier(ZefI3DGeoVisu::Name);
constinit const _GUID IID_ZefIModelEvents = NameIdentifier(ZefIModelEvents::Name);
constinit const _GUID IID_ZefIVisProperties = NameIdentifier(ZefIVisProperties::Name);
constinit const _GUID IID_ZefIVisu = NameIdentifier(ZefIVisu::Name);
