// Makes dist/corvane.html: the page with its style, its script, its worker and the decoder in one file.
//
// build/corvane.wasm must have been built before (scripts/page does both).
import { build } from 'esbuild';
import { createHash } from 'node:crypto';
import { mkdir, readFile, writeFile } from 'node:fs/promises';
import { dirname, join } from 'node:path';
import { fileURLToPath } from 'node:url';
import { constants, gzipSync } from 'node:zlib';

const here = dirname(fileURLToPath(import.meta.url));
const LARGEST = 700_000;

const common = {
    absWorkingDir: here,
    bundle: true,
    write: false,
    minify: true,
    format: 'iife',
    target: 'es2022',
    charset: 'ascii',
    loader: { '.gz': 'binary', '.txt': 'text' },
    legalComments: 'none',
};

async function bundled(entry, plugins = []) {
    const result = await build({ ...common, entryPoints: [entry], plugins });
    return result.outputFiles[0].text;
}

// A worker of a page opened from disk can only be made of a text that the page holds.
const workerAsText = {
    name: 'worker',
    setup(steps) {
        steps.onResolve({ filter: /^worker:/ }, ({ path }) => ({ path: path.slice(7), namespace: 'worker' }));
        steps.onLoad({ filter: /.*/, namespace: 'worker' }, async ({ path }) => ({
            contents: await bundled(join('src', path)),
            loader: 'text',
        }));
    },
};

function hash(text) {
    return `'sha256-${createHash('sha256').update(text).digest('base64')}'`;
}

const wasm = await readFile(join(here, 'build/corvane.wasm'));
await writeFile(join(here, 'build/corvane.wasm.gz'), gzipSync(wasm, { level: constants.Z_BEST_COMPRESSION }));

const style = (await build({ ...common, entryPoints: ['src/style.css'] })).outputFiles[0].text;
const script = await bundled('src/main.ts', [workerAsText]);
const parts = {
    // Nothing may be loaded from anywhere; what runs is known by its hash.
    policy: [
        "default-src 'none'",
        `script-src ${hash(script)} 'wasm-unsafe-eval'`,
        `style-src ${hash(style)}`,
        'worker-src blob:',
        'img-src blob: data:',
        "base-uri 'none'",
        "form-action 'none'",
    ].join('; '),
    style,
    script,
};
const template = await readFile(join(here, 'src/page.html'), 'utf8');
const page = template.replace(/\{\{(\w+)\}\}/g, (_, name) => parts[name]);

if (Buffer.byteLength(page) > LARGEST) {
    throw new Error(`the page has ${Buffer.byteLength(page)} bytes, more than ${LARGEST}`);
}
await mkdir(join(here, 'dist'), { recursive: true });
await writeFile(join(here, 'dist/corvane.html'), page);
