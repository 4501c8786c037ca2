import assert from "node:assert/strict";

import { asPayload, openPage, writePage } from "./browser.mjs";
import { writeGlb } from "./glb.mjs";
import { makePlant } from "./plant.mjs";
import { User } from "./user.mjs";

/** A name that would run something wherever it became HTML. */
const bad = (where) => `</script><svg onload="ran('${where}')"><a href="javascript:ran('${where}')"><img src=x onerror="ran('${where}')">`;

export function cases(browser, template) {
  async function runsNothingButItsOwn() {
    const hostile = makePlant(12, 4);
    hostile.extras.document = hostile.extras.program = bad("head");
    for (const things of [hostile.welds, hostile.parts, hostile.labels, hostile.extras.activities]) {
      for (const thing of things) for (const field of ["name", "text", "number"]) if (field in thing) thing[field] = bad(field);
    }
    const intruder = `<base href="https://base.invalid/"><script>ran("script")</script><img src="data:," onerror="ran('handler')">`
      + `<form id="form" action="javascript:ran('form')"></form><style>#rows { display: none }</style><p id="styled" style="display: none"></p>`;
    const hostilePage = writePage(template, "hostile.html", intruder + asPayload(writeGlb(hostile)));
    const user = new User(await openPage(browser, hostilePage, { before: (page) => page.addInitScript(() => {
      window.ran = (what) => console.error(`ran: ${what}`);
    }) }));
    await user.page.locator(".row").first().click();
    await user.press("l", "l", "Enter", "?");
    for (const part of await user.page.locator(".row").all()) await part.hover({ force: true }).catch(() => {});
    await user.page.evaluate(() => {
      document.getElementById("form").requestSubmit();
      document.body.append(Object.assign(document.createElement("script"), { textContent: "ran('late')" }));
    });
    await user.settle();
    const policy = await user.page.evaluate(() => ({
      base: document.baseURI === location.href, rows: getComputedStyle(document.getElementById("rows")).display,
      style: getComputedStyle(document.getElementById("styled")).display,
      links: document.querySelectorAll("a[href^=javascript], img[onerror]:not([src^='data:']), svg[onload]").length,
    }));
    assert.deepEqual(policy, { base: true, rows: policy.rows, style: "block", links: 0 });
    assert.notEqual(policy.rows, "none");
    assert.deepEqual(user.faults.filter((text) => text.startsWith("ran")), [], "nothing ran");
    const refused = user.faults.filter((text) => /Content Security Policy|base URI/i.test(text));
    assert.deepEqual(user.faults.filter((text) => !refused.includes(text)), [], "and nothing else went wrong");
    for (const directive of ["script-src", "style-src", "base-uri", "form-action"]) {
      assert.ok(refused.some((text) => text.includes(directive)), `${directive} refuses`);
    }
    await user.page.context().close();
  }

  async function carriesLicences() {
    const user = new User(await openPage(browser, writePage(template, "licences.html", asPayload(writeGlb(makePlant(4, 2))))));
    const text = await user.page.locator("#licences pre").textContent();
    for (const words of [/three \d+\.\d+/, /The MIT License/, /Copyright .* three\.js authors/, /THE SOFTWARE IS PROVIDED "AS IS"/]) {
      assert.match(text, words);
    }
    await user.done();
  }

  return { "runs nothing but its own script": runsNothingButItsOwn, "carries the licences of what it embeds": carriesLicences };
}
