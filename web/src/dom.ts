// Elements of the page. Texts are always set as text.

export function byId<T extends HTMLElement>(id: string): T {
    return document.getElementById(id) as T;
}

type Attributes = Record<string, string | number | boolean>;

/** Makes an element. An attribute that is false is left out, one that is true is empty. */
export function element<K extends keyof HTMLElementTagNameMap>(
    tag: K,
    attributes: Attributes = {},
    ...children: (Node | string)[]
): HTMLElementTagNameMap[K] {
    const made = document.createElement(tag);
    for (const [name, value] of Object.entries(attributes)) {
        if (value !== false) {
            made.setAttribute(name, value === true ? '' : String(value));
        }
    }
    made.append(...children);
    return made;
}

/** A text for screen readers only. */
export function unseen(text: string): HTMLElement {
    return element('span', { class: 'unseen' }, text);
}

/** Gives the user a file to keep. */
export function save(name: string, content: Blob): void {
    const url = URL.createObjectURL(content);
    element('a', { href: url, download: name }).click();
    setTimeout(() => URL.revokeObjectURL(url), 60_000);
}

/** Scrolls a box, and nothing around it, so that something inside it is visible. */
export function reveal(box: HTMLElement, inside: HTMLElement, top = 0): void {
    const outer = box.getBoundingClientRect();
    const inner = inside.getBoundingClientRect();
    if (inner.top < outer.top + top) {
        box.scrollTop -= outer.top + top - inner.top;
    } else if (inner.bottom > outer.bottom) {
        box.scrollTop += inner.bottom - outer.bottom;
    }
}
