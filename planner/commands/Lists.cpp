#include <functional>

#include "host/component/Handle.h"
#include "host/fastening/Fastening.h"
#include "host/values/Each.h"
#include "host/values/SEQUENCE_ZefBaseUnknown_ptr.h"
#include "planner/Session.h"
#include "planner/commands/Commands.h"
#include "planner/language/CommandTable.h"
#include "planner/language/Syntax.h"
#include "planner/report/Describe.h"
#include "planner/report/Text.h"
#include "services/Received.h"
#include "services/TuvBIWServices.h"

namespace biwplan {

namespace {

std::string Text(const Json& data, const char* field) { return data.at(field).get<std::string>(); }

std::string Coordinate(const Json& data, std::size_t axis) {
  const auto position = data.find("position");
  return position == data.end() ? "" : Number((*position)[axis].get<double>());
}

class WeldTable : public Command {
 public:
  void Declare(Syntax& ioSyntax) override {
    ioSyntax.AnyNumber(NameKind::Weld, "WELD", words_, "Names, patterns or FIRST..LAST.");
    ioSyntax.Flag("--assigned", isAssigned_, "Those on an activity or in the external database.");
    ioSyntax.Flag("--unassigned", isUnassigned_, "The others.");
    ioSyntax.Option(NameKind::Activity, "--activity", "NAME", activity_,
                    "Those on the activity and on the activities below it.");
    ioSyntax.Option(NameKind::Part, "--part", "NAME", part_,
                    "Those that join the part or a part below it.");
    ioSyntax.Note("Positions in mm, that of a seam is its first point.");
  }

  Answer Run(Session& ioSession) override {
    Prepare(ioSession);
    const Names names = ioSession.Find();
    const ZefListValZefBaseUnknown_var welds =
        words_.empty() ? names.AllWelds() : names.Welds(words_);
    Progress progress = ioSession.Watch("welds", static_cast<std::size_t>(welds.Size()));
    Answer answer;
    Json& rows = answer.data["welds"] = Json::array();
    for (const auto& weld : Each<ZefBaseUnknown>(welds)) {
      progress.Advance();
      if (IsWanted(weld)) rows.push_back(DescribeWeld(weld));
    }
    return answer;
  }

  std::string InWords(const Json& iData) const override {
    Table table(
        {{"weld"}, {"type"}, {"x", true}, {"y", true}, {"z", true}, {"parts"}, {"activities"}});
    for (const Json& weld : iData.at("welds")) {
      table.Add({Text(weld, "weld"), Text(weld, "type"), Coordinate(weld, 0), Coordinate(weld, 1),
                 Coordinate(weld, 2), Listed(weld.at("parts")), Listed(weld.at("activities"))});
    }
    return table.Text() + Counted(iData.at("welds").size(), "weld") + "\n";
  }

 private:
  void Prepare(Session& session) {
    if (!activity_.empty()) onActivity_ = WeldsOn(session.Find().ActivityOf(activity_), true);
    if (part_.empty()) return;
    embedded::Product& part = session.Find().PartOf(part_);
    parts_.Append(part.Identity());
    ZefListValZefBaseUnknown_var* list = &parts_;
    TuvBIWServices::GetAllChildParts(part.Identity(), list);
  }

  bool IsWanted(const ZefBaseUnknown_var& weld) const {
    if (!activity_.empty() && onActivity_.Locate(weld) == 0) return false;
    if (!part_.empty() && !JoinsPart(weld)) return false;
    if (isAssigned_ == isUnassigned_) return true;
    const bool isAssigned =
        ActivitiesOf(weld).Size() > 0 || TuvBIWServices::IsWeldAssignedInPask(weld) != 0;
    return isAssigned == isAssigned_;
  }

  bool JoinsPart(const ZefBaseUnknown_var& weld) const {
    ZefListValZefBaseUnknown_var joined;
    TuvIBIWFastener_var(weld)->GetJointedParts(joined);
    ZefListValZefBaseUnknown_var common;
    ZefListValZefBaseUnknown_var::Intersection(joined, parts_, common);
    return common.Size() > 0;
  }

  std::vector<std::string> words_;
  bool isAssigned_ = false;
  bool isUnassigned_ = false;
  std::string activity_;
  std::string part_;
  ZefListValZefBaseUnknown_var onActivity_;
  ZefListValZefBaseUnknown_var parts_;
};

class PartTable : public Command {
 public:
  Answer Run(Session& ioSession) override {
    // What several assemblies share is one part; the list of all products has it for each of them.
    ZefListValZefBaseUnknown_var parts;
    ZefListValZefBaseUnknown_var* list = &parts;
    const auto& roots = ioSession.Document().ProductRoots();
    ZefIProduct_var reference;
    if (!roots.empty()) roots.front()->GetReferenceProduct(reference);
    if (reference) TuvBIWServices::GetAllChildParts(reference, list);
    Answer answer;
    Json& rows = answer.data["parts"] = Json::array();
    for (const auto& part : Each<ZefBaseUnknown>(parts)) {
      const auto* const product = embedded::ObjectAs<embedded::Product>(part);
      if (product) rows.push_back(DescribePart(*product));
    }
    return answer;
  }

  std::string InWords(const Json& iData) const override {
    Table table({{"part"}, {"number"}, {"name"}, {"in"}, {"instance of"}});
    for (const Json& part : iData.at("parts")) {
      table.Add({Text(part, "part"), Text(part, "number"), Text(part, "name"), Text(part, "parent"),
                 Text(part, "instanceOf")});
    }
    return table.Text() + Counted(iData.at("parts").size(), "part") + "\n";
  }
};

class ActivityTable : public Command {
 public:
  Answer Run(Session& ioSession) override {
    Received<ZefListValZefBaseUnknown_var> activities;
    TuvBIWServices::GetListOfAllActivities(activities.Out(), &ioSession.Document());
    Answer answer;
    Json& rows = answer.data["activities"] = Json::array();
    for (const auto& object : Each<ZefBaseUnknown>(activities.Get())) {
      const auto* const activity = embedded::ObjectAs<embedded::Activity>(object);
      if (!activity) continue;
      Json row = DescribeActivity(*activity);
      row["welds"] = WeldsOn(*activity).Size();
      rows.push_back(std::move(row));
    }
    return answer;
  }

  std::string InWords(const Json& iData) const override {
    Table table(
        {{"activity"}, {"label"}, {"role"}, {"task"}, {"in"}, {"welds", true}, {"seconds", true}});
    for (const Json& row : iData.at("activities")) {
      table.Add({Text(row, "activity"), Text(row, "label"), Text(row, "role"), Text(row, "task"),
                 Text(row, "parent"), std::to_string(row.at("welds").get<int>()),
                 Number(row.at("seconds").get<double>())});
    }
    return table.Text() + Counted(iData.at("activities").size(), "activity") + "\n";
  }
};

// The features of one kind in the document.
using Lister = void (*)(_SEQUENCE_ZefBaseUnknown_ptr&);

Json DescribeFeature(const ZefBaseUnknown_var& feature) {
  Json data = {{"name", NameOf(feature)}};
  const auto* const point = embedded::ObjectAs<embedded::PointFeature>(feature);
  if (point) data["position"] = point->Data().position;
  if (!TuvIBIWFastener_var(feature)) return data;
  const Json weld = DescribeWeld(feature);
  for (const char* const field : {"type", "position"}) {
    if (weld.contains(field)) data[field] = weld[field];
  }
  return data;
}

template <Lister List>
class FeatureTable : public Command {
 public:
  Answer Run(Session& ioSession) override {
    ioSession.Document();
    _SEQUENCE_ZefBaseUnknown_ptr features;
    List(features);
    Answer answer;
    Json& rows = answer.data["features"] = Json::array();
    for (int i = 0; i < features.length(); ++i) {
      rows.push_back(DescribeFeature(AdoptAs<ZefBaseUnknown>(features[i])));
    }
    return answer;
  }

  std::string InWords(const Json& iData) const override {
    Table table({{"name"}, {"x", true}, {"y", true}, {"z", true}});
    for (const Json& row : iData.at("features")) {
      table.Add({Text(row, "name"), Coordinate(row, 0), Coordinate(row, 1), Coordinate(row, 2)});
    }
    return table.Text() + std::to_string(iData.at("features").size()) + " in all\n";
  }
};

}  // namespace

void AddListCommands(CommandTable& ioTable) {
  ioTable.Add<WeldTable>("welds", "Lists the welds.");
  ioTable.Add<PartTable>("parts", "Lists the parts.");
  ioTable.Add<ActivityTable>("activities", "Lists the activities.");
  ioTable.Add<FeatureTable<TuvBIWServices::GetListOfAllFasteners>>("fasteners",
                                                                   "Lists every fastener.");
  ioTable.Add<FeatureTable<TuvBIWServices::GetListOfAllLocators>>("locators",
                                                                  "Lists the locating points.");
  ioTable.Add<FeatureTable<TuvBIWServices::GetListOfAllClamps>>("clamps",
                                                                "Lists the clamping points.");
}

}  // namespace biwplan
