#include "embedded/Error.h"
#include "planner/Session.h"
#include "planner/commands/Commands.h"
#include "planner/import/RowFault.h"
#include "planner/import/Values.h"
#include "planner/language/CommandTable.h"
#include "planner/language/Syntax.h"
#include "planner/names/Items.h"
#include "planner/report/Describe.h"
#include "planner/report/Text.h"
#include "services/TuvBIWServices.h"

namespace biwplan {

namespace {

using embedded::Activity;
using embedded::InputError;

constexpr int kFirstAssigned = 2;

std::string Text(const Json& data, const char* field) {
  return Printable(data.at(field).get<std::string>());
}

// A change of the process that names two things.
class Gesture : public Command {
 public:
  bool MayChange() const override { return true; }
  Answer Run(Session& ioSession) override {
    Json data = Change(ioSession);
    ioSession.Changed();
    return {std::move(data)};
  }

 protected:
  // Makes the change and tells of it; InputError when it cannot be made.
  virtual Json Change(Session& session) = 0;

  std::string first_;
  std::string second_;
};

class AddOutput : public Gesture {
 public:
  void Declare(Syntax& ioSyntax) override {
    ioSyntax.Required(NameKind::Activity, "ACTIVITY", first_, "Makes the new assembly.");
    ioSyntax.Optional(NameKind::Word, "NAME", second_,
                      "Of the assembly; the activity's by default.");
  }
  std::string InWords(const Json& iData) const override {
    return Text(iData, "activity") + " makes " + Text(iData, "assembly") + "\n";
  }

 private:
  Json Change(Session& session) override {
    Activity& activity = session.Find().ActivityOf(first_);
    embedded::MfgAssembly& assembly =
        second_.empty() ? Create(activity) : CreateNamed(session.Document(), activity);
    return {{"activity", activity.Key()}, {"assembly", TitleOf(assembly)}};
  }

  static embedded::MfgAssembly& Create(Activity& activity) {
    if (activity.GetLabel().SearchSubString("$") >= 0) {
      throw InputError("the label of " + Quoted(activity.Key()) +
                       " has a $, which no assembly's name may have; name the assembly");
    }
    ZefISPPActivity_var handle = activity.Identity();
    ZefListValZefBaseUnknown_var outputs;
    TuvBIWServices::CreateProductOutput(handle, outputs);
    auto* const made = embedded::ObjectAs<embedded::MfgAssembly>(outputs[1].Get());
    if (!made) throw InputError("no output could be made for " + Quoted(activity.Key()));
    return *made;
  }

  embedded::MfgAssembly& CreateNamed(embedded::Document& document, Activity& activity) const {
    CheckTitle("NAME", second_);
    embedded::MfgAssembly& assembly = document.AddAssembly();
    assembly.SetName(second_);
    ZefISPPProductIO_var output;
    activity.AddProductOutput(output.Put(), assembly.Identity());
    return assembly;
  }
};

class RemoveOutput : public Gesture {
 public:
  void Declare(Syntax& ioSyntax) override {
    ioSyntax.Required(NameKind::Activity, "ACTIVITY", first_, "Makes the assembly no longer.");
    ioSyntax.Optional(NameKind::Word, "ASSEMBLY", second_, "Needed when there are several.");
  }
  std::string InWords(const Json& iData) const override {
    return Text(iData, "activity") + " no longer makes " + Text(iData, "assembly") + "\n";
  }

 private:
  Json Change(Session& session) override {
    Activity& activity = session.Find().ActivityOf(first_);
    embedded::ProductOutput& output = Find(session.Document(), activity);
    const auto* const assembly =
        embedded::ObjectAs<embedded::MfgAssembly>(output.OwnProduct().Get());
    const std::string title = assembly ? TitleOf(*assembly) : "its output";
    session.Document().RemoveOutput(activity, output);
    return {{"activity", activity.Key()}, {"assembly", title}};
  }

  embedded::ProductOutput& Find(const embedded::Document& document, const Activity& activity) {
    const auto& outputs = activity.Outputs();
    if (outputs.empty()) throw InputError(Quoted(activity.Key()) + " has no output");
    if (second_.empty() && outputs.size() == 1) return *outputs.front();
    if (second_.empty()) {
      throw InputError(Quoted(activity.Key()) + " has " + std::to_string(outputs.size()) +
                       " outputs; name the assembly of one of them");
    }
    const embedded::MfgAssembly& assembly = AssemblyOf(document, second_);
    for (const auto& output : outputs) {
      if (output->OwnProduct() == assembly.Identity()) return *output;
    }
    throw InputError(Quoted(activity.Key()) + " does not make " + Quoted(second_) +
                     "; 'assemblies' shows who does");
  }
};

class Drop : public Gesture {
 public:
  void Declare(Syntax& ioSyntax) override {
    ioSyntax.Required(NameKind::Part, "ITEM", first_, "A part or an assembly.");
    ioSyntax.Required(NameKind::Activity, "ACTIVITY", second_, "Takes it in, first assigned.");
  }
  std::string InWords(const Json& iData) const override {
    return Text(iData, "activity") + " takes in " + Text(iData, "item") + "\n";
  }

 private:
  Json Change(Session& session) override {
    const ZefBaseUnknown_var item = ItemOf(session.Document(), first_);
    Activity& activity = session.Find().ActivityOf(second_);
    ZefISPPActivity_var handle = activity.Identity();
    ZefListValZefBaseUnknown_var items;
    items.Append(item);
    TuvBIWServices::AssignProductsAsFirstAssign(handle, items);
    return {{"activity", activity.Key()}, {"item", NameOf(item)}};
  }
};

class FirstAssign : public Command {
 public:
  void Declare(Syntax& ioSyntax) override {
    ioSyntax.Required(NameKind::Activity, "ACTIVITY", name_, "Takes the items in.");
    ioSyntax.OneOrMore(NameKind::Part, "ITEM", words_, "Parts or assemblies.");
  }

  bool MayChange() const override { return true; }
  Answer Run(Session& ioSession) override {
    ZefISPPActivity_var activity = ioSession.Find().ActivityOf(name_).Identity();
    ZefListValZefBaseUnknown_var items;
    for (const std::string& word : words_) items.Append(ItemOf(ioSession.Document(), word));
    TuvBIWServices::AssignProductsAsFirstAssign(activity, items);
    ioSession.Changed();
    return {{{"activity", NameOf(activity)}, {"items", NamesAsJson(&items)}}};
  }

  std::string InWords(const Json& iData) const override {
    return Text(iData, "activity") + " takes in " + Listed(iData.at("items")) + "\n";
  }

 private:
  std::string name_;
  std::vector<std::string> words_;
};

class Drag : public Gesture {
 public:
  void Declare(Syntax& ioSyntax) override {
    ioSyntax.Required(NameKind::Part, "ITEM", first_, "A part or an assembly.");
    ioSyntax.Required(NameKind::Activity, "ACTIVITY", second_, "Takes it in no longer.");
  }
  std::string InWords(const Json& iData) const override {
    return Text(iData, "activity") + " no longer takes in " + Text(iData, "item") + "\n";
  }

 private:
  Json Change(Session& session) override {
    const ZefBaseUnknown_var item = ItemOf(session.Document(), first_);
    Activity& activity = session.Find().ActivityOf(second_);
    if (Failed(activity.RemoveItem(item, kFirstAssigned))) {
      throw InputError(Quoted(activity.Key()) + " does not take in " + Quoted(NameOf(item)) +
                       "; 'first-assigned' shows what it takes in");
    }
    return {{"activity", activity.Key()}, {"item", NameOf(item)}};
  }
};

class AddActivity : public Gesture {
 public:
  void Declare(Syntax& ioSyntax) override {
    ioSyntax.Choice({"station", "operation"}, role_, "What it is.");
    ioSyntax.Required(NameKind::Word, "KEY", first_, "Its short name, such as OP10.");
    ioSyntax.Optional(NameKind::Activity, "PARENT", second_,
                      "It goes below this activity, else below the process.");
    ioSyntax.Option(NameKind::Word, "--label", "TEXT", label_, "Its name in full.");
    ioSyntax.Option(NameKind::Word, "--task", "TASK", task_,
                    "welding (default), curve, both, none.");
  }
  std::string InWords(const Json& iData) const override {
    return Text(iData, "role") + " " + Text(iData, "added") + " added\n";
  }

 private:
  Json Change(Session& session) override {
    using Data = embedded::ActivityData;
    CheckName("KEY", first_);
    CheckTitle(label_.empty() ? "KEY" : "--label", label_.empty() ? first_ : label_);
    Data data{.key = first_, .label = label_};
    data.role = role_ == "station" ? Data::Role::Station : Data::Role::Operation;
    if (data.role == Data::Role::Operation) data.task = Task();
    embedded::Document& document = session.Document();
    Activity& parent = second_.empty() ? *document.Root() : session.Find().ActivityOf(second_);
    document.AddActivity(parent, data);
    return {{"role", role_}, {"added", first_}};
  }

  embedded::ActivityData::Task Task() const {
    using Task = embedded::ActivityData::Task;
    if (task_.empty() || task_ == "welding") return Task::Welding;
    if (task_ == "curve") return Task::CurveFastening;
    if (task_ == "both") return Task::Both;
    if (task_ == "none") return Task::None;
    throw InputError("there is no task " + Quoted(task_) + "; welding, curve, both or none");
  }

  std::string role_;
  std::string label_;
  std::string task_;
};

}  // namespace

void AddGestureCommands(CommandTable& ioTable) {
  ioTable.Add<AddActivity>("add", "Adds a station or an operation to the process.");
  AddRemoveActivityCommand(ioTable);
  AddLinkCommands(ioTable);
  ioTable.Add<AddOutput>("output", "Gives an activity an output: a new assembly.");
  ioTable.Add<RemoveOutput>("remove-output", "Takes an output off an activity.");
  ioTable.Add<Drop>("drop", "Gives an activity a part or an assembly to take in.");
  ioTable.Add<FirstAssign>("first-assign", "The same for several items.");
  ioTable.Add<Drag>("drag", "Takes a part or an assembly off an activity again.");
}

}  // namespace biwplan
