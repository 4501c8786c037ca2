#pragma once

#include <algorithm>
#include <cstddef>
#include <functional>
#include <memory>
#include <unordered_set>
#include <vector>

#include "host/component/Handle.h"
#include "host/values/PositionIndex.h"
#include "host/values/ZefListValZefBaseUnknown_var.h"

// What a walk does after it met an object.
enum class Onward { Below, Past, Stop };

// Refuses to enter an object that is on the current path, so that rings end. It holds these
// objects: no other one may come to lie at the address of one of them.
class PathGuard {
  auto At() const {
    return [this](int position) { return path_[static_cast<std::size_t>(position - 1)].Get(); };
  }

 public:
  bool Enter(const ZefBaseUnknown* iObject) {
    ZefBaseUnknown* const identity = IdentityOf(iObject);
    if (!index_.IsBuilt() && Size() == kScanned) BuildIndex();
    if (IsOnPath(identity)) return false;
    path_.emplace_back(identity);
    if (index_.IsBuilt() && index_.IsCrowded()) BuildIndex();
    return true;
  }
  // Leaves what was entered last.
  void Leave() {
    if (index_.IsBuilt()) index_.DropLast(path_.back().Get(), Size(), At());
    path_.pop_back();
  }

 private:
  // Most paths are short, and then a scan costs less than an index.
  static constexpr int kScanned = 24;

  int Size() const { return static_cast<int>(path_.size()); }
  // Enters what is not into the index, if there is one.
  bool IsOnPath(const ZefBaseUnknown* identity) {
    if (index_.IsBuilt()) return index_.Add(identity, Size() + 1, At()) != 0;
    return std::ranges::find(path_, identity, &ZefBaseUnknown_var::Get) != path_.end();
  }
  void BuildIndex() {
    index_.Reset(path_.size());
    for (int i = 1; i <= Size(); ++i) index_.Add(At()(i), i, At());
  }

  std::vector<ZefBaseUnknown_var> path_;
  PositionIndex index_;
};

// For trees, in which hosts refuse rings, so that nothing is lost by looking at every eighth object
// of a path alone: a ring ends as well, only later.
class SparseGuard {
 public:
  bool Enter(const ZefBaseUnknown* iObject) {
    if (depth_ % kStride == 0 && !guard_.Enter(iObject)) return false;
    ++depth_;
    return true;
  }
  void Leave() {
    if (--depth_ % kStride == 0) guard_.Leave();
  }

 private:
  static constexpr std::size_t kStride = 8;
  PathGuard guard_;
  std::size_t depth_ = 0;
};

// Enters each object once in the whole walk, for those that look for something or collect a set:
// what shares its parts is then no longer walked along every path. It holds the objects.
class OnceGuard {
 public:
  bool Enter(const ZefBaseUnknown* iObject) { return entered_.emplace(IdentityOf(iObject)).second; }
  void Leave() const {}

 private:
  struct Hash {
    std::size_t operator()(const ZefBaseUnknown_var& object) const {
      return std::hash<const ZefBaseUnknown*>()(object.Get());
    }
  };
  std::unordered_set<ZefBaseUnknown_var, Hash> entered_;
};

// For walks that end in another way.
struct NoGuard {
  bool Enter(const ZefBaseUnknown*) const { return true; }
  void Leave() const {}
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
    std::unique_ptr<ZefListValZefBaseUnknown_var> list;
    int position = 0;
  };
  std::vector<Step> path;
  Guard guard;
  const auto open = [&](const Handle<I>& node) {
    if (!guard.Enter(node)) return;
    enter();
    path.push_back({children(node)});
  };
  open(top);
  while (!path.empty()) {
    Step& step = path.back();
    if (!step.list || ++step.position > step.list->Size()) {
      guard.Leave();
      path.pop_back();
      leave();
      continue;
    }
    const Handle<I> child = (*step.list)[step.position];
    if (!child) continue;
    const Onward onward = meet(child, *step.list, step.position);
    if (onward == Onward::Stop) return false;
    // A deep path then holds few lists.
    if (step.position == step.list->Size()) step.list.reset();
    if (onward == Onward::Below) open(child);
  }
  return true;
}

template <class Guard = PathGuard, class I, class Children, class Meet>
bool WalkDepthFirst(const Handle<I>& top, const Children& children, const Meet& meet) {
  return WalkDepthFirst<Guard>(
      top, children, meet, [] {}, [] {});
}
