#!/usr/bin/env python3
"""Sweeps a PLL, reads each setting back, and writes a table and a picture.

    bench_sweep.py [--part QVX2874] [--pll PLL1] [--from 2400] [--to 2500] [--step 5] [--out sweep]

Writes OUT.csv (asked and planned frequency, deviation, counters) and OUT.svg. Works with a window
and without one: on the program that runs, or one that the bus starts.
"""

import argparse
import csv
import math
import sys
from xml.sax.saxutils import escape

from zentrel import Zentrel, ZentrelError

WIDTH, HEIGHT, MARGIN = 720, 360, 56


def sweep(bench, pll, first, last, step):
    """One row for each frequency in MHz: asked, planned, deviation in kHz, N, words that differ."""
    rows = []
    count = math.floor((last - first) / step + 1e-9)
    for i in range(count + 1):
        asked = first + i * step
        bench.SetVCOFrequency(pll, asked)
        bench.LoadPart()
        planned = bench.GetVCOFrequency(pll)
        block = bench.Part.PLLs[pll]
        rows.append({
            "asked_mhz": round(asked, 9),
            "planned_mhz": planned,
            "deviation_khz": round((planned - asked) * 1e3, 6),
            "n": block.NValue,
            "comparison_khz": block.PDFrequency,
        })
    return rows


def read_back(bench):
    """Registers whose content as read differs from the model's; None without a read-back."""
    part = bench.Part
    if part.ReadbackAddressRegister == "":
        return None
    differing = []
    for register in part.Registers:
        bits = part.RegisterLength - part.ControlLength
        expected = int(register.Value) >> part.ControlLength & ((1 << bits) - 1)
        if int(bench.ReadRegisterRaw(register.ID)) != expected:
            differing.append(register.ID)
    return differing


def write_csv(path, rows):
    with open(path, "w", newline="", encoding="utf-8") as file:
        writer = csv.DictWriter(file, fieldnames=list(rows[0]))
        writer.writeheader()
        writer.writerows(rows)


def write_svg(path, rows, title):
    """The deviation over the asked frequency, as a line with a dot for each setting."""
    xs = [row["asked_mhz"] for row in rows]
    ys = [row["deviation_khz"] for row in rows]
    low, high = min(ys + [0.0]), max(ys + [0.0])
    span_x = (max(xs) - min(xs)) or 1.0
    span_y = (high - low) or 1.0
    place_x = lambda x: MARGIN + (x - min(xs)) / span_x * (WIDTH - 2 * MARGIN)
    place_y = lambda y: HEIGHT - MARGIN - (y - low) / span_y * (HEIGHT - 2 * MARGIN)
    points = [f"{place_x(x):.1f},{place_y(y):.1f}" for x, y in zip(xs, ys)]
    dots = "".join('<circle cx="{}" cy="{}" r="2.5" fill="#1565c0"/>'.format(*p.split(","))
                   for p in points)
    zero = place_y(0.0)
    with open(path, "w", encoding="utf-8") as file:
        file.write(
            f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {WIDTH} {HEIGHT}" '
            f'font-family="sans-serif" font-size="12">'
            f'<rect width="{WIDTH}" height="{HEIGHT}" fill="white"/>'
            f'<text x="{MARGIN}" y="28" font-size="15">{escape(title)}</text>'
            f'<line x1="{MARGIN}" y1="{zero:.1f}" x2="{WIDTH - MARGIN}" y2="{zero:.1f}" '
            f'stroke="#bbb"/>'
            f'<polyline points="{" ".join(points)}" fill="none" stroke="#1565c0"/>{dots}'
            f'<text x="{MARGIN}" y="{HEIGHT - 20}">{min(xs):g} MHz</text>'
            f'<text x="{WIDTH - MARGIN}" y="{HEIGHT - 20}" text-anchor="end">{max(xs):g} MHz</text>'
            f'<text x="{MARGIN - 6}" y="{place_y(high):.1f}" text-anchor="end">{high:g}</text>'
            f'<text x="{MARGIN - 6}" y="{place_y(low):.1f}" text-anchor="end">{low:g} kHz</text>'
            f'</svg>\n')


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--part", default="QVX2874")
    parser.add_argument("--pll", default="PLL1")
    parser.add_argument("--from", dest="first", type=float, default=2400.0, metavar="MHZ")
    parser.add_argument("--to", dest="last", type=float, default=2500.0, metavar="MHZ")
    parser.add_argument("--step", type=float, default=5.0, metavar="MHZ")
    parser.add_argument("--out", default="sweep")
    given = parser.parse_args()
    if given.step <= 0 or given.last < given.first:
        parser.error("--step has to be above 0, and --to at or above --from")
    try:
        with Zentrel() as bench:
            bench.SelectPart(given.part)
            if not bench.CheckPLLName(given.pll):
                print(f"{given.part} has no PLL {given.pll}", file=sys.stderr)
                return 1
            rows = sweep(bench, given.pll, given.first, given.last, given.step)
            differing = read_back(bench)
    except ZentrelError as error:
        print(f"{error.name}: {error}", file=sys.stderr)
        return 1
    write_csv(given.out + ".csv", rows)
    write_svg(given.out + ".svg", rows, f"{given.part} {given.pll}: planned less asked")
    print(f"{len(rows)} settings in {given.out}.csv and {given.out}.svg")
    if differing is None:
        print(f"{given.part} has no read-back")
    elif differing:
        print("Read back differently: " + ", ".join(differing))
        return 1
    else:
        print("All registers read back as sent")
    return 0


if __name__ == "__main__":
    sys.exit(main())
