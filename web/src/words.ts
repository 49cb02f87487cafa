// The words and names that the page uses.
import type { Counts, Entry } from './contract';

function twoDigits(number: number): string {
    return String(number).padStart(2, '0');
}

export function plural(count: number, one: string, many = `${one}s`): string {
    return `${count} ${count === 1 ? one : many}`;
}

function degrees(value: number, letters: [positive: string, negative: string], sign: string): string {
    return `${Math.abs(value).toFixed(1)}${sign}${letters[value < 0 ? 1 : 0]}`;
}

/** "46.9S 37.9E", with `sign` after each number; empty when the report does not give it. */
export function position(entry: Entry, sign = ''): string {
    return entry.latitude === null || entry.longitude === null
        ? ''
        : `${degrees(entry.latitude, ['N', 'S'], sign)} ${degrees(entry.longitude, ['E', 'W'], sign)}`;
}

/** Station number, call sign, or where there is neither, the position. */
export function stationName(entry: Entry): string {
    return entry.station || position(entry) || '?';
}

/** Day and hour: "13/00Z". */
export function time(entry: Entry): string {
    return entry.day === null || entry.hour === null
        ? '–'
        : `${twoDigits(entry.day)}/${twoDigits(entry.hour)}Z`;
}

/** The name of a file for a sounding, without its ending: STATION-DDHH, as corvane-skewt names it. */
export function fileName(entry: Entry): string {
    const station = (entry.station || position(entry).replace(' ', '')).replace(/[^A-Za-z0-9.]/g, '_');
    const safe = /^(\.|$)/.test(station) ? `_${station}` : station;
    return `${safe.slice(0, 100)}-${twoDigits(entry.day ?? 0)}${twoDigits(entry.hour ?? 0)}`;
}

export type BadgeKind = 'mended' | 'lost' | 'doubtful' | 'refused' | 'NIL' | 'empty';

/** Something to be said about an entry. */
export interface Badge {
    kind: BadgeKind;
    text: string;
}

/** What is to be said about an entry, the most serious last. */
export function badges(entry: Entry): Badge[] {
    const said: Badge[] = [];
    const say = (kind: BadgeKind, text: string = kind) => said.push({ kind, text });
    if (entry.status === 'NIL' || entry.status === 'empty') {
        say(entry.status);
        return said;
    }
    if (entry.mended) {
        say('mended');
    }
    if (entry.lost) {
        say('lost');
    }
    if (entry.doubtful) {
        say('doubtful');
    }
    if (entry.refused !== '') {
        // Beside a sounding some parts are refused, not all of it.
        say('refused', entry.status === 'refused' ? 'refused' : `${entry.refused} refused`);
    }
    return said;
}

/** The summary as the program corvane-feed words it. */
export function summary(counts: Counts): string {
    return (
        `${plural(counts.parts, 'part')}: ${counts.decoded} decoded (${counts.mended} mended, ` +
        `${counts.lost} with losses, ${counts.doubtful} doubtful), ${counts.nil} NIL, ${counts.empty} empty, ` +
        `${counts.refused} refused`
    );
}
