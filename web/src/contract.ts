// What bindings.cpp returns, and the messages between the page and its worker.

/** How many parts a reading found, by what became of them. */
export interface Counts {
    parts: number;
    decoded: number;
    mended: number;
    lost: number;
    doubtful: number;
    nil: number;
    empty: number;
    refused: number;
    entries: number;
}

export type Status = 'sounding' | 'refused' | 'NIL' | 'empty';

/** A line of the list: a sounding, or parts that give none. */
export interface Entry {
    id: number;
    status: Status;
    form: string;
    station: string;
    day: number | null;
    hour: number | null;
    latitude: number | null;
    longitude: number | null;
    /** The parts, "ABCD". */
    letters: string;
    levels: number;
    mended: boolean;
    lost: boolean;
    doubtful: boolean;
    /** The refused parts of the same ascent, "BD". */
    refused: string;
}

/** A run of groups of a part: the first one, counted from 0 after MMMM, and how many. */
export type GroupRange = [first: number, count: number];

export interface Mend {
    name: string;
    text: string;
    lost: boolean;
    groups: GroupRange;
}

export interface Part {
    /** The number of the file, and the byte in it where MMMM begins. */
    file: number;
    offset: number;
    line: number;
    heading: string;
    letter: string;
    status: 'decoded' | 'NIL' | 'empty' | 'refused';
    /** First byte and the byte after the last one of each group, counted from `offset`. */
    groups: [begin: number, end: number][];
    mends: Mend[];
    doubts: { name: string; text: string }[];
    /** Of a refused part: why, and where. */
    reason: string;
    fault: GroupRange;
}

export interface Level {
    /** The row of the CSV table from the column "kinds" on. */
    row: string;
    knots: number | null;
    /** Whether it lies below the ground. */
    below: boolean;
    /** The part, an index into the parts of the detail, and its groups that the level is read from. */
    origins: [part: number, first: number, count: number][];
}

export interface Detail {
    /** Copies of parts that were replaced by a correction or a later copy. */
    replaced: number;
    parts: Part[];
    levels: Level[];
}

/** Where things are in a picture, in its own pixels. */
export interface Places {
    width: number;
    height: number;
    /** The diagram with its wind barbs. */
    left: number;
    right: number;
    /** The y of each level, in the order of Detail.levels; null where it is not in the picture. */
    levels: (number | null)[];
}

/** How a picture is drawn: sizes in pixels, `top` in hPa, 0 for the usual one. */
export interface Drawing {
    unit: WindUnit;
    top: number;
    dark: boolean;
    width: number;
    height: number;
}

export interface Picture {
    svg: string;
    places: Places;
}

export type WindUnit = 'kt' | 'mps';

/** The bytes of a part and a little of what surrounds it. Each byte is a character (windows-1252). */
export interface Excerpt {
    text: string;
    /** The place of MMMM in `text`. */
    start: number;
}

/** Something to read, and what it is called at the start of a sentence. */
export interface Input {
    file: File;
    subject: string;
}

export type Request =
    | { type: 'read'; inputs: Input[] }
    | { type: 'show'; request: number; id: number; drawing: Drawing }
    | { type: 'table'; request: number; id: number | null };

export type Answer =
    | { type: 'progress'; done: number; total: number }
    | { type: 'entries'; entries: Entry[] }
    | { type: 'done'; counts: Counts; notices: string[] }
    | { type: 'failed'; message: string }
    | {
          type: 'shown';
          request: number;
          detail: Detail;
          /** One for each part; null where its file can no longer be read. */
          excerpts: (Excerpt | null)[];
          /** What is wrong with a file that can no longer be read. */
          notice: string;
          /** null where there is no sounding. */
          picture: Picture | null;
          /** The same picture on a light ground, for paper. */
          light: string;
      }
    | { type: 'table'; request: number; csv: string };
