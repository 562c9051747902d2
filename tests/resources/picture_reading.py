"""Finds in a picture's pixels what it shows: where its colours are, and the numbers on its pages."""

from dataclasses import dataclass


def box(places):
    columns, rows = [x for x, _ in places], [y for _, y in places]
    return min(columns), min(rows), max(columns), max(rows)


def reached_from_corner(bitmap, color):
    """The pixels of a colour that hang together with the upper left corner."""
    width, height = bitmap.size
    reached, open_places = set(), [(0, 0)]
    while open_places:
        x, y = open_places.pop()
        if (x, y) in reached or not (0 <= x < width and 0 <= y < height):
            continue
        if bitmap.rows[y][x] != color:
            continue
        reached.add((x, y))
        open_places += [(x + 1, y), (x - 1, y), (x, y + 1), (x, y - 1)]
    return reached


def parts_of(places):
    """The places in sets of neighbours, corners included."""
    left, parts = set(places), []
    while left:
        part, open_places = set(), [left.pop()]
        while open_places:
            x, y = open_places.pop()
            part.add((x, y))
            near = {(x + i, y + j) for i in (-1, 0, 1) for j in (-1, 0, 1)} & left
            left -= near
            open_places += near
        parts.append(part)
    return parts


@dataclass(frozen=True)
class Digit:
    x: int
    y: int
    width: int
    height: int
    scale: int
    value: int


def digits_in(bitmap, glyphs, ink, paper, scale=1):
    """Where the glyphs stand on paper, enlarged by the scale."""
    width, height = bitmap.size
    ink_places = set(bitmap.places(ink))
    found = []
    for value, glyph in glyphs.items():
        across, down = scale * len(glyph[0]), scale * len(glyph)
        marks = [(scale * column + i, scale * row + j, mark == "#")
                 for row, line in enumerate(glyph) for column, mark in enumerate(line)
                 for i in range(scale) for j in range(scale)]
        first_x, first_y = next((x, y) for x, y, inked in marks if inked)
        for ink_x, ink_y in ink_places:
            x, y = ink_x - first_x, ink_y - first_y
            if not (0 <= x <= width - across and 0 <= y <= height - down):
                continue
            if all(bitmap.rows[y + j][x + i] == (ink if inked else paper) for i, j, inked in marks):
                found.append(Digit(x, y, across, down, scale, value))
    return found


@dataclass(frozen=True)
class Number:
    value: int
    middle: tuple


def numbers_of(digits):
    """Digits beside each other make one number."""
    numbers = []
    rest = sorted(digits, key=lambda digit: (digit.y, digit.x))
    while rest:
        run = [rest.pop(0)]
        while rest and rest[0].y == run[-1].y and rest[0].x == run[-1].x + run[-1].width + run[-1].scale:
            run.append(rest.pop(0))
        first, last = run[0], run[-1]
        numbers.append(Number(int("".join(str(digit.value) for digit in run)),
                              ((first.x + last.x + last.width) / 2, first.y + first.height / 2)))
    return numbers
