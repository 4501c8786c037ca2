import { byId, count, make, plural } from "../dom";
import { isWeld, type Scene, type Status, STATUSES } from "../scene/model";
import { POINT_WORDS, STATUS_WORDS, statusMark } from "./words";

const ORDER: Status[] = ["assigned", "several", "unassigned"];

/** Title, figures and the bar in the head of the page. */
export function showSummary(scene: Scene): void {
  const name = scene.document.split(/[\\/]/).at(-1) || "Scene";
  document.title = `${name} – weld plan`;
  byId("document").textContent = name;
  byId("program").textContent = [
    plural(scene.parts.length, "part"),
    plural(scene.activities.length, "activity").replace("activitys", "activities"),
    scene.program,
  ].filter(Boolean).join(" · ");
  const bar = make("div", { class: "share", "aria-hidden": "true" });
  const welds = scene.welds.filter(isWeld);
  const points = scene.welds.length - welds.length;
  const figures = make("div", { class: "figures" }, figure(welds.length, "Welds", null));
  for (const status of ORDER) {
    const number = welds.filter((weld) => weld.status === status).length;
    figures.append(figure(number, STATUS_WORDS[status], status));
    if (number > 0) bar.append(make("span", { class: status, style: `flex-grow: ${number}` }));
  }
  if (points > 0) figures.append(figure(points, POINT_WORDS, null));
  byId("summary").append(figures, bar);
}

function figure(number: number, text: string, status: Status | null): HTMLElement {
  const mark = status ? [statusMark(status)] : [];
  return make("span", { class: "figure" }, ...mark, make("b", {}, count(number)), ` ${text.toLowerCase()}`);
}

export function showLegend(scene: Scene): void {
  const legend = byId("legend");
  for (const status of STATUSES) {
    legend.append(make("span", { class: "entry" }, statusMark(status), STATUS_WORDS[status]));
  }
  if (scene.welds.some((weld) => weld.type === "seam")) {
    legend.append(make("span", { class: "entry" }, make("span", { class: "seam-mark", "aria-hidden": "true" }), "Seam"));
  }
}
