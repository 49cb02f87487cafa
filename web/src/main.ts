// The page: takes files, shows their soundings.
import example from '../example.txt';
import type { Answer, Counts, Detail, Entry, Excerpt, Input, Part, Picture, Request, WindUnit } from './contract';
import { byId, save } from './dom';
import { LevelTable } from './levels';
import { fragmentOf, textOf } from './link';
import { List } from './list';
import { PictureView, png, sizeFor } from './picture';
import { Sheet } from './sheet';
import { TextView } from './text';
import { badges, fileName, plural, position, summary } from './words';
import workerSource from 'worker:./worker.ts';

const TIME_BEFORE_PROGRESS = 150; // milliseconds
const TIME_AFTER_RESIZING = 300;
const PNG_SCALE = 2;

/** What has been read, and the worker that has read it. */
interface Source {
    worker: Worker;
    names: string[]; // of the files
    isLink: boolean; // whether it came in the address
    entries: Entry[];
}

/** What is on the page. */
interface Shown {
    entry: Entry;
    detail: Detail;
    excerpts: (Excerpt | null)[];
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
let again = false; // whether another one is wanted after it
let marked = -1;
let resizing = 0;
let linked = ''; // the fragment that this page has set itself

// ---- panels ------------------------------------------------------------------------------------------------------

const list = new List(byId('list'), (entry) => {
    chosen = entry;
    if (linked !== '') {
        setFragment(''); // the address is that of another sounding
    }
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

function namesOf({ names }: Source): string {
    return names.length === 1 ? names[0]! : plural(names.length, 'file');
}

function read(inputs: Input[], isLink = false): void {
    if (inputs.length === 0) {
        return;
    }
    endReading();
    complain('');
    const worker = new Worker(workerUrl);
    const next: Source = { worker, names: inputs.map(({ file }) => file.name), isLink, entries: [] };
    reading = { source: next, timer: window.setTimeout(() => (byId('progress').hidden = false), TIME_BEFORE_PROGRESS) };
    byId('progress-text').textContent = `Reading ${namesOf(next)} `;
    byId('progress').querySelector('progress')!.value = 0;
    worker.onmessage = (event: MessageEvent<Answer>) => take(next, event.data);
    worker.onerror = (event) => {
        event.preventDefault();
        fail(next, `Reading failed: ${event.message}`);
    };
    send(worker, { type: 'read', inputs });
}

function readFiles(files: File[]): void {
    read(files.map((file) => ({ file, subject: file.name })));
}

function readText(name: string, content: string, isLink = false): void {
    read([{ file: new File([content], name), subject: `The ${name}` }], isLink);
}

function send(worker: Worker, request: Request): void {
    worker.postMessage(request);
}

/** Ends the current reading, if any. What was read before stays. */
function endReading(): void {
    if (reading) {
        clearTimeout(reading.timer);
        reading.source.worker.terminate();
        reading = undefined;
    }
    byId('progress').hidden = true;
}

function fail(from: Source, message: string): void {
    if (from === reading?.source) {
        endReading();
    }
    complain(message);
}

function take(from: Source, answer: Answer): void {
    if (from !== source && from !== reading?.source) {
        return; // something else has taken its place
    }
    switch (answer.type) {
        case 'progress': {
            byId('progress').querySelector('progress')!.value = answer.total > 0 ? answer.done / answer.total : 1;
            const share = Math.floor((100 * answer.done) / Math.max(answer.total, 1));
            byId('progress-text').textContent = `Reading ${namesOf(from)}: ${share} % `;
            break;
        }
        case 'entries':
            from.entries.push(...answer.entries);
            break;
        case 'done':
            adopt(from, answer.counts, answer.notices);
            break;
        case 'failed':
            if (from === source) {
                answered();
            }
            fail(from, answer.message);
            break;
        case 'shown':
            if (!answered() && answer.request === lastShow && chosen) {
                show({ ...answer, entry: chosen });
                if (answer.notice !== '') {
                    complain(answer.notice);
                }
            }
            break;
        case 'table':
            save(tableName(answer.request), new Blob([answer.csv], { type: 'text/csv' }));
            break;
    }
}

/** Takes note of an answer to "show". Returns whether another one is wanted by now. */
function answered(): boolean {
    const wanted = again;
    waiting = false;
    again = false;
    if (wanted) {
        requestShow();
    }
    return wanted;
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
    if (!from.isLink) {
        setFragment('');
    }
    chosen = undefined;
    shown = undefined;
    waiting = false;
    again = false;
    byId('summary').textContent = `${namesOf(from)}: ${summary(counts)}.`;
    const focused = document.activeElement;
    const idle = focused === null || focused === document.body || focused.closest('#start') !== null;
    byId('start').hidden = true;
    byId('work').hidden = false;
    const hidden = from.entries.filter(({ status }) => status === 'NIL' || status === 'empty').length;
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
    if (idle) {
        list.focus(); // so that the arrows walk it
    }
}

function countShown(): void {
    byId('shown').textContent = list.count > 0 ? `${list.count} shown` : 'No sounding matches.';
}

// ---- showing -----------------------------------------------------------------------------------------------------

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
        drawing: {
            unit: unit(),
            top: Number(byId<HTMLSelectElement>('top').value),
            dark: darkness.matches,
            ...sizeFor(byId('picture').clientWidth),
        },
    });
}

function describe(entry: Entry): string {
    const when = entry.day === null ? '' : `, day ${entry.day}, ${String(entry.hour).padStart(2, '0')} UTC`;
    return `${entry.form} ${entry.station || position(entry, '\u00b0') || '?'}${when}`;
}

function partsOf(letters: string): string {
    return `${letters.length === 1 ? 'part' : 'parts'} ${[...letters].join(' ')}`;
}

function show(next: Shown): void {
    shown = next;
    mark(-1, 'table');
    const { entry, detail } = next;
    byId('title').textContent = describe(entry);
    const notes = [
        entry.station === '' ? '' : position(entry, '\u00b0'),
        partsOf(entry.letters),
        entry.status === 'sounding' ? plural(entry.levels, 'level') : '',
        ...badges(entry).map(({ kind, text }) =>
            kind === 'refused' && text !== kind ? `${partsOf(entry.refused)} refused` : text,
        ),
    ];
    byId('subtitle').textContent = notes.filter((note) => note !== '').join(' · ');
    byId('link-note').textContent = '';
    byId<HTMLButtonElement>('link').disabled = next.excerpts.includes(null);
    for (const id of ['csv', 'svg', 'png', 'print']) {
        byId<HTMLButtonElement>(id).disabled = next.picture === null;
    }
    if (next.picture) {
        picture.show(next.picture.svg, next.picture.places);
    } else {
        picture.showText(
            entry.status === 'refused'
                ? 'No sounding: what the report holds cannot be read with certainty. The reason is given with the text.'
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
    return source && source.names.length > 1 ? `${source.names[part.file]!}, ${line}` : line;
}

// ---- saving and sharing ------------------------------------------------------------------------------------------

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

/** The parts of the sounding as they are in their bulletins, each under its heading. */
function reportText({ detail, excerpts }: Shown): string {
    let heading = '';
    return detail.parts
        .map((part, i) => {
            const excerpt = excerpts[i]!;
            const end = Math.max(4, ...part.groups.map((group) => group[1]));
            // Without the NULs of UTF-16, whose other bytes are the characters of a report.
            const body = excerpt.text.slice(excerpt.start, excerpt.start + end).replace(/\0/g, '').replace(/\s+/g, ' ');
            const above = part.heading === heading || part.heading === '' ? '' : `${part.heading}\n`;
            heading = part.heading;
            return `${above}${body}=\n`;
        })
        .join('');
}

/** Sets the fragment of the address; an empty one removes it. */
function setFragment(fragment: string): void {
    linked = fragment;
    if (location.hash !== fragment) {
        history.replaceState(null, '', location.href.replace(/#.*/s, '') + fragment);
    }
}

async function makeLink(): Promise<void> {
    if (!shown || shown.excerpts.includes(null)) {
        return;
    }
    const fragment = fragmentOf(reportText(shown));
    const note = byId('link-note');
    if (fragment === '') {
        note.textContent = 'This report is too long for a link. Send its text instead.';
        return;
    }
    setFragment(fragment);
    try {
        await navigator.clipboard.writeText(location.href);
        note.textContent = 'The link with this report is in the address bar and has been copied.';
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
            readText('link', report, true);
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
        readFiles([...(files.files ?? [])]);
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
        const names = reading ? namesOf(reading.source) : '';
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
    byId('top').addEventListener('change', requestShow);
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
                () => complain('This browser cannot turn the picture into a PNG. Save it as SVG instead.'),
            );
        }
    });
    byId('link').addEventListener('click', () => void makeLink());
    byId('print').addEventListener('click', () => window.print());

    document.addEventListener('keydown', (event) => {
        const isPlain = !event.ctrlKey && !event.altKey && !event.metaKey;
        if (event.key === '/' && isPlain && !isTyping(event.target) && !dialog.open && !byId('work').hidden) {
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
        takeData('pasted', event.clipboardData);
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
            takeData('dropped', event.dataTransfer);
        }
    });
    window.addEventListener('hashchange', readLink);
    window.addEventListener('resize', () => {
        clearTimeout(resizing);
        resizing = window.setTimeout(() => {
            // Redrawn only where its letters would differ visibly in size from those around it.
            const { width } = shown?.picture?.places ?? { width: 0 };
            if (width > 0 && Math.abs(sizeFor(byId('picture').clientWidth).width / width - 1) > 0.15) {
                requestShow();
            }
        }, TIME_AFTER_RESIZING);
    });
    readLink();
}

/** @param how it came: "dropped" or "pasted" */
function takeData(how: string, data: DataTransfer): void {
    if (data.files.length > 0) {
        readFiles([...data.files]);
    } else if (data.getData('text/plain') !== '') {
        readText(`${how} text`, data.getData('text/plain'));
    } else {
        complain(`What you ${how} holds neither text nor a file.`);
    }
}

// The title of the window says what is shown, also in a saved PDF.
new MutationObserver(() => {
    document.title = `${byId('title').textContent} – corvane`;
}).observe(byId('title'), { childList: true });

wire();
