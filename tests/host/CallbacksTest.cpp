#include <functional>
#include <utility>

#include "tests/host/Step.h"

namespace {

using Calls = std::vector<std::string>;

// What was called, in order; `react` runs within the next call.
struct Log {
  Calls calls;
  std::function<void()> react;
};

class Listener : public ZefBaseUnknown {
 public:
  explicit Listener(Log& log) : log_(log) {}
  void Hear(const char*, void*, ZefNotification*, void* data, long) {
    log_.calls.emplace_back(static_cast<const char*>(data));
    if (const auto react = std::exchange(log_.react, {})) react();
  }

 private:
  Log& log_;
};

void HearPlainly(const char* event, void*, ZefNotification*, void* data, long) {
  static_cast<Log*>(data)->calls.emplace_back(event);
}

class CallbacksTest : public tests::ReferenceAudit {
 protected:
  void TearDown() override {
    publisher = nullptr;
    listener = nullptr;
    EXPECT_EQ(CountCallbacks(), before);
    ReferenceAudit::TearDown();
  }
  long Subscribe(const char* data, const char* event = "event") {
    return AddCallback(nullptr, publisher, event, {listener.Get(), &Listener::Hear},
                       const_cast<char*>(data));
  }
  long SubscribePlainly() { return AddCallback(listener, publisher, "event", HearPlainly, &log); }
  Calls Published() {
    Deliver(publisher, "event", nullptr);
    return std::exchange(log.calls, {});
  }

  int before = CountCallbacks();
  Log log;
  ZefBaseUnknown_var publisher = tests::MakeStep();
  Handle<Listener> listener = Make<Listener>(log);
};

TEST_F(CallbacksTest, RunInTheOrderOfTheirIdentifiersWhichAreNeverUsedAgain) {
  const long first = Subscribe("1");
  const long second = Subscribe("2");
  Subscribe("3", "other event");
  const long plain = SubscribePlainly();
  EXPECT_TRUE(0 < first && first < second && second < plain);
  EXPECT_EQ(Published(), (Calls{"1", "2", "event"}));
  RemoveCallback(nullptr, publisher, first);
  RemoveCallback(nullptr, publisher, plain);
  EXPECT_GT(Subscribe("4"), plain);
  EXPECT_EQ(Published(), (Calls{"2", "4"}));
  EXPECT_EQ(Subscribe("5", nullptr), 0);
  EXPECT_EQ(AddCallback(nullptr, nullptr, "event", HearPlainly, &log), 0);
}

TEST_F(CallbacksTest, EndByPublisherAndIdentifierWhicheverInterfaceOrSubscriberIsNamed) {
  const long callback = SubscribePlainly();
  RemoveCallback(listener, listener, callback);
  RemoveCallback(listener, publisher, callback + 1);
  RemoveCallback(listener, nullptr, callback);
  Deliver(ZefISPPItem_var(publisher).Get(), "event", nullptr);
  EXPECT_EQ(Published(), (Calls{"event", "event"}));
  RemoveCallback(nullptr, ZefISPPActivity_var(publisher).Get(), callback);
  EXPECT_EQ(Published(), Calls{});
}

TEST_F(CallbacksTest, ChangesDuringADeliveryHoldFromTheNextCall) {
  const long first = Subscribe("1");
  const long second = Subscribe("2");
  log.react = [&] {
    RemoveCallback(nullptr, publisher, first);
    RemoveCallback(nullptr, publisher, second);
    Subscribe("3");
  };
  EXPECT_EQ(Published(), Calls{"1"});
  EXPECT_EQ(Published(), Calls{"3"});
}

TEST_F(CallbacksTest, APublisherThatDiesTakesItsSubscriptionsAlong) {
  Subscribe("1");
  Subscribe("2");
  EXPECT_EQ(listener->ReferenceCount(), 3u) << "a subscription keeps its receiver";
  log.react = [&] { publisher = nullptr; };
  EXPECT_EQ(Published(), Calls{"1"});
  EXPECT_EQ(listener->ReferenceCount(), 1u);
}

TEST_F(CallbacksTest, AReceiverLivesThroughTheCallThatEndsItsSubscription) {
  const long alive = CountLiveObjects();
  const long callback = Subscribe("1");
  listener = nullptr;
  EXPECT_EQ(CountLiveObjects(), alive);
  log.react = [&] { RemoveCallback(nullptr, publisher, callback); };
  EXPECT_EQ(Published(), Calls{"1"});
  EXPECT_EQ(CountLiveObjects(), alive - 1);
}

TEST_F(CallbacksTest, ArePurgedByTheAddressOfTheirCode) {
  Subscribe("1");
  SubscribePlainly();
  const auto* const code = reinterpret_cast<const char*>(&HearPlainly);
  EXPECT_EQ(PurgeCallbacks(code + 1, code + 2) + PurgeCallbacks(code, code), 0);
  EXPECT_EQ(PurgeCallbacks(code, code + 1), 1);
  EXPECT_EQ(Published(), Calls{"1"});
  const ZefCallbackMethod member(listener.Get(), &Listener::Hear);
  EXPECT_EQ(PurgeCallbacks(member.Code(), static_cast<const char*>(member.Code()) + 1), 1);
}

}  // namespace
