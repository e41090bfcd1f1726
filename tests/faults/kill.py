#!/usr/bin/env python3
"""Ends commands in the middle of a save: kill.py OBJECTHOST LIBRARY BUNDLE FONTS_CONF [--points N] [--replays N] [--seed N]

Killed: at each call for files, or after half of what it writes, the file that a command replaces has to be the old one
or the new one, a recovery file whole or not there, and the next save has to succeed and leave nothing else behind.

Power loss: what a command wrote is replayed up to each of its calls, without some of what no fsync had followed by then;
after its last call nothing of what it reported may be missing.
"""
import argparse
import pathlib
import random
import sys

from commands import COMMANDS, Commands

SAVES = ["new", "add", "set", "layer", "paste", "script", "recover", "png", "jpg", "tif", "pdf", "svg", "autosaved"]
AUTOSAVED = ["script", "lines", "--autosave", "0"]
SIZES = [2, 300, 1500]  # objects of the document: the last ones are written in several pieces
NEXT = ["add", "a.akd", "stdRect"]  # what has to work after all that


class Disk:
    """What a log of calls leaves when the power goes: files by their inodes, folders as names of inodes."""

    def __init__(self, files):
        """Files by path, all of them safe on the disk."""
        self.named = dict(files)  # path: content or inode
        self.names = []  # changes of names that are not safe: (path, inode or None)
        self.latest = {}  # the system uses numbers of inodes again: which of them one is now
        self.safe = {}  # inode: content
        self.writes = {}  # inode: changes that are not safe

    @staticmethod
    def changed(content, change):
        kind, at, data = change
        if kind == "size":
            return content[:at].ljust(at, b"\0")
        return content[:at].ljust(at, b"\0") + data + content[at + len(data):]

    def take(self, entry, folders):
        kind, *words = entry
        if kind == "create":
            self.latest[words[0]] = (words[0], len(self.safe))
        if kind in ("create", "write", "size", "sync"):
            words[0] = self.latest.get(words[0], words[0])
        if kind == "create":
            self.names.append((words[1], words[0]))
            self.safe[words[0]], self.writes[words[0]] = b"", []
        elif kind in ("write", "size") and words[0] in self.writes:
            self.writes[words[0]].append((kind, *words[1:]))
        elif kind == "rename":
            inode = next((inode for path, inode in reversed(self.names) if path == words[0]), self.named.get(words[0]))
            self.names += [(words[1], inode), (words[0], None)]
        elif kind == "remove":
            self.names.append((words[0], None))
        elif kind == "sync" and words[0] in self.writes:
            for change in self.writes[words[0]]:
                self.safe[words[0]] = self.changed(self.safe[words[0]], change)
            self.writes[words[0]] = []
        elif kind == "sync" and words[0] in folders:
            kept = [(path, inode) for path, inode in self.names if str(pathlib.Path(path).parent) != folders[words[0]]]
            self.named.update(pair for pair in self.names if pair not in kept)
            self.names = kept

    def after_loss(self, keeps):
        """The files by path; `keeps` says of each change in turn whether it was written in time."""
        named = dict(self.named)
        for path, inode in self.names:
            if keeps():
                named[path] = inode
        contents = {}
        for inode, content in self.safe.items():
            for change in self.writes[inode]:
                if keeps():
                    content = self.changed(content, change)
            contents[inode] = content
        return {path: contents.get(inode, inode) for path, inode in named.items() if inode is not None}


def entries(log):
    """The lines of a log, as FailingCalls.cpp describes them."""
    at = 0

    def line():
        nonlocal at
        begin, at = at, log.index(b"\n", at) + 1
        return log[begin:at - 1].decode()

    while at < len(log):
        kind, rest = line().split(" ", 1)
        if kind == "create":
            yield [kind, *rest.split(" ", 1)]
        elif kind == "write":
            inode, offset, size = rest.split(" ")
            yield [kind, inode, int(offset), log[at:at + int(size)]]
            at += int(size) + 1
        elif kind == "size":
            inode, size = rest.split(" ")
            yield [kind, inode, int(size), b""]
        else:
            yield [kind, rest, *([line()] if kind == "rename" else [])]


def words_of(name):
    return AUTOSAVED if name == "autosaved" else COMMANDS[name]


class Sweep(Commands):
    def grow(self, objects):
        """The document has so many objects from now on."""
        self.reset()
        count = self.run(["list", "a.akd"]).stdout.count(b"\n")
        if count != objects:
            (self.work / "grow").write_text("open a.akd\n" + "add stdRect\n" * (objects - count) + "save\n")
            done = self.run(["script", "grow"])
            (self.work / "grow").unlink()
            if done.returncode != 0:
                raise SystemExit(done.stderr.decode())
        self.before = self.files()

    def prepare(self, name):
        """The files before and after a command, and the calls that it makes."""
        self.reset()
        report, log = self.folder / "calls", self.folder / "log"
        for file in (report, log):
            file.unlink(missing_ok=True)
        done = self.run(words_of(name), FAIL_REPORT=str(report), FAIL_LOG=str(log))
        if done.returncode != 0:
            raise SystemExit(f"{name} fails undisturbed: {done.stderr.decode()}")
        return self.files(), report.read_text().split(), log.read_bytes()

    def judge(self, where, files, new):
        """Documents and pictures are old or new; of recovery files those of this run may be there, and whole."""
        for path in {**self.before, **new, **files}:
            name = pathlib.Path(path).name
            if name.startswith(".tmp_"):
                continue
            content = files.get(path)
            if name.endswith(".akrecover") and path not in self.before:
                if content is not None and int.from_bytes(content[4:8], "little") + 8 != len(content):
                    self.fault(f"{where}: {path} is not whole")
            elif content not in (self.before.get(path), new.get(path)):
                self.fault(f"{where}: {path} is neither the old nor the new one: {len(content or b'')} bytes")

    def kill(self, name, number, how, new):
        where = f"{name}, {how} at call {number}"
        self.reset()
        done = self.run(words_of(name), FAIL_AT=str(number), FAIL_HOW=how)
        if done.returncode != -9:
            return
        self.judge(where, self.files(), new)
        for words in (["recover"], NEXT, ["new", "r.akd"] if name == "recover" else words_of(name)):
            again = self.run(words)
            if again.returncode != 0:
                self.fault(f"{where}: then {words[0]} fails: {again.stderr.decode()[:200]}")
        left = [path for path in self.files() if pathlib.Path(path).name.startswith(".tmp_")]
        if left:
            self.fault(f"{where}: {left} is left behind")

    def lose(self, name, log, new, replays, generator):
        """Every prefix of the log, with none, all and some of what was not safe."""
        folders = {str(folder.stat().st_ino): str(folder) for folder in [self.work, *self.data.rglob("*")] if folder.is_dir()}
        paths = {str(self.folder / path): content for path, content in self.before.items()}
        disk, tried = Disk(paths), 0
        log = list(entries(log))
        for count, entry in enumerate([None, *log]):
            if entry:
                disk.take(entry, folders)
            for replay in range(replays):
                keeps = {0: lambda: False, 1: lambda: True}.get(replay, lambda: generator.random() < 0.5)
                files = {str(pathlib.Path(path).relative_to(self.folder)): self.plain(content)
                         for path, content in disk.after_loss(keeps).items()
                         if path.startswith((str(self.work), str(self.data)))}
                where = f"{name}, power lost after {count} of {len(log)} calls"
                self.judge(where, files, new)
                missing = [path for path, content in new.items() if "recovery" not in path and files.get(path) != content]
                if count == len(log) and missing:
                    self.fault(f"{where}: {missing} was reported to be saved")
                if name == "recover" and not any(path.endswith(("r.akd", ".akrecover")) for path in files):
                    self.fault(f"{where}: neither the recovery file nor what was made of it is left")
                tried += 1
        return tried


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("programs", nargs=4, help="the host, the library, a bundle, a configuration of fonts")
    parser.add_argument("--points", type=int, default=1000, help="where commands are killed")
    parser.add_argument("--replays", type=int, default=20, help="of each prefix of each command's log")
    parser.add_argument("--seed", type=int, default=random.SystemRandom().randrange(10**6))
    options = parser.parse_args()
    print(f"kill: seed {options.seed}", flush=True)
    generator = random.Random(options.seed)
    sweep = Sweep(*options.programs)
    killed = lost = 0
    for objects, name in ((objects, name) for objects in SIZES for name in SAVES):
        sweep.grow(objects)
        new, calls, log = sweep.prepare(name)
        replays = sweep.lose(name, log, new, options.replays, generator)
        points = [(number, how) for number in range(len(calls)) for how in ("kill", "torn")
                  if how == "kill" or "write" in calls[number]]
        points = generator.sample(points, min(len(points), max(1, options.points // len(SAVES) // len(SIZES))))
        for number, how in points:
            sweep.kill(name, number, how, new)
        print(f"{objects:4} objects, {name:9} {len(calls):3} calls, {len(points):4} kills, {replays:5} power losses", flush=True)
        killed, lost = killed + len(points), lost + replays
    print(f"kill: {killed} kills, {lost} power losses, {sweep.faults} faults")
    return 1 if sweep.faults else 0


if __name__ == "__main__":
    sys.exit(main())
