#include "embedded/model/ProductWalk.h"

#include <memory>
#include <unordered_set>
#include <utility>
#include <vector>

#include "embedded/model/MfgAssembly.h"
#include "embedded/model/Product.h"

namespace embedded {

namespace {

struct Step {
  const ZefBaseUnknown* object;
  ZefListValZefBaseUnknown_var children;
  int next = 1;
};

}  // namespace

ZefListValZefBaseUnknown_var ChildrenBelow(const ZefBaseUnknown* iObject) {
  ZefListValZefBaseUnknown_var children;
  if (const auto* const assembly = ObjectAs<MfgAssembly>(iObject)) return assembly->OwnChildren();
  if (const auto* const product = ObjectAs<Product>(iObject)) {
    for (Product* const child : product->Below()) children.Append(child->Identity());
  }
  return children;
}

ZefListValZefBaseUnknown_var* ListAllBelow(const ZefBaseUnknown* iObject, const char* iType) {
  auto all = std::make_unique<ZefListValZefBaseUnknown_var>();
  std::vector<Step> path;
  std::unordered_set<const ZefBaseUnknown*> onPath{iObject->GetImpl(0)};
  path.push_back({iObject->GetImpl(0), ChildrenBelow(iObject)});
  while (!path.empty()) {
    Step& step = path.back();
    if (step.next > step.children.Size()) {
      onPath.erase(step.object);
      path.pop_back();
      continue;
    }
    const ZefBaseUnknown_var child = step.children[step.next++];
    if (Adopt(child->QueryInterface(iType))) all->Append(child);
    if (onPath.insert(child.Get()).second)
      path.push_back({child.Get(), ChildrenBelow(child.Get())});
  }
  return all.release();
}

}  // namespace embedded
