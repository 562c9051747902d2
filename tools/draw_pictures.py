#!/usr/bin/python3
"""Draws the pictures of the resource libraries, all from one family of shapes.

The tables below say what each picture shows; everything that is drawn follows from them, so a
picture can't show another order or another edge than its setting has. Bitmaps are 24 bits deep, icons
32 bits with transparency and one image for each usual scale of a display. A bitmap that is drawn with
a colour counting as transparent has that colour behind its shapes, and soft edges blend into it; a
large one stands on a panel, and only the panel's corners have that colour.

    tools/draw_pictures.py FOLDER     writes <number>.bmp and <number>.ico for all of them
"""

import argparse
import math
import pathlib
import sys
from dataclasses import dataclass

import cairo

sys.dont_write_bytecode = True
from layout_pictures import DRAWERS as LAYOUT_DRAWERS, LAYOUTS, SIZE as LAYOUT_SIZE  # noqa: E402
from picture_files import bitmap_file, icon_file  # noqa: E402
from picture_shapes import (ARROW, BACK, DIGITS, HINGE, LANDSCAPE, LEFT, PANEL, PAPER,  # noqa: E402
                            PORTRAIT, SIGN, TEXT, TOP, WHITE, Canvas, Leaf, draw_leaf)

# ---- What the pictures show -----------------------------------------------------------------------

ONE_SIDED, LONG_EDGE, SHORT_EDGE = 1, 2, 3  # as dmDuplex counts


@dataclass(frozen=True)
class Sides:
    """A sheet's two sides: how it is turned, or that it is folded into a booklet."""

    orientation: int
    duplex: int
    booklet: bool = False

    @property
    def hinge(self):
        """The edge of the page about which the sheet turns; none when it isn't turned."""
        if self.duplex == ONE_SIDED:
            return None
        if self.booklet:  # folded across: beside an upright page, above a wide one
            return LEFT if self.orientation == PORTRAIT else TOP
        return LEFT if (self.orientation == PORTRAIT) == (self.duplex == LONG_EDGE) else TOP


@dataclass(frozen=True)
class Copies:
    """Three copies of two pages, as they come out: the first sheet out is the frontmost one."""

    collate: bool
    reverse: bool

    @property
    def stacks(self):
        """Page numbers, stack by stack; what belongs together lies together."""
        pages = (2, 1) if self.reverse else (1, 2)
        return (pages,) * 3 if self.collate else tuple((page,) * 3 for page in pages)


@dataclass(frozen=True)
class Sheet:
    """A single sheet; with an arrow it goes into the printer that way."""

    orientation: int
    arrow: bool = False


@dataclass(frozen=True)
class Feed:
    """A sheet on its way into the printer, upright when its short edge goes first."""

    orientation: int


@dataclass(frozen=True)
class Reason:
    """The round sign behind an option that is locked: here is why."""


@dataclass(frozen=True)
class Picture:
    shows: object
    size: tuple
    key: tuple = None  # the colour that counts as transparent


WHITE_KEY = (255, 255, 255)
PAGE_KEY = (244, 243, 238)  # 15660020
LARGE, SMALL = (96, 68), (32, 32)

BITMAPS = {
    # The sides of a sheet, shown as they are: nothing counts as transparent where they stand.
    631: Picture(Sides(PORTRAIT, ONE_SIDED), LARGE),
    902: Picture(Sides(PORTRAIT, LONG_EDGE), LARGE),
    905: Picture(Sides(PORTRAIT, SHORT_EDGE), LARGE),
    1072: Picture(Sides(PORTRAIT, SHORT_EDGE, booklet=True), LARGE),
    1068: Picture(Sides(LANDSCAPE, ONE_SIDED), LARGE),
    1065: Picture(Sides(LANDSCAPE, LONG_EDGE), LARGE),
    1066: Picture(Sides(LANDSCAPE, SHORT_EDGE), LARGE),
    1071: Picture(Sides(LANDSCAPE, SHORT_EDGE, booklet=True), LARGE),
    # The order of the sheets.
    425: Picture(Copies(collate=False, reverse=False), LARGE, PAGE_KEY),
    5021: Picture(Copies(collate=False, reverse=True), LARGE, PAGE_KEY),
    426: Picture(Copies(collate=True, reverse=False), LARGE, PAGE_KEY),
    5008: Picture(Copies(collate=True, reverse=True), LARGE, PAGE_KEY),
    # Single sheets.
    901: Picture(Sheet(PORTRAIT), SMALL, PAGE_KEY),
    903: Picture(Sheet(LANDSCAPE, arrow=True), LARGE),
    115: Picture(Sheet(PORTRAIT), SMALL, WHITE_KEY),
    # Which edge of a sheet enters the printer first.
    1079: Picture(Feed(PORTRAIT), SMALL, PAGE_KEY),
    1080: Picture(Feed(LANDSCAPE), SMALL, PAGE_KEY),
    # The page's layout: the tables stand in layout_pictures.py.
    **{number: Picture(shows, LAYOUT_SIZE) for number, shows in LAYOUTS.items()},
}

ICONS = {1077: Reason()}
ICON_SIZES = (16, 18, 20, 24, 27, 32, 36)  # 100 to 200 percent

def page_size(orientation):
    return (30, 42) if orientation == PORTRAIT else (42, 30)


def draw_one_sided(canvas, sides):
    """A page whose lower corner is lifted: nothing is on its other side."""
    width, height = page_size(sides.orientation)
    x, y, curl = (canvas.width - width) // 2, (canvas.height - height) // 2, 12
    right, bottom = x + width - 1, y + height - 1
    canvas.polygon([(x, y), (right, y), (right, bottom - curl), (right - curl, bottom), (x, bottom)],
                   PAPER)
    count = (height - 6) // 4
    for line in range(count):
        row = y + 4 + 4 * line
        room = min(width - 8, right - x - 4 - max(0, row + curl + 4 - bottom))
        canvas.rectangle(x + 4, row, room, 1, TEXT)
    canvas.polygon([(right, bottom - curl), (right - curl, bottom), (right - curl - 3, bottom - curl - 2)],
                   BACK)


def draw_turned(canvas, sides):
    """The page on its hinge, the leaf before it turned half over, and the arrow of that turn."""
    if sides.hinge == LEFT:
        width, height = page_size(sides.orientation)
        reach = width * 2 // 3
        x = (canvas.width - width + reach) // 2
        y = (canvas.height - height) // 2 + 4
        canvas.page(x, y, width, height)
        draw_leaf(canvas, Leaf(LEFT, (x, y), reach, height - 1, 3), (height - 6) // 4)
        canvas.rectangle(x - 1, y - 1, 3, height + 2, HINGE)
        top = y - 3
        canvas.arrow([(x + width * 0.55, top), (x + width * 0.3, top - 10),
                      (x - reach * 0.35, top - 9), (x - reach * 0.62, top - 4)], 6)
    else:
        width, height = (28, 34) if sides.orientation == PORTRAIT else (44, 30)
        reach = height // 2
        x = (canvas.width - width) // 2
        y = (canvas.height - height + reach) // 2
        canvas.page(x, y, width, height)
        draw_leaf(canvas, Leaf(TOP, (x, y), reach, width - 1, 3), (reach - 2) // 4)
        canvas.rectangle(x - 1, y - 1, width + 2, 3, HINGE)
        right = x + width + 3
        canvas.arrow([(right, y + height * 0.5), (right + 10, y + height * 0.28),
                      (right + 10, y - reach * 0.3), (right + 4, y - reach * 0.62)], 6)


def draw_booklet(canvas, sides):
    """Folded sheets, one in the other, opened in their middle; staples hold them in the fold."""
    if sides.hinge == LEFT:
        width, height, lift = 29, 40, 5
        x, y = canvas.width // 2, (canvas.height - height) // 2 + 2
        for leaf in (4, 2, 0):  # the outer sheets show at the sides
            for way in (-1, 1):
                edge = x + way * (width + leaf)
                canvas.polygon([(x, y + leaf // 2), (edge, y - lift + leaf), (edge, y + height - lift + leaf),
                                (x, y + height + leaf // 2)], PAPER if leaf == 0 else BACK)
        slope = lift / width
        canvas.color(TEXT)
        canvas.context.set_line_width(1)
        for way in (-1, 1):
            for line in range(8):
                row = y + 6 + 4 * line
                near, far = (4, width - 4) if line < 7 else ((4, 16) if way == 1 else (12, width - 4))
                canvas.context.move_to(x + way * near + 0.5, row - near * slope + 0.5)
                canvas.context.line_to(x + way * far + 0.5, row - far * slope + 0.5)
                canvas.context.stroke()
        canvas.rectangle(x, y + 1, 1, height, HINGE)
        for staple in (y + 8, y + height - 14):
            canvas.rectangle(x - 1, staple, 3, 7, HINGE)
    else:
        width, height, lift = 44, 27, 4
        x, y = (canvas.width - width) // 2, canvas.height // 2
        for leaf in (4, 2, 0):
            for way in (-1, 1):
                edge = y + way * (height + leaf - 2)
                canvas.polygon([(x, y), (x - lift + leaf // 2, edge), (x + width - 1 + lift - leaf // 2, edge),
                                (x + width - 1, y)], PAPER if leaf == 0 else BACK)
        for top in (y - height + 6, y + 5):
            canvas.lines(x + 4, top, width - 8, 5)
        canvas.rectangle(x, y, width, 1, HINGE)
        for staple in (x + 9, x + width - 16):
            canvas.rectangle(staple, y - 1, 7, 3, HINGE)


def draw_sides(canvas, sides):
    if sides.booklet:
        draw_booklet(canvas, sides)
    elif sides.hinge:
        draw_turned(canvas, sides)
    else:
        draw_one_sided(canvas, sides)


def draw_copies(canvas, copies):
    """Stacks from left to right; in a stack the first sheet lies in front."""
    width, height, step, gap = 18, 25, 7, 5
    stacks = copies.stacks
    deep = len(stacks[0])
    stack_width = width + step * (deep - 1)
    if len(stacks) < 3:
        gap = 12
    left = (canvas.width - len(stacks) * stack_width - gap * (len(stacks) - 1)) // 2
    front = (canvas.height - height + step * (deep - 1)) // 2
    for pages in stacks:
        for place in range(deep - 1, -1, -1):
            x, y = left + step * place, front - step * place
            canvas.sheet(x, y, width, height)
            canvas.digit(x + width - 6, y + height - 9 if place == 0 else y + 2,
                         DIGITS[pages[place]])
            if place == 0:
                canvas.lines(x + 3, y + 4, width - 7, 3)
        left += stack_width + gap


def draw_sheet(canvas, sheet):
    large = (canvas.width, canvas.height) == LARGE
    width, height = page_size(sheet.orientation) if large else (21, 28)
    x, y = (canvas.width - width) // 2, (canvas.height - height) // 2
    if sheet.arrow:
        y += 8
        middle = canvas.width / 2
        canvas.arrow([(middle, y - 2), (middle, y - 5), (middle, y - 7), (middle, y - 9)], 6)
    canvas.page(x, y, width, height, fold=6)


def draw_feed(canvas, feed):
    """The sheet with the edge that goes first, and an arrow before it, all on whole pixels."""
    width, height = (15, 20) if feed.orientation == PORTRAIT else (21, 15)
    x, y = (canvas.width - width) // 2, (canvas.height - height) // 2 + 5
    canvas.page(x, y, width, height)
    canvas.rectangle(x, y, width, 2, ARROW)
    middle, tip = x + width // 2, y - 10
    for row in range(5):
        canvas.rectangle(middle - row, tip + row, 2 * row + 1, 1, ARROW)
    canvas.rectangle(middle - 1, tip + 5, 3, 3, ARROW)


def draw_reason(size):
    """A disc with an i in it; its strokes end on whole pixels at every size."""
    canvas = Canvas((size, size))
    context = canvas.context
    middle, radius = size / 2, size / 2 - max(size // 18, 1)
    context.arc(middle, middle, radius, 0, 2 * math.pi)
    gradient = cairo.LinearGradient(0, 0, 0, size)
    gradient.add_color_stop_rgb(0, 62 / 255, 142 / 255, 215 / 255)
    gradient.add_color_stop_rgb(1, *(part / 255 for part in SIGN))
    context.set_source(gradient)
    context.fill()
    stroke = max(round(size / 9), 2)
    if (size - stroke) % 2:  # the letter stands in the middle of a pixel grid
        stroke += 1
    left = (size - stroke) // 2
    top, bottom = round(size * 0.44), round(size * 0.78)
    canvas.rectangle(left, top, stroke, bottom - top, PAPER)
    canvas.rectangle(left, round(size * 0.22), stroke, stroke, PAPER)
    return canvas


DRAWERS = {Sides: draw_sides, Copies: draw_copies, Sheet: draw_sheet, Feed: draw_feed,
           **LAYOUT_DRAWERS}


def draw_bitmap(picture):
    ground = {LARGE: PANEL, LAYOUT_SIZE: WHITE}.get(picture.size, picture.key)
    canvas = Canvas(picture.size, ground)
    DRAWERS[type(picture.shows)](canvas, picture.shows)
    if picture.key and picture.size == LARGE:  # the panel's corners let the page through
        for x in (0, canvas.width - 1):
            for y in (0, canvas.height - 1):
                canvas.rectangle(x, y, 1, 1, picture.key)
    return canvas


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("folder", type=pathlib.Path, help="where the files go")
    folder = parser.parse_args().folder
    folder.mkdir(parents=True, exist_ok=True)
    for number, picture in BITMAPS.items():
        (folder / f"{number}.bmp").write_bytes(bitmap_file(draw_bitmap(picture)))
    for number in ICONS:
        images = [draw_reason(size) for size in ICON_SIZES]
        (folder / f"{number}.ico").write_bytes(icon_file(images))


if __name__ == "__main__":
    main()
