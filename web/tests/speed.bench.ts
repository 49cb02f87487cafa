// How long the page takes, and how long it keeps the user waiting. scripts/check-page --speed runs it.
import { readFileSync } from 'node:fs';
import { test } from 'node:test';
import type { Page } from 'playwright-core';
import { dayOfBulletins, drop, file, longestTask, manyBulletins, shown, useBrowser, withPage } from './support';

useBrowser();

const ROUNDS = 7;

function say(what: string, times: number[]): void {
    const sorted = times.map(Math.round).sort((a, b) => a - b);
    const median = sorted[Math.floor(sorted.length / 2)];
    console.log(`${what}: median ${median} ms, ${sorted[0]} to ${sorted.at(-1)} ms, ${sorted.length} rounds`);
}

/** Milliseconds from dropping a file until the list, and until the first picture is on the screen. */
async function timesToShow(page: Page, path: string): Promise<{ list: number; picture: number }> {
    await page.evaluate(() => {
        document.addEventListener('drop', () => performance.mark('dropped'), true);
        const mark = (name: string, selector: string) => {
            const observer = new MutationObserver(() => {
                if (document.querySelector(selector)) {
                    observer.disconnect();
                    // The next frame is the first one that shows it; what comes after it has been drawn.
                    requestAnimationFrame(() => setTimeout(() => performance.mark(name)));
                }
            });
            observer.observe(document.body, { childList: true, subtree: true });
        };
        mark('list', '#list .rows [role=row]');
        mark('picture', '#picture svg');
    });
    await drop(page, path);
    await shown(page);
    await page.waitForFunction(() => performance.getEntriesByName('picture').length > 0);
    return page.evaluate(() => ({
        list: performance.measure('', 'dropped', 'list').duration,
        picture: performance.measure('', 'dropped', 'picture').duration,
    }));
}

test('a day of bulletins', async () => {
    const given = process.env['CORVANE_DAY'];
    const path = given ?? file('day.txt', dayOfBulletins());
    const times: { list: number; picture: number }[] = [];
    let summary = '';
    for (let i = 0; i < ROUNDS; i += 1) {
        await withPage({}, async (page) => {
            await page.waitForTimeout(500);
            times.push(await timesToShow(page, path));
            summary = (await page.textContent('#summary'))!;
        });
    }
    console.log(`${readFileSync(path).length} bytes, ${summary}`);
    say('list shown after', times.map(({ list }) => list));
    say('picture shown after', times.map(({ picture }) => picture));
});

test('frames while 10 MB are read, then walked, filtered and sorted', async () => {
    const path = file('long.txt', manyBulletins(10_000_000));
    const work = async (page: Page) => {
        await page.setInputFiles('#files', path);
        await page.waitForSelector('#picture svg', { timeout: 120_000 });
        await page.focus('#list [role=grid]');
        for (let i = 0; i < 10; i += 1) {
            await page.keyboard.press('PageDown');
        }
        await page.check('#nil');
        await page.fill('#filter', 'e');
        await page.locator('#list [role=columnheader] button', { hasText: 'Time' }).click();
        await page.waitForTimeout(200);
    };
    const gaps: number[] = [];
    for (let i = 0; i < 3; i += 1) {
        await withPage({}, async (page) => {
            await page.evaluate(() => {
                const found: number[] = [];
                Object.assign(window, { found });
                let last = performance.now();
                const frame = (now: number) => {
                    found.push(now - last);
                    last = now;
                    requestAnimationFrame(frame);
                };
                requestAnimationFrame(frame);
            });
            await work(page);
            const found = (await page.evaluate('found')) as number[];
            const slow = found.filter((gap) => gap > 100).length;
            console.log(`${found.length} frames, ${slow} more than 100 ms after the one before`);
            gaps.push(Math.max(...found));
        });
    }
    say('longest time between two frames', gaps);
    await withPage({}, async (page) => {
        const longest = await longestTask(page, () => work(page));
        console.log(`longest task of the page itself: ${Math.round(longest)} ms of processor time`);
    });
});
