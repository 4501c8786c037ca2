#pragma once

#include <cstdint>

#include "frame/Export.h"
#include "host/document/ZefIContainer.h"
#include "host/fastening/TuvIMfgAssembly.h"
#include "host/process/ZefISPPActivity.h"
#include "host/process/ZefISPPItem.h"
#include "host/process/ZefSPPActivityNotification.h"
#include "host/process/ZefSPPActivityNotificationDispatcher.h"
#include "host/values/ZefListValZefBaseUnknown_var.h"
#include "host/values/ZefUnicodeString.h"
#include "manufassly/TuvIUpdateManufAssly.h"

// Extension of physical activities that keeps manufacturing assemblies in step with the process.
// Constructing one forgets the identifier of the subscription, whichever activity made it.
class TUV_EXPORT TuvEUpdateManufAssly : public TuvIUpdateManufAssly {
 public:
  TuvEUpdateManufAssly();
  ~TuvEUpdateManufAssly() override;

  static ZefMetaClass* MetaObject();
  static const _GUID& ClassId();
  static const char* ClassName();
  // With a reference for the caller; null when memory is exhausted.
  static ZefBaseUnknown* CreateItself();
  ZefMetaClass* GetMetaObject() const override;
  const char* IsA() const override;
  int IsAKindOf(const char* iName) const override;

  HRESULT AddUpdateCallback() override;
  HRESULT RemoveUpdateCallback() override;
  HRESULT AddWeldColorUpdateCallback() override;
  HRESULT ReturnZefCallbackStatus(long& oCallback) override;

  // Callbacks for the dispatcher's event; other notifications are ignored.
  void UpdateAutoManufAsslyCB(const char* iEvent, void* iPublisher, ZefNotification* iNotification,
                              void* iData, long iCallback);
  void UpdateWeldColorCallback(const char* iEvent, void* iPublisher, ZefNotification* iNotification,
                               void* iData, long iCallback);

  // The label of an activity, the class name of an object; empty for anything else and null.
  ZefUnicodeString GetNameOfActivity(ZefBaseUnknown* iObject);
  ZefUnicodeString GetType(ZefBaseUnknown* iObject);

  // What follows a change of the process. The son and the father of the notification say what was
  // linked or removed, and where.
  void CreateProductLink(ZefSPPActivityNotification*& iNotification);
  void RemoveProductLink(ZefSPPActivityNotification*& iNotification);
  void HandleDragOfAssignedItems(ZefSPPActivityNotification*& iNotification);
  void HandleDropOfFirstAssignedItems(ZefSPPActivityNotification*& iNotification);

  // The one station that follows in the flow, else the one that follows `iCurrent`, or the parent
  // when that is null, and so on up the tree. With several nothing is set, and a warning is shown
  // when an output was handed to none of them. Logical activities are not looked through.
  void GetNextActivityToAssign(ZefISPPActivity_var& iActivity, ZefISPPActivity_var& oNext,
                               ZefISPPActivity_var iCurrent);
  // Products that are first assigned already leave the list; the others are linked.
  void AssignProductsAsFirstAssign(ZefISPPActivity_var& iActivity,
                                   ZefListValZefBaseUnknown_var& ioProducts);

  // Takes the item out of the assemblies behind outputs.
  void RemoveChildFromMA(ZefListValZefBaseUnknown_var& iOutputs, ZefISPPItem_var& iItem);
  // Products that were first assigned are unlinked and leave the list.
  void RemoveProductsAsFirstAssign(ZefISPPActivity_var& iActivity,
                                   ZefListValZefBaseUnknown_var& ioProducts);
  // Takes out of the list, with a warning, the assemblies that contain an output of the activity.
  void RemoveInvalidFirstAssign(ZefISPPActivity_var& iActivity,
                                ZefListValZefBaseUnknown_var& ioCandidates);
  // Withdraws an assembly from the target and from every activity nested in it; of the nested ones
  // the user is told. A null target becomes the activity after `iActivity`.
  void RemoveMAFromConcernedAct(ZefISPPActivity_var& iActivity, ZefISPPActivity_var& ioTarget,
                                TuvIMfgAssembly_var& iAssembly, ZefISPPActivity_var iCurrent);

  // Relations; each appends to the caller's list.
  void GetFirstAssignedItems(ZefISPPActivity_var& iActivity, ZefListValZefBaseUnknown_var& ioItems);
  // Of every activity upstream, once for each path that leads to it: the list doubles with each
  // branch that joins again behind something first assigned.
  void CollectFirstAssignPartsFromPreviousActs(ZefISPPActivity_var& iActivity,
                                               ZefListValZefBaseUnknown_var& ioItems);
  // The activities that have the assembly as first assigned, each once.
  void GetRelatedActivities(TuvIMfgAssembly_var& iAssembly,
                            ZefListValZefBaseUnknown_var& ioActivities);
  // The assemblies below one, depth first; one that is met again is listed again.
  void GetAllChildParts(TuvIMfgAssembly_var& iAssembly, ZefListValZefBaseUnknown_var& ioChildren);
  // 1 when the candidate lies anywhere below the parent.
  unsigned char IsMAaChild(TuvIMfgAssembly_var& iParent, TuvIMfgAssembly_var& iCandidate);
  // From the parent up to the top.
  void GetParents(ZefISPPActivity_var& iActivity, ZefListValZefBaseUnknown_var& ioParents);
  // From the position on, counted from 1, keeps the root and what is nested in it.
  void FilterActsBasedOnParent(ZefISPPActivity_var& iRoot,
                               ZefListValZefBaseUnknown_var& ioActivities, int iPosition);

  // Shows a warning and waits for the user, unless the environment variable GORM_VIST_OUT is set.
  // `iMessageId` is "MultipleActsInFlow", "MultipleProductOutput", "RemovedFirstAssign" or
  // "MAIsChild", which takes two names joined by "$" and appends a "$" to them. E_FAIL without
  // application frame.
  HRESULT DisplayWarningWindow(ZefUnicodeString& ioNames, ZefUnicodeString& iMessageId);

  // Null until the class is first described.
  static ZefMetaClass* meta_object;

 private:
  TUV_INTERNAL HRESULT FindPublisher(ZefIContainer_var& oContainer,
                                     ZefSPPActivityNotificationDispatcher*& oDispatcher);
  // Needs no object: making one would forget the subscription.
  TUV_INTERNAL static void ShowWeldsUnassigned(const char* iEvent, void* iPublisher,
                                               ZefNotification* iNotification, void* iData,
                                               long iCallback);

  // One for all objects; 0 when no subscription is recorded.
  TUV_INTERNAL static std::int32_t _UpdateAsslyCB;
};
