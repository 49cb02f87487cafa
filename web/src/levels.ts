// The table of levels of a sounding.
import type { Level, WindUnit } from './contract';
import { element, reveal, unseen } from './dom';

/** A row of the CSV table from the column "kinds" on. */
export interface Row {
    kinds: string;
    doubt: string;
    pres: string;
    height: string;
    computed: boolean;
    tdry: string;
    dp: string;
    wspd: string;
    wdir: string;
}

export function rowOf(level: Level): Row {
    const [kinds = '', doubt = '', pres = '', height = '', computed = '', tdry = '', dp = '', wspd = '', wdir = ''] =
        level.row.split(',');
    return { kinds, doubt, pres, height, computed: computed === '1', tdry, dp, wspd, wdir };
}

function tenths(text: string): string {
    return text === '' ? '' : Number(text).toFixed(1);
}

function speed(level: Level, row: Row, unit: WindUnit): string {
    if (level.knots === null) {
        return '';
    }
    return unit === 'kt' ? String(Math.round(level.knots)) : tenths(row.wspd);
}

export function headings(unit: WindUnit): [name: string, unit: string][] {
    return [
        ['Pressure', 'hPa'],
        ['Height', 'm'],
        ['Temp.', '°C'],
        ['Dew pt.', '°C'],
        ['From', '°'],
        ['Wind', unit === 'kt' ? 'kt' : 'm/s'],
    ];
}

/** The numbers of a level as they are shown, with minus signs, in the order of the headings. */
export function numbers(level: Level, unit: WindUnit): string[] {
    const row = rowOf(level);
    const all = [row.pres, row.height, tenths(row.tdry), tenths(row.dp), row.wdir, speed(level, row, unit)];
    return all.map((text) => text.replace('-', '\u2212'));
}

export class LevelTable {
    private rows: HTMLElement[] = [];
    private scroller: HTMLElement | undefined;
    private active = -1;

    /** @param mark is told the level that is pointed at, or -1. */
    constructor(
        private readonly place: HTMLElement,
        private readonly mark: (level: number) => void,
    ) {}

    show(levels: Level[], unit: WindUnit): void {
        this.active = -1;
        if (levels.length === 0) {
            this.scroller = undefined;
            this.rows = [];
            this.place.replaceChildren(element('p', { class: 'none' }, 'No levels.'));
            return;
        }
        const head = element('tr', {});
        for (const [name, of] of headings(unit)) {
            head.append(element('th', { scope: 'col' }, name, ' ', element('span', { class: 'unit' }, of)));
        }
        head.append(element('th', { scope: 'col', class: 'words' }, 'Level'));
        this.rows = levels.map((level, i) => this.row(level, i, unit));
        const table = element(
            'table',
            { role: 'grid', tabindex: 0, 'aria-labelledby': 'levels-title' },
            element('thead', {}, head),
            element('tbody', {}, ...this.rows),
        );
        table.addEventListener('keydown', (event) => this.key(event));
        table.addEventListener('blur', () => this.mark(-1));
        table.addEventListener('pointerover', (event) => {
            const row = (event.target as Element).closest<HTMLElement>('tbody tr');
            this.mark(row ? Number(row.dataset['level']) : -1);
        });
        table.addEventListener('pointerleave', (event) => {
            if (event.pointerType !== 'touch') {
                this.mark(this.focused() ? this.active : -1);
            }
        });
        this.scroller = element('div', { class: 'scroller' }, table);
        this.place.replaceChildren(this.scroller);
    }

    /** Marks a row; none with -1. */
    setMarked(level: number, show: boolean): void {
        this.rows.forEach((row, i) => {
            row.classList.toggle('marked', i === level);
            row.setAttribute('aria-selected', String(i === level));
        });
        const row = this.rows[level];
        if (row && this.scroller) {
            this.active = level;
            this.scroller.firstElementChild!.setAttribute('aria-activedescendant', row.id);
            if (show) {
                reveal(this.scroller, row, this.scroller.querySelector('thead')!.offsetHeight);
            }
        }
    }

    private focused(): boolean {
        return this.scroller !== undefined && document.activeElement === this.scroller.firstElementChild;
    }

    private row(level: Level, index: number, unit: WindUnit): HTMLElement {
        const values = rowOf(level);
        const row = element('tr', {
            id: `level-${index}`,
            'data-level': index,
            'aria-selected': 'false',
            class: [level.below ? 'below' : '', values.doubt === '' ? '' : 'doubted'].join(' ').trim(),
        });
        numbers(level, unit).forEach((text, column) => {
            const cell = element('td', {}, text);
            if (column === 1 && values.computed) {
                cell.classList.add('computed');
                cell.append(unseen(' computed'));
            }
            row.append(cell);
        });
        const words = element('td', { class: 'words' }, values.kinds.replace('maxwind', 'max. wind'));
        if (level.below) {
            words.append(unseen(' below the ground'));
        }
        if (values.doubt !== '') {
            words.append(' ', element('span', { class: 'doubtful' }, `doubtful: ${values.doubt}`));
        }
        row.append(words);
        return row;
    }

    private key(event: KeyboardEvent): void {
        const steps: Record<string, number> = {
            ArrowDown: 1,
            ArrowUp: -1,
            PageDown: 10,
            PageUp: -10,
            Home: -Infinity,
            End: Infinity,
        };
        const step = steps[event.key];
        if (step === undefined || event.altKey || event.ctrlKey || event.metaKey) {
            return;
        }
        event.preventDefault();
        const next = Math.min(Math.max(this.active + step, 0), this.rows.length - 1);
        this.mark(next);
    }
}
