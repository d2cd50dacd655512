"""The program killed, and nothing lost. The two programs kill_at_calls and kill_at_random here kill far more often."""

import pathlib
import tempfile
import unittest

import call_kills
import random_kills
from harness import OUT


class Kills(unittest.TestCase):
    def setUp(self):
        (OUT / "end_to_end").mkdir(parents=True, exist_ok=True)
        folder = tempfile.TemporaryDirectory(dir=OUT / "end_to_end")
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)

    def test_random_kills(self):
        kills = random_kills.RandomKills(self.folder, seed=7)
        self.addCleanup(kills.hand.end)
        kills.run(8)
        self.assertGreater(kills.seen["move"] + kills.seen["delete"], 5, kills.seen)

    def test_kills_at_calls(self):
        kills = call_kills.CallKills(self.folder)
        for operation in call_kills.OPERATIONS:
            kills.kill_all(operation, 10, every=9)
        self.assertGreater(min(kills.old, kills.new), 5)
