"""What the tests with a simulated modem share."""

import json
import os
import pathlib
import subprocess
import tempfile
import unittest

from line import Line
from modem import Modem

ROOT = pathlib.Path(__file__).resolve().parents[2]
AT_TOOL = pathlib.Path(os.environ.get("AT_TOOL", ROOT / "out/native/tests/modem/at_tool"))

# Texts of several alphabets; the long ones take several parts, and one of them has a character of two units
# just where the first part ends.
TEXTS = ("Grüße, 5 € [an] {dich} ~ ^ \\ |", "Привет, мир", "안녕하세요", "שלום", "fine 🎉", "x" * 158 + "€€" + "y" * 50,
         "ж" * 66 + "🎉" + "ж" * 40)


def at_tool(*words, timeout=60):
    """Runs our own side, as it is built for this machine; its answer."""
    done = subprocess.run([str(AT_TOOL), *words], capture_output=True, timeout=timeout, stdin=subprocess.DEVNULL)
    if done.returncode:
        raise AssertionError(f"at_tool {words[0]}: {done.returncode}\n{done.stderr.decode(errors='replace')}")
    return json.loads(done.stdout)


class ModemTest(unittest.TestCase):
    """A modem on a pseudo terminal for every test that asks for one."""

    def plug_in(self, state, *quirks):
        """The line to a modem with these messages; gone when the test ends."""
        folder = self.enterContext(tempfile.TemporaryDirectory())
        return self.enterContext(Line(Modem(state, quirks), pathlib.Path(folder) / "modem"))
