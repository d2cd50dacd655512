"""The shipped folder, opened as it is and with messages already on the PC."""

from harness import DELETE, DELETE_ALL, NEW, REFRESH, SAVE, HANDSET, PICTURES, QuilletTest, middle, take_picture, xdotool
import handset_file

TREE = ["Mobile", "Inbox({})", "Outbox({})", "PC", "Inbox({})", "Sent({})", "Draft({})"]


def labels(*counts):
    left = iter(counts)
    return [text.format(next(left)) if "{}" in text else text for text in TREE]


class Opening(QuilletTest):
    def test_opens_as_shipped(self):
        handset = handset_file.read(HANDSET.read_bytes())
        self.assertGreater(len(handset.inbox), 10)
        program, sight = self.open()
        take_picture(PICTURES / "shipped_folder.png", sight.main["rect"])

        self.assertEqual(sight.main["title"], "Quillet")
        self.assertTrue(sight.main["foreground"])
        self.assertEqual([b["command"] for b in sight.buttons], [NEW, SAVE, DELETE, DELETE_ALL, REFRESH])
        self.assertEqual(sight.labels, labels(len(handset.inbox), len(handset.outbox), 0, 0, 0))
        self.assertEqual([item["level"] for item in sight.items], [0, 1, 1, 0, 1, 1, 1])
        self.assertEqual([item["image"] for item in sight.items], [0, 2, 3, 1, 4, 5, 6])
        self.assertEqual([item["expanded"] for item in sight.items if item["level"] == 0], [True, True])
        self.assertTrue(sight.items[1]["selected"])

        self.assertEqual(sight.titles, ["Content", "Sender", "Time"])
        self.assertEqual([c["alignment"] for c in sight.list["columns"]], ["left", "left", "right"])
        width = sight.list["client"][2]
        self.assertEqual(sight.widths, [width // 2, width // 4, width // 4])
        self.assertEqual(sight.rows, handset.inbox)

        parts = sight.control("msctls_statusbar32")["parts"]
        self.assertEqual(len(parts), 4)
        self.assertTrue(parts[0], "the status bar says nothing")
        self.end()

    def test_every_script_comes_through(self):
        texts = "\n".join(text for text, _, _ in handset_file.read(HANDSET.read_bytes()).inbox)
        for sample in ("ü", "ś", "П", "🎉", "역", "お", "Κ", "ש", "ص", "你", "ğ"):
            with self.subTest(sample):
                self.assertIn(sample, texts, "the shipped handset has no such message any more")
        program, sight = self.open()
        self.assertEqual("\n".join(row[0] for row in sight.rows), texts)
        self.end()

    def test_commands_start_greyed(self):
        program, sight = self.open()
        # Nothing is selected, and nothing can be deleted from the handset.
        self.assertEqual({b["command"]: b["enabled"] for b in sight.buttons},
                         {NEW: True, SAVE: False, DELETE: False, DELETE_ALL: False, REFRESH: True})
        xdotool(("mousemove", *(n + 2 for n in sight.list["rows"][0]["rect"][:2])), ("click", 1))
        program.wait_for(lambda now: now.button(SAVE)["enabled"], "Save to be enabled")
        self.assertFalse(program.look().button(DELETE)["enabled"])
        self.end()

    def test_buttons_say_what_they_do(self):
        program, sight = self.open()
        for command, tip in ((NEW, "New"), (SAVE, "Save"), (DELETE, "Delete"), (DELETE_ALL, "DeleteAll"),
                             (REFRESH, "Refresh")):
            with self.subTest(tip):
                x, y = middle(sight.button(command)["rect"])
                xdotool(("mousemove", x - 4, y), ("mousemove", x, y))
                program.wait_for(lambda now: tip in now.tooltips, f"the tip {tip}")
        self.end()


class Stores(QuilletTest):
    def test_ansi_store(self):
        self.write("pcInbox.dat", "[PCINBOX] \r\n"
                   "Content = Grüße aus Köln \r\nPhone = +49171555 \r\nTime = 2026/01/02  09:05:07 \r\nIndex =  \r\n"
                   "Content = two \r\nPhone = 5550142 \r\nTime = 05030412304532 \r\nIndex = 7 \r\n".encode("cp1252"))
        self.shows(4, [["Grüße aus Köln", "+49171555", "2026/01/02  09:05:07"],
                       ["two", "5550142", "2005-03-04 12:30:45"]])

    def test_store_with_utf8_mark(self):
        self.write("pcSent.dat", b"\xef\xbb\xbf" + "[PCSENT] \r\n"
                   "Content = 안녕 Привет 🎉 \r\nPhone = +82555 \r\nTime = 2026/01/02  09:05:07 \r\n"
                   "Index = 0 \r\n".encode())
        self.shows(5, [["안녕 Привет 🎉", "+82555", "2026/01/02  09:05:07"]])

    def test_damaged_store(self):
        # The second message ends after two lines: its time is the last line's value again.
        self.write("pcDraft.dat", b"[PCDRAFT] \r\n"
                   b"Content = whole \r\nPhone = 5550142 \r\nTime = 2026/01/02  09:05:07 \r\nIndex = 1 \r\n"
                   b"Content = torn \r\nPhone = 5550199 \r\n")
        self.shows(6, [["whole", "5550142", "2026/01/02  09:05:07"], ["torn", "5550199", "5550199"]])

    def test_store_of_rubbish(self):
        rubbish = bytes(range(256)) * 8
        self.write("pcDraft.dat", rubbish)
        self.shows(6, [])
        self.assertEqual((self.folder / "pcDraft.dat").read_bytes(), rubbish, "a file that was only read has changed")

    def shows(self, item, rows):
        """The folder at the tree's place `item` has these rows, the other two PC folders none."""
        handset = handset_file.read(HANDSET.read_bytes())
        counts = [len(handset.inbox), len(handset.outbox), 0, 0, 0]
        counts[item - 2] = len(rows)
        program, sight = self.open()
        self.assertEqual(sight.labels, labels(*counts))
        self.select(item)
        sight = program.wait_for(lambda now: len(now.rows) == len(rows), f"{len(rows)} rows")
        self.assertEqual(sight.rows, rows)
        self.end()
