#pragma once

#include <vector>

#include "host/process/ZefISPPActivity.h"
#include "services/ActivityTree.h"
#include "services/DepthFirst.h"

// Walks back along the flow, depth first and without recursion. What has no previous activity goes
// on with its parent. The guard says which activities are entered: with PathGuard every path is
// walked, with OnceGuard every activity.
template <class Guard>
class WalkBack {
 public:
  // `visit` is called for each previous activity, before those before it.
  template <class Visit>
  void Run(const ZefISPPActivity_var& iActivity, const Visit& visit) {
    Enter(iActivity);
    while (!path_.empty()) {
      if (!VisitNextPrevious(visit)) Leave();
    }
  }

 private:
  struct Step {
    ZefISPPActivity_var activity;
    ZefListValZefBaseUnknown_var previous;
    int position = 0;
  };

  void Enter(const ZefISPPActivity_var& activity) {
    if (!activity || !guard_.Enter(activity)) return;
    path_.push_back({activity, PreviousActivities(activity)});
  }

  void Leave() {
    guard_.Leave();
    path_.pop_back();
  }

  // An activity at the start of a flow has what reaches its parent.
  void ClimbToParent(const Step& step) { Enter(ParentOf(*step.activity)); }

  // False when the activity on top has no more.
  template <class Visit>
  bool VisitNextPrevious(const Visit& visit) {
    Step& step = path_.back();
    const bool isFirstVisit = ++step.position == 1;
    if (isFirstVisit && step.previous.Size() == 0) {
      ClimbToParent(step);
      return true;
    }
    if (step.position > step.previous.Size()) return false;
    const ZefISPPActivity_var previous = step.previous[step.position];
    if (!previous) return true;
    visit(previous);
    Enter(previous);
    return true;
  }

  std::vector<Step> path_;
  Guard guard_;
};
