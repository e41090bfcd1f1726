#!/usr/bin/env python3
"""docs/what-calls-what.md names every method slot, by its number, and every entry of the host's tables.

check_what_calls_what.py SOURCE_FOLDER
"""
import json
import pathlib
import re
import sys

docs = pathlib.Path(sys.argv[1]) / "docs"
abi = json.loads((docs / "abi.json").read_text())
page = (docs / "what-calls-what.md").read_text()
rows = dict(re.findall(r"^\| (\d+) `(\w+)` \|", page, re.M))
faults = [f"slot {slot['slot']} {slot['name']}" for slot in abi["slots"]["entries"] if rows.get(str(slot["slot"])) != slot["name"]]
# A table's entries stand in the sections of its services.
services = page.split("## Services of the host")[1]
sections = {"AKGeneralTable": "General", "AKClassTable": "Classes", "AKHandlerTable": "The document",
            "AKControlTable": "Entries of a control", "AKPanelTable": "Entries of a panel"}
for table, title in sections.items():
    begin = services.index(title)
    text = services[begin:][:re.search(r"\n### |\n\| Entries|\Z", services[begin + 1:]).start() + 1]
    faults += [f"{table}: {entry['name']}" for entry in abi["tables"][table]["entries"]
               if entry["kind"] != "field" and f"`{entry['name']}`" not in text]
print("\n".join(f"not on docs/what-calls-what.md: {fault}" for fault in faults) or "every slot and entry is there")
sys.exit(bool(faults))
