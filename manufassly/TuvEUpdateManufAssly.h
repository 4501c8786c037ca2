#pragma once

#include <cstdint>

#include "frame/Export.h"
#include "host/document/ZefIContainer.h"
#include "host/process/ZefSPPActivityNotification.h"
#include "host/process/ZefSPPActivityNotificationDispatcher.h"
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

  // What follows a change of the process.
  void CreateProductLink(ZefSPPActivityNotification*& iNotification);
  void RemoveProductLink(ZefSPPActivityNotification*& iNotification);
  void HandleDragOfAssignedItems(ZefSPPActivityNotification*& iNotification);
  void HandleDropOfFirstAssignedItems(ZefSPPActivityNotification*& iNotification);

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
  TUV_INTERNAL static std::int32_t updateCallback_;
};
