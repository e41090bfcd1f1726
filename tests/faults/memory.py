#!/usr/bin/env python3
"""Refuses each allocation of each command in turn: memory.py OBJECTHOST LIBRARY BUNDLE FONTS_CONF [--points N] [--good] [COMMAND...]

Each command runs once undisturbed, which tells how many allocations it makes and what it leaves, and then once for each
of them (N of them, evenly spread), with that one refused or, with --good, with all from there on. It has to end with
what it leaves undisturbed, or with exit code 1, one line, and all files as they were. Libraries that end the program
themselves when they get no memory are named, and must not have harmed a file either.
"""
import argparse
import collections
import os
import pathlib
import re
import subprocess
import sys
import tempfile

COMMANDS = {
    "new": ["new", "b.akd"],
    "add": ["add", "a.akd", "stdRect", "--bounds", "0,0,9,9"],
    "list": ["list", "a.akd"],
    "json": ["list", "a.akd", "--json"],
    "set": ["set", "a.akd", "0", "Angle=20", "Rounding=0.5", "Brush.Style=LinearGradient"],
    "inspect": ["inspect", "a.akd", "0", "--set", "2=0.9"],
    "layer": ["layer", "a.akd", "add", "Notes"],
    "paste": ["paste", "a.akd", "--from", "clip"],
    "script": ["script", "lines"],
    "png": ["draw", "a.akd", "a.png", "--scale", "2"],
    "jpg": ["draw", "a.akd", "a.jpg"],
    "tif": ["draw", "a.akd", "a.tif"],
    "pdf": ["draw", "a.akd", "a.pdf"],
    "svg": ["draw", "a.akd", "a.svg"],
    "dump": ["dump", "a.akd"],
    "info": ["info", "{bundle}"],
    "bundles": ["bundles"],
    "gallery": ["gallery", "g.png"],
    "shapes": ["shapes", "s.png"],
    "text": ["text", "t.png"],
    "textpdf": ["text", "t.pdf"],
    "textsvg": ["text", "t.svg"],
}
LARGE = {"gallery", "shapes", "text", "textpdf", "textsvg"}
SCRIPT = """open a.akd
begin Both
add stdRect --bounds 5,5,50,50 --set Rounding=0.75
set 0 Pen.Size=3
end
undo
redo
layer add Top
list
save
"""
# Whose allocations are the project's to answer for.
FRAME = re.compile(r"\[0x[0-9a-f]+\]$")
TOLD = ("Fontconfig error", "Pango-WARNING")
OWN = ("objecthost", "libAKPlatform", "StdRectangle", "libstdc++")


class Sweep:
    def __init__(self, options):
        self.options = options
        self.host, self.library, self.bundle = (os.path.realpath(p) for p in options.programs)
        self.folder = pathlib.Path(tempfile.mkdtemp())
        self.environment = dict(os.environ, LC_ALL="C", FONTCONFIG_FILE=os.path.realpath(options.fonts),
                                XDG_CACHE_HOME=str(self.folder / "cache"), XDG_DATA_HOME=str(self.folder / "data"))
        self.work = self.folder / "work"
        self.work.mkdir()
        self.run(["new", "a.akd", "--size", "100,80"])
        self.run(["add", "a.akd", "stdRect", "--bounds", "10,10,60,40", "--set", "Brush.Style=LinearGradient", "Pen.Size=2"])
        self.run(["add", "a.akd", "stdRect", "--bounds", "30,20,90,70", "--angle", "20"])
        self.run(["copy", "a.akd", "0", "--to", "clip"])
        (self.work / "lines").write_text(SCRIPT)
        self.before = self.files()
        self.faults = 0

    def run(self, words, **variables):
        environment = dict(self.environment, LD_PRELOAD=self.library, **variables) if variables else self.environment
        words = [word.replace("{bundle}", self.bundle) for word in words]
        return subprocess.run([self.host, *words], cwd=self.work, env=environment, capture_output=True, timeout=20)

    def files(self):
        return {path.name: re.sub(rb"/CreationDate \([^)]*\)", b"", path.read_bytes()) for path in self.work.iterdir()}

    def reset(self):
        for path in self.work.iterdir():
            path.unlink()
        for name, content in self.before.items():
            (self.work / name).write_bytes(content)

    def fault(self, name, number, what):
        self.faults += 1
        if self.faults <= 40:
            print(f"FAULT: {name}, allocation {number}: {what}", flush=True)

    def told(self, stderr):
        """What was said, and which library asked for the memory that it did not get."""
        lines = stderr.decode(errors="replace").splitlines()
        frames = [os.path.basename(line.split("(")[0]) for line in lines if FRAME.search(line)]
        asked = [frame for frame in frames if frame not in (os.path.basename(self.library), "libc.so.6")]
        return "\n".join(line for line in lines if not FRAME.search(line)), (asked + ["nobody"])[0]

    def judge(self, name, number, done, whole):
        said, library = self.told(done.stderr)
        if done.returncode == 0:
            if (done.stdout, self.files()) == whole:
                return "right"
            after = self.files()
            # A bundle that can't be loaded: its objects are kept. Fonts that can't be read: others are taken.
            if "objecthost: skipped: " in said or any(word in said for word in TOLD):
                return "told"
            wrong = [file for file in whole[1] if after.get(file) != whole[1][file]]
            self.fault(name, number, f"exit code 0, but wrong: {wrong or 'standard output'}: {library}: {said[:200]}")
            return "wrong"
        changed = [file for file, content in self.files().items() if self.before.get(file) != content]
        if changed and self.files() != whole[1]:
            self.fault(name, number, f"exit code {done.returncode}, and files changed: {changed}: {said[:200]}")
        if done.returncode != 1:
            if "Fatal glibc error" in said or not library.startswith(OWN):
                return f"ended by {'libc' if library.startswith(OWN) else library}"
            self.fault(name, number, f"exit code {done.returncode}: {said[:300]}")
            return "ended"
        lines = [line for line in said.splitlines() if line.startswith("objecthost: ") and "skipped: " not in line]
        if len(lines) != 1:
            self.fault(name, number, f"not one line: {said[:300]!r}")
        return "refused"

    def sweep(self, name):
        self.reset()
        report = str(self.folder / "count")
        done = self.run(COMMANDS[name], FAIL_REPORT=report)
        whole = (done.stdout, self.files())
        if done.returncode != 0:
            raise SystemExit(f"{name} fails undisturbed: {done.stderr.decode()}")
        count = int(pathlib.Path(report).read_text())
        points = self.options.points if self.options.points and name in LARGE or not self.options.all else count
        step = max(1, count // points) if points else 1
        results = collections.Counter()
        for number in range(step // 2, count, step):
            self.reset()
            variables = {"FAIL_AT": str(number), "FAIL_TRACE": "1"}
            if self.options.good:
                variables["FAIL_FOR_GOOD"] = "1"
            try:
                results[self.judge(name, number, self.run(COMMANDS[name], **variables), whole)] += 1
            except subprocess.TimeoutExpired as hung:
                library = self.told(hung.stderr or b"")[1]
                results[f"hung by {library}"] += 1
                if library.startswith(OWN):
                    self.fault(name, number, "it hangs")
        print(f"{name:8} {count:6} allocations, {sum(results.values()):5} tried: " +
              ", ".join(f"{number} {what}" for what, number in sorted(results.items())), flush=True)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("host")
    parser.add_argument("library")
    parser.add_argument("bundle")
    parser.add_argument("fonts")
    parser.add_argument("commands", nargs="*")
    parser.add_argument("--points", type=int, default=60, help="of each command; with --all of the large ones")
    parser.add_argument("--all", action="store_true", help="each allocation of the small commands")
    parser.add_argument("--good", action="store_true", help="all allocations from the one on are refused")
    options = parser.parse_intermixed_args()
    options.programs = [options.host, options.library, options.bundle]
    sweep = Sweep(options)
    for name in options.commands or COMMANDS:
        sweep.sweep(name)
    return 1 if sweep.faults else 0


if __name__ == "__main__":
    sys.exit(main())
