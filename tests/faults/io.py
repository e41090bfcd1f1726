#!/usr/bin/env python3
"""Lets each call for files of each command fail in turn: io.py OBJECTHOST LIBRARY BUNDLE FONTS_CONF [--share N] [COMMAND...]

Each command runs once undisturbed, which tells the calls that it makes and what it leaves, and then for each of them
with errors that such a call knows, once and from there on. It has to end with what it leaves undisturbed, or with exit
code 1, one line and all files as they were. A call that is interrupted, or does a part of what it was asked, is no
error: the command has to succeed. --share takes one of N of all cases.
"""
import argparse
import collections
import errno
import os
import pathlib
import subprocess
import sys

from commands import COMMANDS, Commands, one_line

TEXT = {"gallery", "shapes", "text", "textpdf", "textsvg"}
WRITING = {"create", "write", "pwrite", "fsync", "ftruncate", "rename", "close"}
INTERRUPTED = {"open", "create", "read", "pread", "write", "pwrite", "fsync", "ftruncate", "close", "flock", "getrandom"}
PARTS = {"read", "pread", "write", "pwrite", "getrandom"}


def ways(call):
    """What may become of a call."""
    if call == "unlink":
        return
    yield errno.EIO
    if call in WRITING:
        yield errno.ENOSPC
        yield errno.EDQUOT
    if call in INTERRUPTED:
        yield errno.EINTR
    if call in PARTS:
        yield "short"


def judge(commands, where, done, whole, must):
    said = done.stderr.decode(errors="replace")
    if done.returncode == 0:
        if (done.stdout, commands.files()) == whole:
            return "right"
        if "objecthost: skipped: " in said and not must:
            return "told"
        after = commands.files()
        wrong = [file for file in {**whole[1], **after} if after.get(file) != whole[1].get(file)]
        commands.fault(f"{where}: exit code 0, but wrong: {wrong or done.stdout}: {said[:200]}")
        return "wrong"
    if must:
        commands.fault(f"{where}: exit code {done.returncode}: {said[:200]}")
    elif done.returncode != 1 or not one_line(said):
        commands.fault(f"{where}: exit code {done.returncode}, not one line: {said[:300]!r}")
    # Standard output, and the next line of a script, may fail after the file is replaced.
    if commands.changed() and not (commands.files() == whole[1] and ("standard output" in said or '"lines"' in said)):
        commands.fault(f"{where}: exit code {done.returncode}, and files changed: {commands.changed()}: {said[:200]}")
    return "refused"


def sweep(commands, name, options):
    commands.reset()
    report = commands.folder / "calls"
    report.unlink(missing_ok=True)
    done = commands.run(COMMANDS[name], FAIL_REPORT=str(report))
    whole = (done.stdout, commands.files())
    if done.returncode != 0:
        raise SystemExit(f"{name} fails undisturbed: {done.stderr.decode()}")
    calls = report.read_text().split()
    cases = [(number, call, how, good) for number, call in enumerate(calls) for how in ways(call) for good in (False, True)]
    results = collections.Counter()
    for number, call, how, good in cases[options.offset % options.share::options.share]:
        commands.reset()
        variables = {"FAIL_AT": str(number), "FAIL_HOW": str(how), **({"FAIL_FOR_GOOD": "1"} if good else {})}
        what = errno.errorcode.get(how, how)
        where = f"{name}, call {number} ({call}) {what}{' from there on' if good else ''}"
        try:
            done = commands.run(COMMANDS[name], **variables)
            results[judge(commands, where, done, whole, how in (errno.EINTR, "short"))] += 1
        except subprocess.TimeoutExpired:
            commands.fault(f"{where}: it hangs")
    options.offset += 1
    print(f"{name:8} {len(calls):4} calls, {sum(results.values()):5} cases: " +
          ", ".join(f"{number} {what}" for what, number in sorted(results.items())), flush=True)
    return sum(results.values())


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("programs", nargs=4, help="the host, the library, a bundle, a configuration of fonts")
    parser.add_argument("commands", nargs="*")
    parser.add_argument("--share", type=int, default=1)
    options = parser.parse_intermixed_args()
    options.offset = 0
    commands = Commands(*options.programs)
    cases = sum(sweep(commands, name, options) for name in options.commands or COMMANDS if name not in TEXT)
    print(f"io: {cases} cases, {commands.faults} faults")
    return 1 if commands.faults else 0


if __name__ == "__main__":
    sys.exit(main())
