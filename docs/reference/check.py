#!/usr/bin/env python3
"""What Doxygen does not ask of the headers: check.py XML_FOLDER EXAMPLES_FOLDER

Each header says what it is for, each value of an enumeration is documented, and each public class is used by an example.
"""
import pathlib
import re
import sys
import xml.etree.ElementTree as ElementTree

xml, examples = map(pathlib.Path, sys.argv[1:])
words = set()
for source in sorted(examples.rglob("*")):
    if source.suffix in (".cpp", ".h"):
        words.update(re.findall(r"\w+", re.sub(r"//.*", "", source.read_text())))


def is_documented(element):
    return any("".join(element.find(part).itertext()).strip() for part in ("briefdescription", "detaileddescription"))


faults, classes = [], 0
for entry in ElementTree.parse(xml / "index.xml").getroot():
    kind, name = entry.get("kind"), entry.findtext("name")
    if kind not in ("file", "class", "struct"):
        continue
    compound = ElementTree.parse(xml / (entry.get("refid") + ".xml")).find("compounddef")
    if kind == "file" and not is_documented(compound):
        faults.append(f"{name}: its first comment has to say what the header is for")
    for value in compound.iter("enumvalue"):
        if not is_documented(value):
            faults.append(f"{name}: {value.findtext('name')} is not documented")
    # Specialisations and classes within others are shown with what they belong to.
    if kind != "file" and "<" not in name and "::" not in name:
        classes += 1
        if name not in words:
            faults.append(f"{name}: no example in {examples}/ uses it")
for fault in faults:
    print(fault)
print(f"{classes} classes, {len(faults)} faults")
sys.exit(bool(faults) or classes < 50)
