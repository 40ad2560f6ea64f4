"""One look at a plant's area from outside: neither the plant nor its controller can tell."""

import os
import re
from types import TracebackType

from .record import MOST_NAMES, SEGMENT_SIZE, area_error, attachment, names_in, segment, segments


def areas() -> list[segment]:
    """The segments of this machine that have the size of an area, the newest first."""
    found = [one for one in segments() if one.size == SEGMENT_SIZE]
    return sorted(found, key=lambda one: (one.created, one.ident), reverse=True)


def area_of(plant: int) -> int:
    """The identifier of the newest area that the process has created; -1 when there is none."""
    return next((one.ident for one in areas() if one.creator == plant), -1)


def creator_runs(area: segment) -> bool:
    """Whether the process that created an area still runs: a later one of the same number does not count, nor one
    that has ended and is only not yet waited for."""
    rounding = 2  # seconds: a start is known to the second, from a boot time that is rounded too
    if area.creator == 0:  # in another namespace of processes: nothing can be known of it
        return True
    start = _start_of(area.creator)
    return start is not None and (start <= area.created + rounding or _has_attached(area.creator, area.ident))


class area_view:
    """A plant's area, attached read-only.

    with area_view(area_of(pid)) as mine:
        print(mine.inputs()["pcA"], mine.clock())"""

    def __init__(self, ident: int) -> None:
        """An area_error when there is none of that identifier, when it may not be read, or when it has not the
        size and the counts of the record."""
        entry = next((one for one in areas() if one.ident == ident), None)
        if entry is None:
            raise area_error(f"there is no area {ident}")
        self.entry = entry
        self._memory = attachment(ident, read_only=True)
        record = self._memory.record
        if not (0 <= record.nb_entrees <= MOST_NAMES and 0 <= record.nb_sorties <= MOST_NAMES):
            self.close()
            raise area_error(f"area {ident} is no plant's area: its counts are out of range")
        self._inputs = names_in(record.nom_input, record.nb_entrees)
        self._outputs = names_in(record.nom_output, record.nb_sorties)

    def ident(self) -> int:
        """The area's identifier."""
        return self.entry.ident

    def plant(self) -> int:
        """The number of the process that has created the area."""
        return self.entry.creator

    def plant_runs(self) -> bool:
        """Whether that process still runs, however its end came."""
        return creator_runs(self.entry)

    def input_names(self) -> list[str]:
        """The names of the inputs, at most 41, as they were when the view was made."""
        return list(self._inputs)

    def output_names(self) -> list[str]:
        """The names of the outputs, likewise."""
        return list(self._outputs)

    def inputs(self) -> dict[str, int]:
        """All inputs by name, as they are now, each read at once. Of two with the same name the later counts."""
        return dict(zip(self._inputs, self._memory.record.input))

    def outputs(self) -> dict[str, int]:
        """All outputs, likewise."""
        return dict(zip(self._outputs, self._memory.record.output))

    def clock(self) -> int:
        """Batches of inputs announced; -1 once the run is over."""
        return int(self._memory.record.clock)

    def output_clock(self) -> int:
        """Batches of outputs announced by the controller."""
        return int(self._memory.record.output_clock)

    def close(self) -> None:
        """Detaches; what is asked for after that raises an area_error."""
        self._memory.detach()

    def __enter__(self) -> "area_view":
        return self

    def __exit__(
        self, kind: type[BaseException] | None, error: BaseException | None, trace: TracebackType | None
    ) -> None:
        self.close()


def _start_of(pid: int) -> float | None:
    """Seconds since the epoch; None when the process does not run."""
    try:
        with open(f"/proc/{pid}/stat", encoding="utf-8", errors="replace") as file:
            fields = file.read().rpartition(")")[2].split()  # the name in brackets may hold anything
    except OSError:
        return None
    if fields[0] in "ZX":
        return None
    with open("/proc/stat", encoding="ascii") as file:
        boot = next(int(line.split()[1]) for line in file if line.startswith("btime "))
    ticks_since_boot = int(fields[19])
    return boot + ticks_since_boot // os.sysconf("SC_CLK_TCK")


def _has_attached(pid: int, ident: int) -> bool:
    """A process's memory map names its segments by their identifiers."""
    try:
        with open(f"/proc/{pid}/maps", encoding="utf-8", errors="replace") as file:
            return any("/SYSV" in line and re.search(f" {ident} ", line) for line in file)
    except OSError:
        return False
