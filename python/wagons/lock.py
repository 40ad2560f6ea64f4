"""The area's lock, for one access at a time.

What is atomic, and what is not:

- To take a free lock is: `sem_trywait` of the C library compares and exchanges the value, as C++ programs do.
  It looks at nothing but the value and never goes to the kernel, so no byte that a stranger has written can end
  this process or stop it.
- To give it back is one store of a 1, as with them: right also when somebody thought us gone meanwhile.
- To mend a scribbled lock is not. Of a value that is neither 0 nor 1, `sem_trywait` takes one away; it becomes 0
  by a second access. A side that comes between the two gets the lock as well, this once. C++ programs
  exchange the value in one step; Python has none for that.
- Waiters are not woken: the lock is looked at every millisecond, for a second at most. Then its holder counts as
  gone, and the caller goes on as the holder. After that it waits 1 ms only, and 1 ms longer with each time
  that it gets the lock.
"""

import ctypes
import time
from types import TracebackType

from .record import libc, lock_words

_TAKEN, _FREE = 0, 1
_PAUSE = 0.001  # seconds, as are all times here
_FULL_PATIENCE = 1.0


class area_lock:
    """One side's hold on the lock of its area: `with lock: ...`. Holds do not nest; one thread only.

    The record must stay attached as long as this is used."""

    def __init__(self, words: lock_words) -> None:
        self._words = words
        self._semaphore = ctypes.addressof(words)
        self._patience = _FULL_PATIENCE

    def __enter__(self) -> None:
        if not self._take():
            deadline = time.monotonic() + self._patience
            while not self._take():
                if time.monotonic() > deadline:
                    # A holder that goes on taking it without giving it back must not cost a second each time.
                    self._patience = _PAUSE
                    return
                time.sleep(_PAUSE)
        self._patience = min(self._patience + _PAUSE, _FULL_PATIENCE)

    def __exit__(
        self, kind: type[BaseException] | None, error: BaseException | None, trace: TracebackType | None
    ) -> None:
        self._words.value = _FREE

    def _take(self) -> bool:
        if libc.sem_trywait(self._semaphore) != 0:
            return False
        words = self._words
        if words.value != _TAKEN or words.sharing != 0:
            words.value = _TAKEN
            words.waiters = words.sharing = 0  # an honest program's sem_post hands them to the kernel
        return True
