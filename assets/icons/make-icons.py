#!/usr/bin/env python3
"""Writes every drawing below packaging/icons from the tables beside this script. Run it after changing one of them."""
import pathlib

import svgkit
from artwork import APP, DOC, HINT_OPEN
from commands import COMMANDS, WIDGETS
from cursors import CURSORS
from tools import FADE, HISTORY, HISTORY_OWN, TOOLS

ROOT = pathlib.Path(__file__).resolve().parents[2] / "packaging" / "icons"


def defs_of(parts):
    return [f"<defs>{FADE}</defs>"] if any(p.paint == "url(#fade)" for p in parts) else []


def main():
    files = {}
    for folder, table in (("commands", COMMANDS), ("tools", TOOLS), ("widgets", WIDGETS)):
        for name, parts in table.items():
            files[f"{folder}/{name}.svg"] = svgkit.icon(parts, defs_of(parts))
    for group, name in enumerate(HISTORY):
        parts = HISTORY_OWN.get(name) or TOOLS[name]
        files[f"history/{group:02}.svg"] = svgkit.small(parts, 23, 22, 3, 3, defs_of(parts))
    for name, text in CURSORS.items():
        files[f"cursors/{name}.svg"] = text
    files["app/kestrune.svg"] = APP
    files["doc.svg"] = DOC
    files["hint-open.svg"] = HINT_OPEN

    for old in ROOT.glob("**/*.svg"):
        if str(old.relative_to(ROOT)) not in files:
            old.unlink()
    for name, text in files.items():
        path = ROOT / name
        path.parent.mkdir(parents=True, exist_ok=True)
        if not path.exists() or path.read_text() != text:
            path.write_text(text)
    print(len(files), "drawings")


if __name__ == "__main__":
    main()
