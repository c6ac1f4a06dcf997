#!/usr/bin/python3
"""Draws res/Tools.bmp and res/Sketch.ico anew; needs rsvg-convert and ImageMagick.

Tools.bmp is a strip of 24 x 24 pictures in the order of ToolRow.cpp, in four rows: at rest, under the
mouse, chosen, not available. Each row has the colour behind the button in that state.
"""

import pathlib
import subprocess
import tempfile

HERE = pathlib.Path(__file__).parent
ROWS = [("#f6f5f2", "#33475b", "#2f6fb3"), ("#e4ebf3", "#22364a", "#1f5fa3"),
        ("#c9dcf2", "#16293c", "#14518f"), ("#f6f5f2", "#bdbdb8", "#cfcfca")]
SIZE = 24

PICTURES = [
    # new, open, save
    '<path d="M6 3.5h8l4.5 4.5v12.5h-12.5z" fill="#fff" stroke="{ink}"/><path d="M14 3.5v4.500h4.5" '
    'fill="none" stroke="{ink}"/>',
    '<path d="M3.5 19.500v-13h6l2 2.500h8v3" fill="none" stroke="{ink}"/>'
    '<path d="M3.5 19.500l3.500-7.500h14l-3.500 7.500z" fill="{hue}" fill-opacity=".3" stroke="{ink}"/>',
    '<path d="M4.5 4.500h12.500l2.500 2.500v12.500h-15z" fill="{hue}" fill-opacity=".3" stroke="{ink}"/>'
    '<path d="M8 4.500v5h7.500v-5M7.500 19.500v-6h9v6" fill="#fff" stroke="{ink}"/>',
    # undo, redo
    '<path d="M8 5l-4 4 4 4M4.500 9h9.500a5 5 0 0 1 0 10h-5" fill="none" stroke="{ink}" stroke-width="1.8"/>',
    '<path d="M16 5l4 4-4 4M19.500 9h-9.500a5 5 0 0 0 0 10h5" fill="none" stroke="{ink}" stroke-width="1.8"/>',
    # select, freehand, line, rectangle, ellipse, text
    '<path d="M7 3.500v15l3.800-3.400 2.400 5.400 2.600-1.200-2.400-5.200h5z" fill="#fff" stroke="{ink}" '
    'stroke-width="1.300"/>',
    '<path d="M4 18c2-9 5-13 7-12s-2 8 0 9 3-6 5-5-1 6 4 5" fill="none" stroke="{hue}" stroke-width="2"/>',
    '<path d="M5 19L19 5" stroke="{hue}" stroke-width="2"/><circle cx="5" cy="19" r="1.800" fill="{ink}"/>'
    '<circle cx="19" cy="5" r="1.800" fill="{ink}"/>',
    '<rect x="4" y="6" width="16" height="12" fill="{hue}" fill-opacity=".2" stroke="{hue}" stroke-width="2"/>',
    '<ellipse cx="12" cy="12" rx="8.500" ry="6.500" fill="{hue}" fill-opacity=".2" stroke="{hue}" '
    'stroke-width="2"/>',
    '<path d="M5 8.500v-3.500h14v3.500M12 5v14M9 19h6" fill="none" stroke="{ink}" stroke-width="1.900"/>',
    # delete, pen
    '<path d="M5 7h14M9.500 7v-2.500h5v2.500M6.500 7l1 13h9l1-13M10.300 10.500v6M13.700 10.500v6" fill="none" '
    'stroke="{ink}" stroke-width="1.400"/>',
    '<path d="M4.500 19.500l1.200-4.800L16 4.400l3.600 3.600L9.300 18.300z" fill="{hue}" fill-opacity=".3" '
    'stroke="{ink}" stroke-width="1.400"/><path d="M13.600 6.800l3.600 3.600" stroke="{ink}"/>',
]

ICON = """<svg xmlns="http://www.w3.org/2000/svg" width="{size}" height="{size}" viewBox="0 0 48 48">
<rect x="3" y="5" width="36" height="38" rx="4" fill="#fbfaf6" stroke="#33475b" stroke-width="2"/>
<path d="M8 34c5-17 10-22 13-20s-4 14 0 16 6-9 10-8" fill="none" stroke="#2f6fb3" stroke-width="3.500"
 stroke-linecap="round"/>
<path d="M24 35l2-7L40 9l5 4-14 18z" fill="#f2b441" stroke="#33475b" stroke-width="2" stroke-linejoin="round"/>
<path d="M24 35l2-7 5 4z" fill="#33475b"/></svg>"""


def strip():
    width = SIZE * len(PICTURES)
    parts = [f'<svg xmlns="http://www.w3.org/2000/svg" width="{width}" height="{SIZE * len(ROWS)}">']
    for row, (ground, ink, hue) in enumerate(ROWS):
        parts.append(f'<rect y="{row * SIZE}" width="{width}" height="{SIZE}" fill="{ground}"/>')
        for column, picture in enumerate(PICTURES):
            parts.append(f'<g transform="translate({column * SIZE} {row * SIZE})" stroke-linecap="round" '
                         f'stroke-linejoin="round">{picture.format(ink=ink, hue=hue)}</g>')
    return "".join(parts) + "</svg>"


def draw(svg, path):
    path.with_suffix(".svg").write_text(svg)
    subprocess.run(["rsvg-convert", str(path.with_suffix(".svg")), "-o", str(path)], check=True)
    return str(path)


with tempfile.TemporaryDirectory() as folder:
    folder = pathlib.Path(folder)
    tools = draw(strip(), folder / "tools.png")
    subprocess.run(["convert", tools, "-type", "truecolor", f"bmp3:{HERE / 'Tools.bmp'}"], check=True)
    icons = [draw(ICON.format(size=size), folder / f"{size}.png") for size in (16, 32, 48)]
    subprocess.run(["convert", *icons, str(HERE / "Sketch.ico")], check=True)
