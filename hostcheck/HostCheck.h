#pragma once

#include <array>
#include <functional>
#include <memory>
#include <string>
#include <vector>

class HostApplication;
class ZefBaseUnknown;

// Checks whether a host keeps the contract of host/. Who has a host implements HostHooks and hands
// a way to make them to HostCheckMain, which is a whole program:
//
//   int main(int argc, char** argv) {
//     return hostcheck::HostCheckMain(argc, argv, [] { return std::make_unique<MyHooks>(); });
//   }
namespace hostcheck {

// What an activity is there for. Stations answer TuvIBIWItemInfo, operations are steps within them
// at which spots are welded, a logical activity only orders the flow.
enum class ActivityRole { Station, Operation, Logical };

// How the checks build a process in a host and change it. Objects are handed over without a
// reference: the document owns them. Who has no such objects answers null, and what asks for them
// is skipped. Names are unique.
class HostHooks {
 public:
  virtual ~HostHooks() = default;

  // Opens a new process document that has a root activity and nothing else, in the editor of an
  // application that it installs. Nobody is there to close a dialog.
  virtual void SetUp() = 0;
  // Ends both. No object is alive afterwards but what the check holds.
  virtual void TearDown() = 0;

  // Valid from SetUp to TearDown, and never null.
  virtual HostApplication* Application() = 0;
  virtual ZefBaseUnknown* Document() = 0;
  virtual ZefBaseUnknown* Root() = 0;

  // Nobody is notified of these.
  virtual ZefBaseUnknown* AddActivity(ZefBaseUnknown* iParent, const char* iName,
                                      ActivityRole iRole) = 0;
  // Below the product list for null.
  virtual ZefBaseUnknown* AddPart(ZefBaseUnknown* /*iParent*/, const char* /*iName*/) {
    return nullptr;
  }
  // A spot weld in mm that joins two parts; either may be null.
  virtual ZefBaseUnknown* AddWeld(const char* /*iName*/, const std::array<double, 3>& /*iAt*/,
                                  ZefBaseUnknown* /*iPart*/, ZefBaseUnknown* /*iOther*/) {
    return nullptr;
  }
  virtual ZefBaseUnknown* AddAssembly(const char* /*iName*/) { return nullptr; }
  // A process of the process database, attached to the document with the first one: below
  // `iParent`, or a base process for null. It belongs to the activity, which may be null. False
  // when the host has no such database.
  virtual bool AddProcess(const char* /*iIdentifier*/, const char* /*iParent*/,
                          ZefBaseUnknown* /*iActivity*/) {
    return false;
  }

  // What a planner does. Items and outputs are linked and added through the interfaces.
  virtual ZefBaseUnknown* DrawFlow(ZefBaseUnknown* iFrom, ZefBaseUnknown* iTo) = 0;
  virtual void RemoveFlow(ZefBaseUnknown* iFlow) = 0;
  virtual void RemoveActivity(ZefBaseUnknown* iActivity) = 0;
  virtual void RemoveOutput(ZefBaseUnknown* iActivity, ZefBaseUnknown* iOutput) = 0;
};

using HooksFactory = std::function<std::unique_ptr<HostHooks>()>;

// The program: `--list`, `--only ID...`, `--json`, `--time-limit SECONDS`. Answers the exit status:
// 0, 1 when a check failed, 2 for arguments that mean nothing.
int HostCheckMain(int iCount, const char* const* iArguments, const HooksFactory& iMake);

// The same for programs of one's own.
struct CheckInfo {
  const char* identifier;  // stays the same in later versions
  const char* header;      // which makes the promise
  const char* promise;     // in one sentence
};
std::vector<CheckInfo> ListChecks();

enum class Verdict { Pass, Fail, Skip };
struct Outcome {
  Verdict verdict = Verdict::Fail;
  std::string reason{};  // empty when it passed
  bool isStuck = false;  // not even set up in time: nor will it be for other checks
};
// Runs the check in a process of its own, so that a crash is a failure, and so is taking longer.
// What the host prints meanwhile goes to the standard error output; it has nothing to read.
// An identifier that there is not fails.
Outcome RunCheck(const std::string& iIdentifier, const HooksFactory& iMake,
                 double iSecondsAtMost = 10);

}  // namespace hostcheck
