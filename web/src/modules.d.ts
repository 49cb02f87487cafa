declare module '*.gz' {
    const bytes: Uint8Array<ArrayBuffer>;
    export default bytes;
}
declare module '*.txt' {
    const text: string;
    export default text;
}
declare module 'worker:*' {
    const source: string;
    export default source;
}

// Of workers only; the library of types for workers cannot stand beside that for pages.
declare class FileReaderSync {
    readAsArrayBuffer(blob: Blob): ArrayBuffer;
}
