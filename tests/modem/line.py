"""Puts a simulated modem on a pseudo terminal."""

import collections
import contextlib
import errno
import os
import select
import threading
import time
import tty


class Line:
    """A modem at the far end of a pseudo terminal, served by a thread of its own. `link` leads to it."""

    def __init__(self, modem, link):
        self.modem, self.link = modem, link
        self.bytes = collections.Counter()  # by direction, "in" and "out" as the modem sees them
        self.master = self.slave = self.thread = None
        self.heard_at = None  # when the first bytes since it was plugged in came, by the monotonic clock
        self.out = bytearray()
        modem.send, modem.vanish = self._send, self._close
        self.wake_out, self.wake_in = os.pipe()

    def plug(self):
        """Opens a pseudo terminal; the modem has just been switched on."""
        self.modem.power_up()
        self.out.clear()
        self.heard_at = None
        self.master, self.slave = os.openpty()
        # Held open here too: without it the terminal would hang up whenever a program closes its end.
        tty.setraw(self.slave)
        os.set_blocking(self.master, False)
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

    def _send(self, data):
        self.bytes["out"] += len(data)
        self.out += data

    def _close(self):
        if self.master is None:
            return
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
        self.bytes["in"] += len(data)
        self.modem.take(data)

    def __enter__(self):
        return self.plug()

    def __exit__(self, *problem):
        self.unplug()
        os.close(self.wake_out)
        os.close(self.wake_in)
