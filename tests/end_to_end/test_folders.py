"""Folders chosen with the mouse and from the keyboard."""

from harness import DELETE_ALL, HANDSET, QuilletTest, key
import handset_file

MOBILE, INBOX, OUTBOX, PC, PC_INBOX, PC_SENT, PC_DRAFT = range(7)


def store(section, text, phone):
    return (f"[{section}] \r\nContent = {text} \r\nPhone = {phone} \r\nTime = 2026/01/02  09:05:07 \r\n"
            "Index = 0 \r\n").encode("cp1252")


class Folders(QuilletTest):
    def setUp(self):
        super().setUp()
        self.write("pcInbox.dat", store("PCINBOX", "kept", "5550001"))
        self.write("pcSent.dat", store("PCSENT", "sent", "5550002"))
        self.write("pcDraft.dat", store("PCDRAFT", "begun", "5550003"))
        self.handset = handset_file.read(HANDSET.read_bytes())
        time = "2026/01/02  09:05:07"
        self.expected = {MOBILE: [], INBOX: self.handset.inbox, OUTBOX: self.handset.outbox, PC: [],
                         PC_INBOX: [["kept", "5550001", time]], PC_SENT: [["sent", "5550002", time]],
                         PC_DRAFT: [["begun", "5550003", time]]}

    def test_clicks(self):
        program, _ = self.open()
        for item, title, time_width in ((OUTBOX, "Receiver", 0), (PC_INBOX, "Sender", 100), (PC_SENT, "Receiver", 100),
                                        (OUTBOX, "Receiver", 0), (PC_DRAFT, "Receiver", 100), (INBOX, "Sender", 100)):
            with self.subTest(item=item, title=title):
                self.select(item)
                sight = program.wait_for(lambda now: now.rows == self.expected[item], f"the rows of item {item}")
                self.assertEqual(sight.titles, ["Content", title, "Time"])
                self.assertEqual(sight.widths[1:], [200, time_width])
        self.end()

    def test_groups_are_empty(self):
        program, sight = self.open()
        self.assertTrue(sight.rows)
        for group in (PC, MOBILE):
            with self.subTest(group=group):
                self.select(PC_SENT)
                program.wait_for(lambda now: now.rows == self.expected[PC_SENT], "the sent message")
                self.select(group)
                program.wait_for(lambda now: not now.rows, "an empty list")
        self.end()

    def test_delete_all_is_for_pc_folders(self):
        program, _ = self.open()
        for item, enabled in ((PC_DRAFT, True), (OUTBOX, False), (PC_INBOX, True), (PC, False)):
            with self.subTest(item=item):
                self.select(item)
                program.wait_for(lambda now: now.button(DELETE_ALL)["enabled"] == enabled,
                                 f"Delete all to be {'enabled' if enabled else 'greyed'}")
        self.end()

    def test_keyboard_before_any_click_keeps_the_columns(self):
        program, first = self.open()
        tries = 0
        while not program.look().tree["focused"]:
            tries += 1
            self.assertLess(tries, 6, "Tab does not reach the tree")
            key("Tab")
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
