#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "embedded/model/Activity.h"
#include "embedded/model/Containers.h"
#include "embedded/model/ControlFlow.h"
#include "embedded/model/Fasteners.h"
#include "embedded/model/KeyIndex.h"
#include "embedded/model/MfgAssembly.h"
#include "embedded/model/Product.h"
#include "embedded/model/ProductOutput.h"
#include "host/document/ZefDocument.h"
#include "host/document/ZefInit.h"
#include "host/processdb/ProcessDb.h"

namespace embedded {

class ProcessDatabase;

// A document in memory. It owns everything that is added to it. What cannot be added is refused
// with an InputError that says why, and leaves the document as it was.
class Document : public ComponentObject<ZefDocument, ZefInit, ZefIIPDAdapter, ZefIIPDDataMgt,
                                        ZefIIPDVersionMgt> {
 public:
  // What `IsAKindOf` says: "ZefProcess", "ZefProduct", none of them or both. A document of a kind
  // with a process has a root activity.
  enum class Kind { Process, Product, Neither, Both };

  explicit Document(Kind iKind, const std::string& iRootKey = "Process");
  ~Document() override;
  ZefMetaClass* GetMetaObject() const override;

  ZefBaseUnknown_var GetCompoundContainer() override;
  HRESULT GetDocEnvironment(ZefBaseUnknown*& oEnvironment) override;
  ZefBaseUnknown* GetRootContainer(const char* iInterfaceName) override;

  // The external process database, when one is attached; else these fail.
  HRESULT GetIPDObject(const ZefBaseUnknown_var& iActivity, IUnknown*& oObject) override;
  HRESULT GetObjectFromID(const ZefUnicodeString& iIdentifier, IUnknown*& oObject) override;
  HRESULT GetObjectID(IUnknown* iObject, ZefUnicodeString& oIdentifier) override;
  HRESULT GetBaseProcess(IUnknown* iParent, IUnknown*& oBase) override;
  HRESULT GetIDString(IUnknown* iObject, ZefUnicodeString*& oIdentifier) override;
  HRESULT ListParents(IUnknown* iObject, ZefListPtrIUnknown*& oParents, int iMode) override;
  HRESULT ListRelatedVersions(IUnknown* iObject, ZefListPtrIUnknown*& oVersions) override;

  // Activities. The root comes first; a removed activity leaves with everything below it.
  Activity* Root() const { return activities_.empty() ? nullptr : activities_.front().Get(); }
  Activity& AddActivity(Activity& iParent, const ActivityData& iData);
  void RemoveActivity(Activity& iActivity);
  const std::vector<Owned<Activity>>& Activities() const { return activities_; }
  Activity* FindActivity(const std::string& iKey) const;

  // Control flows and product outputs. Each is notified unless `iQuietly` is set, as when a file
  // is loaded. A flow from an activity to itself is allowed, one across documents is not.
  ControlFlow& AddFlow(Activity& iFrom, Activity& iTo, bool iQuietly = false);
  void RemoveFlow(ControlFlow& iFlow);
  const std::vector<Owned<ControlFlow>>& Flows() const { return flows_; }
  void RemoveOutput(Activity& iActivity, ProductOutput& iOutput);

  // Products. The root product is the process's product list; an empty parent key adds below it.
  Product& RootProduct() const { return *products_.front(); }
  const std::vector<Product*>& ProductRoots() const { return productRoots_; }
  void SetProductRoots(std::vector<Product*> iRoots) { productRoots_ = std::move(iRoots); }
  Product& AddProduct(Product& iParent, const ProductData& iData, Product* iReference = nullptr);
  // The same without any test, for who tests many products at once.
  Product& PlaceProduct(Product& iParent, const ProductData& iData, Product* iReference);
  const std::vector<Owned<Product>>& Products() const { return products_; }
  Product* FindProduct(const std::string& iKey) const;

  // Manufacturing assemblies. An empty key gets the next free one.
  MfgAssembly& AddAssembly(const std::string& iKey = {});
  const std::vector<Owned<MfgAssembly>>& Assemblies() const { return assemblies_; }
  MfgAssembly* FindAssembly(const std::string& iKey) const;

  // Fasteners, locating and clamping points, in the order in which they were added.
  SpotWeld& AddSpotWeld(const SpotWeldData& iData);
  CurveFastener& AddCurveFastener(const CurveFastenerData& iData);
  PointFeature& AddPointFeature(const PointFeatureData& iData);
  // Removes its links, too.
  void RemoveFeature(ZefBaseUnknown* iFeature);
  const std::vector<ZefBaseUnknown_var>& Features() const { return features_; }
  ZefBaseUnknown* FindFeature(const std::string& iKey) const;

  // Choices that go with the document.
  struct Settings {
    // Fasteners may only be assigned where their parts are loaded.
    bool partLoadConstraint = false;
    // Key of the activity through which assemblies follow the process; empty while they do not.
    std::string updateThrough{};
  };
  Settings settings;

  // A process database that the document names and that cannot be opened.
  struct LostDatabase {
    std::filesystem::path file;
    // One sentence, which names the file.
    std::string reason;
  };

  // Null detaches what is attached or lost.
  void AttachDatabase(std::unique_ptr<ProcessDatabase> iDatabase);
  ProcessDatabase* Database() const { return database_.get(); }
  // The document stays one that a process database manages, although every question to that fails;
  // it is saved with the same file.
  void LoseDatabase(LostDatabase iDatabase);
  const std::optional<LostDatabase>& Lost() const { return lost_; }

  ZefBaseUnknown* RootContainerObject() const { return root_->Identity(); }
  ZefBaseUnknown* FeatureContainerObject() const { return featureContainer_->Identity(); }
  ZefSPPActivityNotificationDispatcher* Dispatcher() const { return dispatcher_.Get(); }
  Kind GetKind() const { return kind_; }

 private:
  struct Keys {
    KeyIndex<Activity> activities;
    KeyIndex<Product> products;
    KeyIndex<MfgAssembly> assemblies;
    KeyIndex<ZefBaseUnknown> features;
  };

  // The key is the feature's own.
  void AddFeature(const std::string& iKey, const ZefBaseUnknown_var& iFeature);
  void RequireOwn(const Activity& iActivity) const;
  void DetachActivity(Activity& iActivity);
  static void LeaveActivities(Linkable& iItem);

  Kind kind_;
  std::shared_ptr<Membership> membership_;
  Owned<RootContainer> root_;
  Owned<FeatureContainer> featureContainer_;
  Owned<CompoundContainer> compound_;
  ZefBaseUnknown_var environment_;
  Handle<ZefSPPActivityNotificationDispatcher> dispatcher_;
  std::vector<Owned<Activity>> activities_;
  std::vector<Owned<ControlFlow>> flows_;
  std::vector<Owned<Product>> products_;
  std::vector<Product*> productRoots_;
  std::vector<Owned<MfgAssembly>> assemblies_;
  std::vector<ZefBaseUnknown_var> features_;
  Keys keys_;
  std::unique_ptr<ProcessDatabase> database_;
  std::optional<LostDatabase> lost_;
};

}  // namespace embedded
