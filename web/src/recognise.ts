// Says what a file is that holds no bulletins, from its first bytes.

const SIGNATURES: [bytes: string, what: string][] = [
    ['\x89PNG', 'a PNG picture'],
    ['\xFF\xD8\xFF', 'a JPEG picture'],
    ['GIF8', 'a GIF picture'],
    ['RIFF', 'a picture, sound or film'],
    ['BM', 'a bitmap picture'],
    ['II*\0', 'a TIFF picture'],
    ['MM\0*', 'a TIFF picture'],
    ['%PDF', 'a PDF document'],
    ['PK\x03\x04', 'a ZIP archive or an office document. Unpack it first'],
    ['\x1F\x8B', 'compressed with gzip. Unpack it first'],
    ['BZh', 'compressed with bzip2. Unpack it first'],
    ['\xFD7zXZ', 'compressed with xz. Unpack it first'],
    ['\x28\xB5\x2F\xFD', 'compressed with Zstandard. Unpack it first'],
    ['BUFR', 'in the binary code form BUFR. This page reads the letters and digits of TEMP'],
    ['GRIB', 'in the binary code form GRIB. This page reads the letters and digits of TEMP'],
    ['CDF', 'a NetCDF file'],
    ['\x89HDF', 'an HDF5 file'],
];

const ENOUGH = 4096;

/** The bytes of a file that tell what it is. */
export function beginning(file: Blob): Blob {
    return file.slice(0, ENOUGH);
}

/** Whether the bytes are UTF-16: by its mark, or because every second one is zero. */
export function isUtf16(bytes: Uint8Array): boolean {
    if (bytes.length < 4) {
        return false;
    }
    if ((bytes[0] === 0xff && bytes[1] === 0xfe) || (bytes[0] === 0xfe && bytes[1] === 0xff)) {
        return true;
    }
    const zeros = [0, 0];
    bytes.forEach((byte, at) => {
        if (byte === 0) {
            zeros[at % 2]! += 1;
        }
    });
    const half = bytes.length / 2;
    return Math.max(zeros[0]!, zeros[1]!) > 0.9 * half && Math.min(zeros[0]!, zeros[1]!) < 0.1 * half;
}

/** What a file is by its first bytes, to follow "is"; nothing when they do not tell. */
export function kindOf(bytes: Uint8Array): string {
    const start = String.fromCharCode(...bytes.subarray(0, 8));
    // BUFR and GRIB may follow a heading.
    const head = String.fromCharCode(...bytes.subarray(0, 80));
    const found = SIGNATURES.find(
        ([signature]) => start.startsWith(signature) || (/^(BUFR|GRIB)$/.test(signature) && head.includes(signature)),
    );
    return found?.[1] ?? '';
}
