#pragma once

#include <vector>

#include "host/component/PlatformClass.h"
#include "host/visu/ZefSelectionSet.h"

class Zef3DViewer;

// Temporary objects, shown in the viewers that were added. Viewers are not counted: one that ends
// leaves the set.
class ZefISO : public PlatformClass<ZefISO, ZefSelectionSet> {
 public:
  static constexpr char Name[] = "ZefISO";

  ~ZefISO() override;
  // A viewer that is there already is not added again.
  void AddViewer(Zef3DViewer* iViewer);
  void RemoveViewer(Zef3DViewer* iViewer);
  const std::vector<Zef3DViewer*>& Viewers() const { return viewers_; }

 private:
  std::vector<Zef3DViewer*> viewers_;
};
