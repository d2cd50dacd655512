"""Folders in which something is missing or broken."""

from harness import CONNECT, REFRESH, QuilletTest, click

NO_LIBRARY = "DLL Not Found :SMS_DLL2.dll"


class MissingParts(QuilletTest):
    def test_no_port_file(self):
        (self.folder / "port.ini").unlink()
        program = self.launch()
        box = self.box_says(CONNECT)
        self.assertIsNone(program.look().main, "the window must not come")
        program.press(box, "OK")
        program.wait_for_end()

    def test_no_phone_link_library_and_half_a_skin(self):
        (self.folder / "SMS_DLL2.dll").unlink()
        (self.folder / "Skin/Default/SMS/skin.ini").unlink()
        self.write("Skin/Default/SMS/mobile.png", b"not a picture")
        self.write("pcDraft.dat", b"[PCDRAFT] \r\nContent = here \r\nPhone = 5550142 \r\nTime = t \r\nIndex = 0 \r\n")
        program = self.launch()
        self.answer(NO_LIBRARY)
        sight = program.wait_for_window()
        empty = ["Mobile", "Inbox(0)", "Outbox(0)", "PC", "Inbox(0)", "Sent(0)", "Draft(1)"]
        self.assertEqual((sight.labels, sight.rows), (empty, []))

        # Refresh says the same, and reads the PC folders all the same.
        (self.folder / "pcDraft.dat").unlink()
        click(sight.button(REFRESH)["rect"])
        self.answer(NO_LIBRARY)
        program.wait_for(lambda now: now.labels == [*empty[:-1], "Draft(0)"], "the PC folders read again")
        self.end()
