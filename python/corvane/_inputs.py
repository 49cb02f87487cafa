"""Where bulletins come from."""
from __future__ import annotations

import errno
import gzip
import io
import os
import sys
import zlib
from collections.abc import Callable, Iterable, Iterator
from contextlib import ExitStack
from typing import Any, BinaryIO, Protocol, Union, cast

#: A path, the bytes themselves, or a file object.
Source = Union[str, "os.PathLike[str]", bytes, bytearray, memoryview, BinaryIO, io.TextIOBase]


class Adder(Protocol):
    """A reader of the extension module."""

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


def add(reader: Adder, source: Source) -> None:
    """Reads one input to its end.

    Raises OSError with the path for one that cannot be opened or read.
    """
    name = name_of(source)
    with ExitStack() as stack:
        if isinstance(source, (bytes, bytearray, memoryview)):
            reader.add(name, io.BytesIO(source).read)
        elif isinstance(source, io.TextIOBase):
            reader.add(name, _text_reader(source))
        elif not isinstance(source, (str, os.PathLike)):
            if not hasattr(source, "read"):
                raise TypeError(f"bulletins are read from a path, bytes or a file object, not {source!r}")
            reader.add(name, source.read)
        elif name == "-":
            reader.add(name, sys.stdin.buffer.read)
        else:
            try:
                file = stack.enter_context(gzip.open(name) if name.endswith(".gz") else open(name, "rb"))
                reader.add(name, file.read)
            except (EOFError, gzip.BadGzipFile, zlib.error) as error:
                raise OSError(errno.EIO, f"not a whole gzip file ({error})", name) from error
            except OSError as error:
                if error.filename is None:  # one that is found while reading
                    error.filename = name
                raise
