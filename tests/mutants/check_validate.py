#!/usr/bin/env python3
"""What `objecthost validate` prints and returns: check_validate.py OBJECTHOST FOLDER_OF_TEST_BUNDLES PAGE

PAGE is docs/validator.md, which has a section for each check with the sentence that --list prints.
"""
import json
import os
import pathlib
import re
import shlex
import subprocess
import sys
import tempfile
import xml.etree.ElementTree

host, bundles, page = sys.argv[1], pathlib.Path(sys.argv[2]).resolve(), pathlib.Path(sys.argv[3])
faults = []


def expect(holds, what):
    if not holds:
        faults.append(what)


def run(*words, **environment):
    result = subprocess.run([host, "validate", *map(str, words)], capture_output=True, text=True, errors="replace",
                            check=False, timeout=300, env={**os.environ, "LC_ALL": "C.UTF-8", **environment})
    return result.returncode, result.stdout, result.stderr


def report(*words, **environment):
    """The checks of one bundle by their IDs."""
    code, output, error = run(*words, "--json", **environment)
    if not output:
        sys.exit(f"{words}: no report, exit code {code}: {error}")
    found = json.loads(output)["bundles"][0]
    checks = {check["id"]: check for check in found["checks"]}
    expect(code == (1 if found["failed"] else 0), f"{words}: exit code {code}: {error}")
    for word, result in (("passed", "passed"), ("failed", "failed"), ("skipped", "skipped")):
        expect(found.get(word) == sum(c["result"] == result for c in checks.values()), f"{words}: count of {word}")
    return checks


def mutant(folder, fault):
    link = folder / f"Mutant-{fault}.so"
    if not link.exists():
        link.symlink_to(bundles / "mutants" / "Mutant.so")
    return link


def check_page():
    listed = [re.match(r"(\S+) +(\d+)  (.*)", line).groups() for line in run("--list")[1].splitlines()]
    sections = {}
    for part in page.read_text().split("\n### ")[1:]:
        words = part.split("\n\n")
        sections[words[0].strip()] = " ".join(words[1].split())
        expect(words[2].startswith("Mend it: ") and len(words[2]) > 20, f"{words[0]}: the page does not say how to mend it")
    for name, level, asks in listed:
        expect(sections.get(name) == f"{asks} Level {level}.", f"{name}: the page says {sections.get(name)!r}")
    expect(set(sections) == {name for name, _, _ in listed}, "the page has sections of other checks")
    expect(len(listed) >= 60, f"only {len(listed)} checks")


def check_not_run(folder):
    """Nothing that could not be looked at is a success."""
    (folder / "empty.so").write_bytes(b"")
    (folder / "text.so").write_text("no library at all, and long enough to hold a header of one, or nearly\n")
    good = bundles / "mutants" / "Mutant.so"
    for words in ([], [folder / "empty.so"], [folder / "text.so"], [folder / "none.so"], [folder], ["/bin/sh"],
                  [good, folder / "none.so"], [good, "--level", "11"], [good, "--level", "0"], [good, "--seed", "-1"],
                  [good, "--only", "nothing"], [good, "--skip", "nothing"], [good, "--unknown"], [good, "--timeout", "0"],
                  [good, "--only", "class-id", "--skip", "class-id"], [good, "--only", "isolate-classes"],
                  [good, "--only", "class-id", "--junit", folder / "none" / "report.xml"]):
        code, _, error = run(*words)
        expect(code == 2 and error.count("\n") == 1, f"{words}: exit code {code}, {error!r}")


def check_ends(folder):
    """Whatever a bundle does fails its check alone."""
    crashed = report(mutant(folder, "keeps-record"), "--only", "setup-record-forgotten", "--only", "setup-word")
    check = crashed["setup-record-forgotten"]
    expect(crashed["setup-word"]["result"] == "passed", "a crash takes other checks with it")
    expect(check.get("signal") == 11 and "akmDraw" in check["done"], f"a crash is told as {check}")
    expect(any("Mutant::akmDraw" in call for call in check["calls"]), f"the calls of a crash: {check['calls']}")
    check = report(bundles / "Hangs.so", "--only", "setup-starts", "--timeout", "0.5")["setup-starts"]
    expect("no end within" in check["seen"] and any("pluginMain" in c for c in check["calls"]), f"a hang: {check}")
    check = report(bundles / "Faulty.so", "--only", "setup-starts", OBJECTHOST_FAULT="exit")["setup-starts"]
    expect("exit code 0" in check["seen"], f"an exit is told as {check}")
    check = report(mutant(folder, "a-byte-a-unit"), "--only", "draw-huge-bounds")["draw-huge-bounds"]
    expect(os.environ.get("AK_SANITIZE") or "an exception: " in check["seen"], f"an exception is told as {check}")
    started = report(bundles / "Refuses.so")
    expect("-4321" in started["setup-starts"]["seen"] and started["record-same"]["reason"] == "it needs setup-starts",
           f"a bundle that does not start: {started['record-same']}")


def check_repeats(folder):
    """The line of a failure repeats it, and a sequence is as short as it can be."""
    for fault, name in (("forgets-order", "order-random"), ("dies-of-bytes", "record-garbled"),
                        ("twelve-arguments", "make-random-arguments"), ("dies-of-gradient", "draw-styles")):
        first = report(mutant(folder, fault), "--only", name, "--seed", 7, "--level", 10)[name]
        words = shlex.split(first["repeat"])
        expect(words[:2] == ["objecthost", "validate"] and "--step" in words, f"{fault}: {first['repeat']}")
        again = report(*words[2:])[name]
        expect(all(first[key] == again[key] for key in ("done", "seen", "step")), f"{fault}: {first} and then {again}")
        if name == "order-random":
            expect(first["done"].count("\n") == 4, f"not the least sequence: {first['done']}")


def check_reports(folder):
    bad = mutant(folder, "shows-percent")
    xml_file = folder / "report.xml"
    checks = report(bad, "--junit", xml_file)
    suite = xml.etree.ElementTree.parse(xml_file).getroot().find("testsuite")
    expect(int(suite.get("tests")) == len(checks) and int(suite.get("failures")) == 1, "the counts of the JUnit report")
    failed = [case.get("name") for case in suite if case.find("failure") is not None]
    expect(failed == ["panel-settles"], f"the failures of the JUnit report: {failed}")
    code, output, _ = run(bad)
    expect(code == 1 and len(re.findall("^(ok |skipped|FAILED)", output, re.M)) == len(checks), "a line for each check")
    for word in ("asked", "done", "expected", "seen", "repeat", "mend"):
        expect(re.search(f"^ +{word} ", output, re.M), f"a failure does not say {word}")
    expect(run(bad, "--skip", "panel-settles")[0] == 0, "a check that is skipped fails")
    few = report(bad, "--level", 1, "--skip", "class-id")
    expect(0 < len(few) < len(checks) and "class-id" not in few, "the level or --skip does not count")


with tempfile.TemporaryDirectory() as name:
    check_page()
    for check_one in (check_not_run, check_ends, check_repeats, check_reports):
        check_one(pathlib.Path(name))
print("\n".join(faults) or "the validator says what it should")
sys.exit(1 if faults else 0)
