#!/usr/bin/env python3
"""Does anything at all to the window, at random, and sees to it that it goes on and that the document stays sound.

usage: monkey.py PROGRAMS FONTS_CONF [SECONDS [SEED]]

Clicks, drags with keys pressed meanwhile, typing, names edited, shortcuts, menus and dialogs, on the whole window. Prints
the seed first, and with a fault the last things that were done.
"""
import contextlib
import pathlib
import random
import subprocess
import sys
import time

from desktop import Desktop, Failure, Window

OBJECTS = [("--bounds", f"{40 + 70 * i},{60 + 30 * i},{120 + 70 * i},{140 + 30 * i}", "--angle", str(17 * i))
           for i in range(6)]
SHORTCUTS = ["Delete", "BackSpace", "Escape", "Return", "Tab", "shift+Tab", "Up", "Down", "Left", "Right", "shift+Left",
             "Page_Up", "Page_Down", "Home", "End", "space", "ctrl+a", "ctrl+c", "ctrl+x", "ctrl+v", "ctrl+d", "ctrl+z",
             "ctrl+shift+z", "ctrl+s", "ctrl+shift+s", "ctrl+o", "ctrl+e", "ctrl+1", "ctrl+0", "ctrl+plus", "ctrl+minus",
             "ctrl+bracketleft", "ctrl+bracketright", "F1", "F2", "F10", "r", "v", "h", "ctrl+Return",
             "Insert", "ctrl+Up", "ctrl+shift+Left", "ctrl+g", "ctrl+shift+g"]
TYPED = ["80.5", "-3", "1e9", "", "abc", "0", "0.25", "99999999999", "Ebene", "1:02:05", "nan", "(1;2;3)"]


class Monkey:
    def __init__(self, window, seed):
        self.window = window
        self.random = random.Random(seed)
        self.done = []

    def place(self):
        return self.random.randrange(1400), self.random.randrange(900)

    def on_page(self):
        return self.window.at(self.random.randrange(600), self.random.randrange(400))

    def input(self, *words):
        self.done.append(" ".join(str(word) for word in words))
        self.window.desktop.input(*words)

    def click(self, place=None, times=1):
        x, y = place or self.place()
        self.input("mousemove", x, y, "click", "--repeat", times, "--delay", 60, self.random.choice([1, 1, 1, 1, 3]))

    def drag(self):
        x, y = self.random.choice([self.on_page, self.place])()
        self.input("mousemove", x, y, "mousedown", 1)
        for _ in range(self.random.randrange(1, 6)):
            x, y = self.on_page()
            self.input("mousemove", x, y)
            if self.random.random() < 0.4:
                self.key()
        self.input("mouseup", 1)

    def key(self):
        self.input("key", "--delay", 20, self.random.choice(SHORTCUTS))

    def type(self):
        self.click()
        if self.random.random() < 0.5:
            self.input("key", "ctrl+a")
        text = self.random.choice(TYPED)
        if text:
            self.input("type", "--delay", self.random.choice([5, 40, 150]), "--", text)
        self.key()

    def wheel(self):
        x, y = self.place()
        self.input("mousemove", x, y, "click", "--repeat", 3, "--delay", 20, self.random.choice([4, 5]))

    def focus_any(self):
        windows = self.window.desktop.windows(self.window.process.pid)
        if windows:
            with contextlib.suppress(subprocess.CalledProcessError):  # it may be gone by now
                self.input("windowfocus", windows[-1])

    def step(self):
        kinds = [self.click, self.drag, self.key, self.key, self.type, self.wheel, self.focus_any,
                 lambda: self.click(self.on_page()), lambda: self.click(times=2)]
        self.random.choice(kinds)()
        del self.done[:-40]


def check(window):
    """The program runs, or was closed as a user closes it; the document on the disk can be opened."""
    code = window.process.poll()
    if code is not None and code != 0:
        raise Failure(f"the program ended with {code}")
    window.objecthost("list", window.path, "--strict")
    return code is None


def run(programs, fonts, seconds, seed):
    print(f"monkey: seed {seed}", flush=True)
    desktop = Desktop(fonts=fonts)
    generator = random.Random(seed)
    end = time.monotonic() + seconds
    sittings = steps = 0
    try:
        while time.monotonic() < end:
            with Window(desktop, programs, OBJECTS) as window:
                window.calibrate()
                monkey = Monkey(window, generator.random())
                sittings += 1
                try:
                    while time.monotonic() < end and check(window):
                        for _ in range(10):
                            monkey.step()
                            steps += 1
                except Exception as error:  # the last things done tell more than a trace
                    desktop.picture().save(programs.parent / "monkey.png")
                    print(f"FAULT (seed {seed}): {error}\n  " + "\n  ".join(monkey.done) + "\n" + window.output())
                    return 1
    finally:
        desktop.close()
    print(f"monkey: {steps} steps in {sittings} sittings, no fault")
    return 0


if __name__ == "__main__":
    if len(sys.argv) < 3:
        sys.exit(__doc__)
    sys.exit(run(pathlib.Path(sys.argv[1]).resolve(), str(pathlib.Path(sys.argv[2]).resolve()),
                 float(sys.argv[3]) if len(sys.argv) > 3 else 120,
                 int(sys.argv[4]) if len(sys.argv) > 4 else random.SystemRandom().randrange(10**6)))
