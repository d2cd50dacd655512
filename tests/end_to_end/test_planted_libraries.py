"""Libraries that somebody has left in the current folder and on the PATH, under every name that could be asked for."""

import os
import pathlib
import re
import subprocess

from harness import (CONNECT, NEW, OUT, SHIPPED, QuilletTest, beginning_of, click, control_of, double_click, key,
                     windows_path)

CONTACT = 1022
LIBRARY = OUT / "mingw" / "tests" / "end_to_end" / "planted_library.dll"
SYSTEM = pathlib.Path(os.environ.get("WINEPREFIX", "")) / "drive_c" / "windows" / "system32"
LIBRARY_NAME = re.compile(rb"(?:[\w-][\w.-]*)\.(?:dll|drv)", re.IGNORECASE)


def names_in(program):
    """What looks like a library's name in the program, in characters of 8 or of 16 bits."""
    bytes_ = program.read_bytes()
    return {name.decode() for text in (bytes_, bytes_.replace(b"\0", b"")) for name in LIBRARY_NAME.findall(text)}


class PlantedLibraries(QuilletTest):
    def setUp(self):
        super().setUp()
        system = {path.name for path in SYSTEM.iterdir() if path.suffix not in (".exe", ".tlb")}
        own = set().union(*map(names_in, (path for path in SHIPPED.iterdir() if path.suffix in (".exe", ".dll"))))
        self.assertLess({"gdiplus.dll", "riched20.dll", "SMS_DLL2.dll", "zelSMS.dll"}, own)
        self.assertIn("riched20.dll", system)
        # The names differ in nothing but their case for Windows.
        self.names = {name.lower(): name for name in (*system, *own)}.values()
        self.current, self.on_path = self.plant(self.names), self.plant(self.names)

    def plant(self, names, folder=None):
        folder = folder or self.new_folder()
        for name in names:
            (folder / name).unlink(missing_ok=True)
            os.link(LIBRARY, folder / name)
        return folder

    def launch(self):
        return super().launch(place=self.current, WINEPATH=windows_path(self.on_path))

    def marks(self):
        return sorted(mark.name for folder in (self.current, self.on_path, self.folder)
                      for mark in folder.glob("*.loaded"))

    def run_tool(self, *words):
        return subprocess.run(["wine", *words], cwd=self.current, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                              stderr=subprocess.DEVNULL, timeout=20,
                              env=dict(os.environ, WINEPATH=windows_path(self.on_path)))

    def visit(self, program, title):
        dialog = program.wait_for_dialog(title)
        key("Escape")
        program.wait_until_gone(dialog)

    def test_not_loaded_by_any_window(self):
        program, sight = self.open()
        double_click(beginning_of(sight.list["rows"][0]["rect"]))
        self.visit(program, "Open SMS")
        key("ctrl+s")
        self.visit(program, "Save")
        click(sight.button(NEW)["rect"])
        click(control_of(program.wait_for_dialog("New SMS"), CONTACT)["rect"])
        self.visit(program, "Contacts")
        self.visit(program, "New SMS")
        key("alt+space", "Up", "Return")  # the last entry of the window's own menu
        self.visit(program, "Quillet")
        self.end()
        self.assertEqual(self.marks(), [])

    def test_not_loaded_for_a_missing_one(self):
        (self.folder / "SMS_DLL2.dll").unlink()
        program = self.launch()
        self.answer("DLL Not Found :SMS_DLL2.dll")
        program.wait_for_window()
        self.end()
        self.run_tool(windows_path(self.folder / "findport.exe"))
        self.assertEqual(self.marks(), [])

    def test_would_leave_a_mark(self):
        # Loaded by a program that looks everywhere, and by ours from its own folder.
        self.run_tool("rundll32", "SMS_DLL2.dll,nothing")
        self.assertEqual(self.marks(), ["SMS_DLL2.dll.loaded"])
        (self.current / "SMS_DLL2.dll").unlink()
        self.run_tool("rundll32", "SMS_DLL2.dll,nothing")
        self.assertEqual(self.marks(), ["SMS_DLL2.dll.loaded"] * 2)

        self.plant(["SMS_DLL2.dll"], self.folder)
        program = self.launch()
        box = self.box_says(CONNECT)
        self.assertEqual(self.marks(), ["SMS_DLL2.dll.loaded"] * 3)
        program.press(box, "OK")
        program.wait_for_end()
