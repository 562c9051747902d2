#!/usr/bin/env python3
"""The stamp on a page once more, as a plain model: what a watermark record draws, as the lines in which
the drawing recorder describes operations. It shares nothing with the driver and takes the straight
road where the driver takes a quick one.

stamp_model.py writes the tables beside it; stamp_model.py --check tells whether they are what it
would write. The cases are in stamp_cases.py.
"""
import math
import pathlib
import struct
import sys

HERE = pathlib.Path(__file__).resolve().parent


def cut(number):
    return math.trunc(number)


def whole(a, b):
    """Whole-number division, as the machine does it: towards zero."""
    quotient = abs(a) // abs(b)
    return quotient if (a < 0) == (b < 0) else -quotient


def single(number):
    return struct.unpack("<f", struct.pack("<f", number))[0]


# ---- The text's geometry -----------------------------------------------------------------------


class Text:
    """All steps from the measured text to its tiles."""

    def __init__(self, r, cx, cy, page):
        left, top, right, bottom = page
        w, h = right - left, bottom - top
        self.w, self.h, self.bottom, self.r = w, h, bottom, r
        degrees = r["PageWMAngle"]
        t = ((degrees + 360 if degrees < 0 else degrees) * 10) % 3600
        radians = t * 3.14159 / 1800
        s, c = abs(math.sin(radians)), abs(math.cos(radians))
        self.t, self.s, self.c = t, s, c
        ex = ey = 0
        if r["PageWMItalic"]:
            divisor = 14.0 if whole(cx, w) < 10 else 100.0
            ex, ey = cut(cx / divisor + 0.5), cut(cy / divisor + 0.5)
        cx, cy = cx + ex, cy + ey
        tw, th = cut(c * cx + s * cy), cut(c * cy + s * cx)
        multiple = whole(r["PageWMSize"], 36)
        p = 25 * multiple if multiple >= 1 else 25
        if t in (900, 2700):
            m = p
        elif 450 <= t <= 900 or 2700 <= t <= 3150:
            m = cut(p / s)
        else:
            m = cut(p / c)
        border = r["PageWMBorder"]
        bw0 = bh0 = d = 0
        if border == 1:
            n = len(r["PageWMText"])
            part = {0: 4, 1: 4, 2: 3, 3: 6}.get(n, 8)
            d = cx + cut(cx / part + 0.5) if cx > cy else cy + cut(cy / part + 0.5)
            fw = fh = d
        else:
            bw0, bh0 = cx, cy
            if border == 2:
                bx, by = cut(cx / 5 + 0.5), cut(cy / 5 + 0.5)
                ex, ey = ex + bx, ey + by
                bw0, bh0 = cx + bx, cy + by
            fh = cut(bh0 * c + bw0 * s)
            fw = cut(bw0 * c + bh0 * s)
        self.p, self.m, self.d, self.fw, self.fh = p, m, d, fw, fh
        self.bw0, self.bh0, self.border = bw0, bh0, border

        y = whole(h - fh, 2)
        x = whole(w - fw, 2) if t < 901 else w - whole(w - fw, 2)
        position = r["PageWMPosition"]
        if position == 1:
            x, y = 2 * m + (fw if t > 900 else 0), m
        elif position == 2:
            y = m
        elif position == 3:
            x, y = (w - 2 * m - fw if t < 901 else w - m), m
        elif position == 4:
            x = 2 * m + (fw if t >= 901 else 0)
        elif position == 6:
            x = w - fw - m if t < 901 else w - 2 * m
        elif position == 7:
            x, y = 2 * m + (fw if t > 900 else 0), h - fh - m
        elif position == 8:
            y = h - fh - m
        elif position == 9:
            x, y = (w - m if t >= 901 else w - fw - m), h - fh - m
        self.columns = self.rows = 1
        if r["PageWMRepeat"]:
            self.columns = 1 + whole(w, fw) if fw else 1
            self.rows = 1 + whole(h, fh) if fh else 1
            y, x = m, 2 * m + (fw if t >= 901 else 0)
        self.x, self.y = x, y

        if border == 1 and t < 2700:
            ox = cut(whole(d - tw, 2) + x + ex * c / 2)
            oy = cut((y - whole(d - th, 2) + d) - ey * s - cut(cy * c))
        elif border == 1:
            ox = cut((whole(d - tw, 2) - d + x) + ex * s / 2 + cut(cy * s))
            oy = cut((whole(d - th, 2) + y) + ey * s / 2)
        else:
            a, b = whole(ey, 2), whole(ex, 2)
            if t > 900:
                ox = cut(-a * s) - cut((bw0 - b) * c) + x
                oy = cut(a * c) + cut(b * s) + y
            else:
                ox = cut(a * s) + cut(b * c) + x
                oy = cut((bw0 - b) * s) + cut(a * c) + y
        if position == 10:
            ox += cut((r["WMOffsetX"] - 50) * w * 0.01)
            oy += cut((r["WMOffsetY"] - 50) * (h - fh) * 0.01)
        self.ox, self.oy = ox, oy

    def ring(self):
        x0, x1 = self.x, self.x - self.d if self.t > 900 else self.x + self.d
        y0, y1 = self.y, self.y + self.d
        half = whole(self.p, 2)
        l, r, t, b = min(x0, x1), max(x0, x1), min(y0, y1), max(y0, y1)
        return [(l - half, t - half, r + half, b + half), (l + half, t + half, r - half, b - half)]

    def box(self):
        """Outer and inner polygon."""
        along = cut(self.bw0 * self.c), cut(self.bw0 * self.s)
        down = cut(self.bh0 * self.s), cut(self.bh0 * self.c)
        if self.t > 900:
            # Clockwise: the line runs right and down, the side left and down; it hangs from the
            # anchor at the right.
            start = self.x - along[0], self.y
            a, b = along, (-down[0], down[1])
        else:
            # The line runs right and up, the side right and down.
            start = self.x, self.y + along[1]
            a, b = (along[0], -along[1]), down
        corners = [(start[0] + i * a[0] + j * b[0], start[1] + i * a[1] + j * b[1])
                   for i, j in ((0, 0), (1, 0), (1, 1), (0, 1))]
        corners.sort(key=lambda corner: corner[0])
        # Round the rectangle: the left two by rising y, the right two by falling y.
        corners[:2] = sorted(corners[:2], key=lambda corner: corner[1])
        corners[2:] = sorted(corners[2:], key=lambda corner: -corner[1])
        up = [(px, self.bottom - py) for px, py in corners]
        return [[(px, self.bottom - py) for px, py in polygon] for polygon in offsets(up, self.p)]


def offsets(corners, p):
    """The rectangle moved outwards by p, and inwards."""
    (x0, y0), (x1, y1) = corners[:2]
    if x0 == x1 or y0 == y1:
        sine, cosine = 0.0, 1.0
    else:
        dx, dy = abs(x1 - x0) + 1, abs(y1 - y0) + 1
        r = math.sqrt(dx * dx + dy * dy)
        sine, cosine = dy / r, dx / r
        # The edge falls towards the right, or else it has to be turned the other way.
        if (x1 - x0) * (y1 - y0) > 0:
            sine = -sine

    def turn(point, sn):
        px, py = point[0] - x0, point[1] - y0
        return cut(px * cosine - py * sn + x0), cut(px * sn + py * cosine + y0)

    level = [turn(corner, sine) for corner in corners]
    middle = [sum(corner[k] for corner in level) / 4 for k in (0, 1)]

    def grown(by):
        moved = [tuple(v + (by if v > middle[k] else -by) for k, v in enumerate(corner))
                 for corner in level]
        return [turn(corner, -sine) for corner in moved]

    return grown(p), grown(-p)


# ---- Bitmaps -------------------------------------------------------------------------------------


def fit(dest, src, scale):
    (l, t, r, b), (sl, st, sr, sb) = dest, src
    longest = max(r - l + 1, b - t + 1)
    width = single((sr - sl + 1) * longest * 254 / 96 / 2970 * scale / 100)
    height = single((sb - st + 1) * longest * 254 / 96 / 2970 * scale / 100)
    if width == 0 or height == 0:
        return (0, 0, 0, 0), src
    kx, ky = (sr - sl) / width, (sb - st) / height
    left = cut(whole(r - l, 2) + l + 0.5) - cut(width / 2 + 0.5)
    top = cut(whole(b - t, 2) + t + 0.5) - cut(height / 2 + 0.5)
    dl, dt, dr, db = l, t, r, b
    nsl, nst, nsr, nsb = sl, st, sr, sb
    if left < l:
        nsl = cut((l - left) * (kx + 0.005) + sl)
    else:
        dl = left
    if top < t:
        nst = cut((t - top) * (ky + 0.005) + st)
    else:
        dt = top
    if left + width > r:
        nsr = sr + cut((r - left - width) * (kx + 0.005) + 0.5)
    else:
        dr = cut(left + width + 0.5)
    if top + height > b:
        nsb = sb + cut((b - top - height) * (ky + 0.005) + 0.5)
    else:
        db = cut(top + height + 0.5)
    return (dl, dt, dr, db), (nsl, nst, nsr, nsb)


def placed(position, page, bw, bh, scale):
    """Dest x, y, width, height and source x, y, width, height; None off the table."""
    (dl, dt, dr, db), (sl, st, sr, sb) = fit(page, (0, 0, bw, bh), scale)
    pl, pt, pr, pb = page
    rows = {
        1: (pl, pt, 0, bh - sb + st, sr - sl, 2 * sb - bh),
        2: (dl, pt, sl, bh - sb + st, sr - sl, 2 * sb - bh),
        3: (pr - dr + dl, pt, bw - sr + sl, bh - sb + st, 2 * sr - bw, 2 * sb - bh),
        4: (pl, dt, 0, st, sr - sl, sb - st),
        5: (dl, dt, sl, st, sr - sl, sb - st),
        6: (pr - dr + dl, dt, bw - sr + sl, st, 2 * sr - bw, sb - st),
        7: (pl, pb - db + dt, 0, 0, sr - sl, sb - st),
        8: (dl, pb - db + dt, sl, 0, sr - sl, sb - st),
        9: (pr - dr + dl, pb - db + dt, bw - sr + sl, 0, 2 * sr - bw, sb - st),
    }
    if position not in rows:
        return None
    x, y, sx, sy, sw, sh = rows[position]
    return x, y, dr - dl, db - dt, sx, sy, sw, sh


def tiles(page, bw, bh, size):
    left, top, right, bottom = page
    longest = max(right - left + 1, bottom - top + 1)
    tw = single((bw + 1) * longest * 254 * size / 28512000)
    th = single((bh + 1) * longest * 254 * size / 28512000)
    return tw, th, cut((right - left + 1) / tw + 1), cut((bottom - top + 1) / th + 1)


# ---- The operations ------------------------------------------------------------------------------

FACTORS = {36: 8.5, 44: 9.6, 54: 9.2, 72: 9.1, 88: 9.4}
SHADES = {0: 0xF0F0F0, 1: 0xD2D2D2, 2: 0xB4B4B4, 3: 0x969696, 4: 0x787878, 5: 0x5A5A5A, 6: 0x3C3C3C}
# The recorder's own beginnings, and its rule for the size of a text: half as wide as high.
FONT_BEFORE = 'SelectObject(font 0, 0, 0, 0, 0, 0, 0, 0, 0, 0 "")'
BRUSH_BEFORE = "SelectObject(brush 16777215)"


def words(*numbers):
    return struct.pack("<9i", *numbers).hex()


class Page:
    """Writes down one stamp."""

    def __init__(self, case):
        self.lines = []
        self.case = case
        r, page = case.record, case.page
        self.say("SetWindowOrgEx(0, 0)", "SetViewportOrgEx(0, 0)",
                 f"SetWindowExtEx({page[2]}, {-page[3]})",
                 f"SetViewportExtEx({page[2]}, {-page[3]})")
        if r["PageWMFlag"] == 2:
            loaded = self.bitmap()
            if loaded:
                self.put_mapping_back()
        else:
            self.text()

    def say(self, *lines):
        self.lines += lines

    def put_mapping_back(self):
        self.say("SetWindowExtEx(1, 1)", "SetViewportExtEx(1, 1)", "SetWindowOrgEx(0, 0)",
                 "SetViewportOrgEx(0, 0)")

    def escape(self, payload=None):
        self.say(f"ExtEscape(20483, 0, {payload})" if payload else "ExtEscape(20483, 0)")

    def whole_text(self):
        r, case = self.case.record, self.case
        text = r["PageWMText"]
        if not r["WMStampOn"]:
            return text
        items = []
        if r["WMStampDate"]:
            items.append("03/09/2026")
        if r["WMStampTime"]:
            items.append("14:05:07")
        if r["WMStampPage"]:
            self.say("ExtEscape(20489, 4)")
            items.append((r["WMStampFormat"] + str(case.number))[:255])
        if r["WMStampComputer"]:
            items.append("DESK-7")
        if r["WMStampUser"]:
            items.append(case.user[:20])
        for item in items:
            text = text + " " + item if text else item
        return text[:255]

    def text(self):
        case, r = self.case, self.case.record
        self.say("SetBkMode(1)", "SetROP2(240)", "SetTextAlign(0)")
        text = self.whole_text()
        size = r["PageWMSize"]
        height = cut(size * FACTORS.get(size, 9.7))
        if case.scale != 0.0:
            height = cut(height * case.scale)
        pixels = cut(height * 600 / 72 + 0.5)
        letters = cut(abs(pixels) / 10 + 0.5)
        degrees = r["PageWMAngle"]
        t = ((degrees + 360 if degrees < 0 else degrees) * 10) % 3600
        face = r["PageWMTypeface"]
        char_set = 0 if face == "Arial" else 1
        self.say(f"SelectObject(font {-letters}, 0, {t}, {t}, {700 if r['PageWMBold'] else 0}, "
                 f'{1 if r["PageWMItalic"] else 0}, 0, 0, {char_set}, 7 "{face}")')
        self.say("SetBkColor(16777215)", f"SetTextColor({r['PageWMColor']})")

        def measure():
            return whole(len(text) * letters, 2), letters

        was_cut = False
        if r["PageWMRepeat"]:
            was_cut = max(measure()) >= 24001
            while max(measure()) >= 24001 and len(text) >= 2:
                text = text[1:-1]
        cx, cy = measure()
        if was_cut and case.state == 1:
            text = text[1:] + text[-1]
        g = Text(r, cx, cy, case.page)
        shade = r["WMGrayLevel"]
        color = r["PageWMColor"] if shade < 0 else SHADES.get(shade, 0xB4B4B4)
        self.say(f"SelectObject(brush {color})")
        frame = r["PageWMBorder"] in (1, 2)
        x, y = (0, 0) if was_cut else (g.ox, g.oy)
        place = "in " + ", ".join(map(str, case.page)) + ", " if case.right_to_left else ""
        option = 130 if case.right_to_left else 2
        black = False
        passes = 2 if r["PageWMTransparent"] else 1
        margin = g.m if frame else 0
        for i in range(g.columns):
            for j in range(g.rows):
                if r["PageWMRepeat"]:
                    self.escape(words(g.fw, g.fh, i, j, 0, 0, (i + 1) * margin, j * margin + margin,
                                      g.m))
                else:
                    self.escape()
                for number in range(passes):
                    if number == 1 and not black:
                        self.say("SelectObject(brush 0)")
                        black = True
                    self.say("BeginPath()", f'ExtTextOutW({x}, {y}, {option}, {place}"{text}")',
                             "EndPath()", "SetPolyFillMode(2)", "FillPath()", "SetPolyFillMode(1)")
                if r["PageWMRepeat"] and frame:
                    self.escape(words(g.fw, g.fh, i, j, 0, 0, i * g.m, j * g.m, g.m))
                else:
                    self.escape()
                for number in range(passes if frame else 0):
                    self.say("BeginPath()")
                    if r["PageWMBorder"] == 1:
                        self.say(*("Ellipse({}, {}, {}, {})".format(*rect) for rect in g.ring()))
                    else:
                        self.say(*("Polygon(" + "; ".join(f"{px}, {py}" for px, py in polygon) + ")"
                                   for polygon in g.box()))
                    self.say("EndPath()", "SetPolyFillMode(1)", "FillPath()", "SetPolyFillMode(1)")
        self.say("SetTextAlign(0)")
        self.put_mapping_back()
        self.say("SetBkMode(2)", "SetBkColor(16777215)", "SetTextColor(0)", FONT_BEFORE,
                 BRUSH_BEFORE)

    def bitmap(self):
        case, r = self.case, self.case.record
        if r["PageWMScale"] < 2:
            return 1
        if case.bitmap is None:
            return 0
        bw, bh = case.bitmap
        page = case.page
        operation = 0x8800C6 if r["PageWMTransparent"] > 0 else 0xCC0020
        self.say("SetStretchBltMode(3)")

        def draw(*numbers):
            self.say("StretchDIBits(" + ", ".join(map(str, (*numbers, operation))) + ")")

        if not r["PageWMRepeat"]:
            numbers = placed(r["PageWMPosition"], page, bw, bh, r["PageWMScale"])
            if numbers:
                draw(*numbers)
        else:
            tw, th, columns, rows = tiles(page, bw, bh, r["PageWMSize"])
            if columns == 1 and rows == 1:
                self.escape(words(*[0] * 9))
                draw(*placed(1, page, bw, bh, r["PageWMScale"]))
            else:
                for i in range(columns):
                    for j in range(rows):
                        self.escape(words(0, 0, i, j, cut(i * tw), cut(j * th), 0, 0, 0))
                        draw(page[0], page[1], cut(tw), cut(th), 0, 0, bw, bh)
        self.say("SetStretchBltMode(1)")
        return 1


if __name__ == "__main__":
    import stamp_cases
    wrong = False
    for name, content in stamp_cases.tables().items():
        path = HERE / name
        if "--check" in sys.argv[1:]:
            if not path.exists() or path.read_text() != content:
                print(f"{path} isn't what the model says")
                wrong = True
        else:
            path.write_text(content)
    sys.exit(wrong)
