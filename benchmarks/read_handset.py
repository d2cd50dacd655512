"""Reading all messages of a handset: our own side beside another AT client, on the same simulated modem.

read_handset.py AT_TOOL [ROUNDS]

Prints two rows: the time of the whole process, and the bytes on the line beside the fewest that can do.
"""

import pathlib
import statistics
import subprocess
import sys
import tempfile
import time

sys.dont_write_bytecode = True
sys.path.append(str(pathlib.Path(__file__).resolve().parents[1] / "tests" / "modem"))

import state as states
from line import Line
from modem import Modem

EACH = 250  # messages in a store
TEXT = "m" * 160


def filled():
    state = states.State(sizes={"SM": EACH, "ME": EACH})
    for store in state.messages:
        for _ in range(EACH // 2):
            state.receive(store, "+31641600986", TEXT, "26112017150404")
            state.store(store, "+31641600986", TEXT)
    return state


def measure(rounds, command, count):
    """Runs the command for each round with a fresh modem; the median of seconds, and the bytes on the line.

    count(output) tells how many messages it has read."""
    seconds, wire = [], set()
    for _ in range(rounds):
        with tempfile.TemporaryDirectory() as folder:
            settings, port = pathlib.Path(folder) / "settings", pathlib.Path(folder) / "modem"
            settings.write_text(f"[gammu]\ndevice={port}\nconnection=at115200\nsynchronizetime=no\nuse_locking=no\n")
            with Line(Modem(filled()), port) as line:
                words = [word.format(port=port, settings=settings) for word in command]
                began = time.perf_counter()
                done = subprocess.run(words, capture_output=True, timeout=300, stdin=subprocess.DEVNULL, check=True)
                seconds.append(time.perf_counter() - began)
                if count(done.stdout) != 2 * EACH:
                    sys.exit(f"{command[0]} has read {count(done.stdout)} messages of {2 * EACH}")
                wire.add(line.bytes["in"] + line.bytes["out"])
    return statistics.median(seconds), max(wire)


def fewest():
    """The bytes of listing each store once, and of nothing else, from a modem that does not echo."""
    modem, total = Modem(filled()), 0
    modem.echo, modem.text_mode = False, False

    def send(data):
        nonlocal total
        total += len(data)

    modem.send = send
    for store in modem.state.messages:
        modem.stores[0] = store
        command = b"AT+CMGL=4\r"
        total += len(command)
        modem.take(command)
    return total


def row(name, value, unit, reference_name, reference):
    print(f"{name:46} {value:10.1f} {unit:5} {reference_name:34} {reference:10.1f} {unit:5} {value / reference:6.2f} x")


def main():
    tool, rounds = sys.argv[1], int(sys.argv[2]) if len(sys.argv) > 2 else 5
    ours, wire = measure(rounds, [tool, "messages", "{port}"], lambda said: said.count(TEXT.encode()))
    theirs, _ = measure(rounds, ["gammu", "-c", "{settings}", "getallsms"], lambda said: said.count(TEXT.encode()))
    row(f"opening a handset, reading {2 * EACH} messages", ours * 1000, "ms", "gammu getallsms", theirs * 1000)
    row("bytes on the line for that", wire / 1000, "kB", "two bare listings", fewest() / 1000)


if __name__ == "__main__":
    main()
