"""Reading the handset again after it has changed."""

from harness import CONNECT, HANDSET, PC_DRAFT, REFRESH, SILENT, QuilletTest, click, key
import handset_file

NEWS = """
[message]
store = phone
status = unread
number = +15550100177
time = 26112008000000
text = Späte Nachricht 🎉
"""


class Refresh(QuilletTest):
    def test_by_the_button(self):
        program, before = self.open()
        changed = HANDSET.read_bytes() + NEWS.encode()
        self.write("handset.txt", changed)
        click(before.button(REFRESH)["rect"])
        sight = program.wait_for(lambda now: now.labels != before.labels and now.rows, "the new message")
        after = handset_file.read(changed).inbox
        self.assertEqual(sight.rows, after)
        self.assertEqual(sight.rows[:-1], before.rows)
        self.assertEqual(sight.labels[1], f"Inbox({len(after)})")
        self.end()

    def test_by_f5_in_a_pc_folder(self):
        program, _ = self.open()
        self.select(PC_DRAFT)
        program.wait_for(lambda now: not now.rows, "the empty folder")
        self.write("pcDraft.dat", b"[PCDRAFT] \r\nContent = new \r\nPhone = 5550142 \r\nTime = t \r\nIndex = 0 \r\n")
        key("F5")
        sight = program.wait_for(lambda now: now.rows and now.labels[PC_DRAFT] == "Draft(1)", "the new draft")
        self.assertEqual(sight.rows, [["new", "5550142", "t"]])
        self.assertTrue(sight.items[PC_DRAFT]["selected"])
        self.end()

    def test_handset_gone_and_back(self):
        program, before = self.open()
        self.write("handset.txt", SILENT)
        click(before.button(REFRESH)["rect"])
        self.answer(CONNECT)
        sight = program.look()
        self.assertEqual(sight.rows, [])
        self.assertEqual(sight.labels, before.labels, "the counts of the last good reading")

        self.write("handset.txt", HANDSET.read_bytes())
        click(before.button(REFRESH)["rect"])
        sight = program.wait_for(lambda now: now.rows, "the messages to be back")
        self.assertEqual(sight.rows, before.rows)
        self.assertEqual(sight.labels, before.labels)
        self.end()
