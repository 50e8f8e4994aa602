#!/usr/bin/env python3
"""Draws the growth and the ratios: plot.py FOLDER OUTPUT... reads what the benchmark printed, each run in
a file of its own, and writes SVG pictures into the folder. Needs gnuplot."""

import re
import statistics
import subprocess
import sys
import tempfile
from pathlib import Path

SHAPES = ["nodes", "disks", "items", "file names", "filters", "tapes", "mixture"]
ROW = re.compile(r"^([\d,]+) ([a-z ]+?)(?:, (/ [A-Za-z ,]+?))?  +([\d.]+)  .*?([\d.]+) (ns|us|ms) ?(?:an|instead)")
UNITS = {"ns": 1, "us": 1e3, "ms": 1e6}

STYLE = """
set terminal svg size 760,420 font 'sans-serif,12' background '#ffffff'
set grid lc rgb '#dddddd'
set key outside right top
set xtics rotate by 0
"""


def rows(files):
    """What each run found: {(section, shape, elements, against): [(ratio, ns an element), ...]}."""
    found = {}
    for file in files:
        section = ""
        for line in Path(file).read_text().splitlines():
            match = ROW.match(line)
            if match is None:
                if line and not line.startswith(("measure", "geometric", "typical", " ")):
                    section = line
                continue
            size, shape, against, ratio, time, unit = match.groups()
            key = (section, shape, int(size.replace(",", "")), against or "")
            found.setdefault(key, []).append((float(ratio), float(time) * UNITS[unit]))
    return found


def draw(svg, script, tables):
    with tempfile.TemporaryDirectory() as folder:
        for name, lines in tables.items():
            Path(folder, name).write_text("\n".join(lines) + "\n")
        text = STYLE + f"set output '{svg.resolve()}'\n" + script
        subprocess.run(["gnuplot"], input=text, text=True, check=True, cwd=folder)
    # The same picture has the same bytes: no trace of when and by what it was drawn.
    svg.write_text(re.sub(r"<(title|desc)>.*?</\1>\n?", "", svg.read_text(), flags=re.S))


def middle(values):
    return f"{statistics.median(values):.4g} {min(values):.4g} {max(values):.4g}"


def growth(found, to, runs):
    tables, plots = {}, []
    for number, shape in enumerate(SHAPES):
        lines = []
        for key in sorted(found):
            if key[1] != shape or not key[0].startswith("library / floor, steady"):
                continue
            lines.append(f"{key[2]} {middle([time * key[2] / 1e3 for _, time in found[key]])}")
        if lines:
            tables[f"growth{number}"] = lines
            plots.append(f"'growth{number}' using 1:2:3:4 with yerrorlines title '{shape}'")
    script = (f"set title 'Time of a flattening, median and range of {runs} runs'\n"
              "set logscale xy\nset format x '10^{%T}'\nset xlabel 'elements'\n"
              "set ylabel 'microseconds'\nset xrange [60:160000]\n")
    draw(to / "performance-growth.svg", script + "plot " + ", ".join(plots), tables)


def bars(found, to, name, title, prefix, against, runs):
    """A group of bars for each shape, one bar for each of what it is compared with."""
    tables, plots = {}, []
    for number, (label, kind) in enumerate(against):
        lines = []
        for place, shape in enumerate(SHAPES):
            ratios = [ratio for key, values in found.items() for ratio, _ in values
                      if key[0].startswith(prefix) and key[1:] == (shape, 10000, kind)]
            if ratios:
                offset = place + (number - (len(against) - 1) / 2) * 0.8 / len(against)
                lines.append(f"{offset} {middle(ratios)}")
        if lines:
            tables[f"bars{number}"] = lines
            plots.append(f"'bars{number}' using 1:2:({0.7 / len(against)}) with boxes fill solid 0.6 "
                         f"title '{label}'")
            plots.append(f"'bars{number}' using 1:2:3:4 with yerrorbars lc black pt -1 notitle")
    tics = ", ".join(f"'{shape}' {place}" for place, shape in enumerate(SHAPES))
    script = (f"set title '{title}, 10,000 elements, median and range of {runs} runs'\n"
              f"set xtics ({tics})\nset xrange [-0.7:{len(SHAPES) - 0.3}]\nset yrange [0:*]\n"
              "set key outside bottom center horizontal\nset ylabel 'ratio'\n")
    draw(to / f"performance-{name}.svg",
         script + "plot " + ", ".join(plots) + ", 1 lc black dt 2 notitle", tables)


def main():
    to, files = Path(sys.argv[1]), sys.argv[2:]
    found = rows(files)
    runs = len(files)
    growth(found, to, runs)
    bars(found, to, "ratios", "Flattening against the floor", "library / floor, steady",
         [("library / floor", "")], runs)
    bars(found, to, "whole", "All of a client’s work", "whole work, steady",
         [("/ Protocol Buffers", "/ Protocol Buffers"),
          ("/ FlatBuffers, builder", "/ FlatBuffers, builder"),
          ("/ the floor of all of it", "/ the floor of all of it")], runs)


main()
