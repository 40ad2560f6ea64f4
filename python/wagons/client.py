"""The controller's side of the area."""

import re
import sys
import time
from collections.abc import Iterator, Sequence
from types import TracebackType

from .lock import area_lock
from .record import MOST_NAMES, area_error, attachment, checked, names_in

_IDLE_PAUSE = 0.010  # seconds


def automemlink(arguments: Sequence[str] = sys.argv) -> int:
    """The area's identifier from the last two arguments, "-automemlink" and a decimal number without sign that
    fits 32 bits; whatever stands before them is the controller's own.

    Anything else writes "usage: <program> [...] -automemlink <ident>" to the standard error stream and
    raises SystemExit(2)."""
    if len(arguments) >= 3 and arguments[-2] == "-automemlink":
        text = arguments[-1]
        if re.fullmatch("[0-9]+", text) and int(text) < 2**31:
            return int(text)
    print(f"usage: {arguments[0] if arguments else ''} [...] -automemlink <ident>", file=sys.stderr)
    raise SystemExit(2)


class IOsharemem_client:
    """Attaches to a plant's area, waits for inputs, reads them and writes outputs.

    with IOsharemem_client(automemlink()) as mine:
        pcA, A_GAUCHE = input_signal(mine, "pcA"), output_signal(mine, "A_GAUCHE")
        for batch in mine.batches():
            A_GAUCHE.set(not pcA)

    Values are integers of 32 bits with a sign; the plants of this project write 0 and 1, and an output counts
    only at exactly 1 (True is 1). One thread only. A closed client raises an area_error at every use."""

    def __init__(self, ident: int) -> None:
        """Attaches to area `ident` and sets its output clock to 0; writes "ident_mem=<ident>" to the standard
        error stream. An area_error when `ident` is 0, or when it cannot be attached or is no area."""
        if ident == 0:
            raise area_error("IOshare: erreur sur partage memoire: ident_mem ==0 !")
        print(f"ident_mem={ident}", file=sys.stderr, flush=True)
        self._memory = attachment(ident)
        record = self._memory.record
        record.output_clock = 0
        # The counts stand where strangers can write: they are never trusted beyond the arrays' ends.
        self._inputs = names_in(record.nom_input, min(max(record.nb_entrees, 0), MOST_NAMES))
        self._outputs = names_in(record.nom_output, min(max(record.nb_sorties, 0), MOST_NAMES))
        self._input_index = {name: i for i, name in enumerate(self._inputs)}
        self._values = [0] * len(self._inputs)
        self._seen = 0
        self._lock = area_lock(record.mutex)

    def receive(self) -> int:
        """-1: the run is over. 1: a new batch of inputs has been copied (batches between may have been skipped).
        0: nothing new; has slept 10 ms."""
        record = self._memory.record
        announced = record.clock
        if announced < 0:
            return -1
        if announced > self._seen:
            with self._lock:
                self._seen = max(announced, record.clock)  # not -1, should the run end just now
                self._values[:] = record.input[: len(self._values)]
            return 1
        time.sleep(_IDLE_PAUSE)
        return 0

    def batches(self) -> Iterator[int]:
        """Every new batch as it comes, by its number, until the run is over; a gap in the numbers tells of
        skipped ones. What the body of the loop has written is announced (outputs_refresh) when it asks for
        the next batch; a loop that is left early announces nothing of its last one."""
        while (news := self.receive()) >= 0:
            if news == 1:
                yield self._seen
                self.outputs_refresh()

    def input_is_set(self, name: str) -> int:
        """The named input at the last receive() that gave 1; 0 for an unknown name, in silence (an input_signal
        is checked). Names compare exactly; where two inputs bear the same name the later counts."""
        i = self._input_index.get(name)
        return 0 if i is None else self._values[i]

    def setreset_output(self, name: str, value: int) -> None:
        """Writes every output of that name at once; an unknown name is ignored, in silence (an output_signal is
        checked). The plant sees stores in the order of the calls. An OverflowError for a value of more than 32
        bits."""
        for k, known in enumerate(self._outputs):
            if known == name:
                self._memory.record.output[k] = checked(value)

    def outputs_refresh(self) -> None:
        """Announces a finished batch of outputs: the output clock advances by one, under the lock."""
        record = self._memory.record
        with self._lock:
            record.output_clock += 1

    def input_names(self) -> list[str]:
        """The names of the area's inputs, at most 41, in its order."""
        return list(self._inputs)

    def output_names(self) -> list[str]:
        """The names of the area's outputs, at most 41, in its order."""
        return list(self._outputs)

    def close(self) -> None:
        """Detaches. The outputs stay as they are."""
        self._memory.detach()

    def __enter__(self) -> "IOsharemem_client":
        return self

    def __exit__(
        self, kind: type[BaseException] | None, error: BaseException | None, trace: TracebackType | None
    ) -> None:
        self.close()
