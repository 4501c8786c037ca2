#pragma once

#include "host/process/ZefISPPActivity.h"
#include "host/values/ZefListValZefBaseUnknown_var.h"

// Appends what TuvBIWServices::GetLoadedParts lists, in the order in which each part comes first
// there, but walks each activity once: the cost does not grow with the paths of the flow.
int AppendLoadedOnce(const ZefISPPActivity_var& iActivity, ZefListValZefBaseUnknown_var*& ioParts);
