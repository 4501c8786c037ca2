#include <string>
#include <vector>

#include "host/HostApplication.h"
#include "host/component/Handle.h"
#include "host/dialog/ZefDlgNotify.h"
#include "host/dialog/ZefFrmWindow.h"
#include "host/dialog/ZefMsgCatalog.h"

namespace {

// Dialogs without parent that wait for their destruction.
std::vector<Handle<ZefDlgNotify>>& Requested() {
  static auto* const requested = new std::vector<Handle<ZefDlgNotify>>;
  return *requested;
}

void Replace(std::string& text, const std::string& place, const std::string& value) {
  const std::size_t found = text.find(place);
  if (found != std::string::npos) text.replace(found, place.size(), value);
}

}  // namespace

ZefDlgNotify::ZefDlgNotify(ZefFrmWindow* iParent, const char* iName, unsigned int iStyle)
    : ZefCommand(iParent), parent_(iParent), name_(iName ? iName : ""), style_(iStyle) {
  if (parent_) parent_->OwnDialog(this);
}

int ZefDlgNotify::DisplayBlocked(const ZefUnicodeString& iMessage, const ZefUnicodeString& iTitle) {
  const int button = HostApplication::Installed().ShowDialog(
      {parent_, name_, style_, iMessage.Bytes(), iTitle.Bytes()});
  closed_ = true;
  return button;
}

void ZefDlgNotify::RequestDelayedDestruction() {
  closed_ = true;
  if (!parent_) Requested().push_back(Adopt(this));
}

void ZefDlgNotify::DestroyRequested() { Requested().clear(); }

ZefUnicodeString ZefMsg::BuildMessage(const ZefUnicodeString* iParameters, int iCount) const {
  std::string text = text_;
  for (int i = 0; iParameters && i < iCount; ++i) {
    Replace(text, "%" + std::to_string(i + 1), iParameters[i].Bytes());
  }
  return text;
}

int ZefMsgCatalog::LoadMsgCatalog(const char* iName, int) {
  if (!iName || !HostApplication::Installed().HasCatalog(iName)) return 0;
  name_ = iName;
  messages_.clear();
  return 1;
}

ZefMsg* ZefMsgCatalog::GetCatalogMsg(const char* iKey) {
  if (name_.empty() || !iKey) return nullptr;
  std::string text;
  HostApplication::Installed().FindMessage(name_, iKey, text);
  return &(messages_[iKey] = ZefMsg(text));
}

ZefUnicodeString ZefMsgCatalog::BuildMessage(const char* iCatalog, const char* iKey,
                                             const ZefUnicodeString* iParameters, int iCount,
                                             const char* iDefault) {
  std::string text;
  if (!HostApplication::Installed().FindMessage(iCatalog, iKey, text)) {
    text = iDefault ? iDefault : "";
  }
  return ZefMsg(text).BuildMessage(iParameters, iCount);
}
