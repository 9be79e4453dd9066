"""Makes a page with plots of what was measured: report.py RESULTS PAGES NOTES

RESULTS is a folder with contest.json, text.json, growth.json and size.json; PAGES gets
performance.md and performance-*.svg. NOTES is put at the page's end.
"""
import json
import pathlib
import sys

COLOURS = {"ours": "#1b6ca8", "std": "#c8553d", "Boost": "#7a9e3f", "floor": "#888888"}


# The measured, in one shape


def contest_rows(contest):
    """(name, target, {who: (lower quartile, median, upper quartile)}), the floor left out."""
    return [(work["name"], work["target"],
             {who: tuple(ratio) for who, ratio in work["contenders"].items() if who != "floor"})
            for work in contest["works"]]


def native_medians(text):
    """Times of Google Benchmark by work and contender: of its repetitions the median."""
    times = {}
    for run in text["benchmarks"]:
        if run.get("aggregate_name", "median") == "median":
            name, who = run["run_name"].rsplit("/", 1)
            times.setdefault(name.removesuffix("/"), {})[who] = run["cpu_time"]
    return times


def is_text(name):
    return name.endswith(" units")


# Tables


def table(head, rows):
    lines = ["| " + " | ".join(head) + " |", "|" + "---|" * len(head)]
    return "\n".join(lines + ["| " + " | ".join(row) + " |" for row in rows]) + "\n"


def ratio(value):
    return f"{value:.2f}" if value < 10 else f"{value:.0f}"


def verdict(value, target):
    if not target:
        return ""
    return "met" if value <= target + 0.005 else f"missed by {ratio(value - target)}"


def contest_table(rows):
    others = [who for who in ("std", "Boost") if any(who in ratios for _, _, ratios in rows)]
    body = []
    for name, target, ratios in rows:
        low, median, high = ratios["ours"]
        body.append([name, f"**{ratio(median)}** ({ratio(low)} to {ratio(high)})"]
                    + [ratio(ratios[who][1]) if who in ratios else "" for who in others]
                    + [ratio(target) if target else "", verdict(median, target)])
    return table(["work", "ours (quartiles)"] + others + ["to reach", ""], body)


def native_table(times, targets):
    body = []
    for name in (name for name in targets if name in times):
        by_who = times[name]
        value = by_who["ours"] / by_who["floor"]
        target = targets.get(name, 0)
        body.append([name, ratio(value), ratio(target) if target else "", verdict(value, target)])
    return table(["work", "ours", "to reach", ""], body)


def growth_table(growth):
    body = []
    for name, counts in growth["operations"].items():
        (first, calls_first, taken_first), (last, calls_last, taken_last) = counts[0], counts[-1]
        added = last - first
        body.append([name, f"{first:,} to {last:,}", f"{calls_first / first:.3f}",
                     f"{(calls_last - calls_first) / added:.3f}",
                     f"{taken_first / first:.3f}", f"{(taken_last - taken_first) / added:.3f}"])
    return table(["operation", "entries", "calls for each", "for each more", "allocations for each",
                  "for each more"], body)


def size_tables(size):
    rows = []
    for header, lines in size["lines"].items():
        reason = size["may_exceed"].get(header.removeprefix("fl/filesystem/"), "")
        state = "below" if lines < size["standard"] else f"above: {reason or 'all of them'}"
        rows.append([f"`{header}`", f"{lines:,}", f"{lines / size['standard']:.2f}", state])
    rows.append(["`<filesystem>`", f"{size['standard']:,}", "1.00", ""])
    rows.append(["`<boost/filesystem.hpp>`", f"{size['boost']:,}",
                 f"{size['boost'] / size['standard']:.2f}", ""])
    page = table(["header", "lines", "to `<filesystem>`", ""], rows)
    if "compile" in size:
        page += "\nTime to compile them, in turn, as a ratio to `<filesystem>`:\n\n"
        page += table(["header", "ratio"], [[f"`{header}`", ratio(value)]
                                            for header, value in size["compile"].items()])
    started = {call for calls in size["initialisers"].values() for call in calls}
    page += (f"\nThe DLL, stripped, has {size['bytes']:,} bytes; at most {size['most_bytes']:,} were to be "
             f"reached: {verdict(size['bytes'] / size['most_bytes'], 1)}. It imports "
             f"{', '.join(sorted(size['imports'], key=str.lower))}. As it is loaded, "
             f"{len(size['initialisers'])} function of ours initialises static data and calls "
             f"{', '.join(sorted(started)) or 'nothing'}.\n")
    return page


# Plots


def svg(width, height, body):
    return (f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {width} {height}" '
            f'font-family="sans-serif" font-size="12">\n'
            f'<rect width="{width}" height="{height}" fill="white"/>\n' + "\n".join(body) + "\n</svg>\n")


def label(x, y, text, anchor="start", colour="#222222"):
    text = str(text).replace("&", "&amp;").replace("<", "&lt;")
    return f'<text x="{x:.1f}" y="{y:.1f}" text-anchor="{anchor}" fill="{colour}">{text}</text>'


def line(x1, y1, x2, y2, colour="#cccccc", width=1.0):
    return (f'<line x1="{x1:.1f}" y1="{y1:.1f}" x2="{x2:.1f}" y2="{y2:.1f}" stroke="{colour}" '
            f'stroke-width="{width}"/>')


def bars(rows, title):
    """Horizontal bars, the floor at 1."""
    most = max(ratios[who][1] for _, _, ratios in rows for who in ratios)
    most = min(most, 2.5)
    left, top, scale = 300, 40, 420 / most
    body = [label(10, 20, title)]
    y = top
    for name, target, ratios in rows:
        body.append(label(left - 8, y + 13, name, "end"))
        for who, (_, median, _) in ratios.items():
            shown = min(median, most)
            body.append(f'<rect x="{left}" y="{y:.1f}" width="{shown * scale:.1f}" height="12" '
                        f'fill="{COLOURS[who]}"/>')
            body.append(label(left + shown * scale + 4, y + 10, f"{who} {ratio(median)}"))
            y += 15
        if target:
            at = left + target * scale
            body.append(line(at, y - 15 * len(ratios) - 2, at, y - 2, "#222222", 1.5))
        y += 8
    body.append(line(left + scale, top - 5, left + scale, y, "#888888"))
    body.append(label(left + scale, y + 14, "the raw calls; black: to reach", "middle"))
    return svg(820, y + 24, body)


def curves(series, title, x_title, y_title):
    """Lines over a logarithmic scale on both axes. `series` is {name: [(x, y)]}."""
    import math

    points = [point for line_points in series.values() for point in line_points if point[1] > 0]
    xs = [math.log10(x) for x, _ in points]
    ys = [math.log10(y) for _, y in points]
    left, top, width, height = 70, 40, 480, 300
    low_x, high_x, low_y, high_y = min(xs), max(xs), math.floor(min(ys)), math.ceil(max(ys))
    high_y = max(high_y, low_y + 1)

    def place(x, y):
        return (left + (math.log10(x) - low_x) / (high_x - low_x or 1) * width,
                top + height - (math.log10(y) - low_y) / (high_y - low_y) * height)

    body = [label(10, 20, title), label(left + width / 2, top + height + 34, x_title, "middle"),
            label(10, top - 6, y_title)]
    for power in range(low_y, high_y + 1):
        y = place(10 ** low_x, 10.0 ** power)[1]
        body += [line(left, y, left + width, y), label(left - 6, y + 4, f"{10.0 ** power:g}", "end")]
    for x in sorted({point[0] for point in points}):
        at = place(x, 10.0 ** low_y)[0]
        body.append(label(at, top + height + 16, f"{x:,}", "middle"))
    palette = ["#1b6ca8", "#c8553d", "#7a9e3f", "#8e5ea2", "#d4a017", "#444444"]
    for at, (name, line_points) in enumerate(series.items()):
        colour = palette[at % len(palette)]
        path = " ".join(f"{px:.1f},{py:.1f}" for px, py in
                        (place(x, y) for x, y in line_points if y > 0))
        body.append(f'<polyline points="{path}" fill="none" stroke="{colour}" stroke-width="2"/>')
        body.append(label(left + width + 12, top + 14 + 18 * at, name, "start", colour))
    return svg(820, top + height + 48, body)


def by_units(times):
    """What a unit of a text costs, as a ratio to one of the shortest text, of works that are measured
    at several sizes."""
    series = {}
    for name, by_who in times.items():
        work, _, size = name.removesuffix(" units").partition(", ")
        if size.isdigit():
            series.setdefault(work, []).append((int(size), by_who["ours"] / int(size)))
    return {name: [(size, each / min(points)[1]) for size, each in sorted(points)]
            for name, points in series.items() if len(points) > 1}


# The page


def page(contest, times, growth, size, notes):
    rows = contest_rows(contest)
    disk = [row for row in rows if not is_text(row[0])]
    text = [row for row in rows if is_text(row[0])]
    targets = {name: target for name, target, _ in rows}
    return f"""# How fast it is

`scripts/bench` measures all of this anew and writes this page. Machines are noisy: a figure is
either a count, or the ratio of times that were taken in turn, one contender after the other in one
process, and of at least {contest["rounds"]} rounds the median. No figure is a bare time.

## On a disk

1 is the floor: the calls that the operation makes, by themselves, with their strings at hand. Wine,
a disk in memory, MinGW-w64's GCC; `std` is its standard library. It doesn't do the same work
everywhere: it knows no links on Windows, and so does without some calls. Boost.Filesystem takes part
where its source is at hand (`-DFL_BENCH_BOOST_FILESYSTEM=`); Debian has none for MinGW-w64.

{contest_table(disk)}
![Operations beside the raw calls](performance-operations.svg)

## Text

1 is a copy of the text. The same contest under Wine. The standard library's path is taken apart
when it is made: that is its native form here, and a part of its walk.

{contest_table(text)}
On this host, by Google Benchmark:

{native_table(times, targets)}
![Time for each unit of a text, as the text grows](performance-text.svg)

A line that doesn't rise is linear growth, up to the longest pathname.

## Growth

Counted on the simulated machine, up to a hundred thousand entries, in directories of a hundred. An
entry costs the same calls however many there are, and no memory by itself; what a directory takes is
the pattern by which it is listed.

{growth_table(growth)}
![Calls of operations, as trees grow](performance-growth.svg)

## To include, link and load

Lines behind the preprocessor, MinGW-w64's GCC, C++17. `scripts/check-size` holds them.

{size_tables(size)}
{notes}"""


def read(folder, name):
    return json.loads((folder / name).read_text())


def main(results, pages, notes):
    results, pages = pathlib.Path(results), pathlib.Path(pages)
    contest, growth, size = (read(results, name)
                             for name in ("contest.json", "growth.json", "size.json"))
    times = native_medians(read(results, "text.json"))
    rows = contest_rows(contest)
    (pages / "performance-operations.svg").write_text(
        bars([row for row in rows if not is_text(row[0])], "Operations, as ratios to the raw calls"))
    (pages / "performance-text.svg").write_text(
        curves(by_units(times), "Text functions", "units", "time for a unit, to one of the shortest text"))
    (pages / "performance-growth.svg").write_text(
        curves({name: [(entries, calls) for entries, calls, _ in counts]
                for name, counts in growth["operations"].items()},
               "System calls", "entries", "calls"))
    (pages / "performance.md").write_text(
        page(contest, times, growth, size, pathlib.Path(notes).read_text()))


main(*sys.argv[1:])
