// Assigns welds and keeps an assembly in step with the process, on a host of one's own.

#include "Application.h"
#include "manufassly/TuvIUpdateManufAssly.h"
#include "services/TuvBIWServices.h"

using namespace workshop;

int main() {
  const auto process = Ref<Process>::Make();
  const Application application(*process);
  Activity& first = process->AddActivity(process->Root(), "ST10", Role::Station);
  Activity& second = process->AddActivity(process->Root(), "ST20", Role::Station);
  const std::array<double, 3> at{100, 0, 250};
  List welds, made;
  welds.Append(process->AddItem<Weld>("SW-1", at).Identity());
  TuvBIWServices::AssignListOfWelds(&welds, &first, nullptr, 0);
  // From here on, what a station makes goes to the one that follows.
  TuvIUpdateManufAssly_var(first.Identity())->AddUpdateCallback();
  process->DrawFlow(first, second);
  ZefISPPActivity_var station = first.Identity();
  TuvBIWServices::CreateProductOutput(station, made);
  const auto assigned = first.OwnLinks().size(), linked = second.OwnLinks().size();
  std::cout << assigned << " weld at ST10, " << linked << " links to what it makes at ST20\n";
  return assigned == 1 && linked == 2 ? 0 : 1;
}
