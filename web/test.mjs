// Runs the browser tests: all, or those whose names match the pattern given; with --speed the benchmarks instead.
// scripts/check-page sets what they need.
import { build } from 'esbuild';
import { spawnSync } from 'node:child_process';
import { readdirSync } from 'node:fs';
import { cpus } from 'node:os';
import { dirname, join } from 'node:path';
import { fileURLToPath } from 'node:url';

const here = dirname(fileURLToPath(import.meta.url));
const [pattern] = process.argv.slice(2);
const speed = pattern === '--speed';
const tests = readdirSync(join(here, 'tests')).filter((name) => name.endsWith(speed ? '.bench.ts' : '.test.ts'));
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
const options = ['--test', '--enable-source-maps', `--test-concurrency=${speed ? 1 : cpus().length}`];
if (pattern && !speed) {
    options.push(`--test-name-pattern=${pattern}`);
}
const files = tests.map((name) => join(outdir, name.replace(/\.ts$/, '.mjs')));
const { status } = spawnSync(process.execPath, [...options, ...files], { stdio: 'inherit' });
process.exitCode = status ?? 1;
