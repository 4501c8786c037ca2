import { byId, count, make } from "../dom";
import { isWeld, type Weld } from "../scene/model";
import type { Process } from "../scene/process";
import type { Store } from "../state";
import { type Column, columnsOf, makeCell, sortWelds } from "./columns";
import { POINT_WORDS } from "./words";

const ROW = 28;
/** Rows beyond the visible ones that are kept ready. */
const SPARE = 8;

/** The weld table. Only the rows in sight are in the page, so that thousands do no harm. */
export class Table {
  private readonly grid = byId("rows");
  private readonly head = make("div", { class: "head", role: "row", "aria-rowindex": 1 });
  private readonly body = make("div", { class: "body", role: "rowgroup" });
  private readonly columns: Column[];
  private filtered: Weld[] = [];
  private rows: Weld[] = [];
  private sorted: { by: Column; descending: boolean } | null = null;
  private selected: Weld | null = null;

  constructor(
    process: Process,
    private readonly all: readonly Weld[],
    private readonly store: Store,
    private readonly goTo: { see: (weld: Weld) => void; closeUp: (weld: Weld) => void },
  ) {
    this.columns = columnsOf(process);
    this.makeHead();
    this.grid.setAttribute("aria-colcount", String(this.columns.length));
    this.grid.append(make("div", { role: "rowgroup", class: "heads" }, this.head), this.body);
    this.grid.addEventListener("scroll", () => this.draw());
    this.grid.addEventListener("keydown", (event) => this.pressed(event));
    this.body.addEventListener("click", (event) => this.clicked(event, (weld) => this.select(weld)));
    this.body.addEventListener("dblclick", (event) => this.clicked(event, this.goTo.closeUp));
    new ResizeObserver(() => this.draw()).observe(this.grid);
  }

  show(welds: Weld[], selected: Weld | null): void {
    const scroll = selected !== this.selected;
    if (welds !== this.filtered) {
      this.filtered = welds;
      this.sort();
    }
    this.selected = selected;
    if (scroll) this.scrollTo(selected);
    this.draw();
  }

  private sort(): void {
    this.rows = this.sorted ? sortWelds(this.filtered, this.sorted.by, this.sorted.descending) : this.filtered;
    this.grid.setAttribute("aria-rowcount", String(this.rows.length + 1));
    this.body.style.height = `${this.rows.length * ROW}px`;
    const points = this.countOf((weld) => !isWeld(weld), POINT_WORDS.toLowerCase());
    byId("count").textContent = this.countOf(isWeld, "welds") + (this.all.every(isWeld) ? "" : `, ${points}`);
  }

  /** "7 of 65 welds". */
  private countOf(test: (weld: Weld) => boolean, words: string): string {
    const total = this.all.filter(test).length;
    const shown = this.rows.filter(test).length;
    return total === shown ? `${count(total)} ${words}` : `${count(shown)} of ${count(total)} ${words}`;
  }

  private makeHead(): void {
    this.columns.forEach((column, at) => {
      const button = make("button", { type: "button", title: `Sort by ${column.title.toLowerCase()}` }, column.title);
      button.addEventListener("click", () => this.sortBy(column));
      this.head.append(make("span", {
        class: `cell ${column.name}`, role: "columnheader", "aria-colindex": at + 1, "aria-sort": "none",
      }, button));
    });
  }

  /** Up, down, and as the file has them. */
  private sortBy(column: Column): void {
    const again = this.sorted?.by === column;
    if (again && this.sorted!.descending) this.sorted = null;
    else this.sorted = { by: column, descending: again };
    this.columns.forEach((each, at) => {
      const order = each !== this.sorted?.by ? "none" : this.sorted.descending ? "descending" : "ascending";
      this.head.children[at]!.setAttribute("aria-sort", order);
    });
    this.sort();
    if (this.selected) this.scrollTo(this.selected);
    else this.grid.scrollTop = 0;
    this.draw();
  }

  private draw(): void {
    const first = Math.max(0, Math.floor(this.grid.scrollTop / ROW) - SPARE);
    const last = Math.min(this.rows.length, first + Math.ceil(this.grid.clientHeight / ROW) + 2 * SPARE);
    const rows = this.rows.slice(first, last).map((weld, at) => this.makeRow(weld, first + at));
    this.body.replaceChildren(...rows);
    if (this.rows.length === 0) this.body.append(make("p", { class: "none" }, this.all.length > 0 ? "No weld passes the filters." : "The scene has no welds."));
    const chosen = rows.find((row) => row.getAttribute("aria-selected") === "true");
    if (chosen) this.grid.setAttribute("aria-activedescendant", chosen.id);
    else this.grid.removeAttribute("aria-activedescendant");
  }

  private makeRow(weld: Weld, at: number): HTMLElement {
    const row = make("div", {
      class: weld.shown ? "row" : "row hidden", role: "row", id: `weld-${weld.index}`, "data-weld": weld.id,
      "aria-rowindex": at + 2, "aria-selected": String(weld === this.selected),
      style: `transform: translateY(${at * ROW}px)`,
    });
    this.columns.forEach((column, index) => row.append(makeCell(column, weld, index)));
    return row;
  }

  private scrollTo(weld: Weld | null): void {
    const at = weld ? this.rows.indexOf(weld) : -1;
    if (at < 0) return;
    const top = at * ROW;
    const visible = this.grid.clientHeight - this.head.offsetHeight - ROW;
    if (top >= this.grid.scrollTop && top <= this.grid.scrollTop + visible) return;
    this.grid.scrollTop = top - visible / 2;
  }

  private clicked(event: MouseEvent, action: (weld: Weld) => void): void {
    const row = (event.target as HTMLElement).closest<HTMLElement>(".row");
    const weld = row && this.rows[Number(row.getAttribute("aria-rowindex")) - 2];
    if (weld) action(weld);
  }

  private select(weld: Weld | undefined): void {
    if (!weld) return;
    this.store.select({ kind: "weld", weld });
    this.goTo.see(weld);
  }

  private pressed(event: KeyboardEvent): void {
    if (event.target !== this.grid || event.ctrlKey || event.altKey || event.metaKey) return;
    const at = this.selected ? this.rows.indexOf(this.selected) : -1;
    const page = Math.max(1, Math.floor(this.grid.clientHeight / ROW) - 2);
    const last = this.rows.length - 1;
    const goals: Record<string, number> = {
      ArrowDown: Math.min(at + 1, last), ArrowUp: Math.max(at - 1, 0), Home: 0, End: last,
      PageDown: Math.min(at + page, last), PageUp: Math.max(at - page, 0),
    };
    const goal = goals[event.key];
    if (goal === undefined && event.key !== "Enter") return;
    event.preventDefault();
    event.stopPropagation();
    if (goal !== undefined) this.select(this.rows[goal]);
    else if (this.selected) this.goTo.closeUp(this.selected);
  }
}
