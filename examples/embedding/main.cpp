// Plans three welds in an application of one's own, on the in-memory host.

#include <iostream>
#include <memory>

#include "embedded/Application.h"
#include "embedded/dialog/ConsoleDialogs.h"
#include "host/values/Each.h"
#include "services/TuvBIWServices.h"

namespace {

using embedded::ActivityData;
using embedded::Document;

ZefListValZefBaseUnknown_var LayOutWelds(Document& document) {
  embedded::Product& outer = document.AddProduct(document.RootProduct(), {.key = "outer panel"});
  embedded::Product& inner = document.AddProduct(document.RootProduct(), {.key = "inner panel"});
  ZefListValZefBaseUnknown_var welds;
  for (const char* const key : {"SW-1", "SW-2", "SW-3"}) {
    embedded::SpotWeldData data;
    data.key = key;
    data.type = "spot";
    data.parts = {&outer, &inner};
    data.position = {100.0 + 40.0 * welds.Size(), 0, 250, 0, 0, 0};  // mm, degrees
    welds.Append(document.AddSpotWeld(data).Identity());
  }
  return welds;
}

void PrintWeldsOf(ZefISPPActivity* activity) {
  // The services create the list with the first weld; it is the caller's to delete.
  ZefListValZefBaseUnknown_var* found = nullptr;
  TuvBIWServices::GetWeldFromActivity(activity, found, 1, 0);
  const std::unique_ptr<ZefListValZefBaseUnknown_var> welds(found);
  for (const auto& weld : Each<ZefBaseUnknown>(welds)) {
    std::cout << TuvBIWServices::GetWeldID(weld).ConvertToChar() << "\n";
  }
}

}  // namespace

int main() {
  embedded::ConsoleDialogs dialogs(std::cout);
  embedded::Application application(dialogs);

  const auto document = embedded::MakeOwned<Document>(Document::Kind::Process);
  ZefListValZefBaseUnknown_var welds = LayOutWelds(*document);
  embedded::Activity& station = document->AddActivity(
      *document->Root(), {.key = "ST10", .role = ActivityData::Role::Station});
  embedded::Activity& operation =
      document->AddActivity(station, {.key = "OP10", .task = ActivityData::Task::Welding});
  application.Edit(document);

  const ZefISPPActivity_var activity = operation.Identity();
  const HRESULT first = TuvBIWServices::AssignListOfWelds(&welds, activity, nullptr, 0);
  // The second time every weld is there already: a dialog says so.
  const HRESULT second = TuvBIWServices::AssignListOfWelds(&welds, activity, nullptr, 0);
  PrintWeldsOf(activity);
  return Succeeded(first) && Failed(second) ? 0 : 1;
}
