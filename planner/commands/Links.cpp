#include "embedded/Error.h"
#include "embedded/model/ControlFlow.h"
#include "planner/Session.h"
#include "planner/check/FlowRings.h"
#include "planner/commands/Commands.h"
#include "planner/import/RowFault.h"
#include "planner/language/CommandTable.h"
#include "planner/language/Syntax.h"
#include "planner/report/Text.h"

namespace biwplan {

namespace {

using embedded::Activity;

// A change of the flow between two activities.
class FlowChange : public Command {
 public:
  void Declare(Syntax& ioSyntax) override {
    ioSyntax.Required(NameKind::Activity, "FROM", from_, "Comes before.");
    ioSyntax.Required(NameKind::Activity, "TO", to_, "Comes after.");
  }

  bool MayChange() const override { return true; }
  Answer Run(Session& ioSession) override {
    Activity& from = ioSession.Find().ActivityOf(from_);
    Activity& to = ioSession.Find().ActivityOf(to_);
    Answer answer{{{"from", from.Key()}, {"to", to.Key()}}};
    Change(ioSession, from, to, answer);
    if (!answer.isNo) ioSession.Changed();
    return answer;
  }

 protected:
  static std::string Text(const Json& data, const char* field) {
    return Printable(data.at(field).get<std::string>());
  }

 private:
  virtual void Change(Session& session, Activity& from, Activity& to, Answer& answer) = 0;

  std::string from_;
  std::string to_;
};

class Link : public FlowChange {
 public:
  void Declare(Syntax& ioSyntax) override {
    FlowChange::Declare(ioSyntax);
    ioSyntax.Note("Status 1 when the link is there already.");
  }
  std::string InWords(const Json& iData) const override {
    const bool isThere = iData.at("alreadyThere") == true;
    return Text(iData, "to") + " follows " + Text(iData, "from") +
           (isThere ? ": there already\n" : "\n");
  }

 private:
  void Change(Session& session, Activity& from, Activity& to, Answer& answer) override {
    answer.isNo = from.FlowTo(to) != nullptr;
    answer.data["alreadyThere"] = answer.isNo;
    if (answer.isNo) return;
    const FlowRing ring = WayBetween(to, from);
    session.Document().AddFlow(from, to);
    if (ring.empty()) return;
    session.Warn("The links run in a ring now: " + Describe(ring) + "; unlink one of them");
    for (const Activity* const activity : ring) answer.data["ring"].push_back(activity->Key());
  }
};

class Unlink : public FlowChange {
 public:
  std::string InWords(const Json& iData) const override {
    return Text(iData, "to") + " no longer follows " + Text(iData, "from") + "\n";
  }

 private:
  void Change(Session& session, Activity& from, Activity& to, Answer&) override {
    embedded::ControlFlow* const flow = from.FlowTo(to);
    if (!flow) {
      throw embedded::InputError("no flow leads from " + Quoted(from.Key()) + " to " +
                                 Quoted(to.Key()) + "; 'predecessors' shows what does");
    }
    session.Document().RemoveFlow(*flow);
  }
};

}  // namespace

void AddLinkCommands(CommandTable& ioTable) {
  ioTable.Add<Link>("link", "Draws a flow from one activity to another.");
  ioTable.Add<Unlink>("unlink", "Removes a flow.");
}

}  // namespace biwplan
