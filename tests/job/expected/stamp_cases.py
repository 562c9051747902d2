"""The cases that the model is asked for, and the form of its tables."""
import stamp_model as model

DEFAULTS = {
    "PageWMFlag": 1, "PageWMText": "Draft", "PageWMTypeface": "Arial", "PageWMFileName": "",
    "PageWMSize": 72, "PageWMBold": 0, "PageWMItalic": 0, "PageWMTransparent": 0, "PageWMBorder": 0,
    "PageWMAngle": 0, "PageWMScale": 100, "PageWMPosition": 5, "PageWMRepeat": 0, "PageWMColor": 0,
    "WMOffsetX": 50, "WMOffsetY": 50, "WMGrayLevel": 1, "WMStampOn": 0, "WMStampDate": 0,
    "WMStampTime": 0, "WMStampPage": 0, "WMStampFormat": "", "WMStampComputer": 0, "WMStampUser": 0,
}
TEXTS = {"PageWMText", "PageWMTypeface", "PageWMFileName", "WMStampFormat"}
A4 = (0, 0, 4960, 7015)
NO_FRAME, RING, BOX = 0, 1, 2


class Case:
    def __init__(self, name, page=A4, state=0, scale=1.0, number=7, user="ada", bitmap=None,
                 right_to_left=False, **changes):
        self.name, self.page, self.state, self.scale = name, page, state, scale
        self.number, self.user, self.bitmap = number, user, bitmap
        self.right_to_left = right_to_left
        self.changes = changes
        self.record = DEFAULTS | changes
        if bitmap:
            self.record["PageWMFlag"] = 2
            self.changes = {"PageWMFlag": 2} | changes

    def row(self):
        settings = []
        for field, value in self.changes.items():
            settings.append(f'SetText(scene.record.{field}, u"{value}");' if field in TEXTS
                            else f"scene.record.{field} = {value};")
        plain = {"state": 0, "scale": 1.0, "number": 7, "right_to_left": False}
        for field, usual in plain.items():
            value = getattr(self, field)
            if value != usual:
                name = {"right_to_left": "rightToLeft", "number": "pageNumber",
                        "state": "pageState"}.get(field, field)
                settings.append(f"scene.{name} = {str(value).lower()};")
        if self.user != "ada":
            settings.append(f'scene.SetUser(u"{self.user}");')
        if self.bitmap:
            settings.append("scene.PutBitmap({}, {});".format(*self.bitmap))
        if self.page != A4:
            settings.append("scene.page = {{{}, {}, {}, {}}};".format(*self.page))
        body = "".join(f"       {setting}\n" for setting in settings or ["static_cast<void>(scene);"])
        lines = "\n".join(model.Page(self).lines)
        return (f'    {{"{self.name}",\n     [](StampScene& scene) {{\n{body}     }},\n'
                f'     R"({lines}\n)"}},\n')


SEQUENCES = [
    Case("Plain"),
    Case("Slanted30", PageWMAngle=30, PageWMItalic=1),
    Case("Bold", PageWMBold=1, PageWMColor=0x1234, WMGrayLevel=-1),
    Case("TypeNone", PageWMFlag=0),
    Case("TransparentInTwoPasses", PageWMTransparent=1),
    Case("Ring", PageWMBorder=1),
    Case("RingTransparent45", PageWMBorder=1, PageWMTransparent=1, PageWMAngle=45),
    Case("RingMinus60Italic", PageWMBorder=1, PageWMAngle=-60, PageWMItalic=1, PageWMPosition=3),
    Case("Box", PageWMBorder=2),
    Case("BoxMinus45Italic", PageWMBorder=2, PageWMAngle=-45, PageWMItalic=1),
    Case("BoxTransparent90", PageWMBorder=2, PageWMTransparent=1, PageWMAngle=90),
    Case("BorderUnknown", PageWMBorder=3),
    Case("Repeated", PageWMRepeat=1, PageWMSize=200),
    Case("RepeatedRing", PageWMRepeat=1, PageWMSize=250, PageWMBorder=1),
    Case("RepeatedBoxMinus30Transparent", PageWMRepeat=1, PageWMSize=150, PageWMBorder=2,
         PageWMAngle=-30, PageWMTransparent=1),
    Case("RepeatedPosition10", PageWMRepeat=1, PageWMSize=300, PageWMPosition=10, WMOffsetX=60),
    Case("Position10", PageWMPosition=10, WMOffsetX=25, WMOffsetY=90, PageWMBorder=2),
    Case("CutText", PageWMRepeat=1, PageWMSize=600, PageWMText="ABCDEFGHIJKLMNOP"),
    Case("CutTextMoved", PageWMRepeat=1, PageWMSize=600, PageWMText="ABCDEFGHIJKLMNOP", state=1),
    Case("CutTextOtherState", PageWMRepeat=1, PageWMSize=600, PageWMText="ABCDEFGHIJKLMNOP",
         state=2),
    *(Case(f"CutTextPosition10{frame}", PageWMRepeat=1, PageWMSize=600,
           PageWMText="ABCDEFGHIJKLMNOP", PageWMPosition=10, WMOffsetX=25, WMOffsetY=90,
           PageWMBorder=border) for frame, border in (("Ring", RING), ("Box", BOX))),
    Case("WideTextNotRepeated", PageWMSize=600, PageWMText="ABCDEFGHIJKLMNOP", state=1),
    Case("WideItalic", PageWMSize=600, PageWMText="ABCDEFGHIJKLMNOPQRSTUVWXYZABC", PageWMItalic=1),
    Case("ShortTextMoved", PageWMRepeat=1, PageWMSize=300, state=1),
    Case("StampDateAndTime", PageWMText="", WMStampOn=1, WMStampDate=1, WMStampTime=1),
    Case("StampAll", WMStampOn=1, WMStampDate=1, WMStampTime=1, WMStampPage=1,
         WMStampFormat="Page ", WMStampComputer=1, WMStampUser=1, PageWMSize=12),
    Case("StampOff", WMStampDate=1, WMStampTime=1, WMStampPage=1, WMStampComputer=1, WMStampUser=1),
    Case("StampPageNumber", PageWMText="", WMStampOn=1, WMStampPage=1, number=-12),
    Case("StampPageNumberPlaceholderStays", WMStampOn=1, WMStampPage=1, WMStampFormat="%d of "),
    Case("StampLongUser", PageWMText="", WMStampOn=1, WMStampUser=1,
         user="abcdefghijklmnopqrstuvwxyz0123"),
    Case("StampRingCountsOwnText", PageWMText="AB", WMStampOn=1, WMStampComputer=1, PageWMBorder=1,
         PageWMSize=36),
    Case("RightToLeft", right_to_left=True, PageWMAngle=45),
    Case("NoText", PageWMText=""),
    Case("OtherFace", PageWMTypeface="Nowhere"),
    Case("ScaleHalf", scale=0.5),
    Case("ScaleNone", scale=0.0),
    Case("Landscape", page=(0, 0, 7015, 4960), PageWMAngle=-90, PageWMPosition=7),
    Case("PageNotAtOrigin", page=(100, 50, 5060, 7065), PageWMBorder=2, PageWMAngle=20),
    *(Case(f"Shade{level}" if level >= 0 else "ShadeBelow", WMGrayLevel=level, PageWMColor=0xABCDEF)
      for level in (-2, 0, 1, 2, 3, 4, 5, 6, 7, 32767)),
    *(Case(f"Bitmap{position}" if position >= 0 else "BitmapBelow", bitmap=(40, 30),
           PageWMScale=200, PageWMPosition=position) for position in (-1, *range(12))),
    *(Case(f"BitmapBeyondPage{position}", bitmap=(400, 300), PageWMScale=1000,
           PageWMPosition=position, page=(100, 50, 1090, 750)) for position in range(1, 10)),
    *(Case(f"BitmapWithinPage{position}", bitmap=(40, 30), PageWMScale=1000,
           PageWMPosition=position, page=(100, 50, 1090, 750)) for position in range(1, 10)),
    Case("BitmapTransparent", bitmap=(40, 30), PageWMTransparent=1),
    Case("BitmapBelowTransparent", bitmap=(40, 30), PageWMTransparent=-1),
    Case("BitmapScale1", bitmap=(40, 30), PageWMScale=1),
    Case("BitmapScale2", bitmap=(40, 30), PageWMScale=2),
    Case("BitmapRepeated", bitmap=(400, 300), PageWMRepeat=1),
    Case("BitmapRepeatedBySizeNotScale", bitmap=(400, 300), PageWMRepeat=1, PageWMSize=100,
         PageWMScale=30, PageWMTransparent=1),
    Case("BitmapOneTile", bitmap=(700, 900), PageWMRepeat=1, PageWMSize=150, PageWMPosition=9,
         PageWMScale=50),
    Case("BitmapRepeatedPageNotAtOrigin", bitmap=(400, 300), PageWMRepeat=1,
         page=(100, 50, 5060, 7065)),
    Case("BitmapOneTilePageNotAtOrigin", bitmap=(700, 900), PageWMRepeat=1, PageWMSize=150,
         PageWMPosition=9, PageWMScale=50, page=(100, 50, 5060, 7065)),
    Case("BitmapMissing", PageWMFlag=2, PageWMFileName="C:\\\\nowhere.bmp"),
]


def geometry_rows():
    """Where text and frames stand, at each position, in each direction, with each frame."""
    rows = []
    angles = (0, 30, 45, 60, 90, -1, -30, -45, -60, -90)
    measured = ((2250, 500), (333, 777))
    for index, angle in enumerate(angles):
        for frame in (NO_FRAME, RING, BOX):
            for position in range(12):
                for repeat in ((0, 1) if position == 0 else (0,)):
                    italic = (index + position) % 2
                    cx, cy = measured[(position + frame) % 2]
                    record = DEFAULTS | {
                        "PageWMAngle": angle, "PageWMBorder": frame, "PageWMPosition": position,
                        "PageWMRepeat": repeat, "PageWMItalic": italic, "WMOffsetX": 33,
                        "WMOffsetY": 71}
                    g = model.Text(record, cx, cy, A4)
                    rows.append((angle, frame, position, repeat, italic, cx, cy, g.m, g.fw, g.fh,
                                 g.x, g.y, g.columns, g.rows, g.ox, g.oy))
    return rows


def frame_rows():
    """The corners of boxes of three shapes in many directions."""
    rows = []
    for angle in (*range(-90, 91, 15), -89, -1, 1, 89):
        for cx, cy in ((2250, 500), (500, 500), (300, 900)):
            record = DEFAULTS | {"PageWMAngle": angle, "PageWMBorder": BOX, "PageWMSize": 72}
            g = model.Text(record, cx, cy, A4)
            outer, inner = g.box()
            rows.append((angle, cx, cy, g.x, g.y, *(n for corner in outer + inner for n in corner)))
    return rows


def fit_rows():
    rows = []
    for page in (A4, (0, 0, 990, 700), (-20, 30, 1201, 803), (-1201, -803, 20, -30)):
        for bitmap in ((40, 30), (401, 299), (1, 1)):
            for scale in (2, 100, 333, 1000):
                place, part = model.fit(page, (0, 0, *bitmap), scale)
                rows.append((*page, *bitmap, scale, *place, *part))
    return rows


def numbers(title, headings, rows):
    text = "".join("    {" + ", ".join(map(str, row)) + "},\n" for row in rows)
    return f"// Written by stamp_model.py. {title}\n// {headings}\n{text}"


def tables():
    return {
        "stamp_sequences.inc": "// Written by stamp_model.py: what each record draws.\n"
                               + "".join(case.row() for case in SEQUENCES),
        "stamp_geometry.inc": numbers(
            "Places of texts on a page of 4960 by 7015 pixels.",
            "Angle, Frame, Position, Repeat, Italic, Text's width, height, Margin, Cell's width, "
            "height, Anchor x, y, Columns, Rows, Text's x, y", geometry_rows()),
        "stamp_boxes.inc": numbers(
            "Boxes of 72 points in the centre of the same page.",
            "Angle, Text's width, height, Anchor x, y, Outer corners, Inner corners", frame_rows()),
        "bitmap_fits.inc": numbers(
            "Bitmaps fitted to pages.",
            "Page, Bitmap's width, height, Scale, Place, Part", fit_rows()),
    }
