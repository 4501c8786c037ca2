import { make } from "../dom";
import { isWeld, titleOf, type Weld } from "../scene/model";
import type { Process } from "../scene/process";
import { capital, STATUS_WORDS, statusMark } from "./words";

export interface Column {
  name: string;
  title: string;
  /** For cells in a wide table only. */
  wide: boolean;
  number: boolean;
  text: (weld: Weld) => string;
  /** What the rows are sorted by, where it is not the text. */
  rank?: (weld: Weld) => number;
}

const mm = (value: number | undefined): string => (value === undefined ? "" : value.toFixed(1));
const column = (name: string, title: string, text: (weld: Weld) => string, wide = false): Column =>
  ({ name, title, text, wide, number: false });

function axis(name: string, at: 0 | 1 | 2): Column {
  return {
    name, title: `${name.toUpperCase()} mm`, wide: true, number: true,
    text: (weld) => mm(weld.position?.[at]),
    rank: (weld) => weld.position?.[at] ?? Infinity,
  };
}

const ORDER = { unassigned: 0, several: 1, assigned: 2 };

export function columnsOf(process: Process): Column[] {
  const partText = (weld: Weld): string =>
    weld.parts.map((name) => process.partNamed(name)?.number || name).join(", ");
  return [
    {
      ...column("status", "Status", (weld) => (isWeld(weld) ? STATUS_WORDS[weld.status] : "")),
      rank: (weld) => (isWeld(weld) ? ORDER[weld.status] : Infinity),
    },
    column("weld", "Weld", titleOf),
    column("type", "Type", (weld) => capital(weld.type)),
    column("activities", "Activity", (weld) => weld.activities.join(", ")),
    column("parts", "Parts", partText),
    axis("x", 0),
    axis("y", 1),
    axis("z", 2),
  ];
}

export function makeCell(column: Column, weld: Weld, at: number): HTMLElement {
  const text = column.text(weld);
  const cell = make("span", { class: `cell ${column.name}`, role: "gridcell", "aria-colindex": at + 1, title: text });
  if (column.name === "status" && isWeld(weld)) cell.append(statusMark(weld.status), make("span", { class: "unseen" }, text));
  else cell.textContent = text;
  return cell;
}

/** Sorted as people sort: W-9 before W-10. */
export function sortWelds(welds: readonly Weld[], by: Column, descending: boolean): Weld[] {
  const collator = new Intl.Collator("en", { numeric: true });
  const keyed = welds.map((weld) => ({ weld, text: by.text(weld), rank: by.rank?.(weld) ?? 0 }));
  keyed.sort((left, right) => left.rank - right.rank || collator.compare(left.text, right.text));
  if (descending) keyed.reverse();
  return keyed.map(({ weld }) => weld);
}
