"""Everything a person does day by day, once with the mouse and once with the keys."""

import re

from harness import INBOX, LIST, PC_DRAFT, PC_INBOX, PC_SENT, TREE, QuilletTest

TIME = "2026/01/02  09:05:07"
PARCEL = "Goedemorgen! Het pakket ligt bij de buren op nummer 12. Prettige dag, Sanne"
NEWS = b"\n[message]\nstore = phone\nnumber = +15550100177\ntime = 26112008000004\ntext = late\n"


def group(text, phone, time=TIME, index=0):
    return f"Content = {text} \r\nPhone = {phone} \r\nTime = {time} \r\nIndex = {index} \r\n"


class Tours(QuilletTest):
    def stored(self, name, *groups, encoding="cp1252"):
        """The store holds exactly these; what was sent just now counts as sent at TIME."""
        text = self.read(f"{name}.dat").decode(encoding).replace("Index =  ", "Index = 0 ")
        text = re.sub(r"2\d{3}/\d\d/\d\d  \d\d:\d\d:\d\d", TIME, text)
        self.assertEqual(text, f"[{name.upper()}] \r\n" + "".join(groups))

    def test_mouse(self):
        kept = [["delta", "5550104"], ["Zürich", "5550106"], ["alpha", "5550102"], ["Bravo", "5550103"]]
        delta, zurich, alpha, bravo = kept
        self.write("pcInbox.dat", ("[PCINBOX] \r\n" + "".join(group(*m) for m in kept)).encode("cp1252"))
        self.write("pcDraft.dat", f"[PCDRAFT] \r\n{group('안녕 🎉', '5550108')}".encode("utf-8-sig"))
        program = self.launch()
        self.counts(26, 6, 4, 0, 1)
        self.picture("shipped_folder")

        # Write to several, one of which cannot be reached.
        self.click("ID_NEW", to="IDC_RECEIVERS")
        self.type("5550199")
        self.click("IDC_CONTACT")
        self.click("Ben Carter")
        self.click("Hélène", held="ctrl")
        self.selects(1, 3, control="IDC_PHONEBOOK")
        self.click("IDC_ADD_CONTACT")
        self.rows(["5550199"], ["+33639980112"], ["+15550100123"], control="IDC_CHOSEN")
        self.picture("address_book")
        self.click("IDC_ADDRESS_OK")
        self.shows("5550199;+33639980112;+15550100123;", "0/160")
        self.click("IDC_MESSAGE_CONTENT")
        self.type("Cake", "Cake", "4/160")
        self.type(" è", "Cake è", "6/70")
        self.picture("new_message")
        self.click("IDC_SEND")
        self.answer("2/3 message(s)  sent.", "OK")
        self.counts(26, 6, 4, 2, 2)
        cake = [group("Cake è", number) for number in ("+33639980112", "+15550100123", "5550199")]
        self.stored("pcSent", *cake[:2])
        drafts = group("안녕 🎉", "5550108"), cake[2]
        self.stored("pcDraft", *drafts, encoding="utf-8-sig")

        # Sort, by the leftmost heading.
        self.open_folder(PC_INBOX)
        self.rows(*kept)
        self.click("SysHeader32")
        self.rows(alpha, bravo, delta, zurich)
        self.stored("pcInbox", *(group(*m, index=i) for i, m in enumerate((alpha, bravo, delta, zurich))))

        # Drag: called off, moved, and copied from the handset.
        self.click("alpha")
        self.click("Zürich", held="ctrl")
        self.selects(0, 3)
        self.drag("alpha", PC_SENT)  # another row than the next drag's: two presses at one spot are a double click
        self.key("Escape")
        self.drop()
        self.drag("Zürich", PC_SENT)
        self.picture("drag")
        self.counts(26, 6, 4, 2, 2)
        self.drop()
        self.counts(26, 6, 2, 4, 2)
        self.rows(bravo, delta)
        self.stored("pcInbox", group(*bravo, index=1), group(*delta, index=2))
        self.stored("pcSent", *cake[:2], group(*zurich, index=3), group(*alpha, index=0))
        self.open_folder(INBOX)
        self.drag(PARCEL, PC_DRAFT)
        self.drop()
        self.counts(26, 6, 2, 4, 3)
        drafts += group(PARCEL, "+31600000001", "26030207451604", 4),
        self.stored("pcDraft", *drafts, encoding="utf-8-sig")

        # Save, delete, read.
        self.open_folder(PC_INBOX)
        self.click("delta")
        self.click("ID_SAVE", to="Edit")
        self.type(self.target)
        self.click("Save")
        self.click("ID_DELETE")
        self.answer("Delete?", "Ok")
        self.rows(bravo)
        self.stored("pcInbox", group(*bravo, index=1))
        self.assertEqual(self.read("saved.txt").decode(), group(*delta, index=2))
        self.open_folder(PC_SENT)
        self.click("ID_DELETE_ALL")
        self.answer("Delete All?", "Ok")
        self.counts(26, 6, 1, 0, 3)
        self.stored("pcSent")
        self.open_folder(PC_DRAFT)
        self.click("안녕 🎉", times=2)
        self.shows("Open SMS", "안녕 🎉", "5550108")
        self.click("IDC_NEXT")
        self.shows("Cake è", "5550199")
        self.picture("reader")
        self.key("Escape")

        # A handset that has sent two and has news; the button in the corner; the files read again.
        self.write("handset.txt", self.read("handset.txt") + NEWS)
        self.click("ID_REFRESH")
        self.counts(27, 8, 1, 0, 3)
        left, top, width, _ = next(t.rect for t in self.look() if t.window == 0)
        self.xdotool(("mousemove", left + width - 14, top + 13), ("click", 1))
        self.assertEqual(program.wait(20), 0)
        self.launch()
        self.counts(27, 6, 1, 0, 3)
        self.open_folder(PC_DRAFT)
        self.rows(["안녕 🎉", "5550108", TIME], ["Cake è", "5550199"],
                  [PARCEL, "+31600000001", "2026-03-02 07:45:16"])

    def test_keys(self):
        one, two = ["one", "5550101"], ["two", "5550102"]
        self.write("pcInbox.dat", f"[PCINBOX] \r\n{group(*one)}{group(*two)}".encode())
        program = self.launch()
        self.counts(26, 6, 2, 0, 0)

        # Write: sent to two contacts, and kept.
        self.key("ctrl+n", to="IDC_RECEIVERS")
        self.key("Tab", "space", to="IDC_PHONEBOOK")
        self.key("space", "shift+Down")  # the first row has the focus already
        self.selects(0, 1, control="IDC_PHONEBOOK")
        self.key("Tab", "space", "Tab", "Tab", "Tab", "Return", to="IDC_CONTACT")
        self.shows("+15550100123;+4917139200014;")
        self.key("Tab", to="IDC_MESSAGE_CONTENT")
        self.type("Hello", "Hello", "5/160")
        self.key("Tab", "space")
        self.answer("2/2 message(s)  sent.")
        self.counts(26, 6, 2, 2, 0)
        self.stored("pcSent", group("Hello", "+15550100123"), group("Hello", "+4917139200014"))
        self.key("ctrl+n", to="IDC_RECEIVERS")
        self.type("5550142")
        self.key("Tab", "Tab", to="IDC_MESSAGE_CONTENT")
        self.type("Later")
        self.key("Escape")
        self.answer("Do you want to save the message?")
        self.counts(26, 6, 2, 2, 1)
        self.stored("pcDraft", group("Later", "5550142"))

        # Choose a folder, read, save, delete.
        self.key("Home", *["Down"] * PC_INBOX, to=TREE)
        self.rows(one, two)
        self.key("Tab", to=LIST)
        self.key("Home", "space", "Return")
        self.shows("Open SMS", *one)
        self.key("Down")
        self.shows(*two)
        self.key("Escape", to=LIST)
        self.key("ctrl+a")
        self.selects(0, 1)
        self.key("ctrl+s", to="Edit")
        self.type(self.target)
        self.key("Return", to=LIST)
        self.assertEqual(self.read("saved.txt").decode(), group(*two) + group(*one))
        self.key("End")
        self.selects(1)
        self.key("Delete")
        self.answer("Delete?")
        self.rows(one)
        self.stored("pcInbox", group(*one))

        # A store that somebody took away, the end, and the files read again.
        (self.folder / "pcDraft.dat").unlink()
        self.key("F5")
        self.counts(26, 8, 1, 2, 0)
        self.key("alt+F4")
        self.assertEqual(program.wait(20), 0)
        self.launch()
        self.counts(26, 6, 1, 2, 0)
