#include "host/document/Document.h"
#include "host/fastening/Fastening.h"
#include "host/process/Process.h"
#include "host/processdb/ProcessDb.h"
#include "host/product/Product.h"
#include "host/visu/Visu.h"
#include "hostcheck/Bench.h"

namespace hostcheck {

namespace {

template <class... Interfaces>
std::vector<InterfaceInfo> Listed() {
  return {{Interfaces::ClassName(), Interfaces::InterfaceId()}...};
}

}  // namespace

const std::vector<InterfaceInfo>& AllInterfaces() {
  static const std::vector<InterfaceInfo> all =
      Listed<TuvIBIWActivity, TuvIBIWActivityCurveFastening, TuvIBIWActivityWelding,
             TuvIBIWClampingPoint, TuvIBIWCurveFastener, TuvIBIWFastener, TuvIBIWFeature,
             TuvIBIWFeatureContainer, TuvIBIWItemInfo, TuvIBIWLocatingPoint, TuvIBIWPointFastener,
             TuvIMfgAssembly, TuvIRabBltCBSubscriber, TuvIRabBltMgr, TuvISpotWeld, ZefDocument,
             ZefI3DGeoVisu, ZefIAlias, ZefIAsmGraphicProperties, ZefICompoundContainer,
             ZefIContainer, ZefIIPDAdapter, ZefIIPDDataMgt, ZefIIPDVersionMgt, ZefILinkableObject,
             ZefIModelEvents, ZefIMovable, ZefINavigateObject, ZefIPointingHolder, ZefIProduct,
             ZefIRedrawEvent, ZefISPPAbstractActivity, ZefISPPActivity,
             ZefISPPActivityModificationEvents, ZefISPPActivityRoot, ZefISPPActivitySpecification,
             ZefISPPChildManagement, ZefISPPControlFlow, ZefISPPFlowEnd, ZefISPPFlowMgt,
             ZefISPPItem, ZefISPPItemMgt, ZefISPPProcessContainer, ZefISPPProductIO, ZefISpecObject,
             ZefIVisProperties, ZefIVisu, ZefInit>();
  return all;
}

}  // namespace hostcheck
