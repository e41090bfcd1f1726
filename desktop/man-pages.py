#!/usr/bin/env python3
"""Makes the manual pages of all commands from what the program says of them itself.

usage: man-pages.py PROGRAM FOLDER

Writes objecthost.1.gz and, for each command, objecthost-COMMAND.1.gz into FOLDER.
"""
import gzip
import os
import pathlib
import re
import subprocess
import sys


def said(program, *words):
    environment = dict(os.environ, LC_ALL="C", LANGUAGE="")
    return subprocess.run([program, *words], check=True, capture_output=True, text=True, env=environment).stdout


def escaped(text):
    text = text.replace("\\", "\\e").replace("-", "\\-")
    return re.sub(r"^([.'])", r"\\&\1", text, flags=re.MULTILINE)


def as_it_stands(text):
    return f".nf\n{escaped(text)}\n.fi\n"


def described(block):
    """A paragraph is filled; one with lines that are set in, or a list, stands as it is."""
    if any(line.startswith(" ") for line in block.split("\n")):
        return f".PP\n{as_it_stands(block)}"
    return f".PP\n{escaped(block)}\n"


def page(name, title, summary, text, version):
    """The page of a help text: its usage up to the first empty line, and the rest."""
    usage, *blocks = text.rstrip("\n").split("\n\n")
    usage = "\n".join(line[len("usage: "):] for line in usage.split("\n"))
    return (f'.TH {name.upper()} 1 "" "objecthost {version}" "objecthost"\n'
            f".SH NAME\n{escaped(name)} \\- {escaped(summary)}\n"
            f".SH SYNOPSIS\n{as_it_stands(usage)}"
            f".SH DESCRIPTION\n{''.join(map(described, blocks))}"
            f".SH SEE ALSO\n{escaped(title)}\n")


def main():
    program, folder = sys.argv[1], pathlib.Path(sys.argv[2])
    folder.mkdir(parents=True, exist_ok=True)
    version = said(program, "--version").split()[1]
    text = said(program, "--help")
    listed = re.search(r"^commands\n((?:  .*\n)+)", text, re.MULTILINE).group(1)
    commands = [line.split(None, 1) for line in listed.splitlines()]
    others = ",\n".join(f"objecthost-{name}(1)" for name, _ in commands)
    pages = {"objecthost": page("objecthost", others, "a host for plug-in bundles and its documents", text, version)}
    for name, summary in commands:
        title = f"objecthost-{name}"
        pages[title] = page(title, "objecthost(1)", summary, said(program, name, "--help"), version)
    for title, text in pages.items():
        (folder / f"{title}.1.gz").write_bytes(gzip.compress(text.encode(), mtime=0))


main()
