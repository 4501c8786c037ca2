#include "planner/flow/Conflicts.h"

#include <utility>

#include "planner/check/AssemblyCheck.h"
#include "planner/check/FlowRings.h"
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
  const std::string assembly = finding.assembly ? finding.assembly->Key() : std::string();
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
    case Kind::LeadsBack:
      conflict.reason = assembly + " contains what " + names + " makes";
      break;
    case Kind::TakenInTooDeep:
      conflict.reason = names + " is taken in too deep, by " + finding.taker->Key();
      break;
    case Kind::SeveralOutputs:
      conflict.reason =
          std::to_string(finding.station->Outputs().size()) + " outputs: none gets parts";
      break;
  }
  return conflict;
}

bool IsAboutChildren(Kind kind) { return kind == Kind::MissingChild || kind == Kind::SurplusChild; }

}  // namespace

std::vector<FlowConflict> ConflictsOf(const embedded::Document& iDocument) {
  std::vector<FlowConflict> conflicts;
  for (const FlowRing& ring : RingsOf(iDocument)) {
    conflicts.push_back({ring.front(),
                         "the links run in a ring: " + Describe(ring),
                         {ring[ring.size() > 1 ? 1 : 0]}});
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
