"""Programs sent and cleared from the panel of a logger of each family, by keys alone: every box on the way, every line
that the logger receives, and what it holds afterwards."""

import time
import unittest

from panel_keys import OPTIONS, Typed
from test_window import WAIT
from ways import BOX, WaysCase

HARVEL_BOX = "^ ?Harvel$"
UNTITLED_BOX = "^harvelop$"
CHOOSER = "Choose a Program to Send to "
JOBS = "Delete a Job in the KR400$"
PANEL = "^ ?KR.* (on Com|at) "

YES, NO, OK = "alt+y", "alt+n", "Return"
PROGRAM, PROGRAM_CLEAR, CARD, CARD_CLEAR, FLASH, FLASH_CLEAR = ("alt+" + key for key in "prgcme")

OLDER_PROGRAM = ["RA1S 1V", "", "RB2S\"Temp 'x\" 2V 'a remark", "RESET", "rC3S /h 3V"]
NEWER_PROGRAM = ['BEGIN"NEW"', "RA1S 1V", "", "END"]
CLEANED = b"RA1S 1V\r\nRB2S\"Temp 'x\" 2V 'a remark\r\nC3S /h 3V\r\n"
IMAGE = b"STAND-IN IMAGE %d\n" % len(CLEANED) + CLEANED

# What a logger receives, line by line.
AWAKENED = ["Q /H/r", "", "Q /H/r", "", "", "Q /H/r/M/U/N", "", "Q /H/r/M/U/N", "", "END", "TEST0"]
CONNECT_OLDER = ["", *AWAKENED, "/h/R/U/N", ""]  # on a com port the password goes ahead once more
CONNECT_KR4 = [*AWAKENED, "/h/U/N", "CHARAC1", "/h/R/U/N", ""]
FIND_CARD = ["END", "/h/R/u/n/E/d/t", "9SV(FF0) /U/N"]
DROP_DATA = ["/E", "CLEAR CDATA"]
BEGIN_PROGRAM = ["END /E/h/M/U CSCANS CALARMS G", "13SV"]
BOOTSTRAP = ["\x1aBOOTSTRAP", "EF 60000,1"]
LIST_JOBS = ["/r/e/m/z", "DIRJOBS"]

# The first paragraph of each box; {} is the logger.
CAUTION_KR4 = "Caution : You are about to send a new program to the {}."
CAUTION_OLDER = (CAUTION_KR4 + " This action will permanently delete any existing programs in the tallycore's internal "
                 "memory and will replace them with the one you have selected. .")
CAUTION_CARD = ("Caution : You are about to send a new program to the memory card plugged into the {}. This action will "
                "permanently erase any existing programs currently stored on the memory card and will replace them with "
                "the one you have selected.")
CAUTION_FLASH_KR4 = ("WARNING : You are about to send a new program to Flash RAM in the {}. This action will delete any "
                     "programs currently stored in Flash.")
CAUTION_FLASH_OLDER = ("WARNING : You are about to send a new program to Flash RAM in the {}. This action requires that "
                       "the tallyCore be reset, which will also delete all programs currently running in the tallyCore "
                       "and will permanently erase any Data stored in internal memory. Programs and Data stored on "
                       "memory cards will not be affected. The new program will automatically start running once the "
                       "tallyCore has been reset.")
DATA_ON_CARD = ("WARNING : There is Data from a previous program stored on the memory card plugged into the {}. If you "
                "leave the card plugged in, this current Data has to be erased first before the new program can be sent. "
                "If you want to keep the data, remove the memory card now. ")
DATA_IN_MEMORY = ("WARNING : There is Data from a previous program stored in the {}. This Data has to be erased first "
                  "before the new program can be sent. If you want to keep the data, do not click Yes. To keep the Data "
                  "click No and either unload it or copy it to a cleared memory card now. ")
SENT = "Program sent successfully to the {} and started running.     "
DATA_BEFORE_CLEAR = ("WARNING : Data has been found stored on the memory card plugged into the {}. If you leave the card "
                     "plugged in, this current Data has to be erased first before the new program can be sent. If you "
                     "want to keep the data, remove the memory card now. ")
CLEAR_OLDER = "WARNING : You are about to delete all programs in internal memory in the {}.     "
CLEAR_CARD = "WARNING : You are about delete all programs stored on the memory card plugged into the {}.     "
CLEAR_FLASH_OLDER = ("WARNING : You are about to clear the Flash in the {}. This action requires that the tallyCore be "
                     "reset, which will also delete all programs currently running in the tallyCore and will permanently "
                     "erase any Data stored in internal memory. Programs and Data stored on memory cards will not be "
                     "affected.")
CLEAR_FLASH_KR4 = ("You are about to erase the program area of Flash in the {}. This will permanently delete any tallyCore "
                   "programs stored in Flash. Programs stored on the internal B: drive and those stored o memory cards "
                   "will not be affected. ")
CLEAR_JOB = ("WARNING : You are about to delete a job from internal memory in the {}. You will be asked to choose which "
             "job you want to delete.    ")
JOB_HAS_DATA = ("WARNING : The Job PUMP has Data associated with it. If you delete this Job all Data for the Job will also "
                "be deleted. If you want to keep the Data, click No and either unload it or copy it to a memory card.")
JOBS_HAVE_DATA = ("WARNING : There is Data associated with some or all of the Jobs in the {}. If you click Yes, all data "
                  "and all jobs will be permanently deleted. This action cannot be reversed. If you want to keep the "
                  "Data, click No and either unload it or copy it to a memory card.")


def as_held(lines):
    return "".join(line + "\n" for line in lines).encode()


def s_record(kind, address, address_bytes, data=b""):
    body = bytes([address_bytes + len(data) + 1]) + address.to_bytes(address_bytes, "big") + data
    return f"S{kind}{(body + bytes([255 - sum(body) % 256])).hex().upper()}"


def records(image):
    begin = 0x60000
    return [s_record(0, 0, 2, b"temp.sre"),
            *[s_record(2, begin + at, 3, image[at:at + 32]) for at in range(0, len(image), 32)], s_record(8, begin, 3)]


class LoadCase(WaysCase):
    """One logger with the key ::7, and its program in a file."""

    program = []

    def fields(self):
        """The first fields of its record, and how boxes name it."""
        raise NotImplementedError

    def setUp(self):
        super().setUp()
        fields, self.logger = self.fields()
        self.write("found.ini", f"1tallyCoreSettings={fields}," + "0," * 60 + "1,0,0,/tmp/,1,,,,::7,,,0," + "," * 12
                   + "10,\r\n")
        self.write("pump it.cmd", "".join(line + "\r\n" for line in self.program))
        self.scene.add_converters()
        self.expected = ""

    def write(self, name, text):
        with open(self.scene.path(name), "w", encoding="ascii", newline="") as file:
            file.write(text)

    def open_panel(self):
        program = self.start()
        self.press(OPTIONS, "alt+n", "Home", "alt+v")
        self.screen.window(PANEL)
        return program

    def click(self, button):
        """Presses a load button until it acts: the panel is disabled until the end of the work before."""
        heard = len(self.scene.heard("logger 1"))

        def acts():
            self.press(PANEL, "alt+l", button)
            deadline = time.monotonic() + 5  # one press is enough, if it is not lost
            while time.monotonic() < deadline:
                chooser = self.screen.tool("search", "--onlyvisible", "--name", CHOOSER).stdout
                if chooser or len(self.scene.heard("logger 1")) > heard:
                    return True
                time.sleep(0.05)
            return False
        self.screen.until(f"{button} does nothing", acts)

    def choose_program(self):
        """Types its path as it is typed on other systems: without the extension."""
        self.answer(CHOOSER, "alt+n", "ctrl+a", Typed(self.scene.path("pump it")), "Return")

    def boxes(self, *boxes):
        """Expects boxes one after the other, of which two may have the same title: title, first paragraph, keys."""
        for title, text, *keys in boxes:
            window = self.screen.window(title)
            self.assertEqual(self.box_text(title).removesuffix("\n"), text.format(self.logger))
            self.screen.tool("windowactivate", "--sync", window, "key", *keys)
            self.screen.until(f"{text} stays", lambda title=title, window=window: window not in self.screen.tool(
                "search", "--onlyvisible", "--name", title).stdout.split())

    def expect(self, *lines):
        """Expects that the logger has received these lines since the last call, and gives what it holds."""
        self.expected += "".join(line + "\r\n" for line in lines)
        try:
            self.screen.until("", lambda: self.scene.heard("logger 1") == self.expected)
        except AssertionError:
            self.assertEqual(self.scene.heard("logger 1").split("\r\n"), self.expected.split("\r\n"))
        return self.scene.holds("logger 1")

    def leave(self, program):
        """Closes the panel as soon as the work is done, and the program."""
        def closed():
            self.screen.tool("search", "--onlyvisible", "--name", PANEL, "windowactivate", "--sync", "key", "Escape")
            return not self.screen.tool("search", "--onlyvisible", "--name", PANEL).stdout
        self.screen.until("the panel stays", closed)
        self.end(program)
        self.assertIn("ShowLoadMessages=True\r\n", self.read("options.ini"))
        self.assertEqual(self.scene.heard("logger 1"), self.expected)


class OlderFamily(LoadCase):
    simulated = [{"com": 3, "model": "KR305", "series": "3", "baud": 115200, "program": "OLD\n", "data": True,
                  "card": True}]
    program = OLDER_PROGRAM

    def fields(self):
        return "3,KR305 Series 3,none,115200,None,8,1,SWFC", "KR305 Series 3 on Com 3"

    def test_memory(self):
        program = self.open_panel()
        self.click(PROGRAM)
        self.choose_program()
        self.boxes((BOX, CAUTION_OLDER, YES), (BOX, DATA_ON_CARD, YES), (UNTITLED_BOX, SENT, OK))
        held = self.expect(*CONNECT_OLDER, *FIND_CARD, "H BEGIN", *DROP_DATA, *BEGIN_PROGRAM, *OLDER_PROGRAM)
        self.assertEqual((held["program"], held["data"], held["cardProgram"]), (as_held(OLDER_PROGRAM), False, b""))

        self.click(PROGRAM_CLEAR)
        self.boxes((BOX, CLEAR_OLDER, YES), (BOX, "Programs successfully deleted from the {}.     ", OK))
        held = self.expect(*CONNECT_OLDER, *FIND_CARD, "H BEGIN", "CALARMS CSCANS")
        self.assertEqual(held["program"], b"")
        self.leave(program)

    def test_who_says_no_keeps_program_and_data(self):
        program = self.open_panel()
        self.click(PROGRAM)
        self.choose_program()
        self.boxes((BOX, CAUTION_OLDER, NO))
        self.expect(*CONNECT_OLDER, *FIND_CARD)
        self.click(PROGRAM_CLEAR)
        self.boxes((BOX, CLEAR_OLDER, YES), (BOX, DATA_BEFORE_CLEAR, NO))
        held = self.expect(*CONNECT_OLDER, *FIND_CARD, "H BEGIN")
        self.assertEqual((held["program"], held["data"]), (b"OLD\n", True))
        self.leave(program)

    def test_card(self):
        program = self.open_panel()
        self.click(CARD)
        self.choose_program()
        self.boxes((BOX, CAUTION_CARD, YES), (BOX, DATA_ON_CARD, YES),
                   (UNTITLED_BOX, "Program sent successfully to the memory card plugged into the {}.     ", OK),
                   (UNTITLED_BOX, "Do you want to start running the new memory card program now ?     ", YES),
                   (UNTITLED_BOX, "Memory card program started.     ", OK))
        held = self.expect(*CONNECT_OLDER, *FIND_CARD, "H BEGIN", *DROP_DATA, "H /E", "CPROG", *BEGIN_PROGRAM,
                           *[line + ";" for line in OLDER_PROGRAM], "\r", "RUNPROG")
        self.assertEqual((held["cardProgram"], held["program"]), (as_held(OLDER_PROGRAM), as_held(OLDER_PROGRAM)))

        self.click(CARD_CLEAR)
        self.boxes((BOX, CLEAR_CARD, YES), (UNTITLED_BOX, "Memory card programs successfully deleted.     ", OK))
        held = self.expect(*CONNECT_OLDER, *FIND_CARD, "/E", "CPROG")
        self.assertEqual((held["cardProgram"], held["program"]), (b"", as_held(OLDER_PROGRAM)))
        self.leave(program)

    def test_flash(self):
        program = self.open_panel()
        self.click(FLASH)
        self.choose_program()
        self.boxes((HARVEL_BOX, CAUTION_FLASH_OLDER, YES),
                   (HARVEL_BOX, "Program successfully sent to Flash in the {} and started running.     ", OK))
        held = self.expect(*CONNECT_OLDER, *BOOTSTRAP, *records(IMAGE), "J")
        self.assertEqual((held["flash"], held["resets"], held["bootstrap"]), (IMAGE, 1, False))

        self.click(FLASH_CLEAR)
        self.boxes((BOX, CLEAR_FLASH_OLDER, YES), (HARVEL_BOX, "Flash successfully erased in the {}.     ", OK))
        held = self.expect(*CONNECT_OLDER, "H", *BOOTSTRAP, "J")
        self.assertEqual((held["flash"], held["resets"], held["bootstrap"]), (b"", 2, False))
        self.leave(program)


class KR4Family(LoadCase):
    simulated = [{"model": "KR400", "version": "4.06.0001", "port": "tcp:0", "jobs": ["*PUMP+", "TANK", "WELL", "RAIN+"]}]
    program = NEWER_PROGRAM

    def fields(self):
        address = ":".join(self.scene.address(1))
        return f"{address},KR400,none,,,,,", f"KR400 at {address}"

    def names(self):
        return [(job["name"], job["hasData"]) for job in self.scene.holds("logger 1")["jobs"]]

    def check_sent_to_memory(self):
        self.boxes((BOX, CAUTION_KR4, YES), (BOX, DATA_IN_MEMORY, YES), (UNTITLED_BOX, SENT, OK))
        held = self.expect(*CONNECT_KR4, *FIND_CARD, "H BEGIN", *DROP_DATA, *BEGIN_PROGRAM, *NEWER_PROGRAM)
        text = as_held(NEWER_PROGRAM)
        self.assertEqual((held["program"], held["jobs"][-1]),
                         (text, {"name": b"NEW", "current": True, "hasData": False, "text": text}))

    def test_memory_and_flash(self):
        program = self.open_panel()
        self.click(PROGRAM)
        self.choose_program()
        self.check_sent_to_memory()

        self.click(FLASH)
        self.choose_program()
        self.boxes((HARVEL_BOX, CAUTION_FLASH_KR4, YES),
                   (HARVEL_BOX, "Program successfully sent to Flash in the {}.     ", OK),
                   (HARVEL_BOX, "Do you want to reset the tallyCore and start running the new program now ?     ", YES),
                   (BOX, "tallyCore reset and Flash program started.     ", OK))
        held = self.expect(*CONNECT_KR4, *NEWER_PROGRAM, "H", 'RUNJOBONRESET"NEW"', "FLASHONRESET", "SINGLEPUSH")
        self.assertEqual((held["flash"], held["runOnReset"], held["resets"]), (as_held(NEWER_PROGRAM), b"NEW", 1))

        self.click(FLASH_CLEAR)
        self.boxes((HARVEL_BOX, CLEAR_FLASH_KR4, YES), (HARVEL_BOX, "Flash successfully erased in the {}.     ", OK))
        held = self.expect(*CONNECT_KR4, "DELONRESET", "DELFLASHONRESET")
        self.assertEqual((held["flashOnReset"], held["runOnReset"], held["resets"]), (b"Erase", b"", 1))
        self.leave(program)

    def test_a_start_that_names_a_program_sends_it_and_ends(self):
        program = self.start("::7", self.scene.path("pump it.cmd"))
        self.check_sent_to_memory()
        _, error = program.communicate(timeout=WAIT)
        self.assertEqual((program.returncode, error), (0, ""))
        self.assertEqual(self.scene.heard("logger 1"), self.expected)

    def clear(self, *keys):
        """Chooses what to delete by these keys."""
        self.click(PROGRAM_CLEAR)
        self.boxes((BOX, CLEAR_JOB, YES))
        self.answer(JOBS, *keys, "alt+d")

    def test_jobs(self):
        program = self.open_panel()
        self.clear("Down")
        self.boxes((BOX, "The Job TANK has been successfully deleted.     ", OK))
        self.expect(*CONNECT_KR4, *LIST_JOBS, "CURJOB", "/M/E", 'DELJOB"TANK"')
        self.assertEqual(self.names(), [(b"PUMP", True), (b"WELL", False), (b"RAIN", True)])

        self.clear()
        self.boxes((BOX, JOB_HAS_DATA, YES),
                   (BOX, "The Job PUMP and all it's Data have been successfully deleted.     ", OK))
        self.expect(*CONNECT_KR4, *LIST_JOBS, "CURJOB", "/M/E", "H", 'DELJOB"PUMP"', 'DELDATA"PUMP"', 'DELJOB"PUMP"')
        self.assertEqual(self.names(), [(b"WELL", False), (b"RAIN", True)])

        self.clear("End")
        self.boxes((BOX, JOBS_HAVE_DATA, YES),
                   (BOX, "The Job DIRJOBS and all it's Data have been successfully deleted.     ", OK))
        self.expect(*CONNECT_KR4, *LIST_JOBS, "CURJOB", "/M/E", "H", "DELJOB*", "DELALARMS*", "DELDATA*", "DELJOB*")
        self.assertEqual(self.names(), [])
        self.leave(program)


if __name__ == "__main__":
    unittest.main()
