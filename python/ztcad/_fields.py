"""Properties whose setter takes more types than the getter returns, such as any array-like for an array."""

from __future__ import annotations

from typing import TYPE_CHECKING, Any, Generic, TypeVar, overload

if TYPE_CHECKING:
    from collections.abc import Callable

    G = TypeVar("G")
    V = TypeVar("V")

    class Field(Generic[G, V]):
        """What a type checker sees: ``property`` cannot describe two types."""

        def __init__(self, fget: Callable[[Any], G], fset: Callable[[Any, V], None]) -> None: ...

        @overload
        def __get__(self, instance: None, owner: Any) -> Field[G, V]: ...

        @overload
        def __get__(self, instance: object, owner: Any) -> G: ...

        def __get__(self, instance: object | None, owner: Any) -> Any: ...

        def __set__(self, instance: object, value: V) -> None: ...

else:
    Field = property
