"""Messages written, sent and kept: what a person does in the New message dialog and in the address book."""

from harness import (CONNECT, HANDSET, NEW, OUTBOX, PC_DRAFT, PC_SENT, PICTURES, SILENT, QuilletTest, beginning_of,
                     click, control_of, double_click, focus_of, key, paste, take_picture, type_text)
import handset_file

COMPOSE, BOOK = "New SMS", "Contacts"
CONTENT, COUNTER, CANCEL, SEND, CONTACT, RECEIVERS = 1002, 1005, 1011, 1021, 1022, 1023
ADD, REMOVE, BOOK_CANCEL, BOOK_OK, PHONEBOOK, CHOSEN = 1008, 1009, 1011, 1012, 1034, 1035
READER_PHONE, READER_NEXT = 1000, 1004

QUESTION = "Do you want to save the message?"


def text_of(dialog, number):
    return control_of(dialog, number)["text"]


def first_column(dialog, number):
    return [row["texts"][0] for row in control_of(dialog, number)["rows"]]


def selected_rows(dialog, number):
    return [i for i, row in enumerate(control_of(dialog, number)["rows"]) if row["selected"]]


def row_rect(dialog, number, row):
    return beginning_of(control_of(dialog, number)["rows"][row]["rect"])


class Dialogs(QuilletTest):
    def compose(self):
        """New by its toolbar button."""
        program, sight = self.open()
        click(sight.button(NEW)["rect"])
        return program, program.wait_for_dialog(COMPOSE)

    def until(self, title, number, text):
        """The dialog once its control says `text`."""
        return self.program.wait_for_dialog(title, lambda d: text_of(d, number) == text, f"{number} to say {text!r}")

    def write_message(self, dialog, receivers, text):
        """Typed with the keys; the focus goes from field to field by the mouse."""
        click(control_of(dialog, RECEIVERS)["rect"])
        type_text(receivers)
        self.until(COMPOSE, RECEIVERS, receivers)
        click(control_of(dialog, CONTENT)["rect"])
        type_text(text)
        return self.until(COMPOSE, CONTENT, text)

    def sent_says(self, text, *labels):
        """The box says `text`; after it the dialog is gone and the tree's labels are these."""
        self.answer(text)
        self.assertEqual(self.program.wait_for_no_dialog().labels[PC_SENT:], list(labels))


class Writing(Dialogs):
    def test_counter_follows_the_text(self):
        program, dialog = self.compose()
        self.assertEqual(text_of(dialog, COUNTER), "0/160")
        click(control_of(dialog, CONTENT)["rect"])
        type_text("plain")
        self.until(COMPOSE, COUNTER, "5/160")
        type_text("é")
        self.assertEqual(text_of(self.until(COMPOSE, COUNTER, "6/70"), CONTENT), "plainé")
        key("BackSpace")
        dialog = self.until(COMPOSE, COUNTER, "5/160")
        self.assertEqual(control_of(dialog, CONTENT)["limit"], 160)
        paste("🎉")
        self.assertEqual(text_of(self.until(COMPOSE, COUNTER, "7/70"), CONTENT), "plain🎉")

        key("ctrl+a")
        paste("Я" * 100)
        self.assertEqual(text_of(self.until(COMPOSE, COUNTER, "70/70"), CONTENT), "Я" * 70)
        type_text("x")
        paste("!")
        self.assertEqual(text_of(self.until(COMPOSE, COUNTER, "70/70"), CONTENT), "Я" * 70)

        key("ctrl+a")
        paste("x" * 200)
        self.assertEqual(text_of(self.until(COMPOSE, COUNTER, "160/160"), CONTENT), "x" * 160)
        key("ctrl+a", "Delete")
        self.until(COMPOSE, COUNTER, "0/160")
        key("Escape")  # nothing is lost, so nothing is asked
        program.wait_for_no_dialog()
        self.end()

    def test_receiver_takes_numbers_only(self):
        program, dialog = self.compose()
        self.assertEqual(control_of(dialog, RECEIVERS)["limit"], 125)
        type_text("12a;+3 (4)-5.x")
        self.until(COMPOSE, RECEIVERS, "12;+34-5.")
        key("BackSpace")
        self.until(COMPOSE, RECEIVERS, "12;+34-5")
        key("ctrl+a")
        paste("+1 555 0100")
        self.until(COMPOSE, RECEIVERS, "+1 555 0100")
        key("Escape")
        program.wait_until_gone(dialog)
        self.end()

    def test_what_is_missing_is_said(self):
        program, dialog = self.compose()
        key("Return")  # in the receivers it sends
        self.answer("Empty Message,Please type.")
        click(control_of(dialog, CONTENT)["rect"])
        type_text("Hello")
        self.until(COMPOSE, COUNTER, "5/160")
        click(control_of(dialog, SEND)["rect"])
        self.answer("No Phone Number Entered.")
        self.until(COMPOSE, CONTENT, "Hello")
        key("Escape")
        self.answer(QUESTION, "Cancel")
        self.assertEqual(program.wait_for_no_dialog().labels[PC_SENT:], ["Sent(0)", "Draft(0)"])
        self.assertEqual(sorted(path.name for path in self.folder.glob("*.dat")), [])
        self.end()


class Sending(Dialogs):
    def test_to_contacts(self):
        program, dialog = self.compose()
        type_text("5550142")
        self.until(COMPOSE, RECEIVERS, "5550142")
        click(control_of(dialog, CONTACT)["rect"])
        book = program.wait_for_dialog(BOOK)
        self.assertEqual(control_of(book, PHONEBOOK)["rows"][1]["texts"], ["Ben Carter", "+15550100123"])
        self.assertEqual(control_of(book, PHONEBOOK)["rows"][3]["texts"], ["Hélène", "+33639980112"])
        self.assertEqual(control_of(book, PHONEBOOK)["rows"][13]["texts"][1], "+35100000128")
        self.assertEqual(first_column(book, CHOSEN), ["5550142"])

        click(row_rect(book, PHONEBOOK, 1))
        click(row_rect(book, PHONEBOOK, 3), held="ctrl")
        program.wait_for_dialog(BOOK, lambda d: selected_rows(d, PHONEBOOK) == [1, 3], "two contacts selected")
        click(control_of(book, ADD)["rect"])
        chosen = ["5550142", "+33639980112", "+15550100123"]  # several at once arrive from the bottom up
        program.wait_for_dialog(BOOK, lambda d: first_column(d, CHOSEN) == chosen, "two numbers chosen")
        double_click(row_rect(book, PHONEBOOK, 6))
        chosen.append("+31600000001")
        program.wait_for_dialog(BOOK, lambda d: first_column(d, CHOSEN) == chosen, "the third one chosen")
        click(control_of(book, ADD)["rect"])  # that one again
        take_picture(PICTURES / "address_book.png", book["rect"])
        program.press(book, "Ok")

        self.until(COMPOSE, RECEIVERS, "".join(number + ";" for number in chosen))
        click(control_of(dialog, CONTENT)["rect"])
        type_text("Cake at nine ")
        self.until(COMPOSE, COUNTER, "13/160")
        paste("🎂 für alle")
        text = "Cake at nine 🎂 für alle"
        self.until(COMPOSE, COUNTER, "24/70")
        take_picture(PICTURES / "new_message.png", dialog["rect"])
        click(control_of(dialog, SEND)["rect"])
        self.sent_says("4/4 message(s)  sent.", "Sent(4)", "Draft(0)")

        self.select(PC_SENT)
        sight = program.wait_for(lambda now: len(now.rows) == 4, "four sent messages")
        self.assertEqual([row[:2] for row in sight.rows], [[text, number] for number in chosen])
        for row in sight.rows:
            self.assertRegex(row[2], r"^\d{4}/\d\d/\d\d  \d\d:\d\d:\d\d$")
        double_click(beginning_of(sight.list["rows"][1]["rect"]))
        reader = program.wait_for_dialog("Open SMS", lambda d: control_of(d, READER_PHONE)["chosen"] == 1, "message 1")
        self.assertEqual(control_of(reader, READER_PHONE)["choices"], chosen)
        self.assertEqual(text_of(reader, CONTENT), text)
        click(control_of(reader, READER_NEXT)["rect"])
        reader = self.until("Open SMS", READER_PHONE, chosen[2])
        self.assertEqual(text_of(reader, CONTENT), text)
        key("Escape")
        program.wait_until_gone(reader)

        # The handset has them, too.
        self.select(OUTBOX)
        key("F5")
        before = handset_file.read(HANDSET.read_bytes()).outbox
        sight = program.wait_for(lambda now: len(now.rows) == len(before) + 4, "the handset's outbox with them")
        self.assertEqual(sight.labels[OUTBOX], f"Outbox({len(before) + 4})")
        self.assertEqual([row for row in sight.rows if row[0] != text], before)
        self.assertEqual([row[1] for row in sight.rows if row[0] == text], chosen)
        self.end()

    def test_handset_gone(self):
        program, dialog = self.compose()
        dialog = self.write_message(dialog, "5550142;5550199", "Hello")
        self.write("handset.txt", SILENT)
        for button in (SEND, CONTACT):
            with self.subTest(button=button):
                click(control_of(dialog, button)["rect"])
                sight = self.answer(CONNECT)
                self.assertEqual([d["title"] for d in sight.dialogs], [COMPOSE])
                self.assertEqual(text_of(sight.dialogs[0], RECEIVERS), "5550142;5550199")
                self.assertEqual(text_of(sight.dialogs[0], CONTENT), "Hello")
                self.assertEqual(sight.rows, [])
        # Once it is back the message goes out as it stands; the second number is one that it cannot reach.
        self.write("handset.txt", HANDSET.read_bytes())
        click(control_of(dialog, SEND)["rect"])
        self.sent_says("1/2 message(s)  sent.", "Sent(1)", "Draft(1)")
        for folder, number in ((PC_SENT, "5550142"), (PC_DRAFT, "5550199")):
            with self.subTest(number):
                self.select(folder)
                program.wait_for(lambda now: [row[:2] for row in now.rows] == [["Hello", number]], "the one message")
        self.end()


class Drafts(Dialogs):
    def test_kept_or_not(self):
        program, sight = self.open()
        self.select(PC_DRAFT)
        for count, button, start in ((1, "Ok", CANCEL), (1, "Cancel", CANCEL), (2, "Ok", None)):
            with self.subTest(count=count, button=button):
                click(sight.button(NEW)["rect"])
                dialog = program.wait_for_dialog(COMPOSE)
                dialog = self.write_message(dialog, "555;556", "Not yet")
                if start:
                    click(control_of(dialog, start)["rect"])
                else:
                    key("Escape")
                self.answer(QUESTION, button)
                after = program.wait_for_no_dialog()
                # The folder is the one shown: its row appears at once.
                self.assertEqual(after.labels[PC_SENT:], ["Sent(0)", f"Draft({count})"])
                self.assertEqual([row[:2] for row in after.rows], [["Not yet", "555;556"]] * count)
        self.end()


class Keyboard(Dialogs):
    def focus_goes(self, title, *controls, by="Tab"):
        """Each press brings the focus to the next of the controls."""
        for number in controls:
            key(by)
            self.program.wait_for_dialog(title, lambda d: focus_of(d) == number, f"the focus on {number}")

    def test_message_without_a_mouse(self):
        program, _ = self.open()
        key("ctrl+n")
        dialog = program.wait_for_dialog(COMPOSE, lambda d: focus_of(d) == RECEIVERS, "the focus on the receivers")
        self.assertTrue(control_of(dialog, SEND)["default"])
        self.focus_goes(COMPOSE, CONTACT, CONTENT, SEND, CANCEL, RECEIVERS)
        self.focus_goes(COMPOSE, CANCEL, SEND, CONTENT, CONTACT, by="shift+Tab")

        key("space")
        program.wait_for_dialog(BOOK, lambda d: focus_of(d) == PHONEBOOK, "the focus on the phonebook")
        self.focus_goes(BOOK, ADD, REMOVE, CHOSEN, BOOK_OK, BOOK_CANCEL, PHONEBOOK)
        key("Down", "shift+Down")
        book = program.wait_for_dialog(BOOK, lambda d: len(selected_rows(d, PHONEBOOK)) == 2, "two contacts selected")
        numbers = [control_of(book, PHONEBOOK)["rows"][row]["texts"][1] for row in selected_rows(book, PHONEBOOK)]
        self.focus_goes(BOOK, ADD)
        key("space")
        program.wait_for_dialog(BOOK, lambda d: first_column(d, CHOSEN) == numbers[::-1], "both chosen")
        self.focus_goes(BOOK, REMOVE, CHOSEN)
        key("Home", "space")
        program.wait_for_dialog(BOOK, lambda d: selected_rows(d, CHOSEN) == [0], "the first number selected")
        self.focus_goes(BOOK, REMOVE, by="shift+Tab")
        key("space")
        program.wait_for_dialog(BOOK, lambda d: first_column(d, CHOSEN) == numbers[:1], "one number left")
        self.focus_goes(BOOK, CHOSEN)
        key("Return")
        self.until(COMPOSE, RECEIVERS, numbers[0] + ";")

        # Escape leaves the receivers as they are.
        key("space")
        program.wait_for_dialog(BOOK, lambda d: focus_of(d) == PHONEBOOK, "the focus on the phonebook")
        key("ctrl+a")
        book = program.wait_for_dialog(BOOK, lambda d: len(selected_rows(d, PHONEBOOK)) == 14, "every contact selected")
        key("Escape")
        program.wait_until_gone(book)
        self.until(COMPOSE, RECEIVERS, numbers[0] + ";")

        self.focus_goes(COMPOSE, CONTENT)
        type_text("one")
        key("Return")
        type_text("two")
        self.assertEqual(text_of(self.until(COMPOSE, COUNTER, "8/160"), CONTENT), "one\r\ntwo")
        self.focus_goes(COMPOSE, SEND)
        key("space")
        self.box_says("1/1 message(s)  sent.")
        key("Return")
        sight = program.wait_for(lambda now: not now.dialogs and now.main["foreground"], "the main window")
        self.assertEqual(sight.labels[PC_SENT], "Sent(1)")
        self.select(PC_SENT)
        program.wait_for(lambda now: [row[:2] for row in now.rows] == [["one two", numbers[0]]], "the sent message")
        self.end()


class Layout(Dialogs):
    def open_book(self):
        program, dialog = self.compose()
        click(control_of(dialog, CONTACT)["rect"])
        return program.wait_for_dialog(BOOK)

    def leave(self):
        for title in (BOOK, COMPOSE):
            dialog = self.program.wait_for_dialog(title)
            key("Escape")
            self.program.wait_until_gone(dialog)
        self.end()

    def test_address_book(self):
        contacts = "".join(f"[contact]\nname = Contact {i}\nnumber = {5550200 + i}\n" for i in range(40))
        self.write("handset.txt", HANDSET.read_bytes() + contacts.encode())
        book = self.open_book()
        phonebook, chosen = control_of(book, PHONEBOOK), control_of(book, CHOSEN)
        self.assertEqual(len(phonebook["rows"]), 54)
        self.assertEqual([(c["title"], c["width"]) for c in phonebook["columns"]], [("Name", 100), ("Phone", 200)])
        self.assertEqual([(c["title"], c["width"], c["alignment"]) for c in chosen["columns"]],
                         [("Phone", 300, "center")])
        self.assertLess(phonebook["client"][2], phonebook["rect"][2] - 10, "no scroll bar beside 54 contacts")
        self.assertFalse(phonebook["sideways"])
        self.assertFalse(chosen["sideways"])
        self.assertEqual(phonebook["rect"][1::2], chosen["rect"][1::2])

        def right(number):
            left, _, width, _ = control_of(book, number)["rect"]
            return left + width
        self.assertAlmostEqual(right(BOOK_CANCEL), right(CHOSEN), delta=1)
        self.assertGreater(control_of(book, ADD)["rect"][0], right(PHONEBOOK))
        self.assertLess(right(ADD), chosen["rect"][0])
        self.leave()

    def test_skin_places_controls(self):
        skin = self.folder / "Skin/Default/SMS/skin.ini"
        skin.write_text("[New MMS]\nDlgRect=40,50,940,650\nSMSRect=10,20,110,45\n[Address Dlg]\nAddRect=0,5,70,30\n")
        program, dialog = self.compose()
        self.assertEqual(dialog["rect"], [40, 50, 900, 600])
        x, y, _, _ = dialog["client"]
        self.assertEqual(control_of(dialog, CONTENT)["rect"], [x + 10, y + 20, 100, 25])
        click(control_of(dialog, CONTACT)["rect"])
        book = program.wait_for_dialog(BOOK)
        x, y, _, _ = book["client"]
        self.assertEqual(control_of(book, ADD)["rect"], [x, y + 5, 70, 25])
        self.leave()

    def test_dialog_without_a_place_opens_in_the_middle_of_the_window(self):
        skin = self.folder / "Skin/Default/SMS/skin.ini"
        skin.write_text(skin.read_text().replace("DlgRect", "Nothing"))
        program, dialog = self.compose()
        main = program.look().main["rect"]
        for i in (0, 1):
            self.assertAlmostEqual(dialog["rect"][i] + dialog["rect"][i + 2] / 2, main[i] + main[i + 2] / 2, delta=1)
        key("Escape")
        program.wait_until_gone(dialog)
        self.end()
