#pragma once

#include "embedded/model/Activity.h"
#include "embedded/model/Product.h"
#include "host/values/ZefListValZefBaseUnknown_var.h"
#include "planner/report/Json.h"

namespace biwplan {

// Objects as data, by the names that the user knows; positions in mm, times in seconds.

Json NamesAsJson(const ZefListValZefBaseUnknown_var* iObjects);

// "weld", "type", "position" (of a seam its first point), "length" of a seam, "parts",
// "activities".
Json DescribeWeld(const ZefBaseUnknown_var& iWeld);
// "activity", "label", "role", "task", "parent", "seconds" as of the last update.
Json DescribeActivity(const embedded::Activity& iActivity);
// "part", "number", "name", "parent", "instanceOf", "position".
Json DescribePart(const embedded::Product& iPart);

// The welds on the activity, with those on the activities below it if `iDeep`.
ZefListValZefBaseUnknown_var WeldsOn(const embedded::Activity& iActivity, bool iDeep = false);
ZefListValZefBaseUnknown_var ActivitiesOf(const ZefBaseUnknown_var& iWeld);

}  // namespace biwplan
