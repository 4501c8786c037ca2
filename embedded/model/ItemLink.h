#pragma once

#include <memory>
#include <string>

#include "host/component/ComponentObject.h"
#include "host/document/ZefISpecObject.h"
#include "host/process/ZefISPPActivitySpecification.h"

namespace embedded {

class Activity;
class Linkable;

// One link of an item to an activity: a feature that designates the item and has the activity as
// father.
class ItemLink : public ComponentObject<ZefISPPActivitySpecification, ZefISpecObject> {
 public:
  enum Selector { Plain = 1, FirstAssigned = 2 };

  // The activity is not counted; it detaches its links when they are removed or when it ends.
  ItemLink(Activity* iActivity, ZefBaseUnknown* iItem, int iSelector);
  ~ItemLink() override;

  ZefMetaClass* GetMetaObject() const override;
  HRESULT GetSpecifiedItem(ZefBaseUnknown_var& oItem) override;
  ZefBaseUnknown* GetFather() override;
  HRESULT GetFeatContainer(ZefIContainer_var& oContainer) override;

  const ZefBaseUnknown_var& Item() const { return item_; }
  Activity* OwnActivity() const { return activity_; }
  // The item's list of links; null for an object of another host and once the link ended.
  Linkable* Target() const { return target_; }
  int GetSelector() const { return selector_; }

  // What a link may be made with besides; few links are.
  struct Details {
    ZefBaseUnknown_var source{};
    std::string name{};
    int fixed = 0;
  };
  const Details& OwnDetails() const;
  void SetDetails(Details iDetails);

  // Ends the link on both sides; the feature keeps its item.
  void Detach();
  // Place among the activity's links, counted from 0.
  int slot = -1;

 private:
  Activity* activity_;
  ZefBaseUnknown_var item_;
  Linkable* target_;
  std::unique_ptr<const Details> details_;
  int selector_;
};

}  // namespace embedded
