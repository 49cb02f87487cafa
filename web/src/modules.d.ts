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

// Exists in workers only; TypeScript's types for workers cannot be used together with those for pages.
declare class FileReaderSync {
    readAsArrayBuffer(blob: Blob): ArrayBuffer;
}
