#include <algorithm>
#include <string_view>

#include "hostcheck/Bench.h"
#include "hostcheck/Check.h"

namespace hostcheck {

namespace {

const std::vector<Check>& AllChecks() {
  static const std::vector<Check> all = [] {
    std::vector<Check> joined;
    for (const auto group :
         {&IdentityChecks, &CountingChecks, &ReferenceChecks, &OwnedListChecks, &ExtensionChecks,
          &DocumentChecks, &ItemChecks, &FlowChecks, &TreeChecks, &ProductChecks,
          &NotificationChecks, &RemovalChecks, &ApplicationChecks, &DatabaseChecks,
          &VisualisationChecks, &RandomChecks, &NullChecks}) {
      const auto checks = group();
      joined.insert(joined.end(), checks.begin(), checks.end());
    }
    return joined;
  }();
  return all;
}

// Said once the host is set up.
constexpr char kReady[] = "ready";

void Perform(const Check& check, const HooksFactory& make, const Say& say) {
  try {
    const std::unique_ptr<HostHooks> hooks = make();
    Bench bench(*hooks, say);
    bench.Open();
    say(kReady);
    try {
      check.run(bench);
    } catch (const Broken& broken) {
      say(std::string("fail ") + broken.what());
    } catch (const Skipped& skipped) {
      say(std::string("skip ") + skipped.what());
    }
    bench.Close();
  } catch (const std::exception& raised) {
    say(std::string("fail the host threw: ") + raised.what());
  } catch (...) {
    say("fail the host threw something that is no std::exception");
  }
}

void AddReason(Outcome& outcome, const std::string& reason) {
  if (!outcome.reason.empty()) outcome.reason += "; ";
  outcome.reason += reason;
}

// A finding outweighs what could not be asked.
Outcome Judge(const Apart& apart) {
  constexpr std::string_view kFail = "fail ", kSkip = "skip ";
  Outcome failed, skipped{Verdict::Skip};
  for (const std::string& line : apart.lines) {
    if (line.starts_with(kFail)) AddReason(failed, line.substr(kFail.size()));
    if (line.starts_with(kSkip)) AddReason(skipped, line.substr(kSkip.size()));
  }
  const bool isReady = std::count(apart.lines.begin(), apart.lines.end(), kReady) > 0;
  if (!apart.fault.empty()) {
    AddReason(failed, isReady ? apart.fault : "while it was set up, " + apart.fault);
    failed.isStuck = !isReady && !apart.inTime;
  }
  if (!failed.reason.empty()) return failed;
  return skipped.reason.empty() ? Outcome{Verdict::Pass} : skipped;
}

}  // namespace

std::vector<CheckInfo> ListChecks() {
  std::vector<CheckInfo> infos;
  for (const Check& check : AllChecks()) infos.push_back(check.info);
  return infos;
}

Outcome RunCheck(const std::string& iIdentifier, const HooksFactory& iMake, double iSecondsAtMost) {
  for (const Check& check : AllChecks()) {
    if (iIdentifier != check.info.identifier) continue;
    return Judge(RunApart([&](const Say& say) { Perform(check, iMake, say); }, iSecondsAtMost));
  }
  return {Verdict::Fail, "there is no check \"" + iIdentifier + "\""};
}

}  // namespace hostcheck
