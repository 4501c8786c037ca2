#include "planner/check/DocumentCheck.h"

#include <algorithm>
#include <array>
#include <unordered_map>
#include <utility>

#include "host/values/Each.h"
#include "planner/check/AssemblyCheck.h"
#include "planner/check/FlowRings.h"
#include "planner/check/LoadedParts.h"
#include "planner/check/NearPoints.h"
#include "planner/check/UnitHint.h"
#include "planner/check/WeldPlaces.h"
#include "planner/names/Names.h"
#include "planner/report/Describe.h"
#include "planner/report/Text.h"
#include "services/TuvBIWServices.h"

namespace biwplan {

namespace {

using embedded::Activity;
using embedded::ObjectAs;
using Objects = ZefListValZefBaseUnknown_var;

// Welds nearer than this are at one place, mm.
constexpr double kOnePlace = 0.1;

Objects JoinedParts(const ZefBaseUnknown_var& weld) {
  Objects parts;
  TuvIBIWFastener_var(weld)->GetJointedParts(parts);
  return parts;
}

bool IsSameStack(const ZefBaseUnknown_var& a, const ZefBaseUnknown_var& b) {
  const Objects first = JoinedParts(a);
  const Objects second = JoinedParts(b);
  return first.Size() == second.Size() &&
         (first.Size() == 0 || TuvBIWServices::CompareTwoLists(first, second, 1) != 0);
}

const embedded::FastenerFacet* FacetOf(const ZefBaseUnknown_var& weld) {
  return ObjectAs<embedded::FastenerFacet>(weld.Get());
}

class DocumentCheck {
 public:
  DocumentCheck(embedded::Document& document, const CheckOptions& options)
      : document_(document), options_(options), welds_(Names(document).AllWelds()) {}

  std::vector<Finding> Run() {
    CheckAssignments();
    CheckLoaded();
    for (const auto& weld : Each<ZefBaseUnknown>(welds_)) CheckSheets(weld);
    CheckDistances();
    for (const FlowRing& ring : RingsOf(document_)) {
      Report({"ring", "", ring.front()->Key(), "",
              "the links run in a ring: " + Describe(ring) + "; unlink one of them"});
    }
    for (const AssemblyFinding& finding : CheckAssemblies(document_)) {
      Report({"assembly", "", finding.station->Key(), "", Describe(finding)});
    }
    return std::move(findings_);
  }

 private:
  void Report(Finding finding) { findings_.push_back(std::move(finding)); }

  void CheckAssignments() {
    for (const auto& weld : Each<ZefBaseUnknown>(welds_)) {
      const Objects activities = ActivitiesOf(weld);
      const std::string name = NameOf(weld);
      if (activities.Size() == 0) {
        Report({"unassigned", name, "", "", name + " is on no activity; assign it to one"});
      }
      if (activities.Size() > 1) {
        Report({"several activities", name, NameOf(activities[1]), "",
                name + " is on " + Listed(NamesOf(&activities)) + "; leave it on one of them"});
      }
    }
  }

  // Each weld on each of its activities with each of its parts.
  void CheckLoaded() {
    std::vector<LoadedQuestion> questions;
    std::vector<ZefBaseUnknown_var> askedFor;
    for (const auto& weld : Each<ZefBaseUnknown>(welds_)) {
      const Objects parts = JoinedParts(weld);
      for (const auto& activity : Each<ZefBaseUnknown>(ActivitiesOf(weld))) {
        for (const auto& part : Each<ZefBaseUnknown>(parts)) {
          questions.push_back({ObjectAs<Activity>(activity.Get()), part.Get()});
          askedFor.push_back(weld);
        }
      }
    }
    const std::vector<bool> isLoaded = AreLoaded(document_, questions);
    std::vector<LoadedQuestion> early;
    std::vector<ZefBaseUnknown_var> earlyWelds;
    for (std::size_t i = 0; i < questions.size(); ++i) {
      if (isLoaded[i]) continue;
      if (ArrivalOf(questions[i].part).empty()) {
        ReportNotLoaded(askedFor[i], questions[i]);
      } else {
        early.push_back(questions[i]);
        earlyWelds.push_back(askedFor[i]);
      }
    }
    const std::vector<const Activity*> places = FirstPlaces(document_, earlyWelds);
    for (std::size_t i = 0; i < early.size(); ++i) {
      ReportTooEarly(earlyWelds[i], early[i], places[i]);
    }
  }

  void ReportNotLoaded(const ZefBaseUnknown_var& weld, const LoadedQuestion& question) {
    const std::string& activity = question.activity->Key();
    const std::string part = NameOf(question.part);
    Report({"part not loaded", NameOf(weld), activity, part,
            NameOf(weld) + " on " + activity + " joins " + part +
                ", which is loaded nowhere; drop it on " + activity +
                " or on an activity before it"});
  }

  // The activity where a part comes in need not have the others: after parallel branches only what
  // follows the join has all.
  void ReportTooEarly(const ZefBaseUnknown_var& weld, const LoadedQuestion& question,
                      const Activity* place) {
    const std::string& activity = question.activity->Key();
    const std::string part = NameOf(question.part);
    const std::string advice =
        place ? "; move the weld to " + place->Key() + ", the first activity that has all its parts"
              : ", and no activity that takes the weld has all its parts; drop " + part + " on " +
                    activity + " or on an activity before it";
    Report({"too early", NameOf(weld), activity, part,
            NameOf(weld) + " on " + activity + " joins " + part + ", which does not come before " +
                ArrivalOf(question.part) + advice});
  }

  // The first activity that has the part as an item, itself or through an assembly of products.
  std::string ArrivalOf(const ZefBaseUnknown* part) {
    if (arrivals_.empty()) FindArrivals();
    const auto found = arrivals_.find(part);
    return found == arrivals_.end() ? std::string() : found->second;
  }

  void FindArrivals() {
    arrivals_.emplace(nullptr, "");
    for (const auto& activity : document_.Activities()) {
      Objects parts;
      Objects* list = &parts;
      TuvBIWServices::GetAssignedParts(ZefBaseUnknown_var(activity->Identity()), list);
      for (const auto& part : Each<ZefBaseUnknown>(parts)) {
        arrivals_.emplace(part.Get(), activity->Key());
      }
    }
  }

  void CheckSheets(const ZefBaseUnknown_var& weld) {
    const auto* const facet = FacetOf(weld);
    const std::string name = NameOf(weld);
    if (!facet) return;
    const std::vector<std::string>& missing = facet->Fastening().missingParts;
    for (const std::string& part : missing) {
      Report(
          {"unknown part", name, "", part,
           name + " joins " + part + ", which is no part of the product; correct the weld list"});
    }
    const std::size_t sheets = static_cast<std::size_t>(facet->OwnParts().Size()) + missing.size();
    const bool isSpot = static_cast<bool>(TuvISpotWeld_var(weld));
    if (!isSpot || (sheets >= 2 && sheets <= 3)) return;
    Report({"sheets", name, "", "",
            name + " joins " + Counted(sheets, "part") + "; a spot weld joins two or three"});
  }

  void CheckDistances() {
    std::vector<std::array<double, 3>> points;
    std::vector<ZefBaseUnknown_var> spots;
    for (const auto& spot : Each<TuvISpotWeld>(welds_)) {
      points.push_back({spot->GetX(), spot->GetY(), spot->GetZ()});
      spots.emplace_back(spot);
    }
    unitHint_ = UnitHint(points);
    for (const NearPair& pair : FindNearPairs(points, options_.pitch)) {
      ReportPair(spots[pair.first], spots[pair.second], pair.distance);
    }
  }

  void ReportPair(const ZefBaseUnknown_var& first, const ZefBaseUnknown_var& second,
                  double distance) {
    const std::string names = NameOf(first) + " and " + NameOf(second);
    if (!unitHint_.empty()) {
      return Report({distance >= kOnePlace ? "too close" : "same place", NameOf(first), "", "",
                     names + " are " + Number(distance) + " mm apart; " + unitHint_});
    }
    if (distance >= kOnePlace) {
      return Report({"too close", NameOf(first), "", "",
                     names + " are " + Number(distance) + " mm apart, less than the pitch of " +
                         Number(options_.pitch) + " mm; move one of them"});
    }
    const std::string stack = IsSameStack(first, second)
                                  ? " with the same parts; remove one of them"
                                  : " with different parts; check which parts meet there";
    Report({"same place", NameOf(first), "", "", names + " are at one place" + stack});
  }

  embedded::Document& document_;
  const CheckOptions& options_;
  Objects welds_;
  std::vector<Finding> findings_;
  // Empty unless the positions look like another unit than mm.
  std::string unitHint_;
  // By part.
  std::unordered_map<const ZefBaseUnknown*, std::string> arrivals_;
};

}  // namespace

const std::vector<std::string>& FindingKinds() {
  static const std::vector<std::string> kinds = {
      "unassigned", "several activities", "part not loaded", "too early", "unknown part",
      "sheets",     "too close",          "same place",      "ring",      "assembly"};
  return kinds;
}

std::vector<Finding> CheckDocument(embedded::Document& iDocument, const CheckOptions& iOptions) {
  std::vector<Finding> findings = DocumentCheck(iDocument, iOptions).Run();
  const std::vector<std::string>& kinds = FindingKinds();
  const auto rank = [&kinds](const Finding& finding) {
    return std::find(kinds.begin(), kinds.end(), finding.kind);
  };
  std::stable_sort(findings.begin(), findings.end(),
                   [&](const Finding& a, const Finding& b) { return rank(a) < rank(b); });
  return findings;
}

}  // namespace biwplan
