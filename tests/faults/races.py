#!/usr/bin/env python3
"""Lets others interfere with a program while it works: races.py OBJECTHOST LIBRARY BUNDLE FONTS_CONF [--rounds N] [NAME...]

Programs that read, write and recover the same files at once; a bundle that is replaced while it is loaded; a folder
that disappears; a disk, or a limit, that is full; a clock that jumps. Each case is a function below.
"""
import argparse
import resource
import shutil
import signal
import subprocess
import sys
import tempfile
import time

from commands import Commands, one_line

LONG = 60  # seconds within which a program has to do what it does at once, on any machine


class Races(Commands):
    def script(self, *lines, options=("--autosave", "0"), **variables):
        """A script that has done the lines and waits for more."""
        script = self.start(["script", *options], **variables)
        self.say(script, *lines, "history")
        return script

    def say(self, script, *lines):
        script.stdin.write("".join(line + "\n" for line in (*lines, "list")).encode())
        script.stdin.flush()
        for _ in range(LONG * 100):
            line = script.stdout.readline()
            if not line or line.startswith(b"1  "):  # the last line of the list
                return

    def wait(self, condition):
        end = time.monotonic() + LONG
        while not condition() and time.monotonic() < end:
            time.sleep(0.01)
        return condition()

    def recoveries(self):
        return list(self.data.glob("objecthost/recovery/*.akrecover"))

    def check(self, right, what):
        if not right:
            self.fault(what)

    def content(self, name="a.akd"):
        return (self.work / name).read_bytes()

    def refused(self, done, what):
        said = done.stderr.decode(errors="replace")
        self.check(done.returncode == 1 and one_line(said), f"{what}: {done.returncode}: {said}")

    # The cases.

    def save_and_list(self):
        """Who reads sees one state or another, whole, while somebody saves again and again."""
        script = self.start(["script"])
        script.stdin.write(("open a.akd\n" + "move 0 1,0\nsave\nmove 0 -1,0\nsave\n" * 100).encode())
        script.stdin.close()
        while script.poll() is None:
            done = self.run(["list", "a.akd"])
            self.check(done.returncode == 0 and done.stdout.count(b"\n") == 2, f"list: {done.stderr} {done.stdout}")
        self.check(script.returncode == 0, f"the script: {script.stderr.read()}")
        script.stdout.close()

    def save_and_save(self):
        """Of programs that save at once one wins, and the others are told."""
        programs = [self.start(["add", "a.akd", "stdRect"]) for _ in range(6)]
        codes = []
        for program in programs:
            _, said = program.communicate()
            codes.append(program.returncode)
            self.check(program.returncode == 0 or b"was changed by another program" in said, f"add: {said}")
        count = self.run(["list", "a.akd"]).stdout.count(b"\n")
        self.check(count == 2 + codes.count(0), f"{codes.count(0)} were added, {count - 2} are there")

    def autosave_and_recover(self):
        """A living program's file is nobody else's; a dead one's is recovered once, whole."""
        self.run(["recover", "0", "--discard"])
        script = self.script("open a.akd", "move 0 1,1")
        for step in range(10):
            listed = self.run(["recover"]).stdout
            self.check(listed == b"nothing is to be recovered\n", f"a living program's work is offered: {listed}")
            self.say(script, f"move 0 {step},1")
        self.check(self.wait(self.recoveries), "nothing was kept")
        script.kill()
        script.communicate()
        both = [self.start(["recover", "0", "--to", f"r{i}.akd"]) for i in range(2)]
        ends = [(program.communicate()[1], program.returncode) for program in both]
        self.check(any(code == 0 for _, code in ends), f"nobody recovered: {ends}")
        for i, (said, code) in enumerate(ends):
            self.check(code == 0 or one_line(said.decode()), f"recover: {said}")
            whole = self.run(["list", f"r{i}.akd"]).stdout.count(b"\n") == 2
            self.check(whole or code != 0, f"r{i}.akd is not whole")
        self.check(not self.recoveries(), "a recovered file is still there")

    def bundle_replaced(self):
        """By a rename, as installers do, and by writing into it, as cp does: the work is saved, or kept for recovery."""
        folder = self.folder / "plugins"
        folder.mkdir(exist_ok=True)
        for kind in ("renamed", "written"):
            self.reset()
            self.run(["recover", "0", "--discard"])
            bundle = folder / "Copy.so"
            shutil.copy(self.bundle, bundle)
            script = self.start(["--only-bundle", str(bundle), "script", "--autosave", "0"])
            self.say(script, "open a.akd", "move 0 1,1")
            self.check(self.wait(self.recoveries), "nothing was kept")
            if kind == "renamed":
                shutil.copy(self.bundle, folder / "new")
                (folder / "new").rename(bundle)
            else:
                bundle.write_bytes(b"\0" * 100)
            _, said = script.communicate(b"move 0 1,1\nset 0 Rounding=0.25\nsave\n")
            if script.returncode == 0 or kind == "renamed":
                self.check(script.returncode == 0, f"bundle {kind}: {script.returncode} {said}")
            else:
                self.check(self.content() == self.before["work/a.akd"], f"bundle {kind}: the document was changed")
                self.check(b"a.akd" in self.run(["recover"]).stdout, f"bundle {kind}: nothing is to be recovered")

    def folder_gone(self):
        """Between opening and saving: the save says so, and what is unsaved is not lost while the program runs."""
        folder = self.work / "deep"
        folder.mkdir()
        shutil.copy(self.work / "a.akd", folder)
        self.run(["recover", "0", "--discard"])
        script = self.script("open deep/a.akd", "move 0 1,1")
        shutil.rmtree(folder)
        self.check(self.wait(self.recoveries), "nothing was kept")
        _, said = script.communicate(b"save\n")
        self.check(script.returncode == 1 and one_line(said.decode()), f"save without a folder: {script.returncode} {said}")
        self.check(not folder.exists(), "the folder was made again")
        data = self.data / "objecthost"
        script = self.script("open a.akd")
        shutil.rmtree(data)
        self.say(script, "move 0 1,1", "move 0 1,1")
        _, said = script.communicate(b"save\n")
        self.check(script.returncode == 0, f"the folder for recovery is gone: {said}")

    def disk_full(self):
        """A limit on the size of files, and a disk of 100 kB where one can be made."""
        for words in (["add", "a.akd", "stdRect"], ["draw", "a.akd", "b.png", "--scale", "9"], ["draw", "a.akd", "b.jpg"]):
            done = subprocess.run([self.host, *words], cwd=self.work, env=self.environment, capture_output=True,
                                  preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (200, 200)))
            self.refused(done, f"{words[0]} beyond the limit")
            self.check(not self.changed(), f"{words[0]} beyond the limit changed {self.changed()}")
        with tempfile.TemporaryDirectory() as disk:
            inner = (f"mount -t tmpfs -o size=100k tmpfs {disk} || exit 77; cp a.akd {disk}; cd {disk} || exit 77; "
                     f"head -c 200k /dev/zero > full 2> /dev/null; '{self.host}' add a.akd stdRect; code=$?; "
                     f"'{self.host}' draw a.akd b.png; echo $code $?; ls -A; cmp a.akd {self.work}/a.akd && echo same")
            done = subprocess.run(["unshare", "-m", "sh", "-c", inner], cwd=self.work, env=self.environment, capture_output=True)
        if done.returncode != 77 and b"unshare" not in done.stderr:
            self.check(done.stdout == b"1 1\na.akd\nfull\nsame\n", f"a full disk: {done.stdout} {done.stderr}")

    def clock_jumps(self):
        """The clock of the day goes an hour back and forth: autosaves come all the same, and what they leave is found."""
        self.run(["recover", "0", "--discard"])
        script = self.script("open a.akd", "move 0 1,1", options=("--autosave", "0.2"), FAIL_CLOCK="1")
        for _ in range(3):
            self.check(self.wait(self.recoveries), "the clock jumped, and nothing was kept")
            before = self.recoveries()[0].stat().st_mtime_ns
            self.say(script, "move 0 1,1")
            self.check(self.wait(lambda: self.recoveries()[0].stat().st_mtime_ns != before), "kept once only")
        script.send_signal(signal.SIGKILL)
        script.communicate()
        self.check(b"a.akd" in self.run(["recover"], FAIL_CLOCK="1").stdout, "what was kept is not found")
        done = self.run(["add", "a.akd", "stdRect"], FAIL_CLOCK="1")
        self.check(done.returncode == 0, f"add while the clock jumps: {done.stderr}")


CASES = [Races.save_and_list, Races.save_and_save, Races.autosave_and_recover, Races.bundle_replaced, Races.folder_gone,
         Races.disk_full, Races.clock_jumps]


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("programs", nargs=4, help="the host, the library, a bundle, a configuration of fonts")
    parser.add_argument("names", nargs="*")
    parser.add_argument("--rounds", type=int, default=1)
    parser.add_argument("--minutes", type=float, default=0, help="rounds for so long, instead")
    options = parser.parse_intermixed_args()
    races = Races(*options.programs)
    end = time.monotonic() + options.minutes * 60
    rounds = 0
    while rounds < options.rounds or time.monotonic() < end:
        rounds += 1
        for case in CASES:
            if not options.names or case.__name__ in options.names:
                races.reset()
                faults = races.faults
                case(races)
                if rounds == 1 or races.faults != faults:
                    print(f"{case.__name__:21} {'ok' if races.faults == faults else 'FAULTS'}", flush=True)
    print(f"races: {rounds} rounds of {len(options.names or CASES)} cases, {races.faults} faults")
    return 1 if races.faults else 0


if __name__ == "__main__":
    sys.exit(main())
