#include "tests/processdb/Databases.h"

#include <sqlite3.h>

#include "host/component/Handle.h"

namespace tests {

using embedded::ProcessDatabase;

void WriteLists(const ScratchFolder& folder) {
  folder.Write("processes.csv",
               "\xEF\xBB\xBFLabel;BASE;identifier\r\nThe LINE;yes;LINE\r\nThe CELL;TRUE;CELL\r\n"
               "The CELL-2;1;CELL-2\r\nThe TASK;Yes;TASK\r\n;;NÖTE");
  folder.Write("parents.csv",
               "process,parent\nTASK,NÖTE\n# next\nTASK,CELL,,\nTASK,LINE\n\nCELL,LINE\n");
  folder.Write("versions.csv", "process\tversion\nCELL\tCELL-2\nCELL\tCELL\n");
  folder.Write("activities.csv", "process,activity\nTASK,OP10\n");
  folder.Write("assignments.csv", "weld,process\nSW-1,TASK\n\"SW-1\",\"CELL\"\n");
  folder.Write("version_lists.csv", "weld\nSW-1,LINE,CELL-2\nSW-1\nSW-1,TASK\n");
}

std::string ChangeAsOthers(const std::filesystem::path& file, const std::string& statements) {
  constexpr int kMostSteps = 100;  // of a thousand instructions
  sqlite3* opened = nullptr;
  if (sqlite3_open(file.c_str(), &opened) != SQLITE_OK) return "cannot be opened";
  const std::unique_ptr<sqlite3, decltype(&sqlite3_close)> database(opened, sqlite3_close);
  sqlite3_limit(opened, SQLITE_LIMIT_ATTACHED, 0);
  sqlite3_limit(opened, SQLITE_LIMIT_LENGTH, 1 << 23);
  int steps = 0;
  const auto isEnough = [](void* count) {
    return ++*static_cast<int*>(count) > kMostSteps ? 1 : 0;
  };
  sqlite3_progress_handler(opened, 1000, isEnough, &steps);
  const std::string all = "PRAGMA synchronous=OFF;" + statements;
  const int result = sqlite3_exec(opened, all.c_str(), nullptr, nullptr, nullptr);
  return result == SQLITE_OK ? "" : sqlite3_errmsg(opened);
}

namespace {

std::string NameOf(ProcessDatabase& database, const Handle<IUnknown>& object) {
  ZefUnicodeString name("none");
  if (object) database.GetObjectID(object, name);
  return name.Bytes();
}

std::string StoryOfProcess(ProcessDatabase& database, const std::string& process) {
  Handle<IUnknown> object;
  Handle<IUnknown> base;
  database.GetObjectFromID(process, object.Put());
  database.GetBaseProcess(object, base.Put());
  ZefUnicodeString* text = nullptr;
  database.GetIDString(object, text);
  const std::unique_ptr<ZefUnicodeString> name(text);
  ZefListPtrIUnknown* parents = nullptr;
  ZefListPtrIUnknown* versions = nullptr;
  database.ListParents(object, parents, 0);
  database.ListRelatedVersions(object, versions);
  return (name ? name->Bytes() : "nothing") + " '" + database.Label(process) + "' base " +
         NameOf(database, base) + " below [" + Identifiers(database, parents) + "] versions [" +
         Identifiers(database, versions) + "]\n";
}

std::string Joined(const ZefListValZefUnicodeString& list) {
  std::string text = "[";
  for (int i = 1; i <= list.Size(); ++i) text += " " + list[i].Bytes();
  return text + "]";
}

std::string StoryOfWeld(ProcessDatabase& database, const std::string& weld) {
  ZefListValZefUnicodeString assignments;
  ZefListPtrZefListValZefUnicodeString lists;
  database.ListAssignments(weld, assignments);
  database.ListVersionLists(weld, lists);
  const bool isAssigned = Succeeded(database.IsAssigned(weld));
  std::string story = weld + (isAssigned ? " assigned " : " not assigned ") + Joined(assignments);
  story += " versions";
  for (int i = 1; i <= lists.Size(); ++i) {
    story += Joined(*std::unique_ptr<ZefListValZefUnicodeString>(lists[i]));
  }
  return story + "\n";
}

std::string StoryOfActivity(ProcessDatabase& database, const std::string& activity) {
  Handle<IUnknown> object;
  database.GetActivityObject(activity, object.Put());
  return activity + " in " + NameOf(database, object);
}

}  // namespace

std::string Identifiers(ProcessDatabase& database, ZefListPtrIUnknown* list) {
  const std::unique_ptr<ZefListPtrIUnknown> owned(list);
  std::string names;
  for (int i = 1; list && i <= list->Size(); ++i) {
    names += " " + NameOf(database, Adopt((*list)[i]));
  }
  return list ? names : "no list";
}

std::string Story(ProcessDatabase& database) {
  std::string story;
  for (const char* const process : {"LINE", "CELL", "CELL-2", "TASK", "NÖTE"}) {
    story += StoryOfProcess(database, process);
  }
  story += StoryOfActivity(database, "OP10") + ", " + StoryOfActivity(database, "OP20") + "\n";
  return story + StoryOfWeld(database, "SW-1") + StoryOfWeld(database, "SW-2");
}

}  // namespace tests
