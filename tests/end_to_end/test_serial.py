"""The library that ships, at a serial port with a modem, and another AT client as the judge of both."""

import os
import subprocess
import sys

from harness import INBOX, NO_CONNECTION, OUTBOX, ROOT, QuilletTest

sys.path.append(str(ROOT / "tests/modem"))
from modem import READ, UNREAD, Modem  # noqa: E402

RECEIVED = [[UNREAD, "07911326040000F0040B911346610089F60000208062917314480CC8F71D14969741F977FD07"],
            [READ, "07919730071111F10414D04937BD2C7797E9D3E614000811309291024061080442043504410442"]]
LONG = ["x" * 79, "🎉" * 40]  # three parts on the air, two rows in the window


class Serial(QuilletTest):
    def gammu(self, *words):
        self.write("gammu.rc", f"[gammu]\ndevice={self.modem.path}\nconnection=at115200\n"
                   "synchronizetime=no\nuse_locking=no\n".encode())
        return subprocess.run(["gammu", "-c", str(self.folder / "gammu.rc"), *words], check=True, timeout=60,
                              text=True, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE).stdout

    def find_port(self, code, port):
        ended = self.launch(f"Z:{self.folder}/findport.exe", "--write").wait(60)
        self.assertEqual(ended, code, self.read("wine.log"))
        self.assertEqual(self.read("port.ini"), b"; mine\r\n[port]\r\nbaud=9600\r\ncom=%d\r\n" % port)

    def test_serial(self):
        self.modem = Modem(os.environ["WINEPREFIX"] + "/com12")
        self.modem.messages["SM"] += RECEIVED
        self.modem.contacts = {"SM": [("Zoë", "5550142")], "ME": [("Борис", "+35100000128")]}
        self.write("port.ini", b"; mine\r\n[port]\r\nbaud=9600\r\ncom=3\r\n")
        self.find_port(1, 3)  # none, and the file stays as it is
        with self.modem:
            self.find_port(0, 12)
            self.assertRegex(self.read("wine.log"), rb"COM12 +Quillet Test modem")
            self.launch()
            self.counts(2, 0, 0, 0, 0)
            self.rows(["How are you?", "+31641600986", "2002-08-26 19:37:41"],
                      ["тест", "InternetSMS", "2011-03-29 19:20:04"])
            self.click("ID_NEW")
            self.click("IDC_CONTACT")
            self.rows(["Zoë", "5550142"], ["Борис", "+35100000128"], control="IDC_PHONEBOOK")
            self.click("Борис", times=2)
            self.rows(["+35100000128"], control="IDC_CHOSEN")
            self.click("IDC_ADDRESS_OK")
            self.click("IDC_MESSAGE_CONTENT")
            self.type("perché no", "+35100000128;", "perché no")
            self.click("IDC_SEND")
            self.answer("1/1 message(s)  sent.", "OK")
            # What the other client sends, we read; what we send, it reads.
            self.gammu("sendsms", "TEXT", "5550142", "-autolen", "500", "-text", "".join(LONG))
            self.click("ID_REFRESH")
            self.counts(2, 3, 0, 1, 0)
            self.open_folder(OUTBOX)
            outbox = ["perché no", "+35100000128"], *([row, "5550142"] for row in LONG)
            self.rows(*outbox)
            said = self.gammu("geteachsms")
            for text in ("How are you?", "тест", '"+35100000128"', "perché no", "".join(LONG)):
                self.assertIn(text, said)
            self.open_folder(INBOX)
            self.click("тест")
            self.key("shift+F10", *["Down"] * 9, "Return")
            self.answer("1 of 1 message(s) have no copy on the PC and would be lost.  "
                        "Remove them from the handset all the same?", "OK")
            self.counts(1, 3, 0, 1, 0)
            self.rows(["How are you?", "+31641600986", "2002-08-26 19:37:41"])
            self.assertEqual(self.modem.messages["SM"], [RECEIVED[0], None])
        self.click("ID_REFRESH")
        self.answer(NO_CONNECTION, "OK")
        self.rows()
        with self.modem:
            self.click("ID_REFRESH")
            self.rows(["How are you?", "+31641600986", "2002-08-26 19:37:41"])
