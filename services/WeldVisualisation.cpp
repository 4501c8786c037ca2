#include <cstring>
#include <memory>
#include <unordered_set>

#include "frame/Trace.h"
#include "host/dialog/ZefFrmLayout.h"
#include "host/dialog/ZefFrmWindow.h"
#include "host/document/ZefFrmEditor.h"
#include "host/document/ZefIRedrawEvent.h"
#include "host/fastening/TuvISpotWeld.h"
#include "host/values/Each.h"
#include "host/visu/Visu.h"
#include "services/Received.h"
#include "services/TuvBIWServices.h"
#include "services/WeldBag.h"
#include "visu/TuvBIWCustomRep.h"

namespace {

constexpr ZefGraphicAttributeSet kLabelAttributes{0xFD040402u, 0x000000FFu};
constexpr int kLabelColor = 251;
constexpr int kShowProperty = 7;

bool IsExactly(const Zef3DRep* rep, const char* className) {
  return rep && std::strcmp(rep->IsA(), className) == 0;
}

bool IsWeldLabel(const Zef3DRep* rep) { return IsExactly(rep, "TuvBIWCustomRep"); }

ZefISO* InteractiveSet() {
  ZefFrmEditor* const editor = ZefFrmEditor::GetCurrentEditor();
  return editor ? editor->GetISO() : nullptr;
}

Zef3DViewer* CurrentViewer() {
  ZefFrmLayout* const layout = ZefFrmLayout::GetCurrentLayout();
  ZefFrmWindow* const window = layout ? layout->GetCurrentWindow() : nullptr;
  return window ? window->GetViewer() : nullptr;
}

ZefMathPointf LabelPoint(const ZefBaseUnknown_var& weld) {
  const TuvISpotWeld_var spot = weld;
  if (!spot) return {};
  return {static_cast<float>(spot->GetX()), static_cast<float>(spot->GetY()),
          static_cast<float>(spot->GetZ())};
}

// Null when memory is exhausted.
Handle<ZefModelForRep3D> MakeLabel(const ZefBaseUnknown_var& weld) {
  const ZefUnicodeString id = TuvBIWServices::GetWeldID(weld);
  const ZefMathPointf point = LabelPoint(weld);
  std::unique_ptr<ZefGraphicPrimitive> text(
      new Zef3DAnnotationTextGP(point, id, BASE_LEFT, 0.0f, 0));
  const auto rep = Make<Zef3DCustomRep>();
  auto model = Make<ZefModelForRep3D>();
  if (!rep || !model) return {};
  rep->AddGP(text.release(), kLabelAttributes);
  rep->SetColor(kLabelColor);
  model->SetRep(rep);
  return model;
}

std::unordered_set<const ZefModelForRep3D*> ElementsOf(const list<ZefModelForRep3D>& models) {
  std::unordered_set<const ZefModelForRep3D*> elements;
  for (int i = 0; i < models.Size(); ++i) elements.insert(models[i]);
  return elements;
}

// The answer is not needed; asking has the traces and the checks of an assignment query.
void AskForAssignedWeldsOfRoot() {
  ZefISPPActivity_var root;
  if (Failed(TuvBIWServices::GetRootActivity(root.Put(), nullptr))) return;
  Received<ZefListValZefBaseUnknown_var> assigned;
  TuvBIWServices::GetListOfAssignedWeld(root, assigned.Out());
}

// True when the weld got a further custom representation.
bool ToggleOrAdd(const ZefBaseUnknown_var& weld, bool toggle) {
  Zef3DBagRep* const bag = BagOfWeld(weld);
  if (!bag || Succeeded(TuvBIWServices::DeleteTuvBIWCustomRep(bag, toggle))) return false;
  const auto label = Make<TuvBIWCustomRep>(weld);
  if (!label) return false;
  bag->AddChild(label);
  bag->ComputeBoundingElement(1);
  return true;
}

void RedrawProcess() {
  const ZefIRedrawEvent_var process = TuvBIWServices::GetRootProcessContainer(nullptr);
  if (process) process->Redraw();
}

// False for a look that hiding and showing leave alone. Values that cannot be read are sent as
// they are.
bool SetShown(ZefIVisProperties& properties, int show, ZefVisPropertiesValues& oValues) {
  if (Failed(properties.GetPropertiesAtt(oValues, kShowProperty, 0, 0, 0))) return true;
  const int shown = oValues.GetShowAttr();
  if (shown == 2 || shown == 3) return false;
  if (shown != show) oValues.SetShowAttr(show);
  return true;
}

void HideShow(const ZefBaseUnknown_var& element, int show) {
  const ZefIVisProperties_var properties = element;
  ZefVisPropertiesValues values;
  if (!properties || !SetShown(*properties, show, values)) return;
  const ZefIModelEvents_var events = element;
  if (!events) return;
  const auto path = Make<ZefPathElement>(element);
  const auto change = Make<ZefModifyVisProperties>(element, path, 0, kShowProperty, values);
  if (change) events->Dispatch(*change);
}

}  // namespace

Zef3DBagRep* BagOfWeld(const ZefBaseUnknown_var& iWeld) {
  const ZefI3DGeoVisu_var weld = iWeld;
  Zef3DRep* const rep = weld ? weld->GetRep() : nullptr;
  return IsExactly(rep, "Zef3DBagRep") ? static_cast<Zef3DBagRep*>(rep) : nullptr;
}

HRESULT TuvBIWServices::ActivateListWeldVisualization(ZefListValZefBaseUnknown_var* iWelds,
                                                      list<ZefModelForRep3D>& ioModels) {
  const TraceScope trace("TuvBIWServices::ActivateListWeldVisualization --> IN",
                         "TuvBIWServices::ActivateListWeldVisualization <-- OUT");
  ZefISO* const shown = iWelds ? InteractiveSet() : nullptr;
  if (!shown) return E_FAIL;
  // The new models differ from each other, so only what is there already can be met again.
  const auto held = ElementsOf(ioModels);
  HRESULT result = E_FAIL;
  for (const auto& weld : Each<ZefBaseUnknown>(*iWelds)) {
    Handle<ZefModelForRep3D> model = MakeLabel(weld);
    if (!model) continue;
    shown->AddElement(model);
    if (!held.contains(model)) ioModels.Append(model.Detach());
    result = S_OK;
  }
  return result;
}

HRESULT TuvBIWServices::DeactivateListWeldVisualization(list<ZefModelForRep3D>& ioModels) {
  const TraceScope trace("TuvBIWServices::DeactivateListWeldVisualization --> IN",
                         "TuvBIWServices::DeactivateListWeldVisualization <-- OUT");
  ZefISO* const shown = InteractiveSet();
  if (!shown) return E_FAIL;
  for (int i = 0; ioModels[i]; ++i) {
    const auto model = Adopt(ioModels[i]);
    shown->RemoveElement(model, 0);
  }
  ioModels.Reset();
  return S_OK;
}

HRESULT TuvBIWServices::SetHighlight(ZefBaseUnknown* iObject) {
  const TraceScope trace("TuvBIWServices::SetHighlight --> IN",
                         "TuvBIWServices::SetHighlight <-- OUT");
  ZefFrmEditor* const editor = iObject ? ZefFrmEditor::GetCurrentEditor() : nullptr;
  ZefHSO* const highlighted = editor ? editor->GetHSO() : nullptr;
  if (!highlighted) return E_FAIL;
  highlighted->Empty();
  const auto path = Make<ZefPathElement>(iObject);
  highlighted->AddElement(path);
  return E_FAIL;
}

HRESULT TuvBIWServices::SetAssignedWeldColor(ZefBaseUnknown*, unsigned int, unsigned int,
                                             unsigned int, unsigned int) {
  const TraceScope trace("TuvBIWServices::SetAssignedWeldColor --> IN",
                         "TuvBIWServices::SetAssignedWeldColor <-- OUT");
  return E_FAIL;
}

HRESULT TuvBIWServices::VisualizationLumoWeldList(ZefListValZefBaseUnknown_var*, int) {
  const TraceScope trace("TuvBIWServices::VisualizationLumoWeldList --> IN",
                         "TuvBIWServices::VisualizationLumoWeldList <-- OUT");
  return E_FAIL;
}

HRESULT TuvBIWServices::VisualizationKoraWeldList(ZefListValZefBaseUnknown_var* iWelds, int iMode,
                                                  unsigned char, int, int, int, int) {
  const TraceScope trace("TuvBIWServices::VisualizationKoraWeldList --> IN",
                         "TuvBIWServices::VisualizationKoraWeldList <-- OUT");
  const bool toggle = iMode == 0 || iMode == 1;
  ZefVisManager* const manager = ZefVisManager::GetVisManager();
  Zef3DViewer* const viewer = CurrentViewer();
  if (!iWelds || !manager || !viewer) return E_FAIL;
  if (iWelds->Size() > 0) AskForAssignedWeldsOfRoot();
  HRESULT result = E_FAIL;
  for (const auto& weld : Each<ZefBaseUnknown>(*iWelds)) {
    if (ToggleOrAdd(weld, toggle)) result = S_OK;
  }
  viewer->Draw();
  RedrawProcess();
  return result;
}

HRESULT TuvBIWServices::DeleteTuvBIWCustomRep(Zef3DBagRep* iBag, unsigned char iDelete) {
  const TraceScope trace("TuvBIWServices::DeleteTuvBIWCustomRep --> IN",
                         "TuvBIWServices::DeleteTuvBIWCustomRep <-- OUT");
  list<Zef3DRep>* const children = iBag ? iBag->GetChildren() : nullptr;
  if (!children) return E_FAIL;
  HRESULT result = E_FAIL;
  int count = children->Size();
  for (int i = 0; i < count; ++i) {
    if (!IsWeldLabel((*children)[i])) continue;
    if (!iDelete) break;
    (*children)[i]->Destroy();
    --i;
    --count;
    result = S_OK;
  }
  iBag->ComputeBoundingElement(1);
  return result;
}

HRESULT TuvBIWServices::CheckForTuvBIWCustomRep(Zef3DBagRep* iBag) {
  const TraceScope trace("TuvBIWServices::CheckForTuvBIWCustomRep --> IN",
                         "TuvBIWServices::CheckForTuvBIWCustomRep <-- OUT");
  if (!iBag) return E_FAIL;
  const list<Zef3DRep>* const children = iBag->GetChildren();
  if (!children) {
    TuvKelBIWUtilsTrace.TraPutLN("   No children");
    return E_FAIL;
  }
  for (int i = 0; i < children->Size(); ++i) {
    const Zef3DRep* const child = (*children)[i];
    if (!child) continue;
    TuvKelBIWUtilsTrace.TraPutLN(child->IsA());
    if (IsWeldLabel(child)) return S_OK;
  }
  return E_FAIL;
}

void TuvBIWServices::CheckVisualizationOfKoraWelds(ZefListValZefBaseUnknown_var* iWelds,
                                                   ZefListValZefBaseUnknown_var*& ioWelds,
                                                   int iMode) {
  const TraceScope trace("TuvBIWServices::CheckVisualizationOfKoraWelds --> IN",
                         "TuvBIWServices::CheckVisualizationOfKoraWelds <-- OUT");
  // Apart from the caller's list, which may be the one that is walked.
  ZefListValZefBaseUnknown_var found;
  for (const auto& weld : Each<ZefBaseUnknown>(iWelds)) {
    if (!TuvISpotWeld_var(weld)) continue;
    Zef3DBagRep* const bag = BagOfWeld(weld);
    if (!bag) continue;
    const bool hasLabel = Succeeded(CheckForTuvBIWCustomRep(bag));
    if (iMode == (hasLabel ? 0 : 1)) found.Append(weld);
  }
  if (found.Size() == 0) return;
  if (!ioWelds) ioWelds = new ZefListValZefBaseUnknown_var;
  ioWelds->Append(found);
}

void TuvBIWServices::HideShowWeldPointsInList(ZefListValZefBaseUnknown_var* iWelds,
                                              unsigned char iShow) {
  const TraceScope trace("TuvBIWServices::HideShowWeldPointsInList --> IN",
                         "TuvBIWServices::HideShowWeldPointsInList <-- OUT");
  const int show = iShow == 1 ? 0 : 1;
  for (const auto& weld : Each<ZefBaseUnknown>(iWelds)) HideShow(weld, show);
}
