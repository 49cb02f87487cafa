// The decoder as the page has it, without the page: the same answers as the program, whatever the input.
import assert from 'node:assert/strict';
import { execFileSync, spawnSync } from 'node:child_process';
import { mkdtempSync, readFileSync, rmSync, writeFileSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { after, before, test } from 'node:test';
import { Decoder } from '../src/decoder';
import { bulletinFiles, FEED, PROJECT } from './support';

const ROUNDS = 4;
const SIZE = 200_000;

let scratch: string;
before(() => {
    scratch = mkdtempSync(join(tmpdir(), 'corvane-page-'));
});
after(() => {
    rmSync(scratch, { recursive: true });
});

const wasm = new Uint8Array(readFileSync(join(PROJECT, 'web/build/corvane.wasm')));

/** Reads bytes, handed over in pieces of a size. */
async function decoded(bytes: Uint8Array, pieces = Infinity): Promise<Decoder> {
    const decoder = await Decoder.load(wasm);
    let at = 0;
    decoder.add((size) => {
        const piece = bytes.subarray(at, at + Math.min(size, pieces));
        at += piece.length;
        return piece;
    });
    decoder.finish();
    return decoder;
}

/** Everything that is said about the parts of an input, "LINE: mended: NAME: TEXT" and the like, sorted. */
function sayings(decoder: Decoder): string[] {
    return decoder
        .entries(0, 1_000_000)
        .flatMap((entry) => decoder.detail(entry.id).parts)
        .flatMap((part) => [
            ...part.mends.map((mend) => `${part.line}: ${mend.lost ? 'lost' : 'mended'}: ${mend.name}: ${mend.text}`),
            ...part.doubts.map((doubt) => `${part.line}: doubtful: ${doubt.name}: ${doubt.text}`),
            ...(part.status === 'refused' ? [`${part.line}: refused: ${part.reason}`] : []),
        ])
        .sort();
}

function generator(seed: number): (below: number) => number {
    let state = seed;
    return (below) => {
        state = (Math.imul(state, 1664525) + 1013904223) >>> 0;
        return Math.floor((state / 2 ** 32) * below);
    };
}

/** Bulletins with a fault in every hundred characters or so. */
function faulty(seed: number): Buffer {
    const random = generator(seed);
    const texts = bulletinFiles().map((path) => readFileSync(path, 'latin1'));
    const characters = '0123456789/ABCDEFNINFXPSWE+-.= \n\re';
    const any = () => characters[random(characters.length)]!;
    let all = '';
    while (all.length < SIZE) {
        const whole = texts[random(texts.length)]!;
        const from = random(Math.max(1, whole.length - 6000));
        const text = [...whole.slice(from, from + 6000)];
        for (let faults = 1 + random(Math.max(2, text.length / 100)); faults > 0; faults -= 1) {
            const at = random(text.length);
            text[at] = [any(), '', text[at]! + any(), text[at]! + text[at]!][random(4)]!;
        }
        all += `${text.join('')}\n`;
    }
    return Buffer.from(all, 'latin1');
}

test('faulty bulletins give the rows and the words of the program', async () => {
    let parts = 0;
    for (let round = 1; round <= ROUNDS; round += 1) {
        const bytes = faulty(round);
        const path = join(scratch, 'faulty.txt');
        writeFileSync(path, bytes);
        const program = spawnSync(FEED, ['--soundings', path], { encoding: 'latin1', maxBuffer: 1 << 28 });
        assert.ok(program.status === 0 || program.status === 1, String(program.status));
        const decoder = await decoded(bytes);
        assert.equal(decoder.table(null), program.stdout);

        // Of parts that repeat or replace each other, the page has only those that count.
        const theirs = new Set(
            program.stderr
                .split('\n')
                .map((line) => /faulty\.txt:(\d+): .*?: ((mended|lost|doubtful|refused): .*)$/.exec(line))
                .filter((match) => match !== null)
                .map((match) => `${match[1]}: ${match[2]}`),
        );
        const mine = sayings(decoder);
        assert.deepEqual(
            mine.filter((saying) => !theirs.has(saying)),
            [],
        );
        const refusals = (sayings: Iterable<string>) => [...sayings].filter((saying) => /^\d+: refused/.test(saying));
        assert.deepEqual(new Set(refusals(mine)), new Set(refusals(theirs)));
        parts += refusals(mine).length;
    }
    assert.ok(parts > 100, `only ${parts} refused parts`);
});

test('it does not matter how the bytes are divided', async () => {
    const bytes = faulty(99);
    const whole = await decoded(bytes);
    const divided = await decoded(bytes, 7);
    assert.equal(divided.table(null), whole.table(null));
    assert.deepEqual(sayings(divided), sayings(whole));
});

test('a fault of the input is not taken for its end', async () => {
    const report = new TextEncoder().encode('TTAA 66001 68994 99011 10427 34019 00117 09632 34019 88999 77999=\n');
    const decoder = await Decoder.load(wasm);
    let calls = 0;
    const input = () => {
        calls += 1;
        if (calls > 1) {
            throw new DOMException('The file has changed.', 'NotReadableError');
        }
        return report;
    };
    assert.throws(() => decoder.add(input), /The file has changed/);
});

test('groups are found where they stand', async () => {
    for (const path of bulletinFiles()) {
        const bytes = readFileSync(path);
        const text = bytes.toString('latin1');
        const decoder = await decoded(bytes);
        for (const part of decoder.entries(0, 1_000_000).flatMap((entry) => decoder.detail(entry.id).parts)) {
            assert.match(text.slice(part.offset, part.offset + 4), /^(TT|UU|XX|II)(AA|BB|CC|DD)$/);
            assert.equal(text.slice(0, part.offset).split(/\r+\n|\n|\r/).length, part.line, path);
            let last = 4;
            for (const [begin, end] of part.groups) {
                assert.ok(begin >= last && end > begin, path);
                assert.doesNotMatch(text.slice(part.offset + begin, part.offset + end), /\s/);
                last = end;
            }
            for (const { groups } of part.mends) {
                assert.ok(groups[0] + groups[1] <= part.groups.length);
            }
        }
    }
});

test('a level is read from groups that hold its temperature', async () => {
    const bytes = readFileSync(join(PROJECT, 'web/example.txt'));
    const text = bytes.toString('latin1');
    const decoder = await decoded(bytes);
    let checked = 0;
    for (const { id } of decoder.entries(0, 1_000_000)) {
        const { parts, levels } = decoder.detail(id);
        for (const { row, origins } of levels) {
            assert.ok(origins.length > 0);
            const temperature = row.split(',')[5]!;
            const groups = origins.flatMap(([part, first, count]) =>
                parts[part]!.groups
                    .slice(first, first + count)
                    .map(([begin, end]) => text.slice(parts[part]!.offset + begin, parts[part]!.offset + end)),
            );
            if (temperature !== '') {
                // TTT: tenths of a degree, the last figure odd below zero.
                const tenths = Math.round(Math.abs(Number(temperature)) * 10);
                const below = temperature.startsWith('-');
                assert.equal(tenths % 2, below ? 1 : 0);
                assert.ok(
                    groups.some((group) => group.startsWith(String(tenths).padStart(3, '0'))),
                    `${row}: ${groups.join(' ')}`,
                );
                checked += 1;
            }
        }
    }
    assert.ok(checked > 150, String(checked));
});

test('the module asks for nothing but bytes and an empty environment', () => {
    const imports = WebAssembly.Module.imports(new WebAssembly.Module(wasm)).map(({ name }) => name);
    const known = /^(corvane_input|emscripten_notify_memory_growth|environ_(sizes_)?get|fd_(write|read|seek|close)|proc_exit)$/;
    assert.deepEqual(
        imports.filter((name) => !known.test(name)),
        [],
    );
    assert.ok(execFileSync(FEED, ['--version'], { encoding: 'utf8' }).startsWith('corvane-feed'));
});
