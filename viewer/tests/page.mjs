import assert from "node:assert/strict";

import { asPayload, openPage, writePage } from "./browser.mjs";
import { writeGlb } from "./glb.mjs";
import { makePlant } from "./plant.mjs";
import { User } from "./user.mjs";

const plant = makePlant(70, 20);
plant.welds[3].name = "<img src=x onerror=alert(1)>";
plant.welds[40].shown = false;
const ids = plant.welds.map(({ id }) => id);
const points = plant.welds.filter(({ type }) => type === "locating").map(({ id }) => id);
const idsWith = (test) => plant.welds.filter(test).map(({ id }) => id);

function contrast(one, other) {
  const light = (colour) => {
    const [r, g, b] = colour.match(/[\d.]+/g).map((value) => {
      const part = value / 255;
      return part <= 0.03928 ? part / 12.92 : ((part + 0.055) / 1.055) ** 2.4;
    });
    return 0.2126 * r + 0.7152 * g + 0.0722 * b;
  };
  const [low, high] = [light(one), light(other)].sort((left, right) => left - right);
  return (high + 0.05) / (low + 0.05);
}

export function cases(browser, template) {
  const file = writePage(template, "plant.html", asPayload(writeGlb(plant)));
  const open = async (options) => new User(await openPage(browser, file, options));
  let user;

  async function listsEveryWeld() {
    assert.deepEqual((await user.allRows()).sort(), [...ids].sort());
    assert.equal(await user.text("#document"), "underbody.json");
    assert.match(await user.text("#summary"), new RegExp(`${idsWith(({ id, status }) => status === "assigned" && !points.includes(id)).length}\\s+assigned`));
  }

  async function linksTableAndView() {
    await user.pickEachWeld(ids.slice(0, 14));
    await user.press("Home", "Escape");
    await user.page.locator(".row", { hasText: "<img src=x" }).click();
    await user.clickMiddle();
    assert.match(await user.text("#details"), /<img src=x onerror=alert\(1\)>[^]*mm[^]*UB-/);
    await user.page.locator("#details .link", { hasText: "UB-" }).first().click();
    assert.equal(await user.selectedRow(), null, "a part is selected instead");
    assert.match(await user.text("#details"), /Joined by\s+\d+ welds?/);
    await user.press("Escape");
    assert.equal(await user.page.locator("#details").isVisible(), false);
  }

  async function filters() {
    const expect = async (test, what) => assert.deepEqual((await user.allRows()).sort(), idsWith(test).sort(), what);
    await user.press("Home", "Enter");
    await user.check("Assigned");
    const isPoint = ({ id }) => points.includes(id);
    await expect((weld) => weld.status !== "assigned" && !isPoint(weld), "without the assigned ones");
    await user.clickMiddle();
    assert.equal(await user.selectedRow(), null, "what is filtered out is not in the view");
    await user.check("Seam");
    await expect((weld) => weld.status !== "assigned" && weld.type !== "seam" && !isPoint(weld), "nor seams");
    await user.page.locator("#clear").click();
    assert.equal(await user.rowCount(), ids.length);
    assert.equal((await user.text("#count")).toLowerCase(), `${ids.length - points.length} welds, ${points.length} locators and clamps`);
    const unassigned = plant.welds.filter(({ status, id }) => status === "unassigned" && !points.includes(id)).length;
    assert.match(await user.text("#summary"), new RegExp(`\\b${unassigned} unassigned[^]*\\b${points.length} locators and clamps`));
    const station = plant.extras.activities.filter(({ id, parent }) => id === "ST20" || parent === "ST20").map(({ id }) => id);
    await user.page.locator(".line", { hasText: "ST20" }).click();
    await expect(({ activities }) => activities.some((id) => station.includes(id)), "of a station");
    const rows = await user.allRows();
    assert.equal(await user.text('.line[aria-selected="true"] .count'), String(rows.filter((id) => !points.includes(id)).length));
    await user.press("ArrowDown", "Enter");
    await expect(({ activities }) => activities.includes(station[1]), "of an operation, by keyboard");
    await user.press("Home", "Enter");
    await user.page.locator("#search").fill("sm- ub-10");
    await user.page.waitForFunction(() => document.getElementById("count").textContent.includes("of"));
    const number = (id) => plant.parts.find((part) => part.id === id).number;
    await expect(({ id, parts }) => id.startsWith("SM-") && parts.some((part) => number(part).startsWith("UB-10")), "found by two words");
  }

  async function sorts() {
    const head = user.page.locator('[role="columnheader"]', { hasText: "Weld" });
    await head.locator("button").click();
    assert.equal(await head.getAttribute("aria-sort"), "ascending");
    await head.locator("button").click();
    assert.equal(await head.getAttribute("aria-sort"), "descending");
    assert.equal(await user.firstRow(), ids.filter((id) => id.startsWith("SW")).at(-1));
  }

  async function labels() {
    assert.deepEqual(await user.labels(), []);
    await user.press("l");
    await user.settle();
    const planned = await user.labels();
    assert.ok(planned.length > 3 && planned.every((text) => plant.labels.some((label) => label.text === text)), planned.join());
    await user.press("l");
    await user.settle();
    assert.ok((await user.labels()).some((text) => ids.includes(text)), "names of welds without a label");
    await user.press("l");
    await user.settle();
    assert.deepEqual(await user.labels(), []);
  }

  async function keyboard() {
    const focused = [];
    for (let i = 0; i < 40; ++i) {
      await user.press("Tab");
      focused.push(await user.page.evaluate(() => document.activeElement.id || document.activeElement.getAttribute("role")));
    }
    for (const stop of ["search", "treeitem", "canvas", "fit", "rows"]) assert.ok(focused.includes(stop), `Tab comes to ${stop}`);
    const axis = () => user.page.locator("#triad line").first().getAttribute("x2");
    const before = await axis();
    await user.page.locator("#canvas").focus();
    await user.press("ArrowLeft", "ArrowLeft");
    await user.settle();
    assert.notEqual(await axis(), before, "arrow keys turn the view");
    await user.press("?");
    assert.ok(await user.page.locator("#help").isVisible());
    await user.press("Escape");
    assert.ok(!(await user.page.locator("#help").isVisible()));
    await user.press("p");
    assert.equal(await user.page.locator('#parts [aria-pressed="true"]').innerText(), "Solid");
  }

  async function hidesWhatThePlanHides() {
    await user.page.locator("#search").fill(ids[40]);
    await user.page.locator(`.row.hidden[data-weld="${ids[40]}"]`).click();
    await user.press("Enter", "Escape");
    await user.clickMiddle();
    assert.equal(await user.selectedRow(), null);
    await user.check("View what is hidden");
    await user.press("Escape");
    await user.clickMiddle();
    assert.equal(await user.selectedRow(), ids[40]);
  }

  async function lightAndDark() {
    const grounds = [];
    for (const colorScheme of ["light", "dark"]) {
      const user = await open({ colorScheme });
      const colours = await user.page.evaluate(() => {
        document.querySelector(".row").click();
        const ground = getComputedStyle(document.querySelector("aside")).backgroundColor;
        const texts = ["h1", "#program", ".count", ".line", ".row .weld", ".head button", "legend", ".link"];
        return { ground, texts: texts.map((text) => [text, getComputedStyle(document.querySelector(text)).color]) };
      });
      grounds.push(colours.ground);
      for (const [text, colour] of colours.texts) {
        assert.ok(contrast(colour, colours.ground) >= 4.5, `${colorScheme}: ${text} ${colour} on ${colours.ground}`);
      }
      await user.done();
    }
    assert.ok(contrast(...grounds) > 7, "light and dark differ");
  }

  async function inOnePage(run) {
    user ??= await open();
    await run();
    await user.reset();
    assert.deepEqual(user.faults, [], "messages and requests of the page");
  }

  const shared = {
    "every weld is in the table": listsEveryWeld,
    "a row leads to its weld, a weld to its row": linksTableAndView,
    "filters by status, type, activity and text": filters,
    "sorts": sorts,
    "labels on and off": labels,
    "can be used with a keyboard": keyboard,
    "hides what the plan hides": hidesWhatThePlanHides,
  };
  const named = Object.entries(shared).map(([name, run]) => [name, () => inOnePage(run)]);
  return { ...Object.fromEntries(named), "is readable in light and dark": lightAndDark };
}
