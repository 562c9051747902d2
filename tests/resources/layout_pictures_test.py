#!/usr/bin/python3
"""The compiled pictures of the layout page: what each shows is what its setting does.

The pictures are read back, pixel by pixel: where the numbers stand, and what is drawn round them. The
order that they should have is not taken from the drawing program but from the words by which the page's list
names it.

    layout_pictures_test.py FOLDER     the folder of the compiled resource files
"""

import sys
import unittest

sys.dont_write_bytecode = True

import dialog_cases as cases  # noqa: E402
import compiled_resources as compiled  # noqa: E402
import picture_shapes as shapes  # noqa: E402
from layout_pictures import LAYOUTS, POSTER_TEXT, SHADOW  # noqa: E402
from picture_reading import box, digits_in, numbers_of, parts_of  # noqa: E402

PORTRAIT, LANDSCAPE = 1, 2

# The pictures by page orientation, border and number of pages; in the order of the list's rows.
SEVERAL_PAGES = (
    (PORTRAIT, 0, 2, (847, 839)),
    (PORTRAIT, 0, 4, (835, 857, 851, 876)),
    (PORTRAIT, 0, 8, (831, 800, 813, 812)),
    (PORTRAIT, 0, 16, (860, 874, 846, 879)),
    (LANDSCAPE, 0, 2, (809, 875)),
    (LANDSCAPE, 0, 4, (830, 807, 850, 877)),
    (LANDSCAPE, 0, 8, (798, 842, 815, 790)),
    (LANDSCAPE, 0, 16, (777, 773, 775, 771)),
    (PORTRAIT, 1, 2, (871, 862)),
    (PORTRAIT, 1, 4, (829, 801, 853, 864)),
    (PORTRAIT, 1, 8, (794, 786, 795, 803)),
    (PORTRAIT, 1, 16, (826, 849, 866, 878)),
    (LANDSCAPE, 1, 2, (883, 868)),
    (LANDSCAPE, 1, 4, (832, 820, 814, 843)),
    (LANDSCAPE, 1, 8, (869, 838, 791, 818)),
    (LANDSCAPE, 1, 16, (778, 774, 776, 772)),
)
SINGLE_PAGES = {888: PORTRAIT, 886: LANDSCAPE}
POSTERS = {1074: PORTRAIT, 1073: LANDSCAPE, 1060: PORTRAIT, 1058: LANDSCAPE}
BOOKLETS = {1070: (PORTRAIT, 174), 1076: (PORTRAIT, 177), 1069: (LANDSCAPE, 174), 719: (LANDSCAPE, 177)}

# Columns and rows of pages on the printed sheet, which is turned where it holds two or eight of them.
GRIDS = {(PORTRAIT, 2): (2, 1), (LANDSCAPE, 2): (1, 2), (PORTRAIT, 4): (2, 2), (LANDSCAPE, 4): (2, 2),
         (PORTRAIT, 8): (4, 2), (LANDSCAPE, 8): (2, 4), (PORTRAIT, 16): (4, 4), (LANDSCAPE, 16): (4, 4)}

# By the words of a row: how to sort places, as (column, row), into the order in which they are filled.
READING = {
    "Left to right": lambda place: place[0],
    "Right to left": lambda place: -place[0],
    "Top to bottom": lambda place: place[1],
    "Bottom to top": lambda place: -place[1],
    "Right, then down": lambda place: (place[1], place[0]),
    "Down, then right": lambda place: (place[0], place[1]),
    "Left, then down": lambda place: (place[1], -place[0]),
    "Down, then left": lambda place: (-place[0], place[1]),
}


def order_strings(orientation, count):
    """The strings of the list of page orders, by its rows."""
    if count == 2:
        return (154, 155) if orientation == PORTRAIT else (410, 412)
    return (150, 151, 152, 153)


def rank_of(value, values):
    """Which of the values this is, from the least on; what lies within some pixels is one."""
    steps = sorted(values)
    starts = [steps[0]] + [here for before, here in zip(steps, steps[1:]) if here - before > 4]
    return sum(start <= value for start in starts) - 1


class LayoutPictures(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.bitmaps = cases.bitmaps()
        cls.texts = cases.texts_of("enus")
        cls.numbers = {number: cls.read_numbers(cls.bitmaps[number])
                       for *_, numbers in SEVERAL_PAGES for number in numbers}

    @staticmethod
    def read_numbers(bitmap):
        digits = []
        for glyphs, scale in ((shapes.DIGITS, 1), (shapes.LARGE_DIGITS, 1), (shapes.LARGE_DIGITS, 2)):
            digits += digits_in(bitmap, glyphs, shapes.INK, shapes.WHITE, scale)
        return sorted(numbers_of(digits), key=lambda number: number.value)

    def places(self, number):
        """Column and row of each page, the first page's first."""
        middles = [page.middle for page in self.numbers[number]]
        columns, rows = [x for x, _ in middles], [y for _, y in middles]
        return [(rank_of(x, columns), rank_of(y, rows)) for x, y in middles]

    def several_pages(self):
        """Each picture of a sheet with several pages: its number, setting, and string of its order."""
        for orientation, border, count, numbers in SEVERAL_PAGES:
            strings = order_strings(orientation, count)
            self.assertEqual(len(strings), len(numbers))
            for number, string in zip(numbers, strings):
                yield number, orientation, border, count, string

    def test_are_those_of_the_settings_and_no_others(self):
        several = {number for *_, numbers in SEVERAL_PAGES for number in numbers}
        self.assertEqual(len(several), sum(len(numbers) for *_, numbers in SEVERAL_PAGES))
        self.assertEqual(several | set(SINGLE_PAGES) | set(POSTERS) | set(BOOKLETS), set(LAYOUTS))
        self.assertLess(set(LAYOUTS), set(self.bitmaps))

    def test_number_all_pages_from_one_on(self):
        for number, _, _, count, _ in self.several_pages():
            self.assertEqual([page.value for page in self.numbers[number]], list(range(1, count + 1)), number)

    def test_have_as_many_columns_and_rows_as_the_sheet_holds_of_such_pages(self):
        for number, orientation, _, count, _ in self.several_pages():
            columns, rows = GRIDS[orientation, count]
            self.assertEqual(sorted(self.places(number)),
                             [(column, row) for column in range(columns) for row in range(rows)], number)

    def test_show_the_pages_in_the_order_that_the_list_names(self):
        for number, _, _, _, string in self.several_pages():
            places = self.places(number)
            order = self.texts[string]
            self.assertEqual(places, sorted(places, key=READING[order]), f"{number}: {order}")

    def test_show_the_sheet_as_it_lies_for_such_pages(self):
        for number, orientation, _, count, _ in self.several_pages():
            left, top, right, bottom = box(self.bitmaps[number].places(shapes.INK))
            turned = count in (2, 8)
            self.assertEqual(right - left > bottom - top, (orientation == LANDSCAPE) != turned, number)

    def frames(self, orientation, count, row):
        """What the picture with borders has that the one without lacks, part by part."""
        plain, framed = (next(numbers for way, border, pages, numbers in SEVERAL_PAGES
                              if (way, border, pages) == (orientation, wanted, count))[row]
                         for wanted in (0, 1))
        ink = [set(self.bitmaps[number].places(shapes.INK)) for number in (plain, framed)]
        self.assertEqual(ink[0] - ink[1], set())
        return parts_of(ink[1] - ink[0])

    def test_have_a_frame_round_each_page_just_where_the_border_is_set(self):
        for number, orientation, border, count, string in self.several_pages():
            if not border:
                continue
            row = order_strings(orientation, count).index(string)
            frames = self.frames(orientation, count, row)
            self.assertEqual(len(frames), count, number)
            framed = []
            for frame in frames:
                left, top, right, bottom = box(frame)
                outline = {(x, y) for x in range(left, right + 1) for y in range(top, bottom + 1)
                           if x in (left, right) or y in (top, bottom)}
                self.assertEqual(frame, outline, number)
                self.assertEqual(right - left > bottom - top, orientation == LANDSCAPE, number)
                framed += [page.value for page in self.numbers[number]
                           if left < page.middle[0] < right and top < page.middle[1] < bottom]
            self.assertEqual(sorted(framed), list(range(1, count + 1)), number)

    def test_without_border_have_only_the_sheets_edge_and_the_numbers_in_ink(self):
        for number, _, border, _, _ in self.several_pages():
            if border:
                continue
            ink = parts_of(self.bitmaps[number].places(shapes.INK))
            edge = max(ink, key=len)
            left, top, right, bottom = box(edge)
            self.assertEqual(len(edge), 2 * (right - left + bottom - top), number)
            digits = sum(len(str(page.value)) for page in self.numbers[number])
            self.assertEqual(len(ink) - 1, digits, number)

    def test_of_one_page_show_it_as_it_lies(self):
        for number, orientation in SINGLE_PAGES.items():
            bitmap = self.bitmaps[number]
            self.assertEqual([page.value for page in self.read_numbers(bitmap)], [1])
            left, top, right, bottom = box(bitmap.places(shapes.INK))
            self.assertEqual(right - left > bottom - top, orientation == LANDSCAPE, number)

    def sheets_of(self, bitmap):
        """The four sheets of a poster without their edges, row by row: they lie round a white cross."""
        left, top, right, bottom = box(bitmap.places(shapes.INK))
        ink = set(bitmap.places(shapes.INK))
        empty_columns = [x for x in range(left, right) if not any((x, y) in ink for y in range(top, bottom))]
        empty_rows = [y for y in range(top, bottom) if not any((x, y) in ink for x in range(left, right))]
        for gap in (empty_columns, empty_rows):
            self.assertEqual(gap, list(range(gap[0], gap[-1] + 1)))  # one gap each way
        columns = ((left, empty_columns[0] - 1), (empty_columns[-1] + 1, right))
        rows = ((top, empty_rows[0] - 1), (empty_rows[-1] + 1, bottom))
        for place, (first, last) in enumerate(((columns[0], rows[0]), (columns[1], rows[1]))):
            self.assertEqual(first[1] - first[0], columns[0][1] - columns[0][0], place)
            self.assertEqual(last[1] - last[0], rows[0][1] - rows[0][0], place)
        return columns, rows

    def test_of_posters_spread_one_page_over_two_by_two_sheets(self):
        for number, orientation in POSTERS.items():
            bitmap = self.bitmaps[number]
            columns, rows = self.sheets_of(bitmap)
            (left, right), (top, bottom) = columns[0], rows[0]
            self.assertEqual(right - left > bottom - top, orientation == LANDSCAPE, number)
            inner = [[bitmap.rows[y][x] for start, end in columns for x in range(start + 1, end)]
                     for first, last in rows for y in range(first + 1, last)]
            page = compiled.Bitmap((len(inner[0]), len(inner)), 24, inner)
            # Put together without their edges, the sheets show one large number in their middle.
            digits = digits_in(page, shapes.LARGE_DIGITS, shapes.INK, shapes.WHITE, POSTER_TEXT.scale)
            self.assertEqual([digit.value for digit in digits], [1], number)
            digit = digits[0]
            self.assertTrue(digit.x < page.size[0] / 2 < digit.x + digit.width)
            self.assertTrue(digit.y < page.size[1] / 2 < digit.y + digit.height)

    def test_of_posters_have_a_frame_round_each_sheet(self):
        for number in POSTERS:
            bitmap = self.bitmaps[number]
            ink = set(bitmap.places(shapes.INK))
            columns, rows = self.sheets_of(bitmap)
            for left, right in columns:
                for top, bottom in rows:
                    for x in range(left, right + 1):
                        self.assertTrue({(x, top), (x, bottom)} <= ink, number)
                    for y in range(top, bottom + 1):
                        self.assertTrue({(left, y), (right, y)} <= ink, number)

    def test_of_booklets_are_bound_at_the_edge_that_the_list_names(self):
        for number, (orientation, string) in BOOKLETS.items():
            bitmap = self.bitmaps[number]
            spine_left, spine_top, spine_right, spine_bottom = box(bitmap.places(shapes.HINGE))
            left, top, right, bottom = box(bitmap.places(shapes.INK))
            self.assertEqual(right - left > bottom - top, orientation == LANDSCAPE, number)
            page, = self.read_numbers(bitmap)
            self.assertEqual(page.value, 1)
            bound_left = self.texts[string] == "Left"
            self.assertTrue(bound_left or self.texts[string] == "Right")
            if bound_left:
                self.assertLess(spine_right, page.middle[0], number)
                self.assertLessEqual(spine_left, left)
            else:
                self.assertGreater(spine_left, page.middle[0], number)
                self.assertGreaterEqual(spine_right, right)
            self.assertGreater(spine_bottom - spine_top, (bottom - top) * 0.9)

    def test_of_booklets_have_two_staples_in_the_spine_and_sheets_at_the_other_side(self):
        for number, (_, string) in BOOKLETS.items():
            bitmap = self.bitmaps[number]
            spine = bitmap.places(shapes.HINGE)
            widths = [sum(place[1] == y for place in spine) for y in sorted({y for _, y in spine})]
            wide = [width > 3 for width in widths]
            self.assertEqual(sum(here and not before for before, here in zip(wide, wide[1:])), 2,
                             number)
            # Along a row in the middle, the open side has the edges of three sheets, one a sheet.
            left, top, right, bottom = box(bitmap.places(shapes.INK))
            row = bitmap.rows[(top + bottom) // 2]
            open_side = row[right - 5:right + 1] if self.texts[string] == "Left" else row[left:left + 6]
            self.assertEqual(open_side.count(shapes.INK), 3, number)

    def test_stand_on_white_up_to_all_edges(self):
        for number in LAYOUTS:
            rows = self.bitmaps[number].rows
            ground = [*rows[:3], *rows[-3:], *(row[:3] for row in rows), *(row[-3:] for row in rows)]
            self.assertEqual({pixel for row in ground for pixel in row}, {shapes.WHITE}, number)

    def test_have_crisp_strokes_on_paper_that_stays_white(self):
        strokes = {shapes.INK, shapes.TEXT, SHADOW, shapes.HINGE}
        for number in LAYOUTS:
            pixels = [pixel for row in self.bitmaps[number].rows for pixel in row]
            self.assertLessEqual(set(pixels), strokes | {shapes.WHITE}, number)
            self.assertGreater(pixels.count(shapes.WHITE), len(pixels) / 2, number)

    def test_have_strokes_that_all_degrees_of_darkness_tell_apart(self):
        for color in (shapes.INK, shapes.TEXT, shapes.HINGE, SHADOW):
            # As the page lightens and darkens, each part stopping at its end.
            shown = [tuple(min(max(part + change, 0), 255) for part in color)
                     for change in (30, 15, 0, -25, -50)]
            self.assertEqual(len(set(shown)), len(shown), color)
            self.assertNotIn(shapes.WHITE, shown, color)

    def test_of_different_settings_differ(self):
        rows = {number: tuple(map(tuple, self.bitmaps[number].rows)) for number in LAYOUTS}
        # A poster is one however it was set.
        self.assertEqual(rows[1060], rows[1074])
        self.assertEqual(rows[1058], rows[1073])
        self.assertEqual(len(set(rows.values())), len(rows) - 2)


if __name__ == "__main__":
    unittest.main()
