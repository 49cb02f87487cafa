// What comes in, and that its rows are those of the program.
import assert from 'node:assert/strict';
import { readFileSync } from 'node:fs';
import { createServer } from 'node:http';
import type { AddressInfo } from 'node:net';
import { test } from 'node:test';
import type { Page } from 'playwright-core';
import {
    bulletinFiles,
    choose,
    download,
    EXAMPLE,
    example,
    feed,
    file,
    listed,
    openExample,
    PAGE,
    readFiles,
    shown,
    useBrowser,
    withPage,
} from './support';

useBrowser();

test('the page has at most 700 kB', () => {
    assert.ok(readFileSync(PAGE).length <= 700_000);
});

test('rows of every file are those of the program', async () => {
    const files = bulletinFiles();
    assert.ok(files.length >= 15, `only ${files.length} files`);
    let compared = 0;
    await withPage({}, async (page) => {
        for (const path of files) {
            const expected = feed('--soundings', path);
            const summary = await page.textContent('#summary');
            await page.setInputFiles('#files', path);
            await page.waitForFunction(
                (before) =>
                    document.querySelector('#summary')?.textContent !== before ||
                    document.querySelector('#message')?.textContent !== '',
                summary,
            );
            if (expected.trimEnd().includes('\n')) {
                const { content } = await download(page, '#all-tables');
                assert.ok(content.equals(Buffer.from(expected, 'latin1')), path);
                compared += 1;
            }
            await page.reload();
        }
    });
    assert.ok(compared >= 10, `only ${compared} files had rows`);
});

test('the summary is that of the program', async () => {
    await withPage({}, async (page) => {
        await readFiles(page, EXAMPLE);
        assert.equal(
            await page.textContent('#summary'),
            'example.txt: 18 parts: 15 decoded (1 mended, 2 with losses, 1 doubtful), 2 NIL, 0 empty, 1 refused.',
        );
    });
});

test('the table of one sounding holds its rows', async () => {
    const [header, ...rows] = feed('--soundings', EXAMPLE).trimEnd().split('\n');
    await withPage({}, async (page) => {
        await openExample(page);
        await choose(page, '72327');
        const { name, content } = await download(page, '#csv');
        assert.equal(name, '72327-1300.csv');
        const mine = rows.filter((row) => row.startsWith('TEMP,72327,'));
        assert.ok(mine.length > 100);
        assert.equal(content.toString('latin1'), [header, ...mine, ''].join('\n'));

        // What is shown are the same numbers. Columns of the table: pres, height, height_computed, tdry, dp, wspd, wdir.
        const cells = await page.$$eval('#levels tbody tr', (shownRows) =>
            shownRows.map((row) => [...row.children].slice(0, 6).map((cell) => cell.firstChild?.textContent ?? '')),
        );
        assert.equal(cells.length, mine.length);
        const value = (text: string) => (text === '' ? null : Number(text.replace('\u2212', '-')));
        const all = cells.flat().join(' ');
        assert.ok(/ \u2212\d+\.\d /.test(all) && !all.includes('-'));
        mine.forEach((row, i) => {
            const [pres, height, , tdry, dp, wspd, wdir] = row.split(',').slice(-7);
            const knots = wspd === '' ? null : Math.round(Number(wspd) / 0.5144);
            assert.deepEqual(
                cells[i]!.map(value),
                [...[pres!, height!, tdry!, dp!, wdir!].map(value), knots],
                row,
            );
        });
        await page.selectOption('#unit', 'mps');
        await page.waitForFunction(() => document.querySelector('#levels thead')?.textContent?.includes('m/s'));
        const speeds = await page.$$eval('#levels tbody td:nth-child(6)', (all) => all.map((cell) => cell.textContent));
        assert.deepEqual(
            speeds,
            mine.map((row) => row.split(',').at(-2)!).map((wspd) => (wspd === '' ? '' : Number(wspd).toFixed(1))),
        );
    });
});

test('a dropped file is read', async () => {
    const path = file('some bulletins.txt', example);
    await withPage({}, async (page) => {
        // As the browser itself reports a file that is dragged over the page and dropped.
        const client = await page.context().newCDPSession(page);
        const data = { items: [], files: [path], dragOperationsMask: 1 };
        await client.send('Input.dispatchDragEvent', { type: 'dragEnter', x: 300, y: 300, data });
        await client.send('Input.dispatchDragEvent', { type: 'dragOver', x: 310, y: 310, data });
        assert.ok(await page.isVisible('#veil'));
        await client.send('Input.dispatchDragEvent', { type: 'drop', x: 310, y: 310, data });
        await shown(page);
        assert.ok(!(await page.isVisible('#veil')));
        assert.match((await page.textContent('#summary'))!, /^some bulletins\.txt: 18 parts/);
    });
});

test('a pasted report is read', async () => {
    await withPage({}, async (page) => {
        await page.evaluate((text) => {
            const clipboardData = new DataTransfer();
            clipboardData.setData('text/plain', text);
            document.body.dispatchEvent(new ClipboardEvent('paste', { clipboardData, bubbles: true, cancelable: true }));
        }, example);
        await shown(page);
        assert.match((await page.textContent('#summary'))!, /^pasted text: 18 parts/);
    });
});

test('a report is read from the box for pasting', async () => {
    await withPage({}, async (page) => {
        await page.click('#paste');
        await page.fill('#paste-text', 'TTAA 66001 68994 99011 10427 34019 88999 77999=');
        await page.click('#paste-read');
        await page.waitForFunction(() => document.querySelector('#summary')?.textContent !== '');
        assert.match((await page.textContent('#summary'))!, /^pasted text: 1 part: /);
        // Cancelling changes nothing.
        await page.click('#paste');
        await page.fill('#paste-text', example);
        await page.click('#paste-dialog button[value=cancel]');
        assert.match((await page.textContent('#summary'))!, /^pasted text: 1 part: /);
    });
});

test('several files are read as one', async () => {
    const [first, second] = [file('a.txt', example.slice(0, 2000)), file('b.txt', example.slice(2000))];
    await withPage({}, async (page) => {
        await readFiles(page, first, second);
        const { name, content } = await download(page, '#all-tables');
        assert.equal(name, 'soundings.csv');
        assert.equal(content.toString('latin1'), feed('--soundings', first, second));
        assert.match((await page.textContent('#parts h4'))!, /[ab]\.txt, line \d+/);
    });
});

test('a small report travels in a link', async () => {
    await withPage({}, async (page) => {
        await openExample(page);
        await choose(page, '78486');
        const rows = (await download(page, '#csv')).content.toString('latin1');
        await page.click('#link');
        await page.waitForFunction(() => document.querySelector('#link-note')?.textContent !== '');
        const fragment = new URL(page.url()).hash;
        assert.match(fragment, /^#report=USCA02\+KWBC\+130000%0ATTAA\+63001\+78486\+/);
        await withPage({ fragment }, async (other) => {
            await shown(other);
            assert.deepEqual(await listed(other), ['78486|13/00Z|TEMP|ABCD|doubtful']);
            assert.equal((await download(other, '#csv')).content.toString('latin1'), rows);
            // What cannot be shown takes neither the sounding nor its link away.
            await other.setInputFiles('#files', file('rubbish.txt', 'Dear colleagues'));
            await other.waitForFunction(() => document.querySelector('#message')?.textContent !== '');
            assert.equal(new URL(other.url()).hash, fragment);
            // The link goes when something else is read.
            await openExample(other);
            await other.waitForFunction(() => location.hash === '');
        });
        // Or when another sounding is chosen.
        await choose(page, '72327');
        assert.equal(new URL(page.url()).hash, '');
    });
});

async function linkOf(page: Page): Promise<string> {
    await page.click('#link');
    await page.waitForFunction(() => document.querySelector('#link-note')?.textContent !== '');
    return new URL(page.url()).hash;
}

for (const words of ['72327', '70414', '91366', 'drop']) {
    test(`a link shows the same again: ${words}`, async () => {
        await withPage({}, async (page) => {
            await openExample(page);
            await choose(page, words);
            const row = await page.textContent('#list [aria-selected=true]');
            const notes = await page.locator('#parts .notes li').allTextContents();
            assert.ok(notes.length > 0);
            const rows = (await download(page, '#csv')).content.toString('latin1');
            const fragment = await linkOf(page);
            await withPage({ fragment }, async (other) => {
                await shown(other);
                assert.equal((await listed(other)).length, 1);
                assert.equal(await other.textContent('#list [aria-selected=true]'), row);
                assert.deepEqual(await other.locator('#parts .notes li').allTextContents(), notes);
                assert.equal((await download(other, '#csv')).content.toString('latin1'), rows);
            });
        });
    });
}

test('a wholly refused report travels in a link', async () => {
    await withPage({}, async (page) => {
        await readFiles(page, file('refused.txt', 'TTAA 66001 68994 99011 1042/ 34019 00117 09632 34019 88999 77999='));
        const reason = await page.textContent('#parts .notes');
        const fragment = await linkOf(page);
        await withPage({ fragment }, async (other) => {
            await shown(other);
            assert.equal(await other.textContent('#parts .notes'), reason);
            assert.match((await listed(other))[0]!, /refused$/);
        });
    });
});

test('a link holds UTF-16 text as plain text', async () => {
    const text = `USCA02 KWBC 130000\nTTAA 66001 68994 99011 10427 34019 00117 09632 34019 88999 77999=\n`;
    const links: string[] = [];
    for (const path of [file('plain.txt', text), file('wide.txt', Buffer.from(`\ufeff${text}`, 'utf16le'))]) {
        await withPage({}, async (page) => {
            await readFiles(page, path);
            links.push(await linkOf(page));
        });
    }
    assert.match(links[0]!, /^#report=USCA02\+KWBC\+130000%0ATTAA\+66001\+68994\+/);
    assert.equal(links[1], links[0]);
});

test('an empty link and an empty paste are explained in a sentence', async () => {
    await withPage({ fragment: '#report=' }, async (page) => {
        await page.waitForFunction(() => document.querySelector('#message')?.textContent === 'The link is empty.');
        await page.click('#paste');
        await page.click('#paste-read');
        await page.waitForFunction(() => document.querySelector('#message')?.textContent === 'The pasted text is empty.');
        await page.evaluate(() => {
            const clipboardData = new DataTransfer();
            document.body.dispatchEvent(new ClipboardEvent('paste', { clipboardData, bubbles: true, cancelable: true }));
        });
        assert.equal(await page.textContent('#message'), 'What you pasted holds neither text nor a file.');
    });
});

test('a damaged link is explained', async () => {
    await withPage({ fragment: '#report=TTAA%E0%A4%A' }, async (page) => {
        assert.match((await page.textContent('#message'))!, /^The link is damaged/);
    });
});

test('a long report has no link', async () => {
    await withPage({}, async (page) => {
        const text = Array.from({ length: 40 }, () => example.slice(0, 370)).join('');
        await readFiles(page, file('long.txt', `TTAA 66001 68994 ${'99011 '.repeat(1990)}=\n${text}`));
        await choose(page, '68994');
        await page.click('#link');
        await page.waitForFunction(() => /too long/.test(document.querySelector('#link-note')?.textContent ?? ''));
        assert.equal(new URL(page.url()).hash, '');
    });
});

test('the page works over http, too', async () => {
    let hits = 0;
    const server = createServer((request, response) => {
        hits += request.url === '/corvane.html' ? 0 : 1;
        response.setHeader('content-type', 'text/html');
        response.end(readFileSync(PAGE));
    });
    await new Promise<void>((ready) => server.listen(0, '127.0.0.1', ready));
    try {
        const url = `http://127.0.0.1:${(server.address() as AddressInfo).port}/corvane.html`;
        await withPage({ url }, async (page) => {
            await openExample(page);
            assert.equal((await listed(page)).length, 5);
            const { content } = await download(page, '#all-tables');
            assert.equal(content.toString('latin1'), feed('--soundings', EXAMPLE));
        });
        assert.equal(hits, 0);
    } finally {
        server.close();
    }
});
