#include "host/component/Callbacks.h"
#include "host/process/Process.h"
#include "hostcheck/Bench.h"

namespace hostcheck {

Witness::Witness(Bench& iBench) : bench_(iBench) {
  const auto events = bench_.Ask<ZefISPPActivityModificationEvents>(bench_.root);
  dispatcher_ = &bench_.There(events->GetDispatcher(), "the process has a dispatcher");
  callback_ = AddCallback(nullptr, dispatcher_, dispatcher_->GetSPPViewsChange(),
                          ZefCallbackMethod(&Hear), this);
}

Witness::~Witness() { RemoveCallback(nullptr, dispatcher_, callback_); }

std::string Witness::Take() { return std::exchange(lines_, {}); }

std::string Witness::Describe(ZefSPPActivityNotification& change) const {
  const std::string kind = std::to_string(change.GetNotificationKind()) + " ";
  if (const ZefISPPControlFlow_var flow = change.GetSon()) return kind + EndsOf(bench_, flow);
  std::string son = bench_.NameOf(change.GetSon());
  if (const ZefISPPProductIO_var made = change.GetSon()) {
    ZefBaseUnknown_var product;
    made->GetProduct(product.Put());
    son = "output of " + bench_.NameOf(product.Get());
  }
  return kind + bench_.NameOf(change.GetFather()) + ">" + son;
}

void Witness::Hear(const char*, void*, ZefNotification* notification, void* data, long) {
  auto& self = *static_cast<Witness*>(data);
  auto* const change = dynamic_cast<ZefSPPActivityNotification*>(notification);
  if (!change) return;
  std::string line = self.Describe(*change);
  if (self.see) line += self.see(*change);
  self.lines_ += (self.lines_.empty() ? "" : ", ") + line;
}

}  // namespace hostcheck
