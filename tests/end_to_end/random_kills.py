"""Kills the program at random moments while messages are moved and deleted, and looks for every message afterwards.

    tests/end_to_end/kill_at_random [COUNT] [SEED]      by hand; 1,000 kills without a count
"""

import collections
import os
import pathlib
import queue
import random
import re
import shutil
import signal
import subprocess
import sys
import threading
import time

ROOT = pathlib.Path(__file__).resolve().parents[2]
SHIPPED = ROOT / "dist" / "Quillet"
HAND = ROOT / "out" / "mingw" / "tests" / "end_to_end" / "busy_hand.exe"
STORES = {"pcInbox.dat": "PCINBOX", "pcSent.dat": "PCSENT", "pcDraft.dat": "PCDRAFT"}
MESSAGES = 900  # in all three folders, when they are filled
FEWEST = 600  # before they are filled again
ANY_TIME = 0.7  # seconds from the start to a kill, at most
WITHIN_CHANGE = 0.04  # seconds from the order for a change to a kill, at most
PATIENCE = 60  # seconds for a step of the program on a busy machine
AFTER_KILL = 30  # seconds for the hand to see that the program is gone

HANDSET = "[settings]\nopen = yes\ninit = yes\n"
LINES = re.compile(r"Content = (m\d{6}) (x{1,150}) \r\nPhone = (\+\d{10}) \r\n"
                   r"Time = 2026/03/02  11:22:33 \r\nIndex = \d+ \r\n")


def lines_of(number):
    return (f"Content = m{number:06} {'x' * (1 + number * 7 % 150)} \r\nPhone = +{number:010} \r\n"
            f"Time = 2026/03/02  11:22:33 \r\nIndex = {number} \r\n")


def parse(path, section):
    """The numbers of a store's messages in their order; fails for anything but whole messages as they were made."""
    text = path.read_bytes().decode("ascii")
    header = f"[{section}] \r\n"
    if not text.startswith(header):
        raise AssertionError(f"{path.name} begins with {text[:40]!r}")
    found, at = [], len(header)
    while at < len(text):
        match = LINES.match(text, at)
        number = int(match[3]) if match else None
        if not match or match[0][:match.start(3) - at] != lines_of(number)[:match.start(3) - at]:
            raise AssertionError(f"{path.name} at {at}: {text[at:at + 200]!r}")
        found.append(number)
        at = match.end()
    return found


class Hand:
    """The process that works with the window."""

    def __init__(self):
        self.process = subprocess.Popen(["wine", str(HAND)], stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                                        stderr=subprocess.DEVNULL, text=True, bufsize=1)
        self.lines = queue.Queue()
        threading.Thread(target=self.listen, daemon=True).start()

    def listen(self):
        for line in self.process.stdout:
            self.lines.put(line.strip())

    def start(self, seed):
        self.process.stdin.write(f"run {seed}\n")
        self.process.stdin.flush()

    def next(self, patience=PATIENCE):
        try:
            return self.lines.get(timeout=patience)
        except queue.Empty:
            return "nothing"

    def end(self):
        self.process.stdin.close()
        self.process.kill()
        self.process.wait()
        self.process.stdout.close()


class RandomKills:
    def __init__(self, folder, seed):
        self.folder = folder
        self.chance = random.Random(seed)
        self.hand = Hand()
        self.next_number = 1
        self.seen = collections.Counter()
        shutil.copytree(SHIPPED, folder, dirs_exist_ok=True, ignore=shutil.ignore_patterns("*.dat*", "*.lock"))
        (folder / "port.ini").write_bytes(b"[port]\r\ncom=0\r\n")
        (folder / "handset.txt").write_text(HANDSET)
        self.shipped = {path.name for path in folder.iterdir()} | {"program.log"}
        self.write({name: [] for name in STORES})
        self.fill()

    def write(self, stores):
        for name, numbers in stores.items():
            (self.folder / name).write_bytes(
                f"[{STORES[name]}] \r\n{''.join(map(lines_of, numbers))}".encode())

    def read(self):
        return {name: parse(self.folder / name, section) for name, section in STORES.items()}

    def fill(self):
        stores = self.read()
        if sum(map(len, stores.values())) >= FEWEST:
            return
        while sum(map(len, stores.values())) < MESSAGES:
            shortest = min(stores, key=lambda name: len(stores[name]))
            stores[shortest].append(self.next_number)
            self.next_number += 1
        self.write(stores)

    def start(self):
        """The program started, and what the hand has to say of its window."""
        with open(self.folder / "program.log", "w") as log:
            program = subprocess.Popen(["wine", "Quillet.exe"], cwd=self.folder, stdin=subprocess.DEVNULL, stdout=log,
                                       stderr=log, env={**os.environ, "WINEDEBUG": "err+all"})
        while (line := self.hand.next(1)) == "nothing":
            assert program.poll() is None, (f"no window; the program ended with {program.returncode}: "
                                            + (self.folder / "program.log").read_text())
        return program, line

    def kill_once(self):
        """One run of the program up to its kill; fails when something is lost."""
        before = self.read()
        self.hand.start(self.chance.randrange(1 << 30))
        program, counts = self.start()
        try:
            expected = "counts " + " ".join(str(len(numbers)) for numbers in before.values())
            assert counts == expected, f"{counts!r} instead of {expected!r}"
            said = self.wait_for_moment()
        finally:
            program.send_signal(signal.SIGKILL)
            program.wait()
        while (line := self.hand.next(AFTER_KILL)) not in ("gone", "nothing"):
            said.append(line)
        if line == "nothing":
            # Wine waits for ever for memory of a process that is killed meanwhile. All has been said by then.
            self.hand.end()
            self.hand = Hand()
            self.seen["new hand"] += 1
        self.check(before, self.read(), said)

    def wait_for_moment(self):
        """Until any time, or mostly until one in or just after a change; what the hand has said by then."""
        said = []
        if self.chance.random() < 0.3:
            time.sleep(self.chance.uniform(0, ANY_TIME))
            return said
        for _ in range(self.chance.randint(1, 3)):
            said.append(self.hand.next())
            while said[-1] == "done":
                said.append(self.hand.next())
        time.sleep(self.chance.uniform(0, WITHIN_CHANGE))
        return said

    def check(self, before, after, said):
        deleted, deleting, moving = set(), set(), set()
        for line, following in zip(said, said[1:] + [""]):
            word, _, texts = line.partition(" ")
            assert word in ("move", "delete", "done"), line
            numbers = {int(text[1:7]) for text in texts.split("|") if text}
            if word == "delete":
                (deleted if following == "done" else deleting).update(numbers)
            elif word == "move" and following != "done":
                moving = numbers
            self.seen[word] += word != "done"
        self.seen["killed while deleting"] += bool(deleting)
        self.seen["killed while moving"] += bool(moving)

        had = {number for numbers in before.values() for number in numbers}
        places = collections.Counter(number for numbers in after.values() for number in numbers)
        lost = had - set(places) - deleted - deleting
        assert not lost, f"lost {sorted(lost)} after {said}"
        assert not deleted & set(places), f"back again: {sorted(deleted & set(places))} after {said}"
        assert set(places) <= had, f"from nowhere: {sorted(set(places) - had)}"
        twice = {number for number, count in places.items() if count > 1}
        assert twice <= moving, f"in two folders: {sorted(twice)} after {said}"
        self.seen["messages in both folders of a move"] += bool(twice)

        strays = {path.name for path in self.folder.iterdir()} - self.shipped - set(STORES)
        assert strays <= {f"{name}.new" for name in STORES}, f"left behind: {sorted(strays)}"
        self.seen["new file left beside its store"] += bool(strays)
        if twice:
            self.write({name: [n for n in numbers if n not in twice or name == self.keeper(n, after)]
                        for name, numbers in after.items()})

    @staticmethod
    def keeper(number, stores):
        return next(name for name, numbers in stores.items() if number in numbers)

    def run(self, count):
        for _ in range(count):
            self.kill_once()
            self.seen["kills"] += 1
            self.fill()


def main():
    count, seed = int(sys.argv[1]), int(sys.argv[2])
    folder = ROOT / "out" / "kills" / str(seed)  # kept, so that it can be looked at after a failure
    shutil.rmtree(folder, ignore_errors=True)
    kills = RandomKills(folder, seed)
    try:
        while kills.seen["kills"] < count:
            kills.run(min(50, count - kills.seen["kills"]))
            print(", ".join(f"{what}: {times}" for what, times in kills.seen.items() if times), flush=True)
    finally:
        kills.hand.end()
    print("Nothing was lost.")


if __name__ == "__main__":
    main()
