// The list: what it shows, filters and sorts, and how it is walked.
import assert from 'node:assert/strict';
import { test } from 'node:test';
import type { Page } from 'playwright-core';
import { EXAMPLE, example, file, listed, manyBulletins, openExample, readFiles, useBrowser, withPage } from './support';

useBrowser();

const ALL = [
    '70414|13/00Z|TEMP|ABCD|lost',
    '72327|13/00Z|TEMP|ABCD|mended',
    '78486|13/00Z|TEMP|ABCD|doubtful',
    '91366|13/00Z|TEMP|AC|D refused',
    '24.0N 75.9W|28/18Z|DROP|A|lost',
];

async function stations(page: Page): Promise<string[]> {
    return (await listed(page)).map((row) => row.split('|')[0]!);
}

test('soundings are listed with their notes', async () => {
    await withPage({}, async (page) => {
        await openExample(page);
        assert.deepEqual(await listed(page), ALL);
        assert.equal(await page.textContent('#shown'), '5 shown');
        assert.equal(await page.getAttribute('#list [role=grid]', 'aria-rowcount'), '6');
    });
});

for (const width of [1600, 1280, 1000, 380]) {
    test(`nothing in the list is cut off, ${width} pixels wide`, async () => {
        await withPage({ viewport: { width, height: 900 } }, async (page) => {
            const ship = 'UUAA DBLK4 13001 99240 70759 08045 99015 28848 09514 00136 27447 09518 88999 77999=';
            const drop = 'XXAA 13001 99240 71759 08045 99015 28848 09514 00136 27447 09518 88999 77999=';
            await readFiles(page, file('forms.txt', `${example}\n${ship}\n${drop}\n`));
            assert.ok((await stations(page)).includes('24.0N 175.9W'));
            const cut = await page.$$eval('#list [role=gridcell], #list [role=columnheader]', (cells) =>
                cells.filter((cell) => cell.scrollWidth > cell.clientWidth).map((cell) => cell.textContent),
            );
            assert.deepEqual(cut, []);
        });
    });
}

test('NIL parts are hidden until they are asked for', async () => {
    await withPage({}, async (page) => {
        await openExample(page);
        assert.equal(await page.textContent('#nil-text'), 'Show NIL and empty (2)');
        await page.check('#nil');
        assert.deepEqual((await listed(page)).slice(3, 5), ['78526|–|TEMP|A|NIL', '78762|–|TEMP|A|NIL']);
        await page.locator('#list .rows [role=row]', { hasText: '78526' }).click();
        await page.waitForSelector('#picture .none');
        assert.match((await page.textContent('#picture'))!, /holds no data/);
        assert.match((await page.textContent('#parts'))!, /TTAA 78526 NIL/);
        await page.uncheck('#nil');
        assert.deepEqual(await listed(page), ALL);
    });
});

test('a file of NIL parts alone shows them', async () => {
    await withPage({}, async (page) => {
        await readFiles(page, file('nil.txt', 'USUS50 KWBC 130000\nTTAA 72576 NIL=\nTTBB 72576 NIL=\n'));
        assert.deepEqual(await listed(page), ['72576|–|TEMP|AB|NIL']);
    });
});

test('every word of the filter must match', async () => {
    await withPage({}, async (page) => {
        await openExample(page);
        await page.fill('#filter', '13/ ABLE');
        assert.deepEqual(await stations(page), []);
        await page.fill('#filter', 'MENDED 13/');
        assert.deepEqual(await stations(page), ['72327']);
        await page.fill('#filter', '91 TEMP');
        assert.deepEqual(await stations(page), ['91366']);
        await page.fill('#filter', 'drop');
        assert.deepEqual(await stations(page), ['24.0N 75.9W']);
        await page.fill('#filter', 'nothing like that');
        assert.deepEqual(await stations(page), []);
        assert.equal(await page.textContent('#shown'), 'No sounding matches.');
        await page.fill('#filter', '');
        assert.deepEqual(await listed(page), ALL);
    });
});

test('every column sorts, and a second click reverses the order', async () => {
    await withPage({}, async (page) => {
        await openExample(page);
        const sorted: Record<string, string> = {};
        for (const name of ['Time', 'Form', 'Parts', 'Notes', 'Station']) {
            const header = page.locator('#list [role=columnheader]', { hasText: name });
            await header.locator('button').click();
            assert.equal(await header.getAttribute('aria-sort'), 'ascending');
            sorted[name] = (await stations(page)).map((station) => station[1]).join('');
            await header.locator('button').click();
            assert.equal(await header.getAttribute('aria-sort'), 'descending');
            sorted[`${name} down`] = (await stations(page)).map((station) => station[1]).join('');
        }
        // The second figure of the station numbers: 70414, 72327, 78486, 91366, and the drop at 24.0.
        assert.deepEqual(
            [sorted['Time'], sorted['Form'], sorted['Parts'], sorted['Notes'], sorted['Station']].map((all) => all?.length),
            [5, 5, 5, 5, 5],
        );
        assert.equal(sorted['Time']?.at(-1), '4');
        assert.equal(sorted['Form']?.at(-1), '4');
        assert.equal(sorted['Form down']?.[0], '4');
        assert.equal(sorted['Parts']?.[0], '4');
        assert.equal(sorted['Notes']?.[0], '1');
        assert.equal(sorted['Notes down']?.at(-1), '1');
        assert.equal(sorted['Station'], '02814');
        assert.equal(sorted['Station down'], '41820');
    });
});

test('the sounding shown stays chosen while the filter hides it', async () => {
    await withPage({}, async (page) => {
        await openExample(page);
        const chosen = () => page.$$eval('#list [aria-selected=true]', (rows) => rows.map((row) => row.textContent!.slice(0, 5)));
        await page.locator('#list .rows [role=row]', { hasText: '78486' }).click();
        await page.waitForFunction(() => /78486/.test(document.querySelector('#title')?.textContent ?? ''));
        for (const words of ['drop', 'nothing like that']) {
            await page.fill('#filter', words);
            assert.deepEqual(await chosen(), []);
            assert.equal(await page.getAttribute('#list [role=grid]', 'aria-activedescendant'), null);
            await page.fill('#filter', '');
            assert.deepEqual(await chosen(), ['78486']);
        }
        // From the filter the arrow leads to the first one that matches.
        await page.fill('#filter', 'drop');
        await page.keyboard.press('ArrowDown');
        await page.waitForFunction(() => /DROP/.test(document.querySelector('#title')?.textContent ?? ''));
        assert.deepEqual(await chosen(), ['24.0N']);
    });
});

test('a sounding that is chosen keeps its colour under the pointer', async () => {
    await withPage({}, async (page) => {
        await openExample(page);
        const chosen = page.locator('#list [aria-selected=true]');
        const ground = () => chosen.evaluate((row) => getComputedStyle(row).backgroundColor);
        const before = await ground();
        await chosen.hover();
        assert.equal(await ground(), before);
        const other = page.locator('#list .rows [role=row]', { hasText: '72327' });
        await other.hover();
        assert.notEqual(await other.evaluate((row) => getComputedStyle(row).backgroundColor), 'rgba(0, 0, 0, 0)');
    });
});

test('a sorted list is shown from its start', async () => {
    await withPage({}, async (page) => {
        await readFiles(page, file('many.txt', manyBulletins(100_000)));
        await page.focus('#list [role=grid]');
        await page.keyboard.press('End');
        const top = () => page.$eval('#list [role=grid]', (grid) => grid.scrollTop);
        assert.ok((await top()) > 0);
        const title = await page.textContent('#title');
        await page.locator('#list [role=columnheader] button', { hasText: 'Notes' }).click();
        assert.equal(await top(), 0);
        assert.match((await listed(page))[0]!, /refused$/);
        await page.waitForFunction((old) => document.querySelector('#title')?.textContent === old, title);
    });
});

test('the arrow keys move through the list right after opening', async () => {
    await withPage({}, async (page) => {
        const id = () => page.evaluate(() => document.activeElement?.id);
        for (let i = 0; i < 20 && (await id()) !== 'start-example'; i += 1) {
            await page.keyboard.press('Tab');
        }
        await page.keyboard.press('Enter');
        await page.waitForSelector('#picture svg');
        await page.keyboard.press('ArrowDown');
        await page.waitForFunction(() => /72327/.test(document.querySelector('#title')?.textContent ?? ''));
        // What has the focus keeps it.
        await page.focus('#example');
        await page.keyboard.press('Enter');
        await page.waitForFunction(() => /70414/.test(document.querySelector('#title')?.textContent ?? ''));
        assert.equal(await id(), 'example');
    });
});

test('only the plain solidus leads to the filter', async () => {
    await withPage({}, async (page) => {
        await openExample(page);
        const id = () => page.evaluate(() => document.activeElement?.id);
        for (const key of ['Control+/', 'Alt+/', 'Meta+/']) {
            await page.keyboard.press(key);
            assert.notEqual(await id(), 'filter', key);
        }
        await page.keyboard.press('/');
        assert.equal(await id(), 'filter');
    });
});

test('the keyboard alone reaches everything', async () => {
    await withPage({}, async (page) => {
        // To the example by Tab.
        for (let i = 0; i < 20 && (await page.evaluate(() => document.activeElement?.id)) !== 'example'; i += 1) {
            await page.keyboard.press('Tab');
        }
        await page.keyboard.press('Enter');
        await page.waitForSelector('#picture svg');
        assert.match((await page.textContent('#title'))!, /70414/);

        // "/" leads to the filter, the arrow from there to the list, arrows through it.
        await page.keyboard.press('/');
        assert.equal(await page.evaluate(() => document.activeElement?.id), 'filter');
        await page.keyboard.type('13/00z');
        assert.equal(await page.inputValue('#filter'), '13/00z');
        await page.keyboard.press('ArrowDown');
        await page.keyboard.press('ArrowDown');
        await page.waitForFunction(() => /72327/.test(document.querySelector('#title')?.textContent ?? ''));
        await page.keyboard.press('End');
        await page.waitForFunction(() => /91366/.test(document.querySelector('#title')?.textContent ?? ''));
        await page.keyboard.press('Home');
        await page.waitForFunction(() => /70414/.test(document.querySelector('#title')?.textContent ?? ''));
        const active = await page.getAttribute('#list [role=grid]', 'aria-activedescendant');
        assert.match((await page.textContent(`#${active}`))!, /^70414/);

        // On to the table of levels; arrows mark levels there.
        const inLevels = () => page.evaluate(() => document.activeElement?.closest('#levels') !== null);
        for (let i = 0; i < 20 && !(await inLevels()); i += 1) {
            await page.keyboard.press('Tab');
        }
        assert.ok(await inLevels());
        await page.keyboard.press('ArrowDown');
        await page.keyboard.press('ArrowDown');
        assert.equal(await page.getAttribute('#levels tbody tr:nth-child(2)', 'aria-selected'), 'true');
        assert.ok((await page.$$('#parts .marked')).length > 0);

        // Everything that can be clicked is reached by Tab, and shows it.
        const missed = new Set(
            await page.$$eval('button, select, input, [tabindex]', (all) =>
                all
                    .filter((one) => one.checkVisibility() && !one.matches(':disabled'))
                    .map((one, i) => {
                        one.setAttribute('data-stop', String(i));
                        return String(i);
                    }),
            ),
        );
        await page.evaluate(() => (document.activeElement as HTMLElement).blur());
        for (let i = 0; i < 60 && missed.size > 0; i += 1) {
            await page.keyboard.press('Tab');
            const [stop, outline] = await page.evaluate(() => [
                document.activeElement?.getAttribute('data-stop') ?? '',
                getComputedStyle(document.activeElement!).outlineStyle,
            ]);
            if (stop !== '') {
                assert.notEqual(outline, 'none');
            }
            missed.delete(stop);
        }
        assert.deepEqual([...missed], []);
    });
});

test('a long list keeps few rows in the page and shows every entry', async () => {
    const path = file('many.txt', manyBulletins(1_000_000));
    await withPage({}, async (page) => {
        await readFiles(page, path);
        const count = parseInt((await page.textContent('#shown'))!, 10);
        assert.ok(count > 300, String(count));
        assert.ok((await listed(page)).length < 80);
        await page.focus('#list [role=grid]');
        const seen = new Set<string>();
        await page.keyboard.press('Home');
        for (let i = 0; i < 40; i += 1) {
            (await stations(page)).forEach((station) => seen.add(station));
            await page.keyboard.press('PageDown');
        }
        (await stations(page)).forEach((station) => seen.add(station));
        assert.equal(seen.size, count);
        const box = (await page.locator('#list [aria-selected=true]').boundingBox())!;
        const grid = (await page.locator('#list [role=grid]').boundingBox())!;
        assert.ok(box.y >= grid.y && box.y + box.height <= grid.y + grid.height + 1);
        await page.mouse.move(grid.x + 50, grid.y + 100);
        await page.mouse.wheel(0, -1e6);
        await page.waitForFunction(() => document.querySelector('#list .rows [aria-rowindex="2"]') !== null);
    });
});

test('the same file can be read again', async () => {
    await withPage({}, async (page) => {
        await readFiles(page, EXAMPLE);
        await page.fill('#filter', '723');
        await readFiles(page, EXAMPLE);
        await page.waitForFunction(() => document.querySelector<HTMLInputElement>('#filter')?.value === '');
        assert.deepEqual(await listed(page), ALL);
    });
});
