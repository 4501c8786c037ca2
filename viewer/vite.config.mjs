import { createHash } from "node:crypto";
import { readdirSync, readFileSync } from "node:fs";
import { join } from "node:path";

import { defineConfig } from "vite";

const asText = (source) => (typeof source === "string" ? source : new TextDecoder().decode(source));

// What would end the script element, or hide its end, is written so that a string still means the same.
const asScript = (code) =>
  code.replaceAll("\r\n", "\n").replaceAll(/<\/(script)/gi, "<\\/$1").replaceAll("<!--", "<\\!--");

/** By this the page's policy knows its own script and style, and no others. */
const hashOf = (text) => `'sha256-${createHash("sha256").update(text).digest("base64")}'`;

const asHtml = (text) => text.replaceAll("&", "&amp;").replaceAll("<", "&lt;").replaceAll(">", "&gt;");

/** The licences of the packages that the modules are of. */
function licencesOf(modules) {
  const folders = modules.map((id) => /^.*\/node_modules\/(@[^/]+\/)?[^/]+/.exec(id)?.[0]).filter(Boolean);
  return [...new Set(folders)].sort().map((folder) => {
    const { name, version } = JSON.parse(readFileSync(join(folder, "package.json"), "utf8"));
    const file = readdirSync(folder).find((entry) => /^licen[cs]e/i.test(entry));
    if (!file) throw new Error(`${name} has no file with its licence`);
    return `${name} ${version}\n\n${readFileSync(join(folder, file), "utf8").trim()}\n`;
  }).join("\n");
}

// Puts the script and the style into the page, so that it is one file without any request, with the policy that
// names them and the licences of what came with them.
function onePage() {
  return {
    name: "one-page",
    enforce: "post",
    generateBundle(_options, bundle) {
      const take = (name) => {
        const item = bundle[name];
        delete bundle[name];
        return item;
      };
      const page = bundle["scene.html"];
      let text = asText(page.source);
      const find = (pattern) => pattern.exec(text) ?? this.error(`not in scene.html: ${pattern}`);
      const put = (place, content) => (text = text.replace(find(place)[0], () => content));
      const script = find(/<script [^>]*src="\.\/([^"]+)"[^>]*><\/script>/);
      const { code, moduleIds } = take(script[1]);
      const style = find(/<link [^>]*href="\.\/([^"]+\.css)"[^>]*>/);
      const rules = asText(take(style[1]).source);
      put(/'OWN SCRIPT'/, hashOf(asScript(code)));
      put(/'OWN STYLE'/, hashOf(rules));
      put(/<!--LICENCES-->/, asHtml(licencesOf(moduleIds)));
      put(/<link [^>]*href="\.\/[^"]+\.css"[^>]*>/, `<style>${rules}</style>`);
      put(/<script [^>]*src="\.\/[^"]+"[^>]*><\/script>/, `<script type="module">${asScript(code)}</script>`);
      page.source = text;
      const left = Object.keys(bundle).filter((name) => name !== "scene.html");
      if (left.length > 0) this.error(`not in the page: ${left.join(", ")}`);
    },
  };
}

export default defineConfig({
  base: "./",
  plugins: [onePage()],
  build: {
    target: "es2022",
    modulePreload: false,
    cssCodeSplit: false,
    assetsInlineLimit: 1 << 20,
    chunkSizeWarningLimit: 2000,
    rollupOptions: { input: "scene.html" },
  },
});
