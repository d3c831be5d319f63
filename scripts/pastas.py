#!/usr/bin/env python3
"""Draws the picture of the folders from the #include lines: scripts/pastas.py writes docs/arquitetura.svg,
scripts/pastas.py --confere says whether it is still true (exit code 1 when not). An arrow means that files of one folder
include headers of the other; an arrow that others already imply is left out."""
import pathlib
import re
import sys
import textwrap

ROOT = pathlib.Path(__file__).resolve().parent.parent
PICTURE = ROOT / "docs" / "arquitetura.svg"
WIDTH, LINE, GAP, RISE, MARGIN = 176, 13, 22, 44, 12  # of a box, of its lines, between boxes, between rows; pixels
INCLUDE = re.compile(r'^\s*#\s*include\s+"(\w+)/', re.M)
COLOURS = {"program": ("#f3e8ff", "#7e22ce"), "system": ("#e0f2fe", "#0369a1"), "library": ("#fff3e0", "#b45309")}


def folders():
    """Name -> (what its CMakeLists.txt says of it, colour, folders whose headers it includes)."""
    found = {}
    for lists in sorted((ROOT / "src").glob("*/CMakeLists.txt")):
        text = lists.read_text(encoding="utf-8")
        name = lists.parent.name
        said = re.match(rf"# src/{name} - (.+)", text)
        if not said:
            sys.exit(f"pastas: src/{name}/CMakeLists.txt does not begin with '# src/{name} - what it is'")
        files = [p for p in lists.parent.rglob("*") if p.suffix in (".cpp", ".h", ".in")]
        used = {other for p in files for other in INCLUDE.findall(p.read_text(encoding="utf-8"))}
        kind = "program" if "quorel_program(" in text else "system" if (lists.parent / "linux").is_dir() else "library"
        found[name] = (said.group(1), COLOURS[kind], used - {name})
    for name, (said, colour, used) in found.items():
        found[name] = (said, colour, used & found.keys())
    return found


def implied(uses):
    """All that a folder reaches, itself left out; ends the program for a ring."""
    reached = {}

    def reach(name, path):
        if name in path:
            sys.exit("pastas: a ring of folders: " + " -> ".join([*path, name]))
        if name not in reached:
            reached[name] = set().union(*({other} | reach(other, [*path, name]) for other in uses[name]))
        return reached[name]

    for name in uses:
        reach(name, [])
    return reached


def depths(arrows, reached):
    """How far below the top each folder stands: right below the lowest of those that use it."""
    depth = {}
    for name in sorted(arrows, key=lambda n: (-len(reached[n]), n)):
        depth[name] = 1 + max((depth[user] for user in depth if name in arrows[user]), default=-1)
    return depth


def placed(arrows, depth):
    """The rows from the top, of folders and of the bends where arrows pass a row: pairs (user, used). Neighbours stand
    near those above and below them."""
    spans = [(user, used) for user in sorted(arrows) for used in sorted(arrows[user])]
    chains = [[user, *[(user, used, d) for d in range(depth[user] + 1, depth[used])], used] for user, used in spans]
    level = dict(depth) | {bend: bend[2] for chain in chains for bend in chain[1:-1]}
    result = [sorted((n for n in level if level[n] == d), key=str) for d in range(max(level.values()) + 1)]
    near = {n: [] for n in level}
    for chain in chains:
        for above, below in zip(chain, chain[1:]):
            near[above].append(below)
            near[below].append(above)
    for sweep in range(24):
        place = {n: i - len(row) / 2 for row in result for i, n in enumerate(row)}
        for row in result if sweep % 2 else reversed(result):
            row.sort(key=lambda n: (sum(place[o] for o in near[n]) / max(len(near[n]), 1), str(n)))
            place.update({n: i - len(row) / 2 for i, n in enumerate(row)})
    return result, chains


def boxes_of(levels, lines):
    """Left, top and height of everything in the rows, the size of the whole."""
    wide = {n: WIDTH if isinstance(n, str) else 0 for row in levels for n in row}
    total = max(sum(wide[n] + GAP for n in row) for row in levels) - GAP
    boxes, y = {}, MARGIN
    for row in levels:
        high = max((len(lines[n]) + 1) * LINE + 14 for n in row if n in lines)
        x = MARGIN + (total - sum(wide[n] + GAP for n in row) + GAP) / 2
        for n in row:
            boxes[n] = (x, y, (len(lines[n]) + 1) * LINE + 14 if n in lines else high)
            x += wide[n] + GAP
        y += high + RISE
    return boxes, total + 2 * MARGIN, y - RISE + MARGIN


def arrow(chain, boxes, chains):
    """The path of one arrow, by its bends. Arrows leave and reach a box side by side."""
    def side(name, at, other):
        others = sorted((c[other] for c in chains if c[at] == name), key=lambda n: (boxes[n][0], str(n)))
        return boxes[name][0] + WIDTH * (others.index(chain[other]) + 1) / (len(others) + 1)

    x, top, high = boxes[chain[0]]
    x, y = side(chain[0], 0, 1), top + high
    path = f"M{x:g} {y:g}"
    for n in chain[1:]:
        nx, ny, high = boxes[n]
        if n == chain[-1]:
            nx = side(n, -1, -2)
        bend = (ny - y) / 2
        path += f"C{x:g} {y + bend:g} {nx:g} {ny - bend:g} {nx:g} {ny:g}"
        x, y = nx, ny
        if n != chain[-1]:
            y += high
            path += f"V{y:g}"
    return f'<path d="{path}" fill="none" stroke="#6b7280" marker-end="url(#a)"/>'


def draw():
    found = folders()
    reached = implied({name: used for name, (_, _, used) in found.items()})
    arrows = {name: {o for o in used if not any(o in reached[p] for p in used)} for name, (_, _, used) in found.items()}
    levels, chains = placed(arrows, depths(arrows, reached))
    lines = {name: textwrap.wrap(said, 29) for name, (said, _, _) in found.items()}
    boxes, width, height = boxes_of(levels, lines)
    out = [f'<svg xmlns="http://www.w3.org/2000/svg" width="{width:g}" height="{height:g}"'
           ' font-family="Liberation Sans, sans-serif" font-size="11">',
           '<title>Folders of src/ and what each may use</title>',
           '<defs><marker id="a" viewBox="0 0 8 8" refX="8" refY="4" markerWidth="7" markerHeight="7" orient="auto">'
           '<path d="M0 0L8 4L0 8z" fill="#6b7280"/></marker></defs>',
           '<rect width="100%" height="100%" fill="white"/>']
    out += [arrow(chain, boxes, chains) for chain in chains]
    for name in sorted(lines):
        x, top, high = boxes[name]
        fill, line = found[name][1]
        middle = x + WIDTH / 2
        out.append(f'<rect x="{x:g}" y="{top:g}" width="{WIDTH}" height="{high}" rx="7" fill="{fill}" stroke="{line}"/>')
        out.append(f'<text x="{middle:g}" y="{top + 17:g}" text-anchor="middle" font-size="13" font-weight="bold">'
                   f'{name}</text>')
        for i, text in enumerate(lines[name]):
            text = text.replace("&", "&amp;").replace("<", "&lt;")
            out.append(f'<text x="{middle:g}" y="{top + 17 + (i + 1) * LINE:g}" text-anchor="middle">{text}</text>')
    return "\n".join([*out, "</svg>", ""])


def main():
    picture = draw()
    if sys.argv[1:] == ["--confere"]:
        if not PICTURE.is_file() or PICTURE.read_text(encoding="utf-8") != picture:
            sys.exit("pastas: docs/arquitetura.svg no longer shows the folders; run scripts/pastas.py")
    elif sys.argv[1:]:
        sys.exit(__doc__)
    else:
        PICTURE.write_text(picture, encoding="utf-8")


main()
