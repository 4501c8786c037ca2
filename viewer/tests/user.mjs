// What somebody in front of the page sees and does.
import assert from "node:assert/strict";

export class User {
  constructor({ page, faults }) {
    this.page = page;
    this.faults = faults;
  }

  press(...keys) {
    return keys.reduce((before, key) => before.then(() => this.page.keyboard.press(key)), Promise.resolve());
  }

  /** The picture and all that follows from it are there. */
  settle() {
    return this.page.evaluate(() => new Promise((done) => requestAnimationFrame(() => requestAnimationFrame(done))));
  }

  text(selector) {
    return this.page.locator(selector).innerText();
  }

  /** The weld of the selected row, as far as one is in sight. */
  async selectedRow() {
    const rows = await this.page.locator('.row[aria-selected="true"]').all();
    return rows.length === 1 ? rows[0].getAttribute("data-weld") : null;
  }

  firstRow() {
    return this.page.locator(".row").first().getAttribute("data-weld");
  }

  async rowCount() {
    return Number(await this.page.locator("#rows").getAttribute("aria-rowcount")) - 1;
  }

  /** Scrolls through the whole table. */
  allRows() {
    return this.page.evaluate(async () => {
      const grid = document.getElementById("rows");
      const found = new Set();
      for (let top = 0; ; top += 200) {
        grid.scrollTop = top;
        await new Promise((done) => setTimeout(done, 0));
        grid.dispatchEvent(new Event("scroll"));
        for (const row of grid.querySelectorAll(".row")) found.add(row.dataset.weld);
        if (top <= grid.scrollHeight) continue;
        grid.scrollTop = 0;
        return [...found];
      }
    });
  }

  async clickMiddle() {
    await this.settle();
    const { x, y, width, height } = await this.page.locator("#canvas").boundingBox();
    await this.page.mouse.click(x + width / 2, y + height / 2);
  }

  check(name) {
    return this.page.locator(".check").filter({ has: this.page.getByText(name, { exact: true }) }).click();
  }

  labels() {
    return this.page.locator(".label:visible").allInnerTexts();
  }

  /** Walks down the table, goes close to each weld, and clicks on it in the 3D view. */
  async pickEachWeld(ids) {
    await this.page.locator("#rows").focus();
    for (const id of ids) {
      await this.press("ArrowDown");
      assert.equal(await this.selectedRow(), id, "the row that the arrow key leads to");
      await this.press("Enter", "Escape");
      await this.clickMiddle();
      assert.equal(await this.selectedRow(), id, "the weld in the middle of the picture");
      await this.page.locator("#rows").focus();
    }
  }

  /** As the page was opened, but for the way the table is sorted. */
  async reset() {
    await this.press("Escape");
    const clear = this.page.locator("#clear");
    if (await clear.isEnabled()) await clear.click();
    await this.page.locator("#fit-all").click();
    await this.page.locator("#rows").focus();
  }

  done() {
    assert.deepEqual(this.faults, [], "messages and requests of the page");
    return this.page.context().close();
  }
}
