"""Reading the handset again after it has changed."""

from harness import HANDSET, REFRESH, QuilletTest, click, key, texts_of
import handset_file

NEWS = """
[message]
store = phone
status = unread
number = +15550100177
time = 26112008000000
text = Späte Nachricht 🎉
"""
CONNECT = "Can not connect,Please Check Connection"


class Refresh(QuilletTest):
    def add_news(self):
        data = HANDSET.read_bytes() + NEWS.encode()
        self.write("handset.txt", data)
        return handset_file.read(data)

    def shows_news(self, refresh):
        program, before = self.open()
        after = self.add_news()
        refresh(before)
        sight = program.wait_for(lambda now: now.labels != before.labels and now.rows, "the new message")
        self.assertEqual(sight.rows, after.inbox)
        self.assertEqual(sight.rows[:-1], before.rows)
        self.assertEqual(sight.labels[1], f"Inbox({len(after.inbox)})")
        self.end()

    def test_by_the_button(self):
        self.shows_news(lambda sight: click(sight.button(REFRESH)["rect"]))

    def test_by_f5(self):
        self.shows_news(lambda sight: key("F5"))

    def test_shows_the_selected_pc_folder_again(self):
        program, _ = self.open()
        self.select(6)
        program.wait_for(lambda now: not now.rows, "the empty folder")
        self.write("pcDraft.dat", b"[PCDRAFT] \r\nContent = new \r\nPhone = 5550142 \r\nTime = t \r\nIndex = 0 \r\n")
        key("F5")
        sight = program.wait_for(lambda now: now.rows and now.labels[6] == "Draft(1)", "the new draft")
        self.assertEqual(sight.rows, [["new", "5550142", "t"]])
        self.assertTrue(sight.items[6]["selected"])
        self.end()

    def test_handset_gone_and_back(self):
        shipped = HANDSET.read_bytes()
        self.assertIn(b"open = yes", shipped)
        program, before = self.open()
        self.write("handset.txt", shipped.replace(b"open = yes", b"open = no"))
        click(before.button(REFRESH)["rect"])
        box = program.wait_for_box()
        self.assertEqual(box["title"], "Quillet")
        self.assertEqual(texts_of(box), [CONNECT])
        program.press(box, "OK")
        sight = program.look()
        self.assertEqual(sight.rows, [])
        self.assertEqual(sight.labels, before.labels, "the counts of the last good reading")

        self.write("handset.txt", shipped)
        click(before.button(REFRESH)["rect"])
        sight = program.wait_for(lambda now: now.rows, "the messages to be back")
        self.assertEqual(sight.rows, before.rows)
        self.assertEqual(sight.labels, before.labels)
        self.end()
