#include "manufassly/Assemblies.h"

#include "host/document/ZefIRedrawEvent.h"
#include "host/process/ZefISPPProductIO.h"
#include "host/values/Each.h"

ZefListValZefBaseUnknown_var AssembliesBehind(const ZefListValZefBaseUnknown_var& iOutputs) {
  ZefListValZefBaseUnknown_var products;
  for (const auto& output : Each<ZefISPPProductIO>(iOutputs)) {
    ZefBaseUnknown_var product;
    output->GetProduct(product.Put());
    products.Append(product);
  }
  return AssembliesAmong(products);
}

ZefListValZefBaseUnknown_var AssembliesAmong(const ZefListValZefBaseUnknown_var& iObjects) {
  ZefListValZefBaseUnknown_var assemblies;
  for (const auto& assembly : Each<TuvIMfgAssembly>(iObjects)) assemblies.Append(assembly);
  return assemblies;
}

std::unique_ptr<ZefListValZefBaseUnknown_var> ChildrenOf(const TuvIMfgAssembly_var& iAssembly) {
  if (!iAssembly) return nullptr;
  ZefListValZefBaseUnknown_var* children = nullptr;
  iAssembly->GetChildren(children);
  return std::unique_ptr<ZefListValZefBaseUnknown_var>(children);
}

void Redraw(const TuvIMfgAssembly_var& iAssembly) {
  const ZefIRedrawEvent_var panel = iAssembly;
  if (panel) panel->Redraw();
}
