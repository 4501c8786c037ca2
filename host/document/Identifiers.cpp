#include "host/document/ZefDocument.h"
#include "host/document/ZefIAlias.h"
#include "host/document/ZefICompoundContainer.h"
#include "host/document/ZefIContainer.h"
#include "host/document/ZefILinkableObject.h"
#include "host/document/ZefIPointingHolder.h"
#include "host/document/ZefIRedrawEvent.h"
#include "host/document/ZefISpecObject.h"
#include "host/document/ZefInit.h"

constinit const _GUID IID_ZefIAlias = NameIdentifier(ZefIAlias::Name);
constinit const _GUID IID_ZefICompoundContainer = NameIdentifier(ZefICompoundContainer::Name);
constinit const _GUID IID_ZefIContainer = NameIdentifier(ZefIContainer::Name);
constinit const _GUID IID_ZefILinkableObject = NameIdentifier(ZefILinkableObject::Name);
constinit const _GUID IID_ZefIPointingHolder = NameIdentifier(ZefIPointingHolder::Name);
constinit const _GUID IID_ZefIRedrawEvent = NameIdentifier(ZefIRedrawEvent::Name);
constinit const _GUID IID_ZefISpecObject = NameIdentifier(ZefISpecObject::Name);
constinit const _GUID IID_ZefInit = NameIdentifier(ZefInit::Name);
constinit const _GUID IID_ZefDocument = NameIdentifier(ZefDocument::Name);
