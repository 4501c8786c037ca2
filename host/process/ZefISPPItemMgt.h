#pragma once

#include "host/component/Handle.h"
#include "host/component/Interface.h"
#include "host/process/ZefISPPItem.h"
#include "host/values/ZefListValZefBaseUnknown_var.h"
#include "host/values/ZefUnicodeString.h"

extern const _GUID IID_ZefISPPItemMgt;

// The item links of an activity. A link has a selector: 1 plain, 2 first assigned. A link that is
// made twice is kept twice.
//
// Two operations notify: AddItemLink, kind 17, when it makes the item first assigned that was not
// so here, whatever plain links it has; and RemoveItem, kind 18, once per call that removed a link,
// plain or not. AddItem never notifies, nor does either of them when it fails.
class ZefISPPItemMgt : public Interface<ZefISPPItemMgt> {
 public:
  static constexpr char Name[] = "ZefISPPItemMgt";

  // Links the item plainly. `oItem` is the item as the activity holds it. E_FAIL, as from
  // AddItemLink, for what a host cannot store: an object that was removed or is of another
  // document.
  virtual HRESULT AddItem(const ZefBaseUnknown_var& iItem, ZefBaseUnknown_var& oItem) = 0;
  // Removes all links of the item with that selector at once, -1 for any; E_FAIL when there is
  // none. Notified as kind 18 (father activity, son item) after the links are gone.
  virtual HRESULT RemoveItem(const ZefBaseUnknown_var& iItem, int iSelector) = 0;
  // A new list that the caller deletes, or null: the linked items, one entry per link. `iType` is
  // "Item"; `iSelector` 0 for every link, 2 for the first-assigned ones.
  virtual ZefListValZefBaseUnknown_var* GetItems(const ZefUnicodeString& iType, int iSelector) = 0;
  // Always adds a link, handed back with a reference for the caller. Kind 17 (father activity, son
  // item) comes after the link is there.
  // `iSource` is where the item comes from in the flow, or null; `iFixed` is stored.
  virtual HRESULT AddItemLink(ZefBaseUnknown*& oLink, const ZefISPPItem_var& iItem,
                              ZefBaseUnknown* iSource, const ZefUnicodeString& iName, int iFixed,
                              int iSelector) = 0;
};

using ZefISPPItemMgt_var = Handle<ZefISPPItemMgt>;
