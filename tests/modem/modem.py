"""A simulated GSM modem on a pseudo terminal (3GPP TS 27.005, 27.007). Its messages are PDUs."""

import os
import pathlib
import re
import select
import threading
import time
import tty

UNREAD, READ, UNSENT, SENT = range(4)
ANSWERS = {"+CPIN?": "+CPIN: READY", "+CGMI": "Quillet", "+CGMM": "Test modem",
           "+CPBR=?": "+CPBR: (1-100),40,16", "+CSCA?": '+CSCA: "+3165408810",145',
           "+CSCS=?": '+CSCS: ("GSM","UCS2")', "+CPMS=?": '+CPMS: ("SM","ME"),("SM","ME"),("SM","ME")'}


def length(pdu):
    return len(pdu) // 2 - 1 - int(pdu[:2], 16)  # in octets, behind the service centre


class Modem:
    """While it is plugged in, the link `path` leads to its pseudo terminal."""

    def __init__(self, path):
        self.path = pathlib.Path(path)
        self.messages = {"SM": [], "ME": []}  # [status, PDU], None where one was removed
        self.room = 1000  # in each store
        self.delay = 0  # seconds that an answer takes
        self.contacts = {"SM": [], "ME": []}  # (name, number)
        self.chosen = {"+CPMS": "SM", "+CPBS": "SM", "+CSCS": "GSM"}
        self.moved = 0  # bytes in both directions
        self.echo, self.line, self.awaited = True, "", None

    def __enter__(self):
        self.master, self.slave = os.openpty()
        tty.setraw(self.slave)
        self.path.unlink(missing_ok=True)
        self.path.symlink_to(os.ttyname(self.slave))
        self.plugged = threading.Event()
        self.plugged.set()
        self.server = threading.Thread(target=self.serve)
        self.server.start()
        return self

    def __exit__(self, *_):
        self.plugged.clear()
        self.server.join()
        self.path.unlink()
        os.close(self.master)
        os.close(self.slave)

    def serve(self):
        while self.plugged.is_set():
            if select.select([self.master], [], [], 0.02)[0]:
                data = os.read(self.master, 4096).decode("latin-1")
                self.moved += len(data)
                self.take(data)

    def send(self, text):
        self.moved += len(text)
        os.write(self.master, text.encode("latin-1"))

    def take(self, data):
        for character in data:
            if self.echo:
                self.send(character)
            if character == "\x1b":
                self.line, self.awaited = "", None
            elif character == ("\x1a" if self.awaited else "\r"):
                line, self.line = self.line.strip(), ""
                self.answer(line)
            else:
                self.line += character

    def answer(self, line):
        time.sleep(self.delay)
        if line.startswith("AT+CMGS="):
            self.awaited = int(line[8:])
            self.send("\r\n> ")
            return
        if self.awaited:
            lines = ["+CMGS: 1", "OK"] if length(line) == self.awaited else ["ERROR"]
            self.messages["ME"].append([SENT, line])
            self.awaited = None
        else:
            lines = self.run(line.removeprefix("AT"))
        self.send("".join(f"\r\n{line}\r\n" for line in lines))

    def run(self, command):
        """The lines of the answer. What sets something that does not matter here is confirmed."""
        name, value = re.fullmatch(r'(.*?)(?:[=?]+"?(.*?)"?)?', command).groups("")
        found = []
        if command in ANSWERS:
            found = [ANSWERS[command]]
        elif name in self.chosen and value:
            self.chosen[name] = value.split('"')[0]  # the first of several
            if name == "+CPMS":
                used = len([one for one in self.messages[self.chosen[name]] if one])
                found = ["+CPMS:" + ",".join([f" {used},{self.room}"] * 3)]
        elif name in self.chosen:
            found = [f'{name}: "{self.chosen[name]}"']
        elif name == "+CMGL":
            found = [f"+CMGL: {i},{one[0]},,{length(one[1])}\r\n{one[1]}"
                     for i, one in enumerate(self.messages[self.chosen["+CPMS"]], 1) if one]
        elif name in ("+CMGR", "+CMGD"):
            stored, place = self.messages[self.chosen["+CPMS"]], int(value) - 1
            if not 0 <= place < len(stored) or not stored[place]:
                return ["+CMS ERROR: 321"]
            status, pdu = stored[place]
            if name == "+CMGD":
                stored[place] = None
            else:
                found = [f"+CMGR: {status},,{length(pdu)}\r\n{pdu}"]
        elif name == "+CPBR":
            found = [f'+CPBR: {i},"{number}",129,"{contact.encode("utf-16-be").hex()}"'
                     for i, (contact, number) in enumerate(self.contacts[self.chosen["+CPBS"]], 1)]
        elif command.endswith("?"):
            return ["ERROR"]
        elif command in ("E0", "E1"):
            self.echo = command == "E1"
        return [*found, "OK"]
