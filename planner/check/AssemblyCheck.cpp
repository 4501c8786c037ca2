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

// The station that an activity is or lies in, at any depth.
const Activity* StationAround(const Activity* activity) {
  while (activity && !activity->IsStation()) activity = activity->Parent();
  return activity;
}

// Stations take in what is first assigned to themselves and to the operations directly below.
bool IsTooDeep(const Activity& activity) {
  return !activity.IsStation() && activity.Parent() && !activity.Parent()->IsStation();
}

bool TakesIn(const Activity& activity, const ZefBaseUnknown* item) {
  const std::vector<embedded::ItemLink*> links = activity.LinksOf(item);
  return std::any_of(links.begin(), links.end(), [](const embedded::ItemLink* link) {
    return link->GetSelector() == embedded::ItemLink::FirstAssigned;
  });
}

bool IsPartOrAssembly(const ZefBaseUnknown_var& item) {
  return ObjectAs<embedded::Product>(item.Get()) || ObjectAs<MfgAssembly>(item.Get());
}

// What lies in the station's operations, without stations inside.
std::vector<const Activity*> BelowOperations(const Activity& station) {
  std::vector<const Activity*> found;
  std::vector<const Activity*> open{&station};
  while (!open.empty()) {
    const Activity* const activity = open.back();
    open.pop_back();
    if (IsTooDeep(*activity)) found.push_back(activity);
    for (auto child = activity->Children().rbegin(); child != activity->Children().rend();
         ++child) {
      if (!(*child)->IsStation()) open.push_back(*child);
    }
  }
  return found;
}

class StationCheck {
 public:
  StationCheck(const Activity& station, const MfgAssembly& assembly,
               std::vector<AssemblyFinding>& findings)
      : station_(station), assembly_(assembly), findings_(findings) {}

  void Run() {
    if (Contains(assembly_, assembly_)) Report(Kind::ContainsItself, nullptr);
    CompareChildren();
    LookDeeper();
    CompareConsumers();
  }

 private:
  void Report(Kind kind, const ZefBaseUnknown_var& object) {
    findings_.push_back({kind, &station_, &assembly_, object});
  }

  void CompareChildren() {
    const TuvIBIWItemInfo_var info = ZefBaseUnknown_var(station_.Identity());
    if (info) info->GetInputItems(inputs_);
    for (const auto& input : Each<ZefBaseUnknown>(inputs_)) {
      const bool isThere = assembly_.OwnChildren().Locate(input) != 0;
      if (!isThere && !WouldContainItself(assembly_, input)) Report(Kind::MissingChild, input);
    }
    for (const auto& child : Each<ZefBaseUnknown>(assembly_.OwnChildren())) {
      if (inputs_.Locate(child) == 0) Report(Kind::SurplusChild, child);
    }
  }

  void LookDeeper() {
    for (const Activity* const activity : BelowOperations(station_)) {
      activity->Links().ForEach([&](const embedded::ItemLink& link) {
        const bool isInput = link.GetSelector() == embedded::ItemLink::FirstAssigned &&
                             IsPartOrAssembly(link.Item());
        if (!isInput || inputs_.Locate(link.Item()) != 0) return;
        inputs_.Append(link.Item());
        findings_.push_back({Kind::TakenInTooDeep, &station_, &assembly_, link.Item(), activity});
      });
    }
  }

  void CompareConsumers() {
    const std::vector<const Activity*> next = NextStations(station_);
    bool isHandedOn = false;
    for (const Activity* const consumer : ConsumersOf(assembly_)) {
      if (std::find(next.begin(), next.end(), StationAround(consumer)) != next.end()) {
        isHandedOn = isHandedOn || !IsTooDeep(*consumer);
      } else {
        Report(Kind::WronglyAssigned, consumer->Identity());
      }
    }
    if (next.size() == 1 && ContainsOutputOf(assembly_, *next.front())) {
      return Report(Kind::LeadsBack, next.front()->Identity());
    }
    if (isHandedOn || next.empty()) return;
    if (next.size() > 1) return Report(Kind::Undecided, nullptr);
    Report(Kind::NotHandedOn, next.front()->Identity());
  }

  const Activity& station_;
  const MfgAssembly& assembly_;
  std::vector<AssemblyFinding>& findings_;
  // Of the station, then what is found too deep.
  ZefListValZefBaseUnknown_var inputs_;
};

std::string NameOf(const ZefBaseUnknown_var& object) {
  const auto* const named = ObjectAs<embedded::Aliased>(object.Get());
  return named ? named->Key() : "?";
}

// Where a drop fills the item into the station's assembly at once: whoever does not have it yet.
std::string DropAdvice(const Activity& station, const ZefBaseUnknown_var& item) {
  const std::string name = NameOf(item);
  const bool isOn = !station.OwnDocument()->settings.updateThrough.empty();
  const std::string begin = isOn ? "; " : "; with update on, ";
  if (!TakesIn(station, item.Get())) return begin + "drop " + name + " on " + station.Key();
  for (const Activity* const child : station.Children()) {
    if (child->IsStation() || TakesIn(*child, item.Get())) continue;
    return begin + "drop " + name + " on " + child->Key();
  }
  return begin + "drag " + name + " off " + station.Key() + " and drop it there again";
}

std::string DeepAdvice(const AssemblyFinding& finding) {
  const Activity* operation = finding.taker;
  while (operation->Parent() != finding.station) operation = operation->Parent();
  return NameOf(finding.object) + " is taken in by " + finding.taker->Key() + ", too deep below " +
         finding.station->Key() + " to belong to its assembly; drop " + NameOf(finding.object) +
         " on " + operation->Key();
}

std::string LinkAdvice(const AssemblyFinding& finding) {
  const auto* const taker = ObjectAs<Activity>(finding.object.Get());
  const Activity* const around = StationAround(taker);
  const bool isOther = around && around != finding.station;
  return "drag it off " + NameOf(finding.object) +
         (isOther ? " or link " + finding.station->Key() + " to " + around->Key() : "");
}

std::string ShownName(const MfgAssembly* assembly) {
  if (!assembly) return {};
  return assembly->OwnName().empty() ? assembly->Key() : assembly->OwnName();
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
    if (!activity->IsStation() || activity->Outputs().empty()) continue;
    if (activity->Outputs().size() > 1) {
      findings.push_back({Kind::SeveralOutputs, activity.Get(), nullptr, nullptr});
      continue;
    }
    const auto* const assembly =
        ObjectAs<MfgAssembly>(activity->Outputs().front()->OwnProduct().Get());
    if (assembly) StationCheck(*activity, *assembly, findings).Run();
  }
  return findings;
}

std::string Describe(const AssemblyFinding& iFinding) {
  const std::string station = iFinding.station->Key();
  const std::string assembly = ShownName(iFinding.assembly);
  const std::string object = NameOf(iFinding.object);
  switch (iFinding.kind) {
    case Kind::MissingChild:
      return assembly + " lacks " + object + ", which " + station + " takes in" +
             DropAdvice(*iFinding.station, iFinding.object);
    case Kind::SurplusChild:
      return assembly + " contains " + object + ", which " + station + " does not take in; drop " +
             object + " on " + station + ", and drag it off again if it is to go";
    case Kind::NotHandedOn:
      return assembly + " of " + station + " is not handed on to " + object + "; drop " + assembly +
             " on " + object;
    case Kind::Undecided:
      return assembly + " of " + station +
             " is handed on to none of the stations that follow; drop " + assembly +
             " on one of them";
    case Kind::WronglyAssigned:
      return assembly + " of " + station + " is taken in by " + object +
             ", which the flow does not lead to; " + LinkAdvice(iFinding);
    case Kind::ContainsItself:
      return assembly + " contains itself; drag off the assembly that leads back to it";
    case Kind::LeadsBack:
      return assembly + " of " + station + " contains what " + object +
             " makes, which comes next; unlink the flow that leads back";
    case Kind::TakenInTooDeep:
      return DeepAdvice(iFinding);
    case Kind::SeveralOutputs:
      return station + " has " + std::to_string(iFinding.station->Outputs().size()) +
             " outputs, so that no part goes into any; remove all but one with remove-output";
  }
  return {};
}

}  // namespace biwplan
