"""Draws comparisons as SVG: a row for each of ours, its time as a multiple of the best peer's on a logarithmic axis."""
import math
from xml.sax.saxutils import escape

LABEL, PLOT, FIGURES, ROW, HEAD, FOOT = 400, 330, 320, 24, 66, 30
WIDTH = LABEL + PLOT + FIGURES
LIMIT = 30  # peers that take longer are drawn at the edge

STYLE = """
text { font: 12px 'DejaVu Sans', 'Segoe UI', Helvetica, Arial, sans-serif; fill: #1f2328 }
.card { fill: #ffffff; stroke: #d1d9e0 } .quiet { fill: #59636e } .grid { stroke: #e3e8ed } .one { stroke: #59636e }
.stripe { fill: #f6f8fa } .ours { fill: #0969da; stroke: #0969da } .missed { fill: #bc4c00; stroke: #bc4c00 }
.peer { fill: none; stroke: #818b98; stroke-width: 1.4 } .beyond { fill: #818b98 }
.target { stroke: #1a7f37; stroke-width: 2.5 } line.ours, line.missed { stroke-width: 2 }
@media (prefers-color-scheme: dark) {
text { fill: #e6edf3 }
.card { fill: #0d1117; stroke: #3d444d } .quiet { fill: #9198a1 } .grid { stroke: #262c34 } .one { stroke: #9198a1 }
.stripe { fill: #151b23 } .ours { fill: #58a6ff; stroke: #58a6ff } .missed { fill: #f0883e; stroke: #f0883e }
.peer { stroke: #8b949e } .beyond { fill: #8b949e } .target { stroke: #3fb950 }
}
"""


def text(x, y, words, kind="", anchor="start"):
    return f'<text x="{x:.0f}" y="{y:.0f}" class="{kind}" text-anchor="{anchor}">{escape(words)}</text>'


def line(x1, y1, x2, y2, kind):
    return f'<line x1="{x1:.1f}" y1="{y1:.1f}" x2="{x2:.1f}" y2="{y2:.1f}" class="{kind}"/>'


def disc(x, y, kind):
    return f'<circle cx="{x:.1f}" cy="{y:.1f}" r="{4.5 if kind == "ours" else 3.5}" class="{kind}"/>'


def diamond(x, y, kind):
    return f'<path d="M{x:.1f} {y - 6:.1f}l6 6l-6 6l-6 -6z" class="{kind}"/>'


def cross(x, y, kind):
    return f'<path d="M{x - 3:.1f} {y - 3:.1f}l6 6m0 -6l-6 6" class="{kind}"/>'


def nanoseconds(value):
    return f"{value:.3g} ns" if value < 1000 else f"{value / 1000:.3g} µs"


class Axis:
    """From multiples of the best peer's time to places."""

    def __init__(self, multiples):
        self.low = math.log(min(min(multiples), 0.9) / 1.25)
        self.high = math.log(max(min(max(multiples), LIMIT), 1.1) * 1.25)

    def at(self, multiple):
        part = (math.log(multiple) - self.low) / (self.high - self.low)
        return LABEL + PLOT * min(max(part, 0), 1)

    def ticks(self):
        steps = [base * 10 ** power for power in range(-3, 3) for base in (1, 2, 5)]
        return [step for step in steps if self.low < math.log(step) < self.high]


def draw_row(axis, y, one, peers, asides):
    marks = [cross(axis.at(aside.ratio), y, "peer") for aside in asides]
    for peer in peers:
        beyond = peer.ratio > LIMIT
        marks.append(text(LABEL + PLOT - 8, y + 4, "›", "quiet") if beyond else disc(axis.at(peer.ratio), y, "peer"))
    if one.target:
        marks.append(line(axis.at(one.target), y - 8, axis.at(one.target), y + 8, "target"))
    kind = "missed" if one.missed else "ours"
    marks.append(line(axis.at(one.low), y, axis.at(one.high), y, kind))
    marks.append((diamond if one.missed else disc)(axis.at(one.ratio), y, kind))
    best = min(peers, key=lambda peer: peer.ns)
    marks.append(text(LABEL - 12, y + 4, one.label, anchor="end"))
    marks.append(text(LABEL + PLOT + 14, y + 4, f"{nanoseconds(one.ns)} · {nanoseconds(best.ns)} {best.name}", "quiet"))
    return marks


def legend(y):
    marks, x = [], 16
    for draw, kind, words in ((disc, "ours", "ours, with the 95 % interval"), (disc, "peer", "peers (the best one is 1)"), (cross, "peer", "no peer, shown beside"),
                              (None, "target", "target"), (diamond, "missed", "target missed")):
        marks.append(draw(x, y, kind) if draw else line(x, y - 8, x, y + 8, kind))
        marks.append(text(x + 12, y + 4, words))
        x += 34 + 7 * len(words)
    return marks


def chart(title, rows):
    """The SVG of one program's comparisons: rows of one of ours, the peers of its contest and what stands aside."""
    bottom = HEAD + ROW * len(rows)
    multiples = [value for one, peers, asides in rows for value in
                 [one.low, one.high, one.target or one.ratio, *(other.ratio for other in peers + asides)]]
    axis = Axis(multiples)
    marks = [f'<rect x="0.5" y="0.5" width="{WIDTH - 1}" height="{bottom + FOOT - 1}" rx="6" class="card"/>']
    marks += legend(22)
    marks.append(text(axis.at(1), HEAD - 10, "← faster · time, the best peer's is 1 · slower →", "quiet", "middle"))
    marks.append(text(LABEL + PLOT + 14, HEAD - 10, "ours · best peer, median", "quiet"))
    marks += [f'<rect x="1" y="{HEAD + ROW * i}" width="{WIDTH - 2}" height="{ROW}" class="stripe"/>'
              for i in range(0, len(rows), 2)]
    for tick in axis.ticks():
        marks.append(line(axis.at(tick), HEAD, axis.at(tick), bottom, "one" if tick == 1 else "grid"))
        marks.append(text(axis.at(tick), bottom + 18, f"{tick:g}", "quiet", "middle"))
    for i, row in enumerate(rows):
        marks += draw_row(axis, HEAD + ROW * i + ROW / 2, *row)
    return (f'<svg xmlns="http://www.w3.org/2000/svg" width="{WIDTH}" height="{bottom + FOOT}" role="img" '
            f'viewBox="0 0 {WIDTH} {bottom + FOOT}">\n<title>{escape(title)}</title>\n<style>{STYLE}</style>\n'
            + "\n".join(marks) + "\n</svg>\n")
