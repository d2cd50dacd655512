"""A simulated modem: what it answers, byte by byte (3GPP TS 27.005 and 27.007). line.py puts it on a pseudo terminal."""

import re

import alphabet
import commands
import pdu
import state as states
from problem import CME_NOT_ALLOWED, CME_PIN, CME_UNKNOWN, PDU_PARAMETER, SIM_PIN, Problem
from quirks import Quirks

CONTROL_Z, ESCAPE = 0x1A, 0x1B


class Modem:
    """Bytes go in by take(), answers come out through `send`; `vanish` takes the port away."""

    def __init__(self, state=None, quirks=()):
        self.state = state or states.State()
        self.quirks = Quirks(quirks)
        self.send = lambda data: None
        self.vanish = lambda: None
        self.commands = []  # as they came
        self.sent = []  # PDUs that were given to the network
        self.starting = int(self.quirks.value("starting", "0"))
        self.power_up()

    def power_up(self):
        self.echo, self.verbose_errors, self.charset = True, 0, "GSM"
        self.text_mode, self.stores, self.book = True, ["SM", "SM", "SM"], "SM"
        self.line, self.awaited = bytearray(), None
        self.reference = 0

    # Bytes in

    def take(self, data):
        if "silent" in self.quirks:
            return
        if "echo-only" in self.quirks:
            self.send(data)
            return
        if "not-a-modem" in self.quirks:
            self.send(b"$GPGGA,064036.289,4836.5375,N,00740.9373,E,1,04,3.2,200.2,M,,,,0000*0E\r\n")
            return
        for byte in data:
            self._take_byte(byte)

    def _take_byte(self, byte):
        if self.echo:
            self.send(bytes([byte]))
        if self.awaited is not None:
            self._take_message(byte)
        elif byte == 0x0D:
            line, self.line = bytes(self.line), bytearray()
            self._take_line(line)
        elif byte == ESCAPE:
            self.line.clear()
        elif byte != 0x0A:
            self.line.append(byte)

    def _take_line(self, line):
        command = line.decode("latin-1").strip()
        if command.upper().startswith("AT"):
            self.commands.append(command)
            self._answer(lambda: self.run(command[2:]))

    def _take_message(self, byte):
        if byte not in (CONTROL_Z, ESCAPE):
            self.line.append(byte)
            return
        octets, length = bytes(self.line).decode("latin-1").strip(), self.awaited
        self.line, self.awaited = bytearray(), None
        if byte == ESCAPE:
            self._final("OK")
        elif "send-silent" not in self.quirks:
            self._answer(lambda: self._submit(octets, length))

    # Answers out

    def _answer(self, work):
        try:
            lines = work()
        except Problem as problem:
            self._final(self._error(problem))
            return
        if lines is not None:
            self._lines(lines)
            self._final("OK")

    def _error(self, problem):
        if "errors-as" in self.quirks:
            return self.quirks.value("errors-as")
        if not self.verbose_errors:
            return "ERROR"
        return str(problem)

    def _final(self, text):
        self.send(self._nuls() + f"\r\n{text}\r\n".encode("latin-1"))

    def _nuls(self):
        return b"\0\0" if "leading-nuls" in self.quirks else b""

    def _lines(self, lines):
        data = [line if isinstance(line, bytes) else line.encode("latin-1") for line in lines]
        if "unsolicited" in self.quirks and data:
            middle = len(data) // 2
            data[middle:middle] = [b"^RSSI: 17", b"+CDS: 25", b"0006" + b"00" * 24]
            data[:0] = [b"+ECIND: 4,5"]
        wanted = self.quirks.value("vanishes-at")
        if wanted and wanted in self.commands[-1]:
            del self.quirks.on["vanishes-at"]
            answer = b"\r\n" + b"\r\n".join(data)
            self.send(answer[:len(answer) // 2])
            self.vanish()
        elif data:
            self.send(self._nuls() + b"\r\n" + b"\r\n".join(data) + b"\r\n")

    def unsolicited(self, text):
        self.send(f"\r\n{text}\r\n".encode("latin-1"))

    # Strings

    def quoted(self, text):
        hexed = "hex-strings" in self.quirks and self.charset == "UCS2"
        return f'"{text.encode("utf-16-be").hex().upper() if hexed else text}"'

    def parameters(self, text):
        """The fields behind =, without quotes."""
        found = []
        for field in re.findall(r'"[^"]*"|[^,]+|(?<=,)(?=,|$)', text):
            if field.startswith('"'):
                field = field.strip('"')
                if "hex-strings" in self.quirks and self.charset == "UCS2":
                    try:
                        field = bytes.fromhex(field).decode("utf-16-be")
                    except ValueError:
                        raise Problem(CME_NOT_ALLOWED, "CME") from None
            found.append(field)
        return found

    def name(self, text):
        """A phonebook's name in the character set that was chosen, with its quotes."""
        if self.charset == "UCS2":
            return f'"{text.encode("utf-16-be").hex().upper()}"'.encode()
        if self.charset == "IRA":
            return f'"{text.encode("ascii", "replace").decode()}"'.encode()
        codes = (alphabet.septets(c if alphabet.holds(c) else "?") for c in text)
        return b'"' + b"".join(bytes(c) for c in codes) + b'"'

    # Commands

    def run(self, command):
        """The lines of the answer; None when the answer comes later; Problem when it is an error."""
        if not command:
            return []
        handler, arguments = commands.find(command)
        if handler is None:
            raise Problem(CME_UNKNOWN, "CME")
        return handler(self, *arguments)

    def need_pin(self, kind="CME"):
        if self.state.pin:
            raise Problem(CME_PIN if kind == "CME" else SIM_PIN, kind)

    def _submit(self, octets, length):
        try:
            sms = pdu.decode(octets)
            fits = sms.kind == "submit" and len(octets) // 2 - 1 - int(octets[:2], 16) == length
        except ValueError:
            fits = False
        if not fits:
            raise Problem(PDU_PARAMETER)
        if "send-error" in self.quirks:
            raise Problem(int(self.quirks.value("send-error")))
        self.sent.append(octets)
        self.reference = (self.reference + 1) % 256
        return [] if "send-unsure" in self.quirks else [f"+CMGS: {self.reference}"]
