#include "host/component/LiveObjects.h"
#include "host/document/Document.h"
#include "host/fastening/Fastening.h"
#include "host/process/Process.h"
#include "hostcheck/Bench.h"
#include "hostcheck/Check.h"

namespace hostcheck {

namespace {

void Dispatcher(Bench& bench) {
  const auto of = [&](ZefBaseUnknown* activity) {
    return bench.Ask<ZefISPPActivityModificationEvents>(activity)->GetDispatcher();
  };
  bench.Require(of(bench.root) != nullptr, "the process has a dispatcher");
  for (ZefBaseUnknown* const activity : bench.Activities()) {
    bench.Expect(of(activity) == of(bench.root),
                 bench.NameOf(activity) + " has the one dispatcher");
  }
}

void FirstAssigned(Bench& bench) {
  bench.Need(bench.weld, "welds");
  Witness witness(bench);
  witness.see = [&](auto&) { return " beside " + bench.Items(bench.op20, 2); };
  bench.Link(bench.op20, bench.weld, 1);
  bench.Equal(witness.Take(), "", "changes when an item was linked plainly");
  bench.Link(bench.op20, bench.weld, 2);
  bench.Equal(witness.Take(), "17 OP20>SW-1 beside SW-1", "changes when it became first assigned");
  bench.Link(bench.op20, bench.weld, 2);
  bench.Equal(witness.Take(), "", "changes when it was so already");
  bench.Link(bench.op11, bench.weld, 2);
  bench.Equal(witness.Take(), "17 OP11>SW-1 beside SW-1 SW-1",
              "changes when it became so at another activity");
}

void ItemRemoved(Bench& bench) {
  bench.Need(bench.weld, "welds");
  for (const int selector : {1, 2, 2}) bench.Link(bench.op20, bench.weld, selector);
  Witness witness(bench);
  witness.see = [&](auto&) { return " leaving " + bench.Items(bench.op20, 0); };
  bench.Remove(bench.op20, bench.weld, 2);
  bench.Equal(witness.Take(), "18 OP20>SW-1 leaving SW-1",
              "changes when the first-assigned links went");
  bench.Remove(bench.op20, bench.weld, -1);
  bench.Equal(witness.Take(), "18 OP20>SW-1 leaving ", "changes when the rest went");
  bench.Remove(bench.op20, bench.weld, -1);
  bench.Equal(witness.Take(), "", "changes when nothing was left to remove");
}

void FlowDrawn(Bench& bench) {
  Witness witness(bench);
  witness.see = [&](auto&) {
    return " between " + bench.Previous(bench.st30) + " and " + bench.Next(bench.st20);
  };
  bench.Draw(bench.st20, bench.st30);
  bench.Equal(witness.Take(), "30 ST20-ST30 between ST20 and ST30",
              "changes when a flow was drawn, which both ends list");
}

void FlowRemoved(Bench& bench) {
  Witness witness(bench);
  witness.see = [&](auto&) {
    return " between " + bench.Previous(bench.st20) + " and " + bench.Next(bench.st10);
  };
  bench.hooks.RemoveFlow(bench.flow);
  bench.Equal(witness.Take(), "29 ST10-ST20 between  and ",
              "changes when a flow was removed, which both ends dropped and which names them");
}

void Output(Bench& bench) {
  bench.Need(bench.output, "product outputs");
  Witness witness(bench);
  witness.see = [&](auto&) {
    return " among " + std::to_string(bench.Outputs(bench.st20).size() > 0);
  };
  bench.AddOutput(bench.st20, bench.assembly);
  bench.Equal(witness.Take(), "39 ST20>output of MA among 1", "changes when an output was added");
  ZefBaseUnknown* const empty = bench.AddOutput(bench.st20, nullptr);
  bench.Equal(witness.Take(), "", "changes when an output without product was added");
  bench.Ask<ZefISPPProductIO>(empty)->SetProduct(bench.Ask<ZefISPPItem>(bench.sub));
  bench.Equal(witness.Take(), "39 ST20>output of SUB among 1", "changes when it got its product");
}

void OutputRemoved(Bench& bench) {
  bench.Need(bench.output, "product outputs");
  Witness witness(bench);
  witness.see = [&](ZefSPPActivityNotification& change) {
    return std::string(" a ") + change.GetSon()->IsA() + " of " + bench.Outputs(bench.st10);
  };
  bench.hooks.RemoveOutput(bench.st10, bench.output);
  bench.Equal(witness.Take(),
              "18 ST10>output of MA a ProductOutput of ST10.1, "
              "29 ST10>output of MA a ProductOutput of ",
              "changes when an output was removed, listed first and then not");
}

// A change raised while another one is told of.
void Queue(Bench& bench) {
  bench.Need(bench.weld, "welds");
  Witness witness(bench);
  int depth = 0;
  witness.see = [&](ZefSPPActivityNotification& change) -> std::string {
    if (++depth > 1) bench.Expect(false, "nothing is delivered within another delivery");
    if (change.GetNotificationKind() == ZefSPPActivityNotification::FlowCreated) {
      bench.Link(bench.op20, bench.weld, 2);
      bench.Link(bench.op11, bench.weld, 2);
    }
    if (change.GetFather() && change.GetFather()->IsEqual(bench.op20)) {
      bench.Remove(bench.op20, bench.weld, -1);
    }
    --depth;
    return "";
  };
  bench.Draw(bench.st20, bench.st30);
  bench.Equal(witness.Take(), "30 ST20-ST30, 17 OP20>SW-1, 17 OP11>SW-1, 18 OP20>SW-1",
              "changes raised by handlers, in their order, when the outermost gesture returned");
}

void QueueHolds(Bench& bench) {
  bench.Need(bench.weld, "welds");
  Witness witness(bench);
  witness.see = [&](ZefSPPActivityNotification& change) -> std::string {
    if (change.GetNotificationKind() != ZefSPPActivityNotification::FlowCreated) return "";
    const long alive = CountLiveObjects();
    ZefBaseUnknown* const passing =
        bench.hooks.AddActivity(bench.st30, "OP31", ActivityRole::Operation);
    bench.Call(passing, "OP31");
    bench.Link(passing, bench.weld, 2);
    bench.hooks.RemoveActivity(passing);
    bench.Expect(CountLiveObjects() > alive, "what waits to be told holds the removed activity");
    return "";
  };
  bench.Draw(bench.st20, bench.st30);
  bench.Equal(witness.Take(), "30 ST20-ST30, 17 OP31>SW-1, 29 ST30>OP31",
              "changes of an activity that was removed before they were told");
}

void Silence(Bench& bench) {
  Witness witness(bench);
  const auto silent = [&](const char* what) { bench.Equal(witness.Take(), "", what); };
  bench.hooks.AddActivity(bench.st30, "OP31", ActivityRole::Operation);
  silent("changes when the model was built");
  if (const ZefIRedrawEvent_var drawn = bench.op10) {
    drawn->Redraw();
    drawn->RedrawNode();
    silent("changes when something was drawn again");
  }
  if (const TuvIMfgAssembly_var assembly = bench.assembly) {
    assembly->AddChild(bench.sub);
    assembly->RemoveChild(bench.sub);
    silent("changes when children of an assembly came and went");
  }
  if (const TuvIBIWFastener_var fastener = bench.weld) {
    fastener->SetDisplayStatus(4, 1);
    silent("changes when a weld got another look");
    ZefBaseUnknown_var held;
    bench.Ask<ZefISPPItemMgt>(bench.op20)->AddItem(bench.weld, held);
    silent("changes when an item was added");
  }
  bench.Ask<ZefISPPItemMgt>(bench.op20)->RemoveItem(nullptr, -1);
  silent("changes when no item was removed");
  bench.State();
  silent("changes when questions were asked");
}

void NeverBlocked(Bench& bench) {
  const auto subscriber = bench.Ask<TuvIRabBltCBSubscriber>(bench.op20);
  bench.Need(bench.weld, "welds");
  Witness witness(bench);
  subscriber->SetCallbacksBlocked(1);
  bench.Link(bench.op20, bench.weld, 2);
  bench.Equal(witness.Take(), "17 OP20>SW-1", "changes while callbacks are suspended");
  bench.Remove(bench.op20, bench.weld, -1);
  bench.Equal(witness.Take(), "18 OP20>SW-1", "changes while callbacks are suspended");
  subscriber->SetCallbacksBlocked(0);
  if (const TuvIRabBltMgr_var pending = bench.op20) pending->ProcessPendingUpdates();
  bench.Equal(witness.Take(), "", "changes when what was suspended is run");
}

void TwoWitnesses(Bench& bench) {
  Witness first(bench), second(bench);
  bench.Draw(bench.st20, bench.st30);
  bench.Equal(first.Take(), "30 ST20-ST30", "changes told to the first subscriber");
  bench.Equal(second.Take(), "30 ST20-ST30", "changes told to the second subscriber");
}

}  // namespace

std::vector<Check> NotificationChecks() {
  static constexpr char kItems[] = "host/process/ZefISPPItemMgt.h";
  static constexpr char kOutput[] = "host/process/ZefISPPProductIO.h";
  static constexpr char kChange[] = "host/process/ZefSPPActivityNotification.h";
  static constexpr char kCallbacks[] = "host/component/Callbacks.h";
  return {
      {{"notifications.dispatcher", "host/process/ZefISPPActivityModificationEvents.h",
        "A process has one dispatcher, the same from every activity."},
       &Dispatcher},
      {{"notifications.first-assigned", kItems,
        "Kind 17 comes once an item became first assigned that was not."},
       &FirstAssigned},
      {{"notifications.item-removed", kItems,
        "Kind 18 comes once per removal, after the links went."},
       &ItemRemoved},
      {{"notifications.flow-drawn", kChange, "Kind 30 comes once both ends list the flow."},
       &FlowDrawn},
      {{"notifications.flow-removed", kChange, "Kind 29 comes once both ends dropped the flow."},
       &FlowRemoved},
      {{"notifications.output", kOutput, "Kind 39 comes once an output got its product."}, &Output},
      {{"notifications.output-removed", kOutput,
        "A removed output is told of as kind 18 while listed, as kind 29 afterwards."},
       &OutputRemoved},
      {{"notifications.queue", kCallbacks, "What handlers raise is told after them, in its order."},
       &Queue},
      {{"notifications.references", kCallbacks, "A change that waits holds father and son."},
       &QueueHolds},
      {{"notifications.silence", kItems, "Nothing else notifies."}, &Silence},
      {{"notifications.never-blocked", "host/fastening/TuvIRabBltCBSubscriber.h",
        "Suspended item-change callbacks suspend no notification."},
       &NeverBlocked},
      {{"notifications.everyone", kCallbacks, "Every subscriber is told."}, &TwoWitnesses},
  };
}

}  // namespace hostcheck
