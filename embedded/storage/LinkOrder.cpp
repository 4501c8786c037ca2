#include "embedded/storage/LinkOrder.h"

#include <cstddef>
#include <unordered_map>

namespace embedded {

namespace {

// Appends activity by activity. A link whose item was linked to another activity before draws the
// links of that activity forward, up to the one that is older.
class LinkOrder {
 public:
  explicit LinkOrder(const Document& document);
  std::vector<ItemLink*> List(const Document& document);

 private:
  struct Progress {
    std::vector<ItemLink*> links;
    std::size_t next = 0;
  };
  // Everything in the activity up to one link, which has this place among its item's links.
  struct Task {
    Progress* activity;
    const Linkable* item;
    std::size_t place;
  };

  const ItemLink* OlderThan(const ItemLink& link);
  void Append(Progress& activity);
  void AppendUpTo(const ItemLink& older);
  void Complete(Progress& activity);
  bool IsDone(const Task& task) { return items_[task.item] > task.place; }

  std::unordered_map<const Activity*, Progress> activities_;
  // How many links of an item with several are appended already, or belong to other documents.
  std::unordered_map<const Linkable*, std::size_t> items_;
  std::vector<ItemLink*> order_;
};

LinkOrder::LinkOrder(const Document& document) {
  for (const auto& activity : document.Activities()) {
    std::vector<ItemLink*>& links = activities_[activity.Get()].links;
    activity->Links().ForEach([&](ItemLink& link) { links.push_back(&link); });
  }
}

// The oldest link of the same item that is not appended yet, null when that is `link` itself.
const ItemLink* LinkOrder::OlderThan(const ItemLink& link) {
  if (!link.Target() || link.Target()->Links().size() < 2) return nullptr;
  const std::vector<ItemLink*>& links = link.Target()->Links();
  std::size_t& next = items_[link.Target()];
  while (!activities_.contains(links[next]->OwnActivity())) ++next;
  return links[next] == &link ? nullptr : links[next];
}

void LinkOrder::Append(Progress& activity) {
  ItemLink* const link = activity.links[activity.next++];
  if (link->Target() && link->Target()->Links().size() > 1) ++items_[link->Target()];
  order_.push_back(link);
}

void LinkOrder::AppendUpTo(const ItemLink& older) {
  const auto task = [this](const ItemLink& link) {
    return Task{&activities_[link.OwnActivity()], link.Target(), items_[link.Target()]};
  };
  std::vector<Task> open{task(older)};
  while (!open.empty()) {
    Progress& activity = *open.back().activity;
    if (IsDone(open.back())) {
      open.pop_back();
    } else if (const ItemLink* const first = OlderThan(*activity.links[activity.next])) {
      open.push_back(task(*first));
    } else {
      Append(activity);
    }
  }
}

void LinkOrder::Complete(Progress& activity) {
  while (activity.next < activity.links.size()) {
    if (const ItemLink* const first = OlderThan(*activity.links[activity.next])) {
      AppendUpTo(*first);
    } else {
      Append(activity);
    }
  }
}

std::vector<ItemLink*> LinkOrder::List(const Document& document) {
  for (const auto& activity : document.Activities()) Complete(activities_[activity.Get()]);
  return std::move(order_);
}

}  // namespace

std::vector<ItemLink*> ListLinks(const Document& iDocument) {
  return LinkOrder(iDocument).List(iDocument);
}

}  // namespace embedded
