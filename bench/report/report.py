#!/usr/bin/env python3
"""Writes results.json, table.md and the plots from the benchmark programs' results, and prints the table.

The exit code says whether the report could be written, not whether the targets are met, which depends on the machine.
"""
import argparse
import json
from pathlib import Path

import plots
import table
from rows import Rows


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--results", type=Path, required=True, help="folder of the programs' JSON files")
    parser.add_argument("--targets", type=Path, required=True, help="folder whose subfolders have a targets.json")
    parser.add_argument("--out", type=Path, required=True, help="folder of the report")
    parser.add_argument("--partial", action="store_true", help="allow missing rows: only some programs ran")
    options = parser.parse_args()

    rows = Rows(options.results)
    areas = [json.loads(file.read_text()) for file in sorted(options.targets.glob("*/targets.json"))]
    (options.out / "results.json").write_text(json.dumps(rows.as_json(), indent=1) + "\n")
    text = table.table(rows, areas, options.partial)
    (options.out / "table.md").write_text(text)
    print(text)
    for area in areas:
        for plot in area.get("plots", []):
            if plots.draw(rows, plot, options.out, options.partial):
                print(f"{options.out}/{plot['file']}")


if __name__ == "__main__":
    main()
