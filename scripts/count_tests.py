#!/usr/bin/env python3
"""Adds up the counts of GoogleTest's XML reports; fails on a failure or a missing report."""
import os
import sys
import xml.etree.ElementTree as tree

passed = failed = skipped = missing = 0
for path in sys.argv[1:]:
    if not os.path.exists(path):
        missing += 1
        continue
    for case in tree.parse(path).getroot().iter("testcase"):
        if case.find("failure") is not None:
            failed += 1
        elif case.find("skipped") is not None or case.get("result") == "skipped":
            skipped += 1
        elif case.get("status") == "run":
            passed += 1

text = f"{passed} passed"
if failed:
    text += f", {failed} failed"
if skipped:
    text += f", {skipped} skipped"
if missing:
    text += f", {missing} programs ended without a report"
print(text)
sys.exit(1 if failed or missing or not passed else 0)
