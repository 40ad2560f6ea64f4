"""The package with itself, and as a plant with the mine's reference controller, which is C++."""
import contextlib
import ctypes
import io
import os
import pathlib
import re
import subprocess
import sys
import time
import unittest
from unittest import mock

from wagons import *
from wagons import lock, record


class Area(unittest.TestCase):
    def setUp(self):
        self.enterContext(contextlib.redirect_stderr(io.StringIO()))

    def plant(self, inputs, outputs):
        server = self.enterContext(IOsharemem_server(inputs, outputs))
        self.addCleanup(server.remove)
        server._memory.record.output_clock = 12
        return server

    def pair(self):
        server = self.plant(["pcA", "wAplein"], ["A_DROITE"])
        return server, self.enterContext(IOsharemem_client(server.memory_ident()))

    def test_a_client_sees_a_batch_once_and_then_the_end_at_every_call(self):
        plant, mine = self.pair()
        pcA, A_DROITE = input_signal(mine, "pcA"), output_signal(mine, "A_DROITE")
        self.assertEqual((mine.receive(), pcA == 0, bool(pcA)), (0, True, False))
        plant.publish({"pcA": 1})
        plant.publish({"pcA": -2})
        batches = mine.batches()
        self.assertEqual((next(batches), int(pcA), mine.input_is_set("pca")), (2, -2, 0))
        A_DROITE.set(pcA)
        mine.setreset_output("a_droite", 1)
        self.assertRaises(OverflowError, A_DROITE.set, 2**31)
        self.assertEqual((plant.outputs(), plant.get_outputs_clock()), ({"A_DROITE": -2}, 0))
        plant.sharing_terminate()
        self.assertEqual((list(batches), plant.get_outputs_clock()), ([], 1))
        self.assertEqual((mine.receive(), mine.receive()), (-1, -1))
        mine.close()
        self.assertRaises(area_error, A_DROITE.set, 1)

    def test_wrong_names_tell_the_right_one(self):
        _, mine = self.pair()
        for language, handle, name, message in (
            ("fr", input_signal, "A_DROITE",
             'aucune entrée ne s\'appelle "A_DROITE" : c\'est une sortie. Les entrées sont : pcA wAplein'),
            ("en", output_signal, "PCa",
             'no output is named "PCa"; the nearest name is "pcA", an input. The outputs are: A_DROITE')):
            with mock.patch.dict(os.environ, LC_ALL=language):
                self.assertRaisesRegex(unknown_signal, f"^{re.escape(message)}$", handle, mine, name)

    def test_what_cannot_be_had_is_refused(self):
        for names in (["n" * 50], ["é" * 25], [""], ["a\0"], ["a", "a"], map(str, range(42))):
            self.assertRaises(ValueError, IOsharemem_server, names, [])
        for ident in (0, -5, 2**40):
            self.assertRaisesRegex(area_error, "ident", IOsharemem_client, ident)
        self.assertEqual(automemlink(["me", "mine", "-automemlink", "12"]), 12)
        for words in (["-automemlink", "1"], *(["me", "-automemlink", x] for x in ("", "-1", "1x", "2147483648"))):
            self.assertRaisesRegex(SystemExit, "2", automemlink, words)

    def test_the_lock_is_taken_where_the_contract_has_it_and_mended(self):
        plant, mine = self.pair()
        words = (ctypes.c_uint32 * 3).from_buffer(mine._memory.record, 16)
        for scribble in ([7, 7, 7], [1, 0, 0x5A5A5A5A]):
            for call, mends in ((lambda: plant.setreset_input(0, 1), True), (plant.get_outputs_clock, True),
                                (mine.outputs_refresh, True), (lambda: plant.setreset_input(9, 1), False),
                                (plant.inputs_go, False), (plant.outputs, False), (mine.receive, True)):
                words[:] = scribble
                call()
                self.assertEqual(words[:], [1, 0, 0] if mends else scribble)

    def test_a_holder_that_is_gone_costs_a_second_once(self):
        plant, mine = self.pair()
        pauses = []
        with mock.patch.object(lock, "time", mock.Mock(sleep=pauses.append, monotonic=lambda: sum(pauses))):
            for patience in (1.0, 0.001, *range(100), 0.1):  # a whole number: nobody holds it
                pauses.clear()
                mine._memory.record.mutex.value = isinstance(patience, int)
                mine.outputs_refresh()
                self.assertAlmostEqual(sum(pauses), 0 if isinstance(patience, int) else patience, delta=0.0021)

    def test_the_lock_keeps_processes_apart(self):
        def give_turns(*_):  # to the other process, at every line of the lock
            os.sched_yield()
            return give_turns

        plant, mine = self.pair()
        shared, me = mine._memory.record, os.fork()
        try:
            if me == 0:
                plant.inputs_go()
            while shared.clock == 0:  # until both are there
                pass
            sys.settrace(give_turns)
            turns, deadline = 0, time.monotonic() + 20  # a turn given away is long on a busy machine
            while turns < 2000 and time.monotonic() < deadline:
                turns += 1
                with mine._lock:
                    shared.input[0] = me
                    os.sched_yield()
                    shared.output[1] += shared.input[0] != me
        finally:
            sys.settrace(None)
            if me == 0:
                os._exit(0)
        os.waitpid(me, 0)
        self.assertEqual(shared.output[1], 0, "times that both held it")

    def test_onlookers_see_a_plant_as_long_as_it_runs(self):
        def shown(*words):
            words = [sys.executable, "-m", "wagons", *map(str, words)]
            return subprocess.run(words, env={**os.environ, "LC_ALL": "en"}, capture_output=True, text=True).stdout

        plant, me = self.plant(["pcA"], ["A"]), os.getpid()
        plant.publish({"pcA": 3})
        self.assertRegex(shown(), rf"(?m)^{me} .*: area {area_of(me)}, 1 inputs, 1 outputs, batch 1$")
        self.assertRegex(shown(me), r"batch 1\ninput pcA 3\noutput A 0\n$")
        self.assertEqual(shown("--version"), f"wagons {os.environ['VERSION']}\n")
        text = "from wagons import *; IOsharemem_server(['a'], []).publish({'a': -1})"
        with subprocess.Popen([sys.executable, "-c", text]) as ended:
            os.waitid(os.P_PID, ended.pid, os.WEXITED | os.WNOWAIT)
            with area_view(area_of(ended.pid)) as view:
                self.addCleanup(record.remove_segment, view.ident())
                self.assertEqual((view.inputs(), view.clock(), view.plant_runs()), ({"a": -1}, 1, False))
            self.assertEqual(shown(ended.pid), "", "not waited for, and gone all the same")

    def test_a_plant_in_python_drives_the_reference_controller_to_the_end_of_the_run(self):
        page = (pathlib.Path(__file__).parents[2] / "doc/io-area.md").read_text()
        names = re.findall(r"^\| \d+ \| `(\w+)` ", page, re.MULTILINE)
        plant = self.plant(names[:16], names[16:])
        words = [os.environ["PROGRAMS"] + "/controleur_mine", "-automemlink", str(plant.memory_ident())]
        controller = self.enterContext(subprocess.Popen(words, stderr=subprocess.DEVNULL))
        self.addCleanup(controller.kill)
        for inputs, answer in (({"dc": 1, "wAvide": 1, "wBvide": 1}, {"A_GAUCHE", "B_DROITE", "C_GAUCHE"}),
                               ({"dc": 0, "pcA": 1}, {"B_DROITE", "C_GAUCHE"})):
            end = time.monotonic() + 20
            while {name for name, value in plant.outputs().items() if value == 1} != answer:
                self.assertLess(time.monotonic(), end, answer)
                plant.publish(inputs)
                time.sleep(0.005)
        plant.close()
        self.assertEqual(controller.wait(20), 0)
