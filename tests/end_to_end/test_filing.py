"""Messages sorted, deleted, dragged and saved with the mouse and from the keyboard."""

import codecs
import dataclasses

from harness import (DELETE, DELETE_ALL, INBOX, MOBILE, OUTBOX, PC, PC_DRAFT, PC_INBOX, PC_SENT, PICTURES, SAVE,
                     QuilletTest, click, control_of, dialog_button, key, middle, pixels, take_picture, type_text,
                     wait_until, windows_path, xdotool)
import handset_file

NAMES = ["Mobile", "Inbox", "Outbox", "PC", "Inbox", "Sent", "Draft"]
FILES = {PC_INBOX: ("pcInbox.dat", "PCINBOX"), PC_SENT: ("pcSent.dat", "PCSENT"), PC_DRAFT: ("pcDraft.dat", "PCDRAFT")}
FILE_NAME = 0x47C  # the save dialog's control
READER = {"phone": 1000, "time": 1001, "text": 1002}


@dataclasses.dataclass(frozen=True)
class Message:
    text: str
    phone: str
    time: str
    index: int

    @property
    def row(self):
        return [self.text, self.phone, handset_file.shown_time(self.time)]

    @property
    def lines(self):
        text = self.text.replace("\n", " ")
        return f"Content = {text} \r\nPhone = {self.phone} \r\nTime = {self.time} \r\nIndex = {self.index} \r\n"

    @property
    def entry(self):
        """The message as a handset's file has it."""
        text = self.text.replace("\n", "\\n")
        return (f"[message]\nstore = phone\nstatus = received\nnumber = {self.phone}\ntime = {self.time}\n"
                f"index = {self.index}\ntext = {text}\n")


DELTA = Message("delta", "5550104", "26030211223304", 7)
BRAVO = Message("Bravo", "5550103", "2026/01/02  09:05:07", 5)
ALPHA = Message("alpha", "5550102", "2026/01/03  10:00:00", 9)
BRAVO_AGAIN = Message("bravo", "5550101", "2025/12/24  18:30:00", 1)
ZURICH = Message("Zürich", "5550106", "2026/01/04  11:59:59", 2)
ECHO = Message("echo", "5550105", "2026/01/05  00:00:00", 3)
KEPT = [DELTA, BRAVO, ALPHA, BRAVO_AGAIN, ZURICH, ECHO]
SENT = [Message("on my way", "5550107", "2026/01/01  08:00:00", 0)]
BEGUN = [Message("Grüße aus", "5550108", "2026/01/01  09:00:00", 0)]

TART = Message("pear tart", "+15550100101", "26030211223304", 4)
APPLES = Message("Apples:\n- two\n- three", "+15550100102", "26030311223304", 5)
FIG = Message("Fig 🎉", "+15550100103", "26030411223304", 6)
CAKE = Message("apple cake", "+15550100104", "26030511223304", 7)
FIGS = Message("figs tomorrow", "+15550100105", "26030611223304", 9)
HANDSET = [TART, APPLES, FIG, CAKE, FIGS]


def renumbered(messages):
    """As sorting keeps them: the row's number, and the time as the row shows it."""
    return [dataclasses.replace(m, time=m.row[2], index=row) for row, m in enumerate(messages)]


def store(folder, messages):
    return f"[{FILES[folder][1]}] \r\n{''.join(m.lines for m in messages)}".encode("cp1252")


class Filing(QuilletTest):
    def setUp(self):
        super().setUp()
        self.handset = f"[settings]\nopen = yes\ninit = yes\n{''.join(m.entry for m in HANDSET)}".encode()
        self.write("handset.txt", self.handset)
        self.folders = {PC_INBOX: KEPT, PC_SENT: SENT, PC_DRAFT: BEGUN}
        for folder, messages in self.folders.items():
            self.write(FILES[folder][0], store(folder, messages))
        self.program = None

    def show(self, folder, messages):
        """Clicks the folder, after the start if need be; the sight once its messages are in the list."""
        if not (self.program and self.program.running()):
            self.open()
        self.select(folder)
        return self.wait_for_rows(messages)

    def wait_for_rows(self, messages):
        rows = [m.row for m in messages]
        return self.program.wait_for(lambda now: now.rows == rows, f"the rows {rows}")

    def bytes_of(self, folder):
        return (self.folder / FILES[folder][0]).read_bytes()

    def expect_stored(self, folder, messages):
        """The folder's label and its file agree with `messages`."""
        label = f"{NAMES[folder]}({len(messages)})"
        self.program.wait_for(lambda now: now.labels[folder] == label, f"the label {label}")
        self.assertEqual(self.bytes_of(folder), store(folder, messages))

    def expect_all(self, shown):
        """After all input so far: these rows in the list, and every label and file as `self.folders` has it."""
        sight = self.choose(len(shown) - 1)  # input comes in its order: what came before this click has had its effect
        self.assertEqual(sight.rows, [m.row for m in shown])
        for folder, messages in self.folders.items():
            self.assertEqual(sight.labels[folder], f"{NAMES[folder]}({len(messages)})")
            self.assertEqual(self.bytes_of(folder), store(folder, messages))
        self.assertEqual((self.folder / "handset.txt").read_bytes(), self.handset)

    def picture(self, name):
        take_picture(PICTURES / f"{self._testMethodName}_{name}.png")

    # Rows

    def choose(self, *rows):
        """Clicks the first row and adds the others with Ctrl."""
        shown = self.program.look().list["rows"]
        for place, row in enumerate(rows):
            click(shown[row]["rect"], held="ctrl" if place else None)
        return self.wait_for_selection(*rows)

    def wait_for_selection(self, *rows):
        return self.program.wait_for(lambda now: now.selected_rows == sorted(rows), f"the rows {rows} to be selected")

    def click_heading(self, column, offset=0):
        left, top, width, height = self.program.look().list["columns"][column]["rect"]
        click((left + offset, top, width, height))  # another spot, lest two clicks become a double click

    # Dragging

    def pick_up(self, row):
        """Presses on the row and moves until the drag has begun. Not where a click has just been."""
        left, top, _, height = self.program.look().list["rows"][row]["rect"]
        start = left + 60, top + height // 2
        xdotool(("mousemove", *start), ("mousedown", 1), ("mousemove", start[0] + 6, start[1] + 2),
                ("mousemove", start[0] + 12, start[1] + 4))
        self.place = start[0] + 12, start[1] + 4
        self.addCleanup(xdotool, ("mouseup", 1))  # a test that fails in between leaves no button down
        self.program.wait_for(lambda now: now.list["captured"], "the drag to begin")

    def carry(self, point):
        (x0, y0), (x1, y1) = self.place, point
        xdotool(*(("mousemove", x0 + (x1 - x0) * i // 4, y0 + (y1 - y0) * i // 4) for i in range(1, 5)))
        self.place = point

    def carry_over(self, folder):
        """Moves level onto the tree's item, which lights up. The selected one may stay as it is."""
        sight = self.program.look()
        x, y = middle(sight.items[folder]["rect"])
        self.carry((sight.list["rect"][0] + 40, y))
        self.carry((x, y))

        def lit(sight):
            found = [number for number, item in enumerate(sight.items) if item["drop_target"]]
            return found == [folder] or sight.items[folder]["selected"] and not found
        return self.program.wait_for(lit, f"only item {folder} to be lit")

    def let_go(self):
        xdotool(("mouseup", 1))
        return self.wait_for_end_of_drag()

    def wait_for_end_of_drag(self):
        return self.program.wait_for(
            lambda now: not now.list["captured"] and not any(item["drop_target"] for item in now.items),
            "the drag to end and no folder to be lit")

    def escape(self):
        key("Escape")
        self.program.wait_for_no_dialog()

    # Sorting

    def test_sort_pc_folder(self):
        self.show(PC_INBOX, KEPT)
        self.click_heading(0)
        self.folders[PC_INBOX] = renumbered([ALPHA, BRAVO, BRAVO_AGAIN, DELTA, ECHO, ZURICH])
        self.wait_for_rows(self.folders[PC_INBOX])
        self.expect_all(self.folders[PC_INBOX])
        self.click_heading(0, offset=30)
        self.expect_all(self.folders[PC_INBOX])
        self.end()

        self.show(PC_INBOX, self.folders[PC_INBOX])
        self.expect_all(self.folders[PC_INBOX])
        by_phone = [BRAVO_AGAIN, ALPHA, BRAVO, DELTA, ECHO, ZURICH]
        self.click_heading(1)
        self.folders[PC_INBOX] = renumbered(by_phone)
        self.wait_for_rows(self.folders[PC_INBOX])
        self.expect_all(self.folders[PC_INBOX])
        self.end()

    def test_sort_handset_folder(self):
        _, sight = self.open()
        self.assertEqual(sight.rows, [m.row for m in HANDSET])
        self.click_heading(0)
        sorted_rows = [CAKE, APPLES, FIG, FIGS, TART]
        self.wait_for_rows(sorted_rows)
        self.expect_all(sorted_rows)
        for row in (0, 3, 4):
            with self.subTest(read=row):
                self.choose(row)
                key("Return")
                shown = dict(zip(("text", "phone", "time"), sorted_rows[row].row))
                self.program.wait_for_dialog("Open SMS", lambda dialog: self.read(dialog) == shown, f"{shown}")
                self.escape()
        self.show(PC_INBOX, KEPT)
        self.show(INBOX, HANDSET)  # the folder itself has kept its order
        self.click_heading(0)
        self.wait_for_rows(sorted_rows)
        self.end()
        self.open()
        self.wait_for_rows(HANDSET)
        self.end()

    @staticmethod
    def read(dialog):
        return {name: control_of(dialog, number)["text"] for name, number in READER.items()}

    # Deleting

    def test_delete_selected(self):
        sight = self.show(PC_INBOX, KEPT)
        self.assertFalse(sight.button(DELETE)["enabled"])
        self.choose(1)
        rows = self.program.look().list["rows"]
        click(rows[3]["rect"], held="shift")
        self.wait_for_selection(1, 2, 3)
        click(rows[2]["rect"], held="ctrl")
        self.wait_for_selection(1, 3)
        click(self.program.look().button(DELETE)["rect"])
        self.answer("Delete?", "Ok")
        self.folders[PC_INBOX] = [DELTA, ALPHA, ZURICH, ECHO]  # with the numbers that they had
        self.wait_for_rows(self.folders[PC_INBOX])
        self.expect_all(self.folders[PC_INBOX])
        self.end()

    def test_delete_key(self):
        self.show(PC_INBOX, KEPT)
        self.choose(0, 5)
        key("Delete")
        self.box_says("Delete?")
        self.escape()
        self.wait_for_selection(0, 5)
        self.expect_all(KEPT)
        self.choose(0, 4)
        key("Delete")
        self.box_says("Delete?")
        key("Return")
        self.folders[PC_INBOX] = [BRAVO, ALPHA, BRAVO_AGAIN, ECHO]
        self.wait_for_rows(self.folders[PC_INBOX])
        self.expect_all(self.folders[PC_INBOX])
        key("ctrl+a")
        self.wait_for_selection(0, 1, 2, 3)
        key("Delete")
        self.answer("Delete?", "Ok")
        self.wait_for_rows([])
        self.expect_stored(PC_INBOX, [])
        self.end()

    def test_delete_all(self):
        self.show(PC_INBOX, KEPT)
        button = self.program.look().button(DELETE_ALL)["rect"]
        click(button)
        self.answer("Delete All?", "Cancel")
        self.expect_all(KEPT)
        click(button)
        self.answer("Delete All?", "Ok")
        self.wait_for_rows([])
        self.expect_stored(PC_INBOX, [])
        self.program.wait_for(lambda now: not now.button(DELETE_ALL)["enabled"], "Delete all to be greyed")
        self.end()
        self.show(PC_INBOX, [])
        self.expect_stored(PC_SENT, SENT)
        self.end()

    # Dragging

    def test_drag_moves(self):
        self.show(PC_INBOX, KEPT)
        self.choose(0, 2, 4)
        left, top, _, height = self.program.look().list["client"]
        free = left + 80, top + height // 2  # no row there
        around = free[0] - 8, free[1] - 8, 100, 20
        ground = pixels(around)
        self.pick_up(2)
        self.carry(free)
        wait_until(lambda: pixels(around) != ground, "a picture of the row at the pointer")
        self.picture("over_list")
        self.carry_over(PC_SENT)
        wait_until(lambda: pixels(around) == ground, "no trace of the picture to be left")
        self.picture("over_folder")
        self.let_go()
        self.folders[PC_INBOX] = [BRAVO, BRAVO_AGAIN, ECHO]
        self.folders[PC_SENT] = SENT + [ZURICH, ALPHA, DELTA]
        self.wait_for_rows(self.folders[PC_INBOX])
        self.expect_all(self.folders[PC_INBOX])
        self.show(PC_SENT, self.folders[PC_SENT])
        self.end()
        self.show(PC_SENT, self.folders[PC_SENT])
        self.expect_all(self.folders[PC_SENT])
        self.end()

    def test_drag_copies_from_handset(self):
        self.open()
        self.wait_for_rows(HANDSET)
        self.choose(0, 1, 3)
        self.pick_up(1)
        self.carry_over(PC_DRAFT)
        self.picture("over_folder")
        self.let_go()
        self.folders[PC_DRAFT] = BEGUN + [CAKE, APPLES, TART]
        self.expect_all(HANDSET)
        # A text that the code page cannot hold turns the file into UTF-8.
        self.choose(2)
        self.pick_up(2)
        self.carry_over(PC_DRAFT)
        self.let_go()
        drafts = self.folders[PC_DRAFT] + [FIG]
        self.program.wait_for(lambda now: now.labels[PC_DRAFT] == "Draft(5)", "the label Draft(5)")
        self.assertEqual(self.bytes_of(PC_DRAFT),
                         codecs.BOM_UTF8 + store(PC_DRAFT, self.folders[PC_DRAFT]).decode("cp1252").encode()
                         + FIG.lines.encode())
        self.wait_for_rows(HANDSET)
        self.end()
        self.show(PC_DRAFT, [dataclasses.replace(m, text=m.text.replace("\n", " ")) for m in drafts])
        self.end()

    def test_drag_cancelled(self):
        self.show(PC_INBOX, KEPT)
        sight = self.program.look()
        client, window = sight.list["client"], sight.main["rect"]
        for name, point in (("over_list", middle(client)), ("outside", (window[0] // 2, middle(window)[1]))):
            with self.subTest(released=name):
                self.choose(0, 1)
                self.pick_up(1)
                self.carry_over(PC_SENT)
                self.carry(point)
                self.program.wait_for(lambda now: not any(item["drop_target"] for item in now.items),
                                      "no folder to be lit")
                self.picture(name)
                self.let_go()
                self.expect_all(KEPT)
        items = self.choose(0, 1).items
        # Below the folders, where no highlight reaches.
        below = items[PC_SENT]["rect"][0], items[PC_DRAFT]["rect"][1] + 80, 100, 30
        ground = pixels(below)
        self.pick_up(1)
        self.carry_over(PC_SENT)
        self.carry((below[0] + 8, below[1] + 8))
        wait_until(lambda: pixels(below) != ground, "a picture of the row at the pointer")
        key("Escape")
        self.wait_for_end_of_drag()
        wait_until(lambda: pixels(below) == ground, "the picture of the row to go")
        self.carry(middle(items[PC_SENT]["rect"]))
        self.let_go()
        self.expect_all(KEPT)
        self.end()

    def test_drops_that_change_nothing(self):
        self.show(PC_INBOX, KEPT)
        for folder in (PC_INBOX, INBOX, OUTBOX, MOBILE, PC):
            with self.subTest(folder=folder):
                self.choose(0, 1)
                self.pick_up(0)
                self.carry_over(folder)
                self.assertTrue(self.let_go().items[PC_INBOX]["selected"])
                self.expect_all(KEPT)
        self.end()

    # Saving

    @staticmethod
    def name_field(dialog):
        """The save dialog's edit box for the name; the combo box around it has the same id."""
        return next((c for c in dialog["controls"] if c["id"] == FILE_NAME and c["class"] == "Edit"), None)

    def type_path(self, path):
        """Waits for the system's dialog and types the name into it."""
        name = windows_path(path)
        dialog = self.program.wait_for_dialog("Save", lambda d: self.name_field(d) and self.name_field(d)["focused"])
        click(self.name_field(dialog)["rect"])
        type_text(name)
        return self.program.wait_for_dialog("Save", lambda d: self.name_field(d)["text"] == name, f"{name} typed")

    def save_into(self, path):
        key("ctrl+s")
        dialog = self.type_path(path)
        self.picture("dialog")
        click(dialog_button(dialog, "Save")["rect"])

    def test_save(self):
        path = self.folder / "saved.txt"
        self.show(PC_INBOX, KEPT)
        self.choose(0, 2, 4)
        self.save_into(path)
        self.program.wait_for_no_dialog()
        saved = "".join(m.lines for m in (ZURICH, ALPHA, DELTA)).encode("cp1252")
        wait_until(path.exists, "the file")
        self.expect_all(KEPT)
        self.assertEqual(path.read_bytes(), saved)

        # A second time into the same file: the system asks, and both are in it.
        self.show(INBOX, HANDSET)
        self.choose(1, 3)
        self.save_into(path)
        question = self.program.wait_for_dialog("Save", lambda d: not self.name_field(d), "the question of replacing")
        self.picture("question")
        self.program.press(question, "Yes")
        self.program.wait_for_no_dialog()
        self.expect_all(HANDSET)
        self.assertEqual(path.read_bytes(), saved + (CAKE.lines + APPLES.lines).encode("cp1252"))
        self.end()

    def test_save_refused(self):
        path = self.folder / "saved.txt"
        self.show(PC_INBOX, KEPT)
        self.assertFalse(self.program.look().button(SAVE)["enabled"])
        self.choose(1)
        before = sorted(self.folder.iterdir())
        click(self.program.look().button(SAVE)["rect"])
        self.type_path(path)
        self.escape()
        self.expect_all(KEPT)
        self.assertEqual(sorted(self.folder.iterdir()), before)
        self.end()
