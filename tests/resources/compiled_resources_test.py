#!/usr/bin/python3
"""The compiled dialogs and pictures, in each language: every control that the print options page works
is there, is of the right kind and says what it should, and each picture shows what its setting does.

    compiled_resources_test.py FOLDER     the folder of the compiled resource files
"""

import pathlib
import sys
import unittest

import polib

TREE = pathlib.Path(__file__).resolve().parent.parent.parent
sys.dont_write_bytecode = True
sys.path.insert(0, str(TREE / "tools"))
sys.path.insert(0, str(TREE / "tests" / "resources"))

import compiled_resources as compiled  # noqa: E402
import draw_pictures as drawn  # noqa: E402

FOLDER = pathlib.Path(sys.argv.pop()) if len(sys.argv) > 1 else TREE / "build/native/resources"
LANGUAGES = sorted(path.stem for path in (TREE / "resources" / "strings").glob("*.po"))

# winuser.h, commctrl.h
WS_GROUP, WS_TABSTOP, WS_VISIBLE, WS_CHILD = 0x20000, 0x10000, 0x10000000, 0x40000000
WS_EX_LAYOUTRTL = 0x400000
DS_CONTROL, DS_SHELLFONT = 0x400, 0x48
BS_PUSHBUTTON, BS_CHECKBOX, BS_RADIOBUTTON, BS_GROUPBOX = 0, 2, 4, 7
SS_LEFT, SS_ICON, SS_OWNERDRAW, SS_BITMAP, SS_NOTIFY, SS_CENTERIMAGE = 0, 3, 0xD, 0xE, 0x100, 0x200
ES_NUMBER, CBS_DROPDOWNLIST = 0x2000, 3
UDS_SETBUDDYINT, UDS_ALIGNRIGHT, UDS_AUTOBUDDY, UDS_ARROWKEYS = 2, 4, 0x10, 0x20

# What the page sets on each start, as control and string.
CAPTIONS = {1018: 1006, 1008: 1010, 1242: 3112, 1243: 3113, 1395: 4002, 1396: 4003, 1397: 4004,
            1394: 4005, 1240: 4006, 1125: 4007, 1241: 4008, 1064: 1011, 1414: 129, 1422: 5080,
            1489: 211, 1483: 205, 1497: 1497, 1496: 1498}
KINDS = {
    ("button", BS_CHECKBOX): (1008, 1394, 1422, 1496),
    ("button", BS_RADIOBUTTON): (1240, 1125, 1241, 1242, 1243),
    ("button", BS_GROUPBOX): (1395, 1396, 1397, 1489, 1497),
    ("button", BS_PUSHBUTTON): (1064,),
    ("static", SS_LEFT): (1018, 1414, 1483),
    ("static", SS_ICON): (1447, 1448, 1449, 1450),
    ("static", SS_OWNERDRAW): (1176,),
    ("static", SS_BITMAP): (1453,),
}
ICONS_AND_OPTIONS = {1447: 1125, 1448: 1394, 1449: 1008, 1450: 1393}


def texts_of(language):
    file = polib.pofile(str(TREE / "resources" / "strings" / f"{language}.po"), encoding="utf-8")
    return {int(entry.msgctxt): entry.msgstr for entry in file if not entry.obsolete}


def library(name):
    return compiled.resources_of(FOLDER / f"ostrelPCL6ui{name}.res")


def in_each_language(case):
    """The case for the dialog of each language; a failure names the language."""
    def run(self):
        for language, dialog in self.dialogs.items():
            with self.subTest(language=language):
                case(self, language, dialog)
    return run


class PrintOptionsDialog(unittest.TestCase):
    """Dialog 111, in each language."""

    @classmethod
    def setUpClass(cls):
        cls.dialogs, cls.tags = {}, []
        for language in LANGUAGES:
            data, tag = library(language)[compiled.RT_DIALOG, 111]
            cls.dialogs[language] = compiled.dialog_of(data)
            cls.tags.append(tag)

    def test_is_found_whatever_the_systems_language_is(self):
        self.assertEqual(self.tags, [0] * len(LANGUAGES))

    @in_each_language
    def test_is_a_property_page_of_the_usual_size_and_font(self, _, dialog):
        self.assertEqual(dialog.size, (252, 218))
        self.assertEqual(dialog.font, (8, "MS Shell Dlg"))
        wanted = DS_CONTROL | DS_SHELLFONT | WS_CHILD
        self.assertEqual(dialog.style & wanted, wanted)

    @in_each_language
    def test_is_laid_out_as_the_language_is_read(self, language, dialog):
        self.assertEqual(dialog.extended_style, WS_EX_LAYOUTRTL if language == "he" else 0)

    @in_each_language
    def test_shows_the_captions_of_its_language(self, language, dialog):
        texts = texts_of(language)
        self.assertEqual(dialog.title, texts[106])
        for control, text in CAPTIONS.items():
            self.assertEqual(dialog.control(control).text, texts[text], f"control {control}")

    @in_each_language
    def test_has_no_caption_that_the_page_does_not_set(self, _, dialog):
        self.assertEqual({control.id for control in dialog.controls if control.text}, set(CAPTIONS))

    @in_each_language
    def test_has_controls_of_the_kinds_that_the_page_works(self, _, dialog):
        for (kind, style), numbers in KINDS.items():
            for number in numbers:
                control = dialog.control(number)
                mask = 0x1F if kind == "static" else 0xF
                self.assertEqual((control.kind, control.style & mask), (kind, style), number)
        self.assertEqual(dialog.control(1393).kind, "combobox")
        self.assertEqual(dialog.control(1393).style & 3, CBS_DROPDOWNLIST)
        self.assertEqual(len(dialog.controls), sum(map(len, KINDS.values())) + 3)

    @in_each_language
    def test_steps_the_copies_without_writing_them(self, _, dialog):
        style = dialog.control(1020).style
        wanted = UDS_AUTOBUDDY | UDS_ALIGNRIGHT | UDS_ARROWKEYS
        self.assertEqual(dialog.control(1020).kind, "msctls_updown32")
        self.assertEqual(style & (wanted | UDS_SETBUDDYINT), wanted)
        self.assertEqual(dialog.order(1020), dialog.order(1019) + 1)
        self.assertTrue(dialog.control(1019).style & ES_NUMBER)

    @in_each_language
    def test_names_each_field_by_the_label_before_it(self, _, dialog):
        for label, field in ((1018, 1019), (1483, 1393)):
            self.assertEqual(dialog.order(field), dialog.order(label) + 1)

    @in_each_language
    def test_keeps_radio_buttons_in_groups_of_their_own(self, _, dialog):
        for radios in ((1240, 1125, 1241), (1242, 1243)):
            orders = [dialog.order(radio) for radio in radios]
            self.assertEqual(orders, list(range(orders[0], orders[0] + len(radios))))
            groups = [bool(dialog.control(radio).style & WS_GROUP) for radio in radios]
            self.assertEqual(groups, [True] + [False] * (len(radios) - 1))
            # The window system makes the checked one a stop.
            stops = [bool(dialog.control(radio).style & WS_TABSTOP) for radio in radios]
            self.assertEqual(stops, [False] * len(radios))
            self.assertTrue(dialog.controls[orders[-1] + 1].style & WS_GROUP)

    @in_each_language
    def test_stops_the_tab_key_at_every_other_field(self, _, dialog):
        for number in (1019, 1008, 1394, 1422, 1393, 1496, 1064):
            self.assertTrue(dialog.control(number).style & WS_TABSTOP, number)

    @in_each_language
    def test_hides_the_icons_and_lets_the_mouse_find_them(self, _, dialog):
        for number in ICONS_AND_OPTIONS:
            style = dialog.control(number).style
            self.assertEqual(style & (WS_VISIBLE | SS_NOTIFY), SS_NOTIFY, number)

    @in_each_language
    def test_keeps_icons_and_picture_in_the_middle_on_scaled_displays(self, _, dialog):
        for number in (*ICONS_AND_OPTIONS, 1453):
            self.assertTrue(dialog.control(number).style & SS_CENTERIMAGE, number)

    @in_each_language
    def test_has_18_pixels_for_each_icon_behind_its_option(self, _, dialog):
        for icon, option in ICONS_AND_OPTIONS.items():
            x, y, width, height = dialog.control(icon).place
            self.assertEqual((round(width * 6 / 4), round(height * 13 / 8)), (18, 18))
            left, top, option_width, _ = dialog.control(option).place
            self.assertGreaterEqual(x, left + option_width)
            self.assertLess(abs(y - top), 3)

    @in_each_language
    def test_has_the_pictures_size_for_each_picture(self, _, dialog):
        for number in (1176, 1453):
            _, _, width, height = dialog.control(number).place
            self.assertEqual((round(width * 6 / 4), round(height * 13 / 8)), drawn.LARGE)

    @in_each_language
    def test_keeps_the_margins(self, _, dialog):
        for control in dialog.controls:
            x, y, width, height = control.place
            self.assertTrue(7 <= x and x + width <= 245 and 7 <= y, control)
            if control.kind != "combobox":  # its height is that of the open list
                self.assertLessEqual(y + height, 211, control)
        self.assertEqual(dialog.control(1064).place[2:], (66, 14))


class Pictures(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        found = library("ResBmp")
        cls.bitmaps = {number: compiled.bitmap_of(data) for (kind, number), (data, _) in found.items()
                       if kind == compiled.RT_BITMAP}
        cls.languages = {language: library(language) for language in LANGUAGES}
        cls.key_sheet = compiled.bitmap_of(cls.languages["enus"][compiled.RT_BITMAP, 115][0])

    def test_are_all_there_and_no_others(self):
        self.assertEqual(set(self.bitmaps), {631, 902, 905, 1072, 1068, 1065, 1066, 1071, 425, 5021,
                                             5008, 426, 901, 903})
        for language, found in self.languages.items():
            numbers = {number for kind, number in found if kind == compiled.RT_BITMAP}
            self.assertEqual(numbers, {115}, language)

    def test_have_their_size_and_depth(self):
        for number, bitmap in self.bitmaps.items():
            self.assertEqual((bitmap.size, bitmap.depth),
                             ((32, 32) if number == 901 else (96, 68), 24), number)
        self.assertEqual((self.key_sheet.size, self.key_sheet.depth), ((32, 32), 24))

    def test_with_a_transparent_color_have_it_at_their_corners_and_outside_their_shapes_only(self):
        key = (244, 243, 238)  # 15660020
        self.assertEqual(key[0] | key[1] << 8 | key[2] << 16, 15660020)
        for number in (425, 5021, 5008, 426):
            self.assertEqual(self.bitmaps[number].places(key), [(0, 0), (95, 0), (0, 67), (95, 67)])
        for bitmap, key in ((self.bitmaps[901], key), (self.key_sheet, (255, 255, 255))):
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
            left, top, right, bottom = box(self.bitmaps[number].places(drawn.HINGE))
            upright = bottom - top > right - left
            self.assertEqual("left" if upright else "top", edge, number)
            # The page lies behind the edge, right of it or below it, and the other side before it.
            for color, is_behind in ((drawn.PAPER, True), (drawn.BACK, False)):
                places = self.bitmaps[number].places(color)
                behind = [(x > right) if upright else (y > bottom) for x, y in places]
                self.assertGreater(len(places), 100)
                self.assertEqual(set(behind), {is_behind}, number)

    def test_of_sides_have_an_arrow_where_a_sheet_is_turned(self):
        for number in (631, 1068, 902, 905, 1065, 1066, 1072, 1071):
            arrow = bool(self.bitmaps[number].places(drawn.ARROW))
            self.assertEqual(arrow, number in (902, 905, 1065, 1066), number)

    def test_of_one_side_have_no_edge_to_turn_about(self):
        for number in (631, 1068):
            self.assertEqual(self.bitmaps[number].places(drawn.HINGE), [])

    def test_show_the_pages_orientation(self):
        for number, upright in ((631, True), (902, True), (905, True), (1068, False), (1065, False),
                                (1066, False), (901, True), (903, False)):
            left, top, right, bottom = box(self.bitmaps[number].places(drawn.PAPER))
            self.assertEqual(bottom - top > right - left, upright, number)

    def test_of_booklets_are_stapled_in_the_fold(self):
        for number, upright in ((1072, True), (1071, False)):
            bitmap = self.bitmaps[number]
            left, top, right, bottom = box(bitmap.places(drawn.HINGE))
            self.assertEqual(bottom - top > right - left, upright, number)
            pages = bitmap.places(drawn.PAPER)  # on both sides of the fold, nearly as much
            first = sum((x < left) if upright else (y < top) for x, y in pages)
            second = sum((x > right) if upright else (y > bottom) for x, y in pages)
            self.assertGreater(min(first, second), 500)
            self.assertLess(abs(first - second), 100)

    def test_of_different_settings_differ(self):
        rows = {number: tuple(map(tuple, bitmap.rows)) for number, bitmap in self.bitmaps.items()}
        self.assertEqual(len(set(rows.values())), len(rows))

    def test_the_icon_has_an_image_for_each_scale_of_a_display(self):
        for language, found in self.languages.items():
            images = compiled.icon_of(found, 1077)
            self.assertEqual([image.size for image in images],
                             [(size, size) for size in (16, 18, 20, 24, 27, 32, 36)], language)
            for image in images:
                self.assertEqual(image.depth, 32)
                self.assertTrue({0, 255} < image.alphas)  # and soft edges between


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


def numbers_in(bitmap):
    """The page numbers on the sheets, from left to right, which is the order in which they come out:
    stacks stand from left to right, and in a stack each sheet lies further right than the one before."""
    width, height = bitmap.size
    found = []
    for number, glyph in drawn.DIGITS.items():
        for y in range(height - len(glyph) + 1):
            for x in range(width - len(glyph[0]) + 1):
                if all(bitmap.rows[y + row][x + column] == (drawn.INK if mark == "#" else drawn.PAPER)
                       for row, marks in enumerate(glyph) for column, mark in enumerate(marks)):
                    found.append((x, number))
    return [number for _, number in sorted(found)]


if __name__ == "__main__":
    unittest.main()
