import { defineConfig } from "vite";

const asText = (source) => (typeof source === "string" ? source : new TextDecoder().decode(source));

// What would end the script element, or hide its end, is written so that a string still means the same.
const asScript = (code) =>
  code.replaceAll(/<\/(script)/gi, "<\\/$1").replaceAll("<!--", "<\\!--");

// Puts the script and the style into the page, so that it is one file without any request.
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
      page.source = asText(page.source)
        .replace(/<script [^>]*src="\.\/([^"]+)"[^>]*><\/script>/, (_all, name) =>
          `<script type="module">${asScript(take(name).code)}</script>`)
        .replace(/<link [^>]*href="\.\/([^"]+\.css)"[^>]*>/, (_all, name) =>
          `<style>${asText(take(name).source)}</style>`);
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
