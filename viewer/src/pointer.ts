import { byId } from "./dom";
import { titleOf, type Item } from "./scene/model";
import type { Store } from "./state";
import type { View } from "./view/view";

/** Pixels between press and release that still make a click. */
const STILL = 4;

const textOf = (item: Item): string => titleOf(item.kind === "weld" ? item.weld : item.part);

/** Hovering names things, a click selects them, a double click goes close. */
export function connectPointer(view: View, store: Store): void {
  const { canvas } = view.stage;
  const tip = byId("tip");
  let down: PointerEvent | null = null;
  let hover = 0;
  const place = (event: MouseEvent): Item | null => {
    const { left, top } = canvas.getBoundingClientRect();
    return view.at(event.clientX - left, event.clientY - top);
  };
  const hideTip = (): void => {
    cancelAnimationFrame(hover);
    tip.hidden = true;
  };
  canvas.addEventListener("pointerdown", (event) => {
    down = event;
    hideTip();
  });
  canvas.addEventListener("pointerup", (event) => {
    const moved = !down || Math.hypot(event.clientX - down.clientX, event.clientY - down.clientY) > STILL;
    if (!moved && down!.button === 0) store.select(place(event));
    down = null;
  });
  canvas.addEventListener("dblclick", (event) => {
    const item = place(event);
    if (item) view.fit(item);
  });
  canvas.addEventListener("pointermove", (event) => {
    if (down || event.buttons !== 0) return;
    cancelAnimationFrame(hover);
    hover = requestAnimationFrame(() => showTip(tip, event, place(event)));
  });
  canvas.addEventListener("pointerleave", hideTip);
}

function showTip(tip: HTMLElement, event: MouseEvent, item: Item | null): void {
  tip.hidden = item === null;
  if (!item) return;
  tip.textContent = textOf(item);
  tip.style.transform = `translate(${event.clientX + 14}px, ${event.clientY + 14}px)`;
}
