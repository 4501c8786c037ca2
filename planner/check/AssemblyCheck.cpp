#include "planner/check/AssemblyCheck.h"

#include <algorithm>
#include <unordered_set>

#include "embedded/model/ItemLink.h"
#include "host/component/Interruption.h"
#include "host/values/Each.h"

namespace biwplan {

namespace {

using embedded::Activity;
using embedded::MfgAssembly;
using embedded::ObjectAs;
using Kind = AssemblyFinding::Kind;

std::vector<const Activity*> FollowingStations(const Activity& activity) {
  std::vector<const Activity*> stations;
  for (const Activity* const next : activity.Next()) {
    const bool known = std::find(stations.begin(), stations.end(), next) != stations.end();
    if (next->IsStation() && next->Data().kind == embedded::ActivityData::Kind::Physical &&
        !known) {
      stations.push_back(next);
    }
  }
  return stations;
}

// Whether `searched` lies below the assembly, at any depth.
bool Contains(const MfgAssembly& assembly, const MfgAssembly& searched) {
  std::vector<const MfgAssembly*> open{&assembly};
  std::unordered_set<const MfgAssembly*> met;
  while (!open.empty()) {
    const MfgAssembly* const current = open.back();
    open.pop_back();
    for (const auto& child : Each<TuvIMfgAssembly>(current->OwnChildren())) {
      const auto* const below = ObjectAs<MfgAssembly>(child.Get());
      if (below == &searched) return true;
      if (below && met.insert(below).second) open.push_back(below);
    }
  }
  return false;
}

bool WouldContainItself(const MfgAssembly& assembly, const ZefBaseUnknown_var& child) {
  const auto* const below = ObjectAs<MfgAssembly>(child.Get());
  return below && (below == &assembly || Contains(*below, assembly));
}

// The station that takes in what is first assigned to the activity.
const Activity* StationOf(const Activity* activity) {
  while (activity && !activity->IsStation()) activity = activity->Parent();
  return activity;
}

class StationCheck {
 public:
  StationCheck(const Activity& station, const MfgAssembly& assembly,
               std::vector<AssemblyFinding>& findings)
      : station_(station), assembly_(assembly), findings_(findings) {}

  void Run() {
    if (Contains(assembly_, assembly_)) Report(Kind::ContainsItself, nullptr);
    CompareChildren();
    CompareConsumers();
  }

 private:
  void Report(Kind kind, const ZefBaseUnknown_var& object) {
    findings_.push_back({kind, &station_, &assembly_, object});
  }

  void CompareChildren() {
    ZefListValZefBaseUnknown_var inputs;
    const TuvIBIWItemInfo_var info = ZefBaseUnknown_var(station_.Identity());
    if (info) info->GetInputItems(inputs);
    for (const auto& input : Each<ZefBaseUnknown>(inputs)) {
      const bool isThere = assembly_.OwnChildren().Locate(input) != 0;
      if (!isThere && !WouldContainItself(assembly_, input)) Report(Kind::MissingChild, input);
    }
    for (const auto& child : Each<ZefBaseUnknown>(assembly_.OwnChildren())) {
      if (inputs.Locate(child) == 0) Report(Kind::SurplusChild, child);
    }
  }

  void CompareConsumers() {
    const std::vector<const Activity*> next = NextStations(station_);
    bool isHandedOn = false;
    for (const Activity* const consumer : ConsumersOf(assembly_)) {
      if (std::find(next.begin(), next.end(), StationOf(consumer)) != next.end()) {
        isHandedOn = true;
      } else {
        Report(Kind::WronglyAssigned, consumer->Identity());
      }
    }
    if (isHandedOn || next.empty()) return;
    if (next.size() > 1) return Report(Kind::Undecided, nullptr);
    if (!ContainsOutputOf(assembly_, *next.front()))
      Report(Kind::NotHandedOn, next.front()->Identity());
  }

  const Activity& station_;
  const MfgAssembly& assembly_;
  std::vector<AssemblyFinding>& findings_;
};

std::string NameOf(const ZefBaseUnknown_var& object) {
  const auto* const named = ObjectAs<embedded::Aliased>(object.Get());
  return named ? named->Key() : "?";
}

}  // namespace

std::vector<const Activity*> NextStations(const Activity& iStation) {
  std::vector<const Activity*> following;
  for (const Activity* activity = &iStation; activity && following.empty();
       activity = activity->Parent()) {
    following = FollowingStations(*activity);
  }
  return following;
}

bool ContainsOutputOf(const MfgAssembly& iAssembly, const Activity& iStation) {
  const auto& outputs = iStation.Outputs();
  return std::any_of(outputs.begin(), outputs.end(), [&](const auto& output) {
    const auto* const made = ObjectAs<MfgAssembly>(output->OwnProduct().Get());
    return made && (made == &iAssembly || Contains(iAssembly, *made));
  });
}

std::vector<const Activity*> ConsumersOf(const MfgAssembly& iAssembly) {
  std::vector<const Activity*> consumers;
  for (const embedded::ItemLink* const link : iAssembly.Links()) {
    const Activity* const activity = link->OwnActivity();
    const bool isNew = std::find(consumers.begin(), consumers.end(), activity) == consumers.end();
    if (link->GetSelector() == embedded::ItemLink::FirstAssigned && isNew) {
      consumers.push_back(activity);
    }
  }
  return consumers;
}

std::vector<AssemblyFinding> CheckAssemblies(const embedded::Document& iDocument) {
  std::vector<AssemblyFinding> findings;
  for (const auto& activity : iDocument.Activities()) {
    Interruption::Check();
    if (!activity->IsStation() || activity->Outputs().size() != 1) continue;
    const auto* const assembly =
        ObjectAs<MfgAssembly>(activity->Outputs().front()->OwnProduct().Get());
    if (assembly) StationCheck(*activity, *assembly, findings).Run();
  }
  return findings;
}

std::string Describe(const AssemblyFinding& iFinding) {
  const std::string station = iFinding.station->Key();
  const std::string assembly = iFinding.assembly->OwnName();
  const std::string object = NameOf(iFinding.object);
  switch (iFinding.kind) {
    case Kind::MissingChild:
      return assembly + " lacks " + object + ", which " + station + " takes in; drag " + object +
             " off and drop it again";
    case Kind::SurplusChild:
      return assembly + " contains " + object + ", which " + station + " does not take in; drop " +
             object + " on " + station + " or drag it off";
    case Kind::NotHandedOn:
      return assembly + " of " + station + " is not handed on to " + object + "; drop " + assembly +
             " on " + object;
    case Kind::Undecided:
      return assembly + " of " + station +
             " is handed on to none of the stations that follow; drop " + assembly +
             " on one of them";
    case Kind::WronglyAssigned:
      return assembly + " of " + station + " is taken in by " + object +
             ", which the flow does not lead to; drag it off " + object + " or link " + station +
             " to it";
    case Kind::ContainsItself:
      return assembly + " contains itself; drag off the assembly that leads back to it";
  }
  return {};
}

}  // namespace biwplan
