"""The shipped folder, opened as it is and with messages already on the PC."""

import contextlib
import io

from harness import (DELETE, DELETE_ALL, HANDSET, NEW, PC_DRAFT, PC_INBOX, PC_SENT, PICTURES, REFRESH, SAVE,
                     QuilletTest, middle, take_picture, xdotool)
import handset_file
import show

SHOWN = handset_file.read(HANDSET.read_bytes())


def labels(inbox, sent, draft):
    return ["Mobile", f"Inbox({len(SHOWN.inbox)})", f"Outbox({len(SHOWN.outbox)})",
            "PC", f"Inbox({inbox})", f"Sent({sent})", f"Draft({draft})"]


class Opening(QuilletTest):
    def test_opens_as_shipped(self):
        self.assertGreater(len(SHOWN.inbox), 10)
        texts = "\n".join(text for text, _, _ in SHOWN.inbox)
        for sample in ("ü", "ś", "П", "🎉", "역", "お", "Κ", "ש", "ص", "你", "ğ"):
            self.assertIn(sample, texts, "the shipped handset has no such message any more")
        program, sight = self.open()
        take_picture(PICTURES / "shipped_folder.png", sight.main["rect"])

        self.assertEqual(sight.main["title"], "Quillet")
        self.assertTrue(sight.main["foreground"])
        # Nothing is selected, and nothing can be deleted from the handset.
        self.assertEqual([(b["command"], b["enabled"]) for b in sight.buttons],
                         [(NEW, True), (SAVE, False), (DELETE, False), (DELETE_ALL, False), (REFRESH, True)])
        self.assertEqual(sight.labels, labels(0, 0, 0))
        self.assertEqual([item["level"] for item in sight.items], [0, 1, 1, 0, 1, 1, 1])
        self.assertEqual([item["image"] for item in sight.items], [0, 2, 3, 1, 4, 5, 6])
        self.assertEqual([item["expanded"] for item in sight.items if item["level"] == 0], [True, True])
        self.assertTrue(sight.items[1]["selected"])

        self.assertEqual(sight.titles, ["Content", "Sender", "Time"])
        self.assertEqual([c["alignment"] for c in sight.list["columns"]], ["left", "left", "right"])
        width = sight.list["client"][2]
        self.assertEqual(sight.widths, [width // 2, width // 4, width // 4])
        self.assertEqual(sight.rows, SHOWN.inbox)

        parts = sight.control("msctls_statusbar32")["parts"]
        self.assertEqual(len(parts), 4)
        self.assertTrue(parts[0], "the status bar says nothing")
        self.end()

    def test_shown_in_words(self):
        said, picture = io.StringIO(), self.folder / "picture.png"
        with contextlib.redirect_stdout(said):
            self.assertEqual(show.show(self.folder, picture), 0)
        self.assertTrue(picture.exists())
        for line in ('window "Quillet"', f"Inbox({len(SHOWN.inbox)}) (selected)", SHOWN.inbox[0][1]):
            self.assertIn(line, said.getvalue())

    def test_buttons_say_what_they_do(self):
        program, sight = self.open()
        for command, tip in ((NEW, "New"), (SAVE, "Save"), (DELETE, "Delete"), (DELETE_ALL, "DeleteAll"),
                             (REFRESH, "Refresh")):
            with self.subTest(tip):
                x, y = middle(sight.button(command)["rect"])
                xdotool(("mousemove", x - 4, y), ("mousemove", x, y))
                program.wait_for(lambda now: tip in now.tooltips, f"the tip {tip}")
        self.end()

    def test_stores_of_every_kind(self):
        self.write("pcInbox.dat", "[PCINBOX] \r\n"
                   "Content = Grüße aus Köln \r\nPhone = +49171555 \r\nTime = 2026/01/02  09:05:07 \r\nIndex =  \r\n"
                   "Content = two \r\nPhone = 5550142 \r\nTime = 05030412304532 \r\nIndex = 7 \r\n".encode("cp1252"))
        self.write("pcSent.dat", b"\xef\xbb\xbf" + "[PCSENT] \r\n"
                   "Content = 안녕 Привет 🎉 \r\nPhone = +82555 \r\nTime = 2026/01/02  09:05:07 \r\n"
                   "Index = 0 \r\n".encode())
        # The second message ends after two lines: its time is the last line's value again.
        self.write("pcDraft.dat", b"[PCDRAFT] \r\n"
                   b"Content = whole \r\nPhone = 5550142 \r\nTime = 2026/01/02  09:05:07 \r\nIndex = 1 \r\n"
                   b"Content = torn \r\nPhone = 5550199 \r\n")
        program, sight = self.open()
        self.assertEqual(sight.labels, labels(2, 1, 2))
        time = "2026/01/02  09:05:07"
        for folder, rows in ((PC_INBOX, [["Grüße aus Köln", "+49171555", time],
                                         ["two", "5550142", "2005-03-04 12:30:45"]]),
                             (PC_SENT, [["안녕 Привет 🎉", "+82555", time]]),
                             (PC_DRAFT, [["whole", "5550142", time], ["torn", "5550199", "5550199"]])):
            with self.subTest(folder=folder):
                self.select(folder)
                program.wait_for(lambda now: now.rows == rows, f"the rows {rows}")
        self.end()

    def test_store_of_rubbish(self):
        rubbish = bytes(range(256)) * 8
        self.write("pcDraft.dat", rubbish)
        program, sight = self.open()
        self.assertEqual(sight.labels, labels(0, 0, 0))
        self.select(PC_DRAFT)
        program.wait_for(lambda now: not now.rows, "an empty list")
        self.end()
        self.assertEqual((self.folder / "pcDraft.dat").read_bytes(), rubbish, "a file that was only read has changed")
