#include <algorithm>

#include "embedded/Error.h"
#include "embedded/model/ItemLink.h"
#include "host/values/Each.h"
#include "planner/Session.h"
#include "planner/commands/Commands.h"
#include "planner/import/RowFault.h"
#include "planner/language/CommandTable.h"
#include "planner/language/Syntax.h"
#include "planner/report/Describe.h"
#include "planner/report/Text.h"

namespace biwplan {

namespace {

using embedded::Activity;
using embedded::ObjectAs;
using Objects = ZefListValZefBaseUnknown_var;

void AppendOnce(const ZefBaseUnknown_var& object, Objects& list) {
  if (object && list.Locate(object) == 0) list.Append(object);
}

// What an activity and all below it hold.
struct Contents {
  explicit Contents(Activity& top) {
    std::vector<Activity*> open{&top};
    while (!open.empty()) {
      Activity* const activity = open.back();
      open.pop_back();
      if (activity != &top) below.Append(activity->Identity());
      Take(*activity);
      open.insert(open.end(), activity->Children().rbegin(), activity->Children().rend());
    }
  }

  void Take(const Activity& activity) {
    activity.Links().ForEach([this](const embedded::ItemLink& link) {
      const ZefBaseUnknown_var item = link.Item();
      if (TuvIBIWFastener_var(item)) {
        AppendOnce(item, welds);
      } else if (ObjectAs<embedded::MfgAssembly>(item.Get())) {
        AppendOnce(item, takenIn);
      } else {
        AppendOnce(item, ObjectAs<embedded::Product>(item.Get()) ? parts : points);
      }
    });
    for (const auto& output : activity.Outputs()) AppendOnce(output->OwnProduct(), made);
  }

  // "2 activities below it, 3 welds, 1 part"; empty when there is nothing.
  std::string InWords() const {
    std::string text;
    const auto add = [&text](int count, const char* noun, const char* rest) {
      if (count == 0) return;
      text += (text.empty() ? "" : ", ") + Counted(static_cast<std::size_t>(count), noun) + rest;
    };
    add(below.Size(), "activity", " below it");
    add(welds.Size(), "weld", "");
    add(parts.Size(), "part", "");
    add(takenIn.Size(), "assembly", " taken in");
    add(made.Size(), "assembly", " made");
    add(points.Size(), "locating or clamping point", "");
    return text;
  }

  Objects below;
  Objects welds;
  Objects parts;
  Objects takenIn;
  Objects made;
  Objects points;
};

bool IsOnNothing(const ZefBaseUnknown_var& item) {
  const auto* const linked = ObjectAs<embedded::Linkable>(item.Get());
  return linked && linked->Links().empty();
}

bool IsMadeByNobody(const ZefBaseUnknown_var& product) {
  const auto* const assembly = ObjectAs<embedded::MfgAssembly>(product.Get());
  if (!assembly) return false;
  const auto& outputs = assembly->ProducedBy();
  return std::none_of(outputs.begin(), outputs.end(),
                      [](const auto* output) { return output->OwnActivity() != nullptr; });
}

template <class Test>
Json NamesWhere(const Objects& objects, const Test& test) {
  Objects found;
  for (const auto& object : Each<ZefBaseUnknown>(objects)) {
    if (test(object)) found.Append(object);
  }
  return NamesAsJson(&found);
}

class RemoveActivity : public Command {
 public:
  void Declare(Syntax& ioSyntax) override {
    ioSyntax.Required(NameKind::Activity, "ACTIVITY", name_, "Goes out of the process.");
    ioSyntax.Flag("--with-contents", hasContents_,
                  "Also when activities, welds, parts or assemblies are on it.");
  }

  bool MayChange() const override { return true; }
  Answer Run(Session& ioSession) override {
    Activity& activity = ioSession.Find().ActivityOf(name_);
    const Contents contents(activity);
    const std::string words = contents.InWords();
    const std::string key = activity.Key();
    if (!words.empty() && !hasContents_) {
      throw embedded::InputError(Quoted(key) + " is not empty: it has " + words +
                                 "; --with-contents removes it with them");
    }
    const Json below = NamesAsJson(&contents.below);
    ioSession.Document().RemoveActivity(activity);
    ioSession.KeepUpdate();
    ioSession.Changed();
    return {{{"removed", key},
             {"activities", below},
             {"welds", NamesWhere(contents.welds, IsOnNothing)},
             {"parts", NamesWhere(contents.parts, IsOnNothing)},
             {"assemblies", NamesWhere(contents.takenIn, IsOnNothing)},
             {"unmade", NamesWhere(contents.made, IsMadeByNobody)},
             {"points", NamesWhere(contents.points, IsOnNothing)}}};
  }

  std::string InWords(const Json& iData) const override {
    return Printable(iData.at("removed").get<std::string>()) + " removed\n" +
           ListedLine("with it", iData.at("activities")) +
           ListedLine("welds on no activity now", iData.at("welds")) +
           ListedLine("parts taken in nowhere now", iData.at("parts")) +
           ListedLine("assemblies taken in nowhere now", iData.at("assemblies")) +
           ListedLine("assemblies made by nobody now", iData.at("unmade")) +
           ListedLine("locators and clamps on no activity now", iData.at("points"));
  }

 private:
  std::string name_;
  bool hasContents_ = false;
};

}  // namespace

void AddRemoveActivityCommand(CommandTable& ioTable) {
  ioTable.Add<RemoveActivity>("remove-activity", "Takes an activity out of the process.");
}

}  // namespace biwplan
