#include "planner/flow/Conflicts.h"

#include <utility>

#include "planner/check/AssemblyCheck.h"
#include "planner/names/Names.h"
#include "planner/report/Text.h"

namespace biwplan {

namespace {

using embedded::Activity;
using Kind = AssemblyFinding::Kind;

constexpr std::size_t kMostNames = 3;

std::string Shortened(const std::vector<const Activity*>& activities) {
  std::vector<std::string> names;
  for (const Activity* const activity : activities) names.push_back(activity->Key());
  return ListedBriefly(std::move(names), kMostNames);
}

FlowConflict ConflictOf(const AssemblyFinding& finding, std::vector<std::string> objects) {
  const std::string names = ListedBriefly(std::move(objects), kMostNames);
  const std::string& assembly = finding.assembly->Key();
  FlowConflict conflict{finding.station, ""};
  const auto* const activity = embedded::ObjectAs<Activity>(finding.object.Get());
  if (activity) conflict.towards = {activity};
  switch (finding.kind) {
    case Kind::MissingChild:
      conflict.reason = assembly + " lacks " + names;
      break;
    case Kind::SurplusChild:
      conflict.reason = assembly + " has " + names + " too much";
      break;
    case Kind::NotHandedOn:
      conflict.reason = assembly + " is not handed on to " + names;
      break;
    case Kind::Undecided:
      conflict.towards = NextStations(*finding.station);
      conflict.reason = "several could take in " + assembly + ": " + Shortened(conflict.towards);
      break;
    case Kind::WronglyAssigned:
      conflict.reason = "no flow takes " + assembly + " to " + names;
      break;
    case Kind::ContainsItself:
      conflict.reason = assembly + " contains itself";
      break;
  }
  return conflict;
}

bool IsAboutChildren(Kind kind) { return kind == Kind::MissingChild || kind == Kind::SurplusChild; }

// What `check` has nothing to say about: stations into whose assemblies nothing is filled, and
// rings.
void AddConflictsOf(const Activity& station, std::vector<FlowConflict>& ioConflicts) {
  const auto& outputs = station.Outputs();
  if (outputs.size() > 1) {
    ioConflicts.push_back({&station, std::to_string(outputs.size()) + " outputs: none gets parts"});
  }
  if (outputs.size() != 1) return;
  const std::vector<const Activity*> next = NextStations(station);
  const auto* const assembly =
      embedded::ObjectAs<embedded::MfgAssembly>(outputs.front()->OwnProduct().Get());
  if (!assembly || next.size() != 1 || !ContainsOutputOf(*assembly, *next.front())) return;
  ioConflicts.push_back(
      {&station, assembly->Key() + " contains what " + next.front()->Key() + " makes", next});
}

}  // namespace

std::vector<FlowConflict> ConflictsOf(const embedded::Document& iDocument) {
  std::vector<FlowConflict> conflicts;
  for (const auto& activity : iDocument.Activities()) {
    if (activity->IsStation()) AddConflictsOf(*activity, conflicts);
  }
  const std::vector<AssemblyFinding> findings = CheckAssemblies(iDocument);
  for (std::size_t i = 0; i < findings.size(); ++i) {
    const AssemblyFinding& first = findings[i];
    std::vector<std::string> objects;
    if (first.object) objects.push_back(NameOf(first.object));
    while (IsAboutChildren(first.kind) && i + 1 < findings.size() &&
           findings[i + 1].kind == first.kind && findings[i + 1].assembly == first.assembly &&
           findings[i + 1].station == first.station) {
      objects.push_back(NameOf(findings[++i].object));
    }
    conflicts.push_back(ConflictOf(first, std::move(objects)));
  }
  return conflicts;
}

}  // namespace biwplan
