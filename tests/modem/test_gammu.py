"""Another AT client as a judge: it must understand our modem, and what our own side writes."""

import json
import pathlib
import re
import subprocess
import tempfile
import unittest

import pdu
import state as states
from line import Line
from modem import Modem

AT_TOOL = pathlib.Path(__file__).resolve().parents[2] / "out/native/tests/modem/at_tool"
NUMBER = "+31641600986"

# Texts of several alphabets; the long ones take several parts, and one of them has a character of two units
# just where the first part ends.
TEXTS = ("Grüße, 5 € [an] {dich} ~ ^ \\ |", "Привет, мир", "안녕하세요", "שלום", "fine 🎉", "x" * 158 + "€€" + "y" * 50,
         "ж" * 66 + "🎉" + "ж" * 40)


def at_tool(*words):
    """Our own coding of messages, as it is built for this machine; its answer."""
    return json.loads(subprocess.run([str(AT_TOOL), *words], capture_output=True, check=True, timeout=60).stdout)


def texts_in(listing):
    """What stands below the fields of each message: an empty line, the text, another empty line or two."""
    blocks = re.split(r"(?m)^(?:Location \d+, folder .*\n)+", listing)[1:]
    return [re.sub(r"\n+(?:\d+ SMS parts in [\s\S]*)?\Z", "", block.split("\n\n", 1)[1]) for block in blocks]


class Gammu(unittest.TestCase):
    def plug_in(self, state):
        """The line to a modem with these messages; gone when the test ends."""
        folder = self.enterContext(tempfile.TemporaryDirectory())
        return self.enterContext(Line(Modem(state), pathlib.Path(folder) / "modem"))

    def gammu(self, line, *words):
        with tempfile.NamedTemporaryFile("w", suffix=".rc") as settings:
            settings.write(f"[gammu]\ndevice={line.link}\nconnection=at115200\nsynchronizetime=no\nuse_locking=no\n")
            settings.flush()
            done = subprocess.run(["gammu", "-c", settings.name, *words], capture_output=True, timeout=60,
                                  stdin=subprocess.DEVNULL)
        self.assertEqual(done.returncode, 0, f"{words}: {done.stdout.decode()}{done.stderr.decode()}")
        return done.stdout.decode()

    def test_knows_the_modem(self):
        said = self.gammu(self.plug_in(states.State()), "identify")
        self.assertRegex(said, r"Manufacturer +: Quillet\n")
        self.assertRegex(said, r"Model +: .*\(Test modem\)\n")

    def test_reads_what_the_modem_holds(self):
        state = states.State()
        for reference, text in enumerate(TEXTS):
            state.receive("SM", NUMBER, text, "26112017150404", reference=reference)
        self.assertEqual(texts_in(self.gammu(self.plug_in(state), "geteachsms")), list(TEXTS))

    def test_reads_what_our_encoder_writes(self):
        state = states.State()
        for reference, text in enumerate(TEXTS):
            for octets, length in at_tool("encode", NUMBER, text, str(reference)):
                self.assertEqual(length, len(octets) // 2 - 1 - int(octets[:2], 16))
                state.put("SM", states.STORED_SENT, octets)
        listing = self.gammu(self.plug_in(state), "getallsms")
        self.assertEqual(set(re.findall(r'Remote number +: "(.*)"', listing)), {NUMBER})
        listing = self.gammu(self.plug_in(state), "geteachsms")
        self.assertEqual(texts_in(listing), list(TEXTS))

    def test_reads_the_phonebook(self):
        state = states.State(phonebook_sizes={"SM": 10, "ME": 10})
        state.know("ME", "Борис", "5550142")
        state.know("ME", "Anna", "+31641600986")
        said = self.gammu(self.plug_in(state), "getallmemory", "ME")
        self.assertEqual(re.findall(r'General number +: "(.*)"\nName +: "(.*)"', said),
                         [("5550142", "Борис"), ("+31641600986", "Anna")])

    def test_our_decoder_reads_what_it_sends(self):
        line = self.plug_in(states.State())
        for text in TEXTS:
            with self.subTest(text):
                line.modem.sent.clear()
                self.gammu(line, "sendsms", "TEXT", NUMBER, "-autolen", "500", "-text", text)
                ours = at_tool("decode", *line.modem.sent)
                self.assertEqual((ours["kind"], ours["number"], ours["text"]), ("submit", NUMBER, text))
                self.assertEqual(pdu.join([pdu.decode(part) for part in line.modem.sent]), text)
