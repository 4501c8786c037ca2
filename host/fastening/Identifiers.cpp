#include "host/fastening/TuvIBIWActivity.h"
#include "host/fastening/TuvIBIWActivityCurveFastening.h"
#include "host/fastening/TuvIBIWActivityWelding.h"
#include "host/fastening/TuvIBIWClampingPoint.h"
#include "host/fastening/TuvIBIWCurveFastener.h"
#include "host/fastening/TuvIBIWFastener.h"
#include "host/fastening/TuvIBIWFeature.h"
#include "host/fastening/TuvIBIWFeatureContainer.h"
#include "host/fastening/TuvIBIWItemInfo.h"
#include "host/fastening/TuvIBIWLocatingPoint.h"
#include "host/fastening/TuvIBIWPointFastener.h"
#include "host/fastening/TuvIMfgAssembly.h"
#include "host/fastening/TuvIRabBltCBSubscriber.h"
#include "host/fastening/TuvIRabBltMgr.h"
#include "host/fastening/TuvISpotWeld.h"

constinit const _GUID IID_TuvIBIWActivity = NameIdentifier(TuvIBIWActivity::Name);
constinit const _GUID IID_TuvIBIWActivityCurveFastening =
    NameIdentifier(TuvIBIWActivityCurveFastening::Name);
constinit const _GUID IID_TuvIBIWActivityWelding = NameIdentifier(TuvIBIWActivityWelding::Name);
constinit const _GUID IID_TuvIBIWClampingPoint = NameIdentifier(TuvIBIWClampingPoint::Name);
constinit const _GUID IID_TuvIBIWCurveFastener = NameIdentifier(TuvIBIWCurveFastener::Name);
constinit const _GUID IID_TuvIBIWFastener = NameIdentifier(TuvIBIWFastener::Name);
constinit const _GUID IID_TuvIBIWFeature = NameIdentifier(TuvIBIWFeature::Name);
constinit const _GUID IID_TuvIBIWFeatureContainer = NameIdentifier(TuvIBIWFeatureContainer::Name);
constinit const _GUID IID_TuvIBIWItemInfo = NameIdentifier(TuvIBIWItemInfo::Name);
constinit const _GUID IID_TuvIBIWLocatingPoint = NameIdentifier(TuvIBIWLocatingPoint::Name);
constinit const _GUID IID_TuvIBIWPointFastener = NameIdentifier(TuvIBIWPointFastener::Name);
constinit const _GUID IID_TuvIMfgAssembly = NameIdentifier(TuvIMfgAssembly::Name);
constinit const _GUID IID_TuvIRabBltCBSubscriber = NameIdentifier(TuvIRabBltCBSubscriber::Name);
constinit const _GUID IID_TuvIRabBltMgr = NameIdentifier(TuvIRabBltMgr::Name);
constinit const _GUID IID_TuvISpotWeld = NameIdentifier(TuvISpotWeld::Name);
