// Chromium without a window, and pages made of the template.
import { accessSync, constants, mkdtempSync, readFileSync, rmSync, writeFileSync } from "node:fs";
import { tmpdir } from "node:os";
import { delimiter, join } from "node:path";
import { pathToFileURL } from "node:url";

import { chromium } from "playwright-core";

const FLAGS = [
  "--no-sandbox", "--use-gl=angle", "--use-angle=swiftshader", "--enable-unsafe-swiftshader", "--disable-quic",
  "--no-first-run", "--disable-background-networking", "--disable-component-update", "--disable-sync",
];

/** Much, so that a busy machine fails no test. */
const MOST_MS = 60_000;

export function findChromium() {
  for (const folder of (process.env.PATH ?? "").split(delimiter)) {
    for (const name of ["chromium", "chromium-browser", "google-chrome"]) {
      try {
        accessSync(join(folder, name), constants.X_OK);
        return join(folder, name);
      } catch { /* not there */ }
    }
  }
  return null;
}

export const folder = mkdtempSync(join(tmpdir(), "scene-page-"));
process.on("exit", () => rmSync(folder, { recursive: true, force: true, maxRetries: 3 }));

/** The page with a payload in the place of the marker, as a file. */
export function writePage(template, name, payload) {
  const pieces = readFileSync(template, "utf8").split("<!--SCENE-->");
  if (pieces.length !== 2) throw new Error(`the template has the marker ${pieces.length - 1} times`);
  const file = join(folder, name);
  writeFileSync(file, pieces.join(payload));
  return file;
}

export const asPayload = (bytes) =>
  `<script id="scene" type="application/octet-stream;base64">${bytes.toString("base64")}</script>`;

export const openBrowser = () =>
  chromium.launch({ executablePath: findChromium(), headless: true, args: FLAGS });

/** Opens a page from disk; what goes wrong in it is in `faults`. */
export async function openPage(browser, file, { size = { width: 1280, height: 800 }, colorScheme = "light", before = null } = {}) {
  const context = await browser.newContext({ viewport: size, colorScheme, reducedMotion: "reduce" });
  const page = await context.newPage();
  page.setDefaultTimeout(MOST_MS);
  const url = pathToFileURL(file).href;
  const faults = [];
  page.on("console", (message) => {
    if (["error", "warning"].includes(message.type()) && !isOfTheDriver(message.text())) faults.push(message.text());
  });
  page.on("pageerror", (error) => faults.push(String(error)));
  page.on("request", (request) => {
    if (request.url() !== url && !request.url().startsWith("data:")) faults.push(`request to ${request.url()}`);
  });
  await before?.(page);
  await page.goto(url);
  await page.waitForSelector("body.ready, body.failed");
  return { page, faults };
}

/** Remarks of software rendering about itself. */
const isOfTheDriver = (text) => text.includes("GPU stall due to ReadPixels");
