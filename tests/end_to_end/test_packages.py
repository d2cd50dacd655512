"""What is handed out: the setup and the portable folder."""

import subprocess
import zipfile

from harness import ROOT, QuilletTest

PACKED = ROOT / "out/packages"


class Packages(QuilletTest):
    def ends(self, *words):
        self.assertEqual(self.launch(*words).wait(60), 0, words)

    def test_setup(self):
        setup, = PACKED.glob("Quillet-*-setup.exe")
        place = self.new_folder() / "Zoë Ж" / "My programs"
        # The folder comes last and without quotes.
        install = f"Z:{setup}", "/S", *("/D=Z:" + str(place).replace("/", "\\")).split(" ")
        self.ends(*install)
        self.folder = place
        locales = self.new_folder()
        subprocess.run(["localedef", "-i", "de_DE", "-f", "UTF-8", locales / "de_DE.UTF-8"], check=True)
        program = self.launch(LOCPATH=str(locales), LC_ALL="de_DE.UTF-8")
        self.shows("Posteingang(26)", "Entwürfe(0)")
        self.key("ctrl+n", to="IDC_RECEIVERS")
        self.type("5550142")
        self.click("IDC_MESSAGE_CONTENT")
        self.type("Hello")
        self.click("IDC_SEND")
        self.answer("1/1 Nachricht(en) gesendet.", "OK")
        self.counts(26, 6, 0, 1, 0)
        own = {"pcSent.dat": self.read("pcSent.dat"), "port.ini": b"[port]\r\ncom=00\r\n"}
        self.assertIn(b"Hello", own["pcSent.dat"])
        self.write("port.ini", own["port.ini"])
        self.write("findport.exe", b"of another version")
        self.ends(*install)
        self.assertEqual(program.wait(20), 0)  # it was asked to close
        self.assertGreater(len(self.read("findport.exe")), 1000)
        self.launch()
        self.counts(26, 6, 0, 1, 0)
        self.ends(f"Z:{place}/Uninstall.exe", "/S")
        self.until(lambda _: {file.name for file in place.iterdir()} == {*own, "wine.log"})
        self.assertEqual({name: self.read(name) for name in own}, own)

    def test_portable_folder(self):
        archive, = PACKED.glob("Quillet-*-x64.zip")
        zipfile.ZipFile(archive).extractall(self.folder)
        self.folder /= "Quillet"
        self.launch()
        self.counts(26, 6, 0, 0, 0)

    def test_same_bytes_twice(self):
        sums = [(ROOT / folder / "SHA256SUMS").read_text() for folder in ("out/packages", "out/packages-again")]
        self.assertEqual(*sums)
