#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "embeddedcheck/EmbeddedHooks.h"
#include "tests/hostcheck/BrokenHost.h"
#include "tests/support/SourceFiles.h"

namespace {

using namespace tests;
using hostcheck::Outcome;
using hostcheck::Verdict;
using Checks = std::vector<const char*>;

// A breach, and checks that must notice it.
struct Breach {
  const char* name;
  Checks noticedBy;
};

const std::vector<Breach> kBreaches = {
    // What objects answer.
    {"an interface as another one", {"identity.by-name"}},
    {"each tenth query fails", {"identity.reflexive", "identity.symmetric", "identity.transitive"}},
    {"two identities", {"identity.root", "identity.implementation"}},
    {"by name the identity comes", {"identity.by-name"}},
    {"failed queries leave the pointer", {"identity.failed-query"}},
    {"failed queries say success", {"identity.failed-query"}},
    {"GetImpl gives an interface", {"identity.implementation"}},
    {"equal by address", {"identity.equality"}},
    {"IsA lies", {"identity.class"}},
    {"a class of its own", {"identity.activity-class"}},
    {"outputs of another class", {"identity.output-class", "notifications.output-removed"}},
    {"knows no extensions",
     {"extensions.once", "extensions.identity", "extensions.count", "extensions.by-name",
      "extensions.end"}},
    // Counting.
    {"queries without reference", {"counting.query"}},
    {"queries with two references", {"counting.query", "counting.end"}},
    {"failed queries take a reference", {"counting.failed-query"}},
    {"AddRef answers the old count", {"counting.one-count"}},
    {"fathers are borrowed", {"counting.fathers"}},
    {"root container is borrowed", {"counting.containers"}},
    {"products are borrowed", {"counting.products"}},
    {"sources are borrowed", {"counting.sources"}},
    {"made links are borrowed", {"counting.made-links"}},
    {"made outputs are borrowed", {"counting.made-outputs"}},
    {"made assembly is borrowed", {"counting.made-assemblies"}},
    {"holders are never given back", {"counting.holders"}},
    {"documents with a reference", {"counting.borrowed"}},
    {"members are borrowed", {"counting.members"}},
    {"a shared list of children", {"counting.process-lists"}},
    {"process roots are shared", {"counting.process-lists"}},
    {"a shared list of items", {"counting.item-lists"}},
    {"a shared list of products", {"counting.product-lists"}},
    {"a shared list of an assembly", {"counting.assembly-lists"}},
    {"parents leak", {"counting.out-handles"}},
    {"environments are borrowed", {"counting.environments"}},
    {"links are never given back", {"counting.gestures", "counting.end"}},
    {"flows are never given back", {"counting.gestures"}},
    {"product roots are new lists", {"counting.end", "documents.product-roots"}},
    {"activities are never given back", {"counting.end", "counting.outlives"}},
    // Documents.
    {"is a drawing", {"documents.kind"}},
    {"root container comes as anything", {"documents.root-container"}},
    {"every activity is a root", {"documents.process-roots"}},
    {"the root comes last", {"documents.activities"}},
    {"members as identities", {"documents.members"}},
    {"members replace the sequence", {"documents.members"}},
    {"one container for all", {"documents.own-containers"}},
    {"every container is there", {"documents.fasteners"}},
    {"nobody has a father", {"documents.fathers"}},
    {"welds belong to no document", {"documents.of-items"}},
    // Items.
    {"added items are first assigned", {"items.plain"}},
    {"items are linked once", {"items.doubled"}},
    {"removes one link at a time", {"items.removed", "random.items"}},
    {"removes whatever the selector", {"items.removed", "items.removed-in-vain"}},
    {"items of any selector", {"items.plain", "items.doubled"}},
    {"removed in vain with success", {"items.removed-in-vain"}},
    {"links without father", {"items.features"}},
    {"links are forgotten", {"items.pointing"}},
    {"the newest link comes first", {"items.pointing"}},
    {"assemblies cannot be pointed at", {"items.kinds"}},
    {"suspended once", {"items.blocked"}},
    {"the sixth item is lost", {"random.items"}},
    // Flow and tree.
    {"neighbours are doubled", {"flow.neighbours", "random.flows"}},
    {"the newest neighbour comes first", {"flow.neighbours"}},
    {"neighbours of every kind", {"flow.kinds"}},
    {"flows lead back", {"flow.ends"}},
    {"flows are not removed", {"flow.removed", "notifications.flow-removed"}},
    {"the newest output comes first", {"flow.outputs"}},
    {"the last output's product", {"flow.outputs"}},
    {"own outputs are sources", {"flow.source"}},
    {"no source leaves the pointer", {"flow.source"}},
    {"activities hide what they extend", {"identity.activity-class"}},
    {"grandchildren are children", {"tree.children"}},
    {"children of every kind", {"tree.kinds"}},
    {"the parent is the topmost one", {"tree.parents"}},
    {"operations are stations", {"stations.alone"}},
    {"welds are inputs", {"stations.inputs"}},
    {"outputs without regard to the list", {"stations.outputs"}},
    // Products and fasteners.
    {"children counted at every depth", {"products.children", "products.all-children"}},
    {"all children by level", {"products.all-children"}},
    {"all children of any interface", {"products.all-children"}},
    {"no reference product", {"products.reference"}},
    {"children are added twice", {"assemblies.children", "random.assemblies"}},
    {"removed children are always there", {"assemblies.children"}},
    {"assemblies take rings", {"assemblies.refusals", "random.assemblies"}},
    {"names are not kept", {"assemblies.names"}},
    {"a shared position", {"fasteners.position"}},
    {"one part is enough", {"fasteners.parts"}},
    {"validity in the second byte", {"fasteners.validity"}},
    // Notifications.
    {"a dispatcher for each", {"notifications.dispatcher"}},
    {"first assignment told before the link", {"notifications.first-assigned"}},
    {"every link notifies", {"notifications.first-assigned"}},
    {"removal told before the links went", {"notifications.item-removed"}},
    {"told twice", {"notifications.item-removed", "notifications.everyone"}},
    {"flow told before it is listed", {"notifications.flow-drawn"}},
    {"flow told before it is gone", {"notifications.flow-removed"}},
    {"outputs told without product", {"notifications.output"}},
    {"outputs told before their product", {"notifications.output"}},
    {"other kind", {"notifications.output"}},
    {"removed outputs are told once", {"notifications.output-removed"}},
    {"father and son swapped", {"notifications.first-assigned", "notifications.flow-drawn"}},
    {"told within a delivery", {"notifications.queue"}},
    {"newest first", {"notifications.queue"}},
    {"queue without references", {"notifications.references"}},
    {"added items notify", {"notifications.silence"}},
    {"building notifies", {"notifications.silence"}},
    {"told while blocked: nothing", {"notifications.never-blocked"}},
    // Removal.
    {"removal told in reverse", {"removal.order", "removal.flows"}},
    {"removal told at the end", {"removal.whole"}},
    {"removed activities keep items", {"removal.bare"}},
    {"removed outputs stay listed", {"removal.outputs", "random.outputs"}},
    {"removed outputs forget", {"removal.outputs"}},
    {"no removal while telling", {"removal.within-handler"}},
    // The application.
    {"stays installed", {"application.installed"}},
    {"an editor each time", {"application.editor"}},
    {"frame with a reference", {"application.frame"}},
    {"a dialog changes the model", {"application.dialogs"}},
    {"every catalog", {"application.no-catalogs"}},
    {"catalog lacks a message", {"application.catalogs"}},
    {"part load is 255", {"application.part-load"}},
    {"empty variables are not set", {"application.environment"}},
    {"one assembly for all", {"application.assemblies"}},
    // Visualisation.
    {"a representation each time", {"visualisation.representation"}},
    {"representations with a reference", {"visualisation.representation"}},
    {"one representation for all views", {"visualisation.further"}},
    {"properties never change", {"visualisation.properties"}},
    // Null.
    {"no name is any name", {"null.names"}},
    {"null can be added", {"null.items"}},
    {"no source is a failure", {"null.flow"}},
    {"null can be a child", {"null.assemblies"}},
    // Hosts that do not come back.
    {"ends the process", {"documents.kind"}},
    {"throws at the end", {"documents.kind"}},
};

const std::vector<Breach> kEmbeddedBreaches = {
    {"an object for each question", {"database.one-object"}},
    {"database objects are borrowed", {"database.references"}},
    {"parents are borrowed", {"database.parents"}},
    {"identifiers with a prefix", {"database.identifiers"}},
    {"a shared identifier", {"database.identifiers"}},
    {"an object for any identifier", {"database.unknown"}},
    {"null features are known", {"database.null-feature"}},
    {"null has an object", {"null.database"}},
    {"one viewer for all", {"visualisation.viewers"}},
    {"windows hand viewers over", {"visualisation.window"}},
    {"nothing is attached", {"visualisation.attached"}},
    {"a warning without text", {"application.catalogs"}},
};

template <class Make>
void ExpectNoticed(const std::vector<Breach>& breaches, const Make& make,
                   std::set<std::string>& useful) {
  for (const auto& [name, checks] : breaches) {
    for (const char* const check : checks) {
      const Outcome outcome = hostcheck::RunCheck(check, [&, what = name] { return make(what); });
      EXPECT_EQ(outcome.verdict, Verdict::Fail) << name << ", " << check << ": " << outcome.reason;
      useful.insert(check);
    }
  }
}

TEST(HostCheckTest, EveryBreachIsNoticedAndEveryCheckNoticesOne) {
  std::set<std::string> useful;
  ExpectNoticed(kBreaches, MakeBrokenHost, useful);
  ExpectNoticed(kEmbeddedBreaches, MakeBrokenEmbeddedHost, useful);
  for (const auto& check : hostcheck::ListChecks()) {
    EXPECT_TRUE(useful.contains(check.identifier)) << check.identifier << " notices no breach";
  }
}

// The checks that a host does not pass, with the reasons. A sanitizer makes processes slow to copy.
std::map<std::string, Outcome> Unpassed(const hostcheck::HooksFactory& make) {
  std::map<std::string, Outcome> found;
  for (const auto& check : hostcheck::ListChecks()) {
    const Outcome outcome = hostcheck::RunCheck(check.identifier, make, 60);
    if (outcome.verdict != Verdict::Pass) found[check.identifier] = outcome;
  }
  return found;
}

TEST(HostCheckTest, HostsThatBreakNothingPass) {
  const auto embedded = [] {
    return std::make_unique<embeddedcheck::EmbeddedHooks>(SourceFile("resources/catalogs"));
  };
  for (const auto& [check, outcome] : Unpassed(embedded)) {
    ADD_FAILURE() << "the embedded host, " << check << ": " << outcome.reason;
  }
  for (const auto make : {&MakeBrokenHost, &MakeBrokenEmbeddedHost}) {
    for (const auto& [check, outcome] : Unpassed([=] { return make(""); })) {
      EXPECT_EQ(outcome.verdict, Verdict::Skip) << check << ": " << outcome.reason;
    }
  }
}

TEST(HostCheckTest, WhatDoesNotComeBackIsAFinding) {
  const auto run = [](const char* breach, double seconds) {
    return hostcheck::RunCheck(
        "documents.kind", [=] { return MakeBrokenHost(breach); }, seconds);
  };
  const Outcome stuck = run("never ends", 0.3);
  EXPECT_EQ(stuck.reason, "while it was set up, the host did not come to an end in time");
  EXPECT_TRUE(stuck.isStuck);
  EXPECT_EQ(run("ends the process", 10).reason,
            "while it was set up, the host ended the process with status 3");
  EXPECT_EQ(run("throws at the end", 10).reason, "the host threw: thrown");
  EXPECT_NE(run("kills itself", 10).reason.find("the host crashed ("), std::string::npos);
  EXPECT_EQ(hostcheck::RunCheck("no.check", [] { return MakeBrokenHost(""); }).verdict,
            Verdict::Fail);
}

struct Ran {
  int status;
  std::string out, err;
};

Ran RunProgram(const std::vector<const char*>& arguments, const char* breach = "") {
  std::vector<const char*> all{"check"};
  all.insert(all.end(), arguments.begin(), arguments.end());
  testing::internal::CaptureStdout();
  testing::internal::CaptureStderr();
  const int status = hostcheck::HostCheckMain(static_cast<int>(all.size()), all.data(),
                                              [=] { return MakeBrokenHost(breach); });
  return {status, testing::internal::GetCapturedStdout(), testing::internal::GetCapturedStderr()};
}

TEST(HostCheckTest, TheProgramListsChoosesAndTells) {
  const Ran list = RunProgram({"--list"});
  const auto checks = hostcheck::ListChecks();
  EXPECT_EQ(static_cast<std::size_t>(std::count(list.out.begin(), list.out.end(), '\n')),
            checks.size());
  EXPECT_GE(checks.size(), 45u);
  std::set<std::string> identifiers;
  for (const auto& [identifier, header, promise] : checks) {
    EXPECT_TRUE(identifiers.insert(identifier).second) << identifier << " stands there twice";
    EXPECT_TRUE(std::filesystem::exists(SourceFile(header))) << header;
    EXPECT_EQ(std::string(promise).back(), '.') << promise;
  }
  EXPECT_EQ(RunProgram({"--only", "documents.kind", "tree"}).out,
            "pass  documents.kind\npass  tree.children\npass  tree.kinds\npass  tree.parents\n"
            "4 checks: 4 passed, 0 failed, 0 skipped\n");
  const Ran failed = RunProgram({"--only", "documents.kind"}, "is a drawing");
  EXPECT_EQ(failed.status, 1);
  EXPECT_EQ(failed.out,
            "fail  documents.kind  a process document is a kind of \"ZefProcess\"\n"
            "      host/document/ZefDocument.h: A document's class tells its kind.\n"
            "1 checks: 0 passed, 1 failed, 0 skipped\n");
  EXPECT_EQ(
      RunProgram({"--json", "--only", "documents.kind"}, "is a drawing").out,
      "{\"checks\": [\n  {\"id\": \"documents.kind\", \"result\": \"fail\", \"reason\": "
      "\"a process document is a kind of \\\"ZefProcess\\\"\", \"header\": "
      "\"host/document/ZefDocument.h\", \"promise\": \"A document's class tells its kind.\"}\n"
      "]}\n");
  EXPECT_EQ(
      RunProgram({"--time-limit", "0.3", "--only", "tree.kinds", "tree.parents"}, "never ends").out,
      "fail  tree.kinds  while it was set up, the host did not come to an end in time\n"
      "      host/process/ZefISPPChildManagement.h: Children are told apart by their kind.\n"
      "fail  tree.parents  not run, as the host could not be set up in time\n"
      "      host/process/ZefISPPAbstractActivity.h: An activity tells the one above it; the "
      "root has none.\n2 checks: 0 passed, 2 failed, 0 skipped\n");
  for (const std::vector<const char*>& wrong :
       {Checks{"--only"}, Checks{"--only", "nobody"}, Checks{"more"}, Checks{"--time-limit", "0"},
        Checks{"--time-limit"}, Checks{"--fast"}, Checks{"--only", "documents."}}) {
    const Ran refused = RunProgram(wrong);
    EXPECT_EQ(refused.status, 2) << wrong.front();
    EXPECT_NE(refused.err, "");
    EXPECT_EQ(refused.out, "");
  }
}

}  // namespace
