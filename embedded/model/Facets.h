#pragma once

#include <string>
#include <vector>

#include "embedded/model/Membership.h"
#include "host/component/FaultPoint.h"
#include "host/document/ZefIAlias.h"
#include "host/document/ZefILinkableObject.h"
#include "host/document/ZefIRedrawEvent.h"
#include "host/visu/ZefI3DGeoVisu.h"
#include "host/visu/ZefIVisu.h"

namespace embedded {

class ItemLink;

// Implementations of single interfaces that several kinds of objects share.

// Counts the redraw requests, which panels poll.
class Redrawable : public ZefIRedrawEvent {
 public:
  HRESULT Redraw() override;
  HRESULT RedrawNode() override;
  int Redraws() const { return redraws_; }
  int NodeRedraws() const { return nodeRedraws_; }

 private:
  int redraws_ = 0;
  int nodeRedraws_ = 0;
};

// The item links that point at the object, oldest first. Links are not counted: each removes itself
// when it ends.
class Linkable : public ZefILinkableObject {
 public:
  ZefIPointingHolder* GetPointingHolder() override;
  ZefDocument* GetDocument() override;

  const std::vector<ItemLink*>& Links() const { return links_; }
  void AddLink(ItemLink* iLink) { links_.push_back(iLink); }
  void DropLink(ItemLink* iLink);
  // Those of activities whose document ended.
  void DropEndedLinks();
  void Join(MembershipPointer iMembership) { membership_ = std::move(iMembership); }
  // Has been taken out of its document, whoever still holds it.
  void LeaveDocument() { hasLeft_ = true; }
  // Such an object can be named in the document's file.
  bool IsPartOf(const Document* iDocument) const {
    return iDocument && iDocument == OwnDocument() && !hasLeft_;
  }
  // Null once the document ended.
  Document* OwnDocument() const { return membership_ ? membership_->document : nullptr; }

 private:
  std::vector<ItemLink*> links_;
  MembershipPointer membership_;
  bool hasLeft_ = false;
};

// The name under which users, files and commands know the object.
class Aliased : public ZefIAlias {
 public:
  ZefUnicodeString GetAlias() override { return FaultPoint::Strikes() ? "" : alias_; }
  const std::string& Key() const { return alias_; }

 protected:
  std::string alias_;
};

// Two interfaces with an operation of the same name, told apart.
class MainView : public ZefI3DGeoVisu {
 public:
  Zef3DRep* GetRep() final { return MainRep(); }
  virtual Zef3DRep* MainRep() = 0;
};

class FurtherView : public ZefIVisu {
 public:
  Zef3DRep* GetRep() final { return FurtherRep(); }
  virtual Zef3DRep* FurtherRep() = 0;
};

}  // namespace embedded
