#!/usr/bin/env python3
"""Checks the tree: includes run downwards only, native libraries stay behind the native layer, headers stand alone.

usage: check_structure.py ROOT [COMPILER]

Without a compiler only the includes are checked. Prints each finding and exits with 1 when there is one.
"""
import concurrent.futures
import os
import pathlib
import re
import subprocess
import sys

# What each layer may include of the others. The first folder that a path begins with names its layer.
LAYERS = {
    "platform/include": set(),
    "platform": {"platform/include"},
    "graphics/values": set(),
    "kit": {"graphics/values"},
    "graphics": {"kit", "graphics/values", "platform/include"},
    "plugin": {"graphics", "kit", "graphics/values"},
    "host": {"graphics", "kit", "graphics/values", "platform/include"},
}
# Within the kit only the bridge to the native layer may see it.
PLATFORM_BRIDGE = re.compile(r"kit/AKMacOS\w*\.(h|cpp)$")
NATIVE_LIBRARY = re.compile(r"^(cairo|pango|png|jpeglib|jerror|tiff|fontconfig|fribidi|glib(?!mm)|hb)")
TOOLKIT = re.compile(r"^(gtk|gdk|glibmm|gio|sigc)")
INCLUDE = re.compile(r'^\s*#\s*include\s+(["<])([^">]+)[">]', re.MULTILINE)


def layer_of(path):
    matches = [name for name in LAYERS if path.startswith(name + "/")]
    return max(matches, key=len) if matches else None


def target_of(root, name):
    for prefix in ("", "platform/include/"):
        if (root / (prefix + name)).is_file():
            return prefix + name
    return None


def may_include(source, layer, target):
    other = layer_of(target)
    if other == layer or other in LAYERS[layer]:
        return True
    return other == "platform/include" and PLATFORM_BRIDGE.search(source) is not None


def include_findings(root, source):
    layer = layer_of(source)
    for bracket, name in INCLUDE.findall((root / source).read_text()):
        if TOOLKIT.match(name) and not source.startswith("host/window/"):
            yield f"{source}: includes <{name}>, which only host/window/ may"
        if NATIVE_LIBRARY.match(name) and layer != "platform":
            yield f"{source}: includes <{name}>, which only platform/ may"
        target = target_of(root, name)
        if target is None:
            if bracket == '"':
                yield f"{source}: includes \"{name}\", which does not exist"
        elif not may_include(source, layer, target):
            yield f"{source}: includes \"{name}\" of {layer_of(target)}, which is not below {layer}"


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
        for layer in ("platform", "kit", "graphics", "plugin", "host")
        for path in (root / layer).rglob("*")
        if path.suffix in (".h", ".cpp"))
    if len(sources) < 20:
        print(f"only {len(sources)} sources found below {root}")
        return 1
    findings = [finding for source in sources for finding in include_findings(root, source)]
    if len(sys.argv) > 2:
        headers = [source for source in sources if source.endswith(".h")]
        with concurrent.futures.ThreadPoolExecutor(max_workers=os.cpu_count()) as pool:
            results = pool.map(lambda header: compile_finding(root, sys.argv[2], header), headers)
            findings += [finding for finding in results if finding is not None]
    for finding in findings:
        print(finding)
    print(f"{len(sources)} files checked, {len(findings)} findings")
    return 1 if findings else 0


if __name__ == "__main__":
    sys.exit(main())
