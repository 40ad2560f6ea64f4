"""Signals of an area as objects of a controller: asked for once, by name, and checked."""

from collections.abc import Callable, Sequence

from .client import IOsharemem_client
from .language import tr
from .record import area_error, checked


class unknown_signal(area_error, LookupError):
    """The area has no signal of that name in that direction; the message tells the nearest and all there are."""


class input_signal:
    """An input, to be used as the number it is: `if pcA and not full`, `pcA == 1`, `int(pcA)`.

    Its value is that of the last receive() that gave 1, and 0 before the first. Of two inputs with the same
    name the later counts."""

    def __init__(self, area: IOsharemem_client, name: str) -> None:
        """An unknown_signal when the area has no input of that name."""
        self._index = _last_of(area.input_names(), area.output_names(), name, _of_inputs)
        self._area, self.name = area, name

    @property
    def value(self) -> int:
        """The number itself, 32 bits with a sign."""
        return self._area._values[self._index]

    def __index__(self) -> int:
        return self.value

    __int__ = __index__

    def __bool__(self) -> bool:
        return self.value != 0

    def __eq__(self, other: object) -> bool:
        return self.value == (other.value if isinstance(other, input_signal) else other)

    __hash__ = None  # type: ignore[assignment]  # a value that changes is no key

    def __repr__(self) -> str:
        return f"<input {self.name} = {self.value}>"


class output_signal:
    """An output, to be written: `A_DROITE.set(dc and not pcA)`. It cannot be read.

    (`A_DROITE = 1` would only give the name another meaning, as everywhere in Python.) Of two outputs with the
    same name the later counts."""

    def __init__(self, area: IOsharemem_client, name: str) -> None:
        """An unknown_signal when the area has no output of that name."""
        self._index = _last_of(area.output_names(), area.input_names(), name, _of_outputs)
        self._area, self.name = area, name

    def set(self, value: "int | input_signal") -> None:
        """Writes it at once: 32 bits with a sign, or an OverflowError. The plant sees stores in the order of the
        calls."""
        self._area._memory.record.output[self._index] = checked(int(value))

    def __repr__(self) -> str:
        return f"<output {self.name}>"


def _last_of(own: list[str], others: list[str], name: str, say: Callable[[], tuple[str, str, str, str]]) -> int:
    if name not in own:
        raise unknown_signal(_unknown(name, own, others, *say()))
    return len(own) - 1 - own[::-1].index(name)


def _of_inputs() -> tuple[str, str, str, str]:
    return (
        tr('aucune entrée ne s\'appelle "{}"'),
        tr(" : c'est une sortie"),
        tr(", une sortie"),
        tr(". Les entrées sont :"),
    )


def _of_outputs() -> tuple[str, str, str, str]:
    return (
        tr('aucune sortie ne s\'appelle "{}"'),
        tr(" : c'est une entrée"),
        tr(", une entrée"),
        tr(". Les sorties sont :"),
    )


def _unknown(
    name: str, own: list[str], others: list[str], unknown: str, is_other: str, nearest_is_other: str, all_are: str
) -> str:
    text = unknown.format(name)
    if own or others:
        nearest = min(own + others, key=lambda known: _distance(name, known))
        if nearest == name:
            text += is_other
        else:
            text += tr(' ; le nom le plus proche est "{}"').format(nearest)
            if nearest not in own:
                text += nearest_is_other
    return text + all_are + "".join(" " + one for one in own) + ("" if own else tr(" (aucune)"))


def _distance(one: Sequence[str], other: Sequence[str]) -> int:
    """Levenshtein's: letters to put in, take out or change. Upper and lower case are hardly different."""
    edit, other_case = 4, 1
    row = [edit * k for k in range(len(other) + 1)]
    for letter in one:
        diagonal, row[0] = row[0], row[0] + edit
        for k, wanted in enumerate(other, 1):
            change = 0 if letter == wanted else other_case if letter.lower() == wanted.lower() else edit
            diagonal, row[k] = row[k], min(diagonal + change, row[k] + edit, row[k - 1] + edit)
    return row[-1]
