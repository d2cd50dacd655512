"""The shipped folder with a modem at a serial port, and the program that finds the port."""

import subprocess
import tempfile
import time

from harness import CONNECT, NEW, OUTBOX, PC_SENT, REFRESH, QuilletTest, click, control_of, key, paste, type_text
import handset_file
from serial_ports import plug_in, serial_ports
import pdu
import state as states

COMPOSE, BOOK = "New SMS", "Contacts"
CONTENT, SEND, CONTACT, PHONEBOOK = 1002, 1021, 1022, 1034
LONGEST = 5  # seconds in which the program must say that nobody answers

TIME = "26112017150404"
CARD = (("+31641600986", "Grüße [bis bald]"), ("Operator", "Привет 🎉"), ("+15550100", "역에서 만나요"),
        ("+31641600986", "word " * 50))
IN_PHONE = ("+15550177", "in the phone")
STORED = ("+15550142", "kept on the card")
DRAFTED = ("5550199", "kept in the phone")


def filled():
    state = states.State()
    for number, text in CARD:
        state.receive("SM", number, text, TIME)
    state.store("SM", *STORED)
    state.receive("ME", *IN_PHONE, TIME, states.RECEIVED_UNREAD)
    state.store("ME", *DRAFTED, states.STORED_UNSENT)
    state.know("SM", "Anna", "+31641600986")
    state.know("SM", "Zoë", "5550142")
    state.know("ME", "Борис", "+35100000128")
    return state


# The long message is put together and then shown in as many rows as a handset's entry makes of it.
INBOX_ROWS = [[piece, number, handset_file.shown_time(TIME)] for number, text in (*CARD, IN_PHONE)
              for piece in handset_file.pieces(text)]
OUTBOX_ROWS = [[text, number, ""] for number, text in (STORED, DRAFTED)]


class SerialTest(QuilletTest):
    @classmethod
    def setUpClass(cls):
        cls.enterClassContext(serial_ports())

    def plug_in(self, state=None, *quirks, port=6):
        """A modem at the port, and the port in the program's settings."""
        self.write("port.ini", f"[port]\r\ncom={port}\r\n".encode())
        return self.enterContext(plug_in(port, state or filled(), *quirks))


class Serial(SerialTest):
    def test_shows_what_the_modem_holds(self):
        for port, quirks in ((6, ()), (12, ("echo-stays", "unsolicited", "glued-cmgl", "hex-strings", "leading-nuls"))):
            with self.subTest(port=port):
                self.plug_in(None, *quirks, port=port)
                program, sight = self.open()
                self.assertEqual(sight.labels[:3], ["Mobile", f"Inbox({len(INBOX_ROWS)})", "Outbox(2)"])
                self.assertEqual(sight.rows, INBOX_ROWS)
                self.select(OUTBOX)
                program.wait_for(lambda now: now.rows == OUTBOX_ROWS, "the outbox")
                self.end()

    def test_contacts_of_both_phonebooks(self):
        self.plug_in()
        program, sight = self.open()
        click(sight.button(NEW)["rect"])
        dialog = program.wait_for_dialog(COMPOSE)
        click(control_of(dialog, CONTACT)["rect"])
        book = program.wait_for_dialog(BOOK)
        self.assertEqual([row["texts"] for row in control_of(book, PHONEBOOK)["rows"]],
                         [["Anna", "+31641600986"], ["Zoë", "5550142"], ["Борис", "+35100000128"]])
        for window in (book, dialog):
            key("Escape")
            program.wait_until_gone(window)
        self.end()

    def send(self, receivers, text, report, *labels):
        """Writes and sends a message; what is said of it, and the tree's last labels after it."""
        program, sight = self.open()
        click(sight.button(NEW)["rect"])
        dialog = program.wait_for_dialog(COMPOSE)
        type_text(receivers)
        click(control_of(dialog, CONTENT)["rect"])
        paste(text)
        program.wait_for_dialog(COMPOSE, lambda d: control_of(d, CONTENT)["text"] == text, "the text")
        click(control_of(dialog, SEND)["rect"])
        self.answer(report)
        self.assertEqual(program.wait_for_no_dialog().labels[PC_SENT:], list(labels))
        self.end()

    def test_sends_to_every_receiver(self):
        line = self.plug_in()
        for text, label in (("plain [text] at 5 €", "Sent(2)"), ("Встреча в пять 🎉", "Sent(4)")):
            with self.subTest(text):
                line.modem.sent.clear()
                self.send("+31641600986;5550142", text, "2/2 message(s)  sent.", label, "Draft(0)")
                sent = [pdu.decode(octets) for octets in line.modem.sent]
                self.assertEqual([(sms.kind, sms.number, sms.text) for sms in sent],
                                 [("submit", "+31641600986", text), ("submit", "5550142", text)])

    def test_a_refused_message_becomes_a_draft(self):
        line = self.plug_in(None, "send-error=38")
        self.send("5550142", "again", "0/1 message(s)  sent.", "Sent(0)", "Draft(1)")
        self.assertEqual(sum(command.startswith("AT+CMGS") for command in line.modem.commands), 1)


class Trouble(SerialTest):
    def refresh_says_no_connection(self, program):
        click(program.look().button(REFRESH)["rect"])
        began = time.monotonic()
        box = self.box_says(CONNECT)
        self.assertLess(time.monotonic() - began, LONGEST)
        program.press(box, "OK")

    def test_modem_gone_and_back(self):
        line = self.plug_in()
        program, before = self.open()
        line.unplug()
        self.refresh_says_no_connection(program)
        self.assertEqual(program.look().rows, [])
        line.plug()
        click(before.button(REFRESH)["rect"])
        sight = program.wait_for(lambda now: now.rows, "the messages to be back")
        self.assertEqual((sight.rows, sight.labels), (before.rows, before.labels))
        self.end()

    def test_modem_goes_while_it_is_read(self):
        line = self.plug_in()
        program, before = self.open()
        line.modem.quirks.on["vanishes-at"] = "CMGL"
        click(before.button(REFRESH)["rect"])
        program.wait_for(lambda now: not now.rows and now.labels[1] == "Inbox(0)", "the folder without its handset",
                         LONGEST)
        self.refresh_says_no_connection(program)
        line.unplug()
        line.plug()
        click(before.button(REFRESH)["rect"])
        self.assertEqual(program.wait_for(lambda now: now.rows, "the messages to be back").rows, before.rows)
        self.end()

    def start_says_no_connection(self, line=None):
        """Measured from the first byte on the line, if there is one: a busy machine starts programs slowly."""
        began = time.monotonic()
        program = self.launch()
        box = self.box_says(CONNECT)
        self.assertLess(time.monotonic() - (line.heard_at if line else began), LONGEST)
        program.press(box, "OK")
        program.wait_for_end()

    def test_wants_a_pin(self):
        state = filled()
        state.pin = "1234"
        self.start_says_no_connection(self.plug_in(state))

    def test_not_a_modem(self):
        for quirk in ("silent", "echo-only", "not-a-modem"):
            with self.subTest(quirk):
                self.start_says_no_connection(self.plug_in(None, quirk))

    def test_no_such_port(self):
        for port in (1, 6, 30, -1):  # no serial device, nothing plugged in, no such name, no port at all
            with self.subTest(port):
                self.write("port.ini", f"[port]\r\ncom={port}\r\n".encode())
                self.start_says_no_connection()


class FindPort(SerialTest):
    def find(self, *words):
        """Exit code, the answer by port, and the whole text."""
        # Into a file: what Wine starts along with the program would keep a pipe open when the program has ended.
        with tempfile.TemporaryFile() as output:
            done = subprocess.run(["wine", str(self.folder / "findport.exe"), *words], stdin=subprocess.DEVNULL,
                                  stdout=output, stderr=subprocess.DEVNULL, timeout=60)
            output.seek(0)
            text = output.read().decode()
        rows = (line.split(None, 1) for line in text.splitlines() if line.startswith("COM"))
        return done.returncode, {port: rest.split("  ")[0] for port, rest in rows}, text

    def test_lists_the_ports(self):
        state = filled()
        state.pin = "1234"
        self.plug_in(state)
        self.plug_in(None, "silent", port=12)
        settings = (self.folder / "port.ini").read_bytes()
        began = time.monotonic()
        code, answers, text = self.find()
        self.assertLess(time.monotonic() - began, 3 * 2 + 2, "three seconds for a port that is open")
        self.assertEqual(code, 0, text)
        self.assertEqual((answers["COM6"], answers["COM12"], answers["COM1"]),
                         ("Quillet Test modem, asks for SIM PIN", "no answer", "not a serial port"))
        self.assertIn("com=6", text)
        self.assertEqual((self.folder / "port.ini").read_bytes(), settings, "only --write may write")

    def test_writes_the_port(self):
        self.plug_in(None, "echo-only")
        self.plug_in(None, "echo-stays", "unsolicited", port=12)
        self.write("port.ini", b"; mine\r\n[port]\r\nbaud=9600\r\ncom=3\r\n[more]\r\nx=1\r\n")
        code, answers, text = self.find("--write")
        self.assertEqual((code, answers["COM12"]), (0, "Quillet Test modem"), text)
        self.assertEqual((self.folder / "port.ini").read_bytes(),
                         b"; mine\r\n[port]\r\nbaud=9600\r\ncom=12\r\n[more]\r\nx=1\r\n")
        self.assertEqual(sorted(path.name for path in self.folder.glob("port.ini*")), ["port.ini"])
        _, sight = self.open()
        self.assertEqual(sight.rows, INBOX_ROWS)
        self.end()

    def test_nobody_answers(self):
        self.write("port.ini", b"[port]\r\ncom=3\r\n")
        code, answers, text = self.find("--write")
        self.assertEqual((code, answers["COM6"]), (1, "not there"), text)
        self.assertIn("No phone or modem answered", text)
        self.assertEqual((self.folder / "port.ini").read_bytes(), b"[port]\r\ncom=3\r\n")

    def test_other_arguments(self):
        code, answers, text = self.find("--help")
        self.assertEqual((code, answers), (64, {}))
        self.assertIn("findport --write", text)
