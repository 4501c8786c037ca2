#pragma once

#include <memory>

#include "host/process/ZefISPPActivity.h"
#include "host/values/ZefListValZefBaseUnknown_var.h"

// The children of an activity, of any kind; null when it manages none.
std::unique_ptr<ZefListValZefBaseUnknown_var> ChildActivities(const ZefISPPActivity_var& iActivity);

// Null at the top.
ZefISPPAbstractActivity_var ParentOf(ZefISPPAbstractActivity& iActivity);
// The same of an activity that may not say where it stands in the tree: null then, too.
ZefISPPAbstractActivity_var ParentOf(const ZefISPPAbstractActivity_var& iActivity);

// The previous activities; none for an activity without flow.
ZefListValZefBaseUnknown_var PreviousActivities(const ZefISPPActivity_var& iActivity);
