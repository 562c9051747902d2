"""Reads the compiled resource files of the libraries (".res", as the resource compiler writes them)."""

import struct
from dataclasses import dataclass

RT_BITMAP, RT_ICON, RT_DIALOG, RT_GROUP_ICON = 2, 3, 5, 14
CLASSES = {0x80: "button", 0x81: "edit", 0x82: "static", 0x83: "listbox", 0x84: "scrollbar",
           0x85: "combobox"}


class Reader:
    def __init__(self, data):
        self.data, self.at = data, 0

    def take(self, form):
        values = struct.unpack_from("<" + form, self.data, self.at)
        self.at += struct.calcsize("<" + form)
        return values if len(values) > 1 else values[0]

    def align(self):
        self.at += -self.at % 4

    def text(self):
        units = []
        while unit := self.take("H"):
            units.append(unit)
        return struct.pack(f"<{len(units)}H", *units).decode("utf-16-le")

    def name(self):
        """A number, or a text."""
        if self.data[self.at:self.at + 2] == b"\xff\xff":
            self.take("H")
            return self.take("H")
        return self.text()


def resources_of(path):
    """Data and language of each resource, by type and name."""
    reader = Reader(path.read_bytes())
    found = {}
    while reader.at < len(reader.data):
        start = reader.at
        size, head = reader.take("II")
        kind, name = reader.name(), reader.name()
        reader.align()
        _, _, language = reader.take("IHH")
        begin = start + head
        if (kind, name) != (0, 0):
            if (kind, name) in found:
                raise ValueError(f"{path}: resource {name} of type {kind} comes twice")
            found[kind, name] = (reader.data[begin:begin + size], language)
        reader.at = begin + size
        reader.align()
    return found


@dataclass
class Control:
    id: int
    kind: str
    text: str
    style: int
    place: tuple  # x, y, width, height in dialog units


@dataclass
class Dialog:
    style: int
    extended_style: int
    size: tuple
    title: str
    font: tuple  # points and name
    controls: list

    def control(self, number):
        found = [control for control in self.controls if control.id == number]
        if len(found) != 1:
            raise KeyError(f"{len(found)} controls {number}")
        return found[0]

    def order(self, number):
        return self.controls.index(self.control(number))


def control_of(reader):
    reader.align()
    _, _, style, *place, number = reader.take("IIIhhhhI")
    kind = reader.name()
    text = reader.name()
    extra = reader.take("H")
    reader.at += extra
    return Control(number, CLASSES.get(kind, str(kind).lower()), text, style, tuple(place))


def dialog_of(data):
    reader = Reader(data)
    if reader.take("HH") != (1, 0xFFFF):
        raise ValueError("not an extended dialog template")
    _, extended_style, style, count, _, _, *size = reader.take("IIIHhhhh")
    reader.name()  # menu
    reader.name()  # class
    title = reader.text()
    points, _, _, _ = reader.take("HHBB")
    font = (points, reader.text())
    controls = [control_of(reader) for _ in range(count)]
    return Dialog(style, extended_style, tuple(size), title, font, controls)


@dataclass
class Bitmap:
    size: tuple
    depth: int
    rows: list  # of red, green and blue, the upper row first

    def places(self, color):
        return [(x, y) for y, row in enumerate(self.rows) for x, pixel in enumerate(row)
                if pixel == color]


def bitmap_of(data):
    head, width, height, _, depth = struct.unpack_from("<IiiHH", data)
    pitch = (width * depth // 8 + 3) // 4 * 4
    rows = []
    for y in range(height - 1, -1, -1):
        row = data[head + y * pitch:]
        rows.append([tuple(row[3 * x + i] for i in (2, 1, 0)) for x in range(width)])
    return Bitmap((width, height), depth, rows)


@dataclass
class IconImage:
    size: tuple
    depth: int
    alphas: set


def icon_of(found, number):
    """The images of an icon, in the order of its directory."""
    directory = found[RT_GROUP_ICON, number][0]
    images = []
    for i in range(struct.unpack_from("<H", directory, 4)[0]):
        width, height, _, _, _, depth, _, image = struct.unpack_from("<BBBBHHIH", directory, 6 + 14 * i)
        data = found[RT_ICON, image][0]
        head, real_width, double_height, _, real_depth = struct.unpack_from("<IiiHH", data)
        if (real_width, double_height, real_depth) != (width, 2 * height, depth):
            raise ValueError(f"icon {number}: an image differs from its entry")
        images.append(IconImage((width, height), depth,
                                set(data[head + 3:head + 4 * width * height:4])))
    return images
