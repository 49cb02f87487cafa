// Runs the browser tests: all, or those whose names match the pattern given. scripts/check-page sets what they need.
import { build } from 'esbuild';
import { spawnSync } from 'node:child_process';
import { readdirSync } from 'node:fs';
import { dirname, join } from 'node:path';
import { fileURLToPath } from 'node:url';

const here = dirname(fileURLToPath(import.meta.url));
const tests = readdirSync(join(here, 'tests')).filter((name) => name.endsWith('.test.ts'));
const outdir = join(here, 'build/tests');
await build({
    entryPoints: tests.map((name) => join(here, 'tests', name)),
    outdir,
    outExtension: { '.js': '.mjs' },
    bundle: true,
    format: 'esm',
    platform: 'node',
    target: 'node18',
    packages: 'external',
    sourcemap: 'inline',
    logLevel: 'warning',
});
const [pattern] = process.argv.slice(2);
const options = ['--test', '--enable-source-maps', '--test-concurrency=1'];
if (pattern) {
    options.push(`--test-name-pattern=${pattern}`);
}
const files = tests.map((name) => join(outdir, name.replace(/\.ts$/, '.mjs')));
const { status } = spawnSync(process.execPath, [...options, ...files], { stdio: 'inherit' });
process.exitCode = status ?? 1;
