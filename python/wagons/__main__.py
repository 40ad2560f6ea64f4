"""python3 -m wagons [PID]: the plants that run, or the signals of one of them with their values."""

import os
import sys

from . import __version__
from .language import tr
from .record import area_error
from .view import area_of, area_view, areas

DONE, NOT_DONE, BAD_COMMAND_LINE = 0, 1, 2


def name_of(pid: int) -> str:
    try:
        with open(f"/proc/{pid}/comm", encoding="utf-8", errors="backslashreplace") as file:
            return file.read().rstrip("\n")
    except OSError:
        return "?"


def described(area: area_view) -> str:
    clock = area.clock()
    state = tr("marche finie") if clock < 0 else tr("lot {}").format(clock)
    return tr("{} {}: zone {}, {} entrées, {} sorties, {}").format(
        area.plant(),
        name_of(area.plant()),
        area.ident(),
        len(area.input_names()),
        len(area.output_names()),
        state,
    )


def print_plants() -> int:
    found = False
    for entry in areas():
        try:
            with area_view(entry.ident) as area:
                if area.plant_runs() and area.input_names() + area.output_names():
                    print(described(area))
                    found = True
        except area_error:
            pass  # another user's, or not an area at all
    if not found:
        print(tr("aucune maquette ne tourne"), file=sys.stderr)
    return DONE if found else NOT_DONE


def print_signals(pid: int) -> int:
    try:
        with area_view(area_of(pid)) as area:
            if not area.plant_runs():
                raise area_error
            print(described(area))
            for kind, signals in ((tr("entrée"), area.inputs()), (tr("sortie"), area.outputs())):
                for name, value in signals.items():
                    print(kind, name, value)
        return DONE
    except area_error:
        what = tr("le processus {} n'est pas une maquette qui tourne").format(pid)
        print("wagons:", what, file=sys.stderr)
        return NOT_DONE


def main(arguments: list[str]) -> int:
    usage = tr(
        "usage : python3 -m wagons [PID]\n"
        "Montre les maquettes qui tournent, ou les signaux de l'une d'elles et leurs valeurs."
    )
    match arguments:
        case []:
            return print_plants()
        case ["--help"]:
            print(usage)
            return DONE
        case ["--version"]:
            print("wagons", __version__)
            return DONE
        case [number] if number.isdecimal():
            return print_signals(int(number))
    print("wagons:", tr("je ne comprends pas : {}").format(" ".join(arguments)), file=sys.stderr)
    return BAD_COMMAND_LINE


if __name__ == "__main__":
    try:
        status = main(sys.argv[1:])
        sys.stdout.flush()
    except BrokenPipeError:  # whoever was reading has gone
        os.dup2(os.open(os.devnull, os.O_WRONLY), sys.stdout.fileno())
        status = NOT_DONE
    sys.exit(status)
