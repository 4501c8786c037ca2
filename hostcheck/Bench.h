#pragma once

#include <exception>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "host/component/Handle.h"
#include "host/document/ZefIContainer.h"
#include "host/process/ZefISPPControlFlow.h"
#include "host/process/ZefSPPActivityNotification.h"
#include "host/process/ZefSPPActivityNotificationDispatcher.h"
#include "host/values/ZefListValZefBaseUnknown_var.h"
#include "hostcheck/HostCheck.h"
#include "hostcheck/Isolation.h"

namespace hostcheck {

// Ends a check that the host cannot be put to.
class Skipped : public std::exception {
 public:
  explicit Skipped(std::string iReason) : reason_(std::move(iReason)) {}
  const char* what() const noexcept override { return reason_.c_str(); }

 private:
  std::string reason_;
};

// Ends a check that cannot go on after what it found.
class Broken : public Skipped {
 public:
  using Skipped::Skipped;
};

// An object of the host under the name by which findings call it.
struct Specimen {
  std::string name;
  ZefBaseUnknown_var object;
};

// A small line in the host, and what a check says of it. ST10 with OP10 and OP11, ST20 with OP20,
// the logical WAIT and ST30 stand in this order; a flow leads from ST10 to ST20. FRAME, with BOLT
// below it, and DOOR are parts, SW-1 and SW-2 welds, MA and SUB assemblies. SW-1 is assigned to
// OP10 and MA is what ST10 makes. None of the pointers is counted; all but activities may be null.
class Bench {
 public:
  Bench(HostHooks& iHooks, Say iSay) : hooks(iHooks), say_(std::move(iSay)) {}
  Bench(const Bench&) = delete;
  Bench& operator=(const Bench&) = delete;

  // Sets the host up with the line, or tears it down.
  void Open();
  void Close();

  // Findings. `iWhat` says what should have been.
  void Expect(bool iHolds, const std::string& iWhat);
  void Equal(const std::string& iFound, const std::string& iWanted, const std::string& iWhat);
  void Require(bool iHolds, const std::string& iWhat);
  // A finding when the object is missing.
  template <class T>
  T& There(T* iObject, const std::string& iWhat) {
    Require(iObject != nullptr, iWhat);
    return *iObject;
  }

  // Skips the check when the object does not answer the interface, or is not there.
  template <class I>
  Handle<I> Ask(ZefBaseUnknown* iObject) {
    Handle<I> answer = iObject;
    if (!answer) throw Skipped(NameOf(iObject) + " does not answer " + I::ClassName());
    return answer;
  }
  ZefBaseUnknown* Need(ZefBaseUnknown* iObject, const char* iWhat) {
    if (!iObject) throw Skipped(std::string("the host has no ") + iWhat);
    return iObject;
  }

  // Names for findings; a space between those of a list.
  ZefBaseUnknown* Call(ZefBaseUnknown* iObject, const std::string& iName);
  std::string NameOf(const ZefBaseUnknown* iObject) const;
  std::string Names(const ZefListValZefBaseUnknown_var& iList) const;
  // Those of a list that it deletes; "null" for null.
  std::string TakeNames(ZefListValZefBaseUnknown_var* iList) const;
  // Those of what answers the interface in the container of a feature.
  std::string Members(ZefBaseUnknown* iFeature, const char* iType);
  std::string MembersOf(const ZefIContainer_var& iContainer, const char* iType);

  // Shorthands for gestures and questions of many checks.
  HRESULT Link(ZefBaseUnknown* iActivity, ZefBaseUnknown* iItem, int iSelector);
  HRESULT Remove(ZefBaseUnknown* iActivity, ZefBaseUnknown* iItem, int iSelector);
  std::string Items(ZefBaseUnknown* iActivity, int iSelector);
  // Adds an output, named as the activity with the number of the output.
  ZefBaseUnknown* AddOutput(ZefBaseUnknown* iActivity, ZefBaseUnknown* iItem);
  std::string Outputs(ZefBaseUnknown* iActivity);
  // Named by both activities.
  ZefBaseUnknown* Draw(ZefBaseUnknown* iFrom, ZefBaseUnknown* iTo);
  std::string Next(ZefBaseUnknown* iActivity, const char* iType = "Activity");
  std::string Previous(ZefBaseUnknown* iActivity, const char* iType = "Activity");
  std::string Children(ZefBaseUnknown* iActivity, const char* iType = "");
  std::string Parent(ZefBaseUnknown* iActivity);

  // What the activities of the line say of tree, flow, items and outputs.
  std::string State();
  // Null for what is no assembly.
  std::string AssemblyChildren(ZefBaseUnknown* iAssembly);

  // The activities of the line, parents first.
  std::vector<ZefBaseUnknown*> Activities() const;
  // An object of every kind, with what operations hand out of them.
  std::vector<Specimen> Everything();

  HostHooks& hooks;
  ZefBaseUnknown* document = nullptr;
  ZefBaseUnknown* root = nullptr;
  ZefBaseUnknown *st10 = nullptr, *op10 = nullptr, *op11 = nullptr, *st20 = nullptr,
                 *op20 = nullptr, *wait = nullptr, *st30 = nullptr;
  ZefBaseUnknown *frame = nullptr, *bolt = nullptr, *door = nullptr;
  ZefBaseUnknown *weld = nullptr, *loose = nullptr;
  ZefBaseUnknown *assembly = nullptr, *sub = nullptr;
  ZefBaseUnknown *flow = nullptr, *output = nullptr;

 private:
  ZefBaseUnknown* Activity(ZefBaseUnknown* parent, const char* name, ActivityRole role);
  void BuildProcess();
  void BuildProducts();

  Say say_;
  int findings_ = 0;
  bool isOpen_ = false;
  std::map<const ZefBaseUnknown*, std::string> names_;
};

// Writes changes of the process down as "kind father>son", with what `see` sees at that moment.
// Flows are called by their ends and stand alone: they may have a father or none. Outputs are
// called by their products.
class Witness {
 public:
  explicit Witness(Bench& iBench);
  ~Witness();
  Witness(const Witness&) = delete;
  Witness& operator=(const Witness&) = delete;

  // What came since, separated by commas.
  std::string Take();

  std::function<std::string(ZefSPPActivityNotification&)> see;

 private:
  std::string Describe(ZefSPPActivityNotification& change) const;
  static void Hear(const char*, void*, ZefNotification* notification, void* data, long);

  Bench& bench_;
  Handle<ZefSPPActivityNotificationDispatcher> dispatcher_;
  long callback_;
  std::string lines_;
};

// The activities at the ends of a control flow, as "A-B".
std::string EndsOf(const Bench& iBench, const ZefISPPControlFlow_var& iFlow);

// Words in alphabetical order, for lists whose order is the host's own.
std::string Sorted(const std::string& iWords);

// How many references the object has.
unsigned int CountOf(ZefBaseUnknown* iObject);

struct InterfaceInfo {
  const char* name;
  _GUID identifier;
};
// Those that objects of a host may answer.
const std::vector<InterfaceInfo>& AllInterfaces();

// A query by identifier, with the reference for the caller.
ZefBaseUnknown_var AskFor(ZefBaseUnknown* iObject, const _GUID& iIdentifier);

}  // namespace hostcheck
