import { Color } from "three";

import type { Status } from "../scene/model";

/** The colours of the page as the view uses them; they follow light and dark. */
export interface Theme {
  status: Record<Status, Color>;
  edge: Color;
  accent: Color;
  edgeStrength: number;
}

const dark = matchMedia("(prefers-color-scheme: dark)");

export function readTheme(): Theme {
  const style = getComputedStyle(document.documentElement);
  const colour = (name: string): Color => new Color(style.getPropertyValue(name).trim());
  return {
    status: {
      unassigned: colour("--unassigned"),
      assigned: colour("--assigned"),
      several: colour("--several"),
    },
    edge: colour("--edge"),
    accent: colour("--accent"),
    edgeStrength: dark.matches ? 0.36 : 0.5,
  };
}

export const onThemeChange = (listener: () => void): void =>
  dark.addEventListener("change", listener);
