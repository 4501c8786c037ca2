#pragma once

#include "frame/Export.h"
#include "host/document/ZefDocument.h"
#include "host/document/ZefIContainer.h"
#include "host/fastening/TuvIBIWFastener.h"
#include "host/process/ZefISPPActivity.h"
#include "host/process/ZefISPPProcessContainer.h"
#include "host/processdb/ZefIIPDAdapter.h"
#include "host/product/ZefIProduct.h"
#include "host/values/List.h"
#include "host/values/SEQUENCE_ZefBaseUnknown_ptr.h"
#include "host/values/ZefListPtrIUnknown.h"
#include "host/values/ZefListValZefBaseUnknown_var.h"
#include "host/values/ZefListValZefUnicodeString.h"
#include "host/values/ZefUnicodeString.h"
#include "host/visu/Zef3DBagRep.h"
#include "host/visu/ZefModelForRep3D.h"

// The planner's questions and gestures on the edited model. Nothing is kept between calls.
//
// A null document stands for the current editor's. A list passed by pointer reference is added to,
// never emptied; where a null pointer gets a new list, the caller deletes it, also after a failure.
// Null arguments, missing interfaces and failing host operations end a step in silence; what was
// done before stays. Positions count from 1. Booleans are 1 and 0.
class TUV_EXPORT TuvBIWServices : public ZefBaseUnknown {
 public:
  TuvBIWServices();
  ~TuvBIWServices() override;

  // --- Documents, containers, roots ---

  // The current editor's, no reference taken; null without editor.
  static ZefDocument* GetCurrentDocument();
  // The root container of a process document, or of a product document. Null when the current
  // document is of the other kind or missing; the kind of a document passed in is not tested.
  // Raises the null-handle exception when the document has no such root container.
  static ZefISPPProcessContainer_var GetRootProcessContainer(ZefDocument* iDocument);
  static ZefIContainer_var GetRootContainer(ZefDocument* iDocument);
  // With a reference for the caller. Raises the null-handle exception for a process document
  // without root container.
  static HRESULT GetRootActivity(ZefISPPActivity*& oActivity, ZefDocument* iDocument);
  // The first activity of the root's container, the root itself, is left out. The list is created
  // as soon as there is a second one. Raises as GetRootActivity.
  static HRESULT GetListOfAllActivities(ZefListValZefBaseUnknown_var*& ioActivities,
                                        ZefDocument* iDocument);
  // E_FAIL in every case: judge by the pointer, which a new list that the caller deletes replaces.
  static HRESULT GetAllProducts(ZefListValZefBaseUnknown_var*& oProducts);
  // No reference taken.
  static ZefDocument* GetDocumentFromFeature(ZefBaseUnknown* iFeature);
  // The container of the fasteners. Here null is not the current document.
  static ZefIContainer_var GetFeatContainerFromDocument(ZefDocument* iDocument);
  static ZefIContainer_var GetFeatContainerFromFeature(ZefBaseUnknown* iFeature);
  // Those of the current document are appended with one reference each, which the caller releases.
  static void GetListOfAllFasteners(_SEQUENCE_ZefBaseUnknown_ptr& ioFasteners);
  static void GetListOfAllLocators(_SEQUENCE_ZefBaseUnknown_ptr& ioLocators);
  static void GetListOfAllClamps(_SEQUENCE_ZefBaseUnknown_ptr& ioClamps);
  static ZefListValZefBaseUnknown_var GetListOfAllPointFasteners(ZefDocument* iDocument);

  // --- The flow and the tree of activities ---

  // The labels from the one below the root down to the activity, joined by "->", replace the text.
  // E_FAIL, and the text left alone, for an activity without parent.
  static HRESULT GetActivityHierarchy(ZefISPPActivity* iActivity, ZefUnicodeString& ioText);
  // The first previous activity or null. All of them are appended; a null list stays null.
  static ZefISPPActivity_var GetPredecessorActivity(ZefISPPActivity_var iActivity,
                                                    ZefListValZefBaseUnknown_var*& ioPredecessors);
  // Replaces the list by the previous activities; without flow the list is left alone. E_FAIL for a
  // null activity only, as the next two.
  static HRESULT GetPredecessors(ZefISPPActivity_var iActivity,
                                 ZefListValZefBaseUnknown_var& oPredecessors);
  // Everything that comes before in the flow, each once, in the order of discovery. What the list
  // holds already is neither added nor looked behind. The activity itself is listed on a ring.
  static HRESULT GetAllPredecessors(ZefISPPActivity_var iActivity,
                                    ZefListValZefBaseUnknown_var& ioPredecessors);
  // Every activity below, each before those below it.
  static HRESULT GetDescendants(ZefISPPActivity_var iActivity,
                                ZefListValZefBaseUnknown_var& ioDescendants);
  // All predecessors, then all below them, then the parent and what comes before it, up to the top.
  // An activity is listed as often as it is reached; a null list stays null.
  static void GetPreviousActivities(ZefISPPActivity_var iActivity,
                                    ZefListValZefBaseUnknown_var*& ioActivities);

  // --- Parts at an activity ---
  // A null list stays null and nothing is collected, unless said otherwise.

  // What previous activities bring, then the activity's own parts, then those of its children.
  // Answers 0. Every path of the flow is walked: the cost doubles with each branch that joins
  // again.
  static int GetLoadedParts(const ZefISPPActivity_var& iActivity,
                            ZefListValZefBaseUnknown_var*& ioParts);
  // Products among the items with all products below them, unless the list has them already.
  static void GetAssignedParts(ZefISPPActivity_var iActivity,
                               ZefListValZefBaseUnknown_var*& ioParts);
  static void GetPartsFromPreviousActs(const ZefISPPActivity_var& iActivity,
                                       ZefListValZefBaseUnknown_var*& ioParts);
  static void GetPartsFromChildrenActs(const ZefISPPActivity_var& iActivity,
                                       ZefListValZefBaseUnknown_var*& ioParts);
  // The products of the outputs. A null pointer gets a new list with the first one.
  static void GetProductOutputsFromActivity(const ZefISPPActivity_var& iActivity,
                                            ZefListValZefBaseUnknown_var*& ioParts);
  // Direct children, with duplicates.
  static void GetChildParts(ZefIProduct_var iProduct, ZefListValZefBaseUnknown_var*& ioParts);
  // Everything below that the list does not hold yet.
  static void GetAllChildParts(ZefIProduct_var iProduct, ZefListValZefBaseUnknown_var*& ioParts);
  // The parts beside the first one of its part number, in the first product root that has it below.
  static void GetSiblingParts(ZefIProduct_var iProduct, ZefListValZefBaseUnknown_var*& ioParts);
  static int IsPartInList(ZefUnicodeString& iPartNumber, ZefListValZefBaseUnknown_var* iParts);
  // Whether the list holds every part that the weld joins.
  static int ArePartsLoaded(ZefBaseUnknown* iWeld, ZefListValZefBaseUnknown_var* iParts);
  // Mode 1: whether the reference holds all candidates; mode 2: whether it holds any; any other
  // mode: 1. Always 0 when one of the lists is empty.
  static int CompareTwoLists(const ZefListValZefBaseUnknown_var& iReference,
                             const ZefListValZefBaseUnknown_var& iCandidates, int iMode);

  // --- Product outputs and first assignment ---

  // A new manufacturing assembly with the activity's label becomes the product of a new output; it
  // is appended also when no output could be made.
  static void CreateProductOutput(ZefISPPActivity_var& iActivity,
                                  ZefListValZefBaseUnknown_var& ioOutputs);
  // Links every product that is an item as first assigned, once for each time it is listed.
  static void AssignProductsAsFirstAssign(ZefISPPActivity_var& iActivity,
                                          ZefListValZefBaseUnknown_var& iProducts);

  // --- Welds and their activities ---

  // Not offered: E_FAIL.
  static HRESULT GetListOfAllWeld(ZefListValZefBaseUnknown_var*& ioWelds);
  // By the activity's item links. S_OK whenever there is a list afterwards, even an empty one.
  static HRESULT GetListOfAssignedWeld(ZefISPPActivity* iActivity,
                                       ZefListValZefBaseUnknown_var*& ioWelds);
  // The same, with S_OK when the activity has any item link. The list is created with the first
  // link, fastener or not; a weld that is linked twice is listed twice.
  static HRESULT GetListOfKoraAssignedWeld(ZefISPPActivity* iActivity,
                                           ZefListValZefBaseUnknown_var*& ioWelds);
  // By the activity's items. Depth -1 adds those of every activity below, depth first; the result
  // speaks of `iActivity` alone. The list is created with the first weld. The flag is not used.
  static HRESULT GetWeldFromActivity(ZefISPPActivity* iActivity,
                                     ZefListValZefBaseUnknown_var*& ioWelds, unsigned char iFlag,
                                     int iDepth);
  // S_OK when the weld is neither on the activity nor in the pending list, which may be null.
  static HRESULT CheckWeldAssignement(ZefBaseUnknown* iWeld, ZefISPPActivity* iActivity,
                                      ZefListValZefBaseUnknown_var* iPending,
                                      unsigned char iUnused);
  // The name under which users know the weld, or empty.
  static ZefUnicodeString GetWeldID(ZefBaseUnknown* iWeld);
  // An activity with two links to the weld is listed and counted twice. With no activity the count
  // is 0, the list is left alone and the result may be a success all the same.
  static HRESULT GetActivityFromAssignedWeld(ZefBaseUnknown* iWeld,
                                             ZefListValZefBaseUnknown_var*& ioActivities,
                                             int& oCount);
  // Only a BIW activity can refuse, and only a fastener can be refused. Its answer is passed on as
  // a byte, not reduced to 0 and 1.
  static int IsValidWeldForActivity(ZefBaseUnknown* iWeld, ZefISPPActivity* iActivity);
  // Spot welds only: assigned in the process database, or in the list, which may be null.
  static int IsWeldAssigned(ZefBaseUnknown* iWeld, ZefListValZefBaseUnknown_var* iAssigned);

  // --- Assigning and unassigning ---

  // Does not look for duplicates.
  static HRESULT AssignKoraWeld(ZefISPPActivity* iActivity, ZefBaseUnknown* iWeld);
  // S_OK when at least one weld was assigned. Welds that the activity carried before the call are
  // left out, with one warning for all of them; the last two arguments are not used.
  static HRESULT AssignListOfWelds(ZefListValZefBaseUnknown_var* iWelds, ZefISPPActivity* iActivity,
                                   ZefIProduct* iProduct, unsigned char iFlag);
  // Both do their work and answer E_FAIL in every case.
  static HRESULT UnassignListOfWelds(ZefListValZefBaseUnknown_var* iWelds,
                                     ZefISPPActivity* iActivity);
  static HRESULT ReallocateWeld(ZefISPPActivity* iFrom, ZefISPPActivity* iTo,
                                ZefListValZefBaseUnknown_var* iWelds);
  // Not offered: E_FAIL.
  static HRESULT Unassign(ZefISPPActivity* iActivity, ZefBaseUnknown* iWeld);

  // --- Which fasteners an activity may get ---

  // S_OK when the list holds every part that the weld joins, also when it joins none.
  static HRESULT KoraWeldJointedPartsInList(TuvIBIWFastener* iWeld,
                                            ZefListValZefBaseUnknown_var* iParts);
  // With the part-load constraint on, takes out the fasteners whose parts are not loaded at the
  // activity; of an "endo" fastener one loaded part is enough. Other elements stay, unless nothing
  // at all is loaded: then the list ends empty.
  static void ValidateListOfFastenersForAssignmentToActivity(
      ZefListValZefBaseUnknown_var& ioFasteners, ZefISPPActivity_var iActivity);
  // Whether the fastener belongs to a process version that goes with the activity's. 1 outside of a
  // process database, and for a fastener without version; 0 when the fastener's document or its
  // environment is not known.
  static int IsValidProcessVersion(const ZefISPPActivity_var& iActivity,
                                   TuvIBIWFastener_var& iFastener);

  // --- External process database ---

  static int IsWeldAssignedInPask(ZefBaseUnknown* iWeld);
  // Adds the weld's assignment identifiers to the text, separated by ";". E_FAIL when it has none.
  static HRESULT AddPaskAssignmentToText(ZefBaseUnknown* iWeld, ZefUnicodeString& ioText);
  static int GetNumberOfPaskAssignments(ZefBaseUnknown* iWeld);
  // From the object up to its root; what the list held is released first.
  static void GetListPaskObjectsTillRoot(IUnknown* iObject, ZefIIPDAdapter_var iAdapter,
                                         ZefListPtrIUnknown& oObjects);
  // The other way round: from the root down to the object. Objects without identifier are left out.
  static void GetListPaskObjectIDsTillRoot(IUnknown* iObject, ZefIIPDAdapter_var iAdapter,
                                           ZefListValZefUnicodeString& oIdentifiers);
  // The first parent that is a base process, with a reference for the caller, or null.
  static IUnknown* GetParentErgoCompBaseProcess(IUnknown* iObject, ZefIIPDAdapter_var iAdapter);
  // Releases every element and empties the list.
  static void ClearUnknownList(ZefListPtrIUnknown* ioObjects);

  // --- Welds in the 3D view ---

  // Shows a temporary label for each weld: at its point for a spot weld, else at the origin. The
  // models are appended with their references, for DeactivateListWeldVisualization to give back.
  static HRESULT ActivateListWeldVisualization(ZefListValZefBaseUnknown_var* iWelds,
                                               list<ZefModelForRep3D>& ioModels);
  // Removal stops at the first null model; the list ends empty all the same.
  static HRESULT DeactivateListWeldVisualization(list<ZefModelForRep3D>& ioModels);
  // Highlights the object alone. E_FAIL in every case.
  static HRESULT SetHighlight(ZefBaseUnknown* iObject);
  // Not offered: E_FAIL.
  static HRESULT SetAssignedWeldColor(ZefBaseUnknown* iWeld, unsigned int iRed, unsigned int iGreen,
                                      unsigned int iBlue, unsigned int iAlpha);
  static HRESULT VisualizationLumoWeldList(ZefListValZefBaseUnknown_var* iWelds, int iMode);
  // Modes 0 and 1 toggle the welds' custom representations, any other mode adds one. S_OK when one
  // was added. The last five arguments are not used. Raises as GetRootActivity.
  static HRESULT VisualizationKoraWeldList(ZefListValZefBaseUnknown_var* iWelds, int iMode,
                                           unsigned char iFlag, int iRed, int iGreen, int iBlue,
                                           int iAlpha);
  // S_OK when a custom representation was removed; without `iDelete` E_FAIL in every case.
  static HRESULT DeleteTuvBIWCustomRep(Zef3DBagRep* iBag, unsigned char iDelete);
  // S_OK when the bag has a custom representation.
  static HRESULT CheckForTuvBIWCustomRep(Zef3DBagRep* iBag);
  // Mode 0 collects the spot welds with a custom representation, mode 1 those without; the list is
  // created with the first one.
  static void CheckVisualizationOfKoraWelds(ZefListValZefBaseUnknown_var* iWelds,
                                            ZefListValZefBaseUnknown_var*& ioWelds, int iMode);
  // 1 shows, anything else hides; objects with a look of their own (2 and 3) are left alone.
  static void HideShowWeldPointsInList(ZefListValZefBaseUnknown_var* iWelds, unsigned char iShow);
};

// Searches the products below a root, depth first, for one with the product's part number, and
// appends the parts beside the first one. 1 when there is one, also for a null list.
TUV_EXPORT unsigned char GetSiblingPartsFromProduct(ZefIProduct_var iRoot, ZefIProduct_var iProduct,
                                                    ZefListValZefBaseUnknown_var*& ioParts);
