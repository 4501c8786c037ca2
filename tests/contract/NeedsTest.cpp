#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <set>
#include <sstream>

#include "tests/contract/World.h"
#include "tests/support/SourceFiles.h"

// What each group of services needs of a host, found by withholding one thing after the other, and
// what docs/embedding.md says of it.

namespace {

using namespace tests;

// Groups by what they need: "activity ZefISPPItemMgt" or "Frame".
using Needs = std::map<std::string, std::set<std::string>>;

std::vector<std::string> InterfaceNames() {
  std::ifstream lines(SourceFile("tests/host/interfaces.txt"));
  std::vector<std::string> names;
  for (std::string name, rest; lines >> name; std::getline(lines, rest)) names.push_back(name);
  return names;
}

std::string Run(const ServiceGroup& group, const std::string& kind = {}, const _GUID& id = {}) {
  World world;
  for (const auto& specimen : world.Specimens()) {
    if (specimen.kind == kind) AnswerInterface(specimen.object, id, false);
  }
  return group.run(world);
}

// Every interface that objects of a kind can be made to withhold.
std::set<std::pair<std::string, std::string>> AnsweredByKind() {
  std::set<std::pair<std::string, std::string>> answered;
  const World world;
  for (const auto& [kind, object] : world.Specimens()) {
    for (const std::string& name : InterfaceNames()) {
      const _GUID id = NameIdentifier(name.c_str());
      if (AnswerInterface(object, id, true)) answered.emplace(kind, name);
    }
  }
  return answered;
}

Needs MeasuredInterfaces() {
  Needs needs;
  const auto answered = AnsweredByKind();
  for (const ServiceGroup& group : kServiceGroups) {
    const std::string whole = Run(group);
    for (const auto& [kind, name] : answered) {
      if (Run(group, kind, NameIdentifier(name.c_str())) == whole) continue;
      needs[kind + " " + name].insert(group.name);
    }
  }
  return needs;
}

// Stands in front of the application and answers one operation as if there were no application.
class Reluctant : public HostApplication {
 public:
  Reluctant(embedded::Application& iApplication, std::string iWithheld)
      : application_(iApplication), withheld_(std::move(iWithheld)) {
    Install(this);
  }
  ~Reluctant() override { Install(&application_); }

  ZefFrmEditor* CurrentEditor() override { return At("CurrentEditor").CurrentEditor(); }
  ZefApplicationFrame* Frame() override { return At("Frame").Frame(); }
  ZefFrmLayout* CurrentLayout() override { return At("CurrentLayout").CurrentLayout(); }
  ZefVisManager* VisManager() override { return At("VisManager").VisManager(); }
  Zef3DViewer* CreateViewer(ZefFrmWindow* iWindow, ZefFrmEditor* iEditor) override {
    return At("CreateViewer").CreateViewer(iWindow, iEditor);
  }
  void Reframe(ZefHSO& iSet, Zef3DViewer* iViewer) override {
    At("Reframe").Reframe(iSet, iViewer);
  }
  int ShowDialog(const DialogRequest& iRequest) override {
    return At("ShowDialog").ShowDialog(iRequest);
  }
  bool HasCatalog(const std::string& iCatalog) override {
    return At("HasCatalog").HasCatalog(iCatalog);
  }
  bool FindMessage(const std::string& iCatalog, const std::string& iKey,
                   std::string& oText) override {
    return At("FindMessage").FindMessage(iCatalog, iKey, oText);
  }
  const char* Environment(const char* iName) override {
    return At("Environment").Environment(iName);
  }
  HRESULT PartLoadConstraint(unsigned char& oOn) override {
    return At("PartLoadConstraint").PartLoadConstraint(oOn);
  }
  HRESULT CreateMfgAssembly(ZefDocument* iDocument, TuvIMfgAssembly** oAssembly) override {
    return At("CreateMfgAssembly").CreateMfgAssembly(iDocument, oAssembly);
  }

 private:
  HostApplication& At(const char* operation) {
    return operation == withheld_ ? none_ : static_cast<HostApplication&>(application_);
  }

  embedded::Application& application_;
  HostApplication none_;
  std::string withheld_;
};

Needs MeasuredOperations() {
  const auto run = [](const ServiceGroup& group, const char* withheld) {
    World world;
    const Reluctant reluctant(world.application, withheld);
    return group.run(world);
  };
  Needs needs;
  for (const ServiceGroup& group : kServiceGroups) {
    const std::string whole = run(group, "");
    for (const char* const operation :
         {"CurrentEditor", "Frame", "CurrentLayout", "VisManager", "CreateViewer", "Reframe",
          "ShowDialog", "HasCatalog", "FindMessage", "Environment", "PartLoadConstraint",
          "CreateMfgAssembly"}) {
      if (run(group, operation) != whole) needs[operation].insert(group.name);
    }
  }
  return needs;
}

std::vector<std::string> Cells(const std::string& line) {
  std::vector<std::string> cells;
  std::istringstream rest(line.substr(1));
  for (std::string cell; std::getline(rest, cell, '|');) {
    std::erase(cell, '`');
    const auto begin = cell.find_first_not_of(' '), end = cell.find_last_not_of(' ');
    cells.push_back(begin == std::string::npos ? "" : cell.substr(begin, end - begin + 1));
  }
  return cells;
}

// The table whose columns begin with these, up to the groups: a mark in a group's column says that
// the group needs what the row names.
Needs WrittenBelow(const std::vector<std::string>& columns) {
  std::vector<std::string> header = columns;
  for (const ServiceGroup& group : kServiceGroups) header.push_back(group.name);
  std::ifstream guide(SourceFile("docs/embedding.md"));
  Needs needs;
  std::string line;
  while (std::getline(guide, line) && (line.rfind('|', 0) != 0 || Cells(line) != header)) {
  }
  std::getline(guide, line);
  while (std::getline(guide, line) && line.rfind('|', 0) == 0) {
    const auto cells = Cells(line);
    if (cells.size() != header.size()) return {{"malformed: " + line, {}}};
    std::string need = cells[0];
    for (std::size_t i = 1; i < columns.size(); ++i) need += " " + cells[i];
    for (std::size_t i = columns.size(); i < cells.size(); ++i) {
      if (!cells[i].empty()) needs[need].insert(header[i]);
    }
  }
  return needs;
}

// As rows of the guide.
std::string Rows(const Needs& needs) {
  std::string rows;
  for (const auto& [need, groups] : needs) {
    const auto last = need.rfind(' ');
    rows += last == std::string::npos
                ? "\n| `" + need + "` |"
                : "\n| " + need.substr(0, last) + " | `" + need.substr(last + 1) + "` |";
    for (const ServiceGroup& group : kServiceGroups)
      rows += groups.contains(group.name) ? " x |" : " |";
  }
  return rows;
}

TEST(NeedsTest, TheGuideSaysWhichInterfacesEachGroupOfServicesNeeds) {
  const Needs measured = MeasuredInterfaces();
  EXPECT_EQ(WrittenBelow({"object", "interface"}), measured) << Rows(measured);
  EXPECT_GT(measured.size(), 40u);
}

TEST(NeedsTest, TheGuideSaysWhatOfTheApplicationEachGroupOfServicesNeeds) {
  const Needs measured = MeasuredOperations();
  EXPECT_EQ(WrittenBelow({"operation"}), measured) << Rows(measured);
}

}  // namespace
