#!/usr/bin/env python3
"""Uses the window as a user does, with real input events, and checks each step in the saved document.

usage: drive.py PROGRAMS TEST_BUNDLES FONTS_CONF [WORD]

PROGRAMS is the folder of objecthost and objecthost-window, TEST_BUNDLES that of libraries which a host must refuse. A
word selects scenarios by name. A scenario that fails leaves a picture of the screen beside the programs' folder.
"""
import math
import os
import pathlib
import re
import shutil
import sys
import time
import traceback

from desktop import Desktop, Failure, Window, wait_for

SCENARIOS = []
BOX = ("--bounds", "100,100,300,220")  # one rectangle; its rounding is 0.5, as a new one's
TWO = [("--bounds", "50,50,150,150"), ("--bounds", "250,50,400,150")]
AMBER = (255, 190, 60)  # the rounding's handle


def scenario(function):
    SCENARIOS.append(function)
    return function


def near(a, b, tolerance=1e-6):
    return abs(a - b) <= tolerance


def has_bounds(item, *bounds, tolerance=1e-6):
    return all(near(a, b, tolerance) for a, b in zip(item["bounds"], bounds))


def rounding(item):
    return item["properties"]["Rounding"]


def screen_file():
    return PROGRAMS.parent / f"drive-{CURRENT}.png"


class Editor:
    """A window on a document, at 100 %."""

    def __init__(self, objects=(), select=None, **more):
        self.window = Window(DESKTOP, PROGRAMS, objects, **more)
        self.select = select

    def __enter__(self):
        try:
            self.window.calibrate()
            if self.select:
                self.window.click(self.window.at(*self.select))
        except BaseException:
            self.__exit__(True)
            raise
        return self.window

    def __exit__(self, kind, *_):
        if kind:
            DESKTOP.picture().save(screen_file())
        self.window.__exit__()


def choose_rectangle_tool(window):
    x0, y0, x1, y1 = window.find_text("Rectangle", (0, 0, 130, 200))
    window.click(((x0 + x1) // 2, (y0 + y1) // 2))


def handle(window, color=AMBER):
    """The middle of a handle on the canvas, in pixels of the screen."""
    move_pointer_away()
    box = wait_for("the handle", lambda: DESKTOP.picture().find(color, canvas(window)))
    return (box[0] + box[2]) / 2, (box[1] + box[3]) / 2


def move_pointer_away():
    """It would hide what is looked for."""
    DESKTOP.input("mousemove", 1390, 890)


def canvas(window):
    return (window.left - 40, window.bottom - 440, window.left + 640, window.bottom + 40)


class InspectorRow:
    """Where the controls of the rounding are, found by their label and by what the slider looks like."""

    def __init__(self, window):
        picture = DESKTOP.picture()
        x0, y0, x1, y1 = window.find_text("Curvature", (880, 0, picture.width, picture.height))
        self.y = (y0 + y1) // 2
        self.label = (x0, y0, x1, y1)
        self.window = window
        self.right = window_right(picture, self.y)

    def trough(self):
        """First and last pixel of the slider's filled part."""
        picture = DESKTOP.picture()
        for accent in ((53, 132, 228), (21, 83, 158)):
            box = picture.find(accent, (self.label[2], self.y - 6, self.right, self.y + 6), 12)
            if box:
                return box[0], box[2]
        raise Failure("no slider is to be seen")

    def field(self):
        return self.label[2] + 26, self.y

    def number(self):
        move_pointer_away()
        texts = DESKTOP.picture().texts((self.label[2] + 4, self.y - 14, self.label[2] + 64, self.y + 14), 7)
        digits = re.search(r"[0-9]+[.,][0-9]+", " ".join(text for text, _ in texts))
        return float(digits[0].replace(",", ".")) if digits else None


def window_right(picture, y):
    x = picture.width - 1
    while x > 0 and picture.pixel(x, y) == (0, 0, 0):
        x -= 1
    return x


@scenario
def draw_by_pointer():
    with Editor() as window:
        choose_rectangle_tool(window)
        window.drag([window.at(60, 300), window.at(140, 250), window.at(260, 180)])
        objects = window.expect("a rectangle where the pointer went",
                                lambda items: len(items) == 1 and has_bounds(items[0], 60, 180, 260, 300))
        assert objects[0]["class"] == "stdRect"
        # The tool is given up: the next drag moves what was drawn.
        window.drag([window.at(150, 240), window.at(170, 230)])
        window.expect("the rectangle moved", lambda items: len(items) == 1 and
                      has_bounds(items[0], 80, 170, 280, 290))


@scenario
def round_by_slider_field_and_handle():
    with Editor([BOX], (200, 160)) as window:
        row = InspectorRow(window)

        def agree(value):
            """The canvas' handle stands between 14 and 60 units from the corner, the field shows two decimals."""
            x, y = handle(window)
            inset = 14 + (60 - 14) * value
            corner = window.at(300, 220)
            assert near(x, corner[0] - inset, 1.5) and near(y, corner[1] + inset, 1.5), (x, y, value)
            wait_for("the field to agree", lambda: row.number() == float(f"{value:.2f}"))

        start, knob = row.trough()
        window.drag([(knob + 3, row.y), (knob + 15, row.y), (knob + 25, row.y)])
        objects = window.expect("more rounding", lambda items: 0.6 < rounding(items[0]) < 1)
        agree(rounding(objects[0]))
        slid = rounding(objects[0])
        filled = row.trough()[1] - start

        window.click(row.field())
        window.key("ctrl+a")
        window.type("0.25\n")
        objects = window.expect("the rounding typed", lambda items: rounding(items[0]) == 0.25)
        agree(0.25)
        # The filled part of the slider grows with the value, about straight.
        slider = row.trough()[1] - start
        assert slider < filled * 0.25 / slid + 12, (slider, filled)

        from_place = handle(window)
        window.drag([from_place, (from_place[0] - 9.2, from_place[1] + 9.2)])
        objects = window.expect("more rounding by the handle", lambda items: near(rounding(items[0]), 0.45, 0.03))
        agree(rounding(objects[0]))

        # One step each; the last one first.
        named = "Change Rectangle Curvature"
        for title, value in (("Change Rounding", 0.25), (named, slid), (named, 0.5)):
            window.key("alt+e")
            window.find_text(f"Undo {title}", (0, 20, 420, 330))
            window.key("Escape")
            window.key("ctrl+z")
            window.expect(f"the rounding back at {value}", lambda items: near(rounding(items[0]), value, 1e-9))
        agree(0.5)
        window.key("alt+e")
        window.find_text(f"Redo {named}", (0, 20, 420, 330))
        window.key("Escape")
        for value in (slid, 0.25):
            window.key("ctrl+shift+z")
            window.expect(f"the rounding again at {value}", lambda items: near(rounding(items[0]), value, 1e-9))


@scenario
def move_by_drag_and_keys():
    with Editor([BOX], (200, 160)) as window:
        window.drag([window.at(200, 160), window.at(230, 150), window.at(237, 171)])
        window.expect("moved by the drag", lambda items: has_bounds(items[0], 137, 111, 337, 231))
        window.key("Right", "Right", "Up", "shift+Left", "shift+Down", "alt+Right", "alt+Up")
        window.expect("moved by keys", lambda items: has_bounds(items[0], 129.1, 102.1, 329.1, 222.1))
        window.drag([window.at(229, 160), window.at(260, 170)], "shift")
        window.expect("moved along one axis", lambda items: has_bounds(items[0], 160.1, 102.1, 360.1, 222.1))
        for _ in range(8):
            window.key("ctrl+z")
        window.expect("all of it undone", lambda items: has_bounds(items[0], 100, 100, 300, 220))


@scenario
def resize_by_handles():
    with Editor([BOX], (200, 160)) as window:
        window.drag([window.at(300, 160), window.at(340, 190)])
        window.expect("wider", lambda items: has_bounds(items[0], 100, 100, 340, 220))
        window.drag([window.at(100, 100), window.at(80, 70)])
        window.expect("larger at its corner", lambda items: has_bounds(items[0], 80, 70, 340, 220))
        window.drag([window.at(210, 220), window.at(222, 230)], "ctrl")
        window.expect("higher about its centre", lambda items: has_bounds(items[0], 80, 60, 340, 230))
        window.drag([window.at(340, 230), window.at(366, 231)], "shift")
        window.expect("in proportion", lambda items: has_bounds(items[0], 80, 60, 366, 247))
        for _ in range(4):
            window.key("ctrl+z")
        window.expect("undone", lambda items: has_bounds(items[0], 100, 100, 300, 220))


@scenario
def rotate_by_handle():
    with Editor([BOX], (200, 160)) as window:
        grip = (200, 246)
        window.drag([window.at(*grip), window.at(240, 246), window.at(286, 160)])
        window.expect("turned by the pointer's way", lambda items: near(items[0]["angle"], -90, 0.5))
        window.key("ctrl+z")
        x, y = window.at(200, 160)
        far = [(x + 86 * math.sin(math.radians(a)), y - 86 * math.cos(math.radians(a))) for a in (-20, -50)]
        window.drag([window.at(*grip), *far], "shift")
        window.expect("turned by steps of 15 degrees", lambda items: near(items[0]["angle"], 45, 1e-6))
        # A handle of the turned frame: its right side goes along the frame's own direction, the left one stays.
        side = (200 + 100 * math.cos(math.pi / 4), 160 + 100 * math.sin(math.pi / 4))
        window.drag([window.at(*side), window.at(side[0] + 20, side[1] + 20)])
        items = window.expect("wider", lambda items: near(items[0]["bounds"][2] - items[0]["bounds"][0], 228.28, 1.5))
        box = items[0]["bounds"]
        middle = ((box[0] + box[2]) / 2, (box[1] + box[3]) / 2)
        half = (box[2] - box[0]) / 2
        left = (middle[0] - half * math.cos(math.pi / 4), middle[1] - half * math.sin(math.pi / 4))
        assert near(left[0], 200 - 70.71, 0.01) and near(left[1], 160 - 70.71, 0.01), left


@scenario
def select_by_click_and_band():
    with Editor(TWO) as window:
        def move(expected, what):
            """What is selected shows by what the arrow keys move."""
            window.key("Up")
            window.expect(what, lambda items: [item["bounds"][1] - 50 for item in items] == expected)
            window.key("ctrl+z")

        window.click(window.at(100, 100))
        move([1, 0], "one selected")
        window.click(window.at(300, 100), "shift")
        move([1, 1], "both by shift-click")
        window.click(window.at(100, 100), "shift")
        move([0, 1], "one taken away by shift-click")
        window.key("Escape")
        window.drag([window.at(20, 200), window.at(260, 100)])
        move([1, 1], "both by the band")
        window.key("Escape")
        window.drag([window.at(440, 20), window.at(380, 90)])
        move([0, 1], "one by the band")
        # Inside the box, outside the rounded corner: nothing. The corner's arc has a radius of 25.
        window.key("Escape")
        window.click(window.at(53, 147))
        window.key("Delete")
        window.click(window.at(58, 142))
        window.key("Delete")
        window.expect("only what was hit is gone", lambda items: len(items) == 1 and has_bounds(
            items[0], 250, 50, 400, 150))


@scenario
def snap_to_grid():
    with Editor([BOX], (200, 160)) as window:
        window.key("ctrl+shift+g")
        window.drag([window.at(200, 160), window.at(223, 164)])
        window.expect("on the grid", lambda items: has_bounds(items[0], 120, 100, 320, 220))
        window.drag([window.at(320, 160), window.at(344, 160)])
        window.expect("its side on the grid", lambda items: has_bounds(items[0], 120, 100, 340, 220))
        window.key("ctrl+shift+g")
        window.drag([window.at(220, 160), window.at(223, 164)])
        window.expect("anywhere", lambda items: has_bounds(items[0], 123, 104, 343, 224))


@scenario
def clipboard():
    with Editor([BOX], (200, 160)) as window:
        window.key("ctrl+c", "ctrl+v")
        window.expect("a copy", lambda items: len(items) == 2 and has_bounds(items[1], 110, 90, 310, 210))
        window.key("ctrl+d")
        window.expect("a duplicate", lambda items: len(items) == 3 and has_bounds(items[2], 120, 80, 320, 200))
        window.key("Delete")
        window.expect("one deleted", lambda items: len(items) == 2)
        window.key("ctrl+a", "ctrl+x")
        window.expect("all cut", lambda items: not items)
        window.key("ctrl+v")
        window.expect("all pasted", lambda items: len(items) == 2)
        window.key("ctrl+z", "ctrl+z")
        window.expect("back", lambda items: len(items) == 2 and has_bounds(items[0], 100, 100, 300, 220))


def run(words):
    global CURRENT
    failures = 0
    for function in SCENARIOS:
        if not all(word in function.__name__ for word in words):
            continue
        CURRENT = function.__name__
        begin = time.monotonic()
        try:
            function()
            print(f"ok   {CURRENT} ({time.monotonic() - begin:.1f} s)", flush=True)
        except Exception as error:  # whatever it is, the other scenarios go on
            failures += 1
            if not isinstance(error, Failure):
                traceback.print_exc(limit=-2)
            print(f"FAULT {CURRENT}: {error}\n      the screen: {screen_file()}", flush=True)
    print(f"{failures} of {len(SCENARIOS)} scenarios failed" if failures else "the window behaves")
    return 1 if failures else 0


if __name__ == "__main__":
    if len(sys.argv) < 4:
        sys.exit(__doc__)
    PROGRAMS, TEST_BUNDLES = pathlib.Path(sys.argv[1]).resolve(), pathlib.Path(sys.argv[2]).resolve()
    DESKTOP = Desktop(fonts=str(pathlib.Path(sys.argv[3]).resolve()))
    try:
        sys.exit(run(sys.argv[4:]))
    finally:
        DESKTOP.close()
