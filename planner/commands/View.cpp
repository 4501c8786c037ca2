#include "embedded/Error.h"
#include "embedded/scene/SceneTree.h"
#include "host/values/Each.h"
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

using Objects = ZefListValZefBaseUnknown_var;

constexpr char kWeldsHelp[] = "Names, patterns or FIRST..LAST; all welds when none is named.";

class ViewCommand : public Command {
 public:
  void Declare(Syntax& ioSyntax) override {
    ioSyntax.AnyNumber(NameKind::Weld, "WELD", words_, kWeldsHelp);
  }

 protected:
  Objects Welds(Session& session) const {
    return words_.empty() ? session.Find().AllWelds() : session.Find().Welds(words_);
  }

  std::vector<std::string> words_;
};

enum Visualisation { kLabelled = 0, kPlain = 1 };

// The spot welds among these that have a label of their own, or those that have none.
Objects Visualised(Objects& welds, Visualisation mode) {
  Received<Objects> found;
  TuvBIWServices::CheckVisualizationOfKoraWelds(&welds, found.Out(), mode);
  return found ? *found : Objects();
}

class Visualise : public ViewCommand {
 public:
  void Declare(Syntax& ioSyntax) override {
    ViewCommand::Declare(ioSyntax);
    ioSyntax.Flag("--add", adds_, "Adds a label also where there is one, and takes none away.");
    ioSyntax.Note("Labels last until the document is left; they are not saved.");
  }

  Answer Run(Session& ioSession) override {
    constexpr int kToggle = 0;
    constexpr int kAdd = 2;
    Objects welds = Welds(ioSession);
    TuvBIWServices::VisualizationKoraWeldList(&welds, adds_ ? kAdd : kToggle, 0, 0, 0, 0, 0);
    const Objects labelled = Visualised(welds, kLabelled);
    const Objects plain = Visualised(welds, kPlain);
    return {{{"labelled", NamesAsJson(&labelled)}, {"plain", NamesAsJson(&plain)}}};
  }

  std::string InWords(const Json& iData) const override {
    return Counted(iData.at("labelled").size(), "weld") + " now with label, " +
           std::to_string(iData.at("plain").size()) + " without\n";
  }

 private:
  bool adds_ = false;
};

class WhichVisualised : public ViewCommand {
 public:
  void Declare(Syntax& ioSyntax) override {
    ViewCommand::Declare(ioSyntax);
    ioSyntax.Flag("--not", isInverse_, "Those without label.");
    ioSyntax.Note("Asks for spot welds.");
  }

  Answer Run(Session& ioSession) override {
    Objects welds = Welds(ioSession);
    const Objects found = Visualised(welds, isInverse_ ? kPlain : kLabelled);
    return {{{"visualised", !isInverse_}, {"welds", NamesAsJson(&found)}}};
  }

  std::string InWords(const Json& iData) const override {
    const Json& welds = iData.at("welds");
    return Counted(welds.size(), "spot weld") +
           (iData.at("visualised") == true ? " with label\n" : " without label\n") +
           Wrapped(welds, 2);
  }

 private:
  bool isInverse_ = false;
};

class Labels : public ViewCommand {
 public:
  void Declare(Syntax& ioSyntax) override {
    ioSyntax.Choice({"on", "off"}, word_, "Shows temporary labels, or takes them away.");
    ViewCommand::Declare(ioSyntax);
  }

  Answer Run(Session& ioSession) override {
    Objects welds = Welds(ioSession);
    const bool isOn = word_ == "on";
    const int count = isOn ? 0 : ioSession.DropLabels();
    if (isOn && ioSession.ShowLabels(welds)) return {{{"on", true}, {"labels", welds.Size()}}};
    return {{{"on", isOn}, {"labels", count}}, count == 0};
  }

  std::string InWords(const Json& iData) const override {
    return Counted(iData.at("labels").get<std::size_t>(), "label") +
           (iData.at("on") == true ? " shown\n" : " taken away\n");
  }

 private:
  std::string word_;
};

class Highlight : public Command {
 public:
  void Declare(Syntax& ioSyntax) override {
    ioSyntax.Required(NameKind::Weld, "NAME", name_, "A weld, or else a part.");
    ioSyntax.Note("It alone is highlighted from then on.");
  }

  Answer Run(Session& ioSession) override {
    const Names names = ioSession.Find();
    ZefBaseUnknown_var object = names.FeatureOf(name_);
    if (!object) object = names.PartOf(name_).Identity();
    TuvBIWServices::SetHighlight(object);
    const embedded::SceneTree scene = embedded::SceneOf(ioSession.Application().MainViewer());
    return {{{"highlighted", scene.highlighted}}};
  }

  std::string InWords(const Json& iData) const override {
    return "highlighted: " + Listed(iData.at("highlighted")) + "\n";
  }

 private:
  std::string name_;
};

class HideOrShow : public ViewCommand {
 public:
  explicit HideOrShow(bool isShow) : isShow_(isShow) {}

  void Declare(Syntax& ioSyntax) override {
    ViewCommand::Declare(ioSyntax);
    ioSyntax.Note("The document keeps what is hidden.");
  }

  bool MayChange() const override { return true; }
  Answer Run(Session& ioSession) override {
    Objects welds = Welds(ioSession);
    TuvBIWServices::HideShowWeldPointsInList(&welds, isShow_ ? 1 : 0);
    if (welds.Size() > 0) ioSession.Changed();
    return {{{"shown", isShow_}, {"welds", NamesAsJson(&welds)}}};
  }

  std::string InWords(const Json& iData) const override {
    return Counted(iData.at("welds").size(), "weld") + (isShow_ ? " shown\n" : " hidden\n");
  }

 private:
  bool isShow_;
};

struct Hide : HideOrShow {
  Hide() : HideOrShow(false) {}
};

struct ShowPoints : HideOrShow {
  ShowPoints() : HideOrShow(true) {}
};

}  // namespace

void AddViewCommands(CommandTable& ioTable) {
  ioTable.Add<Visualise>("visualise", "Puts labels on welds that have none, and takes the others.");
  ioTable.Add<WhichVisualised>("which-visualised", "Lists the spot welds that have a label.");
  ioTable.Add<Labels>("labels", "Shows temporary labels of welds, or takes them away.");
  ioTable.Add<Highlight>("highlight", "Highlights one object.");
  ioTable.Add<Hide>("hide", "Hides welds.");
  ioTable.Add<ShowPoints>("show-points", "Shows welds again.");
}

}  // namespace biwplan
