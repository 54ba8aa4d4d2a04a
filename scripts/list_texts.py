#!/usr/bin/env python3
"""Lists the texts of survey_road as a translation file in which each is its own translation.

    scripts/list_texts.py FILE

Texts are the literals in tr("...") and key("..."). Translators begin with a copy of the file, and
xlate_check --against it tells what a translation lacks.
"""
import ast
import pathlib
import re
import sys

folder = pathlib.Path(__file__).resolve().parent.parent / "examples/survey_road"
literals = re.compile(r'\b(?:tr|key)\(\s*((?:"(?:[^"\\]|\\.)*"\s*)+)')
texts = []
for source in sorted(folder.glob("*.cpp")):
    for match in literals.finditer(source.read_text(encoding="utf-8")):
        pieces = re.findall(r'"(?:[^"\\]|\\.)*"', match.group(1))
        text = "".join(ast.literal_eval(piece) for piece in pieces)
        if text not in texts:
            texts.append(text)
if not texts:
    sys.exit("no texts found")
lines = "".join(f"[{text}]\r\n[{text}]\r\n\r\n" for text in texts)
pathlib.Path(sys.argv[1]).write_bytes(b"\xff\xfe" + lines.encode("utf-16-le"))
print(f"{len(texts)} texts")
