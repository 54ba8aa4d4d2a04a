#!/usr/bin/env python3
"""Compares the exported names of both products with the checked-in lists.

  scripts/check_exports.py            fails on a lost or a stray export
  scripts/check_exports.py --update   writes the lists anew

Names are compared demangled, so that one list can be read; the two products have lists of their
own, since the 16-bit unit and the port's own settings have other names there.
"""
import pathlib
import re
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
PRODUCTS = {
    "linux": (ROOT / "build/linux/bin/libzorutils.so", ROOT / "tests/exports/linux.txt"),
    "windows": (ROOT / "build/windows/bin/zorutils.dll", ROOT / "tests/exports/windows.txt"),
}


def run(*command, text=None):
    return subprocess.run(command, input=text, capture_output=True, text=True, check=True).stdout


def mangled_names(target, path):
    if target == "linux":
        lines = run("nm", "-D", "--defined-only", "--format=posix", str(path)).splitlines()
        return [line.split()[0].split("@")[0] for line in lines]
    table = run("x86_64-w64-mingw32-objdump", "-p", str(path)).split("[Ordinal/Name Pointer] Table")[1]
    return re.findall(r"\[ *\d+\] (?:\+base\[ *\d+\] +[0-9a-f]+ )?(\S+)", table)


def exported(target, path):
    names = mangled_names(target, path)
    demangled = run("c++filt", "-n", text="\n".join(names)).splitlines()
    # Complete and base constructors demangle alike. What the compiler's library instantiated into
    # the product is not the interface.
    return sorted({name for name in demangled if not re.match(r"(typeinfo( name)? for |vtable for |guard variable for )?std::", name)
                   and name not in {"_init", "_fini"}})


update = "--update" in sys.argv
status = 0
for target, (product, listing) in PRODUCTS.items():
    if not product.exists():
        print(f"exports: {target}: not built")
        status = 1
        continue
    names = exported(target, product)
    if update:
        listing.parent.mkdir(parents=True, exist_ok=True)
        listing.write_text("\n".join(names) + "\n")
    expected = listing.read_text().splitlines() if listing.exists() else []
    lost, stray = sorted(set(expected) - set(names)), sorted(set(names) - set(expected))
    for name in lost:
        print(f"exports: {target}: lost {name}")
    for name in stray:
        print(f"exports: {target}: stray {name}")
    if lost or stray:
        status = 1
    else:
        print(f"exports: {target}: {len(names)} names, as listed")
sys.exit(status)
