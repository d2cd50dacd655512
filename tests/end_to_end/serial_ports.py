"""A Wine prefix of its own with serial ports in it, each a link that a simulated modem's line can take."""

import contextlib
import os
import pathlib
import shutil
import subprocess
import sys

from harness import OUT, ROOT

sys.path.append(str(ROOT / "tests" / "modem"))
from line import Line  # noqa: E402
from modem import Modem  # noqa: E402

SESSION = pathlib.Path(os.environ.get("WINEPREFIX", OUT / "wine-prefix"))
PREFIX = SESSION.with_name(SESSION.name + "-serial")
LINKS = SESSION.with_name(SESSION.name + "-lines")  # where the ports lead
# Where nothing is plugged in, the links are missing. What Wine would give to ports of this machine is taken first.
PORTS = {1: "/dev/null", 2: "/dev/null", 3: "/dev/null", 4: "/dev/null", 6: LINKS / "com6", 12: LINKS / "com12"}


def _quietly(*words):
    subprocess.run(words, check=True, timeout=60, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                   stderr=subprocess.DEVNULL)


def _make():
    """A copy of the session's prefix, kept from run to run for as long as that is the same."""
    wanted = [path.name for path in SESSION.glob(".ready-*")] + [str(PORTS)]
    note = PREFIX / ".serial"
    if note.exists() and note.read_text() == str(wanted):
        return
    shutil.rmtree(PREFIX, ignore_errors=True)
    _quietly("cp", "-a", str(SESSION), str(PREFIX))
    for number, path in PORTS.items():
        _quietly("wine", "reg", "add", r"HKLM\Software\Wine\Ports", "/v", f"COM{number}", "/d", str(path), "/f")
    _quietly("wineserver", "-k")
    _quietly("wineserver", "-w")
    note.write_text(str(wanted))


@contextlib.contextmanager
def serial_ports():
    """Programs that start inside see COM6 and COM12."""
    shutil.rmtree(LINKS, ignore_errors=True)
    LINKS.mkdir(parents=True)
    os.environ["WINEPREFIX"] = str(PREFIX)
    try:
        subprocess.run(["wineserver", "-k"], timeout=60, check=False)  # left over from a session that was killed
        _make()
        # Wine's services start here, with no output of ours to hold open.
        _quietly("wineserver", "-p")
        _quietly("wine", "cmd", "/c", "exit")
        yield
    finally:
        subprocess.run(["wineserver", "-k"], timeout=60, check=False)
        os.environ["WINEPREFIX"] = str(SESSION)


def plug_in(number, state, *quirks):
    """The line to a modem at COM`number`, not yet entered."""
    return Line(Modem(state, quirks), PORTS[number])
