// A browser with the page in it, and what every test checks: no fault in the console, no request to anywhere.
import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { mkdtempSync, readdirSync, readFileSync, rmSync, utimesSync, writeFileSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { after, before } from 'node:test';
import { pathToFileURL } from 'node:url';
import { chromium, type Browser, type BrowserContextOptions, type Page } from 'playwright-core';

function setting(name: string): string {
    const value = process.env[name];
    assert.ok(value, `${name} is not set; run scripts/check-page`);
    return value;
}

export const PAGE = setting('CORVANE_PAGE');
export const FEED = join(setting('CORVANE_PROGRAMS'), 'corvane-feed');
export const SKEWT = join(setting('CORVANE_PROGRAMS'), 'corvane-skewt');
export const PROJECT = setting('CORVANE_PROJECT');
export const EXAMPLE = join(PROJECT, 'web/example.txt');

export const example = readFileSync(EXAMPLE, 'latin1');

let browser: Browser;
let scratch: string;

/** Has a browser and a scratch folder made for the tests of a file. */
export function useBrowser(): void {
    before(async () => {
        scratch = mkdtempSync(join(tmpdir(), 'corvane page ')); // a path with blanks
        browser = await chromium.launch({
            executablePath: '/usr/bin/chromium',
            chromiumSandbox: false,
            args: [
                '--disable-gpu',
                '--disable-quic',
                '--no-first-run',
                '--disable-background-networking',
                '--disable-component-update',
                '--disable-sync',
            ],
        });
    });
    after(async () => {
        await browser.close();
        rmSync(scratch, { recursive: true });
    });
}

/** Writes a file and gives its path. */
export function file(name: string, content: string | Uint8Array): string {
    const path = join(scratch, name);
    writeFileSync(path, content, typeof content === 'string' ? 'latin1' : undefined);
    return path;
}

/** Changes a file that a page may have been given. */
export function change(path: string): void {
    writeFileSync(path, 'something else');
    const later = Date.now() / 1000 + 10; // browsers look at whole seconds
    utimesSync(path, later, later);
}

/** What corvane-feed writes to standard output. */
export function feed(...args: string[]): string {
    // It exits with 1 when something is refused or no part is found.
    return execFileSync('sh', ['-c', '"$@" 2>/dev/null || [ $? -eq 1 ]', 'sh', FEED, ...args], {
        encoding: 'latin1',
        maxBuffer: 1 << 28,
    });
}

export interface Options extends BrowserContextOptions {
    /** The address to open instead of the file. */
    url?: string;
    fragment?: string;
}

/** Opens the page in a profile of its own, lets a test work with it, and asks for what every test must keep. */
export async function withPage(options: Options, work: (page: Page) => Promise<void>): Promise<void> {
    const { url = pathToFileURL(PAGE).href, fragment = '', ...rest } = options;
    const context = await browser.newContext({ viewport: { width: 1600, height: 1000 }, ...rest });
    try {
        const page = await context.newPage();
        const faults: string[] = [];
        const requests: string[] = [];
        page.on('console', (message) => {
            faults.push(`${message.type()}: ${message.text()}`);
        });
        page.on('pageerror', (fault) => {
            faults.push(String(fault));
        });
        context.on('request', (request) => {
            requests.push(request.url());
        });
        await page.goto(url + fragment);
        await work(page);
        assert.deepEqual(faults, []);
        const elsewhere = requests.filter((to) => !/^(blob|data):/.test(to) && to.split('#')[0] !== url);
        assert.deepEqual(elsewhere, []);
    } finally {
        await context.close();
    }
}

/** Waits until a sounding, or why there is none, is shown. */
export async function shown(page: Page): Promise<void> {
    await page.waitForSelector('#picture svg, #picture .none');
}

export async function readFiles(page: Page, ...paths: string[]): Promise<void> {
    await page.setInputFiles('#files', paths);
    await shown(page);
}

export async function openExample(page: Page): Promise<void> {
    await page.click('#example');
    await shown(page);
}

/** The texts of the cells of the list, row by row. */
export function listed(page: Page): Promise<string[]> {
    return page.$$eval('#list .rows [role=row]', (rows) =>
        rows.map((row) => [...row.children].map((cell) => cell.textContent).join('|')),
    );
}

/** Chooses the first entry that matches a text, by the filter. */
export async function choose(page: Page, words: string): Promise<void> {
    await page.fill('#filter', words);
    const before = await page.textContent('#title');
    await page.locator('#list .rows [role=row]').first().click();
    const station = await page.locator('#list .rows [aria-selected=true] [role=gridcell]').first().textContent();
    if (!before?.includes(station ?? '')) {
        await page.waitForFunction((old) => document.querySelector('#title')?.textContent !== old, before);
    }
}

/** Drops a file on the page, as the browser itself reports one that is dragged over it. */
export async function drop(page: Page, path: string): Promise<void> {
    const client = await page.context().newCDPSession(page);
    const data = { items: [], files: [path], dragOperationsMask: 1 };
    for (const type of ['dragEnter', 'dragOver', 'drop'] as const) {
        await client.send('Input.dispatchDragEvent', { type, x: 300, y: 300, data });
    }
    await client.detach();
}

/** What a click makes the page give to keep: name and content. */
export async function download(page: Page, button: string): Promise<{ name: string; content: Buffer }> {
    const [got] = await Promise.all([page.waitForEvent('download'), page.click(button)]);
    return { name: got.suggestedFilename(), content: readFileSync(await got.path()) };
}

/** Bulletins again and again, each time with other station numbers, as long as wanted. */
export function manyBulletins(bytes: number, bulletins = example): string {
    const heads = /^(TT[A-D]{2} \d{4}[\d/] )(\d{5})/gm;
    const stations = [...new Set([...bulletins.matchAll(heads)].map((match) => match[2]!))];
    const pieces: string[] = [];
    let length = 0;
    for (let i = 0; length < bytes; i += 1) {
        const number = (station: string) => String(10000 + ((i * stations.length + stations.indexOf(station)) % 80000));
        const piece = bulletins.replace(heads, (_, before: string, station: string) => before + number(station));
        pieces.push(piece, '\n');
        length += piece.length + 1;
    }
    return pieces.join('');
}

/**
 * Bulletins as long as those of a day, 0.65 MB: reports of 106 stations again and again, in lines as they are sent, and
 * as in such a day about as many NIL reports as others.
 */
export function dayOfBulletins(): string {
    const reports = readFileSync(join(PROJECT, 'examples/bulletins/us-2022-07-13.txt'), 'latin1').trim();
    const bulletins = reports.split('\n').map((report) => {
        const [mmmm, date, station] = report.split(' ');
        const lines = report.replace(/(.{60,64}) /g, '$1\n');
        return `USUS50 KWBC 130000\n${lines}\n${mmmm} ${date!.slice(0, 4)}/ ${99999 - Number(station)} NIL=\n`;
    });
    return manyBulletins(640_000, bulletins.join(''));
}

/** Keeps a picture of the page when CORVANE_SCREENSHOTS names a folder. */
export async function screenshot(page: Page, name: string, fullPage = false): Promise<void> {
    const folder = process.env['CORVANE_SCREENSHOTS'];
    if (folder) {
        await page.screenshot({ path: join(folder, `${name}.png`), fullPage });
    }
}

/** The processor time of the longest task of a page's main thread during some work, milliseconds. */
export async function longestTask(page: Page, work: () => Promise<void>): Promise<number> {
    await browser.startTracing(page, { categories: ['toplevel', '__metadata'] });
    await work();
    interface Event {
        name: string;
        pid: number;
        tid: number;
        tdur?: number;
        args?: { name?: string };
    }
    const { traceEvents } = JSON.parse((await browser.stopTracing()).toString()) as { traceEvents: Event[] };
    const threads = new Set(
        traceEvents
            .filter((event) => event.name === 'thread_name' && event.args?.name === 'CrRendererMain')
            .map(({ pid, tid }) => `${pid}/${tid}`),
    );
    const times = traceEvents
        .filter((event) => event.tdur !== undefined && threads.has(`${event.pid}/${event.tid}`))
        .map((event) => event.tdur! / 1000);
    assert.ok(times.length > 100, `only ${times.length} tasks`);
    return Math.max(...times);
}

/** The files of reports and bulletins of the project, and those of the folder CORVANE_BULLETINS if it is set. */
export function bulletinFiles(): string[] {
    const folders = ['tests', 'examples', 'web'].map((folder) => join(PROJECT, folder));
    const extra = process.env['CORVANE_BULLETINS'];
    return [...folders, ...(extra ? [extra] : [])].flatMap((folder) =>
        readdirSync(folder, { recursive: true, encoding: 'utf8' })
            .filter((name) => name.endsWith('.txt') && !/node_modules|build|CMakeLists/.test(name))
            .map((name) => join(folder, name))
            .filter((path) => /TT|XX|UU|II/.test(readFileSync(path, 'latin1'))),
    );
}
