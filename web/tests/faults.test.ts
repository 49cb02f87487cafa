// Bad input, hostile input, and that nothing leaves the page.
import assert from 'node:assert/strict';
import { mkdirSync, readFileSync } from 'node:fs';
import { createServer } from 'node:http';
import type { AddressInfo } from 'node:net';
import { dirname, join } from 'node:path';
import { test } from 'node:test';
import type { Page } from 'playwright-core';
import { change, choose, EXAMPLE, example, feed, download, file, openExample, PAGE, readFiles, shown, useBrowser, withPage } from './support';

useBrowser();

async function complaint(page: Page, path: string): Promise<string> {
    await page.setInputFiles('#files', path);
    await page.waitForFunction(() => document.querySelector('#message')?.textContent !== '', undefined, { timeout: 120_000 });
    return (await page.textContent('#message'))!;
}

/** Cancels a reading as soon as the page offers it. */
async function cancelReading(page: Page, path: string): Promise<void> {
    await page.evaluate(() => {
        const progress = document.querySelector<HTMLElement>('#progress')!;
        new MutationObserver((_, observer) => {
            if (!progress.hidden) {
                observer.disconnect();
                document.querySelector<HTMLElement>('#cancel')!.click();
            }
        }).observe(progress, { attributes: true });
    });
    await page.setInputFiles('#files', path);
    await page.waitForFunction(() => /cancelled\.$/.test(document.querySelector('#message')?.textContent ?? ''));
    assert.ok(!(await page.isVisible('#progress')));
}

const BAD: [name: string, content: string | Uint8Array, sentence: RegExp][] = [
    ['empty.txt', '', /^empty\.txt is empty\.$/],
    ['blank.txt', ' \r\n\r\n', /^blank\.txt holds no part of a sounding/],
    ['photo.png', '\x89PNG\r\n\x1a\n\0\0\0\rIHDR', /^photo\.png is a PNG picture\./],
    ['photo.jpg', '\xff\xd8\xff\xe0\0\x10JFIF', /^photo\.jpg is a JPEG picture\./],
    ['letter.pdf', '%PDF-1.7\n', /^letter\.pdf is a PDF document\./],
    ['archive.txt.gz', '\x1f\x8b\x08\0\0\0', /^archive\.txt\.gz is compressed with gzip\. Unpack it first\./],
    ['sounding.bufr', 'IUSA01 KWBC 130000\r\r\nBUFR\0\0\xff\x04', /^sounding\.bufr is in the binary code form BUFR/],
    ['letter.txt', 'Dear colleagues, nothing to report today.\n', /^letter\.txt holds no part of a sounding/],
    ['utf16.txt', '\xff\xfeh\0e\0l\0l\0o\0', /^utf16\.txt is UTF-16 text and holds no part/],
    ['<img src=x onerror=alert(1)>.txt', 'nothing', /^<img src=x onerror=alert\(1\)>\.txt holds no part/],
];

for (const [name, content, sentence] of BAD) {
    test(`${name} is explained in a sentence`, async () => {
        // A file name may hold anything but a solidus.
        const path = file(name, content);
        await withPage({}, async (page) => {
            assert.match(await complaint(page, path), sentence);
            assert.ok(await page.isVisible('#start'));
        });
    });
}

test('a bad file leaves what was shown before', async () => {
    await withPage({}, async (page) => {
        await openExample(page);
        assert.match(await complaint(page, file('photo.png', '\x89PNG\r\n\x1a\n')), /^photo\.png is a PNG/);
        assert.ok(await page.isVisible('#picture svg'));
        await page.selectOption('#unit', 'mps'); // the decoder still answers
        await page.waitForFunction(() => document.querySelector('#levels thead')?.textContent?.includes('m/s'));
    });
});

test('a folder is explained in a sentence', async () => {
    await withPage({}, async (page) => {
        const folder = join(dirname(file('x', '')), 'folder');
        mkdirSync(folder);
        const client = await page.context().newCDPSession(page);
        const data = { items: [], files: [folder], dragOperationsMask: 1 };
        await client.send('Input.dispatchDragEvent', { type: 'dragEnter', x: 300, y: 300, data });
        await client.send('Input.dispatchDragEvent', { type: 'drop', x: 300, y: 300, data });
        await page.waitForFunction(() => document.querySelector('#message')?.textContent !== '');
        assert.match((await page.textContent('#message'))!, /^folder (cannot be read|is empty)/);
    });
});

test('a file that changes after it was read leaves picture and table', async () => {
    const path = file('growing.txt', example);
    const other = file('other.txt', 'TTAA 66001 68994 99011 10427 34019 00117 09632 34019 88999 77999=');
    await withPage({}, async (page) => {
        await readFiles(page, path, other);
        change(path);
        await choose(page, '72327');
        await page.waitForFunction(() => document.querySelector('#message')?.textContent !== '');
        assert.equal(await page.textContent('#message'), 'growing.txt has changed since it was read. Open it again.');
        assert.equal(await page.textContent('#title'), 'TEMP 72327, day 13, 00 UTC');
        assert.ok(await page.isVisible('#picture svg'));
        assert.ok((await page.locator('#levels tbody tr').count()) > 100);
        assert.match((await page.textContent('#parts'))!, /Part C.*mended id: 63001.*The text can no longer be read\./);
        assert.ok(await page.isDisabled('#link'));
        await page.hover('#levels tbody tr:nth-child(3)'); // has no groups to mark
        const rows = feed('--soundings', EXAMPLE).split('\n').filter((row) => row.startsWith('TEMP,72327,'));
        assert.ok((await download(page, '#csv')).content.toString('latin1').endsWith(`${rows.join('\n')}\n`));
        // The file that has not changed has its text.
        await choose(page, '68994');
        await page.waitForSelector('#parts pre');
        assert.ok(await page.isEnabled('#link'));
    });
});

test('a file that changes before it is read is explained in a sentence', async () => {
    const path = file('replaced.txt', example);
    await withPage({}, async (page) => {
        // The browser knows the file, the page does not yet.
        await page.evaluate(() => {
            document.querySelector('#files')!.addEventListener('change', (event) => event.stopImmediatePropagation(), {
                capture: true,
                once: true,
            });
        });
        await page.setInputFiles('#files', path);
        // It looks at the file only when it is asked for its size or time.
        await page.$eval('#files', (input) => {
            const given = (input as HTMLInputElement).files![0]!;
            return [given.size, given.lastModified];
        });
        change(path);
        await page.evaluate(() => document.querySelector('#files')!.dispatchEvent(new Event('change')));
        await page.waitForFunction(() => document.querySelector('#message')?.textContent !== '');
        assert.match((await page.textContent('#message'))!, /^replaced\.txt cannot be read\./);
        assert.ok(await page.isVisible('#start'));
    });
});

test('a fault of what was read before does not end a new reading', async () => {
    await withPage({}, async (page) => {
        await page.addInitScript(() => {
            const workers: Worker[] = [];
            window.Worker = class extends Worker {
                constructor(url: string | URL) {
                    super(url);
                    workers.push(this);
                }
            };
            Object.assign(window, {
                fail: (index: number) => {
                    const data = { type: 'failed', message: `worker ${index} has failed` };
                    workers[index]!.onmessage!(new MessageEvent('message', { data }));
                },
            });
        });
        await page.reload();
        await openExample(page);
        const path = file('long.bin', new Uint8Array(50_000_000).fill(0x41));
        await page.setInputFiles('#files', path);
        await page.waitForSelector('#progress:not([hidden])');
        await page.evaluate('fail(0)');
        assert.equal(await page.textContent('#message'), 'worker 0 has failed');
        assert.ok(await page.isVisible('#progress'));
        await page.evaluate('fail(1)');
        assert.equal(await page.textContent('#message'), 'worker 1 has failed');
        assert.ok(!(await page.isVisible('#progress')));
        await page.evaluate('fail(1)'); // it is no longer there
        // The sounding shown can still be drawn.
        await page.selectOption('#unit', 'mps');
        await page.waitForFunction(() => document.querySelector('#levels thead')?.textContent?.includes('m/s'));
    });
});

test('UTF-16 bulletins are read, and the page says so', async () => {
    const path = file('wide.txt', Buffer.from(`\ufeff${example}`, 'utf16le'));
    await withPage({}, async (page) => {
        assert.match(await complaint(page, path), /^wide\.txt is UTF-16 text\. It is read as if/);
        const { content } = await download(page, '#all-tables');
        assert.equal(content.toString('latin1'), feed('--soundings', path));
        assert.match((await page.textContent('#parts pre'))!, /^TTAA 630.. 70414/);
    });
});

test('100 MB of noise end in a sentence, and can be cancelled', async () => {
    const noise = new Uint8Array(100_000_000);
    let seed = 1;
    for (let i = 0; i < noise.length; i += 1) {
        seed = (Math.imul(seed, 1103515245) + 12345) >>> 0;
        noise[i] = seed >>> 24;
    }
    const path = file('noise.bin', noise);
    await withPage({}, async (page) => {
        await cancelReading(page, path);
        assert.equal(await page.textContent('#message'), 'Reading of noise.bin cancelled.');
        await page.setInputFiles('#files', path);
        await page.waitForFunction(
            () => /holds no part|parts?: 0 decoded/.test(document.body.innerText),
            undefined,
            { timeout: 120_000 },
        );
    });
});

test('a reading that is cancelled leaves what was shown before', async () => {
    await withPage({}, async (page) => {
        await openExample(page);
        await cancelReading(page, file('long.bin', new Uint8Array(100_000_000).fill(0x41)));
        await page.selectOption('#unit', 'mps');
        await page.waitForFunction(() => document.querySelector('#levels thead')?.textContent?.includes('m/s'));
        assert.match((await page.textContent('#summary'))!, /^example: 18 parts/);
    });
});

test('markup in a report is text', async () => {
    const call = '<SCRIPT>ALERT(1)</SCRIPT>';
    await withPage({}, async (page) => {
        await page.setInputFiles(
            '#files',
            file(
                'markup.txt',
                `<script>document.title = 1</script>\n"><img src=x onerror=alert(1)>\n` +
                    `UUAA ${call} 13001 99240 70759 08045 99015 28848 09514 00136 27447 09518 88999 77999=\n` +
                    `UUBB <b>x</b> 1300/ <img src=x onerror=alert(1)> 99240 70759 08045=`,
            ),
        );
        await shown(page);
        assert.equal(await page.locator('img:not(#sheet img), script:not(body > script)').count(), 0);
        assert.ok((await page.textContent('#parts'))!.includes(call));
        assert.ok((await page.textContent('#list'))!.includes(call.slice(0, 4)));
    });
});

test('a report in a link is text, too', async () => {
    const fragment = `#report=${encodeURIComponent('TTAA <img src=x onerror=alert(1)> 68994 99011 10427 34019=')}`;
    await withPage({ fragment }, async (page) => {
        await shown(page);
        assert.equal(await page.locator('#work img:not(#sheet img)').count(), 0);
    });
});

test('the policy of the page lets nothing out', async () => {
    let hits = 0;
    const server = createServer((_, response) => {
        hits += 1;
        response.end();
    });
    await new Promise<void>((ready) => server.listen(0, '127.0.0.1', ready));
    const port = (server.address() as AddressInfo).port;
    const html = readFileSync(PAGE, 'utf8');
    const policy = /http-equiv="Content-Security-Policy" content="([^"]+)"/.exec(html)![1]!;
    assert.ok(policy.startsWith("default-src 'none';"));
    assert.doesNotMatch(policy, /https?:|unsafe-inline|'unsafe-eval'|\*/);
    try {
        const refused: string[] = [];
        await withPage({}, async (page) => {
            const outcome = page.evaluate(async (url) => {
                const blocked: string[] = [];
                document.addEventListener('securitypolicyviolation', (event) => blocked.push(event.effectiveDirective));
                await fetch(url).catch(() => undefined);
                const image = new Image();
                image.src = `${url}image`;
                const script = document.createElement('script');
                script.src = `${url}script`;
                document.head.append(script);
                const inline = document.createElement('script');
                inline.textContent = 'window.injected = true';
                document.head.append(inline);
                const frame = document.createElement('iframe');
                frame.src = `${url}frame`;
                document.body.append(frame);
                await new Promise((wait) => setTimeout(wait, 500));
                return { blocked, injected: 'injected' in window };
            }, `http://127.0.0.1:${port}/`);
            const { blocked, injected } = await outcome;
            refused.push(...blocked);
            assert.equal(injected, false);
        }).catch((fault: unknown) => {
            // The browser reports every violation in the console, as it should.
            assert.match(String(fault), /Content Security Policy/);
        });
        for (const directive of ['connect-src', 'img-src', 'script-src-elem', 'frame-src']) {
            assert.ok(refused.includes(directive), `${directive} in ${refused.join(' ')}`);
        }
        assert.equal(hits, 0);
    } finally {
        server.close();
    }
});

test('the page loads nothing', () => {
    const html = readFileSync(PAGE, 'utf8').replace(/<script>[\s\S]*<\/script>/, '');
    assert.doesNotMatch(html, /\b(src|href)="(?!data:)/);
    assert.ok(readFileSync(EXAMPLE).length < 20_000);
});
