#include "planner/report/Describe.h"

#include "embedded/model/Document.h"
#include "host/values/Each.h"
#include "planner/names/Names.h"
#include "services/Received.h"
#include "services/TuvBIWServices.h"

namespace biwplan {

namespace {

using embedded::ActivityData;

std::string_view RoleOf(const embedded::Activity& activity) {
  if (activity.IsRoot()) return "process";
  switch (activity.Data().role) {
    case ActivityData::Role::Station:
      return "station";
    case ActivityData::Role::Operation:
      return "operation";
    case ActivityData::Role::Step:
      break;
  }
  return "step";
}

std::string_view TaskOf(const embedded::Activity& activity) {
  switch (activity.Data().task) {
    case ActivityData::Task::Welding:
      return "welding";
    case ActivityData::Task::CurveFastening:
      return "curve fastening";
    case ActivityData::Task::Both:
      return "welding and curve fastening";
    case ActivityData::Task::None:
      break;
  }
  return "";
}

template <class Numbers>
Json FirstThree(const Numbers& numbers) {
  return {numbers[0], numbers[1], numbers[2]};
}

}  // namespace

Json NamesAsJson(const ZefListValZefBaseUnknown_var* iObjects) {
  Json names = Json::array();
  for (const std::string& name : NamesOf(iObjects)) names.push_back(name);
  return names;
}

Json DescribeWeld(const ZefBaseUnknown_var& iWeld) {
  Json data = {{"weld", NameOf(iWeld)}};
  const TuvIBIWFastener_var fastener = iWeld;
  ZefUnicodeString type;
  fastener->GetFastenerType(type);
  data["type"] = type.Bytes();
  const TuvISpotWeld_var spot = iWeld;
  if (spot) data["position"] = {spot->GetX(), spot->GetY(), spot->GetZ()};
  const auto* const seam = embedded::ObjectAs<embedded::CurveFastener>(iWeld);
  if (seam) {
    double first[6] = {};
    TuvIBIWCurveFastener_var(iWeld)->GetPoint(1, first);
    data["position"] = FirstThree(first);
    data["length"] = seam->Length();
  }
  ZefListValZefBaseUnknown_var parts;
  fastener->GetJointedParts(parts);
  data["parts"] = NamesAsJson(&parts);
  const ZefListValZefBaseUnknown_var activities = ActivitiesOf(iWeld);
  data["activities"] = NamesAsJson(&activities);
  return data;
}

Json DescribeActivity(const embedded::Activity& iActivity) {
  const ActivityData& data = iActivity.Data();
  return {{"activity", data.key},
          {"label", data.label.empty() ? data.key : data.label},
          {"role", RoleOf(iActivity)},
          {"task", TaskOf(iActivity)},
          {"parent", iActivity.Parent() ? iActivity.Parent()->Data().key : ""},
          {"seconds", iActivity.CycleTime()}};
}

Json DescribePart(const embedded::Product& iPart) {
  const embedded::ProductData& data = iPart.Data();
  return {{"part", data.key},
          {"number", data.partNumber.empty() ? data.key : data.partNumber},
          {"name", data.name},
          {"parent", iPart.Parent() ? iPart.Parent()->Data().key : ""},
          {"instanceOf", iPart.Reference() ? iPart.Reference()->Data().key : ""},
          {"position", FirstThree(data.position)}};
}

ZefListValZefBaseUnknown_var WeldsOn(const embedded::Activity& iActivity, bool iDeep) {
  Received<ZefListValZefBaseUnknown_var> welds;
  const ZefISPPActivity_var activity = iActivity.Identity();
  TuvBIWServices::GetWeldFromActivity(activity, welds.Out(), 1, iDeep ? -1 : 0);
  return welds ? *welds : ZefListValZefBaseUnknown_var();
}

ZefListValZefBaseUnknown_var ActivitiesOf(const ZefBaseUnknown_var& iWeld) {
  Received<ZefListValZefBaseUnknown_var> activities;
  int count = 0;
  TuvBIWServices::GetActivityFromAssignedWeld(iWeld, activities.Out(), count);
  return activities ? *activities : ZefListValZefBaseUnknown_var();
}

}  // namespace biwplan
