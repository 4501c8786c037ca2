#include <memory>

#include "host/dialog/ZefApplicationFrame.h"
#include "host/dialog/ZefDlgNotify.h"
#include "host/dialog/ZefFrmWindow.h"
#include "host/dialog/ZefGetEnv.h"
#include "host/dialog/ZefMsgCatalog.h"
#include "host/values/ZefListValZefUnicodeString.h"
#include "manufassly/TuvEUpdateManufAssly.h"

namespace {

constexpr unsigned int kWarningStyle = 0x04140200;

struct Warning {
  ZefUnicodeString title;
  ZefUnicodeString message;
};

ZefUnicodeString Text(ZefMsgCatalog& catalog, const char* key) {
  const ZefMsg* const message = catalog.GetCatalogMsg(key);
  return message ? message->BuildMessage() : ZefUnicodeString();
}

// The non-empty pieces, each ended by a "$".
ZefListValZefUnicodeString Pieces(const ZefUnicodeString& names) {
  ZefListValZefUnicodeString pieces;
  int start = 0;
  for (int end = 0; (end = names.SearchSubString("$", start, 0)) >= 0; start = end + 1) {
    if (end > start) pieces.Append(names.SubString(start, end - start));
  }
  return pieces;
}

ZefUnicodeString Recursion(ZefMsgCatalog& catalog, ZefUnicodeString& ioNames) {
  ioNames.Append("$");
  const ZefListValZefUnicodeString names = Pieces(ioNames);
  const bool both = names.Size() >= 2;
  const ZefUnicodeString first = both ? names[1] : ZefUnicodeString();
  const ZefUnicodeString second = both ? names[2] : ZefUnicodeString();
  return Text(catalog, "ErrorMessageForRecursion") + first + "\n" + Text(catalog, "MAIsChild") +
         second;
}

Warning Compose(ZefMsgCatalog& catalog, ZefUnicodeString& ioNames, const ZefUnicodeString& id) {
  if (id == "RemovedFirstAssign") {
    return {Text(catalog, "WarningMessage.Title"),
            Text(catalog, "WarningMessageInputRemoved") + ioNames + "\n"};
  }
  Warning warning{Text(catalog, "ErrorMessage.Title"), {}};
  if (id == "MultipleActsInFlow") {
    warning.message = Text(catalog, "ErrorMessageProcessFlow") + ioNames + "\n" + Text(catalog, id);
  } else if (id == "MultipleProductOutput") {
    warning.message = Text(catalog, "ErrorMessageProductFlow") + ioNames + "\n" + Text(catalog, id);
  } else if (id == "MAIsChild") {
    warning.message = Recursion(catalog, ioNames);
  }
  return warning;
}

// Hides a dialog and has it destroyed, also when showing it raised an exception.
struct Dismiss {
  void operator()(ZefDlgNotify* dialog) const {
    dialog->SetVisibility(2);
    dialog->RequestDelayedDestruction();
  }
};

void Show(const Warning& warning, ZefFrmWindow* parent) {
  const std::unique_ptr<ZefDlgNotify, Dismiss> dialog(
      new ZefDlgNotify(parent, "Warning", kWarningStyle));
  if (dialog) dialog->DisplayBlocked(warning.message, warning.title);
}

}  // namespace

HRESULT TuvEUpdateManufAssly::DisplayWarningWindow(ZefUnicodeString& ioNames,
                                                   ZefUnicodeString& iMessageId) {
  ZefApplicationFrame* const frame = ZefApplicationFrame::GetFrame();
  if (!frame) return E_FAIL;
  ZefMsgCatalog catalog;
  Warning warning;
  if (catalog.LoadMsgCatalog("TuvBIWUpdateManufAssemblyCmd", 0)) {
    warning = Compose(catalog, ioNames, iMessageId);
  }
  if (!ZefGetEnv("GORM_VIST_OUT")) Show(warning, frame->GetMainWindow());
  return S_OK;
}
