"""Starts a copy of the shipped folder, presses real keys and buttons, and looks at the window from outside."""

import dataclasses
import json
import os
import pathlib
import shutil
import signal
import subprocess
import tempfile
import time
import unittest

from reporter import ask_reporter

ROOT = pathlib.Path(__file__).resolve().parents[2]
OUT = ROOT / "out"
SHIPPED = ROOT / "dist" / "Quillet"
HANDSET = ROOT / "handset" / "handset.txt"
PICTURES = OUT / "pictures"

NEW, SAVE, DELETE, DELETE_ALL, REFRESH = 32771, 32773, 32774, 32775, 32783
MOBILE, INBOX, OUTBOX, PC, PC_INBOX, PC_SENT, PC_DRAFT = range(7)  # the tree's items
CONNECT = "Can not connect,Please Check Connection"
SILENT = HANDSET.read_bytes().replace(b"open = yes", b"open = no")  # a handset that does not answer
assert SILENT != HANDSET.read_bytes()


def wait_until(condition, what, timeout=10):
    """The first true value of `condition`, asked again and again; fails when none comes in time."""
    end = time.monotonic() + timeout
    while True:
        value = condition()
        if value:
            return value
        if time.monotonic() > end:
            raise AssertionError(f"waited {timeout} s in vain: {what}")
        time.sleep(0.03)


def xdotool(*steps):
    """Runs xdotool commands one after the other, with a breath between them as a hand would take."""
    words = []
    for step in steps:
        words += ([] if not words else ["sleep", "0.04"]) + [str(word) for word in step]
    subprocess.run(["xdotool", *words], check=True, timeout=20)


def middle(rect):
    left, top, width, height = rect
    return left + width // 2, top + height // 2


def click(rect, held=None):
    """Clicks the middle; with the key `held` down, "ctrl" or "shift"."""
    steps = [("click", 1)] if held is None else [("keydown", held), ("click", 1), ("keyup", held)]
    xdotool(("mousemove", *middle(rect)), *steps)


def double_click(rect):
    xdotool(("mousemove", *middle(rect)), ("click", "--repeat", 2, "--delay", 60, 1))


def key(*names):
    xdotool(*(("key", name) for name in names))


def type_text(text):
    subprocess.run(["xdotool", "type", "--delay", "40", text], check=True, timeout=20)


def drag(start, end):
    """Presses at `start`, moves in steps, lets go at `end`."""
    (x0, y0), (x1, y1) = start, end
    ways = [("mousemove", x0 + (x1 - x0) * i // 4, y0 + (y1 - y0) * i // 4) for i in range(5)]
    xdotool(ways[0], ("mousedown", 1), *ways[1:], ("mouseup", 1))


def windows_path(path):
    return "Z:" + str(path).replace("/", "\\")


def paste(text):
    """Puts the text on the clipboard and presses the keys for it."""
    data = text.encode()
    wait_until(lambda: ask_reporter(f"copy {len(data)}", attached=data).code == 0, "the clipboard to be free")
    key("ctrl+v")


@dataclasses.dataclass
class Sight:
    """What the program's windows held at one moment."""

    main: dict  # None when there is no window
    dialogs: list  # the one on top first
    tooltips: list  # their texts

    def control(self, class_name):
        found = [c for c in self.main["controls"] if c["class"] == class_name]
        if len(found) != 1:
            raise AssertionError(f"{len(found)} controls of class {class_name}")
        return found[0]

    @property
    def tree(self):
        return self.control("SysTreeView32")

    @property
    def list(self):
        return self.control("SysListView32")

    @property
    def items(self):
        return self.tree["items"]

    @property
    def is_filled(self):
        """Whether the window is there and every folder has its count, as in "Inbox(3)"."""
        trees = [c for c in self.main["controls"] if c["class"] == "SysTreeView32"] if self.main else []
        folders = [item["text"] for tree in trees for item in tree["items"] if item["level"]]
        return bool(folders) and all(text.endswith(")") for text in folders)

    @property
    def labels(self):
        return [item["text"] for item in self.items]

    @property
    def rows(self):
        return [row["texts"] for row in self.list["rows"]]

    @property
    def selected_rows(self):
        return [i for i, row in enumerate(self.list["rows"]) if row["selected"]]

    @property
    def titles(self):
        return [column["title"] for column in self.list["columns"]]

    @property
    def widths(self):
        return [column["width"] for column in self.list["columns"]]

    @property
    def buttons(self):
        return self.control("ToolbarWindow32")["buttons"]

    def button(self, command):
        return next(b for b in self.buttons if b["command"] == command)


def texts_of(dialog):
    """The texts that a message box shows."""
    return [c["text"] for c in dialog["controls"] if c["class"] == "Static" and c["text"]]


def beginning_of(rect):
    """The part of a row in which its first text is seen whatever the width of the list."""
    left, top, _, height = rect
    return [left, top, 60, height]


def dialog_button(dialog, text):
    return next(c for c in dialog["controls"] if c["class"] == "Button" and c["text"].replace("&", "") == text)


def control_of(dialog, number):
    """The dialog's control with this id."""
    found = [c for c in dialog["controls"] if c["id"] == number]
    if len(found) != 1:
        raise AssertionError(f"{len(found)} controls with the id {number}")
    return found[0]


def focus_of(dialog):
    """The id of the control that has the focus."""
    return next((c["id"] for c in dialog["controls"] if c["focused"]), None)


class Program:
    """One running program in its folder; `place` is the folder it is started from."""

    def __init__(self, folder, place=None, **environment):
        self.folder = folder
        self.process = subprocess.Popen(["wine", windows_path(folder / "Quillet.exe")], cwd=place or folder,
                                        env=dict(os.environ, **environment), stdin=subprocess.DEVNULL,
                                        stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)

    def ask(self, request):
        ask_reporter(f"look-at {windows_path(self.folder)}")
        return ask_reporter(request)

    def running(self):
        return self.process.poll() is None

    def look(self, timeout=10):
        """What is on the screen now. Asked again while a window comes or goes, or is busy."""
        def ask():
            answer = self.ask("report")
            return Sight(**json.loads(answer.text)) if answer.code == 0 else None
        return wait_until(ask, "a report of the program's windows", timeout)

    def wait_for_window(self, timeout=60):
        """Until the window is there and every folder has its count."""
        def filled(sight):
            if sight.dialogs:
                raise AssertionError("a message box came instead of the window")
            if not sight.main and not self.running():
                raise AssertionError(f"the program has ended with {self.process.returncode}")
            return sight.is_filled
        return self.wait_for(filled, "the window", timeout)

    def wait_for(self, condition, what, timeout=10):
        """The first sight for which `condition` holds."""
        last = []

        def ask():
            last[:] = [self.look(max(timeout, 10))]
            return condition(last[0])
        try:
            wait_until(ask, what, timeout)
        except AssertionError as problem:
            seen = json.dumps([vars(sight) for sight in last], ensure_ascii=False)
            raise AssertionError(f"{problem}\nlast seen: {seen}") from None
        return last[0]

    def wait_for_dialog(self, title, condition=lambda dialog: True, what="open", timeout=10):
        """The dialog of that title, once it lies above all other windows and `condition` holds for it."""
        def holds(sight):
            top = sight.dialogs[0] if sight.dialogs else None
            return top and top["title"] == title and top["foreground"] and condition(top)
        return self.wait_for(holds, f"{title}: {what}", timeout).dialogs[0]

    def wait_until_gone(self, dialog, after=""):
        """The sight without that dialog; None when the program has ended."""
        def gone():
            sight = self.look() if self.running() else None
            return not sight or all(d["window"] != dialog["window"] for d in sight.dialogs) and [sight]
        answer = wait_until(gone, f"{dialog['title']} to go {after}")
        return None if answer is True else answer[0]

    def wait_for_no_dialog(self):
        return self.wait_for(lambda sight: not sight.dialogs, "every dialog to go")

    def press(self, dialog, text):
        """Clicks a dialog's button and waits for the dialog to go."""
        click(dialog_button(dialog, text)["rect"])
        return self.wait_until_gone(dialog, f"after {text}")

    def wait_for_end(self, timeout=15):
        try:
            return self.process.wait(timeout)
        except subprocess.TimeoutExpired:
            raise AssertionError("the program does not end") from None

    def close(self):
        """Closes the window as its close button does; the exit code."""
        self.ask("close")
        return self.wait_for_end()


def leftovers():
    """Programs of ours that still run in our Wine prefix, as process numbers."""
    prefix = f"WINEPREFIX={os.environ['WINEPREFIX']}".encode()
    found = []
    for process in pathlib.Path("/proc").iterdir():
        try:
            if (process.name.isdigit() and b"Quillet.exe" in (process / "cmdline").read_bytes()
                    and prefix in (process / "environ").read_bytes().split(b"\0")):
                found.append(int(process.name))
        except OSError:
            pass  # gone, or not ours
    return found


def take_picture(path, rect=None):
    path.parent.mkdir(parents=True, exist_ok=True)
    crop = ["-crop", "{2}x{3}+{0}+{1}".format(*rect), "+repage"] if rect else []
    subprocess.run(["import", "-window", "root", *crop, str(path)], check=True, timeout=20,
                   stderr=subprocess.DEVNULL)


def pixels(rect):
    """What the screen shows there, as bytes to compare."""
    left, top, width, height = rect
    return subprocess.run(["import", "-window", "root", "-crop", f"{width}x{height}+{left}+{top}", "-depth", "8",
                           "rgb:-"], check=True, timeout=20, capture_output=True).stdout


class QuilletTest(unittest.TestCase):
    """A fresh copy of the shipped folder for every test, and at its end nothing left running."""

    def setUp(self):
        self.folder = self.copy_of_the_shipped()
        self.programs = []
        self.addCleanup(self.leave_nothing)
        xdotool(("mousemove", 1270, 1015))  # away from everything that lights up or shows a tip

    def new_folder(self):
        """An empty one, gone when the test is over."""
        (OUT / "end_to_end").mkdir(parents=True, exist_ok=True)
        folder = pathlib.Path(tempfile.mkdtemp(prefix=f"{self._testMethodName}-", dir=OUT / "end_to_end"))
        self.addCleanup(shutil.rmtree, folder)
        return folder

    def copy_of_the_shipped(self):
        folder = self.new_folder()
        # What a person may have changed or stored in the shipped folder is none of a test's business.
        shutil.copytree(SHIPPED, folder, dirs_exist_ok=True,
                        ignore=shutil.ignore_patterns("*.dat", "port.ini", "handset.txt"))
        (folder / "port.ini").write_bytes(b"[port]\r\ncom=0\r\n")
        (folder / "handset.txt").write_bytes(HANDSET.read_bytes())
        return folder

    def write(self, name, data):
        (self.folder / name).write_bytes(data)

    def launch(self, folder=None, **named):
        """Starts the program in a folder, the test's own if none is named, without waiting for anything."""
        self.program = Program(folder or self.folder, **named)
        self.programs.append(self.program)
        return self.program

    def open(self):
        """The program started, and the first sight of its filled window."""
        program = self.launch()
        return program, program.wait_for_window()

    def select(self, index):
        """Clicks the tree's item number `index`; the sight after the selection has arrived there."""
        click(self.program.look().items[index]["rect"])
        return self.program.wait_for(lambda sight: sight.items[index]["selected"], f"item {index} to be selected")

    def tab_to(self, pane):
        """Tab until the "tree" or the "list" has the focus."""
        for _ in range(6):
            if getattr(self.program.look(), pane)["focused"]:
                return
            key("Tab")
        self.fail(f"Tab does not reach the {pane}")

    def box_says(self, text):
        """The message box on top, which must say `text`."""
        box = self.program.wait_for_dialog("Quillet", what=text, timeout=15)
        self.assertEqual(texts_of(box), [text])
        return box

    def answer(self, text, button="OK"):
        """Presses a button of the box that says `text`; the sight after it, None when the program has ended."""
        return self.program.press(self.box_says(text), button)

    def end(self, program=None):
        """Closes the window; the program, the last one started, must end with 0."""
        self.assertEqual((program or self.program).close(), 0, "exit code")

    def leave_nothing(self):
        take_picture(PICTURES / f"{self._testMethodName}.png")
        for program in self.programs:
            # A test that went well has ended its programs; after a failure this one does.
            if program.running():
                program.process.send_signal(signal.SIGKILL)
            program.process.wait(10)
        try:
            wait_until(lambda: not leftovers(), "the program's processes to be gone")
        finally:
            for process in leftovers():
                os.kill(process, signal.SIGKILL)
