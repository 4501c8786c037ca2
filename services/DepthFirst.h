#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <vector>

#include "host/component/Handle.h"
#include "host/values/PositionIndex.h"
#include "host/values/ZefListValZefBaseUnknown_var.h"

// What a walk does after it met an object.
enum class Onward { Below, Past, Stop };

// Refuses to enter an object that is on the current path, so that rings end. What is entered last
// is left first.
class PathGuard {
  auto At() const {
    return [this](int position) { return path_[static_cast<std::size_t>(position - 1)]; };
  }

 public:
  bool Enter(const ZefBaseUnknown* iIdentity) {
    if (IsOnPath(iIdentity)) return false;
    path_.push_back(iIdentity);
    if (index_.IsBuilt() && !index_.Add(iIdentity, Size(), At())) BuildIndex();
    return true;
  }
  void Leave(const ZefBaseUnknown* iIdentity) {
    if (index_.IsBuilt()) index_.Drop(iIdentity, Size(), At());
    path_.pop_back();
  }

 private:
  // Most paths are short, and then a scan costs less than an index.
  static constexpr int kScanned = 24;

  int Size() const { return static_cast<int>(path_.size()); }
  bool IsOnPath(const ZefBaseUnknown* identity) {
    if (!index_.IsBuilt() && Size() == kScanned) BuildIndex();
    if (index_.IsBuilt()) return index_.Find(identity, At()) != 0;
    return std::find(path_.begin(), path_.end(), identity) != path_.end();
  }
  void BuildIndex() {
    index_.Reset(path_.size());
    for (int i = 1; i <= Size(); ++i) index_.Add(At()(i), i, At());
  }

  std::vector<const ZefBaseUnknown*> path_;
  PositionIndex index_;
};

// For walks that end in another way.
struct NoGuard {
  bool Enter(const ZefBaseUnknown*) const { return true; }
  void Leave(const ZefBaseUnknown*) const {}
};

// Walks objects depth first, in the order of a recursive walk but without recursion: trees and
// flows are as deep as their author likes.
//
// `children(node)` answers a new list or null; `meet(child, list, position)` is called for each
// child that answers the interface; `enter()` before the children of a node, `leave()` after them,
// not when the walk was stopped. False when it was.
template <class Guard = PathGuard, class I, class Children, class Meet, class Enter, class Leave>
bool WalkDepthFirst(const Handle<I>& top, const Children& children, const Meet& meet,
                    const Enter& enter, const Leave& leave) {
  struct Step {
    Handle<I> node;
    std::unique_ptr<ZefListValZefBaseUnknown_var> list;
    int position = 0;
  };
  std::vector<Step> path;
  Guard guard;
  const auto open = [&](const Handle<I>& node) {
    if (!guard.Enter(IdentityOf(node))) return;
    enter();
    path.push_back({node, children(node)});
  };
  open(top);
  while (!path.empty()) {
    Step& step = path.back();
    if (!step.list || ++step.position > step.list->Size()) {
      guard.Leave(IdentityOf(step.node));
      path.pop_back();
      leave();
      continue;
    }
    const Handle<I> child = (*step.list)[step.position];
    if (!child) continue;
    const Onward onward = meet(child, *step.list, step.position);
    if (onward == Onward::Stop) return false;
    if (onward == Onward::Below) open(child);
  }
  return true;
}

template <class Guard = PathGuard, class I, class Children, class Meet>
bool WalkDepthFirst(const Handle<I>& top, const Children& children, const Meet& meet) {
  return WalkDepthFirst<Guard>(
      top, children, meet, [] {}, [] {});
}
