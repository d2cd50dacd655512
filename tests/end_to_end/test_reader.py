"""Reading messages: the reader dialog over a folder of the list."""

from harness import HANDSET, QuilletTest, click, control_of, double_click, focus_of, key
import handset_file

READER = "Open SMS"
PHONE, TIME, CONTENT, PREVIOUS, NEXT = 1000, 1001, 1002, 1003, 1004
PC_INBOX = 4


class Reader(QuilletTest):
    def setUp(self):
        super().setUp()
        self.messages = handset_file.read(HANDSET.read_bytes()).inbox

    def shows(self, position, messages=None):
        """The reader once it stands at that message of the folder."""
        messages = messages or self.messages
        text, number, time = messages[position]
        dialog = self.program.wait_for_dialog(READER, lambda d: control_of(d, PHONE)["chosen"] == position,
                                              f"message {position}")
        self.assertEqual(control_of(dialog, CONTENT)["text"].replace("\r\n", "\n").replace("\r", "\n"), text)
        self.assertEqual(control_of(dialog, PHONE)["text"], number)
        self.assertEqual(control_of(dialog, TIME)["text"], time)
        return dialog

    def enabled(self, dialog):
        return control_of(dialog, PREVIOUS)["enabled"], control_of(dialog, NEXT)["enabled"]

    def double_click_row(self, row):
        left, top, _, height = self.program.look().list["rows"][row]["rect"]
        double_click([left, top, 120, height])

    def test_through_the_folder(self):
        program, _ = self.open()
        last = len(self.messages) - 1
        self.double_click_row(1)
        dialog = self.shows(1)
        self.assertEqual(control_of(dialog, PHONE)["choices"], [number for _, number, _ in self.messages])
        self.assertEqual(self.enabled(dialog), (True, True))
        self.assertTrue(control_of(dialog, TIME)["read_only"])
        self.assertTrue(control_of(dialog, CONTENT)["read_only"])

        click(control_of(dialog, NEXT)["rect"])
        self.shows(2)
        click(control_of(dialog, PREVIOUS)["rect"])
        self.shows(1)
        click(control_of(dialog, PREVIOUS)["rect"])
        self.assertEqual(self.enabled(self.shows(0)), (False, True))

        # The list of phones, by mouse and keys.
        click(control_of(dialog, PHONE)["rect"])
        program.wait_for(lambda now: any(control_of(d, PHONE)["dropped"] for d in now.dialogs if d["title"] == READER),
                         "the list of phones to drop down")
        key("End", "Return")
        self.assertEqual(self.enabled(self.shows(last)), (True, False))
        click(control_of(dialog, PREVIOUS)["rect"])
        self.assertEqual(self.enabled(self.shows(last - 1)), (True, True))
        key("Escape")
        program.wait_until_gone(dialog)
        self.end()

    def test_by_the_keyboard(self):
        program, _ = self.open()
        tries = 0
        while not program.look().list["focused"]:
            tries += 1
            self.assertLess(tries, 6, "Tab does not reach the list")
            key("Tab")
        key("Home", "Down", "space")
        sight = program.wait_for(lambda now: any(row["selected"] for row in now.list["rows"]), "a row selected")
        row = next(i for i, row in enumerate(sight.list["rows"]) if row["selected"])
        key("Return")
        dialog = self.shows(row)
        self.assertEqual(focus_of(dialog), PHONE)
        for number in (TIME, CONTENT, PREVIOUS, NEXT):
            key("Tab")
            program.wait_for_dialog(READER, lambda d: focus_of(d) == number, f"the focus on {number}")
        key("space")
        self.shows(row + 1)
        key("shift+Tab", "space")
        self.shows(row)
        key("shift+Tab", "shift+Tab", "shift+Tab", "Down")
        self.shows(row + 1)
        key("Return")
        program.wait_until_gone(dialog)
        self.end()

    def test_folder_of_one_message(self):
        self.write("pcInbox.dat", b"[PCINBOX] \r\nContent = alone \r\nPhone = 5550142 \r\nTime = 05031412303532 \r\n"
                   b"Index = 1 \r\n")
        only = [["alone", "5550142", "2005-03-14 12:30:35"]]
        program, _ = self.open()
        self.select(PC_INBOX)
        program.wait_for(lambda now: now.rows == only, "the one message")
        self.double_click_row(0)
        dialog = self.shows(0, only)
        self.assertEqual(self.enabled(dialog), (False, False))
        self.assertEqual(dialog["controls"][0]["text"], "Phone")
        key("Escape")
        program.wait_until_gone(dialog)
        self.end()
