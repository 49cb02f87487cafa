"""Where bulletins come from."""
from __future__ import annotations

import errno
import gzip
import io
import os
import re
import sys
import warnings
import zlib
from collections.abc import Callable, Iterable, Iterator
from typing import Any, BinaryIO, Protocol, Union, cast

from ._faults import NoPartWarning

#: A path, the bytes themselves, or a file object.
Source = Union[str, "os.PathLike[str]", bytes, bytearray, memoryview, BinaryIO, io.TextIOBase]

_IDENTIFIER = re.compile(r"\s*(TT|UU|XX|II)(AA|BB|CC|DD)\s")
_GZIP = b"\x1f\x8b"  # RFC 1952, section 2.3.1


class Adder(Protocol):
    """A reader of the extension module."""

    @property
    def counts(self) -> dict[str, int]: ...

    def add(self, source: str, read: Callable[[int], bytes]) -> None: ...


def sources(source: Source | Iterable[Source]) -> Iterator[Source]:
    """The inputs one by one."""
    if isinstance(source, (str, os.PathLike, bytes, bytearray, memoryview)) or hasattr(source, "read"):
        yield cast(Source, source)
    elif isinstance(source, Iterable):
        yield from cast("Iterable[Source]", source)
    else:
        raise TypeError(f"bulletins are read from a path, bytes, a file object or a list of these, not {source!r}")


def name_of(source: Source) -> str:
    """The name that parts get: "-" for what has none, as in corvane-feed."""
    if isinstance(source, (str, os.PathLike)):
        return os.fspath(source)
    name: Any = getattr(source, "name", None)
    return name if isinstance(name, str) and not name.startswith("<") else "-"


def _text_reader(file: io.TextIOBase) -> Callable[[int], bytes]:
    return lambda size: file.read(size).encode("utf-8", "surrogateescape")


def _no_text(path: str) -> None:
    if "\n" in path or "\r" in path or _IDENTIFIER.match(path):
        raise ValueError(f"this is text, not a path: pass text.encode() ({path[:40]!r})")


class _Rest:
    """A file whose first bytes have been read."""

    def __init__(self, begin: bytes, read: Callable[[int], bytes]) -> None:
        self._begin = begin
        self._read = read

    def read(self, size: int) -> bytes:
        begin, self._begin = self._begin[:size], self._begin[size:]
        return begin or self._read(size)


def _add_bytes(reader: Adder, name: str, read: Callable[[int], bytes]) -> None:
    """Reads bytes, unpacked where they are a gzip file."""
    begin = read(2)
    if not isinstance(begin, bytes):
        raise TypeError(f"read() must return bytes, not {type(begin).__name__}")
    if len(begin) == 1:
        begin += read(1)
    rest = _Rest(begin, read)
    if begin[:2] != _GZIP:
        reader.add(name, rest.read)
        return
    try:
        with gzip.GzipFile(fileobj=cast(BinaryIO, rest), mode="rb") as file:
            reader.add(name, file.read)
    except (EOFError, gzip.BadGzipFile, zlib.error) as error:
        raise OSError(errno.EIO, f"not a whole gzip file ({error})", name) from error


def add(reader: Adder, source: Source) -> None:
    """Reads one input to its end, and warns of one without a part.

    Raises OSError with the path for one that cannot be opened or read.
    """
    name = name_of(source)
    before = reader.counts["parts"]
    if isinstance(source, (bytes, bytearray, memoryview)):
        _add_bytes(reader, name, io.BytesIO(source).read)
    elif isinstance(source, io.TextIOBase):
        reader.add(name, _text_reader(source))
    elif not isinstance(source, (str, os.PathLike)):
        if not hasattr(source, "read"):
            raise TypeError(f"bulletins are read from a path, bytes or a file object, not {source!r}")
        _add_bytes(reader, name, source.read)
    elif name == "-":
        _add_bytes(reader, name, sys.stdin.buffer.read)
    else:
        if isinstance(source, str):
            _no_text(source)
        try:
            with open(name, "rb") as file:
                _add_bytes(reader, name, file.read)
        except OSError as error:
            if error.filename is None:  # one that is found while reading
                error.filename = name
            raise
    if reader.counts["parts"] == before:
        warnings.warn(f"no TEMP part found in {name}", NoPartWarning, stacklevel=3)
