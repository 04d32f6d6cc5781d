#!/usr/bin/env python3
"""Makes the PNG files of data/icons from the SVG files beside them. They are committed, so that neither a build nor
the program needs what draws SVG.

    draw_icons.py [ROOT]

Needs rsvg-convert and, to make the files small, ImageMagick's convert. A line drawing of actions/ becomes a black one
with an alpha channel, at 24 pixels and at 48 ("@2x"); the program gives it the colour of its text.
"""

import subprocess
import sys
from pathlib import Path

APPLICATION = "org.quorvelant.Quorvelant"
PROJECT = "application-x-quorvelant-project"
SIZES = (16, 24, 32, 48, 64, 128, 256)


def draw(svg, png, size, form):
    png.parent.mkdir(parents=True, exist_ok=True)
    drawn = subprocess.run(["rsvg-convert", "-w", str(size), "-h", str(size), str(svg)],
                           stdout=subprocess.PIPE, check=True).stdout
    subprocess.run(["convert", "png:-", "-strip", "-define", "png:exclude-chunks=all", "-define",
                    "png:compression-level=9", f"{form}:{png}"], input=drawn, check=True)


def main():
    folder = Path(sys.argv[1] if len(sys.argv) > 1 else Path(__file__).parent.parent) / "data/icons"
    for svg in sorted((folder / "actions").glob("*.svg")):
        draw(svg, svg.with_suffix(".png"), 24, "png")
        draw(svg, svg.with_name(f"{svg.stem}@2x.png"), 48, "png")
    for name in (APPLICATION, PROJECT):
        for size in SIZES:
            draw(folder / f"{name}.svg", folder / f"{size}/{name}.png", size, "png32")


if __name__ == "__main__":
    main()
