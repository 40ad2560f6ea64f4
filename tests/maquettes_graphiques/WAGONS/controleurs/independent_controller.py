#!/usr/bin/env python3
"""Hauls one load with wagon B, knowing nothing but the layout of the shared record."""
import ctypes
import sys
import time

libc = ctypes.CDLL(None, use_errno=True)
libc.shmat.restype = ctypes.c_void_p
libc.shmat.argtypes = [ctypes.c_int, ctypes.c_void_p, ctypes.c_int]


class Record(ctypes.Structure):
    _fields_ = [("clock", ctypes.c_int64), ("output_clock", ctypes.c_int64), ("lock", ctypes.c_char * 32),
                ("nb_inputs", ctypes.c_int32), ("nb_outputs", ctypes.c_int32),
                ("input", ctypes.c_int32 * 50), ("output", ctypes.c_int32 * 50),
                ("input_names", (ctypes.c_char * 50) * 41), ("output_names", (ctypes.c_char * 50) * 41)]


def names(table, count):
    return {bytes(table[i]).split(b"\0")[0].decode(): i for i in range(count)}


record = Record.from_address(libc.shmat(int(sys.argv[sys.argv.index("-automemlink") + 1]), None, 0))
inputs = names(record.input_names, record.nb_inputs)
outputs = names(record.output_names, record.nb_outputs)


def until(name):
    while not record.input[inputs[name]]:
        if record.clock < 0:
            sys.exit("the run is over")
        time.sleep(0.001)


def drive(output, sensor):
    record.output[outputs[output]] = 1
    until(sensor)
    record.output[outputs[output]] = 0
    batch = record.clock
    while 0 <= record.clock < batch + 3:  # at rest
        time.sleep(0.001)


drive("C_GAUCHE", "pcC")
drive("B_DROITE", "pcB")
drive("REMPLIR_B", "wBplein")
drive("B_GAUCHE", "pdAB")
drive("VIDER_B", "wBvide")
drive("C_DROITE", "pdC")
drive("VIDER_C", "wCvide")
print("hauled")
