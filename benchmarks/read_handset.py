"""Reading all messages of a handset: our own side beside another AT client, on the same simulated modem.

read_handset.py PROGRAM [ROUNDS]

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

from modem import READ, SENT, Modem

EACH = 250  # messages in a store
TEXT = "m" * 160
SEPTETS = sum(ord("m") << 7 * i for i in range(160)).to_bytes(140, "little").hex().upper()
RECEIVED = f"00040B911346610089F6000062110271514040A0{SEPTETS}"
STORED = f"0001000B911346610089F60000A0{SEPTETS}"


def filled(port):
    modem = Modem(port)
    for messages in modem.messages.values():
        messages += [[READ, RECEIVED], [SENT, STORED]] * (EACH // 2)
    return modem


def measure(rounds, command):
    """Runs the command for each round with a fresh modem; the median of seconds, and the bytes on the line."""
    seconds, wire = [], set()
    for _ in range(rounds):
        with tempfile.TemporaryDirectory() as folder:
            settings, port = pathlib.Path(folder) / "settings", pathlib.Path(folder) / "modem"
            settings.write_text(f"[gammu]\ndevice={port}\nconnection=at115200\nsynchronizetime=no\nuse_locking=no\n")
            with filled(port) as modem:
                words = [word.format(port=port, settings=settings) for word in command]
                began = time.perf_counter()
                done = subprocess.run(words, capture_output=True, timeout=300, stdin=subprocess.DEVNULL, check=True)
                seconds.append(time.perf_counter() - began)
            if done.stdout.count(TEXT.encode()) != 2 * EACH:
                sys.exit(f"{command[0]} has read {done.stdout.count(TEXT.encode())} messages of {2 * EACH}")
            wire.add(modem.moved)
    return statistics.median(seconds), max(wire)


def fewest():
    """The bytes of listing each store once, and of nothing else, from a modem that does not echo."""
    modem, total = filled("unused"), 0
    for store in modem.messages:
        modem.chosen["+CPMS"] = store
        total += len("AT+CMGL=4\r" + "".join(f"\r\n{line}\r\n" for line in modem.run("+CMGL=4")))
    return total


def row(name, value, unit, reference_name, reference):
    print(f"{name:46} {value:10.1f} {unit:5} {reference_name:34} {reference:10.1f} {unit:5} {value / reference:6.2f} x")


def main():
    program, rounds = sys.argv[1], int(sys.argv[2]) if len(sys.argv) > 2 else 5
    ours, wire = measure(rounds, [program, "{port}"])
    theirs, _ = measure(rounds, ["gammu", "-c", "{settings}", "getallsms"])
    row(f"opening a handset, reading {2 * EACH} messages", ours * 1000, "ms", "gammu getallsms", theirs * 1000)
    row("bytes on the line for that", wire / 1000, "kB", "two bare listings", fewest() / 1000)


if __name__ == "__main__":
    main()
