#pragma once

#include <optional>

#include "embedded/scene/Box.h"
#include "embedded/scene/Viewpoint.h"
#include "host/visu/Zef3DViewer.h"

namespace embedded {

class Document;
class Editor;

// A viewer with one viewpoint. It shows what is attached to the viewpoint, the temporary objects of
// the interactive sets that it was added to, and the objects of a document when it has one. When it
// ends it takes everything off its viewpoint.
class Viewer : public Zef3DViewer {
 public:
  Viewer();
  ~Viewer() override;

  // Counts only: what there is to see is worked out when somebody looks.
  void Draw() override { ++draws_; }
  Zef3DViewpoint* GetMain3DViewpoint() override;
  // Nothing when it is not attached.
  void RemoveRep(Zef3DRep* iRep) override;

  // Replaces the viewpoint, also by null.
  void SetViewpoint(Viewpoint* iViewpoint) { viewpoint_ = iViewpoint; }
  Viewpoint* MainViewpoint() const { return viewpoint_.Get(); }
  // Takes everything off the viewpoint and forgets where the view was.
  void Empty();
  // Attaches the editor's sets.
  void ShowSetsOf(const Editor& iEditor);
  // The document is not counted: take it off, with null, before it ends.
  void ShowDocument(Document* iDocument) { document_ = iDocument; }
  Document* ShownDocument() const { return document_; }

  int Draws() const { return draws_; }
  // The box that the view was last moved to, in mm; none before.
  const std::optional<Box>& Framed() const { return framed_; }
  void Frame(const std::optional<Box>& iBox) { framed_ = iBox; }

 private:
  Handle<Viewpoint> viewpoint_;
  Document* document_ = nullptr;
  std::optional<Box> framed_;
  int draws_ = 0;
};

}  // namespace embedded
