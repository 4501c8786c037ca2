#pragma once

#include "frame/Export.h"
#include "host/component/Identifier.h"
#include "host/dialog/ZefInventorySpaceWnd.h"
#include "host/values/ZefListValZefBaseUnknown_var.h"
#include "host/visu/Zef3DBagRep.h"
#include "host/visu/ZefIVisu.h"

// A window with a 3D viewer of its own for chosen process items: products, resources, welds. In
// attach mode the visualisation manager shows the items' own graphics; in the other mode the
// window hangs a further representation of each item into a scene of its own. What is missing (a
// viewer, a manager, an item's graphics) ends a step in silence.
class TUV_EXPORT TuvBIWPreviewWindow : public ZefInventorySpaceWnd {
 public:
  // The editor is not counted and must outlive the window; without one there is no viewer.
  // `iOwnScene` 0 is attach mode.
  TuvBIWPreviewWindow(ZefFrmEditor* iEditor, unsigned char iOwnScene);
  // Detaches nothing in attach mode: that goes with the viewer.
  ~TuvBIWPreviewWindow() override;

  // Removes all items.
  void Initialize();
  // 0 shows the editor's sets in the viewer. Anything else takes them and everything attached off,
  // and makes the scene of a window that has one of its own.
  void InitializeViewer(const unsigned char& iDetach);
  // Shows the editor's sets, and draws unless `iRedraw` is 0.
  void UpdateViewer(const unsigned char& iRedraw);

  // Entries that are no process items or have no graphics are passed over; an item that is shown
  // already is listed again. In attach mode the items are shown through the interface.
  void Visualize(const ZefListValZefBaseUnknown_var& iItems, _GUID iInterfaceId);
  // Moves the view so that the items fill it, shown or not. Nothing for an empty list.
  void VisuWithReframeOnItems(const ZefListValZefBaseUnknown_var& iItems);
  // Takes each item's graphics away, in attach mode as far as they went by the interface, and its
  // first entry off the list.
  void RemoveItems(ZefListValZefBaseUnknown_var iItems, _GUID iInterfaceId);
  // Takes the object's graphics off; it stays listed.
  void Detach(ZefBaseUnknown_var iObject, _GUID iInterfaceId);
  // All that is shown by IID_ZefI3DGeoVisu; the list ends empty in any case.
  void RemoveAllItems();
  // In the order in which they were added, as often as they were.
  ZefListValZefBaseUnknown_var GetVisualizedItems() const;
  // Leaves the graphics where they are.
  void ClearAllItemsFromList();

  // A second receiver of the close notification, not counted; null for none.
  void SetNotificationFather(ZefFrmWindow* iFather);
  // Passes the notification on to the window's father, then to the second receiver.
  void OnDialogNotification(ZefCommand* iFrom, ZefNotification* iNotification, void* iData);

  // A window of the same editor and name in attach mode, without the items, with a reference for
  // the caller. Null for a window without editor.
  ZefFrmWindow* DuplicateWindow() override;

  static ZefMetaClass* MetaObject();
  static const _GUID& ClassId();
  static const char* ClassName();
  // Null: the platform cannot create the class by name.
  static ZefBaseUnknown* CreateItself();
  ZefMetaClass* GetMetaObject() const override;
  const char* IsA() const override;
  int IsAKindOf(const char* iName) const override;

  // Null until the class is first described.
  static ZefMetaClass* meta_object;

 private:
  TUV_INTERNAL void ShowInOwnScene(const ZefIVisu_var& item);
  TUV_INTERNAL void RemoveFromOwnScene(int position);

  ZefFrmEditor* _Editor = nullptr;
  unsigned char _OwnScene;
  Handle<Zef3DBagRep> _RootRep;
  ZefListValZefBaseUnknown_var _VisualizedItems;
  // In a scene of its own, the representation of each item at the item's position, or null.
  ZefListValZefBaseUnknown_var _ItemReps;
  ZefFrmWindow* _NotificationFather = nullptr;
};
