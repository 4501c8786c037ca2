#include "embedded/events/Notifications.h"

#include <deque>
#include <exception>
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

class Delivery {
 public:
  Delivery() { TheQueue().delivering = true; }
  ~Delivery() { TheQueue().delivering = false; }
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
  // What the first handler raises passes on once all is delivered.
  std::exception_ptr raised;
  const Delivery delivery;
  while (!queue.pending.empty()) {
    const Pending next = std::move(queue.pending.front());
    queue.pending.pop_front();
    try {
      Deliver(next.dispatcher, next.dispatcher->GetSPPViewsChange(), next.notification);
    } catch (...) {
      if (!raised) raised = std::current_exception();
    }
  }
  if (raised) std::rethrow_exception(raised);
}

}  // namespace embedded
