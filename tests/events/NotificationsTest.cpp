#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "embedded/events/Notifications.h"
#include "embedded/model/Document.h"
#include "host/component/Callbacks.h"

namespace {

using namespace embedded;
using Strings = std::vector<std::string>;

// Writes each notification as "kind father son" and then runs a reaction.
class Listener : public ZefBaseUnknown {
 public:
  void React(const char*, void*, ZefNotification* notification, void*, long) {
    auto* const change = dynamic_cast<ZefSPPActivityNotification*>(notification);
    lines.push_back(std::to_string(change->GetNotificationKind()) + " " +
                    Name(change->GetFather()) + " " + Name(change->GetSon()));
    const int depth = ++inside;
    if (reaction) reaction(*change);
    EXPECT_EQ(inside--, depth);
    EXPECT_EQ(depth, 1) << "one notification at a time";
  }
  static std::string Name(const ZefBaseUnknown* object) {
    if (!object) return "-";
    const auto* const named = ObjectAs<Aliased>(object);
    return named ? named->Key() : object->IsA();
  }

  Strings lines;
  std::function<void(ZefSPPActivityNotification&)> reaction;
  int inside = 0;
};

class NotificationsTest : public testing::Test {
 protected:
  void SetUp() override {
    for (const char* const key : {"A", "B"}) {
      document->AddActivity(*document->Root(), {.key = key, .role = ActivityData::Role::Station});
    }
    a = document->FindActivity("A");
    b = document->FindActivity("B");
    part = document->AddProduct(document->RootProduct(), {.key = "P"}).Identity();
    AddCallback(nullptr, document->Dispatcher(), document->Dispatcher()->GetSPPViewsChange(),
                {listener.Get(), &Listener::React}, nullptr);
  }
  void DropPart(Activity& activity) {
    ZefBaseUnknown_var link;
    activity.AddItemLink(link.Put(), part, nullptr, "", 1, 2);
  }
  ProductOutput& AddOutput(Activity& activity) {
    Handle<ZefISPPProductIO> output;
    activity.AddProductOutput(output.Put(), nullptr);
    MfgAssembly& assembly = document->AddAssembly();
    output->SetProduct(ZefISPPItem_var(assembly.Identity()));
    return *activity.Outputs().back();
  }

  Owned<Document> document = MakeOwned<Document>(Document::Kind::Process);
  Handle<Listener> listener = Make<Listener>();
  Activity* a = nullptr;
  Activity* b = nullptr;
  ZefBaseUnknown_var part;
};

TEST_F(NotificationsTest, EachGestureRaisesItsKindsInOrder) {
  DropPart(*a);
  DropPart(*a);
  ZefBaseUnknown_var ignored;
  a->AddItem(part, ignored);
  a->RemoveItem(part, -1);
  ControlFlow& flow = document->AddFlow(*a, *b);
  ProductOutput& output = AddOutput(*a);
  document->RemoveOutput(*a, output);
  document->RemoveFlow(flow);
  EXPECT_EQ(listener->lines,
            (Strings{"17 A P", "18 A P", "30 - ControlFlow", "39 A ProductOutput",
                     "18 A ProductOutput", "29 A ProductOutput", "29 - ControlFlow"}));
}

TEST_F(NotificationsTest, WhatIsRemovedIsStillWholeOrAlreadyGoneAsItsKindSays) {
  ControlFlow& flow = document->AddFlow(*a, *b);
  ProductOutput& output = AddOutput(*a);
  Strings seen;
  listener->reaction = [&](ZefSPPActivityNotification& change) {
    if (ObjectAs<ProductOutput>(change.GetSon())) {
      seen.push_back("outputs " + std::to_string(a->Outputs().size()));
    } else if (const auto* const removed = ObjectAs<ControlFlow>(change.GetSon())) {
      seen.push_back("flows " + std::to_string(a->Next().size()) + " to " + removed->To().Key());
    } else {
      seen.push_back("flows " + std::to_string(b->Previous().size()) + " below " +
                     b->Parent()->Key());
    }
  };
  document->RemoveOutput(*a, output);
  document->RemoveActivity(*b);
  EXPECT_EQ(seen, (Strings{"outputs 1", "outputs 0", "flows 1 below Process", "flows 0 to B"}));
  EXPECT_EQ(document->Flows().size(), 0u);
  (void)flow;
}

TEST_F(NotificationsTest, BlockingItemCallbacksSwallowsNoNotification) {
  a->SetCallbacksBlocked(1);
  DropPart(*a);
  EXPECT_EQ(listener->lines, Strings{"17 A P"});
}

TEST_F(NotificationsTest, AHandlerThatThrowsLosesNoNotification) {
  listener->reaction = [&](ZefSPPActivityNotification&) {
    --listener->inside;
    DropPart(*b);
    throw ZefNullHandleException();
  };
  EXPECT_THROW(DropPart(*a), ZefNullHandleException);
  listener->reaction = nullptr;
  document->AddFlow(*a, *b);
  EXPECT_EQ(listener->lines, (Strings{"17 A P", "17 B P", "30 - ControlFlow"}));
}

TEST_F(NotificationsTest, AHandlerMayRemoveWhatIsAboutToBeRemoved) {
  document->AddActivity(*b, {.key = "INNER"});
  document->AddActivity(*b, {.key = "LAST"});
  listener->reaction = [&](ZefSPPActivityNotification&) {
    listener->reaction = nullptr;
    document->RemoveActivity(*document->FindActivity("LAST"));
  };
  document->RemoveActivity(*b);
  EXPECT_EQ(document->FindActivity("LAST"), nullptr);
  EXPECT_EQ(document->FindActivity("B"), nullptr);
}

}  // namespace
