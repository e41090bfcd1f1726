"""Commands that are run again and again while something fails, and the folder that they run in."""
import collections
import os
import pathlib
import re
import subprocess
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
    "recover": ["recover", "0", "--to", "r.akd"],
    "kept": ["recover"],
    "gallery": ["gallery", "g.png"],
    "shapes": ["shapes", "s.png"],
    "text": ["text", "t.png"],
    "textpdf": ["text", "t.pdf"],
    "textsvg": ["text", "t.svg"],
}
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
SETUP = """new a.akd --size 100,80
add a.akd stdRect --bounds 10,10,60,40
set a.akd 0 Brush.Style=LinearGradient Pen.Size=2
add a.akd stdRect --bounds 30,20,90,70 --angle 20
copy a.akd 0 --to clip
"""
UNSAVED = "open a.akd\nmove 0 1,1\nlist\n"


class Commands:
    """A folder with a document, a script, and what a killed program left to be recovered."""

    def __init__(self, host, library, bundle, fonts):
        self.host, self.library, self.bundle = (os.path.realpath(path) for path in (host, library, bundle))
        self.scratch = tempfile.TemporaryDirectory()
        self.folder = pathlib.Path(self.scratch.name)
        self.data = self.folder / "data"
        self.environment = dict(os.environ, LC_ALL="C", FONTCONFIG_FILE=os.path.realpath(fonts),
                                XDG_CACHE_HOME=str(self.folder / "cache"), XDG_DATA_HOME=str(self.data))
        self.work = self.folder / "work"
        self.work.mkdir()
        for line in SETUP.splitlines():
            done = self.run(line.split())
            if done.returncode != 0:
                raise SystemExit(f"{line}: {done.stderr.decode()}")
        (self.work / "lines").write_text(SCRIPT)
        self.leave_unsaved()
        self.before = self.files()
        self.kinds = collections.Counter()
        self.faults = 0

    def leave_unsaved(self):
        """A script that is killed with unsaved changes."""
        script = self.start(["script", "--autosave", "0"])
        script.stdin.write(UNSAVED.encode())
        script.stdin.flush()
        script.stdout.readline()
        while not list(self.data.glob("objecthost/recovery/*.akrecover")):
            pass
        script.kill()
        script.communicate()

    def start(self, words, **variables):
        environment = dict(self.environment, **({"LD_PRELOAD": self.library, **variables} if variables else {}))
        return subprocess.Popen([self.host, *words], cwd=self.work, env=environment, stdin=subprocess.PIPE,
                                stdout=subprocess.PIPE, stderr=subprocess.PIPE)

    def run(self, words, **variables):
        """With variables for the library, that is preloaded."""
        environment = dict(self.environment, **({"LD_PRELOAD": self.library, **variables} if variables else {}))
        words = [word.replace("{bundle}", self.bundle) for word in words]
        return subprocess.run([self.host, *words], cwd=self.work, env=environment, capture_output=True, timeout=20,
                              stdin=subprocess.DEVNULL)

    def paths(self):
        """All but what programs leave by way of memory: which bundles passed."""
        return [path for folder in (self.work, self.data) for path in folder.rglob("*") if path.is_file()]

    def files(self):
        return {str(path.relative_to(self.folder)): self.plain(path.read_bytes()) for path in self.paths()}

    @staticmethod
    def plain(content):
        """A file without the time at which it was made."""
        return re.sub(rb"/CreationDate \([^)]*\)", b"", content)

    def reset(self):
        for path in self.paths():
            path.unlink()
        for name, content in self.before.items():
            (self.folder / name).parent.mkdir(parents=True, exist_ok=True)
            (self.folder / name).write_bytes(content)

    def changed(self):
        return [name for name, content in self.files().items() if self.before.get(name) != content] + [
            name for name in self.before if not (self.folder / name).exists()]

    def fault(self, what):
        self.faults += 1
        if self.faults <= 40:
            print(f"FAULT: {what}", flush=True)


def one_line(said):
    """Whether a program that failed said why in one line, bundles that it left out aside."""
    lines = [line for line in said.splitlines() if line.startswith("objecthost: ") and "skipped: " not in line]
    return len(lines) == 1
