#include "planner/Session.h"
#include "planner/check/LoadedParts.h"
#include "planner/commands/Commands.h"
#include "planner/language/CommandTable.h"
#include "planner/language/Syntax.h"
#include "planner/report/Describe.h"
#include "planner/report/Text.h"
#include "services/TuvBIWServices.h"

namespace biwplan {

namespace {

using Objects = ZefListValZefBaseUnknown_var;
using Services = TuvBIWServices;

// Prints parts, one in a line.
class PartNames : public Command {
 public:
  Answer Run(Session& ioSession) override {
    Objects parts;
    const std::string of = Find(ioSession, parts);
    return {{{"of", of}, {"parts", NamesAsJson(&parts)}}, parts.Size() == 0};
  }

  std::string InWords(const Json& iData) const override {
    std::string text;
    for (const Json& part : iData.at("parts")) text += Printable(part.get<std::string>()) + "\n";
    return text.empty() ? "none\n" : text;
  }

 protected:
  // Answers the name of what was asked about.
  virtual std::string Find(Session& session, Objects& parts) = 0;

  std::string name_;
};

class LoadedParts : public PartNames {
 public:
  void Declare(Syntax& ioSyntax) override {
    ioSyntax.Required(NameKind::Activity, "ACTIVITY", name_, "Where the parts are.");
    ioSyntax.Note(
        "Each once: brought by earlier activities, its own, and those of its operations.");
  }

 private:
  std::string Find(Session& session, Objects& parts) override {
    embedded::Activity& activity = session.Find().ActivityOf(name_);
    parts = LoadedAt(activity);
    return activity.Key();
  }
};

class AssignedParts : public PartNames {
 public:
  void Declare(Syntax& ioSyntax) override {
    ioSyntax.Required(NameKind::Activity, "ACTIVITY", name_, "Has the parts as its own items.");
  }

 private:
  std::string Find(Session& session, Objects& parts) override {
    const ZefISPPActivity_var activity = session.Find().ActivityOf(name_).Identity();
    Objects* list = &parts;
    Services::GetAssignedParts(activity, list);
    return NameOf(activity);
  }
};

class ChildParts : public PartNames {
 public:
  void Declare(Syntax& ioSyntax) override {
    ioSyntax.Required(NameKind::Part, "PART", name_, "An assembly.");
    ioSyntax.Flag("--all", isDeep_, "Also what is below its children.");
  }

 private:
  std::string Find(Session& session, Objects& parts) override {
    const ZefIProduct_var part = session.Find().PartOf(name_).Identity();
    Objects* list = &parts;
    (isDeep_ ? Services::GetAllChildParts : Services::GetChildParts)(part, list);
    return NameOf(part);
  }

  bool isDeep_ = false;
};

class SiblingParts : public PartNames {
 public:
  void Declare(Syntax& ioSyntax) override {
    ioSyntax.Required(NameKind::Part, "PART", name_, "Its neighbours in the assembly are printed.");
  }

 private:
  std::string Find(Session& session, Objects& parts) override {
    const ZefIProduct_var part = session.Find().PartOf(name_).Identity();
    Objects* list = &parts;
    Services::GetSiblingParts(part, list);
    return NameOf(part);
  }
};

// A question about an activity that is answered yes or no.
class AtActivity : public Command {
 public:
  Answer Run(Session& ioSession) override {
    embedded::Activity& activity = ioSession.Find().ActivityOf(activity_);
    Objects loaded = LoadedAt(activity);
    const bool isYes = IsYes(ioSession, loaded);
    return {{{"asked", asked_}, {"activity", activity.Key()}, {"answer", isYes}}, !isYes};
  }

  std::string InWords(const Json& iData) const override {
    return iData.at("answer") == true ? "yes\n" : "no\n";
  }

 protected:
  virtual bool IsYes(Session& session, Objects& loaded) = 0;

  std::string asked_;
  std::string activity_;
};

class PartInList : public AtActivity {
 public:
  void Declare(Syntax& ioSyntax) override {
    ioSyntax.Required(NameKind::Part, "NUMBER", asked_, "A part number, exactly.");
    ioSyntax.Required(NameKind::Activity, "ACTIVITY", activity_, "Where it may be loaded.");
    ioSyntax.Note("Status 1 when it is not.");
  }

 private:
  bool IsYes(Session&, Objects& loaded) override {
    ZefUnicodeString number = asked_;
    return Services::IsPartInList(number, &loaded) != 0;
  }
};

class PartsLoadedFor : public AtActivity {
 public:
  void Declare(Syntax& ioSyntax) override {
    ioSyntax.Required(NameKind::Weld, "WELD", asked_, "Joins the parts.");
    ioSyntax.Required(NameKind::Activity, "ACTIVITY", activity_, "Where they may be loaded.");
    ioSyntax.Note("Status 1 when one is missing.");
  }

 private:
  bool IsYes(Session& session, Objects& loaded) override {
    const ZefBaseUnknown_var weld = session.Find().WeldOf(asked_);
    return Services::ArePartsLoaded(weld, &loaded) != 0;
  }
};

}  // namespace

void AddPartsAtCommands(CommandTable& ioTable) {
  ioTable.Add<LoadedParts>("loaded-parts", "Prints the parts that are present at an activity.");
  ioTable.Add<AssignedParts>("assigned-parts", "Prints the parts that an activity itself has.");
  ioTable.Add<ChildParts>("child-parts", "Prints the parts of an assembly.");
  ioTable.Add<SiblingParts>("sibling-parts", "Prints the parts beside one in its assembly.");
  ioTable.Add<PartInList>("part-in-list", "Says whether a part number is loaded at an activity.");
  ioTable.Add<PartsLoadedFor>("parts-loaded-for", "Says whether all parts of a weld are loaded.");
}

}  // namespace biwplan
