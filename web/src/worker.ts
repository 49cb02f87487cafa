// Reads the files and answers the page from another thread, so that the page stays responsive. A reading is cancelled by
// ending the worker.
import compressed from '../build/corvane.wasm.gz';
import type { Answer, Excerpt, Input, Part, Request } from './contract';
import { Decoder } from './decoder';
import { beginning, isUtf16, kindOf } from './recognise';

const ENTRIES_AT_ONCE = 500;
const TIME_BETWEEN_REPORTS = 50; // milliseconds

// How much of the text before a part and after it is looked at for the ends of its lines.
const MARGIN = 100;

const reader = new FileReaderSync();
const latin = new TextDecoder('windows-1252');
let inputs: Input[] = [];
let decoder: Decoder | undefined;

function send(answer: Answer): void {
    postMessage(answer);
}

function bytesOf(blob: Blob): Uint8Array {
    return new Uint8Array(reader.readAsArrayBuffer(blob));
}

async function load(): Promise<Decoder> {
    const stream = new Blob([compressed]).stream().pipeThrough(new DecompressionStream('gzip'));
    return Decoder.load(new Uint8Array(await new Response(stream).arrayBuffer()));
}

/** What the browser throws when a file is no longer the one that the user has given: changed, moved or deleted. */
function isGone(fault: unknown): boolean {
    return fault instanceof DOMException;
}

function gone(input: Input): string {
    return `${input.subject} has changed since it was read. Open it again.`;
}

/** Why nothing is found in a file, or what is odd about it. */
function notice({ file, subject }: Input, parts: number): string {
    if (file.size === 0) {
        return `${subject} is empty.`;
    }
    const start = bytesOf(beginning(file));
    if (isUtf16(start)) {
        return parts > 0
            ? `${subject} is UTF-16 text. It is read as if it were plain ASCII text.`
            : `${subject} is UTF-16 text and holds no part of a sounding (TTAA, TTBB, UUAA, XXAA, IIAA ...).`;
    }
    if (parts > 0) {
        return '';
    }
    const kind = kindOf(start);
    return kind === ''
        ? `${subject} holds no part of a sounding: none of its words is TTAA, TTBB, UUAA, XXAA, IIAA or the like.`
        : `${subject} is ${kind}. It holds no bulletins.`;
}

function noticeOf(input: Input, parts: number): string {
    try {
        return notice(input, parts);
    } catch (fault) {
        if (isGone(fault)) {
            return gone(input);
        }
        throw fault;
    }
}

async function read(): Promise<void> {
    decoder = await load();
    const total = inputs.reduce((sum, { file }) => sum + file.size, 0);
    let done = 0;
    let reported = 0;
    const partsBefore: number[] = [];
    for (const { file, subject } of inputs) {
        let at = 0;
        try {
            partsBefore.push(
                decoder.add((size) => {
                    const bytes = bytesOf(file.slice(at, at + size));
                    at += bytes.length;
                    done += bytes.length;
                    if (performance.now() - reported > TIME_BETWEEN_REPORTS) {
                        reported = performance.now();
                        send({ type: 'progress', done, total });
                    }
                    return bytes;
                }),
            );
        } catch (fault) {
            if (isGone(fault)) {
                throw new Error(`${subject} cannot be read. Is it a folder, or has it been changed or moved?`);
            }
            throw fault;
        }
    }
    const counts = decoder.finish();
    for (let first = 0; first < counts.entries; first += ENTRIES_AT_ONCE) {
        send({ type: 'entries', entries: decoder.entries(first, ENTRIES_AT_ONCE) });
    }
    const notices = inputs.map((input, i) => noticeOf(input, partsBefore[i] ?? 0)).filter((text) => text !== '');
    send({ type: 'done', counts, notices });
}

/** The text of a part in its file, from the start of its line to its end sign. */
function excerpt(part: Part): Excerpt {
    const { file } = inputs[part.file]!;
    const length = Math.max(4, ...part.groups.map(([, end]) => end));
    const from = Math.max(0, part.offset - MARGIN);
    const all = latin.decode(bytesOf(file.slice(from, part.offset + length + MARGIN)));
    const start = part.offset - from;
    const lineStart = Math.max(all.lastIndexOf('\n', start), all.lastIndexOf('\r', start), all.lastIndexOf('=', start)) + 1;
    const after = /^[^A-Z0-9]*?[=;]+/.exec(all.slice(start + length))?.[0].length ?? 0;
    const before = lineStart === 0 && from > 0 ? start : lineStart;
    return { text: all.slice(before, start + length + after), start: start - before };
}

function show(request: Extract<Request, { type: 'show' }>): void {
    const { id, drawing } = request;
    const detail = decoder!.detail(id);
    const picture = decoder!.picture(id, drawing);
    const notices = new Set<string>();
    const excerpts = detail.parts.map((part) => {
        try {
            return excerpt(part);
        } catch (fault) {
            if (!isGone(fault)) {
                throw fault;
            }
            notices.add(gone(inputs[part.file]!));
            return null;
        }
    });
    send({
        type: 'shown',
        request: request.request,
        detail,
        excerpts,
        notice: [...notices].join(' '),
        picture,
        light: (drawing.dark ? decoder!.picture(id, { ...drawing, dark: false }) : picture)?.svg ?? '',
    });
}

async function answer(request: Request): Promise<void> {
    switch (request.type) {
        case 'read':
            inputs = request.inputs;
            await read();
            break;
        case 'show':
            show(request);
            break;
        case 'table':
            send({ type: 'table', request: request.request, csv: decoder!.table(request.id) });
            break;
    }
}

onmessage = (event: MessageEvent<Request>) => {
    answer(event.data).catch((fault: unknown) => {
        // The decoder itself throws only when it is out of memory, never because of a report.
        const memory =
            fault instanceof RangeError ||
            fault instanceof WebAssembly.RuntimeError ||
            fault instanceof WebAssembly.Exception;
        const message = memory
            ? 'There is not enough memory for this file. Split it and read the pieces one by one.'
            : fault instanceof Error
              ? fault.message
              : String(fault);
        send({ type: 'failed', message });
    });
};
