// The text of the bulletins from which a sounding is read, group by group.
import type { Detail, Excerpt, GroupRange, Level, Part } from './contract';
import { element, reveal } from './dom';

const VISIBLE_CONTROLS = 0x2400;

/** A text as it can be shown: line ends unified, NUL left out, other control characters made visible. */
export function shown(text: string): string {
    return text
        .replace(/\0/g, '')
        .replace(/\r+\n?/g, '\n')
        .replace(/[\x01-\x08\x0B-\x1F]/g, (character) => String.fromCharCode(VISIBLE_CONTROLS + character.charCodeAt(0)));
}

function groupsOf(range: GroupRange): number[] {
    return Array.from({ length: range[1] }, (_, i) => range[0] + i);
}

export class TextView {
    private spans: HTMLElement[][] = [];
    private levels: Level[] = [];

    /** @param mark is told the level that is pointed at, or -1. */
    constructor(
        private readonly place: HTMLElement,
        private readonly mark: (level: number) => void,
    ) {
        this.place.addEventListener('pointerover', (event) => {
            const group = (event.target as Element).closest<HTMLElement>('.group');
            this.mark(group ? this.levelOf(Number(group.dataset['part']), Number(group.dataset['group'])) : -1);
        });
        this.place.addEventListener('pointerleave', (event) => {
            if (event.pointerType !== 'touch') {
                this.mark(-1);
            }
        });
    }

    show(detail: Detail, excerpts: (Excerpt | null)[], nameOf: (part: Part) => string): void {
        this.levels = detail.levels;
        this.spans = [];
        this.place.replaceChildren(
            ...detail.parts.map((part, i) => this.part(part, i, excerpts[i] ?? null, nameOf(part))),
            ...(detail.replaced > 0
                ? [
                      element(
                          'p',
                          { class: 'replaced' },
                          detail.replaced === 1
                              ? 'One other copy of these parts was replaced by a correction or a later copy.'
                              : `${detail.replaced} other copies of these parts were replaced by corrections or later copies.`,
                      ),
                  ]
                : []),
        );
        this.place.scrollTop = 0;
    }

    /** Marks the groups of a level; none with -1. */
    setMarked(level: number, show: boolean): void {
        this.place.querySelectorAll('.marked').forEach((group) => group.classList.remove('marked'));
        let first: HTMLElement | undefined;
        for (const [part, begin, count] of this.levels[level]?.origins ?? []) {
            for (const group of groupsOf([begin, count])) {
                const span = this.spans[part]?.[group];
                span?.classList.add('marked');
                first ??= span;
            }
        }
        if (first && show) {
            reveal(this.place, first);
        }
    }

    private levelOf(part: number, group: number): number {
        return this.levels.findIndex((level) =>
            level.origins.some(([of, first, count]) => of === part && group >= first && group < first + count),
        );
    }

    private part(part: Part, index: number, excerpt: Excerpt | null, name: string): HTMLElement {
        const heading = part.heading === '' ? '' : ` · ${part.heading}`;
        const notes = element('ul', { class: 'notes' });
        const section = element(
            'section',
            { class: `part ${part.status}` },
            element('h4', {}, `Part ${part.letter}`, element('span', {}, ` · ${name}${heading}`)),
        );
        if (part.status === 'refused') {
            notes.append(
                element('li', { class: 'refused' }, element('span', { class: 'badge refused' }, 'refused'), ' ', part.reason),
            );
        } else if (part.status !== 'decoded') {
            notes.append(
                element(
                    'li',
                    {},
                    element('span', { class: `badge ${part.status}` }, part.status),
                    part.status === 'NIL' ? ' There is no report.' : ' It holds no data.',
                ),
            );
        }
        for (const mend of part.mends) {
            const kind = mend.lost ? 'lost' : 'mended';
            const item = element('li', {}, element('span', { class: `badge ${kind}` }, kind), ` ${mend.name}: ${mend.text}`);
            item.addEventListener('pointerenter', () => this.point(index, mend.groups, true));
            item.addEventListener('pointerleave', () => this.point(index, mend.groups, false));
            notes.append(item);
        }
        for (const doubt of part.doubts) {
            notes.append(
                element('li', {}, element('span', { class: 'badge doubtful' }, 'doubtful'), ` ${doubt.name}: ${doubt.text}`),
            );
        }
        if (notes.childElementCount > 0) {
            section.append(notes);
        }
        section.append(
            excerpt ? this.body(part, index, excerpt) : element('p', { class: 'none' }, 'The text can no longer be read.'),
        );
        return section;
    }

    private body(part: Part, index: number, excerpt: Excerpt): HTMLElement {
        const body = element('pre', {});
        let at = 0;
        const copyTo = (end: number) => {
            body.append(shown(excerpt.text.slice(at, end)));
            at = end;
        };
        copyTo(excerpt.start);
        const mmmm = element('b', {});
        const first = part.groups[0]?.[0] ?? excerpt.text.length;
        // MMMM may be glued to the group after it; its length is always four.
        at = Math.min(excerpt.start + 4, excerpt.start + first);
        mmmm.append(shown(excerpt.text.slice(excerpt.start, at)));
        body.append(mmmm);
        const spans = part.groups.map(([begin, end], group) => {
            copyTo(excerpt.start + begin);
            at = excerpt.start + end;
            const span = element(
                'span',
                { class: 'group', 'data-part': index, 'data-group': group },
                shown(excerpt.text.slice(excerpt.start + begin, at)),
            );
            body.append(span);
            return span;
        });
        copyTo(excerpt.text.length);
        this.spans[index] = spans;
        for (const mend of part.mends) {
            this.underline(spans, mmmm, mend.groups, mend.lost ? 'lost' : 'mended', `${mend.name}: ${mend.text}`);
        }
        if (part.status === 'refused') {
            this.underline(spans, mmmm, part.fault, 'fault', part.reason);
        }
        return body;
    }

    /** Marks groups, or the place between two, and says why. */
    private underline(spans: HTMLElement[], mmmm: HTMLElement, range: GroupRange, kind: string, why: string): void {
        if (range[1] === 0) {
            const place = element('span', { class: `place ${kind}`, title: why }, '‸');
            (spans[range[0] - 1] ?? mmmm).after(place);
            return;
        }
        for (const group of groupsOf(range)) {
            const span = spans[group];
            if (span) {
                span.classList.add(kind);
                span.title = span.title === '' ? why : `${span.title}\n${why}`;
            }
        }
    }

    private point(part: number, range: GroupRange, on: boolean): void {
        for (const group of groupsOf(range)) {
            this.spans[part]?.[group]?.classList.toggle('marked', on);
        }
    }
}
