#!/usr/bin/env python3
"""Turns the JSON output of bench/CaseBench into a table of ratios, ours / ICU,
one row per text and one column per function, and names the lowest ratio.

  build/bench/CaseBench --benchmark_out=case.json --benchmark_out_format=json
  python3 bench/case_ratios.py case.json [--speeds]
"""

import json
import sys


def main(argv):
    if len(argv) < 2:
        sys.exit(__doc__)
    with open(argv[1]) as f:
        runs = json.load(f)["benchmarks"]
    speed = {}
    functions, texts = [], []
    for run in runs:
        if run.get("run_type") == "aggregate" and run.get("aggregate_name") != "median":
            continue
        function, text, side = run["run_name"].split("/")[:3]
        speed[function, text, side] = run["bytes_per_second"] / 1e6
        if function not in functions and function != "memcpy":
            functions.append(function)
        if text not in texts:
            texts.append(text)
    show_speeds = "--speeds" in argv
    print("| text | " + " | ".join(f"`{f}`" for f in functions) + " |")
    print("|---" * (len(functions) + 1) + "|")
    lowest = None
    for text in texts:
        cells = []
        for function in functions:
            ours = speed.get((function, text, "zelvo"))
            peer = speed.get((function, text, "icu"))
            if ours is None or peer is None:
                cells.append("")
                continue
            ratio = ours / peer
            if lowest is None or ratio < lowest[0]:
                lowest = (ratio, function, text)
            cell = f"{ratio:.2f}"
            if show_speeds:
                cell += f" ({ours:.0f}/{peer:.0f})"
            cells.append(cell)
        print(f"| {text} | " + " | ".join(cells) + " |")
    if lowest:
        print(f"\nlowest ratio: {lowest[0]:.2f}, `{lowest[1]}` on {lowest[2]}")


if __name__ == "__main__":
    main(sys.argv)
