"""What the tests of the ways to a logger share: the add dialog and the terminal by keys, boxes and panes read through
the screen's selections, records as `found.ini` is to hold them."""

import selections
from panel_keys import OPTIONS, PanelCase, Typed

ADD = "^ ?Add a tallyCore$"
SEARCH_BOX = "^ ?tallyCore Search$"
BOX = "^ ?tallyCore Harvel$"
MODELS = ["KR20", "KR21", "KR23", "KR200", "KR205", "KR215", "KR300", "KR305", "KR315", "KR400", "KR45", "KR41", "KR40"]
BAUDS = ["300", "600", "1200", "4800", "9600", "14400", "19200", "28800", "38400", "56000", "57600", "115200"]


def entry(entries, wanted):
    """The keys that select an entry of the list that has the focus."""
    return ["Home", *["Down"] * entries.index(wanted)]


def model(name, series=1):
    """The keys that choose a model; the series has a list of its own, but for the models that come in one."""
    return ["alt+m", *entry(MODELS, name), *([] if name.startswith("KR4") else ["Tab", "Home", *["Down"] * (series - 1)])]


def com_way(place, baud):
    """The keys for a com port, by its place in the list from 0, and its speed."""
    return ["alt+n", "Home", *["Down"] * place, "alt+b", *entry(BAUDS, baud)]


# The kinds of link are reached by Tab and the arrows: a mnemonic clicks only a moment later, among the next keys.
def modem_way(place, phone, init):
    return ["alt+w", "Tab", "Right", "alt+p", "Home", *["Down"] * place, "alt+n", Typed(phone), "alt+l", Typed(init)]


def network_way(host, port):
    return ["alt+w", "Tab", "Right", "Right", "alt+a", Typed(host), "alt+p", Typed(port)]


class WaysCase(PanelCase):
    def first_start(self):
        """Starts the program in a fresh directory and leaves it without a search."""
        program = self.start()
        self.answer(BOX, "Escape")
        self.screen.window(OPTIONS)
        return program

    def box_text(self, title):
        """The whole text of the box with this title, taken with the mouse as a user copies it."""
        window = self.screen.window(title)
        self.screen.tool("windowactivate", "--sync", window)
        place = dict(line.split("=") for line in self.screen.tool("getwindowgeometry", "--shell", window).stdout.split())
        across, down = int(place["WIDTH"]) // 2, int(place["HEIGHT"]) // 6
        text = ""
        selections.clear(self.screen.display, "PRIMARY")  # a field may still hold it

        def copied():
            nonlocal text
            self.screen.tool("mousemove", "--window", window, str(across), str(down), "click", "--repeat", "3",
                             "--delay", "20", "1")
            text = selections.read(self.screen.display, "PRIMARY")
            return text

        self.screen.until(f"the text of {title} can't be selected", copied)
        return text

    def until_heard(self, name, text, direction="in", before=0):
        """Waits until a simulated device has received, or sent, `text` behind the first `before` characters."""
        self.screen.until(f"{name} {direction}: no {text!r}",
                          lambda: text in self.scene.heard(name, direction)[before:])

    def open_terminal(self, linked, place=0):
        """Opens the terminal for the logger at that place in the list, and waits for the link that its caption tells."""
        self.press(OPTIONS, "alt+n", "Home", *["Down"] * place, "alt+m")
        self.screen.window(linked)

    def ask_in_terminal(self, title, name, command="TEST0"):
        """Types a command into the terminal, sees it received and answered by the simulated device of that name, and
        the answer in the pane."""
        heard, said = len(self.scene.heard(name)), len(self.scene.heard(name, "out"))
        self.press(title, Typed(command), "Return")
        self.until_heard(name, f"{command}\r\n", before=heard)
        self.until_heard(name, "\r\n", "out", before=said)
        answer = self.scene.heard(name, "out")[said:].strip()
        self.assertEqual(answer[:2], "T,")
        self.screen.until("the terminal does not show the answer", lambda: answer in self.received(title))

    def received(self, title):
        """What the upper pane of the terminal shows; the focus comes back to the lower one."""
        self.press(title, "shift+Tab", "ctrl+a", "ctrl+c", "Tab")
        return selections.read(self.screen.display, "CLIPBOARD")

    def box(self, title, text, *answer):
        """Expects a box with this title and text, and closes it."""
        self.assertEqual(self.box_text(title), text)
        self.answer(title, *(answer or ["Return"]))
