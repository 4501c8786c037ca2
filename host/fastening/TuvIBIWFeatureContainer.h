#pragma once

#include "host/component/Handle.h"
#include "host/component/Interface.h"
#include "host/fastening/TuvIBIWFeature.h"
#include "host/values/ZefListPtrZefListValZefUnicodeString.h"
#include "host/values/ZefListValZefUnicodeString.h"

extern const _GUID IID_TuvIBIWFeatureContainer;

// What the process database knows of the features in a container. A null feature may be asked for:
// a fastener that is no feature. Of it the database knows nothing, as of a feature that it does
// not have, and nothing is appended.
class TuvIBIWFeatureContainer : public Interface<TuvIBIWFeatureContainer> {
 public:
  static constexpr char Name[] = "TuvIBIWFeatureContainer";

  // Appends one new list per process version of the feature, identifiers from the root down; the
  // receiver deletes the lists.
  virtual HRESULT ListProcessVersionIDs(const TuvIBIWFeature_var& iFeature,
                                        ZefListPtrZefListValZefUnicodeString& oLists) = 0;
  // Appends the identifiers of the feature's assignments, in the order in which they were made.
  virtual HRESULT ListPaskAssignmentIDs(const TuvIBIWFeature_var& iFeature,
                                        ZefListValZefUnicodeString& oIdentifiers) = 0;
};

using TuvIBIWFeatureContainer_var = Handle<TuvIBIWFeatureContainer>;
