#pragma once

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "Objects.h"
#include "host/document/Document.h"
#include "host/fastening/Fastening.h"
#include "host/process/Process.h"
#include "host/product/Product.h"

namespace workshop {

class ItemLink;

// What activities link: it knows the links that point at it, oldest first.
class Linkable : public ZefILinkableObject {
 public:
  ZefIPointingHolder* GetPointingHolder() override;
  ZefDocument* GetDocument() override;

 protected:
  friend class ItemLink;
  Home home_;
  std::vector<ItemLink*> links_;  // not counted: links hold items
};

// A feature that joins an item to an activity, whose feature interface is `owner`.
class ItemLink : public ComponentObject<ZefISPPActivitySpecification, ZefISpecObject> {
 public:
  ItemLink(ZefISpecObject* iOwner, ZefBaseUnknown* iItem, int iSelector)
      : item(iItem), selector(iSelector), owner_(iOwner) {
    if (auto* const target = ObjectAs<Linkable>(iItem)) target->links_.push_back(this);
  }
  ~ItemLink() override { Drop(); }
  ZefMetaClass* GetMetaObject() const override { return ClassNamed("ItemLink"); }
  HRESULT GetSpecifiedItem(ZefBaseUnknown_var& oItem) override { return Give(oItem, item); }
  ZefBaseUnknown* GetFather() override { return WithReference(owner_); }
  HRESULT GetFeatContainer(ZefIContainer_var& oContainer) override {
    return owner_ ? owner_->GetFeatContainer(oContainer) : E_FAIL;
  }

  // Ends the link on the item's side; whoever holds the feature may still ask it for the item.
  void Drop() {
    owner_ = nullptr;
    if (auto* const target = ObjectAs<Linkable>(item.Get())) std::erase(target->links_, this);
  }

  const ZefBaseUnknown_var item;
  const int selector;

 private:
  ZefISpecObject* owner_;
};

// What points at an item, as of the moment when it was asked.
class Holder : public ComponentObject<ZefIPointingHolder> {
 public:
  explicit Holder(const std::vector<ItemLink*>& links) {
    for (ItemLink* const link : links) links_.Append(link->Identity());
  }
  ZefMetaClass* GetMetaObject() const override { return ClassNamed("PointingHolder"); }
  HRESULT ListPointingObjects(List& ioFeatures) override {
    ioFeatures.Append(links_);
    return S_OK;
  }

 private:
  List links_;
};

inline ZefIPointingHolder* Linkable::GetPointingHolder() {
  return links_.empty() ? nullptr : new Holder(links_);
}

// What parts and assemblies have in common. Each is a reference, there are no instances.
template <class... More>
class ProductObject
    : public ComponentObject<More..., ZefIProduct, ZefINavigateObject, ZefISPPItem, Linkable> {
 public:
  HRESULT GetReferenceProduct(ZefIProduct_var& oReference) override {
    return Give(oReference, this->Identity());
  }
  int GetChildrenCount() override { return children_.Size(); }
  List* GetAllChildren(const char* iType) override {
    List all;
    for (int i = 1; i <= children_.Size(); ++i) {
      if (Adopt(children_[i]->QueryInterface(iType))) all.Append(children_[i]);
      const ZefIProduct_var child = children_[i];
      const std::unique_ptr<List> below(child->GetAllChildren(iType));
      all.Append(*below);
    }
    return NewList(all);
  }
  HRESULT GetProductText(ZefUnicodeString& oText) override { return Give(oText, name_); }
  ZefUnicodeString GetPartNumber() override { return name_; }

 protected:
  std::string name_;
  List children_;
};

class Part : public ProductObject<> {
 public:
  Part(Home home, std::string name) {
    home_ = std::move(home);
    name_ = std::move(name);
  }
  ZefMetaClass* GetMetaObject() const override { return ClassNamed("Part"); }
  List* GetChildren() override { return NewList(children_); }
  void Add(ZefBaseUnknown* child) { children_.Append(child); }
};

class Assembly : public ProductObject<TuvIMfgAssembly> {
 public:
  explicit Assembly(Home home) { home_ = std::move(home); }
  ZefMetaClass* GetMetaObject() const override { return ClassNamed("Assembly"); }
  List* GetChildren() override { return NewList(children_); }
  HRESULT SetName(const ZefUnicodeString& iName) override { return Give(name_, iName.Bytes()); }
  ZefUnicodeString GetName() override { return name_; }
  HRESULT GetChildren(List*& oChildren) override { return Give(oChildren, NewList(children_)); }
  HRESULT AddChild(const ZefBaseUnknown_var& iChild) override {
    const auto* const assembly = ObjectAs<Assembly>(iChild.Get());
    if (!iChild || (assembly && assembly->Contains(*this))) return E_FAIL;
    if (children_.Locate(iChild) == 0) children_.Append(iChild);
    return S_OK;
  }
  HRESULT RemoveChild(const ZefBaseUnknown_var& iChild) override {
    if (!iChild || children_.Locate(iChild) == 0) return E_FAIL;
    children_.RemoveValue(iChild);
    return S_OK;
  }

 private:
  bool Contains(const Assembly& searched) const {
    bool found = this == &searched;
    for (int i = 1; i <= children_.Size() && !found; ++i) {
      const auto* const child = ObjectAs<Assembly>(children_[i].Get());
      found = child && child->Contains(searched);
    }
    return found;
  }
};

class Weld : public ComponentObject<TuvISpotWeld, TuvIBIWFastener, TuvIBIWPointFastener,
                                    TuvIBIWFeature, ZefISPPItem, ZefIAlias, Linkable> {
 public:
  Weld(Home home, std::string name, const std::array<double, 3>& at)
      : name_(std::move(name)), at_(at) {
    home_ = std::move(home);
  }
  ZefMetaClass* GetMetaObject() const override { return ClassNamed("Weld"); }
  double* GetPositionAndOrientation() override {
    return new double[6]{at_[0], at_[1], at_[2], 0, 0, 0};
  }
  HRESULT IsAssignedInPask() override { return E_FAIL; }
  double GetX() override { return at_[0]; }
  double GetY() override { return at_[1]; }
  double GetZ() override { return at_[2]; }
  HRESULT GetCarrier(ZefBaseUnknown*& oCarrier) override { return Give(oCarrier, parts_[1].Get()); }
  HRESULT GetRepresentedObject(ZefBaseUnknown*& oObject) override {
    return Give(oObject, Identity());
  }
  HRESULT SetDisplayStatus(int iStatus, int) override { return Give(status_, iStatus); }
  HRESULT GetJointedParts(List& oParts) override { return Give(oParts, parts_); }
  HRESULT GetFastenerType(ZefUnicodeString& oType) override { return Give(oType, "spot"); }
  ZefUnicodeString GetAlias() override { return name_; }

  bool IsShownAsAssigned() const { return status_ == 4; }
  void Join(ZefBaseUnknown* part) { parts_.Append(part); }

 private:
  std::string name_;
  std::array<double, 3> at_;  // mm
  int status_ = 1;
  List parts_;
};

}  // namespace workshop
