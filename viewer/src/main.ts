import { byId } from "./dom";
import { connectKeys } from "./keys";
import { Details } from "./panels/details";
import { makeFilters } from "./panels/filters";
import { makeHelp } from "./panels/help";
import { showLegend, showSummary } from "./panels/summary";
import { Table } from "./panels/table";
import { Tree } from "./panels/tree";
import { connectPointer } from "./pointer";
import { loadScene } from "./scene/load";
import { isWeld, type Item, type Scene } from "./scene/model";
import { readPayload, SceneError } from "./scene/payload";
import { Process } from "./scene/process";
import { Filter, FILTER_KEYS, Store } from "./state";
import { makeToolbar } from "./toolbar";
import { onThemeChange } from "./view/theme";
import { View } from "./view/view";

function tryView(scene: Scene, process: Process): View | null {
  try {
    return new View(scene, process, byId<HTMLCanvasElement>("canvas"), byId("overlay"), byId<SVGSVGElement>("triad"));
  } catch {
    const note = byId("no-view");
    note.textContent = "This browser offers no WebGL, so there is no 3D view; the filters and the table work without it.";
    note.hidden = false;
    document.body.classList.add("without-view");
    return null;
  }
}

function connectPaper(view: View): void {
  const paper = byId<HTMLImageElement>("paper");
  window.addEventListener("beforeprint", () => (paper.src = view.stage.picture()));
  window.addEventListener("afterprint", () => paper.removeAttribute("src"));
}

function start(scene: Scene): void {
  const process = new Process(scene);
  const store = new Store(scene);
  const filter = new Filter(scene, process);
  const view = tryView(scene, process);
  const closeUp = (item: Item): void => view?.fit(item);
  showSummary(scene);
  showLegend(scene);
  makeHelp();
  makeFilters(scene, store);
  new Tree(process, scene.welds.filter(isWeld).length, store);
  const table = new Table(process, scene.welds, store, {
    see: (weld) => view?.reveal({ kind: "weld", weld }),
    closeUp: (weld) => closeUp({ kind: "weld", weld }),
  });
  const details = new Details(scene, process, store, closeUp);
  let welds = filter.welds(store.state);
  const show = (): void => {
    const { selected } = store.state;
    table.show(welds, selected?.kind === "weld" ? selected.weld : null);
    view?.show(store.state, welds);
  };
  store.subscribe((state, changed) => {
    if (changed.has("selected")) details.show(state.selected);
    if (FILTER_KEYS.some((key) => changed.has(key))) {
      welds = filter.welds(state);
      if (state.selected?.kind === "weld" && !welds.includes(state.selected.weld)) store.select(null);
    }
    show();
  });
  show();
  connectKeys(view, store);
  if (!view) return;
  makeToolbar(scene, store, view);
  connectPointer(view, store);
  connectPaper(view);
  onThemeChange(() => {
    view.readTheme();
    show();
  });
}

function fail(error: unknown): void {
  const place = byId("failure");
  place.textContent = error instanceof SceneError ? error.message : `This page does not work here: ${String(error)}.`;
  place.hidden = false;
  document.body.classList.add("failed");
}

async function main(): Promise<void> {
  try {
    start(await loadScene(readPayload()));
    document.body.classList.add("ready");
  } catch (error) {
    fail(error);
  }
}

void main();
