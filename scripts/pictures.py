"""Takes the pictures of docs/manual.md and README.md: a short day with the simulated handset as it ships."""

import subprocess
import unittest

from harness import LIST, PC_INBOX, ROOT, QuilletTest


class Pictures(QuilletTest):
    def take(self, name, left, top, width, height):
        """That part of the screen as a small picture."""
        self.xdotool(("sleep", 0.3))  # what is painted last is seen by nobody but the person
        subprocess.run(["import", "-window", "root", "-crop", f"{width}x{height}+{left}+{top}", "+repage", "-strip",
                        "+dither", "-colors", "255", "-define", "png:compression-level=9",
                        "-define", "png:exclude-chunks=date,time", f"PNG8:{ROOT}/docs/{name}.png"], check=True)

    def front(self):
        """The place of the window in front."""
        return next(t.rect for t in self.look() if t.window == 0)

    def aside(self):
        self.xdotool(("mousemove", 1270, 1015))

    def row(self, text):
        """The row whose message begins so."""
        return self.until(lambda sight: next((t for t in sight.rows() if t.texts[0].startswith(text)), None))

    def test_day(self):
        self.launch()
        self.counts(26, 6, 0, 0, 0)
        self.take("quillet", *self.front())

        # Filed by the mouse: two messages on their way to the PC.
        frame = self.front()
        for text, held in (("Goedemorgen", []), ("Komme", [("keydown", "ctrl")])):
            row = self.row(text).rect
            self.xdotool(*held, ("mousemove", row[0] + 30, row[1] + row[3] // 2), ("click", 1), ("keyup", "ctrl"))
        self.drag(self.row("Goedemorgen").texts[0], PC_INBOX)
        self.take("drag", frame[0], frame[1], 640, 400)
        self.drop()
        self.counts(26, 6, 2, 0, 0)

        # Read.
        row = self.row("Happy new year").rect
        self.xdotool(("mousemove", row[0] + 30, row[1] + row[3] // 2), ("click", "--repeat", 2, "--delay", 60, 1))
        self.shows("Open SMS")
        self.aside()
        self.take("reader", *self.front())
        self.key("Escape", to=LIST)

        # The menu of a message, opened by the keyboard as well as by the right button.
        row = self.row("Le dîner").rect
        at = row[0] + 120, row[1] + row[3] // 2
        self.xdotool(("mousemove", *at), ("click", 3))
        self.until(lambda sight: any("#32768" in t.texts for t in sight))
        self.xdotool(*[("key", "Down")] * 6, ("key", "Right"))
        self.aside()
        self.take("menu", frame[0] + 196, row[1] - 70, 620, 420)
        self.key("Escape", "Escape", "Escape")

        # Write to three, one of whom cannot be reached.
        self.click("ID_NEW", to="IDC_RECEIVERS")
        self.type("5550142")
        self.click("IDC_CONTACT")
        self.click("Ben Carter")
        self.click("Nobody answers", held="ctrl")
        self.click("IDC_ADD_CONTACT")
        self.until(lambda sight: len(sight.rows("IDC_CHOSEN")) == 3)
        self.aside()
        self.take("contacts", *self.front())
        self.click("IDC_ADDRESS_OK")
        self.click("IDC_MESSAGE_CONTENT")
        self.type("The train is at 9.40, platform 3. Bring the thermos!")
        self.aside()
        self.take("new-message", *self.front())
        self.click("IDC_SEND")
        self.answer("2/3 message(s)  sent.", "OK")
        self.counts(26, 6, 2, 2, 1)
        self.key("F4")
        self.shows("Last send")
        self.aside()
        self.take("last-send", *self.front())
        self.key("Escape")

        # Found, without the accents.
        self.key("ctrl+f")
        self.until(lambda sight: sight.find("Edit"))
        self.type("reunion")
        self.key("Return")
        self.until(lambda sight: any(text.startswith("Found in") for t in sight for text in t.texts))
        self.aside()
        self.take("find", *frame)


if __name__ == "__main__":
    unittest.main()
