"""Asks what the program's windows hold: one process in the Wine session answers all the time, which makes a look cheap."""

import atexit
import os
import pathlib
import select
import subprocess
import time
from typing import NamedTuple

PROGRAM = pathlib.Path(__file__).resolve().parents[2] / "out" / "mingw" / "tests" / "end_to_end" / "window_report.exe"


class Answer(NamedTuple):
    code: int
    text: bytes


class _Reporter:
    def __init__(self):
        self.process = subprocess.Popen(["wine", str(PROGRAM)], stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                                        stderr=subprocess.DEVNULL, bufsize=0)
        self.received = b""

    def ask(self, request, deadline):
        self.process.stdin.write(request)
        while b"\n" not in self.received:
            self.receive(deadline)
        head, self.received = self.received.split(b"\n", 1)
        code, size = map(int, head.split())
        while len(self.received) < size:
            self.receive(deadline)
        text, self.received = self.received[:size], self.received[size:]
        return Answer(code, text)

    def receive(self, deadline):
        if not select.select([self.process.stdout], [], [], max(0, deadline - time.monotonic()))[0]:
            raise AssertionError("the window reporter does not answer")
        piece = os.read(self.process.stdout.fileno(), 1 << 16)
        if not piece:
            raise AssertionError("the window reporter has ended")
        self.received += piece

    def end(self):
        self.process.kill()
        self.process.wait()
        self.process.stdin.close()
        self.process.stdout.close()


_reporters = {}  # by Wine prefix: each is a session of its own


def ask_reporter(request, *, attached=b"", timeout=40):
    """The answer to one request, with the bytes that belong to it; see window_report.cpp."""
    prefix = os.environ["WINEPREFIX"]
    if prefix in _reporters and _reporters[prefix].process.poll() is not None:
        _reporters.pop(prefix).end()  # its session was ended
    if prefix not in _reporters:
        _reporters[prefix] = _Reporter()
    try:
        return _reporters[prefix].ask(request.encode() + b"\n" + attached, time.monotonic() + timeout)
    except (AssertionError, BrokenPipeError):
        _reporters.pop(prefix).end()
        raise


@atexit.register
def end_reporters():
    while _reporters:
        _reporters.popitem()[1].end()
