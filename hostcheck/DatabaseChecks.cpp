#include <memory>

#include "host/document/Document.h"
#include "host/fastening/Fastening.h"
#include "host/processdb/ProcessDb.h"
#include "host/values/ZefListPtrIUnknown.h"
#include "host/values/ZefListPtrZefListValZefUnicodeString.h"
#include "host/values/ZefListValZefUnicodeString.h"
#include "hostcheck/Bench.h"
#include "hostcheck/Check.h"

namespace hostcheck {

namespace {

constexpr char kAdapter[] = "host/processdb/ZefIIPDAdapter.h";
constexpr char kData[] = "host/processdb/ZefIIPDDataMgt.h";

using Object = Handle<IUnknown>;

unsigned ReferencesOn(IUnknown* object) {
  object->AddRef();
  return object->Release();
}

// LINE is a base process, CELL lies below it and belongs to OP10.
ZefIIPDAdapter_var Adapter(Bench& bench) {
  if (!bench.hooks.AddProcess("LINE", nullptr, nullptr) ||
      !bench.hooks.AddProcess("CELL", "LINE", bench.op10)) {
    throw Skipped("the host has no process database");
  }
  return bench.Ask<ZefIIPDAdapter>(bench.document);
}

Object Find(Bench& bench, const ZefIIPDAdapter_var& adapter, const char* identifier) {
  Object found;
  bench.Expect(Succeeded(adapter->GetObjectFromID(identifier, found.Put())),
               std::string("the database finds ") + identifier);
  bench.Require(static_cast<bool>(found), std::string(identifier) + " is an object");
  return found;
}

void OneObject(Bench& bench) {
  const auto adapter = Adapter(bench);
  const Object cell = Find(bench, adapter, "CELL"), line = Find(bench, adapter, "LINE");
  bench.Expect(cell.Get() != line.Get(), "two processes are two objects");
  bench.Expect(Find(bench, adapter, "CELL").Get() == cell.Get(),
               "a process is one object while it is held, by its identifier");
  Object ofActivity;
  bench.Expect(Succeeded(adapter->GetIPDObject(bench.op10, ofActivity.Put())),
               "an activity that belongs to a process has its object");
  bench.Expect(ofActivity.Get() == cell.Get(), "and the same, asked of its activity");
}

void References(Bench& bench) {
  const auto adapter = Adapter(bench);
  const Object cell = Find(bench, adapter, "CELL"), line = Find(bench, adapter, "LINE");
  const auto expect = [&](const char* what, const Object& object, const auto& ask) {
    const unsigned before = ReferencesOn(object);
    IUnknown* result = nullptr;
    ask(result);
    bench.Require(result == object.Get() && ReferencesOn(object) == before + 1,
                  std::string(what) + " gives the object with one reference");
    result->Release();
  };
  expect("GetObjectFromID", cell, [&](IUnknown*& to) { adapter->GetObjectFromID("CELL", to); });
  expect("GetIPDObject", cell, [&](IUnknown*& to) { adapter->GetIPDObject(bench.op10, to); });
  expect("GetBaseProcess", line, [&](IUnknown*& to) { adapter->GetBaseProcess(line, to); });
}

void Parents(Bench& bench) {
  const auto adapter = Adapter(bench);
  const Object cell = Find(bench, adapter, "CELL"), line = Find(bench, adapter, "LINE");
  const ZefIIPDDataMgt_var data(cell);
  if (!data) throw Skipped("objects of the database do not answer ZefIIPDDataMgt");
  const unsigned before = ReferencesOn(line);
  ZefListPtrIUnknown* first = nullptr;
  ZefListPtrIUnknown* second = nullptr;
  data->ListParents(cell, first, 0);
  data->ListParents(cell, second, 0);
  bench.Require(first && second && first != second, "ListParents makes a new list each time");
  for (ZefListPtrIUnknown* const list : {first, second}) {
    bench.Require(list->Size() == 1 && (*list)[1] == line.Get(), "LINE is the one parent of CELL");
  }
  bench.Require(ReferencesOn(line) == before + 2, "each parent comes with one reference");
  for (ZefListPtrIUnknown* const list : {first, second}) {
    (*list)[1]->Release();
    delete list;
  }
  ZefListPtrIUnknown* none = nullptr;
  data->ListParents(line, none, 0);
  bench.Expect(!none || none->Size() == 0, "LINE has no parents");
  delete none;
}

void Identifiers(Bench& bench) {
  const auto adapter = Adapter(bench);
  const Object cell = Find(bench, adapter, "CELL");
  ZefUnicodeString identifier;
  bench.Expect(Succeeded(adapter->GetObjectID(cell, identifier)), "an object has an identifier");
  bench.Equal(identifier.ConvertToChar(), "CELL", "the identifier of the object");
  ZefUnicodeString* text = nullptr;
  ZefUnicodeString* other = nullptr;
  adapter->GetIDString(cell, text);
  adapter->GetIDString(cell, other);
  bench.Require(text && other, "an object has a text of its identifier");
  bench.Require(text != other, "GetIDString makes a new text each time");
  const std::unique_ptr<ZefUnicodeString> first(text), second(other);
  bench.Equal(first->ConvertToChar(), "CELL", "the text of its identifier");
}

void Unknown(Bench& bench) {
  const auto adapter = Adapter(bench);
  const Object cell = Find(bench, adapter, "CELL");
  Object found;
  bench.Expect(Failed(adapter->GetObjectFromID("nobody", found.Put())) && !found,
               "an unknown identifier finds nothing and fails");
  bench.Expect(Failed(adapter->GetIPDObject(bench.op11, found.Put())) && !found,
               "an activity that belongs to no process has no object");
  bench.Expect(Failed(adapter->GetBaseProcess(cell, found.Put())) && !found,
               "what is no base process is none");
}

void NullFeature(Bench& bench) {
  Adapter(bench);
  const ZefICompoundContainer_var compound =
      bench.Ask<ZefDocument>(bench.document)->GetCompoundContainer();
  bench.Need(compound, "compound container");
  const auto container =
      AdoptAs<TuvIBIWFeatureContainer>(compound->GetContainer("TuvFPPContainer"));
  if (!container) throw Skipped("the fasteners' container does not answer TuvIBIWFeatureContainer");
  ZefListPtrZefListValZefUnicodeString versions;
  ZefListValZefUnicodeString assignments;
  for (const TuvIBIWFeature_var& feature :
       {TuvIBIWFeature_var(), TuvIBIWFeature_var(bench.loose)}) {
    container->ListProcessVersionIDs(feature, versions);
    container->ListPaskAssignmentIDs(feature, assignments);
  }
  bench.Expect(versions.Size() == 0 && assignments.Size() == 0,
               "nothing is known of a null feature, and of one that the database does not have");
  if (const TuvISpotWeld_var weld = bench.loose) {
    bench.Expect(Failed(weld->IsAssignedInPask()),
                 "a weld that the database does not assign is not assigned");
  }
}

}  // namespace

std::vector<Check> DatabaseChecks() {
  return {
      {{"database.one-object", kData, "A process is one object while anyone holds it."},
       &OneObject},
      {{"database.references", kAdapter, "Objects come with a reference for the caller."},
       &References},
      {{"database.parents", kData, "Parents come in a new list, with a reference each."}, &Parents},
      {{"database.identifiers", kAdapter, "An object tells its identifier."}, &Identifiers},
      {{"database.unknown", kAdapter, "What the database does not have it does not give."},
       &Unknown},
      {{"database.null-feature", "host/fastening/TuvIBIWFeatureContainer.h",
        "Of a null feature the database knows nothing."},
       &NullFeature},
  };
}

}  // namespace hostcheck
