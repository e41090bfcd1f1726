#!/usr/bin/env python3
"""Whether the validator's checks find what they are for, and nothing else.

usage: check_mutants.py OBJECTHOST FOLDER_OF_MUTANTS HONEST_BUNDLE...

Each mutant of mutants.txt has to fail the check that stands beside it, each check needs a mutant, and honest bundles pass
them all at level 5. Prints what is not so and the share of mutants that were found.
"""
import collections
import concurrent.futures
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile

TABLE = pathlib.Path(__file__).with_name("mutants.txt")
# A sanitizer's allocator tells no numbers and fills memory, and its programs do not run in valgrind: these checks are skipped then.
NEEDS_PLAIN_HEAP = {"load-heap", "make-heap", "draw-heap", "make-initialised"}


def run(host, *words):
    result = subprocess.run([host, "validate", *words], capture_output=True, text=True, errors="replace", check=False,
                            stdin=subprocess.DEVNULL, timeout=300, env={**os.environ, "LC_ALL": "C.UTF-8"})
    return result.returncode, result.stdout + result.stderr


def bundle_of(folder, links, fault):
    """A file of its own for a fault of the file, and a link to the common one otherwise."""
    own = folder / f"Mutant-{fault}.so"
    if own.exists():
        return own
    link = links / own.name
    link.symlink_to(folder / "Mutant.so")
    return link


def main():
    host, folder = sys.argv[1], pathlib.Path(sys.argv[2]).resolve()
    rows = [line.split(maxsplit=2) for line in TABLE.read_text().splitlines() if line and line[0] != "#"]
    listed = {line.split()[0] for line in run(host, "--list")[1].splitlines()}
    findings = [f"{check}: no such check" for _, check, _ in rows if check not in listed]
    findings += [f"{check}: no mutant needs it" for check in sorted(listed - {check for _, check, _ in rows})]
    findings += [f"{fault}: named twice" for fault, count in collections.Counter(r[0] for r in rows).items() if count > 1]
    left_out = NEEDS_PLAIN_HEAP if os.environ.get("AK_SANITIZE") else set()
    if left_out or shutil.which("valgrind") is None:
        left_out = left_out | {"memory-valgrind"}
    rows = [row for row in rows if row[1] not in left_out]
    found = 0
    with tempfile.TemporaryDirectory() as links, concurrent.futures.ThreadPoolExecutor(2) as pool:
        bundles = [bundle_of(folder, pathlib.Path(links), fault) for fault, _, _ in rows]
        runs = pool.map(lambda row, bundle: run(host, str(bundle), "--only", row[1]), rows, bundles)
        for (fault, check, what), (code, output) in zip(rows, runs):
            if code == 1 and f"FAILED  {check}\n" in output:
                found += 1
            else:
                findings.append(f"{fault} ({what}): {check} does not find it, exit code {code}\n{output}")
        for bundle in sys.argv[3:]:
            code, output = run(host, bundle)
            if code != 0:
                findings.append(f"{bundle}: a false alarm, exit code {code}\n{output}")
    print("\n".join(findings))
    print(f"{found} of {len(rows)} mutants found, {100 * found / len(rows):.1f} %; {len(listed)} checks")
    return 1 if findings else 0


if __name__ == "__main__":
    sys.exit(main())
