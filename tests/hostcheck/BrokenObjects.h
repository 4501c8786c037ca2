#pragma once

#include <memory>

#include "examples/host/Process.h"
#include "tests/hostcheck/BrokenHost.h"

namespace tests {

// Says which breach the next hosts commit.
void Commit(std::string_view iBreach);

// Makes the welds of the examples' host answer views, where a breach is about these.
void ExtendWeldsByBrokenViews();

// Objects of the examples' host that break one promise.

class BrokenActivity : public workshop::Activity {
 public:
  using Activity::Activity;

  // Which interfaces it answers, by the breach.
  void AnswerAsBroken() {
    if (Commits("every activity is a root")) AnswerInterface(IID_ZefISPPActivityRoot, true);
    if (Commits("activities hide what they extend")) {
      AnswerInterface(IID_ZefISPPAbstractActivity, false);
    }
    if (Commits("operations are stations")) AnswerInterface(IID_TuvIBIWItemInfo, true);
  }

  ZefMetaClass* GetMetaObject() const override {
    if (Commits("a class of its own")) return workshop::ClassNamed("Step");
    return Activity::GetMetaObject();
  }
  const char* IsA() const override {
    return Commits("IsA lies") ? "Other" : GetMetaObject()->GetClassName();
  }
  HRESULT QueryInterface(const _GUID& iIID, void** oPtr) override;
  ZefBaseUnknown* QueryInterface(const char* iName) override;
  unsigned int AddRef() override {
    const unsigned int count = Activity::AddRef();
    return Commits("AddRef answers the old count") ? count - 1 : count;
  }
  ZefBaseUnknown* GetImpl(int iMode) const override {
    if (!Commits("GetImpl gives an interface")) return Activity::GetImpl(iMode);
    return static_cast<ZefISPPItemMgt*>(const_cast<BrokenActivity*>(this));
  }
  int IsEqual(const ZefBaseUnknown* iOther) const override {
    return Commits("equal by address") ? iOther == Identity() : Identity() == IdentityOf(iOther);
  }

  HRESULT GetParentActivity(ZefISPPAbstractActivity_var& oParent) override;
  workshop::List* GetChildren(const ZefUnicodeString& iType) override;
  ZefBaseUnknown* GetFather() override;
  HRESULT GetFeatContainer(ZefIContainer_var& oContainer) override;
  workshop::List GetPreviousActivities(const ZefUnicodeString& iType) override;
  workshop::List GetNextActivities(const ZefUnicodeString& iType) override;
  using Activity::GetProductOutputs;
  workshop::List GetProductOutputs(ZefISPPItem_var& oItem) override;
  HRESULT GetItemSource(ZefBaseUnknown*& oSource, const ZefISPPItem_var& iItem) override;
  HRESULT AddProductOutput(ZefISPPProductIO*& oOutput, const ZefISPPItem_var& iItem) override;
  ZefSPPActivityNotificationDispatcher* GetDispatcher() override;
  HRESULT AddItem(const ZefBaseUnknown_var& iItem, ZefBaseUnknown_var& oItem) override;
  HRESULT RemoveItem(const ZefBaseUnknown_var& iItem, int iSelector) override;
  workshop::List* GetItems(const ZefUnicodeString& iType, int iSelector) override;
  HRESULT AddItemLink(ZefBaseUnknown*& oLink, const ZefISPPItem_var& iItem, ZefBaseUnknown* iSource,
                      const ZefUnicodeString& iName, int iFixed, int iSelector) override;
  HRESULT GetOutputs(workshop::List& ioList, int iMode) override;
  HRESULT GetInputItems(workshop::List& ioList) override;
  int IsValidFastener(const TuvIBIWFastener_var& iFastener) override;
  HRESULT SetCallbacksBlocked(int iBlocked) override;

  static inline bool blocked = false;
  static inline bool telling = false;

 private:
  Handle<ZefSPPActivityNotificationDispatcher> own_;
  std::unique_ptr<workshop::List> shared_;
  int queries_ = 0;
};

class BrokenOutput : public workshop::Output {
 public:
  using Output::Output;
  ZefMetaClass* GetMetaObject() const override {
    return workshop::ClassNamed(Commits("outputs of another class") ? "Output" : "ProductOutput");
  }
  HRESULT GetProduct(ZefBaseUnknown*& oProduct) override;
};

// The root container, which breaks promises where others only ask.
class BrokenContainer : public ComponentObject<ZefIContainer, ZefISPPProcessContainer> {
 public:
  explicit BrokenContainer(workshop::Process& process) : process_(process) {}
  // Whether the breach is one of these.
  static bool IsAsked();
  ZefMetaClass* GetMetaObject() const override { return workshop::ClassNamed("BrokenContainer"); }
  HRESULT ListMembersHere(const char* iType, _SEQUENCE_ZefBaseUnknown_ptr& ioMembers) override;
  workshop::List* GetProcessRoots() override;
  workshop::List* GetProductRoots() override;

 private:
  workshop::Process& process_;
  workshop::List productRoots_;
};

// The container of fasteners, and that of containers.
class BrokenFasteners : public ComponentObject<ZefICompoundContainer, ZefIContainer> {
 public:
  explicit BrokenFasteners(workshop::List& welds) : welds_(welds) {}
  ZefMetaClass* GetMetaObject() const override { return workshop::ClassNamed("BrokenFasteners"); }
  ZefIContainer* GetContainer(const ZefUnicodeString& iIdentifier) override;
  HRESULT ListMembersHere(const char* iType, _SEQUENCE_ZefBaseUnknown_ptr& ioMembers) override;

 private:
  workshop::List& welds_;
};

class BrokenPart : public workshop::Part {
 public:
  using Part::Part;
  HRESULT GetReferenceProduct(ZefIProduct_var& oReference) override;
  int GetChildrenCount() override;
  workshop::List* GetAllChildren(const char* iType) override;

 private:
  std::unique_ptr<workshop::List> shared_;
};

class BrokenAssembly : public workshop::Assembly {
 public:
  using Assembly::Assembly;
  using Assembly::GetChildren;
  HRESULT SetName(const ZefUnicodeString& iName) override;
  HRESULT GetChildren(workshop::List*& oChildren) override;
  HRESULT AddChild(const ZefBaseUnknown_var& iChild) override;
  HRESULT RemoveChild(const ZefBaseUnknown_var& iChild) override;

 private:
  std::unique_ptr<workshop::List> shared_;
};

class BrokenWeld : public workshop::Weld {
 public:
  using Weld::Weld;
  ZefIPointingHolder* GetPointingHolder() override;
  ZefDocument* GetDocument() override;
  double* GetPositionAndOrientation() override;
  HRESULT GetJointedParts(workshop::List& oParts) override;
};

}  // namespace tests
