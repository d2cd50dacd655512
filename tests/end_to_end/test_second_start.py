"""A second start in a folder whose program runs: it only brings that program to the front."""

import contextlib
import signal
import subprocess

from harness import CONNECT, HANDSET, NEW, REFRESH, SILENT, QuilletTest, click, focus_of, wait_until


def files(folder):
    """Everything in the folder, and when it was last written to."""
    return {path: (path.stat().st_size, path.stat().st_mtime_ns) for path in (folder, *folder.rglob("*"))}


@contextlib.contextmanager
def shown_windows(shown):
    """Puts into the list a line for every window that comes up on the screen meanwhile."""
    watch = subprocess.Popen(["stdbuf", "-oL", "xev", "-root", "-event", "substructure"], stdout=subprocess.PIPE,
                             text=True)
    try:
        yield
    finally:
        watch.terminate()
        shown += [line for line in watch.communicate(timeout=10)[0].splitlines() if line.startswith("MapNotify")]


class SecondStart(QuilletTest):
    def setUp(self):
        super().setUp()
        self.first, _ = self.open()

    def put_behind(self):
        """The program of another folder, whose window lies above the first's."""
        other = self.launch(self.copy_of_the_shipped())
        self.assertTrue(other.wait_for_window().main["foreground"])
        self.assertFalse(self.first.look().main["foreground"])
        return other

    def start_again(self, folder=None):
        """A second start, which ends by itself and leaves everything as it was."""
        # One that asked the handset would have a message to show.
        self.write("handset.txt", SILENT)
        before, shown = files(self.folder), []
        with shown_windows(shown):
            self.assertEqual(self.launch(folder).wait_for_end(), 0)
        self.assertEqual(files(self.folder), before)
        self.write("handset.txt", HANDSET.read_bytes())
        self.assertTrue(self.first.running())
        return shown

    def minimize(self):
        self.first.ask("minimize")
        self.first.wait_for(lambda now: now.main["minimized"], "the window to be small")

    def dialog_in_front(self, title):
        return self.first.wait_for(lambda now: now.dialogs and now.dialogs[0]["title"] == title
                                   and now.dialogs[0]["foreground"] and focus_of(now.dialogs[0])
                                   and not now.main["minimized"], f"{title} in front, with the keyboard").dialogs[0]

    def test_shows_the_first_window(self):
        other = self.put_behind()
        self.assertEqual(self.start_again(), [], "windows shown by the second start")
        sight = self.first.wait_for(lambda now: now.main["foreground"], "the first window in front")
        self.assertEqual(sight.dialogs, [])
        self.assertTrue(other.running())
        self.end(other)

        # By another name of the folder, and with the window made small.
        alias = self.folder.with_name(self.folder.name + "-alias")
        alias.symlink_to(self.folder)
        self.addCleanup(alias.unlink)
        self.minimize()
        self.start_again(alias)
        self.first.wait_for(lambda now: now.main["foreground"] and not now.main["minimized"], "the window back")
        self.end(self.first)

    def test_shows_the_dialog(self):
        click(self.first.look().button(NEW)["rect"])
        self.first.wait_for_dialog("New SMS")
        other = self.put_behind()
        self.start_again()
        self.dialog_in_front("New SMS")
        self.minimize()
        self.start_again()
        # By mouse: where no window manager tells the X server whose the keys are, it may have left them with the
        # window that came to the front when this one was made small.
        self.first.press(self.dialog_in_front("New SMS"), "Cancel")
        self.end(other)
        self.end(self.first)

    def test_shows_the_message(self):
        # A message that belongs to no window, but keeps the window from being used.
        self.write("handset.txt", SILENT)
        click(self.first.look().button(REFRESH)["rect"])
        self.box_says(CONNECT)
        other = self.put_behind()
        self.start_again()
        self.first.press(self.dialog_in_front("Quillet"), "OK")
        self.end(other)
        self.end(self.first)

    def test_works_again_after_a_kill(self):
        self.first.process.send_signal(signal.SIGKILL)
        self.first.process.wait(10)
        self.open()
        self.end()
        self.write("Quillet.lock", b"")  # left by a machine that went off
        self.open()
        self.end()
        wait_until(lambda: not (self.folder / "Quillet.lock").exists(), "the lock to be gone")
