#!/usr/bin/env python3
"""Refuses memory to the window in the middle of a sitting: memory.py PROGRAMS LIBRARY FONTS_CONF [POINTS]

Each sitting draws, copies, deletes, undoes and saves, with one allocation of C++ refused, at points evenly spread. The
program takes what it keeps for that and goes on, and what it saves can be read; undone as a whole, the document is what it
was.
"""
import collections
import pathlib
import signal
import subprocess
import sys
import time

from desktop import Desktop, Failure, Window, wait_for

BOXES = [("--bounds", "100,100,300,220"), ("--bounds", "350,100,450,220")]


def sitting(window):
    window.process.send_signal(signal.SIGUSR2)
    window.drag([window.at(200, 160), window.at(240, 200), window.at(220, 190)])
    window.key("ctrl+d", "Up", "ctrl+a", "ctrl+shift+Right", "ctrl+c", "ctrl+v", "Delete", "ctrl+z", "r")
    window.drag([window.at(50, 300), window.at(150, 380)])
    window.key("ctrl+g", "ctrl+shift+g", "ctrl+shift+n", "ctrl+s")


def saved(window):
    window.key("ctrl+s")
    wait_for("the document to be saved", lambda: not window.title().startswith("•"))
    return window.read()


def judge(window, before):
    """How the program went on."""
    sitting(window)
    time.sleep(0.3)
    window.objecthost("list", window.path, "--strict")
    if window.process.poll() is not None:
        raise Failure(f"it ended with {window.process.returncode}")
    window.key("Escape", "Escape")
    saved(window)
    window.key(*["ctrl+z"] * 30)
    if saved(window) != before:
        raise Failure("undone, it is another document")
    return "told" if "not enough memory" in window.output() else "right"


def count(desktop, programs, library):
    report = pathlib.Path(desktop.folder) / "count"
    with Window(desktop, programs, BOXES, LD_PRELOAD=library, FAIL_REPORT=report, FAIL_NEW="1",
                FAIL_AFTER_SIGNAL="1") as window:
        window.calibrate()
        sitting(window)
        saved(window)
        window.key("ctrl+q")
        window.ended()
    return int(report.read_text())


def main(programs, library, fonts, points=40):
    programs, library = pathlib.Path(programs).resolve(), str(pathlib.Path(library).resolve())
    desktop = Desktop(fonts=str(pathlib.Path(fonts).resolve()))
    results = collections.Counter()
    try:
        total = count(desktop, programs, library)
        step = max(1, total // int(points))
        for number in range(step // 2, total, step):
            with Window(desktop, programs, BOXES, LD_PRELOAD=library, FAIL_AT=str(number), FAIL_NEW="1",
                        FAIL_AFTER_SIGNAL="1") as window:
                window.calibrate()
                try:
                    results[judge(window, window.read())] += 1
                except (Failure, subprocess.SubprocessError) as error:
                    results["FAULT"] += 1
                    desktop.picture().save(programs.parent / "window-memory.png")
                    print(f"FAULT, allocation {number}: {error}\n{window.output()}", flush=True)
    finally:
        desktop.close()
    print(f"window: {total} allocations, {sum(results.values())} tried: " +
          ", ".join(f"{n} {what}" for what, n in sorted(results.items())))
    return 1 if results["FAULT"] else 0


if __name__ == "__main__":
    if len(sys.argv) < 4:
        sys.exit(__doc__)
    sys.exit(main(*sys.argv[1:]))
