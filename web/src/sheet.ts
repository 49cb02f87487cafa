// What is printed: picture and levels on one sheet.
import type { Detail, WindUnit } from './contract';
import { element } from './dom';
import { numbers, rowOf } from './levels';

// Levels are in columns below the picture: in four or, when there are many, in five with smaller letters. Letters shrink
// with the length of a column, down to a size that can still be read.
const MOST_ROWS = 60;
const FEW_ROWS = 46;
const HEIGHT = 280; // points, of the rows of a column without the room between them

const HEADINGS = ['hPa', 'm', '°C', 'Td °C', '°'];

export class Sheet {
    private url = '';

    constructor(private readonly place: HTMLElement) {}

    show(title: string, source: string, light: string, detail: Detail, unit: WindUnit): void {
        URL.revokeObjectURL(this.url);
        this.url = '';
        const image = element('img', { alt: '' });
        if (light !== '') {
            this.url = URL.createObjectURL(new Blob([light], { type: 'image/svg+xml' }));
            image.src = this.url;
        }
        let levels = detail.levels;
        let note = '';
        const columns = levels.length <= 4 * FEW_ROWS ? 4 : 5;
        if (levels.length > columns * MOST_ROWS) {
            levels = levels.filter((level) => rowOf(level).kinds !== 'significant').slice(0, columns * MOST_ROWS);
            note = ` ${detail.levels.length - levels.length} significant levels are not printed.`;
        }
        const rows = Math.ceil(levels.length / columns);
        const tables = Array.from({ length: columns }, (_, i) => levels.slice(i * rows, (i + 1) * rows))
            .filter((column) => column.length > 0)
            .map((column) => {
                const head = [...HEADINGS, unit === 'kt' ? 'kt' : 'm/s'].map((name) => element('th', {}, name));
                const lines = column.map((level) => {
                    const row = rowOf(level);
                    const cells = numbers(level, unit).map((text, at) =>
                        element('td', { class: at === 1 && row.computed ? 'computed' : '' }, text),
                    );
                    if (row.doubt !== '') {
                        cells[0]!.prepend('? ');
                    }
                    return element('tr', {}, ...cells);
                });
                return element(
                    'table',
                    {},
                    element('thead', {}, element('tr', {}, ...head)),
                    element('tbody', {}, ...lines),
                );
            });
        const body = element('div', { class: 'columns' }, ...tables);
        body.style.fontSize = `${Math.min(columns === 4 ? 6.4 : 5.2, HEIGHT / Math.max(rows, 1))}pt`;
        this.place.replaceChildren(
            light === '' ? element('h1', {}, title) : image,
            body,
            element('p', {}, `${title}. ${source}. Heights in italics are computed, ? is doubtful.${note}`),
        );
    }
}
