#pragma once

#include <array>

#include "host/component/Handle.h"
#include "host/document/ZefDocument.h"
#include "host/document/ZefFrmEditor.h"
#include "host/visu/ZefHSO.h"
#include "host/visu/ZefISO.h"
#include "host/visu/ZefPSO.h"

namespace embedded {

// The editor of a document, with its sets. It holds a reference on the document. Everything can be
// replaced, also by null, as in an application that lacks it.
class Editor : public ZefFrmEditor {
 public:
  static constexpr int kInteractiveSets = 3;

  Editor();

  ZefDocument* GetDocument() override;
  ZefHSO* GetHSO() override;
  // Null for ranks other than 0 to 2.
  ZefISO* GetISO(int iRank = 0) override;
  ZefPSO* GetPSO() override;

  // Each holds a reference of its own.
  void SetDocument(ZefDocument* iDocument) { document_ = iDocument; }
  void SetHSO(ZefHSO* iSet) { highlighted_ = iSet; }
  void SetISO(int iRank, ZefISO* iSet);
  void SetPSO(ZefPSO* iSet) { preselected_ = iSet; }
  void EmptySets();

  // What the editor has, for the application's own use; null where it was taken away.
  ZefHSO* Highlighted() const { return highlighted_.Get(); }
  ZefPSO* Preselected() const { return preselected_.Get(); }
  const std::array<Handle<ZefISO>, kInteractiveSets>& Interactive() const { return interactive_; }

 private:
  ZefDocument_var document_;
  Handle<ZefHSO> highlighted_;
  std::array<Handle<ZefISO>, kInteractiveSets> interactive_;
  Handle<ZefPSO> preselected_;
};

}  // namespace embedded
