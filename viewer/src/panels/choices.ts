import { make } from "../dom";

interface Choice<T extends string> {
  value: T;
  text: string;
  title: string;
}

/** Buttons in a row, one of which is pressed. Answers what marks it. */
export function makeChoices<T extends string>(
  group: HTMLElement,
  caption: string,
  choices: Choice<T>[],
  chosen: (value: T) => void,
): (value: T) => void {
  const buttons = choices.map(({ value, text, title }) => {
    const button = make("button", { type: "button", title, "data-value": value }, text);
    button.addEventListener("click", () => chosen(value));
    return button;
  });
  if (caption) group.append(make("span", { class: "caption" }, caption));
  group.append(...buttons);
  return (value) => {
    for (const button of buttons) button.setAttribute("aria-pressed", String(button.dataset.value === value));
  };
}
