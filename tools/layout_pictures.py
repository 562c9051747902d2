"""What the pictures of the layout page show, and how they are drawn.

All of them are of one size, which is that of the preview on an unscaled display. The page draws them
lighter or darker as the print gets lighter or darker, and leaves pure white as it is: so paper and
ground are white here, and everything else is a stroke. The outermost pixels are ground.
"""

from dataclasses import dataclass

from picture_shapes import (DIGITS, HINGE, INK, LANDSCAPE, LARGE_DIGITS, LEFT, PORTRAIT, RIGHT,
                            WHITE, Canvas)

# ---- What they show -------------------------------------------------------------------------------

SIZE = (111, 111)

# How one page follows another, and after a row or column the next of them.
RIGHTWARD, LEFTWARD, DOWNWARD, UPWARD = (1, 0), (-1, 0), (0, 1), (0, -1)
# As PageOrder counts: 0 and 1 with two pages, by their orientation; 2 to 5 with more.
ORDERS_OF_TWO = {
    PORTRAIT: {0: (RIGHTWARD, DOWNWARD), 1: (LEFTWARD, DOWNWARD)},
    LANDSCAPE: {0: (DOWNWARD, RIGHTWARD), 1: (UPWARD, RIGHTWARD)},
}
ORDERS = {2: (RIGHTWARD, DOWNWARD), 3: (DOWNWARD, RIGHTWARD),
          4: (LEFTWARD, DOWNWARD), 5: (DOWNWARD, LEFTWARD)}


@dataclass(frozen=True)
class Pages:
    """Pages on one sheet."""

    orientation: int  # of the pages
    count: int
    order: int = 0
    border: bool = False

    @property
    def sheet_orientation(self):
        """Half a sheet, and an eighth of it, lie the other way than the sheet."""
        other = {PORTRAIT: LANDSCAPE, LANDSCAPE: PORTRAIT}[self.orientation]
        return other if self.count in (2, 8) else self.orientation

    @property
    def grid(self):
        """Columns and rows of the sheet; on a wide one the columns are more."""
        long, short = {1: (1, 1), 2: (2, 1), 4: (2, 2), 8: (4, 2), 16: (4, 4)}[self.count]
        return (long, short) if self.sheet_orientation == LANDSCAPE else (short, long)

    @property
    def places(self):
        """Column and row of each page, the first page's first."""
        columns, rows = self.grid
        orders = ORDERS_OF_TWO[self.orientation] if self.count == 2 else ORDERS
        (step_x, step_y), then = orders[self.order] if self.count > 1 else (RIGHTWARD, DOWNWARD)
        right = step_x + then[0] > 0
        down = step_y + then[1] > 0
        in_line = columns if step_x else rows
        for page in range(self.count):
            line, place = divmod(page, in_line)
            column, row = (place, line) if step_x else (line, place)
            yield column if right else columns - 1 - column, row if down else rows - 1 - row


@dataclass(frozen=True)
class Poster:
    """One page, enlarged to two by two sheets."""

    orientation: int


@dataclass(frozen=True)
class Booklet:
    """Folded sheets, one in the other, stapled at the edge where they are bound."""

    orientation: int
    binding: str


# The pictures of sheets with several pages, by page orientation, border and number of pages; in each
# row the orders follow one another as they count.
SEVERAL_PAGES = {
    (PORTRAIT, False, 2): (847, 839),
    (PORTRAIT, False, 4): (835, 857, 851, 876),
    (PORTRAIT, False, 8): (831, 800, 813, 812),
    (PORTRAIT, False, 16): (860, 874, 846, 879),
    (LANDSCAPE, False, 2): (809, 875),
    (LANDSCAPE, False, 4): (830, 807, 850, 877),
    (LANDSCAPE, False, 8): (798, 842, 815, 790),
    (LANDSCAPE, False, 16): (777, 773, 775, 771),
    (PORTRAIT, True, 2): (871, 862),
    (PORTRAIT, True, 4): (829, 801, 853, 864),
    (PORTRAIT, True, 8): (794, 786, 795, 803),
    (PORTRAIT, True, 16): (826, 849, 866, 878),
    (LANDSCAPE, True, 2): (883, 868),
    (LANDSCAPE, True, 4): (832, 820, 814, 843),
    (LANDSCAPE, True, 8): (869, 838, 791, 818),
    (LANDSCAPE, True, 16): (778, 774, 776, 772),
}

LAYOUTS = {
    888: Pages(PORTRAIT, 1),
    886: Pages(LANDSCAPE, 1),
    **{number: Pages(orientation, count, order, border)
       for (orientation, border, count), numbers in SEVERAL_PAGES.items()
       for order, number in enumerate(numbers, start=0 if count == 2 else 2)},
    # A poster set as such, and one set as a number of pages.
    1074: Poster(PORTRAIT),
    1073: Poster(LANDSCAPE),
    1060: Poster(PORTRAIT),
    1058: Poster(LANDSCAPE),
    1070: Booklet(PORTRAIT, LEFT),
    1076: Booklet(PORTRAIT, RIGHT),
    1069: Booklet(LANDSCAPE, LEFT),
    719: Booklet(LANDSCAPE, RIGHT),
}

# ---- How they look --------------------------------------------------------------------------------

SHADOW = (222, 228, 235)
LONG_SIDE, SHORT_SIDE = 100, 71
MARGIN, GAP = 5, 4  # of a sheet, and between its pages


def sheet_size(orientation):
    return (SHORT_SIDE, LONG_SIDE) if orientation == PORTRAIT else (LONG_SIDE, SHORT_SIDE)


def draw_frame(canvas, x, y, width, height):
    for edge in ((x, y, width, 1), (x, y + height - 1, width, 1),
                 (x, y, 1, height), (x + width - 1, y, 1, height)):
        canvas.rectangle(*edge, INK)


def draw_sheet(canvas, x, y, width, height, shadow=True):
    if shadow:
        canvas.rectangle(x + 2, y + 2, width, height, SHADOW)
    canvas.rectangle(x, y, width, height, WHITE)
    draw_frame(canvas, x, y, width, height)


@dataclass(frozen=True)
class Text:
    """How a page's number and text are drawn, by the room that the page has."""

    glyphs: dict
    scale: int
    inset: int
    pitch: int
    stroke: int

    @property
    def glyph_size(self):
        glyph = next(iter(self.glyphs.values()))
        return self.scale * len(glyph[0]), self.scale * len(glyph)


LARGE_TEXT = Text(LARGE_DIGITS, 2, 5, 6, 2)
MEDIUM_TEXT = Text(LARGE_DIGITS, 1, 4, 4, 1)
SMALL_TEXT = Text(DIGITS, 1, 3, 3, 1)


def text_for(width, height):
    room = min(width, height)
    if room >= 40 and height >= 50:
        return LARGE_TEXT
    return MEDIUM_TEXT if room >= 26 else SMALL_TEXT


def draw_number(canvas, middle, top, number, text):
    """The number's digits, as far left as right of the middle."""
    wide, _ = text.glyph_size
    digits = str(number)
    left = middle - (len(digits) * (wide + text.scale) - text.scale) // 2
    for place, digit in enumerate(digits):
        canvas.digit(left + place * (wide + text.scale), top, text.glyphs[int(digit)], text.scale)


def draw_page(canvas, x, y, width, height, number):
    """A page's number, and under it lines of text as far as there is room."""
    text = text_for(width, height)
    high = text.glyph_size[1]
    count = (height - 2 * text.inset - high) // text.pitch
    top = y + (height - high - count * text.pitch) // 2
    draw_number(canvas, x + width // 2, top, number, text)
    canvas.lines(x + text.inset, top + high + text.pitch - text.stroke, width - 2 * text.inset,
                 count, text.pitch, text.stroke)


def draw_pages(canvas, pages):
    width, height = sheet_size(pages.sheet_orientation)
    x, y = (canvas.width - width) // 2, (canvas.height - height) // 2
    draw_sheet(canvas, x, y, width, height)
    columns, rows = pages.grid
    gap = GAP if pages.count < 16 else 2
    cell_width = (width - 2 * MARGIN - gap * (columns - 1)) // columns
    cell_height = (height - 2 * MARGIN - gap * (rows - 1)) // rows
    x += (width - columns * cell_width - gap * (columns - 1)) // 2
    y += (height - rows * cell_height - gap * (rows - 1)) // 2
    for number, (column, row) in enumerate(pages.places, start=1):
        left, top = x + column * (cell_width + gap), y + row * (cell_height + gap)
        draw_page(canvas, left, top, cell_width, cell_height, number)
        if pages.border:
            draw_frame(canvas, left, top, cell_width, cell_height)


POSTER_TEXT = Text(LARGE_DIGITS, 4, 5, 6, 2)
POSTER_GAP = 5


def draw_poster_page(size):
    """The whole page: its number in the middle, where all sheets meet, and text above and below."""
    page = Canvas(size, WHITE)
    text = POSTER_TEXT
    high = text.glyph_size[1]
    top = (page.height - high) // 2
    draw_number(page, page.width // 2, top, 1, text)
    count = (top - text.inset) // text.pitch
    for y in (top - count * text.pitch, top + high + text.pitch - text.stroke):
        page.lines(text.inset, y, page.width - 2 * text.inset, count, text.pitch, text.stroke)
    return page


def draw_poster(canvas, poster):
    """The page's quarters on four sheets; nothing of it is lost between them."""
    width, height = (part // 2 - 2 for part in sheet_size(poster.orientation))
    page = draw_poster_page((2 * width, 2 * height))
    x = (canvas.width - page.width - POSTER_GAP) // 2 - 1
    y = (canvas.height - page.height - POSTER_GAP) // 2 - 1
    for column in (0, 1):
        for row in (0, 1):
            left, top = x + column * (width + POSTER_GAP), y + row * (height + POSTER_GAP)
            draw_sheet(canvas, left - 1, top - 1, width + 2, height + 2)
            context = canvas.context
            context.save()
            context.rectangle(left, top, width, height)
            context.clip()
            context.set_source_surface(page.surface, left - column * width, top - row * height)
            context.paint()
            context.restore()


def draw_booklet(canvas, booklet):
    width, height = (62, 88) if booklet.orientation == PORTRAIT else (88, 62)
    is_left = booklet.binding == LEFT
    x, y = (canvas.width - width) // 2 + (-2 if is_left else 2), (canvas.height - height) // 2 - 2
    for sheet in (4, 2):  # the inner sheets show at the open side
        draw_sheet(canvas, x + (sheet if is_left else -sheet), y + sheet, width, height, sheet == 4)
    draw_sheet(canvas, x, y, width, height, shadow=False)
    draw_page(canvas, x, y, width, height, 1)
    spine = x if is_left else x + width - 1
    canvas.rectangle(spine - 1, y - 1, 3, height + 2, HINGE)
    for staple in (y + height // 5, y + height - height // 5 - 8):
        canvas.rectangle(spine - 2, staple, 5, 8, HINGE)


DRAWERS = {Pages: draw_pages, Poster: draw_poster, Booklet: draw_booklet}
