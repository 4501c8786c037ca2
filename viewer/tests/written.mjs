import assert from "node:assert/strict";
import { execFileSync } from "node:child_process";
import { readFileSync, statSync } from "node:fs";
import { basename, join } from "node:path";

import { folder, openPage } from "./browser.mjs";
import { User } from "./user.mjs";

const MOST_BYTES = 3e6;

/** The identifiers of the welds in a page, in the order of its file. */
function weldsIn(file) {
  const [, base64] = /<script id="scene"[^>]*>([^<]*)</.exec(readFileSync(file, "utf8"));
  const glb = Buffer.from(base64, "base64");
  const { nodes } = JSON.parse(glb.subarray(20, 20 + glb.readUInt32LE(12)).toString());
  return nodes.filter(({ extras }) => extras?.kind === "weld").map(({ extras }) => extras.id);
}

/** The page of an example, planned by its own script. */
export function writeExample(biwplan, example) {
  execFileSync(join(example, "run"), [biwplan, folder], { stdio: ["ignore", "ignore", "inherit"] });
  const page = join(folder, `${basename(example)}.html`);
  execFileSync(biwplan, [join(folder, `${basename(example)}.json`), "scene", "--output", page], { stdio: "inherit" });
  return page;
}

/** Cases for pages that biwplan wrote. */
export function cases(browser, files) {
  return Object.fromEntries(files.map((file) => [basename(file), async () => {
    const welds = weldsIn(file);
    assert.ok(welds.length > 0, "there are welds");
    assert.ok(statSync(file).size < MOST_BYTES, `${statSync(file).size} bytes`);
    const user = new User(await openPage(browser, file));
    assert.deepEqual((await user.allRows()).sort(), [...welds].sort());
    await user.pickEachWeld(welds.slice(0, 10));
    await user.done();
  }]));
}
