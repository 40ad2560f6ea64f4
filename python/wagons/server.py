"""The plant's side of the area."""

import ctypes
from collections.abc import Iterable, Mapping
from types import TracebackType

from .lock import area_lock
from .record import LONGEST_NAME, MOST_NAMES, MOST_VALUES, attachment, checked, create_segment, libc, remove_segment


class IOsharemem_server:
    """Creates an area, publishes inputs, reads outputs, ends the exchange. One thread only.

    with IOsharemem_server(["full"], ["FILL"]) as plant:
        subprocess.Popen([*controller, "-automemlink", str(plant.memory_ident())])
        while ...:
            plant.publish({"full": level > 90})
            if plant.outputs()["FILL"] == 1: ...

    The area stays in the system after the plant, so that a controller can still read there that the run is over:
    `nettoyer_zones` removes it, or remove()."""

    def __init__(self, inputs: Iterable[str], outputs: Iterable[str]) -> None:
        """Creates and fills an area for these signals, in order; values and clocks are 0.

        A ValueError, and no area, for more than 41 names a list, a name that is empty, has a NUL or takes more
        than 49 bytes in UTF-8, or one that stands twice in its list. An area_error when none can be had."""
        self._inputs, self._outputs = _checked_names(inputs), _checked_names(outputs)
        self._ident = create_segment()
        self._memory = attachment(self._ident, side="serveur")
        record = self._memory.record
        # Locked until it is filled. Private to one process: part of the area's contract.
        libc.sem_init(ctypes.addressof(record.mutex), 0, 0)
        record.nb_entrees, record.nb_sorties = len(self._inputs), len(self._outputs)
        for names, slots in ((self._inputs, record.nom_input), (self._outputs, record.nom_output)):
            for i, name in enumerate(names):
                slots[i].value = name.encode()
        record.clock = 0
        record.mutex.value = 1
        self._lock = area_lock(record.mutex)

    def memory_ident(self) -> int:
        """The identifier that a controller attaches with; never 0."""
        return self._ident

    def setreset_input(self, i: int, value: int) -> None:
        """Writes one input, by its index, under the lock; an index out of range is ignored. An OverflowError for
        a value of more than 32 bits."""
        record = self._memory.record
        if 0 <= i < min(record.nb_entrees, MOST_VALUES):
            number = checked(value)
            with self._lock:
                record.input[i] = number

    def inputs_go(self) -> None:
        """Announces the batch of inputs written since the last call: the input clock advances by one. Nobody else
        may write that clock: this is a read and a write."""
        self._memory.record.clock += 1

    def publish(self, inputs: Mapping[str, int]) -> None:
        """Writes these inputs, by name and in their order, and announces the batch; the others stay as they are.
        A KeyError for an unknown name, before anything is written."""
        for i, value in [(self._inputs[name], value) for name, value in inputs.items()]:
            self.setreset_input(i, value)
        self.inputs_go()

    def output_value(self, i: int) -> int:
        """Output `i` as the controller last wrote it; 0 for an index out of range. Takes no lock."""
        record = self._memory.record
        return int(record.output[i]) if 0 <= i < min(record.nb_sorties, MOST_VALUES) else 0

    def outputs(self) -> dict[str, int]:
        """All outputs by name, each as the controller last wrote it."""
        return {name: self.output_value(k) for name, k in self._outputs.items()}

    def get_outputs_clock(self) -> int:
        """The number of output batches that the controller has announced. Takes the lock."""
        record = self._memory.record
        with self._lock:
            return int(record.output_clock)

    def sharing_terminate(self) -> None:
        """Sets the input clock to -1: the controller's next receive() tells it that the run is over."""
        self._memory.record.clock = -1

    def remove(self) -> None:
        """Takes the area out of the system; who has it attached still sees it."""
        remove_segment(self._ident)

    def close(self) -> None:
        """Ends the run, if nothing has, and detaches; a second time does nothing."""
        if self._memory.attached:
            self.sharing_terminate()
            self._memory.detach()

    def __enter__(self) -> "IOsharemem_server":
        return self

    def __exit__(
        self, kind: type[BaseException] | None, error: BaseException | None, trace: TracebackType | None
    ) -> None:
        self.close()


def _checked_names(names: Iterable[str]) -> dict[str, int]:
    """Each with its index."""
    result: dict[str, int] = {}
    for i, name in enumerate(names):
        if i == MOST_NAMES:
            raise ValueError(f"an area has at most {MOST_NAMES} inputs and {MOST_NAMES} outputs")
        if name in result:
            raise ValueError(f"there are two signals of the name {name!r}")
        if "\0" in name or not 0 < len(name.encode()) <= LONGEST_NAME:
            raise ValueError(f"{name!r} is no name: it takes 1 to {LONGEST_NAME} bytes, none of them 0")
        result[name] = i
    return result
