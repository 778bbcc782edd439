"""The boundary to the two C libraries."""

from __future__ import annotations

import ztcad


def test_version_is_that_of_the_library() -> None:
    assert [int(part) for part in ztcad.__version__.split(".")] >= [0, 2, 0]
