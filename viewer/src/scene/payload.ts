/** A sentence for the reader of the page. */
export class SceneError extends Error {}

const AGAIN = "Write the page anew with “biwplan DOC scene --output FILE.html”.";

function bytesOf(base64: string): Uint8Array<ArrayBuffer> {
  const text = atob(base64);
  const bytes = new Uint8Array(text.length);
  for (let i = 0; i < text.length; ++i) bytes[i] = text.charCodeAt(i);
  return bytes;
}

/** The glTF file that was put into the page. */
export function readPayload(): ArrayBuffer {
  const element = document.getElementById("scene");
  const text = element?.textContent?.trim();
  if (!element || !text) throw new SceneError(`This page holds no scene. ${AGAIN}`);
  try {
    const bytes = bytesOf(text);
    element.remove();
    return bytes.buffer;
  } catch {
    throw brokenScene("its text is cut short or was changed");
  }
}

export function brokenScene(reason: string): SceneError {
  return new SceneError(`The scene in this page cannot be read: ${reason}. ${AGAIN}`);
}
