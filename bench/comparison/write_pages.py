"""Writes the results of bench/side-by-side into the tables of docs/figures.md, a chart and two sentences of README.md.

write_pages.py FOLDER    FOLDER contains mirrors.tsv, lists.tsv, program.tsv and plasma.tsv, or some of these files
"""

import datetime
import re
import statistics
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent.parent
README = ROOT / "README.md"
FIGURES = ROOT / "docs" / "figures.md"
CHART = ROOT / "docs" / "images" / "side-by-side.svg"

SMOOTH = 0.96
NAMES = {
    "GStreamer": "GStreamer, `use-damage=0`",
    "GStreamer, damage": "GStreamer, `use-damage=1`",
    "ffplay": "ffplay, `x11grab`",
    "Qt grabber": "minimal Qt program",
    "wmctrl": "`wmctrl -lpGx`",
    "xdotool, one command": "`xdotool search`, one command",
    "xdotool, a command a window": "`xdotool`, a command for each window",
}


class Run:
    """Holds what one part of the benchmark printed, and facts about the run, such as the date and the machine."""

    def __init__(self, path):
        self.facts, self.lines = {}, []
        for line in path.read_text().splitlines():
            if line.startswith("# "):
                key, value = line[2:].split(" ", 1)
                self.facts.setdefault(key, []).append(value)
            else:
                self.lines.append(line)

    def rows(self):
        """Returns the values in each line, without the line of headings."""
        return [line.split("\t") for line in self.lines[1:]]

    def circumstances(self):
        date = datetime.date.fromisoformat(self.facts["date"][0])
        before, after = self.facts["load"]
        processors = re.sub(r"\((R|TM)\)| Processor", "", self.facts["processors"][0])
        text = (f"Measured on {date.day} {date:%B %Y} on {processors}, at a load average of {before} before the run and "
                f"{after} after it.")
        if float(before) > 0.25 * int(processors.split()[0]):
            text += " Other work shared the machine, so these are not the figures of a quiet one."
        return text


def medians(rows):
    return [statistics.median(column) for column in zip(*rows)]


class Mirror:
    """Holds the medians of one program in one situation. Times are in milliseconds a second, memory is in MB."""

    def __init__(self, rows):
        self.program, self.server, self.memory, self.frames, self.ssim = medians(rows)
        self.rounds = [row[0] + row[1] for row in rows]
        self.both = statistics.median(self.rounds)

    @property
    def shows_the_window(self):
        return self.ssim >= SMOOTH


class Situation:
    """Holds one state of the desktop, and the programs that were measured in this state by their names."""

    def __init__(self, changing, composited, obscured):
        self.changing, self.composited, self.obscured = changing, composited, obscured
        self.mirrors = {}

    @property
    def title(self):
        return ", ".join([self.source, self.manager])

    @property
    def source(self):
        return ("Thirty repaints a second" if self.changing else "Still") + (", obscured" if self.obscured else ", unobscured")

    @property
    def manager(self):
        return "with a compositing manager" if self.composited else "without a compositing manager"

    def verdict(self):
        """Compares Mirrolet with the cheapest other program. A program that shows a wrong picture does not count."""
        others = {name: mirror.both for name, mirror in self.mirrors.items()
                  if name != "Mirrolet" and mirror.shows_the_window}
        if not others:
            return "None of the others shows the window's picture."
        best = min(others, key=others.get)
        ratios = [own / other for own, other in zip(self.mirrors["Mirrolet"].rounds, self.mirrors[best].rounds)]
        spread = f" ({min(ratios):.2f} to {max(ratios):.2f} in the single rounds)" if len(ratios) > 1 else ""
        return (f"Mirrolet and the X server need {statistics.median(ratios):.2f}{spread} of the least that shows the window's "
                f"picture ({NAMES[best]}).")


def situations(run):
    found = {}
    for composited, obscured, changing, name, *numbers in run.rows():
        key = tuple(word == "yes" for word in (changing, composited, obscured))
        found.setdefault(key, {}).setdefault(name, []).append([float(number) for number in numbers])
    result = []
    for key, rows in found.items():
        situation = Situation(*key)
        situation.mirrors = {name: Mirror(of) for name, of in rows.items()}
        result.append(situation)
    return result, len(next(iter(next(iter(found.values())).values())))


def mirrors_in_full(run):
    all_of_them, count = situations(run)
    runs = f"the median of {count} runs" if count > 1 else "of one run"
    yield f"{run.circumstances()} Each figure is {runs} of {run.facts['seconds'][0]} s."
    for situation in all_of_them:
        yield f"\n### {situation.title}\n"
        yield "| | program ms/s | X server ms/s | both | memory MB | frames/s | SSIM | shows |"
        yield "|---|---:|---:|---:|---:|---:|---:|---|"
        for name, mirror in situation.mirrors.items():
            frames = f"{mirror.frames:.1f}" if situation.changing else ""
            shows = "the window" if mirror.shows_the_window else "**another picture**"
            yield (f"| {NAMES.get(name, name)} | {mirror.program:.1f} | {mirror.server:.1f} | {mirror.both:.1f} "
                   f"| {mirror.memory:.0f} | {frames} | {mirror.ssim:.3f} | {shows} |")
        yield f"\n{situation.verdict()}"


def mirrors_in_a_sentence(run):
    """Yields one sentence, about an unobscured window that repaints on a desktop with a compositing manager."""
    all_of_them, _ = situations(run)
    situation = next(each for each in all_of_them if each.changing and each.composited and not each.obscured)
    yield f"Beside what people use instead (thirty repaints a second, unobscured): {situation.verdict()}"


def chart(run):
    """Returns the chart as SVG text. Each bar shows the processor time of one program and of the X server. The bars with
    a compositing manager are in the left column, those without one in the right column. The colours are readable on
    light and dark pages."""
    label, column, scale_width, line = 192, 345, 215, 18
    all_of_them, _ = situations(run)
    most = max(mirror.both for situation in all_of_them for mirror in situation.mirrors.values())
    blocks = {}
    for situation in all_of_them:
        blocks.setdefault(situation.source, []).append(situation)
    body, y = [], 72
    for place, composited in enumerate((True, False)):
        title = next(each.manager for each in all_of_them if each.composited == composited).capitalize()
        body.append(f'<text class="head" x="{label + place * column}" y="48">{title}</text>')
    for source, beside in blocks.items():
        body.append(f'<text class="head" x="8" y="{y}">{source}</text>')
        y += 10
        for row, name in enumerate(beside[0].mirrors):
            own = ' class="own"' if name == "Mirrolet" else ""
            body.append(f'<text{own} x="{label - 8}" y="{y + row * line + 12}" text-anchor="end">'
                        f'{NAMES.get(name, name).replace("`", "")}</text>')
            for situation in beside:
                x = label + (0 if situation.composited else column)
                body += bars(situation.mirrors[name], x, y + row * line, scale_width / most, own)
        for place in (0, 1):
            x = label + place * column - 0.5
            body.append(f'<path d="M{x} {y - 2}V{y + len(beside[0].mirrors) * line}"/>')
        y += len(beside[0].mirrors) * line + 28
    return "\n".join([
        f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {label + 2 * column} {y - 16}" font-family="sans-serif" '
        'font-size="12">',
        "<title>Processor time of a mirror, milliseconds a second</title>",
        "<style>text{fill:#6b7280}.head,.own{font-weight:bold}.program{fill:#2f7fd1}.server{fill:#e08a2b}.wrong{opacity:.3}",
        "path{stroke:#6b7280;opacity:.5}@media(prefers-color-scheme:dark){text{fill:#ddd}path{stroke:#ddd}}</style>",
        '<rect class="program" x="8" y="8" width="12" height="12"/><text x="26" y="18">program</text>',
        '<rect class="server" x="92" y="8" width="12" height="12"/><text x="110" y="18">X server</text>',
        '<rect class="program wrong" x="178" y="8" width="6" height="12"/><rect class="server wrong" x="184" y="8" '
        'width="6" height="12"/><text x="196" y="18">shows another picture</text>',
        '<text x="340" y="18">milliseconds of processor time a second; less is better</text>',
        *body, "</svg>", ""])


def bars(mirror, x, y, scale, own):
    program, server = max(mirror.program, 0) * scale, max(mirror.server, 0) * scale
    wrong = "" if mirror.shows_the_window else " wrong"
    note = "" if mirror.shows_the_window else ", another picture"
    yield f'<rect class="program{wrong}" x="{x}" y="{y}" width="{program:.1f}" height="14"/>'
    yield f'<rect class="server{wrong}" x="{x + program:.1f}" y="{y}" width="{server:.1f}" height="14"/>'
    yield f'<text{own} x="{x + program + server + 6:.1f}" y="{y + 12}">{mirror.both:.1f}{note}</text>'


def lists(run, what):
    """Returns the rows of the kind `what`, by the number of windows and then by the name of the program."""
    found = {}
    for kind, windows, name, *numbers in run.rows():
        if kind == what:
            found.setdefault(windows, {}).setdefault(name, []).append([float(number) for number in numbers])
    return found


def both(rows):
    return statistics.median(row[0] + row[1] for row in rows)


def lists_in_full(run):
    yield f"{run.circumstances()} Each figure is a median."
    for windows, readers in lists(run, "reading").items():
        yield f"\n### {windows} windows, one reading\n"
        yield "| | program ms | X server ms | both | until it is read, ms | readings |"
        yield "|---|---:|---:|---:|---:|---:|"
        for name, rows in readers.items():
            program, server, wall = medians(rows)
            yield (f"| {NAMES.get(name, name)} | {program:.2f} | {server:.2f} | {both(rows):.2f} | {wall:.2f} "
                   f"| {len(rows)} |")
    for windows, readers in lists(run, "second").items():
        yield f"\n### {windows} windows, one title changes ten times a second, a reading every two seconds\n"
        yield "| | program ms/s | X server ms/s | both |"
        yield "|---|---:|---:|---:|"
        for name, rows in readers.items():
            program, server, _ = medians(rows)
            yield f"| {NAMES.get(name, name)} | {program:.2f} | {server:.2f} | {both(rows):.2f} |"


# Each entry has a figure's name in the output of bench_program, its name on the page, and its number of decimals.
PROGRAM = [
    ("mirroring 30 repaints/s: Mirrolet", "the call repaints 30 times a second: Mirrolet", 1),
    ("  both together", "the same, Mirrolet and X server", 1),
    ("  both together against the minimal Qt program", "the same, against a minimal Qt program and X server", 2),
    ("mirroring a still window: Mirrolet and X server", "the call stands still: Mirrolet and X server", 1),
    ("idle, 50 windows, a poll every 2 s: Mirrolet", "no call, 50 windows, a poll every 2 s: Mirrolet", 1),
    ("start to status item shown", "from the start until the icon is in the tray", 0),
    ("peak resident memory of a session", "most memory of a session", 1),
    ("mirrored window destroyed to panel gone", "from the end of the call until the mirror is gone", 0),
]
UNITS = {"ms": " ms", "MB": " MB"}


def program_figures(run):
    figures = {}
    for line in run.lines:
        match = re.fullmatch(r"(.{58}) (\S+) +([\d.-]+) +([\d.-]+) +([\d.-]+) +([\d.]+ +)?(\d+)", line)
        if match:
            name, unit, median, least, most, reach, count = match.groups()
            # bench_program prints some names twice: first for a window that repaints, then for a still window. The
            # first counts.
            figures.setdefault(name.rstrip(), (unit, float(median), float(least), float(most), (reach or "").strip(), count))
    return figures


def program_table(run):
    figures = program_figures(run)
    yield "| | median | least to most | runs | not more than |"
    yield "|---|---:|---:|---:|---:|"
    for key, words, decimals in PROGRAM:
        unit, median, least, most, reach, count = figures[key]
        yield (f"| {words} | {median:.{decimals}f}{UNITS.get(unit, '')} | {least:.{decimals}f} – {most:.{decimals}f} | {count} "
               f"| {reach} |")
    _, median, least, most, *_ = figures["this machine: 15 wakes/s, each waking a second thread"]
    yield (f"\n{run.circumstances()} A thread that does nothing but wake 15 times a second and wake a second one costs "
           f"{median:.1f} ms a second there ({least:.1f} – {most:.1f}).")


def program_in_a_sentence(run):
    figures = program_figures(run)
    (_, changing, *_), (_, together, *_), _, (_, still, *_), (_, idle, *_), _, (_, memory, *_), _ = (
        figures[key] for key, _, _ in PROGRAM)
    yield (f"A call of 1280 × 800 that repaints thirty times a second, mirrored into 320 × 200, takes {changing:.1f} ms of "
           f"processor time a second in Mirrolet and {together:.1f} ms with what the X server does for it; a call that stands "
           f"still takes {still:.1f} ms for both, and no call {idle:.1f} ms. Mirrolet uses at most {memory:.0f} MB.")


def plasma_table(run):
    """Returns the table of bench_plasma. A line without figures is the head of the indented lines that follow."""
    yield "| | median | least to most | not more than |"
    yield "|---|---:|---:|---:|"
    head = ""
    for line in run.lines[1:]:
        match = re.fullmatch(r"(.{56}) (\S+) +([\d.-]+) +([\d.-]+) +([\d.-]+)(?: +([\d.]+))?", line)
        if not match:
            head = line.strip()
            continue
        name, unit, median, least, most, reach = match.groups()
        words = f"{head}: {name.strip()}" if name.startswith(" ") else name.strip()
        unit = "" if unit == "ratio" else f" {unit}"
        yield f"| {words} | {median}{unit} | {least} – {most} | {reach or ''} |"
    yield f"\n{run.circumstances()}"


def write(page, name, lines):
    """Replaces the text between the two marks of this name in the page."""
    begin, end = f"<!-- {name} -->", f"<!-- end of {name} -->"
    before, rest = page.read_text().split(begin)
    after = rest.split(end)[1]
    page.write_text(f"{before}{begin}\n" + "\n".join(lines) + f"\n{end}{after}")


def main(folder):
    pages = {
        "mirrors": [(FIGURES, mirrors_in_full), (README, mirrors_in_a_sentence)],
        "lists": [(FIGURES, lists_in_full)],
        "program": [(FIGURES, program_table), (README, program_in_a_sentence)],
        "plasma": [(FIGURES, plasma_table)],
    }
    for part, targets in pages.items():
        figures = folder / f"{part}.tsv"
        if not figures.exists():
            continue
        run = Run(figures)
        for page, lines in targets:
            write(page, part, lines(run))
        print("", *targets[-1][1](run), sep="\n")
        if part == "mirrors":
            CHART.write_text(chart(run))


if __name__ == "__main__":
    main(Path(sys.argv[1]))
