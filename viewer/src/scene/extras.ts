/** What a glTF file says besides shapes, read so that nothing missing or odd in it does harm. */
export type Extras = Record<string, unknown>;

export const isRecord = (value: unknown): value is Extras =>
  typeof value === "object" && value !== null && !Array.isArray(value);

export function textOf(value: unknown): string {
  if (typeof value === "string") return value;
  return typeof value === "number" ? String(value) : "";
}

export const textOrNull = (value: unknown): string | null => textOf(value) || null;

export const numberOrNull = (value: unknown): number | null =>
  typeof value === "number" && Number.isFinite(value) ? value : null;

export const textsOf = (value: unknown): string[] =>
  Array.isArray(value) ? value.map(textOf).filter((text) => text !== "") : [];

export function pointOrNull(value: unknown): [number, number, number] | null {
  if (!Array.isArray(value)) return null;
  const [x, y, z] = value.map(numberOrNull);
  return x != null && y != null && z != null ? [x, y, z] : null;
}
