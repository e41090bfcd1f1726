#!/usr/bin/env python3
"""Leaves pictures of the window: light and dark, at display scales 1 and 2.

usage: pictures.py PROGRAMS DOCUMENT FOLDER
"""
import pathlib
import sys

from desktop import Desktop, Window, wait_for

HANDLE = (255, 190, 60)
SIZE = (1180, 760)  # of a new window
SHOWN = 14  # the object of the document that is selected, counted from the hindmost


def take(programs, document, place, scale, dark):
    desktop = Desktop(SIZE[0] * scale, SIZE[1] * scale, GDK_SCALE=str(scale))
    try:
        with Window(desktop, programs, document=document) as window:
            if dark:
                window.key("alt+v")
                window.settle()
                window.key("d")
                wait_for("dark colors", lambda: sum(desktop.picture().pixel(5, SIZE[1] * scale - 5)) < 250)
                window.focus(window.main)
            # With an object selected it is seen what the panels do.
            window.key(*["Page_Down"] * SHOWN)
            wait_for("the handles", lambda: desktop.picture().find(HANDLE))
            window.settle()
            desktop.picture().save(place)
    finally:
        desktop.close()
    print(place)


if __name__ == "__main__":
    if len(sys.argv) != 4:
        sys.exit(__doc__)
    programs, document, folder = (pathlib.Path(word).resolve() for word in sys.argv[1:])
    for scale in (1, 2):
        for dark in (False, True):
            name = "window" + ("-2x" if scale == 2 else "") + ("-dark" if dark else "") + ".png"
            take(programs, document, folder / name, scale, dark)
