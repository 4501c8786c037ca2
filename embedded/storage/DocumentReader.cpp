#include "embedded/storage/DocumentReader.h"

#include "embedded/Error.h"
#include "embedded/processdb/ProcessDatabase.h"
#include "embedded/storage/Fields.h"

namespace embedded {

namespace {

void RequireFormat(JsonObject& root) {
  const JsonValue format = root.Get("format");
  if (format.Text() != kDocumentFormat) {
    format.Fail(Quoted(format.Text()) + " is another format; it must be " +
                Quoted(kDocumentFormat));
  }
  const JsonValue version = root.Get("version");
  const int number = version.Integer(1, kHighestVersion);
  if (number <= kDocumentVersion) return;
  version.Fail("the file is of version " + std::to_string(number) +
               ", which a newer program wrote; this one reads up to version " +
               std::to_string(kDocumentVersion));
}

bool HasProcess(Document::Kind kind) {
  return kind == Document::Kind::Process || kind == Document::Kind::Both;
}

void ReadCycleTime(JsonObject& object, Activity& activity) {
  if (const auto seconds = object.Find("cycleTime")) {
    activity.SetCycleTime(seconds->Number(kFiniteNumbers));
  }
}

Owned<Document> NewDocument(Document::Kind kind, const JsonValue& activities) {
  const JsonValue::Range elements = activities.Elements();
  if (!HasProcess(kind)) {
    if (!elements.IsEmpty()) activities.Fail("a document without process has no activities");
    return MakeOwned<Document>(kind);
  }
  if (elements.IsEmpty()) activities.Fail("the list must begin with the root activity");
  JsonObject root(*elements.begin());
  auto document =
      MakeOwned<Document>(kind, ReadNewKey(root, [](const std::string&) { return false; }));
  ReadCycleTime(root, *document->Root());
  root.Find("outputs");
  root.RequireNothingElse();
  return document;
}

void ReadActivity(Document& document, const JsonValue& value) {
  JsonObject object(value);
  ActivityData data;
  data.key = ReadNewKey(object, [&](const std::string& key) { return document.FindActivity(key); });
  const auto parent = object.Find("parent");
  if (!parent) value.Fail("this is a second root; an activity needs a \"parent\"");
  Activity* const above = document.FindActivity(ReadText(*parent));
  if (!above) {
    parent->Fail(Quoted(parent->Text()) +
                 " is no activity that stands further up; parents come before their children");
  }
  data.label = ReadOptionalText(object, "label");
  data.kind = ReadWord(object.Get("kind"), kActivityKinds);
  data.role = ReadWord(object.Get("role"), kActivityRoles);
  data.task = ReadWord(object.Get("task"), kActivityTasks);
  data.fixedSeconds = object.Get("fixedSeconds").Number(kAmounts);
  data.secondsPerWeld = object.Get("secondsPerWeld").Number(kAmounts);
  data.speedMmPerSecond = object.Get("speedMmPerSecond").Number(kAmounts);
  ReadCycleTime(object, document.AddActivity(*above, data));
  object.Find("outputs");
  object.RequireNothingElse();
}

void ReadActivities(Document& document, const JsonValue& list) {
  bool isRoot = true;
  for (const JsonValue value : list.Elements()) {
    if (!isRoot) ReadActivity(document, value);
    isRoot = false;
  }
}

void ReadSettings(Document& document, const JsonValue& value) {
  JsonObject object(value);
  if (const auto isOn = object.Find("partLoadConstraint")) {
    document.settings.partLoadConstraint = isOn->Flag();
  }
  if (const auto through = object.Find("updateThrough")) {
    document.settings.updateThrough = NamedObjects(document).ActivityAt(*through).Key();
  }
  object.RequireNothingElse();
}

void ReadFlows(Document& document, const JsonValue& list) {
  const NamedObjects names(document);
  for (const JsonValue value : list.Elements()) {
    JsonObject object(value);
    Activity& from = names.ActivityAt(object.Get("from"));
    document.AddFlow(from, names.ActivityAt(object.Get("to")), true);
    object.RequireNothingElse();
  }
}

// What a plan says does not hang on a file that others own: without it the plan opens all the same.
void OpenDatabase(Document& document, const JsonValue& path, const std::filesystem::path& folder) {
  const std::filesystem::path file = folder / path.Text();
  try {
    document.AttachDatabase(ProcessDatabase::Open(file));
  } catch (const InputError& problem) {
    document.LoseDatabase({file, problem.what()});
  }
}

}  // namespace

Owned<Document> BuildDocument(const JsonTree& iTree, const std::filesystem::path& iFolder) {
  JsonObject root(iTree.Root());
  RequireFormat(root);
  const Document::Kind kind = ReadWord(root.Get("kind"), kDocumentKinds);
  const auto database = root.Find("database");
  const auto settings = root.Find("settings");
  const JsonValue activities = root.Get("activities");
  const JsonValue flows = root.Get("flows");
  const JsonValue products = root.Get("products");
  const JsonValue productRoots = root.Get("productRoots");
  const JsonValue assemblies = root.Get("assemblies");
  const JsonValue features = root.Get("features");
  const JsonValue links = root.Get("links");
  root.RequireNothingElse();

  Owned<Document> document = NewDocument(kind, activities);
  ReadActivities(*document, activities);
  if (settings) ReadSettings(*document, *settings);
  ReadFlows(*document, flows);
  ReadProducts(*document, products, iFolder);
  ReadProductRoots(*document, productRoots);
  AddAssemblies(*document, assemblies);
  ReadFeatures(*document, features);
  ReadChildren(*document, assemblies);
  ReadOutputs(*document, activities, assemblies);
  ReadLinks(*document, links);
  if (database) OpenDatabase(*document, *database, iFolder);
  return document;
}

}  // namespace embedded
