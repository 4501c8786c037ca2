#include "host/component/Callbacks.h"

#include <map>
#include <string>
#include <type_traits>
#include <unordered_map>
#include <utility>
#include <vector>

#include "host/component/Handle.h"

namespace {

struct Subscription {
  ZefBaseUnknown* publisher;
  std::string event;
  ZefCallbackMethod method;
  void* data;
  ZefBaseUnknown_var receiver;
};

struct Subscriptions {
  std::map<long, Subscription> byIdentifier;
  long last = 0;
  std::unordered_map<const ZefBaseUnknown*, std::shared_ptr<const void>> lives;
};

Subscriptions& All() {
  static Subscriptions* const subscriptions = new Subscriptions;
  return *subscriptions;
}

constexpr long kLastIdentifier = 0x7fffffff;

// Moved out of the table first: giving the receivers back may end further subscriptions. Objects
// that end come here, so no memory is asked for.
template <class Condition>
int EndWhere(const Condition& condition) {
  auto& table = All().byIdentifier;
  std::remove_reference_t<decltype(table)> ended;
  for (auto entry = table.begin(); entry != table.end();) {
    const auto current = entry++;
    if (!condition(current->first, current->second)) continue;
    ended.insert(table.extract(current));
  }
  return static_cast<int>(ended.size());
}

}  // namespace

long AddCallback(ZefBaseUnknown*, ZefBaseUnknown* iPublisher, const char* iEvent,
                 const ZefCallbackMethod& iMethod, void* iData) {
  if (!iPublisher || !iEvent || All().last == kLastIdentifier) return 0;
  const long identifier = ++All().last;
  ZefBaseUnknown* const publisher = IdentityOf(iPublisher);
  ZefBaseUnknown* const receiver = iMethod.Receiver();
  All().byIdentifier.emplace(identifier, Subscription{publisher, iEvent, iMethod, iData, receiver});
  publisher->Note(ObjectRecord::InCallbacks, true);
  if (receiver) receiver->Note(ObjectRecord::InCallbacks, true);
  return identifier;
}

void RemoveCallback(ZefBaseUnknown*, ZefBaseUnknown* iPublisher, long iCallback) {
  EndWhere([&](long identifier, const Subscription& subscription) {
    return identifier == iCallback && subscription.publisher == IdentityOf(iPublisher);
  });
}

void Deliver(ZefBaseUnknown* iPublisher, const char* iEvent, ZefNotification* iNotification) {
  const ZefBaseUnknown* const publisher = IdentityOf(iPublisher);
  std::vector<std::pair<long, Subscription>> snapshot;
  for (const auto& [identifier, subscription] : All().byIdentifier) {
    if (subscription.publisher != publisher || subscription.event != iEvent) continue;
    snapshot.emplace_back(identifier, subscription);
  }
  for (const auto& [identifier, subscription] : snapshot) {
    if (!All().byIdentifier.contains(identifier)) continue;
    subscription.method.Call()(iEvent, iPublisher, iNotification, subscription.data, identifier);
  }
}

std::weak_ptr<const void> LifeOf(ZefBaseUnknown* iObject) {
  std::shared_ptr<const void>& life = All().lives[iObject];
  if (!life) life = std::make_shared<const bool>();
  iObject->Note(ObjectRecord::InCallbacks, true);
  return life;
}

void ForgetCallbacks(ZefBaseUnknown* iObject) {
  All().lives.erase(iObject);
  EndWhere([&](long, const Subscription& subscription) {
    return subscription.publisher == iObject || subscription.method.Receiver() == iObject;
  });
}

int PurgeCallbacks(const void* iBegin, const void* iEnd) {
  return EndWhere([&](long, const Subscription& subscription) {
    const void* const code = subscription.method.Code();
    return std::less_equal<>()(iBegin, code) && std::less<>()(code, iEnd);
  });
}

int CountCallbacks() { return static_cast<int>(All().byIdentifier.size()); }
