#include "host/process/ZefISPPAbstractActivity.h"
#include "host/process/ZefISPPActivity.h"
#include "host/process/ZefISPPActivityModificationEvents.h"
#include "host/process/ZefISPPActivityRoot.h"
#include "host/process/ZefISPPActivitySpecification.h"
#include "host/process/ZefISPPChildManagement.h"
#include "host/process/ZefISPPControlFlow.h"
#include "host/process/ZefISPPFlowEnd.h"
#include "host/process/ZefISPPFlowMgt.h"
#include "host/process/ZefISPPItem.h"
#include "host/process/ZefISPPItemMgt.h"
#include "host/process/ZefISPPProcessContainer.h"
#include "host/process/ZefISPPProductIO.h"

constinit const _GUID IID_ZefISPPAbstractActivity = NameIdentifier(ZefISPPAbstractActivity::Name);
constinit const _GUID IID_ZefISPPActivity = NameIdentifier(ZefISPPActivity::Name);
constinit const _GUID IID_ZefISPPActivityModificationEvents =
    NameIdentifier(ZefISPPActivityModificationEvents::Name);
constinit const _GUID IID_ZefISPPActivityRoot = NameIdentifier(ZefISPPActivityRoot::Name);
constinit const _GUID IID_ZefISPPActivitySpecification =
    NameIdentifier(ZefISPPActivitySpecification::Name);
constinit const _GUID IID_ZefISPPChildManagement = NameIdentifier(ZefISPPChildManagement::Name);
constinit const _GUID IID_ZefISPPControlFlow = NameIdentifier(ZefISPPControlFlow::Name);
constinit const _GUID IID_ZefISPPFlowEnd = NameIdentifier(ZefISPPFlowEnd::Name);
constinit const _GUID IID_ZefISPPFlowMgt = NameIdentifier(ZefISPPFlowMgt::Name);
constinit const _GUID IID_ZefISPPItem = NameIdentifier(ZefISPPItem::Name);
constinit const _GUID IID_ZefISPPItemMgt = NameIdentifier(ZefISPPItemMgt::Name);
constinit const _GUID IID_ZefISPPProcessContainer = NameIdentifier(ZefISPPProcessContainer::Name);
constinit const _GUID IID_ZefISPPProductIO = NameIdentifier(ZefISPPProductIO::Name);
