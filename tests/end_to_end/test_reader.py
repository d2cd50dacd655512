"""Reading messages: the reader dialog over a folder of the list."""

from harness import HANDSET, QuilletTest, beginning_of, click, control_of, double_click, focus_of, key
import handset_file

READER = "Open SMS"
PHONE, TIME, CONTENT, PREVIOUS, NEXT = 1000, 1001, 1002, 1003, 1004


class Reader(QuilletTest):
    def setUp(self):
        super().setUp()
        self.messages = handset_file.read(HANDSET.read_bytes()).inbox

    def shows(self, position):
        """The reader once it stands at that message of the folder."""
        text, number, time = self.messages[position]
        dialog = self.program.wait_for_dialog(READER, lambda d: control_of(d, PHONE)["chosen"] == position,
                                              f"message {position}")
        self.assertEqual(control_of(dialog, CONTENT)["text"].replace("\r\n", "\n").replace("\r", "\n"), text)
        self.assertEqual(control_of(dialog, PHONE)["text"], number)
        self.assertEqual(control_of(dialog, TIME)["text"], time)
        return dialog

    def enabled(self, dialog):
        return control_of(dialog, PREVIOUS)["enabled"], control_of(dialog, NEXT)["enabled"]

    def test_through_the_folder(self):
        program, sight = self.open()
        last = len(self.messages) - 1
        double_click(beginning_of(sight.list["rows"][0]["rect"]))
        self.assertEqual(self.enabled(self.shows(0)), (False, True))
        click(control_of(self.shows(0), NEXT)["rect"])
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
        self.tab_to("list")
        key("Home", "Down", "space")
        row = program.wait_for(lambda now: now.selected_rows, "a row selected").selected_rows[0]
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
