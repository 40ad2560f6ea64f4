"""The shared record of a plant and its controller, and the System V segments that hold it.

Machines with 64 bits, little-endian, and the GNU C library: there alone the words of a semaphore lie as here.
Each value of the record is aligned and is read and written at once, by a copy of 4 or 8 bytes. Nothing
else is atomic in Python: `clock += 1` is a read and a write. Stores become visible in the order in which they
are made on x86-64, where this has been tried.
"""

import ctypes
import os
from collections.abc import Iterator
from typing import Any, NamedTuple

SEGMENT_SIZE = 4561
MOST_VALUES = 50  # places for values
MOST_NAMES = 41  # places for names: an area has no more signals than these
LONGEST_NAME = 49  # bytes in UTF-8

libc = ctypes.CDLL(None, use_errno=True)
libc.shmget.argtypes = [ctypes.c_int, ctypes.c_size_t, ctypes.c_int]
libc.shmat.argtypes = [ctypes.c_int, ctypes.c_void_p, ctypes.c_int]
libc.shmat.restype = ctypes.c_void_p
libc.shmdt.argtypes = [ctypes.c_void_p]
libc.shmctl.argtypes = [ctypes.c_int, ctypes.c_int, ctypes.c_void_p]
libc.sem_init.argtypes = [ctypes.c_void_p, ctypes.c_int, ctypes.c_uint]
libc.sem_trywait.argtypes = [ctypes.c_void_p]

_IPC_PRIVATE, _IPC_RMID, _SHM_RDONLY = 0, 0, 0o10000
_NOWHERE = ctypes.c_void_p(-1).value


class area_error(Exception):
    """What keeps an area from being created, attached or used, as a sentence."""


class lock_words(ctypes.Structure):
    """What the C library keeps in the record's `sem_t`."""

    _fields_ = [
        ("value", ctypes.c_uint32),  # 1: free
        ("waiters", ctypes.c_uint32),
        ("sharing", ctypes.c_uint32),  # 0: private to one process, part of the area's contract
        ("rest", ctypes.c_uint32 * 5),
    ]


class IO_controleur(ctypes.Structure):
    """The record, byte for byte as doc/io-area.md has it. Inputs are the controller's: the plant writes them."""

    _fields_ = [
        ("clock", ctypes.c_int64),  # batches of inputs announced; -1 once the run is over
        ("output_clock", ctypes.c_int64),  # batches of outputs announced
        ("mutex", lock_words),
        ("nb_entrees", ctypes.c_int32),
        ("nb_sorties", ctypes.c_int32),
        ("input", ctypes.c_int32 * MOST_VALUES),
        ("output", ctypes.c_int32 * MOST_VALUES),
        ("nom_input", (ctypes.c_char * (LONGEST_NAME + 1)) * MOST_NAMES),
        ("nom_output", (ctypes.c_char * (LONGEST_NAME + 1)) * MOST_NAMES),
    ]


def checked(value: int) -> int:
    """The value, if a signal can have it: 32 bits, signed; otherwise an OverflowError."""
    if not -(2**31) <= value < 2**31:
        raise OverflowError(f"{value} is no signal's value: these are from -2147483648 to 2147483647")
    return value


def names_in(slots: Any, count: int) -> list[str]:
    """The names of an area's inputs or outputs, in order. Bytes that are not UTF-8 show as \\xNN."""
    return [slots[i].value.decode("utf-8", "backslashreplace") for i in range(count)]


class segment(NamedTuple):
    """A System V segment of this machine, as the kernel lists it."""

    ident: int
    size: int  # bytes
    creator: int  # the number of the process that made it
    attached: int  # processes that have it attached
    owner: int  # user number
    created: int  # seconds since the epoch


def segments() -> Iterator[segment]:
    """All segments of the machine."""
    with open("/proc/sysvipc/shm", encoding="ascii") as table:
        columns = next(table).split()
        for line in table:
            row = dict(zip(columns, map(int, line.split())))
            yield segment(row["shmid"], row["size"], row["cpid"], row["nattch"], row["uid"], row["ctime"])


def create_segment() -> int:
    """A new segment for an area, mode 0600; its identifier is never 0, which a controller refuses."""
    ident = libc.shmget(_IPC_PRIVATE, SEGMENT_SIZE, 0o600)
    if ident == 0:  # the first of a fresh kernel: it keeps that number while the next is created
        ident = libc.shmget(_IPC_PRIVATE, SEGMENT_SIZE, 0o600)
        remove_segment(0)
    if ident == -1:
        raise area_error(_refused("shmat() serveur refuse pour ident mem=-1"))
    return int(ident)


def remove_segment(ident: int) -> None:
    """Removes a segment as soon as nobody has it attached; one that is not there is left alone."""
    libc.shmctl(ident, _IPC_RMID, None)


class attachment:
    """A segment attached to this process."""

    def __init__(self, ident: int, read_only: bool = False, side: str = "client") -> None:
        """Raises an area_error when it cannot be attached, or is too small for the record."""
        if not -(2**31) <= ident < 2**31:
            raise area_error(f"{ident} is no identifier of an area")
        address = libc.shmat(ident, None, _SHM_RDONLY if read_only else 0)
        if address == _NOWHERE:
            raise area_error(_refused(f"shmat() {side} refuse pour ident mem={ident}"))
        self._address: int | None = address
        if any(one.ident == ident and one.size < ctypes.sizeof(IO_controleur) for one in segments()):
            self.detach()
            raise area_error(f"area {ident} is no plant's area: it is too small")
        self._record = IO_controleur.from_address(address)

    @property
    def record(self) -> IO_controleur:
        """The record; an area_error once it is detached."""
        if not self.attached:
            raise area_error("the area has been closed")
        return self._record

    @property
    def attached(self) -> bool:
        """Whether it has not been detached yet."""
        return self._address is not None

    def detach(self) -> None:
        """Gives the memory back; a second time does nothing."""
        address, self._address = self._address, None
        if address is not None:
            libc.shmdt(address)


def _refused(what: str) -> str:
    return f"IOshare: erreur sur partage memoire: {what}: {os.strerror(ctypes.get_errno())}"
