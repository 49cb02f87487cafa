// The library as WebAssembly: its memory, its texts, and how it asks for bytes.
import type { Counts, Detail, Drawing, Entry, Picture, Places } from './contract';

interface Exports {
    memory: WebAssembly.Memory;
    _initialize(): void;
    corvane_length(): number;
    corvane_begin(): void;
    corvane_add(): number;
    corvane_finish(): number;
    corvane_entries(first: number, count: number): number;
    corvane_detail(entry: number): number;
    corvane_draw(entry: number, knots: number, top: number, dark: number, width: number, height: number): number;
    corvane_svg(): number;
    corvane_table(entry: number): number;
}

/** Gives up to `size` of the next bytes of a file; none at its end. */
export type Input = (size: number) => Uint8Array;

const WASI_SUCCESS = 0;
const WASI_BAD_FILE = 8;

export class Decoder {
    private readonly wasm: Exports;
    private input: Input = () => new Uint8Array();
    private readonly text = new TextDecoder();

    private constructor(module: WebAssembly.Module) {
        const view = () => new DataView(this.wasm.memory.buffer);
        const instance = new WebAssembly.Instance(module, {
            env: {
                corvane_input: (address: number, size: number) => {
                    const bytes = this.input(size);
                    new Uint8Array(this.wasm.memory.buffer).set(bytes, address >>> 0);
                    return bytes.length;
                },
                emscripten_notify_memory_growth: () => undefined,
            },
            // What the C++ library wants of an operating system: an empty environment, no files.
            wasi_snapshot_preview1: {
                environ_sizes_get: (count: number, size: number) => {
                    view().setUint32(count, 0, true);
                    view().setUint32(size, 0, true);
                    return WASI_SUCCESS;
                },
                environ_get: () => WASI_SUCCESS,
                fd_write: () => WASI_BAD_FILE,
                fd_read: () => WASI_BAD_FILE,
                fd_seek: () => WASI_BAD_FILE,
                fd_close: () => WASI_BAD_FILE,
                proc_exit: (status: number) => {
                    throw new Error(`the decoder has ended with status ${status}`);
                },
            },
        });
        this.wasm = instance.exports as unknown as Exports;
        this.wasm._initialize();
        this.wasm.corvane_begin();
    }

    static async load(wasm: Uint8Array<ArrayBuffer>): Promise<Decoder> {
        return new Decoder(await WebAssembly.compile(wasm));
    }

    /** Reads one more file. Gives the number of its parts. Throws what `input` throws. */
    add(input: Input): number {
        this.input = input;
        return this.wasm.corvane_add();
    }

    /** Ends the reading: joins parts to soundings. */
    finish(): Counts {
        return JSON.parse(this.answer(this.wasm.corvane_finish())) as Counts;
    }

    entries(first: number, count: number): Entry[] {
        return JSON.parse(this.answer(this.wasm.corvane_entries(first, count))) as Entry[];
    }

    detail(id: number): Detail {
        return JSON.parse(this.answer(this.wasm.corvane_detail(id))) as Detail;
    }

    /** The picture of a sounding; null when the entry has none. */
    picture(id: number, { unit, top, dark, width, height }: Drawing): Picture | null {
        const places = this.answer(
            this.wasm.corvane_draw(id, unit === 'kt' ? 1 : 0, top, dark ? 1 : 0, width, height),
        );
        return places === ''
            ? null
            : { svg: this.answer(this.wasm.corvane_svg()), places: JSON.parse(places) as Places };
    }

    /** The table of a sounding, or of all. */
    table(id: number | null): string {
        return this.answer(this.wasm.corvane_table(id ?? -1));
    }

    private answer(address: number): string {
        // TextDecoder takes no more than 512 MB at once; a table of all soundings is far below that.
        return this.text.decode(new Uint8Array(this.wasm.memory.buffer, address >>> 0, this.wasm.corvane_length()));
    }
}
