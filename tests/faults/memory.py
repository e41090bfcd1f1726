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

from commands import COMMANDS, Commands, one_line

LARGE = {"gallery", "shapes", "text", "textpdf", "textsvg"}
# Whose allocations are the project's to answer for.
FRAME = re.compile(r"\[0x[0-9a-f]+\]$")
TOLD = ("Fontconfig error",)
OWN = ("objecthost", "libAKPlatform", "StdRectangle", "libstdc++")


class Sweep(Commands):
    def __init__(self, options):
        super().__init__(*options.programs)
        self.options = options

    def told(self, stderr):
        """What was said, and which library asked for the memory that it did not get."""
        lines = stderr.decode(errors="replace").splitlines()
        frames = [os.path.basename(line.split("(")[0]) for line in lines if FRAME.search(line)]
        asked = [frame for frame in frames if frame not in (os.path.basename(self.library), "libc.so.6")]
        return "\n".join(line for line in lines if not FRAME.search(line)), (asked + ["nobody"])[0]

    def judge(self, where, done, whole):
        said, library = self.told(done.stderr)
        if done.returncode == 0:
            if (done.stdout, self.files()) == whole:
                return "right"
            # A bundle that can't be loaded: its objects are kept. Fonts that can't be read: others are taken.
            if "objecthost: skipped: " in said or any(word in said for word in TOLD):
                return "told"
            after = self.files()
            wrong = [file for file in whole[1] if after.get(file) != whole[1][file]]
            self.fault(f"{where}: exit code 0, but wrong: {wrong or 'standard output'}: {library}: {said[:200]}")
            return "wrong"
        if self.changed() and self.files() != whole[1]:
            self.fault(f"{where}: exit code {done.returncode}, and files changed: {self.changed()}: {said[:200]}")
        if done.returncode != 1:
            if "Fatal glibc error" in said or not library.startswith(OWN):
                return f"ended by {'libc' if library.startswith(OWN) else library}"
            self.fault(f"{where}: exit code {done.returncode}: {said[:300]}")
            return "ended"
        if not one_line(said):
            self.fault(f"{where}: not one line: {said[:300]!r}")
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
            where = f"{name}, allocation {number}"
            try:
                results[self.judge(where, self.run(COMMANDS[name], **variables), whole)] += 1
            except subprocess.TimeoutExpired as hung:
                library = self.told(hung.stderr or b"")[1]
                results[f"hung by {library}"] += 1
                if library.startswith(OWN):
                    self.fault(f"{where}: it hangs")
        print(f"{name:8} {count:6} allocations, {sum(results.values()):5} tried: " +
              ", ".join(f"{number} {what}" for what, number in sorted(results.items())), flush=True)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("programs", nargs=4, help="the host, the library, a bundle, a configuration of fonts")
    parser.add_argument("commands", nargs="*")
    parser.add_argument("--points", type=int, default=60, help="of each command; with --all of the large ones")
    parser.add_argument("--all", action="store_true", help="each allocation of the small commands")
    parser.add_argument("--good", action="store_true", help="all allocations from the one on are refused")
    options = parser.parse_intermixed_args()
    sweep = Sweep(options)
    for name in options.commands or COMMANDS:
        sweep.sweep(name)
    return 1 if sweep.faults else 0


if __name__ == "__main__":
    sys.exit(main())
