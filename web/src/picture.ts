// The skew-T diagram, with the level marked that is pointed at.
import type { Places } from './contract';
import { element } from './dom';

const SVG = 'http://www.w3.org/2000/svg';

// The smallest letters of a picture are 7.5 pixels high. Shown a fifteenth larger than it is drawn, they are 8.
const ENLARGED = 16 / 15;
const NARROWEST = 400;
const WIDEST = 1000;

/** The size that a picture is drawn for, so that its letters are as large as those around it. */
export function sizeFor(room: number): { width: number; height: number } {
    const width = Math.round(Math.min(Math.max(room / ENLARGED, NARROWEST), WIDEST));
    return { width, height: Math.round(width * 1.1) };
}

function shape(name: string, attributes: Record<string, string | number>): SVGElement {
    const made = document.createElementNS(SVG, name);
    for (const [key, value] of Object.entries(attributes)) {
        made.setAttribute(key, String(value));
    }
    return made;
}

export class PictureView {
    private places: Places | undefined;
    private line: SVGElement | undefined;

    /** @param mark is told the level that is pointed at, or -1. */
    constructor(
        private readonly place: HTMLElement,
        private readonly mark: (level: number) => void,
    ) {
        new ResizeObserver(() => this.makeReachable()).observe(this.place);
        this.place.addEventListener('pointermove', (event) => this.point(event));
        this.place.addEventListener('pointerdown', (event) => this.point(event));
        this.place.addEventListener('pointerleave', (event) => {
            if (this.places && event.pointerType !== 'touch') {
                this.mark(-1);
            }
        });
    }

    show(svg: string, places: Places): void {
        const parsed = new DOMParser().parseFromString(svg, 'image/svg+xml').documentElement;
        this.places = places;
        this.line = shape('line', { x1: places.left, x2: places.right, visibility: 'hidden' });
        const overlay = shape('svg', {
            viewBox: `0 0 ${places.width} ${places.height}`,
            class: 'overlay',
            'aria-hidden': 'true',
        });
        overlay.append(this.line);
        const drawn = document.importNode(parsed, true);
        drawn.setAttribute('role', 'img');
        const canvas = element('div', { class: 'canvas' }, drawn, overlay);
        canvas.style.minWidth = `${NARROWEST * ENLARGED}px`;
        this.place.replaceChildren(canvas);
        this.makeReachable();
    }

    /** Shows a sentence where the picture would be. */
    showText(text: string): void {
        this.places = undefined;
        this.line = undefined;
        this.place.replaceChildren(element('p', { class: 'none' }, text));
        this.makeReachable();
    }

    /** Lets the keyboard scroll a picture that is wider than its place. */
    private makeReachable(): void {
        if (this.place.scrollWidth > this.place.clientWidth) {
            this.place.tabIndex = 0;
        } else {
            this.place.removeAttribute('tabindex');
        }
    }

    /** Marks a level; none with -1. */
    setMarked(level: number): void {
        const y = this.places?.levels[level] ?? null;
        this.line?.setAttribute('visibility', y === null ? 'hidden' : 'visible');
        if (y !== null) {
            this.line?.setAttribute('y1', String(y));
            this.line?.setAttribute('y2', String(y));
        }
    }

    private point(event: PointerEvent): void {
        const { places } = this;
        const box = this.place.querySelector('svg')?.getBoundingClientRect();
        if (!places || !box) {
            return;
        }
        const x = ((event.clientX - box.left) / box.width) * places.width;
        const y = ((event.clientY - box.top) / box.height) * places.height;
        let nearest = -1;
        let distance = places.height / 20;
        places.levels.forEach((at, level) => {
            if (at !== null && Math.abs(at - y) < distance) {
                distance = Math.abs(at - y);
                nearest = level;
            }
        });
        this.mark(x >= places.left && x <= places.right ? nearest : -1);
    }
}

/** Makes a PNG of a picture, `scale` times its size. */
export async function png(svg: string, places: Places, scale: number): Promise<Blob> {
    const url = URL.createObjectURL(new Blob([svg], { type: 'image/svg+xml' }));
    try {
        const image = new Image();
        image.src = url;
        await image.decode();
        const canvas = element('canvas', { width: places.width * scale, height: places.height * scale });
        canvas.getContext('2d')!.drawImage(image, 0, 0, canvas.width, canvas.height);
        return await new Promise((resolve, reject) => {
            canvas.toBlob((blob) => (blob ? resolve(blob) : reject(new Error('The picture cannot be made.'))), 'image/png');
        });
    } finally {
        URL.revokeObjectURL(url);
    }
}
