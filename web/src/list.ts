// The list of soundings: a grid of which only the visible rows are in the page, so that its length costs nothing.
import type { Entry } from './contract';
import { element } from './dom';
import { badges, position, stationName, time, type BadgeKind } from './words';

interface Column {
    name: string;
    /** What the rows are sorted by. */
    key(entry: Entry): string | number;
    text(entry: Entry): string;
}

const GRAVITY: BadgeKind[] = ['mended', 'doubtful', 'lost', 'refused'];

const COLUMNS: Column[] = [
    // Drops, which have no station, come last.
    { name: 'Station', key: (entry) => entry.station || `~${stationName(entry)}`, text: stationName },
    { name: 'Time', key: (entry) => (entry.day ?? 99) * 100 + (entry.hour ?? 0), text: time },
    { name: 'Form', key: (entry) => entry.form, text: (entry) => entry.form.replace('TEMP ', '') },
    { name: 'Parts', key: (entry) => entry.letters, text: (entry) => entry.letters },
    {
        name: 'Notes',
        key: (entry) => -badges(entry).reduce((sum, badge) => sum + 2 ** (1 + GRAVITY.indexOf(badge.kind)), 0),
        text: notes,
    },
];

const SPARE_ROWS = 8;

function notes(entry: Entry): string {
    return badges(entry).map((badge) => badge.text).join(' ');
}

function haystack(entry: Entry): string {
    return [stationName(entry), position(entry), entry.form, time(entry), notes(entry)].join(' ').toLowerCase();
}

export class List {
    private entries: Entry[] = [];
    private haystacks: string[] = [];
    private shown: Entry[] = [];
    private column = 0;
    private descending = false;
    private words: string[] = [];
    private withNil = false;
    private chosen: Entry | undefined; // also while the filter hides it
    private active = -1; // its index in `shown`, or -1
    private rowHeight = 0;
    private scheduled = false;

    private readonly scroller: HTMLElement;
    private readonly body: HTMLElement;
    private readonly headers: HTMLElement[];
    private rows = new Map<number, HTMLElement>();

    /** @param choose is told the entry that the user has chosen. */
    constructor(
        private readonly place: HTMLElement,
        private readonly choose: (entry: Entry) => void,
    ) {
        this.headers = COLUMNS.map((column, i) => {
            const button = element('button', { type: 'button' }, column.name);
            button.addEventListener('click', () => this.sortBy(i));
            return element('div', { role: 'columnheader', 'aria-colindex': i + 1 }, button);
        });
        const head = element('div', { role: 'row', class: 'row', 'aria-rowindex': 1 }, ...this.headers);
        this.body = element('div', { role: 'rowgroup', class: 'rows' });
        this.scroller = element(
            'div',
            { role: 'grid', tabindex: 0, 'aria-labelledby': 'soundings-title', 'aria-colcount': COLUMNS.length },
            element('div', { role: 'rowgroup', class: 'header' }, head),
            this.body,
        );
        this.place.append(this.scroller);
        this.scroller.addEventListener('scroll', () => this.schedule());
        this.scroller.addEventListener('keydown', (event) => this.key(event));
        this.body.addEventListener('click', (event) => this.click(event));
        new ResizeObserver(() => this.schedule()).observe(this.scroller);
        this.markSort();
    }

    /** Shows other entries, sorted by station. */
    show(entries: Entry[]): void {
        this.entries = entries;
        this.haystacks = entries.map(haystack);
        this.chosen = undefined;
        this.column = 0;
        this.descending = false;
        this.markSort();
        this.refresh();
    }

    /** Shows only entries that have all words of a text. */
    filter(text: string): void {
        this.words = text.toLowerCase().split(/\s+/).filter((word) => word !== '');
        this.refresh();
    }

    showNil(show: boolean): void {
        this.withNil = show;
        this.refresh();
    }

    /** How many entries are shown. */
    get count(): number {
        return this.shown.length;
    }

    focus(): void {
        this.scroller.focus();
        if (this.active < 0) {
            this.activate(0);
        }
    }

    /** Chooses the first sounding, or when there is none the first entry. */
    chooseFirst(): void {
        this.activate(Math.max(0, this.shown.findIndex((entry) => entry.status === 'sounding')));
    }

    private refresh(reveal = true): void {
        this.shown = this.entries.filter(
            (entry, i) =>
                (this.withNil || entry.status === 'sounding' || entry.status === 'refused') &&
                this.words.every((word) => this.haystacks[i]!.includes(word)),
        );
        this.sort();
        this.active = this.chosen === undefined ? -1 : this.shown.indexOf(this.chosen);
        this.scroller.setAttribute('aria-rowcount', String(this.shown.length + 1));
        this.scroller.scrollTop = 0;
        this.clear();
        if (reveal) {
            this.revealActive();
        }
        this.render();
    }

    private sort(): void {
        const { key } = COLUMNS[this.column]!;
        const keys = new Map(this.shown.map((entry) => [entry, key(entry)]));
        const sign = this.descending ? -1 : 1;
        this.shown.sort((a, b) => {
            const left = keys.get(a)!;
            const right = keys.get(b)!;
            return left < right ? -sign : left > right ? sign : a.id - b.id;
        });
    }

    private sortBy(column: number): void {
        this.descending = column === this.column && !this.descending;
        this.column = column;
        this.markSort();
        this.refresh(false); // a new order is shown from its start
    }

    private markSort(): void {
        this.headers.forEach((header, i) => {
            header.setAttribute('aria-sort', i !== this.column ? 'none' : this.descending ? 'descending' : 'ascending');
        });
    }

    private key(event: KeyboardEvent): void {
        if (event.target !== this.scroller || event.altKey || event.ctrlKey || event.metaKey) {
            return;
        }
        const page = Math.max(1, Math.floor(this.bodyHeight() / this.rowHeight) - 1);
        const steps: Record<string, number> = {
            ArrowDown: 1,
            ArrowUp: -1,
            PageDown: page,
            PageUp: -page,
            Home: -Infinity,
            End: Infinity,
        };
        const step = steps[event.key];
        if (step !== undefined && this.shown.length > 0) {
            event.preventDefault();
            this.activate(this.active + step);
        }
    }

    private click(event: MouseEvent): void {
        const row = (event.target as Element).closest<HTMLElement>('[role=row]');
        if (row) {
            this.activate(Number(row.dataset['index']));
        }
    }

    private activate(index: number): void {
        const next = Math.min(Math.max(index, 0), this.shown.length - 1);
        const entry = this.shown[next];
        if (entry === undefined) {
            return;
        }
        const changed = entry !== this.chosen;
        this.chosen = entry;
        this.active = next;
        this.revealActive();
        this.render();
        if (changed) {
            this.choose(entry);
        }
    }

    private headHeight(): number {
        return (this.scroller.firstElementChild as HTMLElement).offsetHeight;
    }

    private bodyHeight(): number {
        return this.scroller.clientHeight - this.headHeight();
    }

    private revealActive(): void {
        this.measure();
        if (this.active >= 0) {
            const top = this.active * this.rowHeight;
            const lowest = top + this.rowHeight - this.bodyHeight();
            this.scroller.scrollTop = Math.min(Math.max(this.scroller.scrollTop, lowest), top);
        }
    }

    private measure(): void {
        this.rowHeight = parseFloat(getComputedStyle(this.scroller).getPropertyValue('--row')) || 28;
        this.body.style.height = `${this.shown.length * this.rowHeight}px`;
    }

    private schedule(): void {
        if (!this.scheduled) {
            this.scheduled = true;
            requestAnimationFrame(() => {
                this.scheduled = false;
                this.render();
            });
        }
    }

    private clear(): void {
        this.rows.clear();
        this.body.replaceChildren();
    }

    private render(): void {
        this.measure();
        const first = Math.max(0, Math.floor(this.scroller.scrollTop / this.rowHeight) - SPARE_ROWS);
        const last = Math.min(
            this.shown.length,
            Math.ceil((this.scroller.scrollTop + this.bodyHeight()) / this.rowHeight) + SPARE_ROWS,
        );
        for (const [index, row] of this.rows) {
            if ((index < first || index >= last) && index !== this.active) {
                row.remove();
                this.rows.delete(index);
            }
        }
        for (let index = first; index < last; index += 1) {
            this.ensure(index);
        }
        if (this.active >= 0) {
            this.ensure(this.active);
        }
        for (const [index, row] of this.rows) {
            row.setAttribute('aria-selected', String(index === this.active));
        }
        if (this.active >= 0) {
            this.scroller.setAttribute('aria-activedescendant', `entry-${this.active}`);
        } else {
            this.scroller.removeAttribute('aria-activedescendant');
        }
    }

    private ensure(index: number): void {
        if (this.rows.has(index)) {
            return;
        }
        const entry = this.shown[index]!;
        const row = element('div', {
            role: 'row',
            class: `row ${entry.status}`,
            id: `entry-${index}`,
            'aria-rowindex': index + 2,
            'data-index': index,
        });
        COLUMNS.forEach((column, i) => {
            const cell = element('div', { role: 'gridcell', 'aria-colindex': i + 1 });
            if (column.name === 'Notes') {
                badges(entry).forEach((badge, at) => {
                    cell.append(at > 0 ? ' ' : '', element('span', { class: `badge ${badge.kind}` }, badge.text));
                });
            } else {
                cell.textContent = column.text(entry);
            }
            row.append(cell);
        });
        row.style.top = `${index * this.rowHeight}px`;
        this.rows.set(index, row);
        // Rows are in the document in their order, for screen readers.
        const next = [...this.rows.keys()].filter((other) => other > index).sort((a, b) => a - b)[0];
        this.body.insertBefore(row, next === undefined ? null : this.rows.get(next)!);
    }
}
