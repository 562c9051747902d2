#!/usr/bin/python3
"""The compiled dialogs, in each language: every control that a page works is there, is of the right kind
and says what it should.

    compiled_dialogs_test.py FOLDER     the folder of the compiled resource files
"""

import sys
import unittest

sys.dont_write_bytecode = True

import dialog_cases as cases  # noqa: E402
import draw_pictures as drawn  # noqa: E402


class PrintOptionsDialog(cases.DialogCases, unittest.TestCase):
    number, title = 111, 106
    captions = {1018: 1006, 1008: 1010, 1242: 3112, 1243: 3113, 1395: 4002, 1396: 4003, 1397: 4004,
                1394: 4005, 1240: 4006, 1125: 4007, 1241: 4008, 1064: 1011, 1414: 129, 1422: 5080,
                1489: 211, 1483: 205, 1497: 1497, 1496: 1498}
    kinds = {
        ("button", cases.BS_CHECKBOX): (1008, 1394, 1422, 1496),
        ("button", cases.BS_RADIOBUTTON): (1240, 1125, 1241, 1242, 1243),
        ("button", cases.BS_GROUPBOX): (1395, 1396, 1397, 1489, 1497),
        ("button", cases.BS_PUSHBUTTON): (1064,),
        ("static", cases.SS_LEFT): (1018, 1414, 1483),
        ("static", cases.SS_ICON): (1447, 1448, 1449, 1450),
        ("static", cases.SS_OWNERDRAW): (1176,),
        ("static", cases.SS_BITMAP): (1453,),
    }
    lists = {1393: cases.CBS_DROPDOWNLIST}
    boxes = {1019: (1020, True)}
    icons = {1447: 1125, 1448: 1394, 1449: 1008, 1450: 1393}
    labels = ((1018, 1019), (1483, 1393))
    radio_groups = ((1240, 1125, 1241), (1242, 1243))
    stops = (1019, 1008, 1394, 1422, 1393, 1496, 1064)
    pictures = {1176: drawn.LARGE, 1453: drawn.LARGE}

    @cases.in_each_language
    def test_keeps_the_picture_of_the_sides_in_the_middle_on_scaled_displays(self, _, dialog):
        self.assertTrue(dialog.control(1453).style & cases.SS_CENTERIMAGE)


class PaperDialog(cases.DialogCases, unittest.TestCase):
    number, title = 693, 216
    captions = {1401: 4013, 1400: 1001, 1028: 1008, 1402: 4016, 1403: 4012, 1030: 1003, 1240: 4014,
                1125: 4015, 1407: 406, 1064: 1011}
    kinds = {
        ("button", cases.BS_RADIOBUTTON): (1240, 1125),
        ("button", cases.BS_GROUPBOX): (1401, 1402),
        ("button", cases.BS_PUSHBUTTON): (1407, 1064),
        ("static", cases.SS_LEFT): (1400, 1028, 1403, 1030),
        ("static", cases.SS_ICON): (1446, 1450, 1449),
        ("static", cases.SS_OWNERDRAW): (1318, 1315, 1387),
    }
    lists = dict.fromkeys((1404, 1009, 1393), cases.CBS_DROPDOWNLIST)
    icons = {1446: 1009, 1450: 1393, 1449: 1240}
    labels = ((1400, 1404), (1028, 1009), (1403, 1393), (1030, 1240))
    radio_groups = ((1240, 1125),)
    stops = (1404, 1009, 1407, 1393, 1064)
    pictures = dict.fromkeys((1318, 1315, 1387), drawn.SMALL)

    @cases.in_each_language
    def test_shows_before_each_radio_button_which_edge_goes_first(self, _, dialog):
        for picture, radio in ((1318, 1240), (1315, 1125)):
            x, y, width, height = dialog.control(picture).place
            left, top, _, radio_height = dialog.control(radio).place
            self.assertLessEqual(x + width, left)
            self.assertEqual(y + height / 2, top + radio_height / 2)


class LayoutDialog(cases.DialogCases, unittest.TestCase):
    number, title = 626, 126
    captions = {1408: 4020, 1409: 4021, 1410: 4022, 1488: 1057, 1411: 4022, 1047: 1015, 1064: 1011,
                1415: 4059, 1437: 4061, 1487: 4057, 1458: 4057, 1065: 189, 1443: 407, 1484: 4020,
                1485: 210, 1486: 6006, 1387: 195, 1389: 143, 1390: 144, 1391: 167, 1392: 168}
    kinds = {
        ("button", cases.BS_RADIOBUTTON): (1484, 1485, 1486),
        ("button", cases.BS_AUTORADIOBUTTON): (1387, 1389, 1390, 1391, 1392),
        ("button", cases.BS_AUTOCHECKBOX): (1415,),
        ("button", cases.BS_GROUPBOX): (1408, 1411, 1458, 1015),
        ("button", cases.BS_PUSHBUTTON): (1065, 1064),
        ("static", cases.SS_LEFT): (1409, 1410, 1488, 1047, 1437, 1487, 1443),
        ("static", cases.SS_ETCHEDHORZ): (1043, 1463),
        ("static", cases.SS_ICON): (1452, 1453, 1454),
        ("static", cases.SS_OWNERDRAW): (1067, 1388),
    }
    lists = dict.fromkeys((1045, 1394, 1048, 1393, 1046, 1044), cases.CBS_DROPDOWNLIST)
    boxes = {1025: (1107, True)}
    icons = {1452: 1443, 1453: 1486, 1454: 1485}
    labels = ((1047, 1046), (1409, 1393), (1488, 1048), (1487, 1045), (1437, 1394), (1410, 1025))
    radio_groups = ((1484, 1485, 1486), (1387, 1389, 1390, 1391, 1392))
    stops = (1046, 1393, 1044, 1065, 1048, 1415, 1045, 1394, 1025, 1064)
    pictures = {1388: drawn.SMALL}

    @cases.in_each_language
    def test_has_a_preview_of_just_the_pictures_size(self, _, dialog):
        self.assertEqual(cases.pixels(dialog.control(1067)), drawn.LAYOUT_SIZE)

    @cases.in_each_language
    def test_draws_one_line_across_the_frame_whether_or_not_booklets_are_offered(self, _, dialog):
        left, right = dialog.control(1043).place, dialog.control(1463).place
        self.assertEqual(left[1], right[1])
        self.assertLess(right[0] - (left[0] + left[2]), 10)


class CustomPaperDialog(cases.DialogCases, unittest.TestCase):
    number, title = 657, 294
    style, size = cases.MODAL, (240, 164)
    captions = {1110: 4039, 1111: 4038, 1421: 5023, 1417: 5024, 1064: 1011, 1112: 1041, 1: 175, 2: 176,
                1274: 191, 1275: 191, 1268: 1189, 1271: 1191, 1267: 4036, 1109: 4037, 1165: 1194,
                1420: 1194}
    kinds = {
        ("button", cases.BS_RADIOBUTTON): (1110, 1111),
        ("button", cases.BS_GROUPBOX): (1420, 1109, 1267),
        ("button", cases.BS_PUSHBUTTON): (1421, 1417, 1064, 2, 1112),
        ("button", cases.BS_DEFPUSHBUTTON): (1,),
        ("static", cases.SS_LEFT): (1165, 1268, 1271, 1274, 1275),
    }
    lists = {1009: cases.CBS_DROPDOWN}
    boxes = {1358: (1270, False), 1442: (1273, False)}
    labels = ((1165, 1009), (1268, 1358), (1271, 1442))
    radio_groups = ((1110, 1111),)
    stops = (1009, 1421, 1417, 1358, 1442, 1064, 1, 2, 1112)

    @cases.in_each_language
    def test_has_the_unit_behind_each_box(self, _, dialog):
        for box, unit in ((1358, 1274), (1442, 1275)):
            self.assertEqual(dialog.order(unit), dialog.order(box) + 2)
            x, y, width, _ = dialog.control(box).place
            left, top, _, _ = dialog.control(unit).place
            self.assertTrue(left > x + width and abs(top - y) < 5)


class BookletCoverDialog(cases.DialogCases, unittest.TestCase):
    number, title = 1071, 5081
    style, size = cases.MODAL, (240, 150)
    captions = {1: 175, 2: 176, 1478: 182, 1480: 183, 1394: 184, 1395: 185, 1396: 186, 1397: 187,
                1398: 188, 1028: 1008, 1403: 4012, 1064: 1011, 1112: 1041}
    kinds = {
        ("button", cases.BS_AUTOCHECKBOX): (1394, 1395, 1396, 1397, 1398),
        ("button", cases.BS_GROUPBOX): (1480,),
        ("button", cases.BS_PUSHBUTTON): (1064, 2, 1112),
        ("button", cases.BS_DEFPUSHBUTTON): (1,),
        ("static", cases.SS_LEFT): (1478, 1028, 1403),
        ("static", cases.SS_ICON): (1446, 1450),
    }
    lists = dict.fromkeys((1479, 1009, 1393), cases.CBS_DROPDOWNLIST)
    icons = {1446: 1009, 1450: 1393}
    labels = ((1478, 1479), (1028, 1009), (1403, 1393))
    stops = (1479, 1394, 1395, 1396, 1397, 1398, 1009, 1393, 1064, 1, 2, 1112)


if __name__ == "__main__":
    unittest.main()
