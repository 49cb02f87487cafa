"""The warning that parts were refused."""
from __future__ import annotations

import warnings

from ._faults import RefusedWarning


def warn_of_refused(counts: dict[str, int]) -> None:
    """Warns the caller of the function that calls this one."""
    refused, parts = counts["refused"], counts["parts"]
    if refused:
        verb = "was" if refused == 1 else "were"
        warnings.warn(f'{refused} of {parts} parts {verb} refused; read_feed(...).attrs["parts"] says why',
                      RefusedWarning, stacklevel=3)
