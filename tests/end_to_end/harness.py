"""Runs copies of the shipped folder under Wine with real mouse and keys, and sees what a person sees."""

import collections
import os
import pathlib
import re
import shutil
import subprocess
import tempfile
import time
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
NUMBERS = dict(re.findall(r"#define (ID\w+) (\d+)", (ROOT / "src/resources/resource_ids.h").read_text()))
MOBILE, INBOX, OUTBOX, PC, PC_INBOX, PC_SENT, PC_DRAFT = range(7)  # the tree's items
NO_CONNECTION = "Can not connect,Please Check Connection"
TREE, LIST = "SysTreeView32", "SysListView32"


# One line of the window reporter; which window, from the front, and which control it belongs to.
Thing = collections.namedtuple("Thing", "rect kind number state texts window control")


def middle(thing):
    left, top, width, height = thing.rect
    return left + min(width, 120) // 2, top + height // 2  # of a wide row, where its first text is


class Sight(list):
    """Everything on the screen at one moment, what is in front first."""

    def find(self, name):
        """In the front window: what the sources number so, what is of this kind, or what has this face."""
        number = int(NUMBERS.get(name, -1))
        return next((t for t in self if t.window == 0 and (t.number == number or t.kind == name or
                     t.kind in ("Button", "row") and t.texts[0].replace("&", "") == name)), None)

    def rows(self, control=None):
        """Of that list, or else of the one behind all others."""
        rows = [t for t in self if t.kind == "row"]
        return [t for t in rows if t.control == (int(NUMBERS[control]) if control else rows[-1].control)]

    def items(self, state=None):
        return [t for t in self if t.kind == "item" and state in (None, t.state)]


class QuilletTest(unittest.TestCase):
    maxDiff = None

    @classmethod
    def setUpClass(cls):
        subprocess.run(["setxkbmap", "it"], check=True)  # has keys for è and \, and others are a gamble
        program = ROOT / "out/mingw/tests/end_to_end/window_report.exe"
        cls.reporter = subprocess.Popen(["wine", str(program)], stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                                        stderr=subprocess.DEVNULL, encoding="utf-8")
        cls.addClassCleanup(cls.reporter.communicate)

    def setUp(self):
        self.folder, self.programs = self.new_folder(), []
        # Without what a person may have changed.
        ignored = shutil.ignore_patterns("*.dat", "port.ini", "handset.txt")
        shutil.copytree(ROOT / "dist/Quillet", self.folder, dirs_exist_ok=True, ignore=ignored)
        shutil.copy(ROOT / "handset/handset.txt", self.folder)
        self.write("port.ini", b"[port]\r\ncom=0\r\n")
        self.target = f"Z:{self.folder}/saved.txt".replace("/", "\\")
        self.xdotool(("mousemove", 1270, 1015))  # away from everything that lights up or shows a tip

    def tearDown(self):
        self.picture(self._testMethodName)

    def new_folder(self):
        return pathlib.Path(self.enterContext(tempfile.TemporaryDirectory()))

    def write(self, name, data):
        (self.folder / name).write_bytes(data)

    def read(self, name):
        return (self.folder / name).read_bytes()

    def launch(self, *words, place=None, **environment):
        """The shipped program, or another one; it is gone when the test is over."""
        with open(self.folder / "wine.log", "w") as log:
            words = words or [f"Z:{self.folder}/Quillet.exe"]
            process = subprocess.Popen(["wine", *words], cwd=place or self.folder, stdin=subprocess.DEVNULL,
                                       stdout=log, stderr=log, env=os.environ | environment)
        self.programs.append(process)
        self.addCleanup(process.wait)
        self.addCleanup(process.kill)
        return process

    def picture(self, name):
        (ROOT / "out/pictures").mkdir(exist_ok=True)
        subprocess.run(["import", "-window", "root", str(ROOT / f"out/pictures/{name}.png")], check=True)

    # The eyes

    def look(self):
        self.reporter.stdin.write("\n")
        self.reporter.stdin.flush()
        sight, window, control = Sight(), -1, 0
        while (line := self.reporter.stdout.readline()) != "\n":
            rect, kind, number, state, *texts = line.rstrip("\n").split("\t")
            # A tip lies above the window that is in front.
            window += kind == "window" and texts[1] != "tooltips_class32"
            control = control if kind in ("item", "row", "button") else int(number)
            rect = [int(number) for number in rect.split()]
            sight.append(Thing(rect, kind, int(number), state, texts, window, control))
        return sight

    def until(self, condition):
        end = time.monotonic() + 20
        while not (found := condition(sight := self.look())):
            if time.monotonic() > end:
                ends = [process.poll() for process in self.programs]
                self.fail(f"in vain; ends of programs: {ends}, seen:\n" + "\n".join(str(t[1:]) for t in sight))
            time.sleep(0.02)
        return found

    def shows(self, *texts):
        """The window in front shows all of these."""
        self.until(lambda sight: {*texts} <= {text for t in sight if t.window == 0 for text in t.texts})

    def rows(self, *rows, control=None):
        """The list holds these, each as far as given."""
        self.until(lambda sight: len(found := sight.rows(control)) == len(rows) and all(
            t.texts[:len(row)] == row for t, row in zip(found, rows)))

    def counts(self, *counts):
        """The labels of the folders say this, from the first one."""
        self.until(lambda sight: re.findall(r"\((\d+)\)", str(sight.items())) == [*map(str, counts)])

    def selects(self, *rows, control=None):
        self.until(lambda sight: [t.number for t in sight.rows(control) if t.state == "selected"] == [*rows])

    # The hand

    def xdotool(self, *steps):
        """Steps with a breath between them as a hand would take."""
        words = [str(word) for step in steps for word in (*step, "sleep", 0.04)]
        subprocess.run(["xdotool", *words], check=True)

    def key(self, *names, to=None):
        """Presses the keys; after that `to` has the focus."""
        self.xdotool(*(("key", name) for name in names))
        self.focus(to)

    def type(self, text, *shown):
        subprocess.run(["xdotool", "type", "--delay", "30", text], check=True)
        self.shows(*shown or [text])

    def click(self, name, held=None, times=1, to=None):
        """The thing of this name, once it can be clicked."""
        at = self.until(lambda sight: (t := sight.find(name)) and t.state != "grey" and middle(t))
        down, up = [[(way, held)] if held else [] for way in ("keydown", "keyup")]
        self.xdotool(("mousemove", *at), *down, ("click", "--repeat", times, "--delay", 60, 1), *up)
        self.focus(to)

    def focus(self, name):
        self.until(lambda sight: name is None or (t := sight.find(name)) and t.state == "focus")

    def item(self, number):
        return middle(self.until(lambda sight: sight.items())[number])

    def open_folder(self, number):
        self.xdotool(("mousemove", *self.item(number)), ("click", 1))
        self.until(lambda sight: [t.number for t in sight.items("selected")] == [number])

    def drag(self, row, folder):
        """Picks up the row and carries it over the item, which lights up."""
        left, top, _, height = self.look().find(row).rect
        x, y = left + 20, top + height // 2  # not where a click has just been
        x1, y1 = self.item(folder)
        self.xdotool(("mousemove", x, y), ("mousedown", 1), ("mousemove", x + 6, y + 2),
                     *(("mousemove", x + (x1 - x) * i // 4, y + (y1 - y) * i // 4) for i in range(1, 5)))
        self.until(lambda sight: [t.number for t in sight.items("target")] == [folder])

    def drop(self):
        self.xdotool(("mouseup", 1))
        self.until(lambda sight: not sight.items("target"))

    def answer(self, text, button=None):
        """Presses a button of the box that says this, or Enter, and waits for the box to go."""
        self.shows(text)
        self.click(button) if button else self.key("Return")
        self.until(lambda sight: not any(t.kind == "Static" and text in t.texts for t in sight))
