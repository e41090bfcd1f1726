#!/usr/bin/env python3
"""Leaves pictures of the window: light and dark, at display scales 1 and 2.

usage: pictures.py PROGRAMS DOCUMENT FOLDER
       pictures.py PROGRAMS --editor FOLDER   those of docs/editor.md
"""
import pathlib
import subprocess
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


# What the pictures of the editor's functions show: three objects, of which two are a group, and a guide.
SKETCH = [("--bounds", "60,60,180,160", "--set", "Brush.Color=(205;92;92;255)", "--set", "Rounding=0.3"),
          ("--bounds", "210,60,330,160", "--set", "Brush.Style=LinearGradient", "--set", "Brush.Color2=(255;235;190;255)"),
          ("--bounds", "380,190,520,300", "--set", "Brush.Color=(120;160;90;255)", "--set", "Pen.Size=3")]
SKETCH_SIZE = (1024, 640)


def group(window):
    window.click(window.at(120, 110))
    window.click(window.at(270, 110), "shift")
    window.key("ctrl+g")


def snap(window):
    group(window)
    window.drag([window.at(120, 110), window.at(140, 190), window.at(127, 250)], release=False)


def panels(window):
    """With the brush in sight."""
    window.click(window.at(270, 110))
    window.desktop.input("mousemove", window.desktop.picture().width - 150, 200, "click", "--repeat", 4, 5)


def menu(window):
    group(window)
    window.desktop.input("mousemove", *window.at(120, 130), "click", 3)


def dialog(key):
    def show(window):
        window.click(window.at(270, 110))
        window.key(key)
        window.desktop.input("windowmove", "--sync", window.focus_newest(), 330, 130)
    return show


def guide(window):
    window.click(window.at(450, 240))
    window.key("ctrl+alt+k", "Return")


# Name, language, scale, dark or light, and what is done before.
EDITOR = [("group", "en", 1, False, group), ("snap", "en", 1, False, snap), ("panels", "en", 1, False, panels),
          ("menu", "en", 1, False, menu), ("find", "en", 1, False, dialog("ctrl+f")),
          ("export", "en", 1, False, dialog("ctrl+e")), ("guide-german", "de", 1, False, guide),
          ("japanese-dark", "ja", 2, True, panels)]


def take_editor(programs, folder, name, language, scale, dark, show):
    desktop = Desktop(SKETCH_SIZE[0] * scale, SKETCH_SIZE[1] * scale, GDK_SCALE=str(scale))
    settings = pathlib.Path(desktop.folder) / "settings" / "objecthost"
    settings.mkdir(parents=True)
    (settings / "window.ini").write_text(f"[Window]\nWidth={SKETCH_SIZE[0]}\nHeight={SKETCH_SIZE[1]}\n"
                                         f"Dark={str(dark).lower()}\n")
    place = folder / f"editor-{name}.png"
    try:
        with Window(desktop, programs, SKETCH, XDG_CONFIG_HOME=str(settings.parent), LANGUAGE=language) as window:
            if scale == 1:
                window.calibrate()
            show(window) if scale == 1 else window.key("Page_Down", "Page_Down")
            window.settle()
            desktop.picture().save(place)
    finally:
        desktop.let_go()
        desktop.close()
    subprocess.run(["convert", place, "-dither", "None", "-colors", "128", f"png8:{place}"], check=True)
    print(place, place.stat().st_size)


if __name__ == "__main__":
    if len(sys.argv) != 4:
        sys.exit(__doc__)
    programs, folder = pathlib.Path(sys.argv[1]).resolve(), pathlib.Path(sys.argv[3]).resolve()
    if sys.argv[2] == "--editor":
        for words in EDITOR:
            take_editor(programs, folder, *words)
        sys.exit()
    for scale in (1, 2):
        for dark in (False, True):
            name = "window" + ("-2x" if scale == 2 else "") + ("-dark" if dark else "") + ".png"
            take(programs, pathlib.Path(sys.argv[2]).resolve(), folder / name, scale, dark)
