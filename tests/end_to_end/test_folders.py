"""Folders chosen with the mouse and from the keyboard."""

from harness import (DELETE_ALL, HANDSET, INBOX, MOBILE, OUTBOX, PC, PC_DRAFT, PC_INBOX, PC_SENT, QuilletTest, key)
import handset_file

TIME = "2026/01/02  09:05:07"


class Folders(QuilletTest):
    def setUp(self):
        super().setUp()
        handset = handset_file.read(HANDSET.read_bytes())
        self.expected = {MOBILE: [], INBOX: handset.inbox, OUTBOX: handset.outbox, PC: []}
        for item, name in ((PC_INBOX, "pcInbox"), (PC_SENT, "pcSent"), (PC_DRAFT, "pcDraft")):
            self.write(f"{name}.dat", f"[{name.upper()}] \r\nContent = in {name} \r\nPhone = 555000{item} \r\n"
                       f"Time = {TIME} \r\nIndex = 0 \r\n".encode())
            self.expected[item] = [[f"in {name}", f"555000{item}", TIME]]

    def test_clicks(self):
        program, _ = self.open()
        for item, title, time_width in ((OUTBOX, "Receiver", 0), (PC_INBOX, "Sender", 100), (PC_SENT, "Receiver", 100),
                                        (PC, "Receiver", 100), (OUTBOX, "Receiver", 0), (PC_DRAFT, "Receiver", 100),
                                        (MOBILE, "Receiver", 100), (INBOX, "Sender", 100)):
            with self.subTest(item=item, title=title):
                self.select(item)
                sight = program.wait_for(lambda now: now.rows == self.expected[item], f"the rows of item {item}")
                self.assertEqual(sight.titles, ["Content", title, "Time"])
                self.assertEqual(sight.widths[1:], [200, time_width])
                program.wait_for(lambda now: now.button(DELETE_ALL)["enabled"] == (item > PC),
                                 "Delete all to be for the folders of the PC")
        self.end()

    def test_keyboard_before_any_click_keeps_the_columns(self):
        program, _ = self.open()
        self.tab_to("tree")
        for item in (OUTBOX, PC, PC_INBOX, PC_SENT, PC_DRAFT):
            with self.subTest(item=item):
                key("Down")
                sight = program.wait_for(lambda now: now.items[item]["selected"] and now.rows == self.expected[item],
                                         f"the rows of item {item}")
                self.assertEqual(sight.titles, ["Content", "Sender", "Time"])
                # Only the list's own scroll bar may have come or gone.
                width = sight.list["client"][2]
                self.assertEqual(sight.widths, [width // 2, width // 4, width // 4])
        key("Home")
        program.wait_for(lambda now: now.items[MOBILE]["selected"] and not now.rows, "Mobile and an empty list")
        self.end()
