// A small report in the address: "#report=" and the text.

const PREFIX = '#report=';
const LONGEST = 8000;

/** The fragment for a text; nothing when it would be too long for an address. */
export function fragmentOf(text: string): string {
    const readable: Record<string, string> = { '%20': '+', '%2F': '/', '%3D': '=' };
    const fragment = PREFIX + encodeURIComponent(text).replace(/%20|%2F|%3D/g, (code) => readable[code]!);
    return fragment.length <= LONGEST ? fragment : '';
}

/** The text of a fragment; undefined when it is another one. Throws URIError when it is damaged. */
export function textOf(fragment: string): string | undefined {
    return fragment.startsWith(PREFIX)
        ? decodeURIComponent(fragment.slice(PREFIX.length).replace(/\+/g, '%20'))
        : undefined;
}
