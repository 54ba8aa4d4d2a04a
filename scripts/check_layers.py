#!/usr/bin/env python3
"""Checks who includes whom, where the target is asked for, and what the exported names are.

Layers, from the bottom; a folder may include itself and what is listed for it. `platform` below
stands for winapi.h and crt.h, in sources only; the plain types of win_types.h and target.h, and
the hosts' settings of the port, are open to all headers.
"""
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
LIBRARY = ROOT / "zorutils"

ALLOWED = {
    "platform": {"core"},
    "core": set(),
    "zortext": {"core", "platform", "zorsys/heap.h", "zorsys/library_allocation.h",
                "fs/platform_file.h", "fs/mapped_file_internal.h"},
    "formats": {"core", "platform", "zortext", "zorsys/zor_time.h", "fs/platform_file.h",
                "xml/xml_writer_internal.h"},
    "fs": {"core", "platform", "zortext", "zorsys/zor_time.h", "zorsys/heap.h",
           "formats/number_text.h"},
    "xml": {"core", "platform", "zortext", "zorsys/heap.h", "zorsys/library_allocation.h"},
    "zorsys": {"core", "platform", "zortext", "fs", "formats"},
}
# Two functions that everyone may call; their header includes nothing but core/.
EVERYONE = {"zorsys/zor_check.h"}
PLAIN = {"platform/win_types.h", "platform/target.h"}

errors = []


def complain(path, line, text):
    errors.append(f"{path.relative_to(ROOT)}:{line}: {text}")


def check_file(path):
    folder = path.relative_to(LIBRARY).parts[0]
    for number, line in enumerate(path.read_text().splitlines(), 1):
        if folder != "platform" and re.match(r"\s*#\s*(if|ifdef|ifndef|elif)\b.*\b(_?WIN(32|64)|__linux__|__unix__)\b", line):
            complain(path, number, "the target is asked for outside platform/")
        match = re.match(r'\s*#\s*include\s+"zorutils/([^"]+)"', line)
        if not match:
            if folder != "platform" and re.match(r"\s*#\s*include\s+<(windows|unistd|sys/|fcntl|dlfcn|pthread)", line):
                complain(path, number, "a system header outside platform/")
            continue
        target = match.group(1)
        other = target.split("/")[0]
        if target in EVERYONE | PLAIN or other == folder or "/" not in target:
            continue
        allowed = ALLOWED[folder]
        if other not in allowed and target not in allowed:
            complain(path, number, f"{folder} may not include {target}")
        elif other == "platform" and path.suffix == ".h" and "internal" not in path.name and folder != "platform":
            complain(path, number, "a public header may include the plain types only")


for source in sorted(LIBRARY.rglob("*")):
    if source.suffix in {".h", ".cpp", ".c"} and len(source.relative_to(LIBRARY).parts) > 1:
        check_file(source)

check = LIBRARY / "zorsys/zor_check.h"
for number, line in enumerate(check.read_text().splitlines(), 1):
    match = re.match(r'\s*#\s*include\s+"zorutils/([^"]+)"', line)
    if match and not match.group(1).startswith("core/"):
        complain(check, number, "the checks' header may include core/ only")

# The umbrella header names every public header.
umbrella = LIBRARY / "zorutils.h"
named = set(re.findall(r'#include "zorutils/([^"]+)"', umbrella.read_text()))
for header in sorted(LIBRARY.rglob("*.h")):
    name = header.relative_to(LIBRARY).as_posix()
    if "/" in name and not name.startswith("platform/") and "_internal" not in name and name not in named:
        text = header.read_text()
        if not any(f'#include "zorutils/{name}"' in (LIBRARY / other).read_text() for other in named):
            complain(umbrella, 1, f"{name} is missing")

for folder in ("tests", "examples", "fuzz", "benchmarks"):
    for source in sorted((ROOT / folder).rglob("*")):
        if source.suffix not in {".h", ".cpp"} or re.search(r"_(windows|posix)\.", source.name) or "platform" in source.parts:
            continue
        for number, line in enumerate(source.read_text().splitlines(), 1):
            if re.match(r"\s*#\s*(if|ifdef|ifndef|elif)\b.*\b_?WIN(32|64)\b", line):
                complain(source, number, "the target is asked for outside a file of that target")

print("\n".join(errors) if errors else "layers: clean")
sys.exit(1 if errors else 0)
