#!/usr/bin/python3
"""Draws a program's text output as an SVG picture of a terminal window, for the docs.

Usage: some-program | tools/text-picture.py --title "make run" picture.svg
"""

import argparse
import html
import sys

CHAR_WIDTH, LINE_HEIGHT, FONT_SIZE, MARGIN, BAR = 8.4, 18, 14, 16, 30


def line_of(text, row):
    """One line of the picture; what a record repair marked stands out."""
    y = BAR + MARGIN + LINE_HEIGHT * row + FONT_SIZE
    colour = "#f2c14e" if "<- repaired" in text else "#d7dde5"
    if text and not text.startswith(" "):
        colour = "#7cc4ff"
    return f'<text x="{MARGIN}" y="{y}" fill="{colour}" xml:space="preserve">{html.escape(text)}</text>'


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("picture", help="the SVG file to write")
    parser.add_argument("--title", default="", help="what the window's bar says")
    arguments = parser.parse_args()

    lines = [line.rstrip() for line in sys.stdin.read().expandtabs().splitlines()]
    width = int(max(map(len, lines), default=1) * CHAR_WIDTH + 2 * MARGIN)
    height = BAR + 2 * MARGIN + LINE_HEIGHT * len(lines)
    with open(arguments.picture, "w", encoding="utf-8") as picture:
        picture.write(
            f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {width} {height}" '
            f'font-family="DejaVu Sans Mono, Menlo, Consolas, monospace" font-size="{FONT_SIZE}">\n'
            f'<rect width="{width}" height="{height}" rx="8" fill="#1f2630"/>\n'
            f'<rect width="{width}" height="{BAR}" rx="8" fill="#323c49"/>\n'
            f'<text x="{MARGIN}" y="20" fill="#aab4c0">{html.escape(arguments.title)}</text>\n'
        )
        picture.writelines(line_of(line, row) + "\n" for row, line in enumerate(lines))
        picture.write("</svg>\n")


if __name__ == "__main__":
    main()
