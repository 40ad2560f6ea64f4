"""The shared I/O area between a plant (such as the mine) and its controller, from Python.

    from wagons import IOsharemem_client, automemlink, input_signal, output_signal

    with IOsharemem_client(automemlink()) as mine:
        pcA, A_GAUCHE = input_signal(mine, "pcA"), output_signal(mine, "A_GAUCHE")
        for batch in mine.batches():
            A_GAUCHE.set(not pcA)

Names are those of the C++ library. Inputs are the controller's: the plant writes them, the controller reads them.
Only the standard library is used. `python3 -m wagons` lists the plants that run, and their signals.

- A controller: automemlink, IOsharemem_client, input_signal, output_signal.
- A plant: IOsharemem_server.
- An onlooker: areas, area_of, creator_runs, area_view.
- Errors: area_error, and unknown_signal, which is one.
"""

from .client import IOsharemem_client, automemlink
from .handles import input_signal, output_signal, unknown_signal
from .record import area_error
from .server import IOsharemem_server
from .view import area_of, area_view, areas, creator_runs

__version__ = "1.0"
__all__ = [
    "IOsharemem_client",
    "IOsharemem_server",
    "area_error",
    "area_of",
    "area_view",
    "areas",
    "automemlink",
    "creator_runs",
    "input_signal",
    "output_signal",
    "unknown_signal",
]
