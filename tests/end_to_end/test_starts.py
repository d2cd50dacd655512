"""Starts unlike others: a second one, one after a kill, and in a folder where something is missing."""

from harness import NO_CONNECTION, PC_DRAFT, QuilletTest

NO_LIBRARY = "DLL Not Found :SMS_DLL2.dll"


class Starts(QuilletTest):
    def test_second_start(self):
        first = self.launch()
        self.counts(26, 6, 0, 0, 0)
        self.click("ID_NEW", to="IDC_RECEIVERS")
        self.launch("notepad")
        self.shows("Untitled - Notepad")
        # A start that asked the handset would now have something to say.
        self.write("handset.txt", b"[settings]\nopen = no\n")
        (other_name := self.new_folder() / "other name").symlink_to(self.folder)
        self.assertEqual(self.launch(f"Z:{other_name}/Quillet.exe").wait(20), 0)
        self.focus("IDC_RECEIVERS")
        # What was killed does not stand in the way.
        first.kill()
        first.wait()
        self.write("Quillet.lock", b"")
        self.launch()
        self.shows(NO_CONNECTION)

    def test_missing_parts(self):
        (self.folder / "port.ini").unlink()
        program = self.launch()
        self.answer(NO_CONNECTION, "OK")
        program.wait(20)

        # A library in the current folder or on the PATH is none of ours.
        elsewhere = self.new_folder()
        (self.folder / "SMS_DLL2.dll").rename(elsewhere / "SMS_DLL2.dll")
        (self.folder / "Skin/Default/SMS/skin.ini").unlink()
        self.write("Skin/Default/SMS/mobile.png", b"not a picture")
        self.write("pcDraft.dat", b"[PCDRAFT]\r\nContent=here\r\nPhone=5550142\r\nTime=t\r\nIndex=0\r\n")
        self.launch(place=elsewhere, WINEPATH=f"Z:{elsewhere}")
        self.answer(NO_LIBRARY, "OK")
        self.counts(0, 0, 0, 0, 1)
        self.click("ID_REFRESH")
        self.answer(NO_LIBRARY, "OK")
        self.open_folder(PC_DRAFT)
        self.rows(["here", "5550142", "t"])
