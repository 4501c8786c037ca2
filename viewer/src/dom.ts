type Attributes = Record<string, string | number | boolean | null>;

/** An element of the page that must be there. */
export function byId<T extends Element = HTMLElement>(id: string): T {
  const found = document.getElementById(id);
  if (!found) throw new Error(`the page has no #${id}`);
  return found as unknown as T;
}

/** A new element; an attribute that is null or false is left out. */
export function make<K extends keyof HTMLElementTagNameMap>(
  tag: K,
  attributes: Attributes = {},
  ...children: (Node | string)[]
): HTMLElementTagNameMap[K] {
  const element = document.createElement(tag);
  for (const [name, value] of Object.entries(attributes)) {
    if (value === null || value === false) continue;
    // The page's policy allows no style in the text of elements.
    if (name === "style") element.style.cssText = String(value);
    else element.setAttribute(name, value === true ? "" : String(value));
  }
  element.append(...children);
  return element;
}

export const count = (number: number): string => number.toLocaleString("en");

export const plural = (number: number, noun: string): string =>
  `${count(number)} ${noun}${number === 1 ? "" : "s"}`;
