#include "host/component/Callbacks.h"

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "host/component/Handle.h"

namespace {

struct Subscription {
  ZefBaseUnknown* publisher;
  std::string event;
  ZefCallbackMethod method;
  void* data;
};

struct Subscriptions {
  std::map<long, Subscription> byIdentifier;
  long last = 0;
};

Subscriptions& All() {
  static Subscriptions* const subscriptions = new Subscriptions;
  return *subscriptions;
}

constexpr long kLastIdentifier = 0x7fffffff;

// Keeps a receiver alive during a delivery; an extension's count is that of the extended object.
class ReceiverGuard {
 public:
  explicit ReceiverGuard(ZefBaseUnknown* receiver) : receiver_(receiver) {
    if (receiver_) receiver_->AddRef();
  }
  ReceiverGuard(ReceiverGuard&& other) noexcept
      : receiver_(std::exchange(other.receiver_, nullptr)) {}
  ReceiverGuard(const ReceiverGuard&) = delete;
  ~ReceiverGuard() {
    if (receiver_) receiver_->Release();
  }

 private:
  ZefBaseUnknown* receiver_;
};

// Taken out of the table first: giving the receiver back may end further subscriptions.
template <class Condition>
int EndWhere(const Condition& condition) {
  std::vector<ZefBaseUnknown*> receivers;
  auto& table = All().byIdentifier;
  const auto ended = std::erase_if(table, [&](const auto& entry) {
    if (!condition(entry.first, entry.second)) return false;
    receivers.push_back(entry.second.method.Receiver());
    return true;
  });
  for (ZefBaseUnknown* const receiver : receivers) {
    if (receiver) receiver->Release();
  }
  return static_cast<int>(ended);
}

}  // namespace

long AddCallback(ZefBaseUnknown*, ZefBaseUnknown* iPublisher, const char* iEvent,
                 const ZefCallbackMethod& iMethod, void* iData) {
  if (!iPublisher || !iEvent || All().last == kLastIdentifier) return 0;
  const long identifier = ++All().last;
  All().byIdentifier.emplace(identifier, Subscription{iPublisher, iEvent, iMethod, iData});
  iPublisher->Note(ObjectRecord::InCallbacks, true);
  if (ZefBaseUnknown* const receiver = iMethod.Receiver()) {
    receiver->Note(ObjectRecord::InCallbacks, true);
    receiver->AddRef();
  }
  return identifier;
}

void RemoveCallback(ZefBaseUnknown*, ZefBaseUnknown* iPublisher, long iCallback) {
  EndWhere([&](long identifier, const Subscription& subscription) {
    return identifier == iCallback && subscription.publisher == iPublisher;
  });
}

void Deliver(ZefBaseUnknown* iPublisher, const char* iEvent, ZefNotification* iNotification) {
  std::vector<std::pair<long, Subscription>> snapshot;
  std::vector<ReceiverGuard> receivers;
  for (const auto& [identifier, subscription] : All().byIdentifier) {
    if (subscription.publisher != iPublisher || subscription.event != iEvent) continue;
    snapshot.emplace_back(identifier, subscription);
    receivers.emplace_back(subscription.method.Receiver());
  }
  for (const auto& [identifier, subscription] : snapshot) {
    if (!All().byIdentifier.contains(identifier)) continue;
    subscription.method.Call()(iEvent, iPublisher, iNotification, subscription.data, identifier);
  }
}

void ForgetCallbacks(ZefBaseUnknown* iObject) {
  std::erase_if(All().byIdentifier,
                [&](const auto& entry) { return entry.second.method.Receiver() == iObject; });
  EndWhere(
      [&](long, const Subscription& subscription) { return subscription.publisher == iObject; });
}

int PurgeCallbacks(const void* iBegin, const void* iEnd) {
  return EndWhere([&](long, const Subscription& subscription) {
    const void* const code = subscription.method.Code();
    return std::less_equal<>()(iBegin, code) && std::less<>()(code, iEnd);
  });
}

int CountCallbacks() { return static_cast<int>(All().byIdentifier.size()); }
