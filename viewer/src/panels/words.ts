import type { Status } from "../scene/model";
import { make } from "../dom";

export const STATUS_WORDS: Record<Status, string> = {
  unassigned: "Unassigned",
  assigned: "Assigned",
  several: "On several",
};

export const POINT_WORDS = "Locators and clamps";

/** The mark of a status: shape and colour, so that it can be told without colours. */
export const statusMark = (status: Status): HTMLElement =>
  make("span", { class: `mark ${status}`, "aria-hidden": "true" });

export const capital = (word: string): string => word.charAt(0).toUpperCase() + word.slice(1);
