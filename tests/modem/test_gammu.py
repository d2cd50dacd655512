"""Another AT client as a judge: it must understand our modem, and what our own side writes."""

import re
import subprocess
import tempfile

import pdu
import state as states
from support import TEXTS, ModemTest, at_tool

NUMBER = "+31641600986"


def texts_in(listing):
    """What stands below the fields of each message: an empty line, the text, another empty line or two."""
    blocks = re.split(r"(?m)^(?:Location \d+, folder .*\n)+", listing)[1:]
    return [re.sub(r"\n+(?:\d+ SMS parts in [\s\S]*)?\Z", "", block.split("\n\n", 1)[1]) for block in blocks]


class Gammu(ModemTest):
    def gammu(self, line, *words):
        with tempfile.NamedTemporaryFile("w", suffix=".rc") as settings:
            settings.write(f"[gammu]\ndevice={line.path}\nconnection=at115200\nsynchronizetime=no\nuse_locking=no\n")
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
