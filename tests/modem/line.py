"""Puts a simulated modem on a pseudo terminal.

line.py [--state FILE.json] [--quirk NAME[=VALUE]]… [--link PATH] [--log FILE] [--quirks]

Prints the path to open, then serves until it is ended. With --link the same path stands for every pseudo terminal
that it opens; --log keeps the bytes of both directions; --quirks lists the names of the quirks.
"""

import argparse
import collections
import contextlib
import errno
import os
import pathlib
import select
import signal
import sys
import threading
import time
import tty

import state
from modem import Modem
from quirks import QUIRKS


class Line:
    """A modem at the far end of a pseudo terminal, served by a thread of its own."""

    def __init__(self, modem, link=None, log=None):
        self.modem, self.link = modem, link and pathlib.Path(link)
        self.log = log and open(log, "a", buffering=1, encoding="utf-8")
        self.bytes = collections.Counter()  # by direction, "in" and "out" as the modem sees them
        self.master = self.slave = self.thread = None
        self.heard_at = None  # when the first bytes since it was plugged in came, by the monotonic clock
        self.out = bytearray()
        modem.send, modem.vanish = self._send, self._close
        self.wake_out, self.wake_in = os.pipe()

    @property
    def path(self):
        return str(self.link) if self.link else os.ttyname(self.slave)

    def plug(self):
        """Opens a pseudo terminal; the modem has just been switched on."""
        self.modem.power_up()
        self.out.clear()
        self.heard_at = None
        self.master, self.slave = os.openpty()
        # Held open here too: without it the terminal would hang up whenever a program closes its end.
        tty.setraw(self.slave)
        os.set_blocking(self.master, False)
        if self.link:
            # In one step, so that nobody sees a moment without it.
            fresh = self.link.with_name(self.link.name + ".new")
            fresh.symlink_to(os.ttyname(self.slave))
            fresh.replace(self.link)
        self.thread = threading.Thread(target=self._serve, daemon=True)
        self.thread.start()
        return self

    def unplug(self):
        """The port is gone until plug() is called again."""
        os.write(self.wake_in, b"x")
        self.thread.join()
        os.read(self.wake_out, 1)
        self._close()

    def note(self, direction, data):
        self.bytes[direction] += len(data)
        if self.log:
            self.log.write(f"{direction:3} {data!r}\n")

    def _send(self, data):
        self.note("out", data)
        self.out += data

    def _close(self):
        if self.master is None:
            return
        if self.link:
            self.link.unlink(missing_ok=True)
        with contextlib.suppress(OSError):
            os.write(self.master, bytes(self.out[:1024]))
        os.close(self.master)
        os.close(self.slave)
        self.master = self.slave = None

    def _serve(self):
        while self.master is not None:
            ready, writable, _ = select.select([self.master, self.wake_out], [self.master] if self.out else [], [])
            if self.wake_out in ready:
                return
            if writable:
                del self.out[:os.write(self.master, self.out[:4096])]
            if self.master in ready:
                self._read()

    def _read(self):
        try:
            data = os.read(self.master, 4096)
        except OSError as problem:
            if problem.errno != errno.EAGAIN:
                raise
            return
        self.heard_at = self.heard_at or time.monotonic()
        self.note("in", data)
        self.modem.take(data)

    def __enter__(self):
        return self.plug()

    def __exit__(self, *problem):
        self.unplug()
        os.close(self.wake_out)
        os.close(self.wake_in)
        if self.log:
            self.log.close()


def main():
    parser = argparse.ArgumentParser(description="A simulated modem on a pseudo terminal.")
    parser.add_argument("--state", help="JSON file with its messages, phonebooks and PIN")
    parser.add_argument("--quirk", action="append", default=[], metavar="NAME[=VALUE]")
    parser.add_argument("--link", help="a symbolic link that leads to the pseudo terminal")
    parser.add_argument("--log", help="file for the bytes of both directions")
    parser.add_argument("--quirks", action="store_true", help="lists the quirks and ends")
    options = parser.parse_args()
    if options.quirks:
        print("\n".join(f"{name:20} {what}" for name, what in QUIRKS.items()))
        return
    modem = Modem(state.load(options.state) if options.state else None, options.quirk)
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(0))
    with Line(modem, options.link, options.log) as line, contextlib.suppress(KeyboardInterrupt):
        print(line.path, flush=True)
        signal.pause()


if __name__ == "__main__":
    main()
