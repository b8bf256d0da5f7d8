#!/usr/bin/env python3
"""Draws bench_peer's JSON output as an SVG (cost per channel per frame against channel count)
and prints its figures as a Markdown table.

usage: plot_peer.py BENCH.json OUT.svg
"""
import json
import math
import statistics
import sys
from xml.sax.saxutils import escape

COLOURS = {"zeAnimation": "#1f5fbf", "osgAnimation": "#d9731a"}
DASHES = {"playback": "", "scrubbing": "7 5"}
WIDTH, HEIGHT = 820, 500
LEFT, RIGHT, TOP, BOTTOM = 78, 250, 64, 78


def read(path):
    """{(system, order, channels, keys): ns per channel}, the median over repetitions."""
    with open(path) as f:
        data = json.load(f)
    runs = {}
    for b in data.get("benchmarks", []):
        if b.get("run_type", "iteration") != "iteration" or b.get("error_occurred"):
            continue
        system, order = b["name"].split("/")[:2]
        key = (system, order, int(b["channels"]), int(b["keys"]))
        runs.setdefault(key, []).append(b["per_channel"] * 1e9)
    return {k: statistics.median(v) for k, v in runs.items()}, data.get("context", {})


def log_ticks(lo, hi):
    ticks, decade = [], 10 ** math.floor(math.log10(lo))
    while decade <= hi:
        ticks += [m * decade for m in (1, 2, 5) if lo <= m * decade <= hi]
        decade *= 10
    return ticks


def number(v):
    return f"{v:,.0f}" if v >= 1 else f"{v:g}"


def table(costs):
    """The figures as a Markdown table, for the README."""
    columns = [(s, o) for s in COLOURS for o in DASHES]
    print("| channels × keys | " + " | ".join(f"{s} {o}" for s, o in columns) + " |")
    print("|---" * (len(columns) + 1) + "|")
    for channels, keys in sorted({k[2:] for k in costs}, key=lambda n: (n[1], n[0])):
        cells = [costs.get((s, o, channels, keys)) for s, o in columns]
        print(f"| {channels:,} × {keys:,} | " + " | ".join(f"{c:.0f} ns" if c else "—" for c in cells) + " |")


def main(source, target):
    costs, context = read(source)
    if not costs:
        sys.exit(f"{source}: no benchmark results")
    table(costs)
    flat = {k: v for k, v in costs.items() if k[3] == 16}
    long = {k: v for k, v in costs.items() if k[3] != 16}
    xs = [k[2] for k in costs]
    x_lo, x_hi = 10 ** math.floor(math.log10(min(xs))), 10 ** math.ceil(math.log10(max(xs)))
    y_lo = 10 ** math.floor(math.log10(min(costs.values())))
    y_hi = 10 ** math.ceil(math.log10(max(costs.values())))
    pw, ph = WIDTH - LEFT - RIGHT, HEIGHT - TOP - BOTTOM

    def px(x):
        return LEFT + pw * math.log(x / x_lo) / math.log(x_hi / x_lo)

    def py(y):
        return TOP + ph * (1 - math.log(y / y_lo) / math.log(y_hi / y_lo))

    out = [f'<svg xmlns="http://www.w3.org/2000/svg" width="{WIDTH}" height="{HEIGHT}" '
           f'font-family="sans-serif" font-size="12">',
           f'<rect width="{WIDTH}" height="{HEIGHT}" fill="white"/>',
           f'<text x="{LEFT + pw / 2}" y="26" text-anchor="middle" font-size="16" font-weight="bold">'
           'Cost per channel per frame: zeAnimation and osgAnimation</text>',
           f'<text x="{LEFT + pw / 2}" y="46" text-anchor="middle" fill="#555">'
           'blocks of 10 float channels, one material each, every value written each frame</text>']
    for x in log_ticks(x_lo, x_hi):
        major = math.log10(x).is_integer()
        out.append(f'<line x1="{px(x):.1f}" y1="{TOP}" x2="{px(x):.1f}" y2="{TOP + ph}" '
                   f'stroke="{"#ccc" if major else "#eee"}"/>')
        if major:
            out.append(f'<text x="{px(x):.1f}" y="{TOP + ph + 18}" text-anchor="middle">{number(x)}</text>')
    for y in log_ticks(y_lo, y_hi):
        out.append(f'<line x1="{LEFT}" y1="{py(y):.1f}" x2="{LEFT + pw}" y2="{py(y):.1f}" stroke="#e4e4e4"/>')
        out.append(f'<text x="{LEFT - 8}" y="{py(y) + 4:.1f}" text-anchor="end">{number(y)}</text>')
    out.append(f'<rect x="{LEFT}" y="{TOP}" width="{pw}" height="{ph}" fill="none" stroke="#333"/>')
    out.append(f'<text x="{LEFT + pw / 2}" y="{TOP + ph + 42}" text-anchor="middle">'
               'channels (log scale)</text>')
    out.append(f'<text transform="translate(22 {TOP + ph / 2}) rotate(-90)" text-anchor="middle">'
               'ns per channel per frame, CPU time (log scale)</text>')

    legend, ly = [], TOP + 8
    for system in COLOURS:
        for order in DASHES:
            points = sorted((k[2], v) for k, v in flat.items() if k[:2] == (system, order))
            if not points:
                continue
            style = f'stroke="{COLOURS[system]}" stroke-width="2.2" fill="none"'
            if DASHES[order]:
                style += f' stroke-dasharray="{DASHES[order]}"'
            path = " ".join(f"{px(x):.1f},{py(y):.1f}" for x, y in points)
            out.append(f'<polyline points="{path}" {style}/>')
            out += [f'<circle cx="{px(x):.1f}" cy="{py(y):.1f}" r="3.2" fill="{COLOURS[system]}"/>'
                    for x, y in points]
            legend.append(f'<line x1="{LEFT + pw + 16}" y1="{ly}" x2="{LEFT + pw + 50}" y2="{ly}" {style}/>')
            legend.append(f'<text x="{LEFT + pw + 58}" y="{ly + 4}">{system}, {order}</text>')
            ly += 22
    for (system, order, x, keys), y in sorted(long.items()):
        fill = COLOURS[system] if order == "playback" else "white"
        out.append(f'<rect x="{px(x) - 5:.1f}" y="{py(y) - 5:.1f}" width="10" height="10" '
                   f'fill="{fill}" stroke="{COLOURS[system]}" stroke-width="2"/>')
    if long:
        keys = sorted({k[3] for k in long})[0]
        for i, (order, fill) in enumerate((("playback", "#666"), ("scrubbing", "white"))):
            legend.append(f'<rect x="{LEFT + pw + 28 + 18 * i}" y="{ly + 4}" width="10" height="10" '
                          f'fill="{fill}" stroke="#666" stroke-width="2"/>')
        legend.append(f'<text x="{LEFT + pw + 70}" y="{ly + 13}">{keys:,} keys per channel,</text>')
        legend.append(f'<text x="{LEFT + pw + 70}" y="{ly + 29}">playback / scrubbing</text>')
        ly += 44
    legend.append(f'<text x="{LEFT + pw + 16}" y="{ly + 10}" fill="#555">lines: 16 keys per channel</text>')
    out += legend

    load = context.get("load_avg") or []
    note = (f'{context.get("date", "")[:16].replace("T", " ")}, {context.get("num_cpus", "?")} CPUs'
            + (f', load average {load[0]:.1f} when the run began' if load else ''))
    out.append(f'<text x="{LEFT}" y="{HEIGHT - 12}" fill="#555" font-size="11">{escape(note)}</text>')
    out.append("</svg>")
    with open(target, "w") as f:
        f.write("\n".join(out) + "\n")


if __name__ == "__main__":
    if len(sys.argv) != 3:
        sys.exit(__doc__.strip())
    main(sys.argv[1], sys.argv[2])
