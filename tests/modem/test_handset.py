"""Our own side on a line of this machine against modems with all their ways."""

import time

import pdu
import state as states
from support import TEXTS, ModemTest, at_tool

NUMBER = "+31641600986"
TIME = "26112017150404"
READ, UNREAD, OUTGOING = 1, 3, 7  # as the handset entries say it


def filled():
    """A modem's state in which every store and both phonebooks have something."""
    state = states.State()
    state.receive("SM", NUMBER, "new\nline", TIME, states.RECEIVED_UNREAD)
    state.receive("SM", "Operator", TEXTS[0], TIME)
    state.receive("SM", NUMBER, TEXTS[6], TIME, reference=200)
    state.store("SM", "5550142", "Привет")
    state.receive("ME", NUMBER, "in the phone", TIME)
    state.store("ME", "5550199", "not sent", states.STORED_UNSENT)
    state.know("SM", "Anna [work]", "+31641600986")
    state.know("SM", "Борис", "5550142")
    state.know("ME", "역 🎉", "5550199")
    return state


RECEIVED = [[UNREAD, 1, NUMBER, TIME, "new\nline"], [READ, 2, "Operator", TIME, TEXTS[0]],
            [READ, 3, NUMBER, TIME, TEXTS[6]]]
SENT = [[OUTGOING, 5, "5550142", "", "Привет"]]
PHONE = [[READ, 1, NUMBER, TIME, "in the phone"], [OUTGOING, 2, "5550199", "", "not sent"]]
SIM_CONTACTS = [["Anna [work]", "+31641600986"], ["Борис", "5550142"]]
PHONE_CONTACTS = [["역 🎉", "5550199"]]
EVERYTHING = {"opened": True, "ready": True, "received": RECEIVED, "outgoing": SENT, "phone": PHONE,
              "sim_contacts": SIM_CONTACTS, "phone_contacts": PHONE_CONTACTS, "problem": ""}

# Quirks with which nothing at all may be lost.
HARMLESS = (
    (), ("echo-stays",), ("leading-nuls",), ("unsolicited",), ("hex-strings",), ("starting=2",),
    ("cpms-test=",), ("cpms-test=(),(),()",), ('cpms-test="SM","ME","SM","ME"',),
    ('cpms-test=("SM,"ME"),("SM"',), ("cpms-set-silent",), ("cmgl-header=no-alpha",), ("quoted-pdu",), ("glued-cmgl",),
    ("garbage-first",), ("cpbr-extra",), ("cpbr-broken-number",), ("cpbr-other-index",), ("cpbr-hex-nul",),
    ("cscs-test=0",), ("cscs-test=",), ("cscs-test=GSM,IRA,UCS2",),
    ("echo-stays", "leading-nuls", "unsolicited", "hex-strings", "glued-cmgl", "errors-as=COMMAND NOT SUPPORT"),
)


class Reading(ModemTest):
    maxDiff = None

    def test_quirks_lose_nothing(self):
        for quirks in HARMLESS:
            with self.subTest(quirks):
                self.assertEqual(at_tool("list", self.plug_in(filled(), *quirks).path), EVERYTHING)

    def test_plain_character_sets(self):
        for charset, names in (("GSM", ["Anna [work]", "?????"]), ("IRA", ["Anna [work]", "?????"])):
            with self.subTest(charset):
                said = at_tool("list", self.plug_in(filled(), f"charsets={charset}").path)
                self.assertEqual([name for name, _ in said["sim_contacts"]], names)
                self.assertEqual(said["received"], RECEIVED)

    def test_a_message_that_cannot_be_read_leaves_the_others(self):
        for quirk in ("bad-pdu", "odd-hex"):
            with self.subTest(quirk):
                said = at_tool("list", self.plug_in(filled(), quirk).path)
                self.assertEqual(len(said["received"]), len(RECEIVED), "a row for every message")
                self.assertEqual(said["received"][1:], RECEIVED[1:])

    def test_headers_without_a_place(self):
        said = at_tool("list", self.plug_in(filled(), "cmgl-header=short").path)
        for store, rows in (("received", RECEIVED), ("outgoing", SENT), ("phone", PHONE)):
            self.assertEqual(said[store], [[status, 0, *rest] for status, _, *rest in rows])

    def test_a_store_that_is_not_offered_is_left_alone(self):
        line = self.plug_in(filled(), 'cpms-test=(("SM","BM","SR"),("SM"))')
        said = at_tool("list", line.path)
        self.assertEqual((said["received"], said["phone"]), (RECEIVED, []))
        self.assertFalse([command for command in line.modem.commands if "CPMS=" in command and "ME" in command])

    def test_the_port_disappears(self):
        for command in ("CPIN", "CPMS=?", "CMGL", "CPBR"):
            with self.subTest(command):
                line = self.plug_in(filled(), f"vanishes-at={command}")
                began = time.monotonic()
                said = at_tool("list", line.path)
                self.assertLess(time.monotonic() - began, 5)
                self.assertTrue(said["problem"])
                if command == "CMGL":
                    self.assertIsNone(said["received"], "half a list is none")

    def test_wants_a_pin(self):
        state = filled()
        state.pin = "1234"
        said = at_tool("list", self.plug_in(state).path)
        self.assertFalse(said["ready"])
        self.assertIn("PIN", said["problem"])

    def test_no_modem(self):
        for quirk in ("silent", "echo-only", "not-a-modem"):
            with self.subTest(quirk):
                line = self.plug_in(filled(), quirk)
                began = time.monotonic()
                said = at_tool("list", line.path)
                self.assertLess(time.monotonic() - began, 5.5)
                self.assertFalse(said["opened"])
                self.assertTrue(said["problem"])
        self.assertFalse(at_tool("list", "/dev/null/none")["opened"])


class Sending(ModemTest):
    def test_texts_arrive(self):
        for quirks in ((), ("bare-prompt",), ("echo-stays", "unsolicited", "leading-nuls"), ("hex-strings",)):
            line = self.plug_in(filled(), *quirks)
            for text in TEXTS:
                with self.subTest(quirks=quirks, text=text):
                    line.modem.sent.clear()
                    self.assertEqual(at_tool("send", line.path, NUMBER, text), {"sent": True, "problem": ""})
                    parts = [pdu.decode(part) for part in line.modem.sent]
                    self.assertEqual({part.number for part in parts}, {NUMBER})
                    self.assertEqual(pdu.join(parts), text)

    def test_only_a_confirmed_message_counts(self):
        for quirk in ("send-error=38", "send-unsure", "errors-as=MODEM ERROR: 1"):
            quirks = (quirk, "send-error=38") if "errors" in quirk else (quirk,)
            with self.subTest(quirk):
                line = self.plug_in(filled(), *quirks)
                said = at_tool("send", line.path, NUMBER, "once")
                self.assertFalse(said["sent"])
                self.assertTrue(said["problem"])
                self.assertEqual(sum(command.startswith("AT+CMGS") for command in line.modem.commands), 1)

    def test_the_port_disappears(self):
        line = self.plug_in(filled(), "vanishes-at=CMGS")
        self.assertFalse(at_tool("send", line.path, NUMBER, "gone")["sent"])
