"""A display of its own, a window on it, and a user: real pointer and key events in, what is to be seen out.

The screen is read from the display server's frame buffer; its texts are read by optical character recognition, so that
what counts is what a user sees. Nothing waits for a time alone: wait_for tries until its limit.
"""
import difflib
import json
import mmap
import os
import pathlib
import re
import shutil
import struct
import subprocess
import tempfile
import time

PATIENCE = 30.0  # seconds; for slow machines, hardly ever used up
KEY_DELAY = int(os.environ.get("KEY_DELAY", "0"))  # milliseconds from key to key, at least


class Failure(Exception):
    pass


def wait_for(what, condition, limit=PATIENCE):
    """Returns the first true result of condition."""
    end = time.monotonic() + limit
    while True:
        result = condition()
        if result:
            return result
        if time.monotonic() > end:
            raise Failure(f"waited in vain: {what}")
        time.sleep(0.04)


def used_time(pid):
    """The processor time that a process used, in units of 10 ms, and its state: S for asleep."""
    cells = pathlib.Path(f"/proc/{pid}/stat").read_text().rsplit(")", 1)[1].split()
    return int(cells[11]) + int(cells[12]), cells[0]


def alike(seen, wanted):
    """How well a text is found in what was seen; 1 for letter by letter. Symbols beside it are read as anything."""
    seen, wanted = (re.sub("[li|]", "1", text.lower().replace(" ", "")) for text in (seen, wanted))
    return max(difflib.SequenceMatcher(None, seen[start:start + len(wanted)], wanted).ratio()
               for start in range(max(len(seen) - len(wanted), 0) + 1))


class Picture:
    """Pixels of the screen, four bytes each: blue, green, red, unused."""

    def __init__(self, width, height, stride, data):
        self.width, self.height, self.stride, self.data = width, height, stride, data

    def row(self, y, x0=0, x1=None):
        return self.data[y * self.stride + 4 * x0:y * self.stride + 4 * (self.width if x1 is None else x1)]

    def pixel(self, x, y):
        blue, green, red = self.data[y * self.stride + 4 * x:y * self.stride + 4 * x + 3]
        return red, green, blue

    def find(self, color, box=None, tolerance=0):
        """The box of all pixels of a color, or None."""
        x0, y0, x1, y1 = box or (0, 0, self.width, self.height)
        found = []
        for y in range(y0, y1):
            row = self.row(y, x0, x1)
            if tolerance:
                hits = [x for x in range(x1 - x0) if
                        all(abs(row[4 * x + 2 - i] - color[i]) <= tolerance for i in range(3))]
                ends = (hits[0], hits[-1]) if hits else None
            else:
                ends = self._ends(row, bytes((color[2], color[1], color[0])))
            if ends:
                found.append((x0 + ends[0], x0 + ends[1], y))
        if not found:
            return None
        return (min(f[0] for f in found), found[0][2], max(f[1] for f in found) + 1, found[-1][2] + 1)

    @staticmethod
    def _ends(row, pixel):
        def aligned(step, start):
            while start >= 0 and start % 4:
                start = step(start)
            return start

        first = aligned(lambda at: row.find(pixel, at + 1), row.find(pixel))
        if first < 0:
            return None
        return first // 4, aligned(lambda at: row.rfind(pixel, 0, at + 2), row.rfind(pixel)) // 4

    def ppm(self, box=None):
        x0, y0, x1, y1 = box or (0, 0, self.width, self.height)
        rows = []
        for y in range(y0, y1):
            row = self.row(y, x0, x1)
            rgb = bytearray(3 * (x1 - x0))
            rgb[0::3], rgb[1::3], rgb[2::3] = row[2::4], row[1::4], row[0::4]
            rows.append(bytes(rgb))
        return b"P6 %d %d 255\n" % (x1 - x0, y1 - y0) + b"".join(rows)

    def save(self, path, box=None):
        subprocess.run(["convert", "ppm:-", f"png:{path}"], input=self.ppm(box), check=True)

    def texts(self, box=None, layout=11):
        """Lines of text: (text, (x0, y0, x1, y1)). The layout is a mode of tesseract: 11 scattered, 7 one line."""
        left, top = (box[0], box[1]) if box else (0, 0)
        scale = 3
        large = subprocess.run(["convert", "ppm:-", "-colorspace", "Gray", "-filter", "Triangle", "-resize",
                                f"{scale}00%", "pgm:-"], input=self.ppm(box), stdout=subprocess.PIPE, check=True)
        table = subprocess.run(["tesseract", "-", "-", "--psm", str(layout), "tsv"], input=large.stdout,
                               stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, check=True,
                               env={**os.environ, "OMP_THREAD_LIMIT": "1"}).stdout.decode()  # threads that wait spin
        lines = {}
        for line in table.splitlines()[1:]:
            cells = line.split("\t")
            if len(cells) == 12 and cells[11].strip():
                x, y, w, h = (int(cell) for cell in cells[6:10])
                lines.setdefault(tuple(cells[2:5]), []).append((cells[11], x, y, x + w, y + h))
        result = []
        for words in lines.values():
            box = (min(w[1] for w in words), min(w[2] for w in words), max(w[3] for w in words),
                   max(w[4] for w in words))
            place = [value // scale for value in box]
            result.append((" ".join(w[0] for w in words),
                           (left + place[0], top + place[1], left + place[2], top + place[3])))
        return result


# Windows begin in the corner, where they are without a manager; a click raises and focuses, and Alt with the pointer is
# left to programs.
OPENBOX = """<?xml version="1.0"?><openbox_config xmlns="http://openbox.org/3.4/rc"><focus><focusNew>yes</focusNew></focus>
<mouse><context name="Client"><mousebind button="Left" action="Press"><action name="Focus"/><action name="Raise"/>
</mousebind></context></mouse><applications><application type="normal"><position force="yes"><x>0</x><y>0</y></position></application></applications>
</openbox_config>"""


class Desktop:
    """An X server, and an environment without a session: no bus, no settings, no home.

    There is no window manager, unless the environment variable WINDOW_MANAGER says openbox.
    """

    def __init__(self, width=1400, height=900, fonts=None, **environment):
        self.folder = tempfile.mkdtemp(prefix="desktop")
        read_end, write_end = os.pipe()
        self.server = subprocess.Popen(
            ["Xvfb", "-displayfd", str(write_end), "-screen", "0", f"{width}x{height}x24", "-nolisten", "tcp",
             "-noreset", "-fbdir", self.folder], pass_fds=[write_end], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        os.close(write_end)
        with os.fdopen(read_end) as pipe:
            number = pipe.readline().strip()
        if not number:
            raise Failure("the display server did not start")
        self.environment = {
            "PATH": os.environ["PATH"], "DISPLAY": f":{number}", "LC_ALL": "C.UTF-8", "HOME": self.folder,
            "XDG_RUNTIME_DIR": self.folder, "TMPDIR": self.folder, "GDK_BACKEND": "x11", "GSK_RENDERER": "cairo",
            "GTK_A11Y": "none", "GSETTINGS_BACKEND": "memory", "DBUS_SESSION_BUS_ADDRESS": "disabled:",
            "ASAN_OPTIONS": "detect_leaks=0"}  # the toolkit keeps what it has until the end
        if fonts:
            self.environment["FONTCONFIG_FILE"] = fonts
        self.environment.update(environment)
        with open(pathlib.Path(self.folder) / "Xvfb_screen0", "rb") as file:
            self.buffer = mmap.mmap(file.fileno(), 0, prot=mmap.PROT_READ)
        self.manager = None
        if os.environ.get("WINDOW_MANAGER") == "openbox":
            rules = pathlib.Path(self.folder) / "openbox.xml"
            rules.write_text(OPENBOX)
            self.manager = subprocess.Popen(["openbox", "--config-file", str(rules)], env=self.environment,
                                            stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)

    def close(self):
        self.buffer.close()
        if self.manager:
            self.manager.terminate()
            self.manager.wait()
        self.server.terminate()
        self.server.wait()
        shutil.rmtree(self.folder, ignore_errors=True)

    def picture(self):
        # The frame buffer is an XWD file: a header of big-endian numbers, a table of colors, the pixels.
        header = struct.unpack(">25I", self.buffer[:100])
        size, width, height, stride, colors = header[0], header[4], header[5], header[12], header[19]
        start = size + 12 * colors
        return Picture(width, height, stride, self.buffer[start:start + height * stride])

    def input(self, *words):
        """Pointer and keys, as words of xdotool."""
        result = subprocess.run(["xdotool", *(str(word) for word in words)], env=self.environment, check=True,
                                stdout=subprocess.PIPE)
        return result.stdout.decode()

    def let_go(self):
        """Lets go of what a test that was broken off held down."""
        self.input("mouseup", 1, "keyup", "ctrl", "keyup", "shift", "keyup", "alt")

    def windows(self, pid):
        """The visible windows of a program, the oldest first."""
        found = subprocess.run(["xdotool", "search", "--onlyvisible", "--pid", str(pid)], env=self.environment,
                               stdout=subprocess.PIPE, stderr=subprocess.DEVNULL).stdout.split()
        return sorted(int(word) for word in found)

    def place(self, window):
        """The box of a window on the screen."""
        words = dict(line.split("=") for line in self.input("getwindowgeometry", "--shell", window).split())
        x, y, width, height = (int(words[name]) for name in ("X", "Y", "WIDTH", "HEIGHT"))
        return x, y, x + width, y + height

    def title(self, window):
        return subprocess.run(["xdotool", "getwindowname", str(window)], env=self.environment, stdout=subprocess.PIPE,
                              stderr=subprocess.DEVNULL).stdout.decode().strip()


class Bus:
    """A message bus of a desktop's own, over which a program tells assistive technologies what it shows."""

    def __init__(self, desktop):
        self.environment = dict(desktop.environment)
        del self.environment["DBUS_SESSION_BUS_ADDRESS"], self.environment["GTK_A11Y"]
        self.process = subprocess.Popen(["dbus-daemon", "--session", "--nofork", "--print-address"], text=True,
                                        env=self.environment, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = self.process.stdout.readline().strip()

    def told(self):
        """What the environment of a program needs that is to tell."""
        return {"GTK_A11Y": "atspi", "DBUS_SESSION_BUS_ADDRESS": self.environment["DBUS_SESSION_BUS_ADDRESS"]}

    def run(self, *command):
        return subprocess.run(command, env=self.environment, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True,
                              timeout=PATIENCE).stdout

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.process.terminate()
        self.process.wait()
        self.process.stdout.close()


class Window:
    """The program on a desktop, with a document of its own."""

    PAPER = (250, 245, 235)  # told apart from all else on the screen
    PAGE = (600, 400)

    def __init__(self, desktop, programs, objects=(), document=None, arguments=(), start=True, **environment):
        self.desktop = desktop
        self.host = str(programs / "objecthost")
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="drive", dir=desktop.folder))
        self.path = self.folder / "documents" / "page.akd"
        self.path.parent.mkdir()
        if document:
            shutil.copy(document, self.path)
        else:
            self.objecthost("new", self.path, "--size", "%d,%d" % self.PAGE, "--background", "%d,%d,%d" % self.PAPER)
        for words in objects:
            self.objecthost("add", self.path, "stdRect", *words)
        self.log = open(self.folder / "log", "w+")
        self.command = [str(programs / "objecthost-window"), *(str(word) for word in arguments), str(self.path)]
        self.environment = {**desktop.environment, "HOME": str(self.folder), **environment}
        self.process = None
        if start:
            self.start()
            self.focus(self.main)

    def run(self):
        self.process = subprocess.Popen(self.command, env=self.environment, cwd=self.folder, stdout=self.log,
                                        stderr=self.log)

    def start(self):
        self.run()
        try:
            self.main = wait_for("a window", lambda: self.desktop.windows(self.process.pid))[0]
        except Failure as error:
            self.process.kill()
            raise Failure(f"{error}; exit code {self.process.poll()}, {self.output()}") from None
        wait_for("the panels", lambda: self.desktop.picture().texts((0, 0, 300, 60)))

    def calibrate(self):
        """Shows the page at 100 %, and learns where its lower left corner is."""
        self.key("ctrl+1")
        wait_for("the page at 100 %", self._find_page)

    def _find_page(self):
        box = self.desktop.picture().find(self.PAPER)
        if not box or (box[2] - box[0], box[3] - box[1]) != self.PAGE:
            return False
        self.left, self.bottom = box[0], box[3]
        return True

    def __enter__(self):
        return self

    def __exit__(self, *_):
        if self.process and self.process.poll() is None:
            self.process.kill()
        if self.process:
            self.process.wait()
        self.log.close()

    def objecthost(self, *words):
        result = subprocess.run([self.host, *(str(word) for word in words)], stdout=subprocess.PIPE,
                                stderr=subprocess.PIPE, env=self.desktop.environment)
        if result.returncode != 0:
            raise Failure(f"objecthost {words}: {result.stderr.decode()}")
        return result.stdout.decode()

    # Input.

    def ended(self):
        """Waits for the program to end, and returns its exit code."""
        wait_for("the program to end", lambda: self.process.poll() is not None)
        return self.process.returncode

    def focus(self, window):
        self.desktop.input("windowfocus", "--sync", window)

    def focus_newest(self):
        """Gives the keys to a window that came up; there is no window manager that would."""
        window = wait_for("another window", lambda: [w for w in self.desktop.windows(self.process.pid)
                                                     if w != self.main])[-1]
        self.focus(window)
        return window

    def key(self, *keys):
        self.desktop.input("key", "--delay", max(25, KEY_DELAY), *keys)

    def type(self, text, delay=25):
        """The delay from key to key is in milliseconds."""
        self.desktop.input("type", "--delay", max(delay, KEY_DELAY), text)

    def click(self, point, modifier=None):
        self.drag([point], modifier)

    def drag(self, points, modifier=None, release=True, rest=0):
        """Presses at the first point of the screen, moves through the others, resting at each, and lets go."""
        words = ["keydown", modifier] if modifier else []
        words += ["mousemove", *points[0], "sleep", "0.05", "mousedown", 1]
        for (x0, y0), (x1, y1) in zip(points, points[1:]):
            for step in range(1, 7):
                words += ["sleep", "0.01", "mousemove", round(x0 + (x1 - x0) * step / 6),
                          round(y0 + (y1 - y0) * step / 6)]
            words += ["sleep", rest]
        if release:
            words += ["sleep", "0.03", "mouseup", 1]
        if modifier:
            words += ["sleep", "0.03", "keyup", modifier]
        self.desktop.input(*words)

    def at(self, x, y):
        """The point of the screen for a point of the map."""
        return round(self.left + x), round(self.bottom - y)

    # What is seen.

    def settle(self):
        """Waits until the screen has stayed the same for a while, with nothing left to do for program and server."""
        def seen():
            return bytes(self.desktop.picture().data), self.ticks(), used_time(self.desktop.server.pid)[0]

        def same():
            before = seen()
            time.sleep(0.4)
            asleep = all(used_time(process.pid)[1] == "S" for process in (self.process, self.desktop.server))
            return asleep and seen() == before
        wait_for("a screen that stays", same)

    def ticks(self):
        """The processor time that the program used, in units of 10 ms."""
        return used_time(self.process.pid)[0]

    def output(self):
        self.log.seek(0)
        return self.log.read()

    def title(self):
        return self.desktop.title(self.main)

    def find_text(self, wanted, box=None, limit=PATIENCE):
        """The place of a line of text on the screen that reads, nearly, as wanted, and stays where it is."""
        def look():
            picture = self.desktop.picture()
            texts = picture.texts(box)
            best = max(texts, key=lambda text: alike(text[0], wanted), default=None)
            look.seen = [text for text, _ in texts]
            found = best and alike(best[0], wanted) >= 0.85
            return best[1] if found and self.desktop.picture().ppm(best[1]) == picture.ppm(best[1]) else None
        try:
            return wait_for(wanted, look, limit)
        except Failure:
            raise Failure(f'"{wanted}" is not to be seen, only {look.seen}') from None

    # What is in the document.

    def save(self):
        self.key("ctrl+s")
        wait_for("the document to be saved", lambda: not self.title().startswith("•"))

    def layers(self):
        return json.loads(self.objecthost("list", "--json", self.path))["layers"]

    def read(self):
        """The objects of the file, back to front, each with its properties."""
        return [item for layer in self.layers() for item in layer["objects"]]

    def expect(self, what, condition):
        """Saves until the document is as it should be, and returns its objects."""
        def look():
            self.save()
            look.objects = self.read()
            try:
                return condition(look.objects)
            except IndexError:
                return False
        try:
            wait_for(what, look, 6)
        except Failure as error:
            found = json.dumps(getattr(look, "objects", None))
            raise Failure(f'{what}: {error}; "{self.title()}" has {found}') from None
        return look.objects
