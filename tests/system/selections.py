"""Reads what has been selected or copied on an X screen, as a program does that pastes it."""

import ctypes
import ctypes.util
import time

TEXT_TYPE = b"UTF8_STRING"
NOTIFIED = 31  # the event SelectionNotify
LONGEST = 1 << 18  # in words of four bytes


class XEvent(ctypes.Union):
    _fields_ = [("type", ctypes.c_int), ("pad", ctypes.c_long * 24)]


def library():
    x = ctypes.CDLL(ctypes.util.find_library("X11"))
    word, pointer = ctypes.c_ulong, ctypes.c_void_p
    for name, result, arguments in [
            ("XOpenDisplay", pointer, [ctypes.c_char_p]), ("XCloseDisplay", ctypes.c_int, [pointer]),
            ("XDefaultRootWindow", word, [pointer]), ("XInternAtom", word, [pointer, ctypes.c_char_p, ctypes.c_int]),
            ("XCreateSimpleWindow", word, [pointer, word, *[ctypes.c_int] * 2, *[ctypes.c_uint] * 3, word, word]),
            ("XSetSelectionOwner", ctypes.c_int, [pointer, word, word, word]),
            ("XSync", ctypes.c_int, [pointer, ctypes.c_int]),
            ("XConvertSelection", ctypes.c_int, [pointer, word, word, word, word, word]),
            ("XCheckTypedWindowEvent", ctypes.c_int, [pointer, word, ctypes.c_int, ctypes.POINTER(XEvent)]),
            ("XGetWindowProperty", ctypes.c_int, [pointer, word, word, ctypes.c_long, ctypes.c_long, ctypes.c_int, word,
                                                  *[ctypes.POINTER(word)] * 2, *[ctypes.POINTER(word)] * 2,
                                                  ctypes.POINTER(pointer)]),
            ("XFree", ctypes.c_int, [pointer])]:
        routine = getattr(x, name)
        routine.restype, routine.argtypes = result, arguments
    return x


def clear(display, selection):
    """Afterwards nobody holds the selection, until somebody selects anew."""
    x = library()
    connection = x.XOpenDisplay(display.encode())
    x.XSetSelectionOwner(connection, x.XInternAtom(connection, selection.encode(), 0), 0, 0)
    x.XSync(connection, 0)
    x.XCloseDisplay(connection)


def read(display, selection, seconds=10):
    """The text of the selection "PRIMARY" or "CLIPBOARD"; empty if nobody holds it."""
    x = library()
    connection = x.XOpenDisplay(display.encode())
    try:
        def atom(name):
            return x.XInternAtom(connection, name, 0)
        window = x.XCreateSimpleWindow(connection, x.XDefaultRootWindow(connection), 0, 0, 1, 1, 0, 0, 0)
        place = atom(b"HARVELOP_TEST")
        x.XConvertSelection(connection, atom(selection.encode()), atom(TEXT_TYPE), place, window, 0)
        event = XEvent()
        deadline = time.monotonic() + seconds
        while not x.XCheckTypedWindowEvent(connection, window, NOTIFIED, ctypes.byref(event)):
            if time.monotonic() > deadline:
                return ""
            time.sleep(0.02)
        kind, size, left = ctypes.c_ulong(), ctypes.c_ulong(), ctypes.c_ulong()
        form, data = ctypes.c_ulong(), ctypes.c_void_p()
        x.XGetWindowProperty(connection, window, place, 0, LONGEST, 0, 0, ctypes.byref(kind), ctypes.byref(form),
                             ctypes.byref(size), ctypes.byref(left), ctypes.byref(data))
        if not data.value:
            return ""
        text = ctypes.string_at(data.value, size.value).decode()
        x.XFree(data)
        return text
    finally:
        x.XCloseDisplay(connection)
