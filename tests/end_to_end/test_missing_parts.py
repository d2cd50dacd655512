"""Folders in which something is missing or broken."""

from harness import HANDSET, REFRESH, QuilletTest, click, texts_of
import handset_file

CONNECT = "Can not connect,Please Check Connection"
NO_LIBRARY = "DLL Not Found :SMS_DLL2.dll"


class MissingParts(QuilletTest):
    def cannot_connect(self):
        program = self.launch()
        box = program.wait_for_box()
        self.assertIsNone(program.look().main, "the window must not come")
        self.assertEqual((box["title"], texts_of(box)), ("Quillet", [CONNECT]))
        program.press(box, "OK")
        program.wait_for_end()

    def test_no_port_file(self):
        (self.folder / "port.ini").unlink()
        self.cannot_connect()

    def test_port_file_without_the_key(self):
        self.write("port.ini", b"[port]\r\nbaud=9600\r\n")
        self.cannot_connect()

    def test_handset_does_not_answer(self):
        self.write("handset.txt", HANDSET.read_bytes().replace(b"open = yes", b"open = no"))
        self.cannot_connect()

    def test_port_in_words_is_port_0(self):
        self.write("port.ini", b"[port]\r\ncom=first\r\n")
        self.opens()

    def test_no_phone_link_library(self):
        (self.folder / "SMS_DLL2.dll").unlink()
        self.write("pcDraft.dat", b"[PCDRAFT] \r\nContent = here \r\nPhone = 5550142 \r\nTime = t \r\nIndex = 0 \r\n")
        program = self.launch()
        box = program.wait_for_box()
        self.assertEqual((box["title"], texts_of(box)), ("Quillet", [NO_LIBRARY]))
        program.press(box, "OK")
        sight = program.wait_for_window()
        empty = ["Mobile", "Inbox(0)", "Outbox(0)", "PC", "Inbox(0)", "Sent(0)", "Draft(1)"]
        self.assertEqual((sight.labels, sight.rows), (empty, []))

        # Refresh says the same, and reads the PC folders all the same.
        (self.folder / "pcDraft.dat").unlink()
        click(sight.button(REFRESH)["rect"])
        program.press(program.wait_for_box(), "OK")
        program.wait_for(lambda now: now.labels == [*empty[:-1], "Draft(0)"], "the PC folders read again")
        self.end()

    def test_no_skin_file(self):
        (self.folder / "Skin/Default/SMS/skin.ini").unlink()
        self.opens()

    def test_broken_image(self):
        image = self.folder / "Skin/Default/SMS/mobile.png"
        self.assertTrue(image.exists())
        image.write_bytes(b"not a picture")
        self.opens()

    def opens(self):
        handset = handset_file.read(HANDSET.read_bytes())
        program, sight = self.open()
        self.assertEqual(sight.labels, ["Mobile", f"Inbox({len(handset.inbox)})", f"Outbox({len(handset.outbox)})",
                                        "PC", "Inbox(0)", "Sent(0)", "Draft(0)"])
        self.assertEqual(sight.rows, handset.inbox)
        self.end()
