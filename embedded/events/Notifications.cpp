#include "embedded/events/Notifications.h"

#include <deque>
#include <utility>

#include "host/component/Callbacks.h"
#include "host/component/Handle.h"

namespace embedded {

namespace {

struct Pending {
  Handle<ZefSPPActivityNotificationDispatcher> dispatcher;
  Handle<ZefSPPActivityNotification> notification;
};

struct Queue {
  std::deque<Pending> pending;
  bool delivering = false;
};

Queue& TheQueue() {
  static Queue queue;
  return queue;
}

// Ends the delivery also when a handler throws; what is still queued then is dropped.
class Delivery {
 public:
  Delivery() { TheQueue().delivering = true; }
  ~Delivery() {
    TheQueue().delivering = false;
    TheQueue().pending.clear();
  }
  Delivery(const Delivery&) = delete;
  Delivery& operator=(const Delivery&) = delete;
};

}  // namespace

void Notify(ZefSPPActivityNotificationDispatcher* iDispatcher, int iKind, ZefBaseUnknown* iFather,
            ZefBaseUnknown* iSon) {
  if (!iDispatcher) return;
  Queue& queue = TheQueue();
  queue.pending.push_back({iDispatcher, Make<ZefSPPActivityNotification>(iFather, iSon, iKind)});
  if (queue.delivering) return;
  const Delivery delivery;
  while (!queue.pending.empty()) {
    const Pending next = std::move(queue.pending.front());
    queue.pending.pop_front();
    Deliver(next.dispatcher, next.dispatcher->GetSPPViewsChange(), next.notification);
  }
}

}  // namespace embedded
