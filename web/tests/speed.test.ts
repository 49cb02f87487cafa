// Long files: the page answers at once, and the list is there soon. What is measured is processor time where the clock
// would measure what else the machine does.
import assert from 'node:assert/strict';
import { test } from 'node:test';
import type { Page } from 'playwright-core';
import { file, longestTask, manyBulletins, processorTime, shown, useBrowser, withPage } from './support';

useBrowser();

const TRIES = 5;

/** Milliseconds from handing over a file to the list and the first picture. */
async function timeToShow(page: Page, path: string): Promise<number> {
    await page.evaluate(() => {
        const files = document.querySelector<HTMLInputElement>('#files')!;
        files.addEventListener('change', () => performance.mark('given'), true);
        new MutationObserver((_, observer) => {
            if (document.querySelector('#picture svg')) {
                performance.mark('shown');
                observer.disconnect();
            }
        }).observe(document.querySelector('#picture')!, { childList: true });
    });
    await page.setInputFiles('#files', path);
    await shown(page);
    return page.evaluate(() => performance.measure('time', 'given', 'shown').duration);
}

test('a file of 650 kB is shown within a second', async () => {
    const path = file('day.txt', manyBulletins(650_000));
    await withPage({}, async (page) => {
        let best = Infinity;
        for (let i = 0; i < TRIES && best >= 1000; i += 1) {
            await page.reload();
            await page.waitForTimeout(500);
            const before = await processorTime();
            const clock = await timeToShow(page, path);
            const processor = (await processorTime()) - before;
            console.log(`650 kB shown after ${Math.round(clock)} ms, ${Math.round(processor)} ms of processor time`);
            best = Math.min(best, clock, processor);
        }
        assert.ok(best < 1000, `${best} ms`);
    });
});

test('a file of 10 MB leaves the page responsive', async () => {
    const path = file('long.txt', manyBulletins(10_000_000));
    await withPage({}, async (page) => {
        const longest = await longestTask(page, async () => {
            await page.setInputFiles('#files', path);
            await page.waitForSelector('#progress:not([hidden])');
            await page.waitForSelector('#picture svg', { timeout: 120_000 });
            // Walking, filtering and sorting the long list costs no more.
            await page.focus('#list [role=grid]');
            for (let i = 0; i < 10; i += 1) {
                await page.keyboard.press('PageDown');
            }
            await page.check('#nil');
            await page.fill('#filter', 'e');
            await page.locator('#list [role=columnheader] button', { hasText: 'Time' }).click();
            await page.waitForTimeout(200);
        });
        console.log(`longest task while 10 MB are read: ${Math.round(longest)} ms`);
        assert.ok(longest < 100, `${longest} ms`);
        assert.ok(parseInt((await page.textContent('#summary'))!.split(': ')[1]!, 10) > 15_000);
    });
});
