// Accessibility: axe-core finds nothing in any state of the page.
import assert from 'node:assert/strict';
import { readFileSync } from 'node:fs';
import { createRequire } from 'node:module';
import { join } from 'node:path';
import { test } from 'node:test';
import type { Page } from 'playwright-core';
import { choose, file, openExample, PROJECT, readFiles, screenshot, useBrowser, withPage } from './support';

useBrowser();

const axe = readFileSync(createRequire(join(PROJECT, 'web/package.json')).resolve('axe-core/axe.min.js'), 'utf8');

interface Finding {
    id: string;
    nodes: { html: string; failureSummary: string }[];
}

/** What axe-core finds, and how many checks it made. */
async function findings(page: Page): Promise<string[]> {
    // Through the debugger, where the policy of the page does not reach.
    const client = await page.context().newCDPSession(page);
    await client.send('Runtime.evaluate', { expression: axe });
    const { result, exceptionDetails } = await client.send('Runtime.evaluate', {
        expression: `axe.run(document, { rules: { 'target-size': { enabled: true } } })
            .then(({ violations, passes }) => JSON.stringify({ violations, passes: passes.length }))`,
        awaitPromise: true,
    });
    assert.equal(exceptionDetails, undefined);
    const { violations, passes } = JSON.parse(result.value as string) as { violations: Finding[]; passes: number };
    assert.ok(passes > 15, `only ${passes} checks passed`);
    return violations.flatMap(({ id, nodes }) => nodes.map((node) => `${id}: ${node.html}: ${node.failureSummary}`));
}

for (const colorScheme of ['light', 'dark'] as const) {
    for (const width of [1600, 380]) {
        test(`no violation in ${colorScheme}, ${width} pixels wide`, async () => {
            await withPage({ colorScheme, viewport: { width, height: 900 } }, async (page) => {
                assert.deepEqual(await findings(page), []);
                if (width === 1600) {
                    await screenshot(page, `start-${colorScheme}`);
                }
                await openExample(page);
                for (const words of ['72327', '70414', '78486', '91366']) {
                    await choose(page, words);
                    assert.deepEqual(await findings(page), [], words);
                }
                await page.hover('#levels tbody tr:nth-child(3)');
                await page.fill('#filter', 'nothing like that');
                assert.deepEqual(await findings(page), []);
                await page.fill('#filter', '');
                await page.check('#nil');
                await choose(page, '78526');
                assert.deepEqual(await findings(page), []);
                await page.setInputFiles('#files', file('photo.png', '\x89PNG\r\n\x1a\n'));
                await page.waitForFunction(() => document.querySelector('#message')?.textContent !== '');
                assert.deepEqual(await findings(page), []);
                await page.click('#paste');
                assert.deepEqual(await findings(page), []);
            });
        });
    }
}

test('no violation while a file is read', async () => {
    await withPage({}, async (page) => {
        // What a reading shows, without the reading, which would be over too soon.
        await page.evaluate(() => {
            document.querySelector<HTMLElement>('#progress')!.hidden = false;
            document.querySelector('#progress-text')!.textContent = 'Reading long.txt: 40 % ';
            document.querySelector('progress')!.value = 0.4;
        });
        assert.deepEqual(await findings(page), []);
        await screenshot(page, 'progress');
    });
});

test('a screen reader is given names, roles and what is chosen', async () => {
    await withPage({}, async (page) => {
        await readFiles(page, file('one.txt', 'TTAA 66001 68994 99011 10427 34019 00117 09632 34019 88999 77999='));
        const tree = await page.locator('body').ariaSnapshot();
        for (const line of [
            /grid "Soundings"/,
            /columnheader "Station/,
            /row "68994 16\/00Z TEMP A.*" \[selected\]/,
            /searchbox "Filter the list"/,
            /checkbox "Show NIL/,
            /progressbar|status/,
            /article "TEMP 68994, day 16, 00 UTC"/,
            /region "Levels"/,
            /grid "Levels"/,
            /region "Bulletin text"/,
        ]) {
            assert.match(tree, line);
        }
    });
});
