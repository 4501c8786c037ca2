#include <algorithm>
#include <string>
#include <utility>
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

}  // namespace

ZefDlgNotify::ZefDlgNotify(ZefFrmWindow* iParent, const char* iName, unsigned int iStyle)
    : PlatformClass(iParent), parent_(iParent), name_(iName ? iName : ""), style_(iStyle) {
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
  if (!parent_ && !std::exchange(requested_, true)) Requested().push_back(Adopt(this));
}

void ZefDlgNotify::DestroyRequested() { Requested().clear(); }

ZefUnicodeString ZefMsg::BuildMessage(const ZefUnicodeString* iParameters, int iCount) const {
  std::string built;
  for (std::size_t i = 0; i < text_.size(); ++i) {
    // One digit names a parameter, so that "%10" is the first one followed by a zero.
    const int place = text_[i] == '%' && i + 1 < text_.size() ? text_[i + 1] - '0' : 0;
    if (iParameters && 1 <= place && place <= std::min(iCount, 9)) {
      built += iParameters[place - 1].Bytes();
      ++i;
    } else {
      built += text_[i];
    }
  }
  return built;
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
  if (!iCatalog || !iKey || !HostApplication::Installed().FindMessage(iCatalog, iKey, text)) {
    text = iDefault ? iDefault : "";
  }
  return ZefMsg(text).BuildMessage(iParameters, iCount);
}
