"""The exception and the warnings of the package."""
from __future__ import annotations

import re

# The words between what is wrong and the groups where it is (see doc/errors.md).
_CONTEXT = re.compile(r" ?Error detected (?:at|near)(.*)", re.DOTALL)
_STATION = re.compile(r"(Block and station number is incorrect): (.*)", re.DOTALL)


class CodingFault(ValueError):
    """A report that cannot be decoded.

    Attributes:
        message: the whole text, as the program `corvane` prints it.
        reason: what is wrong, without the groups.
        groups: the groups shown, from the fault on: at most six.

    >>> try:
    ...     decode("TTAA 0612 ABC")
    ... except CodingFault as fault:
    ...     print(fault.reason)
    ...     print(fault.groups)
    The last wind indicator (Id) is incorrectly coded.
    ('0612', 'ABC')
    """

    message: str
    reason: str
    groups: tuple[str, ...]

    def __init__(self, message: str) -> None:
        super().__init__(message)
        self.message = message
        station = _STATION.fullmatch(message)
        if station:
            self.reason, self.groups = station[1], (station[2],)
            return
        context = _CONTEXT.search(message)
        self.reason = (message[: context.start()] if context else message).rstrip(" ")
        shown = context[1].removesuffix("...") if context else ""
        self.groups = tuple(group for group in shown.split(" ") if group)


class RefusedWarning(UserWarning):
    """Some parts of bulletins hold data that cannot be read with certainty; the table of parts says why.

    >>> import warnings
    >>> with warnings.catch_warnings(record=True) as caught:
    ...     warnings.simplefilter("always", RefusedWarning)
    ...     frame = read_feed(b"TTAA 56001 72203 990 32259 11504=")
    >>> print(caught[0].message)
    1 of 1 parts was refused; read_feed(...).attrs["parts"] says why
    """


class NoPartWarning(UserWarning):
    """An input holds no part of a TEMP report at all: it may be a file of another kind.

    >>> import warnings
    >>> with warnings.catch_warnings(record=True) as caught:
    ...     warnings.simplefilter("always", NoPartWarning)
    ...     frame = read_feed(b"SAUS70 KWBC 130000")
    >>> print(caught[0].message)
    no TEMP part found in -
    """
