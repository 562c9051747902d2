"""The shapes that all pictures of the resource libraries are drawn with, and their colours."""

import math
from dataclasses import dataclass

import cairo

PORTRAIT, LANDSCAPE = 1, 2  # as dmOrientation counts
LEFT, TOP, RIGHT = "left", "top", "right"

# Behind a large picture, so that it can stand on any page. It has no frame: a control that is larger
# than its picture fills the rest with the color of the picture's first pixel.
PANEL = (232, 241, 250)
PAPER = (254, 254, 254)  # not the white that counts as transparent in some pictures
WHITE = (255, 255, 255)
BACK = (221, 232, 243)  # the paper's other side
INK = (62, 82, 106)
TEXT = (150, 165, 183)
HINGE = (24, 103, 178)
ARROW = (217, 104, 20)
SIGN = (24, 103, 178)

DIGITS = {  # 4 by 7 pixels, drawn as they stand
    0: (".##.", "#..#", "#..#", "#..#", "#..#", "#..#", ".##."),
    1: (".#..", "##..", ".#..", ".#..", ".#..", ".#..", "###."),
    2: (".##.", "#..#", "...#", "..#.", ".#..", "#...", "####"),
    3: (".##.", "#..#", "...#", ".##.", "...#", "#..#", ".##."),
    4: ("...#", "..##", ".#.#", "#..#", "####", "...#", "...#"),
    5: ("####", "#...", "###.", "...#", "...#", "#..#", ".##."),
    6: (".##.", "#...", "#...", "###.", "#..#", "#..#", ".##."),
    7: ("####", "...#", "...#", "..#.", "..#.", ".#..", ".#.."),
    8: (".##.", "#..#", "#..#", ".##.", "#..#", "#..#", ".##."),
    9: (".##.", "#..#", "#..#", ".###", "...#", "...#", ".##."),
}
LARGE_DIGITS = {  # 7 by 11 pixels, for what stands alone on its page
    1: ("..##...", ".###...", "####...", "..##...", "..##...", "..##...", "..##...", "..##...",
        "..##...", "######.", "######."),
    2: (".#####.", "##...##", ".....##", ".....##", "....##.", "...##..", "..##...", ".##....",
        "##.....", "#######", "#######"),
    3: (".#####.", "##...##", ".....##", ".....##", "..####.", "..####.", ".....##", ".....##",
        ".....##", "##...##", ".#####."),
    4: ("....##.", "...###.", "..####.", ".##.##.", "##..##.", "##..##.", "#######", "#######",
        "....##.", "....##.", "....##."),
    5: ("#######", "#######", "##.....", "##.....", "######.", ".....##", ".....##", ".....##",
        ".....##", "##...##", ".#####."),
    6: ("..####.", ".##....", "##.....", "##.....", "######.", "##...##", "##...##", "##...##",
        "##...##", "##...##", ".#####."),
    7: ("#######", "#######", ".....##", "....##.", "....##.", "...##..", "...##..", "..##...",
        "..##...", "..##...", "..##..."),
    8: (".#####.", "##...##", "##...##", "##...##", ".#####.", ".#####.", "##...##", "##...##",
        "##...##", "##...##", ".#####."),
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

    def lines(self, x, y, width, count, pitch=4, stroke=1):
        """Lines of text; the last one of a paragraph is short."""
        for line in range(count):
            part = width if line < count - 1 else max(width * 3 // 5, 2)
            self.rectangle(x, y + pitch * line, part, stroke, TEXT)

    def digit(self, x, y, glyph, scale=1):
        for row, pixels in enumerate(glyph):
            for column, pixel in enumerate(pixels):
                if pixel == "#":
                    self.rectangle(x + scale * column, y + scale * row, scale, scale, INK)

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
