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
import struct
from dataclasses import dataclass

import cairo

# ---- What the pictures show -----------------------------------------------------------------------

PORTRAIT, LANDSCAPE = 1, 2  # as dmOrientation counts
ONE_SIDED, LONG_EDGE, SHORT_EDGE = 1, 2, 3  # as dmDuplex counts
LEFT, TOP = "left", "top"


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
}

ICONS = {1077: Reason()}
ICON_SIZES = (16, 18, 20, 24, 27, 32, 36)  # 100 to 200 percent

# ---- How they look --------------------------------------------------------------------------------

# Behind a large picture, so that it can stand on any page. It has no frame: a control that is larger
# than its picture fills the rest with the color of the picture's first pixel.
PANEL = (232, 241, 250)
PAPER = (254, 254, 254)  # not the white that counts as transparent in some pictures
BACK = (221, 232, 243)  # the paper's other side
INK = (62, 82, 106)
TEXT = (150, 165, 183)
HINGE = (24, 103, 178)
ARROW = (217, 104, 20)
SIGN = (24, 103, 178)

DIGITS = {  # 4 by 7 pixels, drawn as they stand
    1: (".#..", "##..", ".#..", ".#..", ".#..", ".#..", "###."),
    2: (".##.", "#..#", "...#", "..#.", ".#..", "#...", "####"),
}


class Canvas:
    """A cairo surface with the family's shapes. Whole coordinates are corners of pixels."""

    def __init__(self, size, background=None):
        self.width, self.height = size
        self.surface = cairo.ImageSurface(cairo.FORMAT_ARGB32, *size)
        self.context = cairo.Context(self.surface)
        if background:
            self.color(background)
            self.context.paint()

    def color(self, rgb):
        self.context.set_source_rgb(*(part / 255 for part in rgb))

    def rectangle(self, x, y, width, height, rgb):
        self.color(rgb)
        self.context.rectangle(x, y, width, height)
        self.context.fill()

    def polygon(self, points, fill):
        """A filled shape; its outline runs through the middles of pixels where points are whole."""
        self.context.new_path()
        for x, y in points:
            self.context.line_to(x + 0.5, y + 0.5)
        self.context.close_path()
        self.color(fill)
        self.context.fill_preserve()
        self.color(INK)
        self.context.set_line_width(1)
        self.context.set_line_join(cairo.LINE_JOIN_ROUND)
        self.context.stroke()

    def lines(self, x, y, width, count, pitch=4):
        """Lines of text; the last one of a paragraph is short."""
        for line in range(count):
            part = width if line < count - 1 else max(width * 3 // 5, 2)
            self.rectangle(x, y + pitch * line, part, 1, TEXT)

    def digit(self, x, y, number):
        for row, pixels in enumerate(DIGITS[number]):
            for column, pixel in enumerate(pixels):
                if pixel == "#":
                    self.rectangle(x + column, y + row, 1, 1, INK)

    def sheet(self, x, y, width, height, fold=0):
        """A sheet of paper with its corner folded over, where there is a fold."""
        right, bottom = x + width - 1, y + height - 1
        corner = [(right - fold, y), (right, y + fold)] if fold else [(right, y)]
        self.polygon([(x, y), *corner, (right, bottom), (x, bottom)], PAPER)
        if fold:
            self.polygon([(right - fold, y), (right - fold, y + fold), (right, y + fold)], BACK)

    def page(self, x, y, width, height, fold=0):
        """A sheet with text on it."""
        self.sheet(x, y, width, height, fold)
        top = y + 4 + fold
        if fold:
            self.lines(x + 4, y + 4, width - 9 - fold, 1)
        self.lines(x + 4, top, width - 8, (y + height - 3 - top) // 4)

    def arrow(self, points, head):
        """A curve through four points of a Bezier, with a head that follows its end."""
        context = self.context
        context.new_path()
        context.move_to(*points[0])
        context.curve_to(*points[1], *points[2], *points[3])
        self.color(ARROW)
        context.set_line_width(2.4)
        context.set_line_cap(cairo.LINE_CAP_ROUND)
        context.stroke()
        angle = math.atan2(points[3][1] - points[2][1], points[3][0] - points[2][0])
        context.save()
        context.translate(*points[3])
        context.rotate(angle)
        context.move_to(head, 0)
        context.line_to(-head * 0.35, -head * 0.8)
        context.line_to(-head * 0.35, head * 0.8)
        context.close_path()
        context.fill()
        context.restore()


# A leaf in the air, on its way round the hinge: where a point of the flat page lies. `along` runs
# from the hinge to the free edge, `across` along the hinge, both from 0 to 1.
@dataclass(frozen=True)
class Leaf:
    hinge: str
    origin: tuple  # the hinge's first end, which is the page's upper left corner when it lies flat
    reach: int  # how far the free edge is from the hinge now
    length: int  # of the hinge
    lift: int  # how much larger the free edge seems, being nearer to the eye

    def at(self, along, across):
        spread = (across - 0.5) * (self.length + 2 * self.lift * along) + 0.5 * self.length
        x, y = self.origin
        if self.hinge == LEFT:
            return x - self.reach * along, y + spread
        return x + spread, y - self.reach * along


def draw_leaf(canvas, leaf, lines):
    """The turned leaf: its other side, with text that reads like the page beside or below it."""
    canvas.polygon([leaf.at(0, 0), leaf.at(1, 0), leaf.at(1, 1), leaf.at(0, 1)], BACK)
    canvas.color(TEXT)
    canvas.context.set_line_width(1)
    for line in range(lines):
        place = 0.14 + 0.76 * line / max(lines - 1, 1)
        short = line == lines - 1
        if leaf.hinge == LEFT:  # text runs from the free edge to the hinge
            start, end = leaf.at(0.82, place), leaf.at(0.45 if short else 0.18, place)
        else:  # the first line is the farthest from the hinge
            start, end = leaf.at(1 - place, 0.12), leaf.at(1 - place, 0.55 if short else 0.88)
        canvas.context.move_to(start[0] + 0.5, start[1] + 0.5)
        canvas.context.line_to(end[0] + 0.5, end[1] + 0.5)
        canvas.context.stroke()


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
            canvas.digit(x + width - 6, y + height - 9 if place == 0 else y + 2, pages[place])
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


DRAWERS = {Sides: draw_sides, Copies: draw_copies, Sheet: draw_sheet}


def draw_bitmap(picture):
    canvas = Canvas(picture.size, PANEL if picture.size == LARGE else picture.key)
    DRAWERS[type(picture.shows)](canvas, picture.shows)
    if picture.key and picture.size == LARGE:  # the panel's corners let the page through
        for x in (0, canvas.width - 1):
            for y in (0, canvas.height - 1):
                canvas.rectangle(x, y, 1, 1, picture.key)
    return canvas


# ---- The platform's files -------------------------------------------------------------------------

INFO_HEADER = "<IiiHHIIiiII"  # BITMAPINFOHEADER
DOTS_PER_METRE = 3780  # 96 an inch


def rows_bottom_up(canvas):
    """The rows as blue, green, red and alpha, the last one first."""
    canvas.surface.flush()
    data, stride = bytes(canvas.surface.get_data()), canvas.surface.get_stride()
    for y in range(canvas.height - 1, -1, -1):
        yield data[y * stride:y * stride + canvas.width * 4]


def bitmap_file(canvas):
    """A .bmp of 24 bits a pixel."""
    padding = bytes(-canvas.width * 3 % 4)
    pixels = b"".join(b"".join(row[i:i + 3] for i in range(0, len(row), 4)) + padding
                      for row in rows_bottom_up(canvas))
    info = struct.pack(INFO_HEADER, 40, canvas.width, canvas.height, 1, 24, 0, len(pixels),
                       DOTS_PER_METRE, DOTS_PER_METRE, 0, 0)
    offset = 14 + len(info)
    return struct.pack("<2sIHHI", b"BM", offset + len(pixels), 0, 0, offset) + info + pixels


def straight(row):
    """Pixels whose colours are no longer multiplied by their alpha, as icons want them."""
    for i in range(0, len(row), 4):
        alpha = row[i + 3]
        if alpha:
            yield bytes(min(255, (part * 255 + alpha // 2) // alpha) for part in row[i:i + 3])
            yield bytes((alpha,))
        else:
            yield bytes(4)


def icon_image(canvas):
    """One image of an icon: 32 bits a pixel, then the mask of what is wholly transparent."""
    rows = list(rows_bottom_up(canvas))
    pixels = b"".join(b"".join(straight(row)) for row in rows)
    mask = b""
    for row in rows:
        bits = "".join("0" if row[i + 3] else "1" for i in range(0, len(row), 4))
        bits += "0" * (-len(bits) % 32)
        mask += int(bits, 2).to_bytes(len(bits) // 8, "big")
    return struct.pack(INFO_HEADER, 40, canvas.width, 2 * canvas.height, 1, 32, 0,
                       len(pixels) + len(mask), 0, 0, 0, 0) + pixels + mask


def icon_file(canvases):
    images = [icon_image(canvas) for canvas in canvases]
    file = struct.pack("<HHH", 0, 1, len(images))
    offset = len(file) + 16 * len(images)
    for canvas, image in zip(canvases, images):
        file += struct.pack("<BBBBHHII", canvas.width, canvas.height, 0, 0, 1, 32, len(image), offset)
        offset += len(image)
    return file + b"".join(images)


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
