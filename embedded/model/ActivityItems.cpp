#include <algorithm>
#include <memory>
#include <new>
#include <utility>

#include "embedded/events/Notifications.h"
#include "embedded/model/Activity.h"
#include "embedded/model/MfgAssembly.h"
#include "embedded/model/Product.h"

namespace embedded {

namespace {

void AppendNew(const ZefBaseUnknown_var& element, ZefListValZefBaseUnknown_var& list) {
  if (list.Locate(element) == 0) list.Append(element);
}

bool IsPartOrAssembly(const ZefBaseUnknown_var& item) {
  return ObjectAs<Product>(item.Get()) || ObjectAs<MfgAssembly>(item.Get());
}

}  // namespace

HRESULT Activity::AddItem(const ZefBaseUnknown_var& iItem, ZefBaseUnknown_var& oItem) {
  if (!iItem || !Admits(iItem) || FaultPoint::Strikes()) return E_FAIL;
  if (!TryLink(iItem, ItemLink::Plain)) return E_FAIL;
  oItem = iItem;
  ItemsChanged();
  return S_OK;
}

HRESULT Activity::RemoveItem(const ZefBaseUnknown_var& iItem, int iSelector) {
  if (!iItem || FaultPoint::Strikes()) return E_FAIL;
  bool removed = false;
  for (ItemLink* const link : LinksOf(iItem.Get())) {
    if (iSelector != -1 && link->GetSelector() != iSelector) continue;
    links_.Remove(link);
    removed = true;
  }
  if (!removed) return E_FAIL;
  ItemsChanged();
  Notify(GetOwnDispatcher(), ZefSPPActivityNotification::ItemRemoved, Identity(), iItem.Get());
  return S_OK;
}

ZefListValZefBaseUnknown_var* Activity::GetItems(const ZefUnicodeString& iType, int iSelector) {
  if (iType != "Item" || FaultPoint::Strikes()) return nullptr;
  auto items = std::make_unique<ZefListValZefBaseUnknown_var>(links_.Size());
  links_.ForEachItem([&](ZefBaseUnknown* item, int selector) {
    if (iSelector == 0 || selector == iSelector) items->Append(item);
  });
  return items.release();
}

HRESULT Activity::AddItemLink(ZefBaseUnknown*& oLink, const ZefISPPItem_var& iItem,
                              ZefBaseUnknown* iSource, const ZefUnicodeString& iName, int iFixed,
                              int iSelector) {
  const ZefBaseUnknown_var item = iItem;
  if (!item || !Admits(item) || FaultPoint::Strikes()) return E_FAIL;
  const std::vector<ItemLink*> before = LinksOf(item.Get());
  const bool isNew = std::none_of(before.begin(), before.end(), [](const ItemLink* link) {
    return link->GetSelector() == ItemLink::FirstAssigned;
  });
  ItemLink* const link = TryLink(item, iSelector);
  if (!link) return E_FAIL;
  link->SetDetails({iSource, iName.Bytes(), iFixed});
  oLink = ZefBaseUnknown_var(link->Identity()).Detach();
  ItemsChanged();
  if (isNew && iSelector == ItemLink::FirstAssigned) {
    Notify(GetOwnDispatcher(), ZefSPPActivityNotification::ItemFirstAssigned, Identity(),
           item.Get());
  }
  return S_OK;
}

ItemLink* Activity::Link(const ZefBaseUnknown_var& iItem, int iSelector) {
  ItemLink* const link = TryLink(iItem, iSelector);
  if (!link) throw std::bad_alloc();
  return link;
}

// Objects of another host are unknown to files, but not to activities.
bool Activity::Admits(const ZefBaseUnknown_var& iItem) const {
  const auto* const target = ObjectAs<Linkable>(iItem.Get());
  return !target || target->IsPartOf(OwnDocument());
}

ItemLink* Activity::TryLink(const ZefBaseUnknown_var& iItem, int iSelector) {
  Owned<ItemLink> link = TryMakeOwned<ItemLink>(this, iItem.Get(), iSelector);
  ItemLink* const added = link.Get();
  if (added) links_.Add(std::move(link));
  return added;
}

std::vector<ItemLink*> Activity::LinksOf(const ZefBaseUnknown* iItem) const {
  std::vector<ItemLink*> links;
  if (const auto* const target = ObjectAs<Linkable>(iItem)) {
    for (ItemLink* const link : target->Links()) {
      if (link->OwnActivity() == this) links.push_back(link);
    }
    return links;
  }
  // An object of another host is only known to the activity.
  links_.ForEach([&](ItemLink& link) {
    if (link.Item().Get() == iItem) links.push_back(&link);
  });
  return links;
}

HRESULT Activity::GetInputItems(ZefListValZefBaseUnknown_var& ioList) {
  if (FaultPoint::Strikes()) return E_FAIL;
  for (const Activity* const activity : OwnScope()) {
    activity->links_.ForEach([&](const ItemLink& link) {
      if (link.GetSelector() == ItemLink::FirstAssigned && IsPartOrAssembly(link.Item())) {
        AppendNew(link.Item(), ioList);
      }
    });
  }
  return S_OK;
}

HRESULT Activity::GetFirstAssignedInputs(ZefListValZefBaseUnknown_var& ioList) {
  if (FaultPoint::Strikes()) return E_FAIL;
  for (const Activity* const activity : OwnScope()) {
    activity->links_.ForEach([&](const ItemLink& link) {
      if (link.GetSelector() == ItemLink::FirstAssigned) AppendNew(link.Item(), ioList);
    });
  }
  return S_OK;
}

HRESULT Activity::SetCallbacksBlocked(int iBlocked) {
  if (FaultPoint::Strikes()) return E_FAIL;
  blocked_ = iBlocked != 0;
  return S_OK;
}

HRESULT Activity::ProcessPendingUpdates() {
  if (FaultPoint::Strikes()) return E_FAIL;
  if (std::exchange(pending_, false) && onItemChange_) onItemChange_(*this);
  return S_OK;
}

void Activity::ItemsChanged() {
  if (blocked_) {
    pending_ = true;
  } else if (onItemChange_) {
    onItemChange_(*this);
  }
}

}  // namespace embedded
