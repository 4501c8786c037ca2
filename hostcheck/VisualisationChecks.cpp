#include "host/HostApplication.h"
#include "host/component/LiveObjects.h"
#include "host/dialog/Dialog.h"
#include "host/document/ZefFrmEditor.h"
#include "host/visu/Visu.h"
#include "hostcheck/Bench.h"
#include "hostcheck/Check.h"

namespace hostcheck {

namespace {

void MainRepresentation(Bench& bench) {
  const auto shown = bench.Ask<ZefI3DGeoVisu>(bench.weld);
  Zef3DRep* const rep = shown->GetRep();
  bench.Need(rep, "representations of welds");
  const unsigned before = CountOf(rep);
  bench.Expect(shown->GetRep() == rep, "the representation is the same each time");
  bench.Expect(CountOf(rep) == before, "it comes without reference");
  const ZefI3DGeoVisu_var other = bench.loose;
  bench.Expect(!other || other->GetRep() != rep, "another weld has another one");
}

void FurtherRepresentation(Bench& bench) {
  const auto shown = bench.Ask<ZefIVisu>(bench.weld);
  const Handle<Zef3DRep> rep = shown->GetRep();
  bench.Need(rep, "further representations of welds");
  const ZefI3DGeoVisu_var main = bench.weld;
  bench.Expect(!main || main->GetRep() != rep.Get(),
               "the further representation is apart from that of the main view");
  const unsigned before = CountOf(rep);
  bench.Expect(shown->GetRep() == rep.Get(), "it stays the same while it is held");
  bench.Expect(CountOf(rep) == before, "it comes without reference");
}

int ShowAttribute(Bench& bench, ZefBaseUnknown* object) {
  ZefVisPropertiesValues values;
  values.SetShowAttr(-1);
  bench.Ask<ZefIVisProperties>(object)->GetPropertiesAtt(values, 7, 0, 0, 0);
  return values.GetShowAttr();
}

void Properties(Bench& bench) {
  const auto events = bench.Ask<ZefIModelEvents>(bench.weld);
  const auto path = Make<ZefPathElement>(bench.weld);
  for (const int show : {1, 0, 2}) {
    ZefVisPropertiesValues values;
    values.SetShowAttr(show);
    const auto change = Make<ZefModifyVisProperties>(bench.weld, path, 0, 7, values);
    bench.Expect(Succeeded(events->Dispatch(*change)), "visual properties can be changed");
    bench.Expect(ShowAttribute(bench, bench.weld) == show, "SW-1 has the show attribute given");
    bench.Expect(ShowAttribute(bench, bench.loose) == 0, "SW-2 keeps its own");
  }
  ZefVisPropertiesValues hidden;
  hidden.SetShowAttr(1);
  events->Dispatch(*Make<ZefModifyVisProperties>(bench.weld, path, 0, 3, hidden));
  const auto other = Make<ZefNotification>();
  events->Dispatch(*other);
  bench.Expect(ShowAttribute(bench, bench.weld) == 2, "nothing else changes visual properties");
}

void Viewers(Bench& bench) {
  ZefFrmEditor* const editor = ZefFrmEditor::GetCurrentEditor();
  const long alive = CountLiveObjects();
  Zef3DViewer* const first = HostApplication::Installed().CreateViewer(nullptr, editor);
  bench.Need(first, "viewers made on demand");
  Zef3DViewer* const second = HostApplication::Installed().CreateViewer(nullptr, editor);
  bench.Require(second && second != first, "each window has a viewer of its own");
  Zef3DViewpoint* const viewpoint = first->GetMain3DViewpoint();
  bench.Expect(viewpoint == first->GetMain3DViewpoint(), "a viewer keeps its viewpoint");
  bench.Expect(!viewpoint || viewpoint != second->GetMain3DViewpoint(),
               "two viewers have two viewpoints");
  first->Release();
  second->Release();
  bench.Expect(CountLiveObjects() == alive, "a viewer ends with its reference");
}

void CurrentWindow(Bench& bench) {
  ZefFrmLayout* const layout = ZefFrmLayout::GetCurrentLayout();
  bench.Need(layout, "layout of windows");
  ZefFrmWindow* const window = layout->GetCurrentWindow();
  bench.Need(window, "current window");
  Zef3DViewer* const viewer = window->GetViewer();
  bench.Need(viewer, "viewer in the current window");
  const unsigned before = CountOf(viewer);
  bench.Expect(layout->GetCurrentWindow()->GetViewer() == viewer, "the viewer is the same again");
  bench.Expect(CountOf(viewer) == before, "it comes without reference");
  bench.Expect(ZefVisManager::GetVisManager() == ZefVisManager::GetVisManager(),
               "the visualisation manager is the same each time");
}

// What is attached is held until it is detached.
void Attached(Bench& bench) {
  ZefVisManager* const manager = ZefVisManager::GetVisManager();
  bench.Need(manager, "visualisation manager");
  const auto viewer =
      Adopt(HostApplication::Installed().CreateViewer(nullptr, ZefFrmEditor::GetCurrentEditor()));
  bench.Need(viewer, "viewers made on demand");
  Zef3DViewpoint* const viewpoint = viewer->GetMain3DViewpoint();
  bench.Need(viewpoint, "viewpoint");
  const Handle<Zef3DRep> rep = Make<Zef3DBagRep>();
  manager->AttachTo(rep, viewpoint, viewer, 0, 0, 0);
  bench.Expect(CountOf(rep) > 1, "an attached representation is held");
  manager->DetachFrom(viewpoint, 1);
  bench.Expect(CountOf(rep) == 1, "it is given back when everything is detached");
}

}  // namespace

std::vector<Check> VisualisationChecks() {
  static constexpr char kViewer[] = "host/visu/Zef3DViewer.h";
  return {
      {{"visualisation.representation", "host/visu/ZefI3DGeoVisu.h",
        "An object has one representation in the main view, lent out."},
       &MainRepresentation},
      {{"visualisation.further", "host/visu/ZefIVisu.h",
        "An object has a representation apart for further views."},
       &FurtherRepresentation},
      {{"visualisation.properties", "host/visu/ZefIModelEvents.h",
        "A dispatched change alone changes visual properties."},
       &Properties},
      {{"visualisation.viewers", "host/HostApplication.h",
        "A viewer that is made comes with a reference."},
       &Viewers},
      {{"visualisation.window", kViewer, "The current window lends its viewer out."},
       &CurrentWindow},
      {{"visualisation.attached", "host/visu/ZefVisManager.h",
        "What is attached to a viewpoint is held until it is detached."},
       &Attached},
  };
}

}  // namespace hostcheck
