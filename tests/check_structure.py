#!/usr/bin/env python3
"""Checks the tree: includes run downwards only, between layers and between the rooms of a layer, native libraries stay
behind the native layer, headers stand alone.

usage: check_structure.py ROOT [COMPILER]

Without a compiler only the includes are checked. Prints each finding and exits with 1 when there is one.
"""
import collections
import concurrent.futures
import graphlib
import os
import pathlib
import re
import subprocess
import sys

# What each layer may include of the others. The first folder that a path begins with names its layer.
LAYERS = {
    "platform/include": set(),
    "platform": {"platform/include"},
    "kit": set(),
    "graphics": {"kit", "platform/include"},
    "plugin": {"graphics", "kit"},
    "torture": {"graphics", "kit"},
    "host": {"graphics", "kit", "platform/include"},
}
# The rooms of a layer, lowest first: a file includes nothing of a room above its own. What lies beside the rooms gathers
# them or stands for the whole layer, and is included by none of them.
ROOMS = {
    "platform": ("raster", "foundation", "paths", "clips", "graphics", "pages", "codecs", "text",
                 "system"),
    "kit": ("os", "log", "containers", "geometry", "text", "files", "streams", "values", "system", "host", "panels", "objects"),
    "graphics": ("geometry", "paint", "text", "paths", "images", "context", "bitmaps"),
}
# The bridge to the native drawing API, called by the sources of every room of its layer and showing them their own
# types: the one circle between rooms. Its headers are seen by no other header.
BRIDGE = "graphics/native/"
# So that a thing is found in its room at a glance.
MAX_FILES_IN_A_ROOM = 32
# Within the kit only the bridge to the native layer may see it, and what asks a system whose own layer it is.
PLATFORM_BRIDGE = re.compile(r"kit/(system/AKMacOS\w*|os/system/\w+)\.(h|cpp)$")
NATIVE_LIBRARY = re.compile(r"^(cairo|pango|png|jpeglib|jerror|tiff|fontconfig|fribidi|glib(?!mm|-unix)|hb)")
# Where text of other programs is read, by the parser of the library that the native layer's text stands on.
MARKUP_READER = "host/svg/SvgTree.cpp"
TOOLKIT = re.compile(r"^(gtk|gdk|glibmm|glib-unix|gio|sigc)")
# Sources for another system, which are not compiled here.
FOREIGN = re.compile(r"(kit/os|platform)/system/")
INCLUDE = re.compile(r'^\s*#\s*include\s+(["<])([^">]+)[">]', re.MULTILINE)


def layer_of(path):
    matches = [name for name in LAYERS if path.startswith(name + "/")]
    return max(matches, key=len) if matches else None


def target_of(root, name):
    for prefix in ("", "platform/include/"):
        if (root / (prefix + name)).is_file():
            return prefix + name
    return None


def room_of(path, layer):
    folders = path[len(layer) + 1:].split("/")
    return folders[0] if len(folders) > 1 else ""


def room_may_include(source, layer, target):
    """Whether the order of the layer's rooms lets `source` include `target` of the same layer."""
    rooms = ROOMS.get(layer)
    if rooms is None or source.startswith(BRIDGE):
        return True
    if target.startswith(BRIDGE):
        return source.endswith(".cpp")
    own, other = room_of(source, layer), room_of(target, layer)
    return own in ("", other) or other in rooms[:rooms.index(own)]


def may_include(source, layer, target):
    other = layer_of(target)
    if other == layer:
        return room_may_include(source, layer, target)
    if other in LAYERS[layer]:
        return True
    return other == "platform/include" and PLATFORM_BRIDGE.search(source) is not None


def include_findings(root, source):
    layer = layer_of(source)
    for bracket, name in INCLUDE.findall((root / source).read_text()):
        if TOOLKIT.match(name) and not source.startswith("host/window/"):
            yield f"{source}: includes <{name}>, which only host/window/ may"
        may_see_glib = source.startswith("host/window/") or source == MARKUP_READER
        is_allowed = name.startswith("glib") and may_see_glib
        if NATIVE_LIBRARY.match(name) and layer != "platform" and not is_allowed:
            yield f"{source}: includes <{name}>, which only platform/ may"
        target = target_of(root, name)
        if target is None:
            if bracket == '"':
                yield f"{source}: includes \"{name}\", which does not exist"
        elif not may_include(source, layer, target):
            yield f"{source}: includes \"{name}\", which is not below it"


def room_findings(sources):
    """Rooms that nobody keeps an order of, and rooms too full to find a thing in."""
    counts = collections.Counter(os.path.dirname(source) for source in sources)
    for folder, count in sorted(counts.items()):
        layer = layer_of(folder + "/")
        room = room_of(folder + "/", layer)
        if layer in ROOMS and room and room not in ROOMS[layer] and not f"{folder}/".startswith(BRIDGE):
            yield f"{folder}: a room without a place in the order of {layer}'s rooms"
        if count > MAX_FILES_IN_A_ROOM:
            yield f"{folder}: {count} files; more than {MAX_FILES_IN_A_ROOM} hide what is there"


def include_circles(root, sources):
    """Pairs and longer rings of headers that include each other; every header stands above what it includes."""
    includes = {source: [target for _, name in INCLUDE.findall((root / source).read_text())
                         if (target := target_of(root, name)) is not None]
                for source in sources if source.endswith(".h")}
    try:
        graphlib.TopologicalSorter(includes).prepare()
    except graphlib.CycleError as error:
        yield "headers include each other: " + " -> ".join(error.args[1])


def proven_headers(root, sources):
    """Those that the build compiles before anything else, as the first include of a source: they stand alone."""
    for source in sources:
        if source.endswith(".cpp") and not FOREIGN.match(source):
            first = INCLUDE.search((root / source).read_text())
            if first and (target := target_of(root, first.group(2))) is not None:
                yield target


def compile_finding(root, compiler, header):
    command = [compiler, "-std=c++20", "-fsyntax-only", "-x", "c++", "-Wall", "-Werror", "-I", str(root),
               "-I", str(root / "platform/include"), "-"] + os.environ.get("HEADER_FLAGS", "").split()
    source = f'#include "{root / header}"\n'
    result = subprocess.run(command, input=source, capture_output=True, text=True, check=False)
    return None if result.returncode == 0 else f"{header}: does not compile alone\n{result.stderr[:2000]}"


def main():
    root = pathlib.Path(sys.argv[1])
    sources = sorted(
        str(path.relative_to(root))
        for layer in ("platform", "kit", "graphics", "plugin", "torture", "host")
        for path in (root / layer).rglob("*")
        if path.suffix in (".h", ".cpp"))
    if len(sources) < 20:
        print(f"only {len(sources)} sources found below {root}")
        return 1
    findings = [finding for source in sources for finding in include_findings(root, source)]
    findings += [*room_findings(sources), *include_circles(root, sources)]
    if len(sys.argv) > 2:
        headers = sorted({source for source in sources if source.endswith(".h")} - set(proven_headers(root, sources)))
        print(f"{len(headers)} headers compiled alone, the others by the build")
        with concurrent.futures.ThreadPoolExecutor(max_workers=os.cpu_count()) as pool:
            results = pool.map(lambda header: compile_finding(root, sys.argv[2], header), headers)
            findings += [finding for finding in results if finding is not None]
    for finding in findings:
        print(finding)
    print(f"{len(sources)} files checked, {len(findings)} findings")
    return 1 if findings else 0


if __name__ == "__main__":
    sys.exit(main())
