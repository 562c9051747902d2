#!/usr/bin/python3
"""The compiled pictures: each has its size and colours, and shows what its setting does.

    compiled_pictures_test.py FOLDER     the folder of the compiled resource files
"""

import sys
import unittest

sys.dont_write_bytecode = True

import dialog_cases as cases  # noqa: E402
import compiled_resources as compiled  # noqa: E402
import draw_pictures as drawn  # noqa: E402
import picture_shapes as shapes  # noqa: E402
from picture_reading import box, digits_in, reached_from_corner  # noqa: E402


class Pictures(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.bitmaps = cases.bitmaps()
        cls.languages = {language: cases.library(language) for language in cases.LANGUAGES}
        cls.key_sheet = compiled.bitmap_of(cls.languages["enus"][compiled.RT_BITMAP, 115][0])

    def test_are_all_there_and_no_others(self):
        self.assertEqual(set(self.bitmaps) - set(drawn.LAYOUTS),
                         {631, 902, 905, 1072, 1068, 1065, 1066, 1071, 425, 5021, 5008, 426, 901, 903,
                          1079, 1080})
        for language, found in self.languages.items():
            numbers = {number for kind, number in found if kind == compiled.RT_BITMAP}
            self.assertEqual(numbers, {115}, language)

    def test_have_their_size_and_depth(self):
        for number, bitmap in self.bitmaps.items():
            size = (111, 111) if number in drawn.LAYOUTS else (96, 68)
            if number in (901, 1079, 1080):
                size = (32, 32)
            self.assertEqual((bitmap.size, bitmap.depth), (size, 24), number)
        self.assertEqual((self.key_sheet.size, self.key_sheet.depth), ((32, 32), 24))

    def test_with_a_transparent_color_have_it_at_their_corners_and_outside_their_shapes_only(self):
        key = (244, 243, 238)  # 15660020
        self.assertEqual(key[0] | key[1] << 8 | key[2] << 16, 15660020)
        for number in (425, 5021, 5008, 426):
            self.assertEqual(self.bitmaps[number].places(key), [(0, 0), (95, 0), (0, 67), (95, 67)])
        for bitmap, key in ((self.bitmaps[901], key), (self.key_sheet, (255, 255, 255)),
                            (self.bitmaps[1079], key), (self.bitmaps[1080], key)):
            ground = set(bitmap.places(key))
            self.assertEqual(ground, reached_from_corner(bitmap, key))
            self.assertGreater(len(ground), 200)
            self.assertLess(len(ground), 800)

    def test_shown_in_a_larger_control_go_on_in_the_color_of_their_first_pixel(self):
        for number in (631, 902, 905, 1072, 1068, 1065, 1066, 1071):
            rows = self.bitmaps[number].rows
            edges = {*rows[0], *rows[-1], *(row[0] for row in rows), *(row[-1] for row in rows)}
            self.assertEqual(edges, {rows[0][0]}, number)

    def test_drawn_with_magenta_as_transparent_have_nothing_like_it(self):
        for number in (631, 902, 903, 905):
            for row in self.bitmaps[number].rows:
                for red, green, blue in row:
                    self.assertFalse(red > 200 and blue > 200 and green < 150, number)

    def test_of_copies_show_the_order_in_which_sheets_come_out(self):
        for number, pages in ((425, [1, 1, 1, 2, 2, 2]), (5021, [2, 2, 2, 1, 1, 1]),
                              (426, [1, 2, 1, 2, 1, 2]), (5008, [2, 1, 2, 1, 2, 1])):
            self.assertEqual(numbers_in(self.bitmaps[number]), pages, number)

    def test_of_sides_turn_the_sheet_about_the_edge_of_the_setting(self):
        for number, edge in ((902, "left"), (905, "top"), (1065, "top"), (1066, "left")):
            left, top, right, bottom = box(self.bitmaps[number].places(shapes.HINGE))
            upright = bottom - top > right - left
            self.assertEqual("left" if upright else "top", edge, number)
            # The page lies behind the edge, right of it or below it, and the other side before it.
            for color, is_behind in ((shapes.PAPER, True), (shapes.BACK, False)):
                places = self.bitmaps[number].places(color)
                behind = [(x > right) if upright else (y > bottom) for x, y in places]
                self.assertGreater(len(places), 100)
                self.assertEqual(set(behind), {is_behind}, number)

    def test_of_sides_have_an_arrow_where_a_sheet_is_turned(self):
        for number in (631, 1068, 902, 905, 1065, 1066, 1072, 1071):
            arrow = bool(self.bitmaps[number].places(shapes.ARROW))
            self.assertEqual(arrow, number in (902, 905, 1065, 1066), number)

    def test_of_one_side_have_no_edge_to_turn_about(self):
        for number in (631, 1068):
            self.assertEqual(self.bitmaps[number].places(shapes.HINGE), [])

    def test_show_the_pages_orientation(self):
        for number, upright in ((631, True), (902, True), (905, True), (1068, False), (1065, False),
                                (1066, False), (901, True), (903, False)):
            left, top, right, bottom = box(self.bitmaps[number].places(shapes.PAPER))
            self.assertEqual(bottom - top > right - left, upright, number)

    def test_of_booklets_are_stapled_in_the_fold(self):
        for number, upright in ((1072, True), (1071, False)):
            bitmap = self.bitmaps[number]
            left, top, right, bottom = box(bitmap.places(shapes.HINGE))
            self.assertEqual(bottom - top > right - left, upright, number)
            pages = bitmap.places(shapes.PAPER)  # on both sides of the fold, nearly as much
            first = sum((x < left) if upright else (y < top) for x, y in pages)
            second = sum((x > right) if upright else (y > bottom) for x, y in pages)
            self.assertGreater(min(first, second), 500)
            self.assertLess(abs(first - second), 100)

    def test_of_the_feed_show_the_edge_that_goes_first(self):
        for number, short_edge in ((1079, True), (1080, False)):
            bitmap = self.bitmaps[number]
            left, top, right, bottom = box(bitmap.places(shapes.INK))
            arrow = bitmap.places(shapes.ARROW)
            bar = {(x, y) for x, y in arrow if y in (top - 1, top - 2)}
            self.assertEqual({x for x, _ in bar}, set(range(left, right + 1)))  # the whole edge
            self.assertEqual(right - left < bottom - (top - 2), short_edge, number)
            above = [(x, y) for x, y in arrow if y < top - 2]
            tip = min(above, key=lambda place: place[1])
            self.assertEqual(tip[0], (left + right) // 2)
            self.assertGreater(len(above), 20)

    def test_of_different_settings_differ(self):
        rows = {number: tuple(map(tuple, bitmap.rows)) for number, bitmap in self.bitmaps.items()
                if number not in drawn.LAYOUTS}
        self.assertEqual(len(set(rows.values())), len(rows))

    def test_the_icon_has_an_image_for_each_scale_of_a_display(self):
        for language, found in self.languages.items():
            images = compiled.icon_of(found, 1077)
            self.assertEqual([image.size for image in images],
                             [(size, size) for size in (16, 18, 20, 24, 27, 32, 36)], language)
            for image in images:
                self.assertEqual(image.depth, 32)
                self.assertTrue({0, 255} < image.alphas)  # and soft edges between


def numbers_in(bitmap):
    """The page numbers on the sheets, from left to right, which is the order in which they come out:
    stacks stand from left to right, and in a stack each sheet lies further right than the one before."""
    digits = digits_in(bitmap, shapes.DIGITS, shapes.INK, shapes.PAPER)
    return [digit.value for digit in sorted(digits, key=lambda digit: digit.x)]


if __name__ == "__main__":
    unittest.main()
