#include "host/values/Each.h"
#include "planner/Session.h"
#include "planner/commands/Commands.h"
#include "planner/language/CommandTable.h"
#include "planner/language/Syntax.h"
#include "planner/report/Describe.h"
#include "planner/report/Text.h"
#include "services/TuvBIWServices.h"

namespace biwplan {

namespace {

// Asks one question of each weld that the user names.
class Question : public Command {
 public:
  Answer Run(Session& ioSession) override {
    Answer answer;
    Json& welds = answer.data["welds"] = Json::array();
    const ZefListValZefBaseUnknown_var subjects = Subjects(ioSession);
    Progress progress = ioSession.Watch("welds", static_cast<std::size_t>(subjects.Size()));
    for (const auto& weld : Each<ZefBaseUnknown>(subjects)) {
      progress.Advance();
      const bool isYes = IsYes(weld);
      welds.push_back({{"weld", NameOf(weld)}, {"answer", isYes}});
      answer.isNo = answer.isNo || !isYes;
    }
    return answer;
  }

  std::string InWords(const Json& iData) const override {
    std::string text;
    for (const Json& weld : iData.at("welds")) {
      text += Printable(weld.at("weld").get<std::string>()) + ": " +
              (weld.at("answer") == true ? Yes() : No()) + "\n";
    }
    return text;
  }

 protected:
  // What is asked about; prepares for the questions.
  virtual ZefListValZefBaseUnknown_var Subjects(Session& session) = 0;
  virtual bool IsYes(const ZefBaseUnknown_var& weld) = 0;
  virtual std::string Yes() const = 0;
  virtual std::string No() const = 0;

  std::vector<std::string> words_;
};

class IsAssigned : public Question {
 public:
  void Declare(Syntax& ioSyntax) override {
    ioSyntax.OneOrMore(NameKind::Weld, "WELD", words_, "Names, patterns or FIRST..LAST.");
    ioSyntax.Note(
        "Asks for spot welds, on any activity or in the external database; of seams the\n"
        "answer is no, 'activities-of' knows them. Status 1 when an answer is no.");
  }

 private:
  ZefListValZefBaseUnknown_var Subjects(Session& session) override {
    session.RequireNoLostDatabase();
    assigned_ = WeldsOn(*session.Document().Root(), true);
    return session.Find().Welds(words_);
  }
  bool IsYes(const ZefBaseUnknown_var& weld) override {
    return TuvBIWServices::IsWeldAssigned(weld, &assigned_) != 0;
  }
  std::string Yes() const override { return "assigned"; }
  std::string No() const override { return "not assigned"; }

  ZefListValZefBaseUnknown_var assigned_;
};

class IsValidFor : public Question {
 public:
  void Declare(Syntax& ioSyntax) override {
    ioSyntax.Required(NameKind::Activity, "ACTIVITY", name_, "Judges the welds.");
    ioSyntax.OneOrMore(NameKind::Weld, "WELD", words_, "Names, patterns or FIRST..LAST.");
    ioSyntax.Note("Status 1 when an answer is no.");
  }

 private:
  ZefListValZefBaseUnknown_var Subjects(Session& session) override {
    activity_ = session.Find().ActivityOf(name_).Identity();
    return session.Find().Welds(words_);
  }
  bool IsYes(const ZefBaseUnknown_var& weld) override {
    return TuvBIWServices::IsValidWeldForActivity(weld, activity_) != 0;
  }
  std::string Yes() const override { return "of a kind that " + Printable(name_) + " takes"; }
  std::string No() const override { return "not of a kind that " + Printable(name_) + " takes"; }

  std::string name_;
  ZefISPPActivity_var activity_;
};

class CheckAssignment : public Question {
 public:
  void Declare(Syntax& ioSyntax) override {
    ioSyntax.Required(NameKind::Activity, "ACTIVITY", name_, "Would take the welds.");
    ioSyntax.OneOrMore(NameKind::Weld, "WELD", words_, "In this order.");
    ioSyntax.Note(
        "A weld may be assigned that is neither on the activity nor named before in the\n"
        "same command. Status 1 when an answer is no.");
  }

 private:
  // A weld that is named twice is asked about twice.
  ZefListValZefBaseUnknown_var Subjects(Session& session) override {
    const Names names = session.Find();
    activity_ = names.ActivityOf(name_).Identity();
    ZefListValZefBaseUnknown_var welds;
    for (const std::string& word : words_) welds.Append(names.Welds({word}));
    return welds;
  }
  bool IsYes(const ZefBaseUnknown_var& weld) override {
    const bool isFree =
        Succeeded(TuvBIWServices::CheckWeldAssignement(weld, activity_, &pending_, 0));
    if (isFree) pending_.Append(weld);
    return isFree;
  }
  std::string Yes() const override { return "may be assigned to " + Printable(name_); }
  std::string No() const override { return "would be on " + Printable(name_) + " twice"; }

  std::string name_;
  ZefISPPActivity_var activity_;
  ZefListValZefBaseUnknown_var pending_;
};

class ActivitiesOfWeld : public Command {
 public:
  void Declare(Syntax& ioSyntax) override {
    ioSyntax.OneOrMore(NameKind::Weld, "WELD", words_, "Names, patterns or FIRST..LAST.");
    ioSyntax.Note("Status 1 when a weld is on no activity.");
  }

  Answer Run(Session& ioSession) override {
    Answer answer;
    Json& welds = answer.data["welds"] = Json::array();
    for (const auto& weld : Each<ZefBaseUnknown>(ioSession.Find().Welds(words_))) {
      const ZefListValZefBaseUnknown_var activities = ActivitiesOf(weld);
      welds.push_back({{"weld", NameOf(weld)}, {"activities", NamesAsJson(&activities)}});
      answer.isNo = answer.isNo || activities.Size() == 0;
    }
    return answer;
  }

  std::string InWords(const Json& iData) const override {
    std::string text;
    for (const Json& weld : iData.at("welds")) {
      const Json& activities = weld.at("activities");
      text += Printable(weld.at("weld").get<std::string>()) + ": " +
              (activities.empty() ? "on no activity" : "on " + Listed(activities)) + "\n";
    }
    return text;
  }

 private:
  std::vector<std::string> words_;
};

}  // namespace

void AddQuestionCommands(CommandTable& ioTable) {
  ioTable.Add<CheckAssignment>("check-assignment", "Says whether welds may still be assigned.");
  ioTable.Add<ActivitiesOfWeld>("activities-of", "Names the activities that have a weld.");
  ioTable.Add<IsAssigned>("is-assigned", "Says whether welds are assigned anywhere.");
  ioTable.Add<IsValidFor>("is-valid-for", "Says whether an activity takes welds of their kind.");
}

}  // namespace biwplan
