#include "embedded/Application.h"

#include <new>
#include <utility>
#include <vector>

#include "embedded/dialog/InstalledCatalogs.h"
#include "embedded/scene/Place.h"
#include "host/component/Allocation.h"
#include "host/component/FaultPoint.h"

namespace embedded {

namespace {

// Those that live, whatever the order in which they end.
std::vector<Application*>& Living() {
  static std::vector<Application*> living;
  return living;
}

// With all that it is made of: without it nothing works.
template <class T, class... Arguments>
Handle<T> MakeWhole(Arguments&&... arguments) {
  const long failed = CountFailedAllocations();
  Handle<T> made = Make<T>(std::forward<Arguments>(arguments)...);
  if (CountFailedAllocations() != failed) throw std::bad_alloc();
  return made;
}

}  // namespace

Application::Application(DialogPresenter& iDialogs)
    : dialogs_(iDialogs),
      editor_(MakeWhole<Editor>()),
      current_(editor_),
      frame_(MakeWhole<WindowFrame>()),
      layout_(MakeWhole<Layout>(*frame_)),
      visManager_(MakeWhole<embedded::VisManager>()) {
  MainViewer().ShowSetsOf(*editor_);
  catalogs_.FallBackTo(InstalledCatalogs());
  // Nothing fails from here on.
  Living().push_back(this);
  Install(this);
}

Application::~Application() {
  Edit({});
  Idle();
  std::erase(Living(), this);
  for (Application* const other : Living()) {
    if (other->former_ == this) other->former_ = former_;
  }
  if (&Installed() == this) Install(former_);
}

void Application::Edit(Owned<Document> iDocument) {
  EndScene();
  editor_->SetDocument(iDocument.Get());
  MainViewer().ShowDocument(iDocument.Get());
  edited_ = std::move(iDocument);
}

void Application::EndScene() {
  frame_->CloseFurtherWindows();
  editor_->EmptySets();
  MainViewer().Empty();
  MainViewer().ShowSetsOf(*editor_);
  if (!edited_) return;
  for (const auto& product : edited_->Products()) product->Display().Empty();
  for (const auto& assembly : edited_->Assemblies()) assembly->Display().Empty();
  for (const auto& feature : edited_->Features()) {
    if (auto* const displayed = ObjectAs<Displayed>(feature.Get())) displayed->Display().Empty();
  }
}

void Application::SetEnvironment(const std::string& iName, std::optional<std::string> iValue) {
  environment_[iName] = std::move(iValue);
}

Editor* Application::CurrentEditor() { return FaultPoint::Strikes() ? nullptr : current_.Get(); }

ZefApplicationFrame* Application::Frame() {
  return windowless_ || FaultPoint::Strikes() ? nullptr : frame_.Get();
}

ZefFrmLayout* Application::CurrentLayout() {
  return windowless_ || FaultPoint::Strikes() ? nullptr : layout_.Get();
}

ZefVisManager* Application::VisManager() {
  return FaultPoint::Strikes() ? nullptr : visManager_.Get();
}

Zef3DViewer* Application::CreateViewer(ZefFrmWindow*, ZefFrmEditor*) {
  return FaultPoint::Strikes() ? nullptr : Make<Viewer>().Detach();
}

void Application::Reframe(ZefHSO& iSet, Zef3DViewer* iViewer) {
  auto* const viewer = dynamic_cast<Viewer*>(iViewer);
  const std::optional<Box> extent = ExtentOf(iSet);
  if (viewer && extent) viewer->Frame(extent);
}

int Application::ShowDialog(const DialogRequest& iRequest) { return dialogs_.Show(iRequest); }

bool Application::HasCatalog(const std::string& iCatalog) {
  return !FaultPoint::Strikes() && catalogs_.Has(iCatalog);
}

bool Application::FindMessage(const std::string& iCatalog, const std::string& iKey,
                              std::string& oText) {
  const std::string* const text = FaultPoint::Strikes() ? nullptr : catalogs_.Find(iCatalog, iKey);
  if (text) oText = *text;
  return text != nullptr;
}

const char* Application::Environment(const char* iName) {
  const auto known = iName ? environment_.find(iName) : environment_.end();
  if (known == environment_.end()) return HostApplication::Environment(iName);
  return known->second ? known->second->c_str() : nullptr;
}

HRESULT Application::PartLoadConstraint(unsigned char& oOn) {
  if (!partLoadConstraint_ || FaultPoint::Strikes()) return E_FAIL;
  oOn = *partLoadConstraint_ ? 1 : 0;
  return S_OK;
}

HRESULT Application::CreateMfgAssembly(ZefDocument* iDocument, TuvIMfgAssembly** oAssembly) {
  ZefDocument* const asked = iDocument || !current_ ? iDocument : current_->GetDocument();
  auto* const document = ObjectAs<Document>(asked);
  if (!oAssembly || (asked && !document) || FaultPoint::Strikes()) return E_FAIL;
  try {
    const auto assembly = document ? Owned<MfgAssembly>(&document->AddAssembly())
                                   : MakeOwned<MfgAssembly>("MA", MembershipPointer());
    *oAssembly = Handle<TuvIMfgAssembly>(assembly->Identity()).Detach();
    return S_OK;
  } catch (const std::bad_alloc&) {
    NoteFailedAllocation();
    return E_FAIL;
  }
}

}  // namespace embedded
