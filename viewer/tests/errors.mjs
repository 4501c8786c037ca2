import assert from "node:assert/strict";

import { asPayload, openPage, writePage } from "./browser.mjs";
import { writeGlb } from "./glb.mjs";
import { makePlant } from "./plant.mjs";
import { User } from "./user.mjs";

export function cases(browser, template) {
  const glb = writeGlb(makePlant(4, 2));
  const badJson = Buffer.from(glb);
  badJson.fill("}", 20, 40);
  const open = async (name, payload) => new User(await openPage(browser, writePage(template, `${name}.html`, payload)));

  async function saysWhatIsWrong() {
    const payloads = {
      "no scene": ["", /holds no scene/],
      "empty": [asPayload(Buffer.alloc(0)), /holds no scene/],
      "not base64": [asPayload(glb).replace("AAA", "*!*"), /cut short or was changed/],
      "cut short": [asPayload(glb.subarray(0, glb.length / 2)), /cannot be read/],
      "bad json": [asPayload(badJson), /cannot be read/],
      "not glTF": [asPayload(Buffer.from("PK not a scene at all")), /cannot be read/],
    };
    for (const [name, [payload, sentence]] of Object.entries(payloads)) {
      const user = await open(name.replace(" ", "-"), payload);
      assert.match(await user.text("#failure"), sentence, name);
      assert.match(await user.text("#failure"), /Write the page anew with “biwplan/, name);
      await user.done();
    }
  }

  async function takesWhatIsThere() {
    const bare = { extras: undefined, parts: [], welds: [{ kind: "weld", shown: "?", position: [1, null], parts: "P1", activities: [7, {}] }], labels: [{ kind: "label" }] };
    const ring = { activities: [{ id: "A", parent: "B" }, { id: "B", parent: "A" }, null, { name: "C", parent: "A" }] };
    for (const [name, plant, welds] of [["bare", bare, 1], ["ring", { extras: ring, parts: [], welds: [], labels: [] }, 0]]) {
      const user = await open(name, asPayload(writeGlb(plant)));
      assert.equal(await user.page.locator("#failure").isVisible(), false, await user.text("#failure"));
      assert.equal(await user.rowCount(), welds, name);
      assert.equal(await user.page.locator(".line").count(), name === "ring" ? 4 : 1);
      await user.done();
    }
  }

  return { "says what is wrong with a scene": saysWhatIsWrong, "takes what is there": takesWhatIsThere };
}
