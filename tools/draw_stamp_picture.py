#!/usr/bin/python3
"""Draws the picture that the jobs of hosts/jobs stamp onto pages: draw_stamp_picture.py FILE.bmp"""

import math
import sys

from picture_files import bitmap_file
from picture_shapes import Canvas, WHITE

SIDE = 240
SEAL = (60, 60, 60)
RIBBON = (150, 150, 150)
POINTS = 24  # of the seal's edge


def star(middle, outer, inner, points):
    for i in range(2 * points):
        radius = inner if i % 2 else outer
        angle = math.pi * i / points
        yield middle + radius * math.sin(angle), middle - radius * math.cos(angle)


def draw(canvas):
    middle = SIDE / 2
    canvas.polygon([(70, 140), (50, 236), (88, 212), (116, 236), (120, 140)], RIBBON)
    canvas.polygon([(170, 140), (190, 236), (152, 212), (124, 236), (120, 140)], RIBBON)
    canvas.polygon(list(star(middle, 92, 80, POINTS)), SEAL)
    canvas.polygon(list(star(middle, 66, 66, POINTS)), WHITE)
    canvas.polygon(list(star(middle, 58, 26, 5)), SEAL)


def main():
    canvas = Canvas((SIDE, SIDE), WHITE)
    draw(canvas)
    with open(sys.argv[1], "wb") as file:
        file.write(bitmap_file(canvas))


if __name__ == "__main__":
    main()
