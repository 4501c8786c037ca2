#include "visu/TuvBIWPreviewWindow.h"

#include "frame/ClassRecord.h"
#include "host/document/ZefFrmEditor.h"
#include "host/fastening/TuvISpotWeld.h"
#include "host/process/ZefISPPItem.h"
#include "host/product/ZefIAsmGraphicProperties.h"
#include "host/product/ZefIMovable.h"
#include "host/values/Each.h"
#include "host/visu/Visu.h"

constinit ZefMetaClass* TuvBIWPreviewWindow::meta_object = nullptr;

namespace {

constexpr int kInteractiveSets = 3;
constexpr unsigned int kColourOfOwn = 0x1004;

// What a window shows with. Each may be missing.
struct View {
  explicit View(ZefInventorySpaceWnd& window)
      : viewer(window.GetViewer()),
        viewpoint(viewer ? viewer->GetMain3DViewpoint() : nullptr),
        manager(window.GetVisManager()) {}
  bool HasViewpoint() const { return manager && viewpoint; }

  Zef3DViewer* viewer;
  Zef3DViewpoint* viewpoint;
  ZefVisManager* manager;
};

ZefListValIID ListOf(const _GUID& interfaceId) {
  ZefListValIID identifiers;
  identifiers.Append(interfaceId);
  return identifiers;
}

void AttachSelections(ZefFrmEditor& editor, const View& view) {
  if (ZefPSO* const preselected = editor.GetPSO()) {
    view.manager->AttachPSOTo(preselected, view.viewpoint);
  }
  if (ZefHSO* const highlighted = editor.GetHSO()) {
    view.manager->AttachHSOTo(highlighted, view.viewpoint);
  }
}

void DetachSelections(const View& view) {
  view.manager->DetachPSOFrom(view.viewpoint);
  view.manager->DetachHSOFrom(view.viewpoint);
}

void JoinInteractiveSets(ZefFrmEditor& editor, Zef3DViewer* viewer, bool leave) {
  for (int rank = 0; rank < kInteractiveSets; ++rank) {
    ZefISO* const set = editor.GetISO(rank);
    if (!set || !viewer) continue;
    if (leave) {
      set->RemoveViewer(viewer);
    } else {
      set->AddViewer(viewer);
    }
  }
}

void ShowAttached(const ZefIVisu_var& item, const View& view, const ZefListValIID& interfaces) {
  const auto path = Make<ZefPathElement>(item);
  if (!view.HasViewpoint()) return;
  view.manager->AttachTo(path, view.viewpoint, interfaces, view.viewer, 0, 0, 0, 0, 0);
}

void DetachPath(const ZefIVisu_var& item, const View& view, const _GUID& interfaceId, int mode) {
  if (!item) return;
  const auto path = Make<ZefPathElement>(item);
  if (view.HasViewpoint()) {
    view.manager->DetachFrom(path, view.viewpoint, ListOf(interfaceId), mode);
  }
}

// Items mostly go in the order in which they came, so the first is tried before all are looked
// through.
int PositionOf(const ZefISPPItem_var& item, const ZefListValZefBaseUnknown_var& items) {
  return items[1] == item ? 1 : items.Locate(item, 1);
}

// White stands for no colour of its own.
void ForceAssemblyColour(const ZefBaseUnknown_var& item, Zef3DRep& rep) {
  const ZefIAsmGraphicProperties_var properties = item;
  int red = 255, green = 255, blue = 255;
  if (!properties || Failed(properties->GetColor(red, green, blue))) return;
  if (red == 255 && green == 255 && blue == 255) return;
  rep.SetInheritanceMode(kColourOfOwn);
  rep.SetColor(red, green, blue, 255);
}

// What a scene of its own shows of an item: the item's further representation, or, while that hangs
// in another scene already, a bag of the scene's own with the same children. Only bags can be had
// twice; any other representation is shared.
Handle<Zef3DRep> RepForScene(const ZefIVisu_var& item) {
  const Handle<Zef3DRep> rep = item->GetRep();
  if (!rep || rep->Parents().empty() || !rep->IsAKindOf(Zef3DBagRep::ClassName())) return rep;
  const auto own = Make<Zef3DBagRep>();
  const list<Zef3DRep>* const children = rep->GetChildren();
  for (int i = 0; own && children && i < children->Size(); ++i) own->AddChild((*children)[i]);
  return own;
}

// A spot weld stands where the object stands that carries it.
ZefIMovable_var PlacedObject(const ZefBaseUnknown_var& item) {
  const TuvISpotWeld_var weld = item;
  if (!weld) return item;
  ZefBaseUnknown* carrier = nullptr;
  weld->GetCarrier(carrier);
  return carrier;
}

void Place(const ZefBaseUnknown_var& item, Zef3DRep& rep) {
  const ZefIMovable_var placed = PlacedObject(item);
  ZefMathTransformation position;
  if (!placed || Failed(placed->GetAbsPosition(position))) return;
  if (!rep.IsAKindOf(Zef3DBagRep::ClassName())) return;
  static_cast<Zef3DBagRep&>(rep).SetMatrix(Zef4x4Matrix(position * ZefMathAxis()));
}

}  // namespace

TuvBIWPreviewWindow::TuvBIWPreviewWindow(ZefFrmEditor* iEditor, unsigned char iOwnScene)
    : ZefInventorySpaceWnd(iEditor), _OwnScene(iOwnScene) {
  if (iEditor) {
    _Editor = iEditor;
    InitializeViewer(1);
    Initialize();
  }
  SetBaseName("KEL Preview Window");
  AddNotificationCallback(this, GetMDICloseNotification(),
                          &TuvBIWPreviewWindow::OnDialogNotification, nullptr);
}

TuvBIWPreviewWindow::~TuvBIWPreviewWindow() {
  _VisualizedItems.RemoveAll();
  Zef3DViewer* const viewer = ZefInventorySpaceWnd::GetViewer();
  if (!viewer || !_RootRep) return;
  _ItemReps.RemoveAll();
  viewer->RemoveRep(_RootRep);
  _RootRep->Destroy();
}

void TuvBIWPreviewWindow::Initialize() { RemoveAllItems(); }

void TuvBIWPreviewWindow::InitializeViewer(const unsigned char& iDetach) {
  const View view(*this);
  const bool detach = iDetach != 0;
  if (view.HasViewpoint() && detach) DetachSelections(view);
  if (view.HasViewpoint() && !detach && _Editor) AttachSelections(*_Editor, view);
  if (_Editor) JoinInteractiveSets(*_Editor, view.viewer, detach);
  if (!detach) return;
  if (view.HasViewpoint()) view.manager->DetachFrom(view.viewpoint, 1);
  if (!_OwnScene) return;
  if (!_RootRep) _RootRep = Make<Zef3DBagRep>();
  if (_RootRep && view.HasViewpoint()) {
    view.manager->AttachTo(_RootRep, view.viewpoint, view.viewer, 0, 0, 0);
  }
}

void TuvBIWPreviewWindow::UpdateViewer(const unsigned char& iRedraw) {
  InitializeViewer(0);
  Zef3DViewer* const viewer = iRedraw ? GetViewer() : nullptr;
  if (viewer) viewer->Draw();
}

void TuvBIWPreviewWindow::Visualize(const ZefListValZefBaseUnknown_var& iItems,
                                    _GUID iInterfaceId) {
  const View view(*this);
  const ZefListValIID interfaces = ListOf(iInterfaceId);
  for (const auto& item : Each<ZefISPPItem>(iItems)) {
    const ZefIVisu_var shown = item;
    if (!shown) continue;
    _VisualizedItems.Append(item);
    if (_OwnScene) {
      ShowInOwnScene(shown);
    } else {
      ShowAttached(shown, view, interfaces);
    }
  }
}

void TuvBIWPreviewWindow::ShowInOwnScene(const ZefIVisu_var& item) {
  const Handle<Zef3DRep> rep = RepForScene(item);
  if (rep) ForceAssemblyColour(item, *rep);
  _ItemReps.Append(rep);
  if (!rep) return;
  if (_RootRep) _RootRep->AddChild(rep);
  Place(item, *rep);
}

void TuvBIWPreviewWindow::VisuWithReframeOnItems(const ZefListValZefBaseUnknown_var& iItems) {
  if (iItems.Size() == 0) return;
  InitializeViewer(0);
  const auto framed = Make<ZefHSO>();
  if (!framed) return;
  for (const auto& item : Each<ZefISPPItem>(iItems)) {
    const auto path = Make<ZefPathElement>(item);
    framed->AddElement(path);
  }
  framed->EndAddElements();
  if (Zef3DViewer* const viewer = GetViewer()) {
    viewer->Draw();
    ZefReframeOn(*framed, viewer);
  }
  framed->Empty();
}

void TuvBIWPreviewWindow::RemoveItems(ZefListValZefBaseUnknown_var iItems, _GUID iInterfaceId) {
  const View view(*this);
  for (const auto& item : Each<ZefISPPItem>(iItems)) {
    const int position = PositionOf(item, _VisualizedItems);
    if (position == 0) continue;
    _VisualizedItems.RemovePosition(position);
    if (_OwnScene) {
      RemoveFromOwnScene(position);
    } else {
      DetachPath(item, view, iInterfaceId, 0);
    }
  }
}

void TuvBIWPreviewWindow::RemoveFromOwnScene(int position) {
  const Handle<Zef3DRep> rep = _ItemReps[position];
  _ItemReps.RemovePosition(position);
  if (!rep || !_RootRep) return;
  _RootRep->RemoveChild(rep);
  if (rep->Parents().empty()) rep->Destroy();
}

void TuvBIWPreviewWindow::Detach(ZefBaseUnknown_var iObject, _GUID iInterfaceId) {
  DetachPath(iObject, View(*this), iInterfaceId, 1);
}

void TuvBIWPreviewWindow::RemoveAllItems() {
  RemoveItems(_VisualizedItems, IID_ZefI3DGeoVisu);
  ClearAllItemsFromList();
}

ZefListValZefBaseUnknown_var TuvBIWPreviewWindow::GetVisualizedItems() const {
  return _VisualizedItems;
}

void TuvBIWPreviewWindow::ClearAllItemsFromList() {
  _VisualizedItems.RemoveAll();
  _ItemReps.RemoveAll();
}

void TuvBIWPreviewWindow::SetNotificationFather(ZefFrmWindow* iFather) {
  _NotificationFather = iFather;
}

void TuvBIWPreviewWindow::OnDialogNotification(ZefCommand*, ZefNotification* iNotification, void*) {
  // Whoever is told may let go of the window.
  const ZefBaseUnknown_var alive = this;
  const Handle<ZefFrmWindow> second = _NotificationFather;
  SendNotification(GetFather(), iNotification);
  if (second) SendNotification(second, iNotification);
}

ZefFrmWindow* TuvBIWPreviewWindow::DuplicateWindow() {
  if (!_Editor) return nullptr;
  auto copy = Make<TuvBIWPreviewWindow>(_Editor, static_cast<unsigned char>(0));
  if (copy) copy->SetBaseName(GetBaseName());
  return copy.Detach();
}

ZefMetaClass* TuvBIWPreviewWindow::MetaObject() {
  if (!meta_object) {
    meta_object = fct_RetrieveMetaObject("TuvBIWPreviewWindow", Implementation,
                                         ZefEventSubscriber::MetaObject(), "ZefNull", FrameworkName,
                                         sizeof(TuvBIWPreviewWindow));
  }
  return meta_object;
}

const _GUID& TuvBIWPreviewWindow::ClassId() { return IdentifierOf(MetaObject()); }
const char* TuvBIWPreviewWindow::ClassName() { return NameOf(MetaObject()); }
ZefBaseUnknown* TuvBIWPreviewWindow::CreateItself() { return nullptr; }
ZefMetaClass* TuvBIWPreviewWindow::GetMetaObject() const { return MetaObject(); }
const char* TuvBIWPreviewWindow::IsA() const { return NameOf(MetaObject()); }
int TuvBIWPreviewWindow::IsAKindOf(const char* iName) const {
  return IsKindOf(MetaObject(), iName);
}
