// The page: takes files, shows their soundings.
import example from '../example.txt';
import type { Answer, Counts, Detail, Entry, Excerpt, Part, Picture, Request, WindUnit } from './contract';
import { byId, save } from './dom';
import { LevelTable } from './levels';
import { fragmentOf, textOf } from './link';
import { List } from './list';
import { PictureView, png } from './picture';
import { Sheet } from './sheet';
import { TextView } from './text';
import { badges, fileName, plural, position, stationName, summary } from './words';
import workerSource from 'worker:./worker.ts';

const TIME_BEFORE_PROGRESS = 150; // milliseconds
const TIME_AFTER_RESIZING = 300;
const PNG_SCALE = 2;
const LINK = 'link'; // the name of what came in the address

/** What has been read, and the worker that has read it. */
interface Source {
    worker: Worker;
    files: File[];
    entries: Entry[];
}

/** What is on the page. */
interface Shown {
    entry: Entry;
    detail: Detail;
    excerpts: Excerpt[];
    picture: Picture | null;
    light: string;
}

const workerUrl = URL.createObjectURL(new Blob([workerSource], { type: 'text/javascript' }));
const darkness = matchMedia('(prefers-color-scheme: dark)');

let source: Source | undefined;
let reading: { source: Source; timer: number } | undefined;
let chosen: Entry | undefined;
let shown: Shown | undefined;
let requests = 0;
let lastShow = 0;
let waiting = false; // whether an answer to "show" is on its way
let again = false; // whether another one is wanted by then
let marked = -1;
let resizing = 0;
let linked = ''; // the fragment that this page has set itself

// ---- panels ------------------------------------------------------------------------------------------------------

const list = new List(byId('list'), (entry) => {
    chosen = entry;
    requestShow();
});
const levels = new LevelTable(byId('levels-table'), (level) => mark(level, 'table'));
const picture = new PictureView(byId('picture'), (level) => mark(level, 'picture'));
const text = new TextView(byId('parts'), (level) => mark(level, 'text'));
const sheet = new Sheet(byId('sheet'));

function mark(level: number, from: 'table' | 'picture' | 'text'): void {
    if (level !== marked) {
        marked = level;
        levels.setMarked(level, true);
        picture.setMarked(level);
        text.setMarked(level, from !== 'text');
    }
}

function complain(message: string): void {
    byId('message').textContent = message;
}

function unit(): WindUnit {
    return byId<HTMLSelectElement>('unit').value as WindUnit;
}

// ---- reading -----------------------------------------------------------------------------------------------------

function namesOf(files: File[]): string {
    return files.length === 1 ? files[0]!.name : plural(files.length, 'file');
}

function read(files: File[]): void {
    if (files.length === 0) {
        return;
    }
    if (location.hash !== '' && files[0]!.name !== LINK) {
        linked = '';
        history.replaceState(null, '', location.href.replace(/#.*/s, ''));
    }
    endReading();
    complain('');
    const worker = new Worker(workerUrl);
    const next: Source = { worker, files, entries: [] };
    reading = { source: next, timer: window.setTimeout(() => (byId('progress').hidden = false), TIME_BEFORE_PROGRESS) };
    byId('progress-text').textContent = `Reading ${namesOf(files)} `;
    byId('progress').querySelector('progress')!.value = 0;
    worker.onmessage = (event: MessageEvent<Answer>) => take(next, event.data);
    worker.onerror = (event) => {
        event.preventDefault();
        fail(`The reading has failed: ${event.message}`);
    };
    send(worker, { type: 'read', files });
}

function readText(name: string, content: string): void {
    read([new File([content], name)]);
}

function send(worker: Worker, request: Request): void {
    worker.postMessage(request);
}

/** Ends the reading that goes on, if any. What was read before stays. */
function endReading(): void {
    if (reading) {
        clearTimeout(reading.timer);
        reading.source.worker.terminate();
        reading = undefined;
    }
    byId('progress').hidden = true;
}

function fail(message: string): void {
    endReading();
    complain(message);
}

function take(from: Source, answer: Answer): void {
    switch (answer.type) {
        case 'progress': {
            byId('progress').querySelector('progress')!.value = answer.total > 0 ? answer.done / answer.total : 1;
            const share = Math.floor((100 * answer.done) / Math.max(answer.total, 1));
            byId('progress-text').textContent = `Reading ${namesOf(from.files)}: ${share} % `;
            break;
        }
        case 'entries':
            from.entries.push(...answer.entries);
            break;
        case 'done':
            adopt(from, answer.counts, answer.notices);
            break;
        case 'failed':
            waiting = false;
            fail(answer.message);
            break;
        case 'shown':
            waiting = false;
            if (again) {
                again = false;
                requestShow();
            } else if (answer.request === lastShow && chosen) {
                show({ ...answer, entry: chosen });
            }
            break;
        case 'table':
            save(tableName(answer.request), new Blob([answer.csv], { type: 'text/csv' }));
            break;
    }
}

function adopt(from: Source, counts: Counts, notices: string[]): void {
    if (reading) {
        clearTimeout(reading.timer);
        reading = undefined;
    }
    byId('progress').hidden = true;
    complain(notices.join(' '));
    if (counts.parts === 0) {
        from.worker.terminate();
        return;
    }
    source?.worker.terminate();
    source = from;
    chosen = undefined;
    shown = undefined;
    waiting = false;
    again = false;
    byId('summary').textContent = `${namesOf(from.files)}: ${summary(counts)}.`;
    byId('start').hidden = true;
    byId('work').hidden = false;
    const hidden = from.entries.filter((entry) => badges(entry).some((badge) => badge === 'NIL' || badge === 'empty')).length;
    byId('nil-text').textContent = `Show NIL and empty (${hidden})`;
    const nil = byId<HTMLInputElement>('nil');
    nil.disabled = hidden === 0;
    nil.checked = hidden === from.entries.length;
    byId<HTMLInputElement>('filter').value = '';
    list.filter('');
    list.showNil(nil.checked);
    list.show(from.entries);
    countShown();
    list.chooseFirst();
}

function countShown(): void {
    byId('shown').textContent = `${list.count} shown`;
}

// ---- showing -----------------------------------------------------------------------------------------------------

/** The size that a picture is drawn for: that of its place, so that its letters are as large as those around it. */
function pictureSize(): { width: number; height: number } {
    const room = byId('picture').clientWidth;
    const width = Math.round(Math.min(Math.max(room, 400), 1000));
    return { width, height: Math.round(width * 1.1) };
}

function requestShow(): void {
    if (!source || !chosen) {
        return;
    }
    if (waiting) {
        again = true;
        return;
    }
    waiting = true;
    lastShow = ++requests;
    send(source.worker, {
        type: 'show',
        request: lastShow,
        id: chosen.id,
        unit: unit(),
        dark: darkness.matches,
        ...pictureSize(),
    });
}

function describe(entry: Entry): string {
    const when = entry.day === null ? '' : `, day ${entry.day} ${String(entry.hour).padStart(2, '0')} UTC`;
    return `${entry.form} ${stationName(entry)}${when}`;
}

function show(next: Shown): void {
    shown = next;
    mark(-1, 'table');
    const { entry, detail } = next;
    byId('title').textContent = describe(entry);
    const notes = [
        entry.station === '' ? '' : position(entry),
        entry.letters.length === 1 ? `part ${entry.letters}` : `parts ${[...entry.letters].join(' ')}`,
        entry.status === 'sounding' ? plural(entry.levels, 'level') : '',
        ...badges(entry),
    ];
    byId('subtitle').textContent = notes.filter((note) => note !== '').join(' · ');
    byId('link-note').textContent = '';
    for (const id of ['csv', 'svg', 'png', 'print']) {
        byId<HTMLButtonElement>(id).disabled = next.picture === null;
    }
    if (next.picture) {
        picture.show(next.picture.svg, next.picture.places);
    } else {
        picture.showText(
            entry.status === 'refused'
                ? 'No sounding: what the report holds cannot be read for certain. The reason stands with the text.'
                : 'No sounding: the report holds no data.',
        );
    }
    levels.show(detail.levels, unit());
    text.show(detail, next.excerpts, placeOf);
    sheet.show(
        describe(entry),
        detail.parts.map((part) => `Part ${part.letter}: ${placeOf(part)}${part.heading && ` (${part.heading})`}`).join(', '),
        next.light,
        detail,
        unit(),
    );
}

function placeOf(part: Part): string {
    const line = `line ${part.line}`;
    return source && source.files.length > 1 ? `${source.files[part.file]!.name}, ${line}` : line;
}

// ---- taking away -------------------------------------------------------------------------------------------------

const tableNames = new Map<number, string>();

function tableName(request: number): string {
    const name = tableNames.get(request) ?? 'soundings.csv';
    tableNames.delete(request);
    return name;
}

function saveTable(entry: Entry | null): void {
    if (source) {
        const request = ++requests;
        tableNames.set(request, entry ? `${fileName(entry)}.csv` : 'soundings.csv');
        send(source.worker, { type: 'table', request, id: entry?.id ?? null });
    }
}

/** The parts of the sounding as they stand in their bulletins, each under its heading. */
function reportText({ detail, excerpts }: Shown): string {
    let heading = '';
    return detail.parts
        .map((part, i) => {
            const excerpt = excerpts[i]!;
            const end = Math.max(4, ...part.groups.map((group) => group[1]));
            const body = excerpt.text.slice(excerpt.start, excerpt.start + end).replace(/\s+/g, ' ');
            const above = part.heading === heading || part.heading === '' ? '' : `${part.heading}\n`;
            heading = part.heading;
            return `${above}${body}=\n`;
        })
        .join('');
}

async function makeLink(): Promise<void> {
    if (!shown) {
        return;
    }
    const fragment = fragmentOf(reportText(shown));
    const note = byId('link-note');
    if (fragment === '') {
        note.textContent = 'This report is too long for a link. Send its text instead.';
        return;
    }
    linked = fragment;
    history.replaceState(null, '', fragment);
    try {
        await navigator.clipboard.writeText(location.href);
        note.textContent = 'The link with this report is in the address bar and copied.';
    } catch {
        note.textContent = 'The link with this report is in the address bar.';
    }
}

function readLink(): void {
    if (location.hash === linked) {
        return;
    }
    linked = '';
    try {
        const report = textOf(location.hash);
        if (report !== undefined) {
            readText(LINK, report);
        }
    } catch {
        complain('The link is damaged: the report in it cannot be read.');
    }
}

// ---- wiring ------------------------------------------------------------------------------------------------------

function choosePaste(): void {
    byId<HTMLDialogElement>('paste-dialog').showModal();
    byId<HTMLTextAreaElement>('paste-text').focus();
}

function isTyping(target: EventTarget | null): boolean {
    return target instanceof HTMLElement && target.matches('input:not([type=checkbox]), textarea, select');
}

function wire(): void {
    const files = byId<HTMLInputElement>('files');
    for (const id of ['open', 'start-open']) {
        byId(id).addEventListener('click', () => files.click());
    }
    files.addEventListener('change', () => {
        read([...(files.files ?? [])]);
        files.value = ''; // the same file may be chosen again
    });
    for (const id of ['paste', 'start-paste']) {
        byId(id).addEventListener('click', choosePaste);
    }
    for (const id of ['example', 'start-example']) {
        byId(id).addEventListener('click', () => readText('example', example));
    }
    const dialog = byId<HTMLDialogElement>('paste-dialog');
    dialog.addEventListener('close', () => {
        if (dialog.returnValue === 'read') {
            readText('pasted text', byId<HTMLTextAreaElement>('paste-text').value);
        }
        dialog.returnValue = '';
    });
    byId('cancel').addEventListener('click', () => {
        const names = reading ? namesOf(reading.source.files) : '';
        endReading();
        complain(`Reading of ${names} cancelled.`);
    });

    const filter = byId<HTMLInputElement>('filter');
    filter.addEventListener('input', () => {
        list.filter(filter.value);
        countShown();
    });
    filter.addEventListener('keydown', (event) => {
        if (event.key === 'ArrowDown' || event.key === 'Enter') {
            event.preventDefault();
            list.focus();
        }
    });
    const nil = byId<HTMLInputElement>('nil');
    nil.addEventListener('change', () => {
        list.showNil(nil.checked);
        countShown();
    });

    byId('unit').addEventListener('change', requestShow);
    darkness.addEventListener('change', requestShow);
    byId('all-tables').addEventListener('click', () => saveTable(null));
    byId('csv').addEventListener('click', () => shown && saveTable(shown.entry));
    byId('svg').addEventListener('click', () => {
        if (shown?.picture) {
            save(`${fileName(shown.entry)}.svg`, new Blob([shown.picture.svg], { type: 'image/svg+xml' }));
        }
    });
    byId('png').addEventListener('click', () => {
        if (shown?.picture) {
            const name = `${fileName(shown.entry)}.png`;
            png(shown.picture.svg, shown.picture.places, PNG_SCALE).then(
                (blob) => save(name, blob),
                () => complain('The picture cannot be made into a PNG here. Take the SVG.'),
            );
        }
    });
    byId('link').addEventListener('click', () => void makeLink());
    byId('print').addEventListener('click', () => window.print());

    document.addEventListener('keydown', (event) => {
        if (event.key === '/' && !isTyping(event.target) && !dialog.open && !byId('work').hidden) {
            event.preventDefault();
            filter.select();
            filter.focus();
        }
    });
    document.addEventListener('paste', (event) => {
        if (isTyping(event.target) || !event.clipboardData) {
            return;
        }
        event.preventDefault();
        takeData('pasted text', event.clipboardData);
    });
    const veil = byId('veil');
    document.addEventListener('dragover', (event) => {
        event.preventDefault();
        veil.hidden = false;
    });
    document.addEventListener('dragleave', (event) => {
        if (event.relatedTarget === null) {
            veil.hidden = true;
        }
    });
    document.addEventListener('drop', (event) => {
        event.preventDefault();
        veil.hidden = true;
        if (event.dataTransfer) {
            takeData('dropped text', event.dataTransfer);
        }
    });
    window.addEventListener('hashchange', readLink);
    window.addEventListener('resize', () => {
        clearTimeout(resizing);
        resizing = window.setTimeout(() => {
            // Letters of another size than those around them are worth another picture, a few pixels are not.
            const { width } = shown?.picture?.places ?? { width: 0 };
            if (width > 0 && Math.abs(pictureSize().width / width - 1) > 0.15) {
                requestShow();
            }
        }, TIME_AFTER_RESIZING);
    });
    readLink();
}

function takeData(name: string, data: DataTransfer): void {
    if (data.files.length > 0) {
        read([...data.files]);
    } else if (data.getData('text/plain') !== '') {
        readText(name, data.getData('text/plain'));
    } else {
        complain('There is no text and no file in it.');
    }
}

// The title of the window tells what is shown, also in a saved PDF.
new MutationObserver(() => {
    document.title = `${byId('title').textContent} – corvane`;
}).observe(byId('title'), { childList: true });

wire();
