// What is shown of a sounding: levels marked at once everywhere, mends, doubts and refusals, files to keep, paper.
import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { test } from 'node:test';
import type { Page } from 'playwright-core';
import { choose, download, EXAMPLE, example, file, openExample, readFiles, screenshot, SKEWT, useBrowser, withPage } from './support';

useBrowser();

/** The level that is marked in the table, the groups marked in the text, and the y of the line in the picture. */
async function marked(page: Page): Promise<{ level: string; groups: string; y: number | null }> {
    return page.evaluate(() => {
        const line = document.querySelector('#picture .overlay line');
        return {
            level: document.querySelector('#levels tr.marked td')?.textContent ?? '',
            groups: [...document.querySelectorAll('#parts .group.marked')].map((group) => group.textContent).join(' '),
            y: line?.getAttribute('visibility') === 'visible' ? Number(line.getAttribute('y1')) : null,
        };
    });
}

function levelRow(page: Page, pressure: string) {
    return page.locator('#levels tbody tr').filter({ has: page.locator(`td:first-child:text-is("${pressure}")`) });
}

test('a level is marked in table, picture and text at once', async () => {
    await withPage({}, async (page) => {
        await openExample(page);
        await choose(page, '78486');

        await levelRow(page, '700').hover();
        const fromTable = await marked(page);
        assert.equal(fromTable.level, '700');
        assert.equal(fromTable.groups, '70232 09466 10009');
        assert.ok(fromTable.y !== null);

        // The line lies on the isobar: where the picture has its label "700".
        const label = await page.$eval('#picture', (figure) => {
            const texts = [...figure.querySelectorAll('text')].filter((text) => text.textContent === '700');
            const at = texts[0]!.getBoundingClientRect();
            const line = figure.querySelector('.overlay line')!.getBoundingClientRect();
            return { label: at.top + at.height / 2, line: line.top };
        });
        assert.ok(Math.abs(label.label - label.line) < 4, JSON.stringify(label));

        await page.mouse.move(5, 5);
        assert.deepEqual(await marked(page), { level: '', groups: '', y: null });

        await page.locator('#parts .group', { hasText: '50591' }).hover();
        assert.deepEqual(await marked(page).then(({ level, groups }) => [level, groups]), ['500', '50591 12144 07508']);

        // Levels of two parts at one pressure are marked in both.
        await levelRow(page, '1015').hover();
        assert.equal((await marked(page)).groups, '99015 29440 14002 00015 29440');

        const box = (await page.locator('#picture .overlay').boundingBox())!;
        const scale = box.width / (await page.$eval('#picture .overlay', (svg) => (svg as SVGSVGElement).viewBox.baseVal.width));
        await page.mouse.move(box.x + box.width / 2, box.y + fromTable.y! * scale);
        assert.deepEqual(await marked(page), fromTable);
    });
});

test('page and picture say the same of a sounding', async () => {
    await withPage({}, async (page) => {
        await openExample(page);
        for (const words of ['72327', '78486', '70414', '91366', 'drop']) {
            await choose(page, words);
            const texts = await page.locator('#picture text').allTextContents();
            const title = (await page.textContent('#title'))!;
            const levels = /\d+ levels?/.exec((await page.textContent('#subtitle'))!)![0];
            assert.ok(texts.some((text) => text.startsWith(title)), `${title}: ${texts[0]}`);
            assert.ok(texts.some((text) => text.endsWith(` ${levels}`)), `${levels}: ${texts.slice(0, 3).join(' | ')}`);
        }
    });
});

test('mended groups are underlined and say why', async () => {
    await withPage({}, async (page) => {
        await openExample(page);
        await choose(page, '72327');
        const mended = page.locator('#parts .group.mended');
        assert.deepEqual(await mended.allTextContents(), ['63001']);
        assert.equal(await mended.getAttribute('title'), 'id: 63001 read as 63000');
        assert.match(await mended.evaluate((group) => getComputedStyle(group).textDecorationLine), /underline/);
        assert.deepEqual(await page.locator('#parts .notes li').allTextContents(), ['mended id: 63001 read as 63000']);
        await page.locator('#parts .notes li').hover();
        assert.deepEqual(await page.locator('#parts .group.marked').allTextContents(), ['63001']);
    });
});

test('what was lost is described and marked', async () => {
    await withPage({}, async (page) => {
        await openExample(page);
        await choose(page, '70414');
        assert.ok((await page.locator('#parts .notes').allTextContents()).some((text) => /^lost gap: left out 44\/\/\//.test(text)));
        const lost = await page.locator('#parts .group.lost').allTextContents();
        assert.ok(lost.includes('44///'), lost.join(' '));
        await screenshot(page, 'lost');
    });
});

test('a place where something was written in is marked', async () => {
    await withPage({}, async (page) => {
        // A part that ends after its level of 300 hPa.
        const text = example.slice(example.indexOf('TTAA 63001 78486')).split(' 25083')[0]!;
        await readFiles(page, file('cut.txt', `${text}=`));
        const place = page.locator('#parts .place.mended');
        assert.equal(await place.count(), 1);
        assert.equal(await place.getAttribute('title'), 'closer: wrote 88999 at the end');
        assert.equal(await place.evaluate((mark) => mark.previousElementSibling?.textContent), '01023');
    });
});

test('doubtful levels are marked', async () => {
    await withPage({}, async (page) => {
        await openExample(page);
        await choose(page, '78486');
        const doubted = await page.locator('#levels tr.doubted td:first-child').allTextContents();
        assert.deepEqual(doubted, ['1000', '925']);
        assert.match((await levelRow(page, '925').textContent())!, /doubtful: hydrostatic$/);
        assert.match((await page.textContent('#parts .notes'))!, /doubtful hydrostatic: the heights of 1000 and 925 hPa/);
    });
});

test('a refused part stands beside the sounding, with its reason and the groups in question', async () => {
    await withPage({}, async (page) => {
        await openExample(page);
        await choose(page, '91366');
        const part = page.locator('#parts .part.refused');
        assert.match((await part.locator('h4').textContent())!, /^Part D/);
        assert.match((await part.locator('.notes').textContent())!, /^refused The pressure is above that of the level before\./);
        assert.deepEqual(await part.locator('.group.fault').allTextContents(), ['44995']);
        assert.equal(await page.locator('#picture svg').count(), 2); // parts A and C are drawn
        await part.scrollIntoViewIfNeeded();
        await screenshot(page, 'refused');
    });
});

test('a wholly refused report shows its text and why', async () => {
    await withPage({}, async (page) => {
        await readFiles(page, file('refused.txt', 'TTAA 66001 68994 99011 1042/ 34019 00117 09632 34019 88999 77999='));
        assert.match((await page.textContent('#picture'))!, /^No sounding: what the report holds cannot be read with certainty/);
        assert.equal(await page.locator('#parts .fault').count(), 1);
        assert.ok(await page.isDisabled('#svg'));
        assert.ok(await page.isEnabled('#link'));
    });
});

test('the picture is kept as SVG and as PNG', async () => {
    await withPage({}, async (page) => {
        await openExample(page);
        await choose(page, '72327');
        const svg = await download(page, '#svg');
        assert.equal(svg.name, '72327-1300.svg');
        execFileSync('xmllint', ['--noout', file('picture.svg', svg.content)]);
        const inside = await page.$eval('#picture svg', (shown) => shown.textContent);
        assert.ok(inside!.includes('72327'));
        const drawn = /width="(\d+)" height="(\d+)"/.exec(svg.content.toString())!;
        const program = execFileSync(SKEWT, [EXAMPLE, '--station', '72327', '--size', `${drawn[1]}x${drawn[2]}`], {
            stdio: ['ignore', 'pipe', 'ignore'],
        });
        assert.equal(svg.content.toString(), program.toString());

        const png = await download(page, '#png');
        assert.equal(png.name, '72327-1300.png');
        assert.equal(png.content.subarray(0, 8).toString('latin1'), '\x89PNG\r\n\x1a\n');
        const [width, height] = [png.content.readUInt32BE(16), png.content.readUInt32BE(20)];
        assert.deepEqual([width, height], [2 * Number(drawn[1]), 2 * Number(drawn[2])]);
        // Not one colour alone: it is drawn.
        const colours = await page.evaluate(async (base64) => {
            const bytes = Uint8Array.from(atob(base64), (character) => character.charCodeAt(0));
            const bitmap = await createImageBitmap(new Blob([bytes], { type: 'image/png' }));
            const canvas = new OffscreenCanvas(bitmap.width, bitmap.height);
            const context = canvas.getContext('2d')!;
            context.drawImage(bitmap, 0, 0);
            return new Set(new Uint32Array(context.getImageData(0, 0, bitmap.width, bitmap.height).data.buffer)).size;
        }, png.content.toString('base64'));
        assert.ok(colours > 100, String(colours));
    });
});

test('the picture reaches up to 10 hPa when asked to', async () => {
    await withPage({}, async (page) => {
        await openExample(page);
        await choose(page, '72327');
        await levelRow(page, '70').hover();
        assert.deepEqual(await marked(page).then(({ level, y }) => [level, y]), ['70', null]);
        const before = await page.locator('#picture svg').first().innerHTML();
        await page.focus('#top');
        await page.keyboard.press('ArrowDown');
        await page.waitForFunction((old) => document.querySelector('#picture svg')?.innerHTML !== old, before);
        await levelRow(page, '850').hover();
        await levelRow(page, '70').hover();
        const { level, y } = await marked(page);
        assert.equal(level, '70');
        assert.ok(y !== null);
        const svg = (await download(page, '#svg')).content.toString();
        const size = /width="(\d+)" height="(\d+)"/.exec(svg)!.slice(1).join('x');
        const options = ['--station', '72327', '--size', size, '--top', '10'];
        assert.equal(svg, execFileSync(SKEWT, [EXAMPLE, ...options], { stdio: ['ignore', 'pipe', 'ignore'] }).toString());
    });
});

for (const colorScheme of ['light', 'dark'] as const) {
    test(`texts in the picture have contrast, ${colorScheme}`, async () => {
        await withPage({ colorScheme }, async (page) => {
            await openExample(page);
            for (const words of ['72327', '78486', '70414', 'drop']) {
                await choose(page, words);
                const texts = await page.$eval('#picture svg', (svg) => {
                    const attribute = (of: Element | null, name: string): string | null =>
                        of === null ? null : (of.getAttribute(name) ?? attribute(of.parentElement, name));
                    const channels = (colour: string) => {
                        const [, short, long] = /^#(?:([0-9a-f]{3})|([0-9a-f]{6}))$/i.exec(colour) ?? [];
                        const digits = long ?? [...(short ?? '')].map((digit) => digit + digit).join('');
                        return [0, 2, 4].map((at) => parseInt(digits.slice(at, at + 2), 16) / 255);
                    };
                    // Relative luminance and contrast as WCAG 2.2 defines them.
                    const luminance = (colour: string) =>
                        channels(colour)
                            .map((part) => (part <= 0.04045 ? part / 12.92 : ((part + 0.055) / 1.055) ** 2.4))
                            .reduce((sum, part, i) => sum + part * [0.2126, 0.7152, 0.0722][i]!, 0);
                    const ground = luminance(svg.querySelector('rect')!.getAttribute('fill')!);
                    return [...svg.querySelectorAll('text')].map((text) => {
                        const own = luminance(attribute(text, 'fill') ?? '#000000');
                        const faint = ['opacity', 'fill-opacity'].some((name) => attribute(text, name) !== null);
                        const contrast = (Math.max(own, ground) + 0.05) / (Math.min(own, ground) + 0.05);
                        return { text: text.textContent, contrast: faint ? 0 : contrast };
                    });
                });
                assert.ok(texts.length > 40, String(texts.length));
                assert.deepEqual(
                    texts.filter(({ contrast }) => !(contrast >= 4.5)),
                    [],
                    words,
                );
            }
        });
    });
}

for (const width of [1280, 1600, 2200]) {
    test(`lines of 69 characters are not broken, ${width} pixels wide`, async () => {
        await withPage({ viewport: { width, height: 900 } }, async (page) => {
            const groups = longSounding(200).split(' ');
            const lines = Array.from({ length: Math.ceil(groups.length / 11) }, (_, i) =>
                groups.slice(11 * i, 11 * i + 11).join(' '), // 65 characters
            );
            await readFiles(page, file('lines.txt', lines.join('\n')));
            const broken = await page.$$eval('#parts pre', (all) =>
                all.map((pre) => {
                    const height = parseFloat(getComputedStyle(pre).lineHeight);
                    return Math.round(pre.clientHeight / height) - pre.textContent!.split('\n').length;
                }),
            );
            assert.deepEqual(broken, [0]);
            // The four letters of MMMM tell how wide one is.
            const characters = await page.$eval('#parts pre', (pre) => {
                const range = document.createRange();
                range.selectNodeContents(pre.firstElementChild!);
                return (4 * pre.clientWidth) / range.getBoundingClientRect().width;
            });
            assert.ok(characters >= 69, String(characters));
        });
    });
}

test('wind in m/s changes picture and table', async () => {
    await withPage({}, async (page) => {
        await openExample(page);
        const before = await page.locator('#picture svg').first().innerHTML();
        await page.selectOption('#unit', 'mps');
        await page.waitForFunction(
            (old) => document.querySelector('#picture svg')?.innerHTML !== old,
            before,
        );
        assert.match(await page.locator('#picture svg').first().innerHTML(), /m\/s/);
    });
});

test('dark and light follow the system, also while the page is open', async () => {
    await withPage({ colorScheme: 'dark' }, async (page) => {
        await openExample(page);
        const ground = () => page.evaluate(() => getComputedStyle(document.body).backgroundColor);
        const picture = () => page.locator('#picture svg').first().innerHTML();
        const [darkGround, darkPicture] = [await ground(), await picture()];
        await screenshot(page, 'dark');
        await page.emulateMedia({ colorScheme: 'light' });
        await page.waitForFunction((old) => document.querySelector('#picture svg')?.innerHTML !== old, darkPicture);
        assert.notEqual(await ground(), darkGround);
        await screenshot(page, 'light');
    });
});

test('a narrow screen needs no scrolling sideways', async () => {
    await withPage({ viewport: { width: 380, height: 800 }, hasTouch: true, isMobile: true }, async (page) => {
        const width = () => page.evaluate(() => document.documentElement.scrollWidth);
        await screenshot(page, 'narrow-start');
        assert.equal(await width(), 380);
        await openExample(page);
        await choose(page, '72327');
        assert.equal(await width(), 380);
        assert.ok(!(await page.isVisible('footer'))); // it tells of keys
        const end = await page.evaluate(() => document.querySelector('main')!.getBoundingClientRect().bottom + scrollY);
        assert.ok((await page.evaluate(() => document.documentElement.scrollHeight)) <= Math.max(end, 800) + 1);
        // Nor does the table of levels.
        assert.equal(await page.$eval('#levels .scroller', (box) => box.scrollWidth - box.clientWidth), 0);
        for (const id of ['#title', '#picture', '#levels-table', '#parts', '#list']) {
            const box = (await page.locator(id).boundingBox())!;
            assert.ok(box.x >= 0 && box.x + box.width <= 380, id);
        }
        // Nor do the heads of its columns run together.
        const gaps = await page.$$eval('#levels th', (heads) => {
            const boxes = heads.map((head) => {
                const range = document.createRange();
                range.selectNodeContents(head);
                return range.getBoundingClientRect();
            });
            return boxes.slice(1).map((box, i) => box.left - boxes[i]!.right);
        });
        assert.ok(Math.min(...gaps) >= 5, gaps.join(' '));
        // What a finger may want to hit is large enough (WCAG 2.2, 2.5.8).
        const small = await page.$$eval('button, select, input[type=search], label.check', (all) =>
            all
                .filter((one) => one.checkVisibility() && one.getBoundingClientRect().height < 24)
                .map((one) => one.outerHTML),
        );
        assert.deepEqual(small, []);
        // The picture is scrolled in its own box.
        assert.ok(await page.$eval('#picture', (box) => box.scrollWidth > box.clientWidth && box.tabIndex === 0));
        // A finger on a level marks it.
        await levelRow(page, '700').tap();
        assert.equal((await marked(page)).level, '700');
        await screenshot(page, 'narrow', true);
    });
});

test('the letters of the picture can be read on a narrow screen', async () => {
    await withPage({ viewport: { width: 380, height: 800 }, hasTouch: true, isMobile: true }, async (page) => {
        await openExample(page);
        await choose(page, '72327');
        const letters = await page.$$eval('#picture text', (texts) =>
            texts.map((text) => {
                const svg = (text as SVGTextElement).ownerSVGElement!;
                const scale = svg.getBoundingClientRect().width / svg.viewBox.baseVal.width;
                return scale * parseFloat(getComputedStyle(text).fontSize);
            }),
        );
        assert.ok(letters.length > 40 && Math.min(...letters) >= 7.9, String(Math.min(...letters)));
    });
});

/** A part B of so many levels of wind, every third hPa. */
function longSounding(levels: number): string {
    const winds = Array.from({ length: levels - 1 }, (_, i) => `${String((i % 9) + 1).repeat(2)}${996 - 3 * i} 31510`);
    return `TTBB 63008 72327 00999 31858 21212 00999 31510 ${winds.join(' ')}=`;
}

test('the picture is redrawn when the window changes size', async () => {
    await withPage({}, async (page) => {
        await openExample(page);
        const width = () => page.$eval('#picture svg', (svg) => (svg as SVGSVGElement).viewBox.baseVal.width);
        const before = await width();
        await page.setViewportSize({ width: 500, height: 900 });
        await page.waitForFunction(
            (old) => document.querySelector<SVGSVGElement>('#picture svg')!.viewBox.baseVal.width < old,
            before,
        );
        assert.ok(Math.abs((await width()) * (16 / 15) - 500) < 2, String(await width())); // shown a fifteenth larger
    });
});

for (const [format, words] of [
    ['A4', '72327'],
    ['Letter', '72327'],
    ['A4', 'drop'],
    ['A4', '78486'],
    ['A4', 'many levels'],
    ['Letter', 'many levels'],
] as const) {
    test(`${words}: one sheet of ${format}`, async () => {
        await withPage({ colorScheme: 'dark' }, async (page) => {
            if (words === 'many levels') {
                await readFiles(page, file('many levels.txt', longSounding(285)));
                assert.match((await page.textContent('#subtitle'))!, /285 levels/);
            } else {
                await openExample(page);
                await choose(page, words);
            }
            await page.waitForFunction(() => document.querySelector<HTMLImageElement>('#sheet img')?.complete);

            // Nothing is cut off: laid out as wide as the paper between its margins, 96 pixels to the inch.
            const room = format === 'A4' ? [703, 1032] : [725, 965];
            await page.setViewportSize({ width: room[0]!, height: room[1]! });
            await page.emulateMedia({ media: 'print', colorScheme: 'dark' });
            for (const box of ['#sheet', '#sheet .columns']) {
                const over = await page.$eval(box, (one) => [one.scrollWidth - one.clientWidth, one.scrollHeight - one.clientHeight]);
                assert.ok(over[0]! <= 0 && over[1]! <= 0, `${box}: ${over.join(' ')}`);
            }
            await page.waitForFunction(() => (document.querySelector('#sheet img')?.clientHeight ?? 0) > 400);
            await page.emulateMedia({ media: null, colorScheme: 'dark' });
            const path = file('sheet.pdf', await page.pdf({ format, printBackground: true }));
            const info = execFileSync('pdfinfo', [path], { encoding: 'utf8' });
            assert.match(info, /Pages:\s+1\n/);
            const text = execFileSync('pdftotext', ['-layout', path, '-'], { encoding: 'utf8' });
            const levels = await page.$$eval('#levels tbody tr td:first-child', (cells) => cells.map((cell) => cell.textContent));
            for (const level of levels) {
                assert.match(text, new RegExp(`(^|\\s)${level!.replace('.', '\\.')}\\s`, 'm'), `${level} hPa`);
            }
            const folder = process.env['CORVANE_SCREENSHOTS'];
            if (folder) {
                execFileSync('pdftoppm', ['-r', '80', '-png', path, `${folder}/print-${format}-${words.replace(' ', '-')}`]);
            }
        });
    });
}

test('the start page is printed on one sheet', async () => {
    await withPage({}, async (page) => {
        const info = execFileSync('pdfinfo', [file('start.pdf', await page.pdf({ format: 'A4' }))], { encoding: 'utf8' });
        assert.match(info, /Pages:\s+1\n/);
    });
});

test('only levels below the ground are grey', async () => {
    await withPage({}, async (page) => {
        await openExample(page);
        await choose(page, '72327');
        const colours = (row: string) =>
            page.$$eval(`#levels tbody tr${row} td`, (cells) => [...new Set(cells.map((cell) => getComputedStyle(cell).color))]);
        const [above, below] = [await colours(':not(.below)'), await colours('.below')];
        assert.equal(above.length, 1);
        assert.equal(below.length, 1);
        assert.notEqual(above[0], below[0]);
    });
});
