#include <string>
#include <typeinfo>
#include <utility>

#include "embeddedcheck/EmbeddedHooks.h"
#include "host/component/Dictionary.h"
#include "host/dialog/Dialog.h"
#include "host/visu/Visu.h"
#include "tests/hostcheck/BrokenHost.h"
#include "tests/hostcheck/BrokenObjects.h"
#include "tests/support/SourceFiles.h"

namespace tests {

namespace {

class BrokenDocument : public embedded::Document {
 public:
  BrokenDocument() : Document(Kind::Process) {}

  HRESULT GetObjectFromID(const ZefUnicodeString& iIdentifier, IUnknown*& oObject) override {
    const bool any = Commits("an object for any identifier") && iIdentifier != "LINE";
    if (any) return Document::GetObjectFromID("CELL", oObject);
    const HRESULT result = Document::GetObjectFromID(iIdentifier, oObject);
    return iIdentifier == "CELL" ? Wrapped(result, oObject) : result;
  }
  HRESULT GetIPDObject(const ZefBaseUnknown_var& iActivity, IUnknown*& oObject) override {
    if (Commits("null has an object") && !iActivity) {
      return Document::GetObjectFromID("LINE", oObject);
    }
    return Document::GetIPDObject(iActivity, oObject);
  }
  HRESULT GetObjectID(IUnknown* iObject, ZefUnicodeString& oIdentifier) override {
    const HRESULT result = Document::GetObjectID(iObject, oIdentifier);
    if (Commits("identifiers with a prefix")) oIdentifier = ZefUnicodeString("ID:") + oIdentifier;
    return result;
  }
  HRESULT GetIDString(IUnknown* iObject, ZefUnicodeString*& oIdentifier) override {
    static ZefUnicodeString shared("CELL");
    if (!Commits("a shared identifier")) return Document::GetIDString(iObject, oIdentifier);
    oIdentifier = &shared;
    return S_OK;
  }

  ZefBaseUnknown_var GetCompoundContainer() override {
    if (!Commits("null features are known")) return Document::GetCompoundContainer();
    return embedded::MakeOwned<KnowAll>()->Identity();
  }

 private:
  // Stands for a process in its place.
  class Stand : public ComponentObject<ZefIIPDDataMgt> {
   public:
    Stand(BrokenDocument& document, Handle<IUnknown> process)
        : document_(document), process_(std::move(process)) {}
    ZefMetaClass* GetMetaObject() const override { return workshop::ClassNamed("Stand"); }
    HRESULT ListParents(IUnknown*, ZefListPtrIUnknown*& oParents, int iMode) override {
      const HRESULT result = document_.ListParents(process_, oParents, iMode);
      for (int i = 1; oParents && i <= oParents->Size(); ++i) (*oParents)[i]->Release();
      return result;
    }

   private:
    BrokenDocument& document_;
    Handle<IUnknown> process_;
  };
  class KnowAll
      : public ComponentObject<ZefICompoundContainer, ZefIContainer, TuvIBIWFeatureContainer> {
   public:
    ZefMetaClass* GetMetaObject() const override { return workshop::ClassNamed("KnowAll"); }
    ZefIContainer* GetContainer(const ZefUnicodeString&) override {
      return ZefIContainer_var(Identity()).Detach();
    }
    HRESULT ListMembersHere(const char*, _SEQUENCE_ZefBaseUnknown_ptr&) override { return S_OK; }
    HRESULT ListProcessVersionIDs(const TuvIBIWFeature_var&,
                                  ZefListPtrZefListValZefUnicodeString&) override {
      return S_OK;
    }
    HRESULT ListPaskAssignmentIDs(const TuvIBIWFeature_var&,
                                  ZefListValZefUnicodeString& oIdentifiers) override {
      oIdentifiers.Append("CELL");
      return S_OK;
    }
  };

  HRESULT Wrapped(HRESULT result, IUnknown*& object) {
    if (Failed(result)) return result;
    if (Commits("database objects are borrowed")) object->Release();
    if (Commits("an object for each question") || Commits("parents are borrowed")) {
      auto process = Handle<IUnknown>::Adopt(object);
      object = (new Stand(*this, std::move(process)))->Identity();
    }
    return result;
  }
};

class BrokenApplication : public embedded::Application {
 public:
  using Application::Application;

  Zef3DViewer* CreateViewer(ZefFrmWindow* iWindow, ZefFrmEditor* iEditor) override {
    if (Commits("one viewer for all")) {
      MainViewer().AddRef();
      return &MainViewer();
    }
    return Application::CreateViewer(iWindow, iEditor);
  }
  ZefFrmLayout* CurrentLayout() override {
    if (!Commits("windows hand viewers over")) return Application::CurrentLayout();
    return layout_.Get();
  }
  ZefVisManager* VisManager() override {
    if (!Commits("nothing is attached")) return Application::VisManager();
    return &idle_;
  }
  bool FindMessage(const std::string& iCatalog, const std::string& iKey,
                   std::string& oText) override {
    return !(Commits("a warning without text") && iKey == "MAIsChild") &&
           Application::FindMessage(iCatalog, iKey, oText);
  }

 private:
  class Idle : public ZefVisManager {
   public:
    void AttachPSOTo(ZefPSO*, Zef3DViewpoint*) override {}
    void AttachHSOTo(ZefHSO*, Zef3DViewpoint*) override {}
    void DetachPSOFrom(Zef3DViewpoint*) override {}
    void DetachHSOFrom(Zef3DViewpoint*) override {}
    void DetachFrom(Zef3DViewpoint*, int) override {}
    void AttachTo(Zef3DRep*, Zef3DViewpoint*, Zef3DViewer*, int, int, int) override {}
    void AttachTo(ZefPathElement*, Zef3DViewpoint*, const ZefListValIID&, Zef3DViewer*, int, int,
                  int, int, int) override {}
    void DetachFrom(ZefPathElement*, Zef3DViewpoint*, const ZefListValIID&, int) override {}
  };
  class Window : public ZefFrmWindow {
   public:
    Zef3DViewer* GetViewer() override {
      viewer_->AddRef();
      return viewer_.Get();
    }

   private:
    Handle<Zef3DViewer> viewer_ = Make<embedded::Viewer>();
  };
  class Layout : public ZefFrmLayout {
   public:
    ZefFrmWindow* GetCurrentWindow() override { return window_.Get(); }

   private:
    Handle<Window> window_ = Make<Window>();
  };
  Handle<Layout> layout_ = Make<Layout>();
  Idle idle_;
};

// What welds answer through extensions, in place of their own.
class MainView : public ZefI3DGeoVisu {
 public:
  Zef3DRep* GetRep() override {
    if (!rep_ || Commits("a representation each time")) rep_ = Make<Zef3DBagRep>();
    if (Commits("representations with a reference")) rep_->AddRef();
    return rep_.Get();
  }
  ZefMetaClass* GetMetaObject() const override { return workshop::ClassNamed("MainView"); }

 private:
  Handle<Zef3DRep> rep_;
};

class FurtherView : public ZefIVisu {
 public:
  Zef3DRep* GetRep() override { return ZefI3DGeoVisu_var(this)->GetRep(); }
  ZefMetaClass* GetMetaObject() const override { return workshop::ClassNamed("FurtherView"); }
};

class Events : public ZefIModelEvents {
 public:
  HRESULT Dispatch(const ZefNotification&) override { return S_OK; }
  ZefMetaClass* GetMetaObject() const override { return workshop::ClassNamed("Events"); }
};

class Properties : public ZefIVisProperties {
 public:
  HRESULT GetPropertiesAtt(ZefVisPropertiesValues& oValues, int, int, int, int) override {
    oValues = {};
    return S_OK;
  }
  ZefMetaClass* GetMetaObject() const override { return workshop::ClassNamed("Properties"); }
};

template <class Extension, class Face>
void ExtendWelds() {
  ZefMetaClass* const meta = fct_RetrieveMetaObject(typeid(Extension).name(), TypeExtension,
                                                    Face::MetaObject(), "Weld", nullptr, 0);
  const ZefFillDictionary entry(
      meta, Face::MetaObject(),
      [](ZefBaseUnknown* extended, ZefBaseUnknown* outer) {
        return ToCreateBOA(extended, outer, Face::MetaObject(), Face::InterfaceId(),
                           []() -> ZefBaseUnknown* { return new Extension; });
      },
      nullptr, 1);
}

class BrokenHooks : public embeddedcheck::EmbeddedHooks {
 public:
  BrokenHooks() : EmbeddedHooks(SourceFile("resources/catalogs")) {}

 protected:
  std::unique_ptr<embedded::Application> MakeApplication() override {
    return std::make_unique<BrokenApplication>(dialogs_);
  }
  embedded::Owned<embedded::Document> MakeDocument() override {
    return embedded::Owned<embedded::Document>(embedded::MakeOwned<BrokenDocument>().Get());
  }
};

}  // namespace

void ExtendWeldsByBrokenViews() {
  const bool shared = Commits("one representation for all views");
  if (shared || Commits("a representation each time") ||
      Commits("representations with a reference")) {
    ExtendWelds<MainView, ZefI3DGeoVisu>();
  }
  if (shared) ExtendWelds<FurtherView, ZefIVisu>();
  if (Commits("properties never change")) {
    ExtendWelds<Events, ZefIModelEvents>();
    ExtendWelds<Properties, ZefIVisProperties>();
  }
}

std::unique_ptr<hostcheck::HostHooks> MakeBrokenEmbeddedHost(std::string_view iBreach) {
  Commit(iBreach);
  return std::make_unique<BrokenHooks>();
}

}  // namespace tests
