"""What is held against every compiled dialog, in each language; a test class says what its dialog has."""

import pathlib
import sys

import polib

TREE = pathlib.Path(__file__).resolve().parent.parent.parent
sys.dont_write_bytecode = True
sys.path.insert(0, str(TREE / "tools"))
sys.path.insert(0, str(TREE / "tests" / "resources"))

import compiled_resources as compiled  # noqa: E402

FOLDER = pathlib.Path(sys.argv.pop()) if len(sys.argv) > 1 else TREE / "build/native/resources"
LANGUAGES = sorted(path.stem for path in (TREE / "resources" / "strings").glob("*.po"))

# winuser.h, commctrl.h
WS_GROUP, WS_TABSTOP, WS_VISIBLE = 0x20000, 0x10000, 0x10000000
WS_CHILD, WS_POPUP, WS_CAPTION, WS_SYSMENU = 0x40000000, 0x80000000, 0xC00000, 0x80000
WS_EX_LAYOUTRTL = 0x400000
DS_CONTROL, DS_SHELLFONT, DS_MODALFRAME = 0x400, 0x48, 0x80
BS_PUSHBUTTON, BS_DEFPUSHBUTTON, BS_CHECKBOX, BS_AUTOCHECKBOX = 0, 1, 2, 3
BS_RADIOBUTTON, BS_GROUPBOX, BS_AUTORADIOBUTTON = 4, 7, 9
SS_LEFT, SS_ICON, SS_OWNERDRAW, SS_BITMAP, SS_ETCHEDHORZ = 0, 3, 0xD, 0xE, 0x10
SS_NOTIFY, SS_CENTERIMAGE = 0x100, 0x200
ES_NUMBER, CBS_SORT = 0x2000, 0x100
CBS_DROPDOWN, CBS_DROPDOWNLIST = 2, 3
UDS_SETBUDDYINT, UDS_ALIGNRIGHT, UDS_AUTOBUDDY, UDS_ARROWKEYS = 2, 4, 0x10, 0x20

PAGE = DS_CONTROL | DS_SHELLFONT | WS_CHILD
MODAL = DS_MODALFRAME | DS_SHELLFONT | WS_POPUP | WS_CAPTION | WS_SYSMENU
PAGE_SIZE = (252, 218)
MARGIN = 7


def texts_of(language):
    file = polib.pofile(str(TREE / "resources" / "strings" / f"{language}.po"), encoding="utf-8")
    return {int(entry.msgctxt): entry.msgstr for entry in file if not entry.obsolete}


def library(name):
    return compiled.resources_of(FOLDER / f"ostrelPCL6ui{name}.res")


def bitmaps():
    """The pictures of the picture library, by number."""
    return {number: compiled.bitmap_of(data) for (kind, number), (data, _) in library("ResBmp").items()
            if kind == compiled.RT_BITMAP}


def pixels(control):
    """A control's width and height on an unscaled display, rounded as the platform does."""
    _, _, width, height = control.place
    return (width * 6 + 2) // 4, (height * 13 + 4) // 8


def in_each_language(case):
    """The case for the dialog of each language; a failure names the language."""
    def run(self):
        for language, dialog in self.dialogs.items():
            with self.subTest(language=language):
                case(self, language, dialog)
    return run


class DialogCases:
    """To be mixed into a test class, which says what its dialog has."""

    number = 0
    title = 0  # string
    style, size = PAGE, PAGE_SIZE
    captions = {}  # control and string, as the page sets them on each start
    kinds = {}  # control numbers by class and style
    lists = {}  # closed lists' controls and their style
    boxes = {}  # a box that takes a number: its up-down control, and whether it takes digits alone
    icons = {}  # of locked options, with the option
    labels = ()  # with the field that each names
    radio_groups = ()
    stops = ()  # of the Tab key
    pictures = {}  # control and size of what it shows

    @classmethod
    def setUpClass(cls):
        cls.dialogs, cls.tags = {}, []
        for language in LANGUAGES:
            data, tag = library(language)[compiled.RT_DIALOG, cls.number]
            cls.dialogs[language] = compiled.dialog_of(data)
            cls.tags.append(tag)

    def test_is_found_whatever_the_systems_language_is(self):
        self.assertEqual(self.tags, [0] * len(LANGUAGES))

    @in_each_language
    def test_has_its_size_style_and_the_usual_font(self, _, dialog):
        self.assertEqual(dialog.size, self.size)
        self.assertEqual(dialog.font, (8, "MS Shell Dlg"))
        self.assertEqual(dialog.style & self.style, self.style)

    @in_each_language
    def test_is_laid_out_as_the_language_is_read(self, language, dialog):
        self.assertEqual(dialog.extended_style, WS_EX_LAYOUTRTL if language == "he" else 0)

    @in_each_language
    def test_shows_the_captions_of_its_language(self, language, dialog):
        texts = texts_of(language)
        self.assertEqual(dialog.title, texts[self.title])
        for control, text in self.captions.items():
            self.assertEqual(dialog.control(control).text, texts[text], f"control {control}")

    @in_each_language
    def test_has_no_caption_that_the_page_does_not_set(self, _, dialog):
        self.assertEqual({control.id for control in dialog.controls if control.text}, set(self.captions))

    @in_each_language
    def test_has_controls_of_the_kinds_that_the_page_works_and_no_others(self, _, dialog):
        for (kind, style), numbers in self.kinds.items():
            for number in numbers:
                control = dialog.control(number)
                mask = 0x1F if kind == "static" else 0xF
                self.assertEqual((control.kind, control.style & mask), (kind, style), number)
        named = [number for numbers in self.kinds.values() for number in numbers]
        named += [*self.lists, *self.boxes, *(spin for spin, _ in self.boxes.values())]
        self.assertEqual(sorted(control.id for control in dialog.controls), sorted(named))

    @in_each_language
    def test_has_lists_that_keep_the_order_of_their_rows(self, _, dialog):
        for number, style in self.lists.items():
            control = dialog.control(number)
            self.assertEqual((control.kind, control.style & 3), ("combobox", style), number)
            self.assertFalse(control.style & CBS_SORT, number)

    @in_each_language
    def test_steps_its_boxes_without_writing_them(self, _, dialog):
        wanted = UDS_AUTOBUDDY | UDS_ALIGNRIGHT | UDS_ARROWKEYS
        for box, (spin, digits_alone) in self.boxes.items():
            self.assertEqual(dialog.control(spin).kind, "msctls_updown32")
            self.assertEqual(dialog.control(spin).style & (wanted | UDS_SETBUDDYINT), wanted)
            self.assertEqual(dialog.order(spin), dialog.order(box) + 1)
            self.assertEqual(dialog.control(box).kind, "edit")
            self.assertEqual(bool(dialog.control(box).style & ES_NUMBER), digits_alone)

    @in_each_language
    def test_names_each_field_by_the_label_before_it(self, _, dialog):
        for label, field in self.labels:
            self.assertEqual(dialog.order(field), dialog.order(label) + 1)

    @in_each_language
    def test_keeps_radio_buttons_in_groups_of_their_own(self, _, dialog):
        for radios in self.radio_groups:
            orders = [dialog.order(radio) for radio in radios]
            self.assertEqual(orders, list(range(orders[0], orders[0] + len(radios))))
            groups = [bool(dialog.control(radio).style & WS_GROUP) for radio in radios]
            self.assertEqual(groups, [True] + [False] * (len(radios) - 1))
            # The window system makes the checked one a stop.
            stops = [bool(dialog.control(radio).style & WS_TABSTOP) for radio in radios]
            self.assertEqual(stops, [False] * len(radios))
            self.assertTrue(dialog.controls[orders[-1] + 1].style & WS_GROUP)

    @in_each_language
    def test_stops_the_tab_key_at_every_other_field_in_this_order(self, _, dialog):
        stops = [control.id for control in dialog.controls if control.style & WS_TABSTOP]
        self.assertEqual(stops, list(self.stops))

    @in_each_language
    def test_hides_the_icons_and_lets_the_mouse_find_them(self, _, dialog):
        for number in self.icons:
            style = dialog.control(number).style
            self.assertEqual(style & (WS_VISIBLE | SS_NOTIFY), SS_NOTIFY, number)
            self.assertTrue(style & SS_CENTERIMAGE, number)

    @in_each_language
    def test_has_18_pixels_for_each_icon_behind_its_option(self, _, dialog):
        for icon, option in self.icons.items():
            self.assertEqual(pixels(dialog.control(icon)), (18, 18))
            x, y, _, _ = dialog.control(icon).place
            left, top, option_width, _ = dialog.control(option).place
            self.assertGreaterEqual(x, left + option_width)
            self.assertLess(abs(y - top), 3)

    @in_each_language
    def test_has_room_for_each_picture(self, _, dialog):
        for number, (width, height) in self.pictures.items():
            room = pixels(dialog.control(number))
            self.assertIn(room, ((width, height), (width + 1, height + 1)), number)

    @in_each_language
    def test_keeps_the_margins(self, _, dialog):
        right, bottom = (length - MARGIN for length in self.size)
        for control in dialog.controls:
            x, y, width, height = control.place
            self.assertTrue(MARGIN <= x and x + width <= right and MARGIN <= y, control)
            if control.kind != "combobox":  # its height is that of the open list
                self.assertLessEqual(y + height, bottom, control)
            if control.kind == "button" and control.style & 0xF in (BS_PUSHBUTTON, BS_DEFPUSHBUTTON):
                self.assertEqual(height, 14, control)
