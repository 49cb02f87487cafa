// Long files: what is shown of them, and that the page stays at the user's service while they are read. How long it all
// takes is measured by speed.bench.ts; here a page that hangs fails for want of an answer within half a minute.
import assert from 'node:assert/strict';
import { test } from 'node:test';
import {
    choose,
    dayOfBulletins,
    download,
    drop,
    feed,
    file,
    listed,
    manyBulletins,
    shown,
    useBrowser,
    withPage,
} from './support';

useBrowser();

/** What the test keeps in the page: answers of the workers by type, the most entries in one, and a held one. */
interface Watched {
    answers: Record<string, number>;
    longest: number;
    hold: boolean;
    release: () => void;
}
declare const watched: Watched;

test('a dropped file of the size of a day is shown', async () => {
    const path = file('day.txt', dayOfBulletins());
    await withPage({}, async (page) => {
        await drop(page, path);
        await shown(page);
        assert.ok(parseInt((await page.textContent('#summary'))!.split(': ')[1]!, 10) > 2000);
        assert.ok(parseInt((await page.textContent('#shown'))!, 10) > 300);
        const { content } = await download(page, '#all-tables');
        assert.equal(content.toString('latin1'), feed('--soundings', path));
    });
});

test('while a file of 10 MB is read the page does what it is asked to', async () => {
    const path = file('long.txt', manyBulletins(10_000_000));
    await withPage({}, async (page) => {
        // Answers of the worker are counted, and the last one is held back until the test lets it go.
        await page.addInitScript(() => {
            const state: Watched = { answers: {}, longest: 0, hold: false, release: () => undefined };
            Object.assign(window, { watched: state });
            window.Worker = class extends Worker {
                override set onmessage(handler: (event: MessageEvent) => void) {
                    this.addEventListener('message', (event: MessageEvent) => {
                        const { type, entries } = event.data as { type: string; entries?: unknown[] };
                        state.answers[type] = (state.answers[type] ?? 0) + 1;
                        state.longest = Math.max(state.longest, entries?.length ?? 0);
                        if (type === 'done' && state.hold) {
                            state.release = () => handler(event);
                        } else {
                            handler(event);
                        }
                    });
                }
            };
        });
        await page.reload();
        await page.click('#example');
        await shown(page);
        await page.evaluate(() => {
            watched.hold = true;
        });
        await page.setInputFiles('#files', path);
        await page.waitForSelector('#progress:not([hidden])');

        // What was read before can be filtered, chosen, drawn and saved.
        await choose(page, '72327');
        await page.selectOption('#unit', 'mps');
        await page.waitForFunction(() => document.querySelector('#levels thead')?.textContent?.includes('m/s'));
        assert.equal((await download(page, '#csv')).name, '72327-1300.csv');
        assert.ok(await page.isVisible('#progress'));

        // The reading tells of itself again and again, and its answers are short.
        await page.waitForFunction(() => watched.answers['done'] === 2, undefined, { timeout: 120_000 });
        assert.match((await page.textContent('#progress-text'))!, /^Reading long\.txt: \d+ % $/);
        const { answers, longest } = await page.evaluate(() => watched);
        assert.ok(answers['progress']! >= 5, JSON.stringify(answers));
        assert.ok(answers['entries']! > 10 && longest <= 500, `${JSON.stringify(answers)} ${longest}`);
        await page.evaluate(() => watched.release());
        await page.waitForFunction(() => /^long\.txt/.test(document.querySelector('#summary')?.textContent ?? ''));
        assert.ok(parseInt((await page.textContent('#summary'))!.split(': ')[1]!, 10) > 15_000);

        // However long the list is, only what is visible of it is in the page.
        await page.focus('#list [role=grid]');
        await page.keyboard.press('End');
        await page.check('#nil');
        await page.locator('#list [role=columnheader] button', { hasText: 'Time' }).click();
        assert.ok((await listed(page)).length < 80);
    });
});
