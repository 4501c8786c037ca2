// Tests the page in Chromium:
//   node tests/run.mjs TEMPLATE                     with plants made here
//   node tests/run.mjs TEMPLATE PAGE...             pages that biwplan wrote
//   node tests/run.mjs TEMPLATE --biwplan BINARY EXAMPLE    has it write one of a planned example
import { findChromium, openBrowser } from "./browser.mjs";
import * as errors from "./errors.mjs";
import * as page from "./page.mjs";
import * as policy from "./policy.mjs";
import * as written from "./written.mjs";

const SKIPPED = 77;

if (!findChromium()) {
  console.log("skipped: there is no chromium on the PATH (Debian package chromium)");
  process.exit(SKIPPED);
}

const [template, ...others] = process.argv.slice(2);
const pages = others[0] === "--biwplan" ? [written.writeExample(others[1], others[2])] : others;
const browser = await openBrowser();
let failed = 0;
const rooms = [page, errors, policy];
const cases = pages.length > 0 ? written.cases(browser, pages) : Object.assign({}, ...rooms.map((room) => room.cases(browser, template)));
for (const [name, run] of Object.entries(cases)) {
  const start = Date.now();
  try {
    await run();
    console.log(`ok      ${name} (${Date.now() - start} ms)`);
  } catch (error) {
    ++failed;
    console.log(`FAILED  ${name}\n${error.stack}`);
  }
}
await browser.close();
process.exit(failed > 0 ? 1 : 0);
