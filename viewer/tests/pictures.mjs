// Pictures of the page, and frames a second in software rendering: node tests/pictures.mjs FOLDER [PAGE...]
import { mkdirSync } from "node:fs";
import { basename, join } from "node:path";
import { fileURLToPath } from "node:url";

import { asPayload, openBrowser, openPage, writePage } from "./browser.mjs";
import { writeGlb } from "./glb.mjs";
import { makePlant } from "./plant.mjs";

const [place = "pictures", ...given] = process.argv.slice(2);
const template = process.env.SCENE_TEMPLATE ?? fileURLToPath(new URL("../dist/scene.html", import.meta.url));
mkdirSync(place, { recursive: true });

const made = [["70", 70, 20], ["5000", 5000, 400]].map(([name, welds, parts]) =>
  [name, writePage(template, `${name}.html`, asPayload(writeGlb(makePlant(welds, parts))))]);
const pages = given.length > 0 ? given.map((file) => [basename(file, ".html"), file]) : made;

/** Turns the view with the mouse for some seconds. */
async function measureTurning(page) {
  const box = await page.locator("#canvas").boundingBox();
  const middle = [box.x + box.width / 2, box.y + box.height / 2];
  await page.evaluate(() => {
    window.frames_ = [];
    const tick = (now) => { window.frames_.push(now); requestAnimationFrame(tick); };
    requestAnimationFrame(tick);
  });
  await page.mouse.move(...middle);
  await page.mouse.down();
  const end = Date.now() + 4000;
  for (let step = 0; Date.now() < end; ++step) {
    await page.mouse.move(middle[0] + 150 * Math.sin(step / 20), middle[1] + 40 * Math.sin(step / 31));
  }
  const frames = await page.evaluate(() => window.frames_);
  await page.mouse.up();
  const late = frames.filter((time) => time > frames[0] + 1000);
  return ((late.length - 1) * 1000) / (late.at(-1) - late[0]);
}

const browser = await openBrowser();
for (const [name, file] of pages) {
  for (const colorScheme of ["light", "dark"]) {
    for (const size of [{ width: 1280, height: 800 }, { width: 1920, height: 1080 }]) {
      const start = Date.now();
      const { page, faults } = await openPage(browser, file, { size, colorScheme });
      const loaded = Date.now() - start;
      const shoot = async (what) => {
        await page.waitForTimeout(600);
        await page.screenshot({ path: join(place, `${name}-${colorScheme}-${size.width}-${what}.png`) });
      };
      await shoot("whole");
      if (size.width === 1280) console.log(`${name} ${colorScheme}: ${loaded} ms to load, ${(await measureTurning(page)).toFixed(1)} frames/s`, faults);
      await page.keyboard.press("1");
      await page.locator("#rows").focus();
      for (let i = 0; i < 5; ++i) await page.keyboard.press("ArrowDown");
      await page.keyboard.press("l");
      await shoot("row");
      await page.keyboard.press("Enter");
      await page.keyboard.press("p");
      await shoot("close");
      await page.context().close();
    }
  }
}
await browser.close();
