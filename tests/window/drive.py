#!/usr/bin/env python3
"""Uses the window as a user does, with real input events, and checks each step in the saved document.

usage: drive.py PROGRAMS TEST_BUNDLES FONTS_CONF [--part K/N] [WORD]

PROGRAMS is the folder of objecthost and objecthost-window, TEST_BUNDLES that of libraries which a host must refuse. A
word selects scenarios by name, --part each N-th of them from the K-th on, counted from 0. A scenario that fails leaves a
picture of the screen beside the programs' folder. With KEY_DELAY=200 keys follow each other as those of a person do.
"""
import contextlib
import json
import math
import os
import pathlib
import re
import shutil
import signal
import subprocess
import sys
import time
import traceback

from desktop import Bus, Desktop, Failure, Window, wait_for

SCENARIOS = []
BOX = ("--bounds", "100,100,300,220")  # one rectangle; its rounding is 0.5, as a new one's
RECT = (100, 100, 300, 220)
TWO = [("--bounds", "50,50,150,150"), ("--bounds", "250,50,400,150")]
IMAGES = pathlib.Path(__file__).resolve().parents[1] / "images"
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
            DESKTOP.let_go()
        self.window.__exit__()


def document(name, lines):
    """A new document that lines of a script work on."""
    path = pathlib.Path(DESKTOP.folder) / f"{name}.akd"
    page = f"new --size {Window.PAGE[0]},{Window.PAGE[1]} --background {','.join(map(str, Window.PAPER))}"
    subprocess.run([PROGRAMS / "objecthost", "script"], input="\n".join([page, *lines, f"save {path} --overwrite"]),
                   text=True, check=True, env=DESKTOP.environment, stdout=subprocess.DEVNULL)
    return path


def crowd():
    """A document with more objects than a drag moves with each motion."""
    corners = [(100 + 6 * (i % 40), 100 + 6 * (i // 40)) for i in range(1200)]
    return document("crowd", [f"add stdRect --bounds {x},{y},{x + 4},{y + 4}" for x, y in corners])


def within(window, x, y):
    """A place of the window, which may have a title above it, on the screen."""
    _, y0, _, y1 = window.find_text("File", (0, 0, 60, 60))
    return x, y + (y0 + y1) // 2 - 11


def choose_rectangle_tool(window):
    window.click(within(window, 22, 124))  # below the one to select


def handle(window, color=AMBER):
    """The middle of a handle on the canvas, in pixels of the screen."""
    move_pointer_away()
    box = wait_for("the handle", lambda: DESKTOP.picture().find(color, canvas(window)))
    return (box[0] + box[2]) / 2, (box[1] + box[3]) / 2


def wait_for_words(words):
    """Words of a message, which may be broken into lines anywhere."""
    wait_for(words, lambda: words in " ".join(text for text, _ in DESKTOP.picture().texts()))


def move_pointer_away():
    """It would hide what is looked for."""
    DESKTOP.input("mousemove", 1390, 890)


def canvas(window):
    return (66, 84, window.left + 720, 700)


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

    def field_box(self):
        return self.label[2] + 4, self.y - 14, self.label[2] + 64, self.y + 14

    def number(self):
        move_pointer_away()
        texts = DESKTOP.picture().texts(self.field_box(), 7)
        digits = re.search(r"[0-9]+[.,][0-9]+", " ".join(text for text, _ in texts))
        return float(digits[0].replace(",", ".")) if digits else None


def pixels(box):
    picture = DESKTOP.picture()
    return [picture.pixel(x, y) for y in range(box[1], box[3]) for x in range(box[0], box[2])]


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
            inset = 14 + (60 - 14) * value
            corner = window.at(300, 220)
            place = (corner[0] - inset, corner[1] + inset)
            wait_for(f"the handle at {place}", lambda: all(near(a, b, 1.5) for a, b in zip(handle(window), place)))
            wait_for("the field to agree", lambda: row.number() == float(f"{value:.2f}"))

        start, knob = row.trough()
        # However long the slider rests, it is one step until it is let go.
        window.drag([(knob + 3, row.y), (knob + 15, row.y), (knob + 25, row.y)], rest=0.8)
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
def drag_of_very_many():
    """More than are moved one by one: the picture and the panel show them moving before the button is let go."""
    def center(window, x, y):
        return DESKTOP.picture().pixel(*window.at(x, y))

    with Editor(document=crowd()) as window:
        objects, blue = window.read(), center(window, 222, 222)
        window.key("ctrl+a")
        for key, by in (("", (200, 100)), ("Escape", (0, 0))):
            window.drag([window.at(162, 132), window.at(362, 232)], release=False)
            wait_for("the picture at the new place", lambda: center(window, 422, 322) == blue)
            wait_for("the paper at the old one", lambda: center(window, 222, 222) == window.PAPER)
            field = object_field(window, "X")
            box = (field[0] - 60, field[1] - 14, field[0] + 30, field[1] + 14)
            wait_for("the place in the panel", lambda: "300" in str(DESKTOP.picture().texts(box, 7)))
            if key:
                window.key(key)
            DESKTOP.input("mouseup", 1)
            items = window.expect(f"all of them after {key or 'the release'}", lambda items: has_bounds(
                items[0], 100 + by[0], 100 + by[1], 104 + by[0], 104 + by[1]))
            assert all(has_bounds(item, *(side + by[i % 2] for i, side in enumerate(old["bounds"])))
                       for item, old in zip(items, objects))
            wait_for("the document's own picture", lambda: center(window, 222 + by[0], 222 + by[1]) == blue)
            window.key("ctrl+z")
            window.expect("as it was", lambda items: has_bounds(items[0], 100, 100, 104, 104))
            if not key:
                window.key("ctrl+a")


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
        window.key("ctrl+alt+shift+g")
        window.drag([window.at(200, 160), window.at(223, 164)])
        window.expect("on the grid", lambda items: has_bounds(items[0], 120, 100, 320, 220))
        window.drag([window.at(320, 160), window.at(344, 160)])
        window.expect("its side on the grid", lambda items: has_bounds(items[0], 120, 100, 340, 220))
        window.key("ctrl+alt+shift+g")
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

def object_field(window, name):
    """A place in a field of the object panel. Text recognition is not sure of a lone X: its row is found from others."""
    panel = (920, 0, 1180, 320)
    if name == "X":
        (x, y), (_, below) = object_field(window, "Width"), object_field(window, "Height")
        return x, y - 2 * (below - y)
    x0, y0, x1, y1 = window.find_text(name, panel)
    return x1 + 80, (y0 + y1) // 2


def click_text(window, words, box):
    x0, y0, x1, y1 = window.find_text(words, box)
    window.click(((x0 + x1) // 2, (y0 + y1) // 2))


@scenario
def numbers_typed_at_any_speed():
    with Editor([BOX], (200, 160)) as window:
        width = object_field(window, "Width")
        for side, delay in ((81, 25), (82, 150), (83, 250), (84, 1000)):
            window.click(width)
            window.key("ctrl+a")
            window.type(f"{side}.5", delay)
            window.key("Tab")
            # The step of the width ends, and the panels are shown anew, while the height is typed.
            window.type(f"{side}.25", delay)
            window.key("Return")
            window.expect(f"both sides at {delay} ms a key", lambda items: has_bounds(
                items[0], 100, 100, 100 + side + 0.5, 100 + side + 0.25))
        window.click(width)
        window.key("Up", "ctrl+a")
        for digit in "66.25":
            window.process.send_signal(signal.SIGSTOP)
            window.type(digit)
            time.sleep(0.6)
            window.process.send_signal(signal.SIGCONT)
        window.key("Return")
        window.expect("the width of a program that was stopped", lambda items: has_bounds(
            items[0], 100, 100, 166.25, 184.25))


@scenario
def typing_is_given_up_corrected_and_selected():
    with Editor([BOX], (200, 160)) as window:
        field = object_field(window, "Width")
        window.click(field)
        window.key("ctrl+a")
        window.type("80.5", 150)
        window.key("Escape", "Return")
        window.expect("nothing taken over", lambda items: has_bounds(items[0], *RECT))
        window.key("ctrl+a")
        window.type("8o.5", 150)
        window.key("Return")
        wait_for_words("20 mm + 5")
        box = (field[0] - 50, field[1] - 12, field[0] + 60, field[1] + 12)
        assert any(red > 150 and green < 90 and blue < 90 for red, green, blue in pixels(box)), "the text is not red"
        window.click(window.at(450, 350))
        window.expect("the wrong text nowhere", lambda items: has_bounds(items[0], *RECT))
        window.click(window.at(200, 160))
        window.click(field)
        window.key("ctrl+a")
        window.type("90", 150)
        window.key("Return", "ctrl+a")
        time.sleep(0.8)  # past the end of the step
        window.type("70", 150)
        window.key("Return")
        window.expect("typed over the selected text", lambda items: len(items) == 1 and has_bounds(
            items[0], 100, 100, 170, 220))


@scenario
def sums_and_units_in_fields():
    with Editor([BOX], (200, 160)) as window:
        width, angle = object_field(window, "Width"), object_field(window, "Angle")
        for text, side in (("1in + 3", 75), ("50 %", 37.5), ("*4", 150), ("(2,5+1)*20px", 70)):
            window.click(width)
            window.key("ctrl+a")
            window.type(text, 150)
            window.key("Return")
            window.expect(text, lambda items, x1=100 + side: has_bounds(items[0], 100, 100, x1, 220))
        window.click(angle)
        window.key("ctrl+a")
        window.type("90/4", 150)
        window.key("Return")
        window.expect("a quotient", lambda items: near(items[0]["angle"], 22.5))
        window.click(width)
        window.key("ctrl+a")
        window.type("3 furlongs", 150)
        window.key("Return")
        wait_for_words("20 mm + 5")


@scenario
def a_program_that_is_behind():
    """What waits for it is meant for what the user sees by then: the panel of the object that was clicked before."""
    with Editor([BOX], (200, 160)) as window:
        field = object_field(window, "Width")
        window.click(window.at(450, 350))
        window.settle()
        window.process.send_signal(signal.SIGSTOP)
        window.click(window.at(200, 160))
        window.click(field)
        window.key("ctrl+a")
        window.type("90\n")
        window.process.send_signal(signal.SIGCONT)
        window.expect("the width taken", lambda items: has_bounds(items[0], 100, 100, 190, 220))


def scroll_panels(window):
    """To their end."""
    window.desktop.input("mousemove", 1060, 240, "click", "--repeat", 40, "--delay", 10, 5)
    window.settle()


def place_of_the_first_layer(window):
    """Of its name in the list, with the panels scrolled."""
    scroll_panels(window)
    return window.find_text("Layer 1", (920, 0, 1180, 760))


@scenario
def names_of_layers():
    with Editor([BOX]) as window:
        window.key("ctrl+shift+n")
        x0, y0, x1, y1 = place_of_the_first_layer(window)
        places = [((x0 + x1) // 2, (y0 + y1) // 2 - above) for above in (0, 38)]

        def rename(place, name):
            window.desktop.input("mousemove", *place, "click", "--repeat", 2, "--delay", 40, 1)
            window.type(name, 60)

        def named(*names):
            window.expect(f"{names}", lambda _: [layer["name"] for layer in window.layers()] == list(names))

        for turn in range(3):
            rename(places[0], f"low {turn}")  # never the chosen one
            window.click(window.at(450, 350))
            named(f"low {turn}", f"high {turn - 1}" if turn else "Layer 2")
            rename(places[1], f"high {turn}")
            window.click(places[0])
            named(f"low {turn}", f"high {turn}")
            window.click(places[1])
        rename(places[0], "base")
        window.key("Escape", "ctrl+s")
        named("low 2", "high 2")
        rename(places[0], "base")
        window.key("ctrl+shift+n")
        named("base", "high 2", "Layer 3")
        assert window.process.poll() is None


@scenario
def very_many_layers():
    """A window has rows for some of them only, and goes on to the others."""
    with Editor(document=document("layers", (f"layer add L{i}" for i in range(100000)))) as window:
        panel = (920, 0, 1180, 760)
        window.desktop.input("mousemove", 1060, 240, "click", "--repeat", 900, "--delay", 5, 5)
        window.settle()
        x0, y0, x1, y1 = window.find_text("More Layers Below", panel)
        window.click(((x0 + x1) // 2, (y0 + y1) // 2))
        window.find_text("L99799", panel)  # the row after the last one, which has the focus
        window.key("Down", "Return")
        window.type("here\n", 60)
        window.expect("another name", lambda _: window.layers()[99799]["name"] == "here")
        resident = pathlib.Path(f"/proc/{window.process.pid}/statm").read_text().split()[1]
        assert int(resident) * 4096 < 1 << 30, f"{resident} pages of memory"


@scenario
def keys_while_the_list_changes():
    """The key after the one that makes the list of layers anew, whose old rows had the focus, is not lost."""
    with Editor([BOX]) as window:
        window.key("ctrl+shift+n")
        x0, y0, x1, y1 = place_of_the_first_layer(window)
        for turn in range(15):
            window.desktop.input("mousemove", (x0 + x1) // 2, (y0 + y1) // 2, "click", "--repeat", 2, "--delay", 40, 1)
            window.type(f"name {turn}", 40)
            window.key("ctrl+shift+n", "ctrl+s")
            wait_for(f"turn {turn} to be saved", lambda: not window.title().startswith("•"), 10)
            window.key("ctrl+z")


@scenario
def keys_during_a_drag():
    """They end the drag where it is; what the pointer still does until it is let go does nothing."""
    moved, after = (120, 110, 320, 230), (400, 300)
    cases = (
        (("Delete",), lambda items: not items),
        (("ctrl+x",), lambda items: not items),
        (("ctrl+z",), lambda items: has_bounds(items[0], *RECT)),
        (("ctrl+d",), lambda items: has_bounds(items[0], *moved) and has_bounds(items[1], 130, 100, 330, 220)),
        (("ctrl+c", "ctrl+v"), lambda items: has_bounds(items[0], *moved) and has_bounds(items[1], 130, 100, 330, 220)),
        (("ctrl+a", "Up"), lambda items: has_bounds(items[0], 120, 111, 320, 231)),
        (("ctrl+s",), lambda items: has_bounds(items[0], *moved)),
        (("Escape",), lambda items: has_bounds(items[0], *RECT)),
    )
    with Editor([BOX]) as window:
        for keys, expected in cases:
            window.click(window.at(200, 160))
            for start, way in (((200, 160), (220, 170)), ((300, 160), (320, 160))):
                moving = start == (200, 160)
                window.drag([window.at(*start), window.at(*way)], release=False)
                window.key(*keys)
                window.desktop.input("mousemove", *window.at(*after), "mousemove", *window.at(after[0] + 5, after[1]),
                                     "sleep", "0.05", "mouseup", 1)
                window.expect(f"{keys} during a drag of {start}", lambda items: not moving or expected(items))
                for _ in range(4):
                    window.key("ctrl+z")
                window.expect("all undone", lambda items: len(items) == 1 and has_bounds(items[0], *RECT))


@scenario
def menus_give_the_keys_back():
    with Editor([BOX], (200, 160)) as window:
        window.key("alt+e")
        window.find_text("Duplicate", (0, 20, 420, 330))
        window.key("Escape")
        window.settle()  # what is typed before a menu is gone is the menu's
        window.key("Right")
        window.expect("moved by a key after a menu was left", lambda items: has_bounds(items[0], 101, 100, 301, 220))
        window.key("alt+e")
        window.find_text("Duplicate", (0, 20, 420, 330))
        window.key("d")
        window.settle()
        window.expect("a duplicate", lambda items: len(items) == 2 and has_bounds(items[1], 111, 90, 311, 210))


@scenario
def layers():
    with Editor([BOX]) as window:
        window.key("ctrl+shift+n")
        choose_rectangle_tool(window)
        window.drag([window.at(400, 300), window.at(460, 240)])
        window.expect("a rectangle", lambda items: len(items) == 2)
        assert [len(layer["objects"]) for layer in window.layers()] == [1, 1]
        # The wheel over a field without the focus scrolls the panels, and changes nothing.
        x0, y0, x1, y1 = place_of_the_first_layer(window)
        window.click((x1 - 72, (y0 + y1) // 2))
        window.expect("one layer locked", lambda _: [layer["locked"] for layer in window.layers()] == [True, False])
        for place in ((430, 270), (200, 160)):
            window.click(window.at(*place))
            window.key("Delete")
        items = window.expect("only what is on the other layer gone", lambda items: len(items) == 1)
        assert has_bounds(items[0], 100, 100, 300, 220)


@scenario
def change_brush_style():
    with Editor([BOX], (200, 160)) as window:
        panel = (920, 0, 1180, 760)
        scroll_panels(window)
        solid = window.find_text("Solid", panel)  # the upper one, of the brush
        window.click((solid[0] + 5, solid[1] + 5))
        choice = window.find_text("Linear Gradient")
        window.click((choice[0] + 5, choice[1] + 5))
        window.find_text("Color 2", panel)  # keys go to the pop-up until it is closed
        window.expect("a gradient", lambda items: items[0]["properties"]["Brush"]["Style"] == "LinearGradient")
        # In the middle of the shape the picture is neither of the two colors, at its sides nearly each of them.
        move_pointer_away()
        wait_for("three colors", lambda: len(
            {DESKTOP.picture().pixel(*window.at(x, 140))[0] // 16 for x in (104, 200, 296)}) == 3)
        window.key("ctrl+z")
        window.expect("undone", lambda items: items[0]["properties"]["Brush"]["Style"] == "Solid")


@scenario
def style_from_one_to_another():
    red = [*TWO[1], "--set", "Brush.Color=(200;30;30;255)", "--set", "Pen.Size=5"]
    with Editor([TWO[0], red], (300, 100)) as window:
        field = object_field(window, "Width")
        x0, y0, x1, y1 = window.find_text("Opacity", (920, 0, 1180, 400))
        window.click((field[0], (y0 + y1) // 2))
        window.key("ctrl+a")
        window.type("40")
        window.key("Return")
        window.click(window.at(550, 30))
        window.key("r")
        window.drag([window.at(400, 300), window.at(500, 250)])
        window.expect("a new one as faint", lambda items: len(items) == 3 and items[2]["opacity"] == 40)
        window.key("ctrl+z")
        window.click(window.at(300, 100))
        window.key("ctrl+alt+c")
        window.click(window.at(100, 100))
        window.key("ctrl+alt+v")
        window.expect("brush and pen of the other", lambda items: items[0]["properties"]["Brush"]["Color"] ==
                      "(200;030;030;255)" and items[0]["properties"]["Pen"]["Size"] == 5 and items[0]["opacity"] == 40)
        window.key("ctrl+z")
        window.expect("one step back", lambda items: items[0]["properties"]["Pen"]["Size"] == 1 and
                      items[0].get("opacity", 100) == 100)


@scenario
def close_reopen_export():
    with Editor([BOX], (200, 160)) as window:
        window.key("Up")
        window.expect("a change", lambda items: has_bounds(items[0], 100, 101, 300, 221))
        window.key("ctrl+w")
        assert window.ended() == 0
        window.start()
        window.focus(window.main)
        window.calibrate()
        move_pointer_away()
        # What was saved is drawn at its place: ink in the middle, paper beside.
        middle, beside = window.at(200, 161), window.at(96, 161)
        for place, color in ((middle, (70, 130, 180)), (beside, window.PAPER)):
            wait_for(f"{color} at {place}", lambda: DESKTOP.picture().pixel(*place) == color)
        picture = window.folder / "exported.png"
        window.key("ctrl+e")
        first = window.focus_newest()
        window.find_text("Quality")
        window.key("alt+e")
        chooser = wait_for("a file dialog", lambda: [w for w in DESKTOP.windows(window.process.pid)
                                                     if w not in (first, window.main)])[-1]
        window.focus(chooser)
        window.find_text("Cancel")
        window.key("ctrl+a")
        window.type(picture)
        window.key("alt+s")
        wait_for("the picture", picture.exists)
        size = subprocess.run(["identify", "-format", "%w %h", picture], stdout=subprocess.PIPE, check=True).stdout
        assert size == b"600 400", size
        window.find_text("Exported", (0, 0, 920, 120))


def choose_file(window, keys, path, known=(), accept="alt+s"):
    """Gives a file dialog, which the keys bring up, a path."""
    before = {window.main, *known}
    window.key(*keys)
    chooser = wait_for("a file dialog", lambda: [w for w in DESKTOP.windows(window.process.pid) if w not in before])[-1]
    window.focus(chooser)
    window.find_text("Cancel")
    window.key("ctrl+a")
    window.type(path)
    window.key(accept)
    wait_for("the file dialog gone", lambda: chooser not in DESKTOP.windows(window.process.pid))


@scenario
def save_as_asks_and_adds_the_ending():
    with Editor([BOX], (200, 160)) as window:
        folder = window.path.parent
        taken = folder / "plan-v1.2.akd"
        taken.write_bytes(b"mine")
        choose_file(window, ["ctrl+shift+s"], folder / "plan-v1.2")
        window.focus_newest()
        window.find_text("is there already")
        window.key("Escape")
        wait_for("the question gone", lambda: DESKTOP.windows(window.process.pid) == [window.main])
        assert taken.read_bytes() == b"mine" and not (folder / "plan-v1.2").exists()
        window.focus(window.main)
        choose_file(window, ["ctrl+shift+s"], "plan-v1.2")  # the dialog begins beside the document
        window.focus_newest()
        window.find_text("is there already")
        window.key("alt+r")
        wait_for("the new name", lambda: "plan-v1.2.akd" in window.title())
        assert len(json.loads(window.objecthost("list", "--json", taken))["layers"][0]["objects"]) == 1

        picture = folder / "plan.png"
        picture.write_bytes(b"mine")
        window.focus(window.main)
        for answer in ("Escape", "alt+r"):
            if not [w for w in DESKTOP.windows(window.process.pid) if w != window.main]:
                window.key("ctrl+e")
            dialog = window.focus_newest()
            window.find_text("Quality")
            choose_file(window, ["alt+e"], "plan", [dialog])
            question = wait_for("a question", lambda: [w for w in DESKTOP.windows(window.process.pid)
                                                       if w not in (window.main, dialog)])[-1]
            window.focus(question)
            window.find_text("is there already")
            assert picture.read_bytes() == b"mine" and not (folder / "plan").exists()
            window.key(answer)
            wait_for("the question gone", lambda: question not in DESKTOP.windows(window.process.pid))
        wait_for("the picture", lambda: picture.read_bytes()[1:4] == b"PNG")


@scenario
def one_field_of_several():
    second = TWO[1] + ("--set", "Pen.Size=3", "--set", "Pen.Brush.Color=(200;000;000;255)", "--set",
                       "Brush.Style=LinearGradient", "--set", "Brush.Color=(001;002;003;255)")
    with Editor([TWO[0] + ("--set", "Pen.Size=8"), second]) as window:
        before = window.read()
        window.key("ctrl+a")
        move_pointer_away()
        window.settle()
        panel = (920, 0, 1180, 760)
        scroll_panels(window)
        mixed = window.find_text("Mixed", (920, window.find_text("Brush", panel)[1], 1180, 470))
        window.click((mixed[0] + 5, mixed[1] + 5))
        choice = window.find_text("Pattern", (920, 0, 1180, 900))
        window.click((choice[0] + 5, choice[1] + 5))
        window.settle()  # keys go to the pop-up until it is closed
        window.expect("both with a pattern", lambda items: all(
            item["properties"]["Brush"]["Style"] == "Pattern" for item in items))
        scroll_panels(window)
        x0, y0, x1, y1 = window.find_text("Width", (920, window.find_text("Pen", panel)[1], 1180, 760))
        window.click((x1 + 70, (y0 + y1) // 2))
        window.key("ctrl+a")
        window.type("5\n")

        after = window.expect("the width of both pens", lambda items: all(
            item["properties"]["Pen"]["Size"] == 5 for item in items))
        for old, new in zip(before, after):
            assert new["bounds"] == old["bounds"]
            assert new["properties"]["Pen"] == {**old["properties"]["Pen"], "Size": 5}, (old, new)
            assert new["properties"]["Brush"]["Color"] == old["properties"]["Brush"]["Color"], (old, new)


@scenario
def unsaved_changes_question():
    with Editor([BOX], (200, 160)) as window:
        window.key("Right")
        wait_for("a change", lambda: window.title().startswith("•"))
        window.key("ctrl+w")
        window.focus_newest()
        window.find_text("Save the changes of")
        window.key("Escape")
        wait_for("the question gone", lambda: DESKTOP.windows(window.process.pid) == [window.main])
        assert window.process.poll() is None and window.title().startswith("•")
        window.focus(window.main)
        window.key("ctrl+w")
        window.focus_newest()
        window.key("alt+d")
        assert window.ended() == 0
        assert has_bounds(window.read()[0], 100, 100, 300, 220)
        window.start()
        window.focus(window.main)
        window.key("ctrl+a", "Right", "ctrl+w")
        window.focus_newest()
        window.find_text("Save the changes of")
        window.key("alt+s")
        assert window.ended() == 0
        assert has_bounds(window.read()[0], 101, 100, 301, 220)


@scenario
def failed_save():
    with Editor([BOX], (200, 160)) as window:
        away = window.folder / "away"
        window.path.parent.rename(away)
        window.key("Right", "ctrl+s")
        window.focus_newest()
        window.find_text("The file is not there any more")
        window.key("alt+r")
        wait_for_words("document was not saved")
        window.focus_newest()
        window.key("Escape")
        wait_for("no question", lambda: DESKTOP.windows(window.process.pid) == [window.main])
        assert window.process.poll() is None and window.title().startswith("•")
        window.focus(window.main)
        window.key("ctrl+s")
        window.focus_newest()
        window.find_text("The file is not there any more")
        window.key("alt+r")
        wait_for_words("document was not saved")
        question = window.focus_newest()
        choose_file(window, ["alt+a"], window.folder / "rescued.akd", [question])
        wait_for("the other place", lambda: "rescued" in window.title() and not window.title().startswith("•"))
        window.path = window.folder / "rescued.akd"
        assert has_bounds(window.read()[0], 101, 100, 301, 220)


@scenario
def recover_after_a_crash():
    with Editor([BOX], (200, 160)) as window:
        window.key("Right")
        kept = window.folder / ".local"
        # Until it is written whole the file has another name.
        wait_for("the changes to be kept aside", lambda: any(kept.rglob("*.akrecover")), 20)
        window.process.kill()
        window.process.wait()
        window.start()
        window.focus_newest()
        window.find_text("Its unsaved changes were kept")
        window.key("alt+r")
        wait_for("the document", lambda: window.title().startswith("•"))
        window.focus(window.main)
        window.expect("what was not saved", lambda items: has_bounds(items[0], 101, 100, 301, 220))


@scenario
def a_bundle_that_crashes():
    """What was not saved is kept before its first call; the next start leaves the bundle out, and its object whole."""
    with Window(DESKTOP, PROGRAMS, start=False) as window:
        plugins = window.folder / "plugins"
        plugins.mkdir()
        faulty = shutil.copy(TEST_BUNDLES / "Faulty.so", plugins)
        window.objecthost("--bundle", faulty, "add", window.path, "tFaulty", *BOX)
        window.objecthost("add", window.path, "stdRect", "--bounds", "400,100,500,200")
        window.environment |= {"OBJECTHOST_PLUGINS": str(plugins), "OBJECTHOST_FAULT": "write-crash"}
        window.start()
        window.focus(window.main)
        window.calibrate()
        window.click(window.at(450, 150))
        window.key("Right")
        wait_for("a change", lambda: window.title().startswith("•"))
        window.click(window.at(200, 160))
        window.key("ctrl+d")
        assert window.ended() in (-signal.SIGSEGV, 1)  # a sanitizer takes the signal
        window.start()
        window.focus_newest()
        window.key("alt+r")
        window.focus(window.main)
        wait_for_words("was at work when the program ended")
        items = window.expect("what was not saved", lambda items: len(items) == 2 and items[1]["bounds"][0] == 401)
        assert has_bounds(items[0], *RECT)
        text = window.objecthost("--bundle", faulty, "list", window.path)
        assert "Faulty" in text, text


@scenario
def ended_by_signals():
    for number in (signal.SIGTERM, signal.SIGHUP):
        with Editor([BOX], (200, 160)) as window:
            window.key("Right")
            wait_for("a change", lambda: window.title().startswith("•"))
            window.process.send_signal(number)
            assert window.ended() == -number
            window.start()
            window.focus_newest()
            window.find_text("Its unsaved changes were kept")
            window.key("alt+r")
            window.focus(window.main)
            window.expect("what was not saved", lambda items: has_bounds(items[0], 101, 100, 301, 220))


@scenario
def a_file_opens_once():
    with Window(DESKTOP, PROGRAMS, [BOX], start=False) as window:
        link = window.folder / "link.akd"
        link.symlink_to(window.path)
        window.command += [str(link)]
        window.start()
        window.settle()
        assert DESKTOP.windows(window.process.pid) == [window.main]
        window.focus(window.main)
        choose_file(window, ["ctrl+o"], link, accept="alt+o")
        wait_for("the first window alone", lambda: DESKTOP.windows(window.process.pid) == [window.main])
        window.settle()
        assert DESKTOP.windows(window.process.pid) == [window.main]
        window.focus(window.main)
        window.key("ctrl+a", "Right")
        window.expect("still edited", lambda items: has_bounds(items[0], 101, 100, 301, 220))


@scenario
def a_file_is_open_in_two_programs():
    with Editor([BOX], (200, 160)) as first:
        with Window(DESKTOP, PROGRAMS, start=False) as second:
            second.command, second.environment = first.command, first.environment
            second.start()
            wait_for_words("open in another program")
            second.process.kill()  # leaves nothing behind
            second.process.wait()
        first.focus(first.main)
        first.key("ctrl+w")
        assert first.ended() == 0
        first.start()
        first.settle()
        assert not any("another program" in text for text, _ in DESKTOP.picture().texts())
        first.process.kill()


@scenario
def clipboard_of_the_desktop():
    own = "application/x-objecthost-document"

    def offered(kind, path=None):
        bytes = subprocess.run(["xclip", "-selection", "clipboard", "-o", "-t", kind], env=DESKTOP.environment,
                               stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, timeout=30).stdout
        return path.write_bytes(bytes) if path else bytes.decode()

    def offer(kind, file):
        owner = subprocess.Popen(["xclip", "-quiet", "-selection", "clipboard", "-i", "-t", kind, file],
                                 env=DESKTOP.environment, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        owners.callback(owner.wait)
        owners.callback(owner.terminate)
        wait_for("the offer", lambda: kind in offered("TARGETS"))

    with contextlib.ExitStack() as owners, \
            Editor([BOX, ("--bounds", "300,300,400,350")], (200, 160)) as first:
        first.key("ctrl+c")
        wait_for("an offer", lambda: own in offered("TARGETS"))
        first.key("Delete")  # what was copied stays what it was
        # Readers of others see the one rectangle, with its outline.
        shown = {}
        for kind, ending in (("image/png", "png"), ("image/svg+xml", "svg"), ("application/pdf", "pdf")):
            file = first.folder / f"offered.{ending}"
            offered(kind, file)
            seen = first.folder / f"seen-{ending}.png"
            command = {"png": ["convert", file, seen], "svg": ["rsvg-convert", "-o", seen, file],
                       "pdf": ["pdftoppm", "-png", "-r", "72", "-singlefile", file, seen.with_suffix("")]}[ending]
            subprocess.run(command, check=True)
            shown[ending] = subprocess.run(["identify", "-format", "%w %h", seen], stdout=subprocess.PIPE,
                                           text=True).stdout
        sizes = {tuple(map(int, size.split())) for size in shown.values()}
        assert all(201 <= w <= 270 and 121 <= h <= 162 for w, h in sizes), shown
        offered(own, first.folder / "offered.akd")
        assert first.objecthost("list", first.folder / "offered.akd").count("stdRect") == 1
        with Editor(select=(590, 390)) as second:
            def paste(key):
                """What comes after the document was saved is seen in its title."""
                second.save()
                second.key(key)
                wait_for("what is pasted", lambda: second.title().startswith("•"))

            paste("ctrl+shift+v")
            second.expect("an object of another program", lambda items: len(items) == 1 and has_bounds(items[0], *RECT))
            second.key("ctrl+z")
            offer("image/png", IMAGES / "rgb8.png")
            paste("ctrl+v")
            second.expect("a picture", lambda items: len(items) == 1 and
                          items[0]["properties"].get("Bytes") == (IMAGES / "rgb8.png").stat().st_size)
            drawing = second.folder / "drawing.svg"
            drawing.write_text('<svg xmlns="http://www.w3.org/2000/svg" width="60pt" height="40pt" viewBox="0 0 60 40">'
                               '<rect x="10" width="20" height="10" fill="red"/><circle r="3"/></svg>')
            offer("image/svg+xml", drawing)
            paste("ctrl+shift+v")
            wait_for_words("1 of 2 elements")
            second.expect("a rectangle", lambda items: len(items) == 2 and
                          has_bounds(items[1], 10, 390, 30, 400, tolerance=1e-3))
            words = second.folder / "words.png"
            words.write_text("words")
            offer("image/png", words)
            second.key("ctrl+v")
            wait_for_words("no PNG")
            second.expect("nothing new", lambda items: len(items) == 2)


@scenario
def found_imported_and_exported_alone():
    red = ("--set", "Brush.Color=(255;0;0;255)")
    with Editor([("--bounds", "50,50,150,150"), ("--bounds", "250,50,350,150", *red)]) as window:
        window.key("ctrl+f")
        window.focus_newest()
        window.find_text("Outline")
        window.key("Tab", "Tab", "Tab")
        window.type("red")
        window.find_text("Found: 1")
        window.key("Escape")
        wait_for("the dialog gone", lambda: DESKTOP.windows(window.process.pid) == [window.main])
        window.focus(window.main)
        # The selection alone, at twice its size.
        picture = window.folder / "alone.png"
        window.key("ctrl+e")
        dialog = window.focus_newest()
        window.find_text("Dots per inch")
        def press(label, aside):
            box = window.find_text(label, (0, 0, 320, 330))
            window.click((box[0] + aside, (box[1] + box[3]) // 2))
        press("Area", 150)
        window.find_text("Drawing", (0, 0, 320, 330))
        window.key("Down", "Down", "Return")
        wait_for("the choice made", lambda: "Drawing" not in str(DESKTOP.picture().texts((0, 0, 320, 330))))
        press("Scale", 120)
        window.key("ctrl+a")
        window.type("2")
        window.key("Return")
        window.find_text("202", (0, 0, 320, 330))
        choose_file(window, ["alt+e"], picture, [dialog])
        wait_for("the picture", picture.exists)
        size = subprocess.run(["identify", "-format", "%w %h", picture], stdout=subprocess.PIPE, check=True).stdout
        assert size == b"202 202", size
        window.focus(window.main)
        window.key("Delete")
        window.expect("one left", lambda items: len(items) == 1 and has_bounds(items[0], 50, 50, 150, 150))
        choose_file(window, ["ctrl+i"], picture, accept="alt+o")
        window.expect("the picture as an object", lambda items: len(items) == 2 and
                      items[1]["class"] == "stdPict" and items[1]["bounds"][2] - items[1]["bounds"][0] == 202)


DRAG_SOURCE = '''
import gi, sys
gi.require_version("Gtk", "4.0")
gi.require_version("Gdk", "4.0")
from gi.repository import Gdk, Gio, GObject, Gtk
def show(program):
    files = Gdk.FileList.new_from_list([Gio.File.new_for_path(path) for path in sys.argv[1:]])
    source = Gtk.DragSource(actions=Gdk.DragAction.COPY)
    source.set_content(Gdk.ContentProvider.new_for_value(GObject.Value(Gdk.FileList, files)))
    window = Gtk.ApplicationWindow(application=program, default_width=150, default_height=150)
    window.add_controller(source)
    window.present()
program = Gtk.Application(flags=Gio.ApplicationFlags.NON_UNIQUE)
program.connect("activate", show)
program.run()'''


@scenario
def files_dropped_from_another_program():
    """A picture where it is dropped; a document in a window of its own; what is no file that it knows is said."""
    with Editor([BOX]) as window:
        def drop(path, place):
            source = subprocess.Popen(["/usr/bin/python3", "-c", DRAG_SOURCE, path], env=window.environment)
            try:
                other = wait_for("the other program", lambda: DESKTOP.windows(source.pid))[0]
                DESKTOP.input("windowmove", "--sync", other, 1220, 20)
                window.settle()
                window.drag([(1290, 90), (1270, 120), (900, 300), place, (place[0] + 2, place[1])], rest=0.3)
                window.settle()
            finally:
                source.kill()
                source.wait()
        drop(IMAGES / "rgb8.png", window.at(448, 300))
        window.expect("a picture at the pointer", lambda items: len(items) == 2 and items[1]["class"] == "stdPict" and
                      has_bounds(items[1], 440.5, 293.5, 459.5, 306.5, tolerance=3))
        words = window.folder / "words.png"
        words.write_text("words")
        drop(words, window.at(448, 300))
        wait_for_words("is no PNG, JPEG, TIFF or SVG")
        drop(document("dropped", ["add stdRect --bounds 0,0,50,50"]), window.at(448, 300))
        wait_for("a second window", lambda: len(DESKTOP.windows(window.process.pid)) == 2)


@scenario
def guides_by_the_keyboard():
    with Editor([BOX], (200, 160)) as window:
        def guides():
            window.save()
            page = json.loads(window.objecthost("list", "--json", window.path))["page"]
            return page["verticalGuides"], page["horizontalGuides"]

        def expect(what, vertical, horizontal):
            wait_for(what, lambda: all(len(seen) == len(wanted) and all(map(near, seen, wanted))
                                       for seen, wanted in zip(guides(), (vertical, horizontal))))
        window.key("ctrl+alt+k")
        expect("one through the middle of the selection", [200], [])
        window.key("Right", "shift+Right", "alt+Left", "Up")
        expect("moved by keys", [210.9], [])
        window.key("ctrl+z")
        expect("back in one step", [200], [])
        window.key("ctrl+alt+n", "Return")
        window.find_text("Vertical Guide")
        window.type("2 in - 4")
        window.key("Return")
        expect("where it was typed", [140], [])
        window.key("shift+Left")
        expect("the keys with the canvas again", [130], [])
        window.key("ctrl+alt+j")
        wait_for("another one", lambda: len(guides()[1]) == 1)
        middle = guides()[1]
        window.key("Tab", "Delete", "Right")
        expect("the other one gone", [], middle)


@scenario
def printed_as_exported():
    viewer = """#!/bin/sh
cp "$1" "$HOME/seen.pdf.new" && mv "$HOME/seen.pdf.new" "$HOME/seen.pdf"
"""
    gradient = ("--bounds", "100,100,300,220", "--angle", "20", "--set", "Brush.Style=LinearGradient", "--set",
                "Brush.Color2=(255;255;0;255)")
    with Editor([gradient]) as window:
        script = window.folder / "viewer.sh"
        script.write_text(viewer)
        script.chmod(0o755)
        places = window.folder / ".local" / "share" / "applications"
        places.mkdir(parents=True)
        (places / "viewer.desktop").write_text(f"[Desktop Entry]\nType=Application\nName=Viewer\nExec={script} %f\n"
                                               "MimeType=application/pdf;\n")
        (places / "mimeapps.list").write_text("[Default Applications]\napplication/pdf=viewer.desktop\n")
        exported = window.folder / "page.pdf"
        window.objecthost("export", window.path, exported)

        def pixels_of(pdf):
            subprocess.run(["pdftoppm", "-r", "72", "-png", "-singlefile", pdf, pdf.with_suffix("")], check=True)
            return pdf.with_suffix(".png")
        window.key("ctrl+shift+p")
        seen = window.folder / "seen.pdf"
        wait_for("the preview", seen.exists)
        far = subprocess.run(["compare", "-metric", "AE", "-fuzz", "10%", pixels_of(seen), pixels_of(exported), "null:"],
                             stderr=subprocess.PIPE, text=True).stderr
        assert far == "0", far  # but for the edges, which lie between two pixels
        images = subprocess.run(["pdfimages", "-list", seen], stdout=subprocess.PIPE, text=True, check=True).stdout
        assert len(images.splitlines()) == 2, images  # a head of two lines, and no picture: all of it is vectors
        window.key("ctrl+p")
        window.focus_newest()
        window.find_text("Print to File")
        window.key("Escape")
        wait_for("the dialog gone", lambda: DESKTOP.windows(window.process.pid) == [window.main])
        # Another sheet, kept for pages of this size and the next program.
        window.focus(window.main)
        window.key("ctrl+shift+e")
        dialog = window.focus_newest()
        click_text(window, "Landscape", (0, 0, 500, 400))
        click_text(window, "Apply", (0, 0, 500, 400))
        wait_for("the choice made", lambda: dialog not in DESKTOP.windows(window.process.pid))
        kept = window.folder / ".config" / "objecthost" / "print.ini"
        wait_for("the sheet kept", lambda: kept.exists() and "[Sheet 600 400]" in kept.read_text())
        seen.unlink()
        window.focus(window.main)
        window.key("ctrl+shift+p")
        wait_for("the preview", seen.exists)
        told = subprocess.run(["pdfinfo", seen], stdout=subprocess.PIPE, text=True, check=True).stdout
        size, turn = (re.search(f"Page {name}: +(.*)", told)[1] for name in ("size", "rot"))
        assert ("600 x 400" in size) == (turn in ("90", "270")), told  # upright, one way or the other


@scenario
def one_program_for_all_windows():
    with Bus(DESKTOP) as bus, Window(DESKTOP, PROGRAMS, [BOX], start=False) as window:
        window.environment["DBUS_SESSION_BUS_ADDRESS"] = bus.environment["DBUS_SESSION_BUS_ADDRESS"]
        window.start()
        other = document("other", ["add stdRect --bounds 0,0,50,50"])

        def again(*files):
            """A program that hands on what it is given."""
            assert subprocess.run([window.command[0], *files], env=window.environment, timeout=60).returncode == 0
            return DESKTOP.windows(window.process.pid)
        again(other)
        second = wait_for("another window", lambda: [w for w in DESKTOP.windows(window.process.pid)
                                                     if w != window.main])[0]
        wait_for("its document", lambda: "other.akd" in DESKTOP.title(second))
        again(other)
        again(window.path)
        window.settle()
        assert sorted(DESKTOP.windows(window.process.pid)) == sorted([window.main, second])
        for shown in (window.main, second):
            window.focus(shown)
            window.key("ctrl+a", "Right")
            wait_for("a change", lambda: DESKTOP.title(shown).startswith("•"))
        window.key("ctrl+z")
        wait_for("its own undo", lambda: not DESKTOP.title(second).startswith("•"))
        assert DESKTOP.title(window.main).startswith("•")
        window.key("ctrl+q")
        wait_for("the saved one closed", lambda: second not in DESKTOP.windows(window.process.pid))
        window.focus_newest()
        window.find_text("before closing")
        window.key("alt+s")
        assert window.ended() == 0
        assert has_bounds(window.read()[0], 101, 100, 301, 220)


@scenario
def what_screen_readers_hear():
    heard = '''
import pyatspi, re
def tell(part, around=""):
    state, role = part.getState(), part.getRoleName()
    if state.contains(pyatspi.STATE_FOCUSABLE) and state.contains(pyatspi.STATE_SHOWING) and re.match("$|(gtkmm__)?Gtk|None$", part.name):
        print("nameless", role, around, sep="|")
    if role in ("spin button", "image", "push button", "check box", "list item", "combo box", "menu item"):
        print(part.name, state.contains(pyatspi.STATE_INVALID), part.description, sep="|")
    for child in part:
        tell(child, around + "/" + part.name)
tell(pyatspi.Registry.getDesktop(0))'''
    gradient = [*BOX, "--set", "Brush.Style=RadialGradient"]
    settings = pathlib.Path(DESKTOP.folder) / "open" / "objecthost"
    settings.mkdir(parents=True)
    (settings / "window.ini").write_text("[Window]\nClosedPanels=\n")  # all there is
    with Bus(DESKTOP) as bus, Editor([gradient], (200, 160), XDG_CONFIG_HOME=str(settings.parent), **bus.told()) as window:
        def field(expected):
            def look():
                look.seen = bus.run("/usr/bin/python3", "-c", heard)
                return expected in look.seen.splitlines()
            try:
                wait_for(expected, look, 10)
            except Failure as error:
                raise Failure(f"{error}, but {look.seen}") from None
            nameless = [line for line in look.seen.splitlines() if line.startswith("nameless")]
            assert not nameless, nameless
        field("Drawing|False|Rectangle: 100.0, 100.0, 200.0 × 120.0")
        for name in ("Rectangle|False|Rectangle (R; a double click or Shift+R keeps it)", "Undo (Ctrl+Z)|False|Undo (Ctrl+Z)",
                     "Layer 1|False|", "Opened|False|", "Nib Angle|False|", "Paper|False|", "Arrange|False|"):
            field(name)
        window.key("Return", "Tab")
        field("Drawing|False|Rectangle: 100.0, 100.0, 200.0 × 120.0; Lower Left Corner")
        window.key("Escape", "ctrl+a", "Delete")
        field("Drawing|False|Choose a tool on the left and drag across the page, or press Insert.")
        window.key("ctrl+z")
        field("Width|False|")
        window.click(object_field(window, "Width"))
        window.key("ctrl+a")
        window.type("8o.5")
        window.key("Return")
        field("Width|True|“8o.5” is no length. Write a number or a sum, such as 20 mm + 5. Escape brings back the old value.")
        window.key("Escape")
        field("Width|False|")


@scenario
def the_window_comes_back_as_it_was():
    with Editor([BOX]) as window:
        DESKTOP.input("windowsize", "--sync", window.main, 1100, 700)
        window.settle()
        title = window.find_text("Object", (840, 20, 1100, 700))
        window.click((title[0] + 10, (title[1] + title[3]) // 2))
        window.key("ctrl+alt+g", "ctrl+r", "ctrl+alt+shift+g", "alt+v")
        window.settle()
        window.key("d")

        def seen():
            move_pointer_away()
            window.focus(window.main)
            window.key("Escape", "ctrl+0")
            window.settle()
            return DESKTOP.picture()

        def same(one, other):
            """Left out are the status line and the panels' scroll bar, which comes and fades."""
            return all(one.row(y, 0, 1088) == other.row(y, 0, 1088) for y in range(660))
        before = seen()
        window.key("ctrl+w")
        assert window.ended() == 0
        for damaged in (False, True):
            settings = window.folder / ".config" / "objecthost" / "window.ini"
            if damaged:
                settings.write_bytes(b"[Window]\nWidth=99999999999\nHeight=-1\nDark=perhaps\n\xff\0[[")
            window.start()
            assert same(before, seen()) != damaged, settings.read_bytes()
            window.key("ctrl+w")
            assert window.ended() == 0 and not window.output(), window.output()


def keys_of_the_menus():
    """All keys in the table of the menus, as xdotool calls them."""
    source = pathlib.Path(__file__).resolve().parents[2] / "host" / "window" / "Menus.cpp"
    keys = re.findall(r'"((?:<[A-Z]\w+>)+\w+|F1|Delete)"', source.read_text())
    return {re.sub("<(.*?)>", lambda part: part[1][0].lower() + part[1][1:] + "+", key).replace("control", "ctrl")
            for key in keys}


@scenario
def below_beside_and_in_the_menu():
    stack = [("--bounds", "100,100,300,220"), ("--bounds", "120,100,320,220"), ("--bounds", "140,100,340,220"),
             ("--bounds", "560,360,580,380")]
    with Editor(stack) as window:
        def moves(what, *expected):
            window.key("Up")
            window.expect(what, lambda items: [item["bounds"][1] % 20 for item in items] == list(expected))
            window.key("ctrl+z")

        place = window.at(220, 160)
        for what, modifier, expected in (("the front", "alt", (0, 0, 1, 0)), ("below it", "alt", (0, 1, 0, 0)),
                                         ("at the back", "alt", (1, 0, 0, 0)), ("the front again", "alt", (0, 0, 1, 0))):
            window.click(place, modifier)
            moves(what, *expected)
        window.key("ctrl+b")
        moves("below by the key", 0, 1, 0, 0)
        # What the pointer is over, and each of several that are selected, has an outline.
        edge = window.at(300, 150)
        seen = [DESKTOP.picture().pixel(*edge)]
        DESKTOP.input("mousemove", *window.at(110, 160))
        wait_for("an outline at the pointer", lambda: DESKTOP.picture().pixel(*edge) != seen[0])
        window.key("ctrl+a")
        move_pointer_away()
        for corner in ((100, 220), (560, 370)):
            wait_for("an outline in the frame", lambda: DESKTOP.picture().pixel(*window.at(*corner))[2] > 150)
        # The menu is about what the button was pressed on; the keys are the canvas's again after it.
        window.key("Escape")
        DESKTOP.input("mousemove", *window.at(110, 160), "click", 3)
        window.find_text("Fit Selection")  # the last one, on low screens too
        x0, y0, x1, y1 = window.find_text("Bring to Front")
        window.click(((x0 + x1) // 2, (y0 + y1) // 2))
        window.expect("the hindmost in front", lambda items: items[3]["bounds"][0] == 100)
        moves("the same by the keys", 0, 0, 0, 1)
        window.key("shift+F10")
        window.find_text("Send to Back")
        window.key("Escape", "shift+Tab", "shift+Page_Up")
        moves("previous ones", 0, 1, 1, 0)
        window.key("ctrl+1", "Escape", "Tab", "ctrl+2", "Tab", "Tab")
        moves("the one that comes into sight", 0, 0, 1, 0)
        move_pointer_away()
        wait_for("its handle", lambda: DESKTOP.picture().find(AMBER, (0, 0, window.left + 690, window.bottom + 120)))


@scenario
def groups_locks_and_what_is_hidden():
    three = TWO + [("--bounds", "450,50,550,150")]
    with Editor(three) as window:
        def marks(what, condition):
            window.expect(what, lambda items: condition([item["groups"] for item in items],
                                                        [item["locked"] for item in items],
                                                        [item["hidden"] for item in items]))

        def moves(what, *expected):
            window.key("Up")
            window.expect(what, lambda items: [item["bounds"][1] - 50 for item in items] == list(expected))
            window.key("ctrl+z")

        window.click(window.at(100, 100))
        window.click(window.at(300, 100), "shift")
        window.key("ctrl+g")
        marks("a group", lambda groups, *_: groups == [[0], [0], []])
        window.key("Escape")
        window.click(window.at(300, 100))
        moves("all of it by a click", 1, 1, 0)
        DESKTOP.input("mousemove", *window.at(300, 100), "click", "--repeat", 2, "--delay", 60, 1)
        moves("one after a double click", 0, 1, 0)
        window.key("Escape")
        moves("the group that was left", 1, 1, 0)
        window.key("Tab")
        moves("what comes after the group", 0, 0, 1)
        window.key("ctrl+l")
        marks("one locked", lambda _, locked, hidden: locked == [False, False, True] and not any(hidden))
        window.click(window.at(500, 100))
        window.key("ctrl+a", "ctrl+h")
        marks("the others hidden", lambda _, locked, hidden: hidden == [True, True, False])
        paper = window.PAPER
        wait_for("paper in their place", lambda: DESKTOP.picture().pixel(*window.at(100, 100)) == paper)
        window.key("ctrl+shift+l", "ctrl+shift+h")
        marks("all back", lambda groups, locked, hidden: not any(locked) and not any(hidden))
        window.key("ctrl+shift+g")
        marks("no group", lambda groups, *_: groups == [[], [], []])
        for _ in range(5):
            window.key("ctrl+z")
        marks("step by step back", lambda groups, locked, hidden: groups == [[0], [0], []] and not any(locked + hidden))


@scenario
def fits_to_others_and_scrolls_at_the_edge():
    snap_color = (230, 60, 110)
    with Editor(TWO) as window:
        window.drag([window.at(100, 100), window.at(110, 203)], release=False)
        wait_for("a line along what it fits to", lambda: DESKTOP.picture().find(snap_color, canvas(window)))
        window.find_text("60.0, 150.0")
        DESKTOP.input("mouseup", 1)
        window.expect("on the other's upper edge", lambda items: has_bounds(items[0], 60, 150, 160, 250))
        wait_for("no line", lambda: not DESKTOP.picture().find(snap_color, canvas(window)))
        window.drag([window.at(110, 200), window.at(120, 202)], "alt")
        window.expect("let go", lambda items: has_bounds(items[0], 70, 152, 170, 252))
        window.key("ctrl+alt+o")
        window.drag([window.at(110, 200), window.at(100, 199)])
        window.expect("switched off", lambda items: has_bounds(items[0], 60, 151, 160, 251))
        # Beyond the edge the sheet moves under the pointer, and what is dragged goes on.
        window.drag([window.at(110, 200), (1000, window.at(110, 200)[1])], release=False, rest=1.5)
        DESKTOP.input("mouseup", 1)
        items = window.expect("further than the pointer went", lambda items: items[0]["bounds"][0] > 1000)
        assert near(items[0]["bounds"][1], 151, 0.01), items


@scenario
def sizes_places_and_transforms():
    with Editor(TWO) as window:
        def choose(entry):
            move_pointer_away()
            window.key("alt+a")
            x0, y0, x1, y1 = window.find_text(entry, (0, 0, 700, 900))
            window.click(((x0 + x1) // 2, (y0 + y1) // 2))

        window.key("ctrl+alt+o")
        window.click(window.at(300, 100))
        window.click(window.at(100, 100), "shift")
        choose("Match Width")
        window.expect("as wide as the last one", lambda items: has_bounds(items[1], 275, 50, 375, 150))
        choose("Align to the Last Selected")
        choose("Align Left")
        window.expect("at the left of the last one", lambda items: has_bounds(items[1], 50, 50, 150, 150))
        window.key("ctrl+z", "Escape")
        window.drag([window.at(100, 100), window.at(120, 150)])
        window.key("Escape")
        window.click(window.at(300, 100))
        window.key("ctrl+shift+t")
        window.expect("moved like the other one", lambda items: has_bounds(items[1], 295, 100, 395, 200))
        window.key("ctrl+3")
        wait_for("the drawing larger", lambda: not window._find_page())
        # The zoom in a field.
        x0, y0, x1, y1 = window.find_text("%", (1000, 720, 1180, 760))
        window.click((x0 - 25, (y0 + y1) // 2))
        window.key("ctrl+a")
        window.type("100")
        window.key("Return")

        def height():
            box = DESKTOP.picture().find(window.PAPER)
            return box and box[3] - box[1]
        wait_for("the page at 100 %", lambda: height() == window.PAGE[1])


@scenario
def copies_tools_and_styles():
    with Editor([BOX], (200, 160)) as window:
        window.key("ctrl+alt+o", "ctrl+c", "ctrl+v", "ctrl+v", "ctrl+shift+v")
        window.expect("copies aside and in place", lambda items: [item["bounds"][0] for item in items] == [100, 110, 120, 100])
        DESKTOP.input("mousemove", *window.at(400, 300))
        window.key("ctrl+alt+p")
        window.expect("one at the pointer", lambda items: has_bounds(items[4], 300, 240, 500, 360))
        window.drag([window.at(400, 300), window.at(420, 310)], "ctrl")
        window.expect("a copy by the pointer", lambda items: len(items) == 6 and has_bounds(items[4], 300, 240, 500, 360)
                      and has_bounds(items[5], 320, 250, 520, 370))
        window.key("ctrl+a", "Delete")
        # The tool by its key: for one object, or until it is given up; with what was set last.
        window.key("r")
        window.drag([window.at(60, 300), window.at(160, 250)])
        window.click(object_field(window, "Width"))
        scroll_panels(window)
        row = window.find_text("Measure", (920, 0, 1180, 760))
        window.click((row[2] + 80, row[1] - 30))  # the width of the pen
        window.key("ctrl+a")
        window.type("7")
        window.key("Return")
        window.expect("a wide pen", lambda items: items[0]["properties"]["Pen"]["Size"] == 7)
        window.click(window.at(550, 30))
        window.key("shift+r")
        for x in (200, 400):
            window.drag([window.at(x, 300), window.at(x + 100, 250)])
        window.key("Escape")
        window.drag([window.at(250, 270), window.at(250, 170)])
        window.expect("two with that pen, the last tool given up", lambda items: len(items) == 3 and
                      [item["properties"]["Pen"]["Size"] for item in items] == [7, 7, 7] and has_bounds(items[1], 200, 150, 300, 200))


@scenario
def the_page_by_its_panel():
    with Editor([BOX]) as window:
        def size():
            window.save()
            page = json.loads(window.objecthost("list", "--json", window.path))["page"]
            return round(page["width"], 3), round(page["height"], 3)

        scroll_panels(window)
        x0, y0, x1, y1 = window.find_text("Page", (920, 0, 1180, 760))
        window.click(((x0 + x1) // 2, (y0 + y1) // 2))
        window.settle()
        scroll_panels(window)
        x0, y0, x1, y1 = window.find_text("Fit to Drawing", (920, 0, 1180, 760))
        window.click(((x0 + x1) // 2, (y0 + y1) // 2))
        wait_for("the page as large as the drawing", lambda: size() == (200, 120))
        x0, y0, x1, y1 = window.find_text("Landscape", (920, 0, 1180, 760))
        window.click(((x0 + x1) // 2, (y0 + y1) // 2))
        window.key("Up", "Return")
        window.settle()
        wait_for("the page upright", lambda: size() == (120, 200))
        window.key("ctrl+z", "ctrl+z")
        wait_for("both undone", lambda: size() == (600, 400))


@scenario
def looks_guides_and_units():
    with Editor([BOX], (200, 160)) as window:
        def page():
            window.save()
            return json.loads(window.objecthost("list", "--json", window.path))["page"]

        def enter(field, text):
            window.click(field)
            window.key("ctrl+a")
            window.type(text, 100)
            window.key("Return")

        def field(name):
            x0, y0, x1, y1 = window.find_text(name, (920, 0, 1180, 400))
            return object_field(window, "Width")[0], (y0 + y1) // 2
        enter(field("Opacity"), "40")
        window.expect("faint", lambda items: items[0]["opacity"] == 40)
        enter(field("Radius"), "15")
        window.expect("a radius", lambda items: near(rounding(items[0]), 0.25, 1e-6))
        window.click(window.at(200, 160))
        window.key("h")
        window.expect("mirrored", lambda items: items[0]["flippedHorizontally"])
        window.key("v", "h")
        window.expect("the other way", lambda items: items[0]["flippedVertically"]
                      and not items[0]["flippedHorizontally"])
        ruler = within(window, 300, 72)
        window.drag([ruler, window.at(200, 300), window.at(200, 330)])
        wait_for("a guide", lambda: [round(y) for y in page()["horizontalGuides"]] == [330])
        window.drag([window.at(200, 160), window.at(200, 250), window.at(200, 267)])
        window.expect("its edge on the guide", lambda items: near(items[0]["bounds"][3], page()["horizontalGuides"][0]))
        window.click(window.at(500, 330))
        window.key("Delete")
        wait_for("no guide", lambda: page()["horizontalGuides"] == [])
        window.key("ctrl+z")
        wait_for("the guide again", lambda: len(page()["horizontalGuides"]) == 1)
        window.drag([window.at(500, 330), window.at(500, 390), ruler])
        wait_for("put away", lambda: page()["horizontalGuides"] == [])


@scenario
def labels_typed_in_place():
    def has(*texts):
        return lambda items: [item["label"] and item["label"]["text"] for item in items] == list(texts)

    with Editor(TWO, (100, 100)) as window:
        window.key("F2")
        window.type("Zwei", 200)
        window.key("Return")
        window.type("lines", 150)
        window.key("ctrl+Return")
        window.expect("two lines", has("Zwei\nlines", None))
        window.key("ctrl+z")
        window.expect("one step back", has(None, None))
        window.key("ctrl+shift+z", "F2")
        window.type("never", 200)
        window.key("Escape")
        window.expect("given up", has("Zwei\nlines", None))
        x, y = window.at(325, 100)
        DESKTOP.input("mousemove", x, y, "click", "--repeat", 2, "--delay", 80, 1)
        window.type("beside", 250)
        window.key("ctrl+z")  # the text's own
        window.type("below", 150)
        window.click(window.at(560, 300))
        window.expect("kept by a click elsewhere", lambda items: items[1]["label"] and
                      items[1]["label"]["text"].endswith("below") and has("Zwei\nlines", items[1]["label"]["text"])(items))
        window.click(window.at(325, 100))
        window.key("F2")
        window.type("saved while typed", 150)
        window.expect("taken over by saving", has("Zwei\nlines", "saved while typed"))
        window.key("ctrl+a")
        # The panel is open where there is a label.
        scroll_panels(window)
        x0, y0, x1, y1 = window.find_text("Size (pt)", (920, 0, 1180, 760))
        window.click((x1 + 60, (y0 + y1) // 2))
        window.key("ctrl+a")
        window.type("30", 200)
        window.key("Return")
        window.expect("both large", lambda items: [item["label"]["size"] for item in items] == [30, 30])
        window.click(window.at(560, 300))
        window.click(window.at(100, 100))
        window.key("F2")
        window.type("at the end", 200)
        window.key("ctrl+w")
        window.focus_newest()
        window.find_text("Save the changes of")
        window.key("alt+s")
        assert window.ended() == 0
        assert has("at the end", "saved while typed")(window.read()), window.read()


ELSEWHERE = {"F2", "ctrl+alt+k", "ctrl+alt+j", "ctrl+alt+n", "ctrl+shift+e", "ctrl+shift+v", "ctrl+shift+p", "ctrl+alt+p", "ctrl+shift+t", "ctrl+b", "ctrl+g", "ctrl+shift+g", "ctrl+l", "ctrl+shift+l", "ctrl+h", "ctrl+shift+h"}  # keys that other scenarios press


@scenario
def every_shortcut():
    left = keys_of_the_menus() - ELSEWHERE
    three = TWO + [("--bounds", "450,50,550,150")]
    with Editor(three, (100, 100)) as window:
        def press(key):
            left.discard(key)
            window.key(key)

        def order(key, *expected):
            press(key)
            window.expect(f"the order after {key}", lambda items: tuple(i["bounds"][0] for i in items) == expected)

        order("ctrl+bracketright", 250, 50, 450)
        order("ctrl+bracketleft", 50, 250, 450)
        order("ctrl+shift+bracketright", 250, 450, 50)
        order("ctrl+shift+bracketleft", 50, 250, 450)
        subprocess.run(["setxkbmap", "de"], env=DESKTOP.environment, check=True)
        order("ctrl+shift+35", 250, 450, 50)
        order("ctrl+34", 250, 50, 450)
        order("ctrl+shift+34", 50, 250, 450)
        subprocess.run(["setxkbmap", "us"], env=DESKTOP.environment, check=True)

        def count(key, expected):
            press(key)
            window.expect(f"{expected} objects after {key}", lambda items: len(items) == expected)
        for key, expected in (("ctrl+c", 3), ("ctrl+v", 4), ("ctrl+d", 5), ("ctrl+z", 4), ("ctrl+shift+z", 5),
                              ("ctrl+z", 4), ("ctrl+y", 5), ("ctrl+x", 4), ("Delete", 4), ("ctrl+shift+a", 4),
                              ("Delete", 4), ("ctrl+a", 4), ("Delete", 0), ("ctrl+z", 4)):
            count(key, expected)
        window.key("ctrl+shift+a")
        press("ctrl+alt+c")  # of nothing, which stays so: style_from_one_to_another
        press("ctrl+alt+v")
        press("ctrl+shift+n")
        window.expect("a layer", lambda _: len(window.layers()) == 2)

        def paper():
            move_pointer_away()
            box = DESKTOP.picture().find(window.PAPER, (0, 20, 920, 760))
            return box and box[2] - box[0]
        for key, width in (("ctrl+1", 600), ("ctrl+plus", 750), ("ctrl+minus", 600), ("ctrl+equal", 750),
                           ("ctrl+KP_Subtract", 600), ("ctrl+KP_Add", 750)):
            press(key)
            wait_for(f"{width} pixels after {key}", lambda: paper() == width)
        window.key("ctrl+a")
        for key in ("ctrl+3", "ctrl+0", "ctrl+2"):
            before = paper()
            press(key)
            wait_for(f"another zoom after {key}", lambda: paper() not in (before, None))
        settings = window.folder / ".config" / "objecthost" / "window.ini"
        for key, line in (("ctrl+r", "Rulers=false"), ("ctrl+alt+g", "Grid=true"), ("ctrl+alt+shift+g", "Snap=true"),
                          ("ctrl+alt+o", "SnapToObjects=false"), ("ctrl+alt+i", "SnapToGuides=false"),
                          ("ctrl+alt+shift+u", "GuidesLocked=true"), ("ctrl+alt+u", "\nGuides=false"),
                          ("ctrl+alt+s", "Snapping=false")):
            press(key)
            wait_for(line, lambda: settings.exists() and line in settings.read_text())

        def opens(key, close):
            """A window that comes with a key and goes with another."""
            window.focus(window.main)
            press(key)
            window.focus_newest()
            window.settle()
            press(close)
            wait_for(f"what {key} opened to be gone", lambda: DESKTOP.windows(window.process.pid) == [window.main])
        for key, close in (("ctrl+n", "ctrl+w"), ("ctrl+o", "Escape"), ("ctrl+shift+s", "Escape"),
                           ("ctrl+e", "Escape"), ("ctrl+i", "Escape"), ("ctrl+f", "Escape"), ("ctrl+p", "Escape"), ("F1", "Escape"), ("ctrl+question", "Escape")):
            opens(key, close)
        window.focus(window.main)
        press("ctrl+s")
        press("ctrl+q")
        assert window.ended() == 0
        assert not left, left


@scenario
def a_picture_by_the_keyboard_alone():
    """The pointer is outside of the window all the time."""
    gradient = ("--bounds", "20,20,140,120", "--set", "Brush.Style=LinearGradient")
    with Editor() as window:
        move_pointer_away()
        window.find_text("Choose a tool on the left and drag", canvas(window))
        window.key("Insert")
        made = window.expect("one in the middle of the view", lambda items: len(items) == 1 and items[0]["class"] == "stdRect")
        x0, y0, x1, y1 = made[0]["bounds"]
        assert (x1 - x0, y1 - y0) == (100, 100) and abs(x0 - 250) < 30 and abs(y0 - 150) < 30, made
        assert not any("Choose" in text for text, _ in DESKTOP.picture().texts(canvas(window))), "the words stayed"
        window.key("shift+Left", "Up", "ctrl+shift+Right", "ctrl+Down", "ctrl+alt+Right")
        window.expect("moved and sized", lambda items: has_bounds(items[0], x0 - 10, y0 + 1, x0 + 100.1, y0 + 100))
        # The handles: to turn, then the eight from the lower left corner, then the rounding.
        window.key("Return", "Tab", "shift+Left", "Down")
        window.expect("larger at its corner", lambda items: has_bounds(items[0], x0 - 20, y0, x0 + 100.1, y0 + 100))
        window.key("shift+Tab", "shift+Left", "Up", "shift+Tab", "shift+Down")
        window.expect("turned and rounded", lambda items: near(items[0]["angle"], 11) and near(rounding(items[0]), 0.6))
        window.key("ctrl+z", "ctrl+z")
        window.expect("a step each", lambda items: near(items[0]["angle"], 0) and near(rounding(items[0]), 0.5))
        window.key("Escape", "r", "Return", "shift+r", "Return", "Return", "Escape")
        places = [item["bounds"][:2] for item in window.expect("three more", lambda items: len(items) == 4)]
        assert len({tuple(place) for place in places}) == 4, places
        window.key("ctrl+a", "ctrl+g", "Return", "Tab", "Delete", "Escape", "Down")
        window.expect("one of the group gone, the others moved", lambda items: [item["bounds"][1] for item in items] == [
            place[1] - 1 for place in (places[1:] if len(items) == 3 else places)])
    with Editor([gradient]) as window:
        angle = window.read()[0]["properties"]["Brush"]["Angle"]
        window.key("Tab", "ctrl+Return", "shift+Tab", "shift+Tab", "shift+Right", "Right")
        window.expect("the gradient turned", lambda items: near(
            items[0]["properties"]["Brush"]["Angle"] - angle, 11, 1e-4))


@scenario
def toolbar_and_panels():
    with Editor([BOX], (200, 160)) as window:
        def grey():
            """Of undo, zoom out and ungroup."""
            move_pointer_away()
            boxes = [(*within(window, x - 9, 34), *within(window, x + 9, 53)) for x in (20, 112, 705)]
            return [DESKTOP.picture().find((46, 52, 54), box, 30) is None for box in boxes]

        def width():
            box = DESKTOP.picture().find(window.PAPER, (0, 60, 900, 740))
            return box[2] - box[0]
        # Nothing was copied: nobody says so, which would push the page down.
        window.key("ctrl+shift+v", "ctrl+alt+p", "ctrl+v")
        window.settle()
        place = window.left, window.bottom
        assert window._find_page() and (window.left, window.bottom) == place, place
        wait_for("undo and ungroup to be grey", lambda: grey() == [True, False, True])
        window.click(within(window, 240, 43))
        window.expect("at the left side of the page", lambda items: items[0]["bounds"][0] == 0)
        wait_for("undo not to be", lambda: grey() == [False, False, True])
        window.click(within(window, 20, 43))
        window.expect("undone", lambda items: items[0]["bounds"][0] == 100)
        window.click(within(window, 112, 43))
        wait_for("a smaller page", lambda: width() < 500)
        panel = (920, 0, 1180, 760)
        for title in ("Layers", "History", "Brush"):
            window.find_text(title, panel)
        # The border of the panels, and what is closed, are as they were the next time.
        window.key("ctrl+shift+a")
        wait_for("no brush without an object", lambda: not any("Brush" in text for text, _ in DESKTOP.picture().texts(panel)))
        window.drag([within(window, 919, 300), within(window, 850, 300)])
        window.settle()
        x0, y0, x1, y1 = window.find_text("Layers", (840, 300, 1180, 760))
        assert x1 < 920, (x0, x1)
        window.click((x1 - 10, (y0 + y1) // 2))
        window.settle()
        window.focus(window.main)
        window.key("ctrl+s", "ctrl+w")
        assert window.ended() == 0
        window.start()
        window.settle()
        assert abs(window.find_text("Layers", (840, 300, 1180, 760))[2] - x1) < 6
        assert not any("Layer 1" in text for text, _ in DESKTOP.picture().texts((840, 300, 1180, 760)))


@scenario
def keys_and_wheel_of_the_canvas():
    with Editor(TWO) as window:
        window.key("Page_Down", "Up", "Page_Down", "Up", "Up", "Page_Up", "Up")
        window.expect("one after the other", lambda items: [item["bounds"][1] for item in items] == [52, 52])
        start, aside = window.at(100, 100), window.at(150, 130)
        DESKTOP.input("mousemove", *start, "mousedown", 1, "mousemove", *window.at(120, 110), "mousemove", *aside)
        window.key("Escape")
        DESKTOP.input("mouseup", 1)
        window.expect("a drag given up", lambda items: has_bounds(items[0], 50, 52, 150, 152))
        window.key("ctrl+alt+shift+g")
        window.drag([start, window.at(104, 107)], "alt")
        window.expect("let go of the grid", lambda items: has_bounds(items[0], 54, 59, 154, 159))

        def page():
            move_pointer_away()
            return DESKTOP.picture().find(window.PAPER, canvas(window)) or (0, 0, 0, 0)
        window.settle()
        x0, y0, x1, y1 = page()
        DESKTOP.input("mousemove", *window.at(300, 300), "keydown", "space", "mousedown", 1, "mousemove",
                      *window.at(310, 310), "mousemove", *window.at(330, 320), "mouseup", 1, "keyup", "space")
        wait_for("the page beside", lambda: page()[:2] == (x0 + 30, y0 - 20))
        DESKTOP.input("mousemove", *window.at(330, 320), "mousedown", 2, "mousemove", *window.at(310, 310),
                      "mousemove", *window.at(300, 300), "mouseup", 2)
        wait_for("the page back", lambda: page()[:2] == (x0, y0))
        DESKTOP.input("mousemove", *window.at(300, 200), "keydown", "ctrl", "click", 5, "keyup", "ctrl")
        wait_for("a smaller page about the same middle", lambda: 100 < page()[2] - page()[0] < 590 and near(
            page()[0] + page()[2], x0 + x1, 4))


@scenario
def shortcuts_in_japanese():
    with Editor(LANGUAGE="ja") as window:
        window.key("F1")
        box = DESKTOP.place(window.focus_newest())
        window.settle()
        texts = wait_for("the keys", lambda: [text for text, _ in DESKTOP.picture().texts(box)])
        assert any("Ctrl" in text for text in texts) and "Save" not in texts, texts
        assert not [text for text in texts if re.search(r"[(（]_?[A-Z][)）]|_", text)], texts


@scenario
def broken_files():
    broken = TEST_BUNDLES / "Crashes.so"
    with Window(DESKTOP, PROGRAMS, arguments=["--bundle", broken], start=False) as window:
        window.run()
        assert window.ended() == 1
        assert "Crashes.so" in window.output() and len(window.output().splitlines()) == 1, window.output()
    with Window(DESKTOP, PROGRAMS, start=False) as window:
        plugins = window.folder / "plugins"
        plugins.mkdir()
        shutil.copy(broken, plugins)
        window.environment["OBJECTHOST_PLUGINS"] = str(plugins)
        window.start()
        window.find_text("bundle", (0, 20, 920, 120))
    with Window(DESKTOP, PROGRAMS, start=False) as window:
        whole = window.path.read_bytes()
        for bytes_, message in ((b"no document at all", "is not a document"), (whole[:len(whole) // 2], "is cut short")):
            window.path.write_bytes(bytes_)
            window.start()
            wait_for(message, lambda: message in " ".join(
                text for text, _ in DESKTOP.picture().texts((0, 60, 920, 120))))
            window.process.terminate()
            window.ended()


@scenario
def idle_window():
    with Editor([BOX], (200, 160)) as window:
        def used(seconds):
            before = window.ticks()
            time.sleep(seconds)
            return window.ticks() - before

        wait_for("the start to be over", lambda: used(0.5) == 0)
        assert used(2) <= 2


@scenario
def numbers_with_a_decimal_comma():
    folder = pathlib.Path(DESKTOP.folder) / "locales"
    folder.mkdir()
    # localedef warns, and then exits with 1, on definitions that it takes.
    subprocess.run(["localedef", "--no-archive", "-i", "de_DE", "-f", "UTF-8", folder / "de_DE.UTF-8"],
                   stderr=subprocess.DEVNULL, check=False)
    box = BOX + ("--set", "Rounding=0.123456")
    with Editor([box], (200, 160), LC_ALL="", LANG="C.UTF-8", LC_NUMERIC="de_DE.UTF-8", LOCPATH=str(folder)) as window:
        row = InspectorRow(window)

        def enter(text, end, value):
            window.click(row.field())
            window.key("ctrl+a")
            window.type(text)
            window.key(end)
            window.expect(f"{text} taken for {value}", lambda items: near(rounding(items[0]), value))

        move_pointer_away()
        wait_for("0,12", lambda: "0,12" in str(DESKTOP.picture().texts(row.field_box(), 7)))
        window.click(row.field())
        window.key("Tab")
        window.expect("not rounded by looking at it", lambda items: near(rounding(items[0]), 0.123456))
        enter("0,75", "Return", 0.75)
        enter("0.3", "Tab", 0.3)
        enter("0,45", "ctrl+s", 0.45)
        enter("much", "Return", 0.45)
        enter("7", "Return", 1)
        enter("0,5", "Return", 0.5)
        window.key("Up", "Up")
        window.expect("two steps by keys", lambda items: near(rounding(items[0]), 0.52))
        window.desktop.input("mousemove", *row.field(), "click", 5)
        window.expect("a step back by the wheel", lambda items: near(rounding(items[0]), 0.51))



@scenario
def times_and_texts_in_a_panel():
    bundle = TEST_BUNDLES / "Times.so"
    page = pathlib.Path(DESKTOP.folder) / "times.akd"
    for words in (["new", page, "--size", "%d,%d" % Window.PAGE, "--background", "%d,%d,%d" % Window.PAPER],
                  ["add", page, "tTimed", *BOX]):
        subprocess.run([PROGRAMS / "objecthost", "--bundle", bundle, *words], check=True, stdout=subprocess.DEVNULL,
                       env=DESKTOP.environment)
    with Editor(select=(200, 160), document=page, arguments=("--bundle", bundle)) as window:
        picture = DESKTOP.picture()
        x0, y0, x1, y1 = window.find_text("Duration", (880, 0, picture.width, picture.height))
        field = (x1 + 4, (y0 + y1) // 2 - 14, x1 + 120, (y0 + y1) // 2 + 14)

        def shows(text):
            move_pointer_away()
            wait_for(text, lambda: text in " ".join(found for found, _ in DESKTOP.picture().texts(field, 7)))

        def seconds():
            return float(window.objecthost("--bundle", bundle, "get", window.path, "0", "Seconds"))

        def note():
            window.save()
            return window.objecthost("--bundle", bundle, "get", window.path, "0", "Note").strip()

        shows("1:02:05")
        window.click((x1 + 30, (y0 + y1) // 2))
        window.key("ctrl+a")
        window.type("2:30")
        window.key("Return")
        shows("0:02:30")
        window.key("ctrl+s")
        wait_for("150 seconds", lambda: seconds() == 150)
        # The object changes each text that it gets: were it to get every key, it would change what is being typed.
        window.click((x1 + 30, (y0 + y1) // 2 + 41))
        window.type("two words", 200)
        window.key("Return")
        wait_for("the note", lambda: "two words." in note())
        window.key("ctrl+a")
        window.type("never", 200)
        window.key("Escape", "Tab")
        assert "two words." in note(), note()


def run(words):
    global CURRENT
    failures = 0
    part, parts = 0, 1
    if words[:1] == ["--part"]:
        part, parts = map(int, words[1].split("/"))
        words = words[2:]
    chosen = [function for function in SCENARIOS if all(word in function.__name__ for word in words)][part::parts]
    if not chosen:
        sys.exit(f"no scenario has {' and '.join(words)} in its name")
    for function in chosen:
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
    print(f"{failures} of {len(chosen)} scenarios failed" if failures else "the window behaves")
    return 1 if failures else 0


if __name__ == "__main__":
    if len(sys.argv) < 4:
        sys.exit(__doc__)
    PROGRAMS, TEST_BUNDLES = pathlib.Path(sys.argv[1]).resolve(), pathlib.Path(sys.argv[2]).resolve()
    signal.signal(signal.SIGHUP, signal.SIG_DFL)  # whatever started the test ignored it, as nohup does
    DESKTOP = Desktop(fonts=str(pathlib.Path(sys.argv[3]).resolve()))
    try:
        sys.exit(run(sys.argv[4:]))
    finally:
        DESKTOP.close()
