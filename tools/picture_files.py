"""The platform's files of pictures: bitmaps of 24 bits a pixel, and icons of several images."""

import struct

INFO_HEADER = "<IiiHHIIiiII"  # BITMAPINFOHEADER
DOTS_PER_METRE = 3780  # 96 an inch


def rows_bottom_up(canvas):
    """The rows as blue, green, red and alpha, the last one first."""
    canvas.surface.flush()
    data, stride = bytes(canvas.surface.get_data()), canvas.surface.get_stride()
    for y in range(canvas.height - 1, -1, -1):
        yield data[y * stride:y * stride + canvas.width * 4]


def bitmap_file(canvas):
    """A .bmp of 24 bits a pixel."""
    padding = bytes(-canvas.width * 3 % 4)
    pixels = b"".join(b"".join(row[i:i + 3] for i in range(0, len(row), 4)) + padding
                      for row in rows_bottom_up(canvas))
    info = struct.pack(INFO_HEADER, 40, canvas.width, canvas.height, 1, 24, 0, len(pixels),
                       DOTS_PER_METRE, DOTS_PER_METRE, 0, 0)
    offset = 14 + len(info)
    return struct.pack("<2sIHHI", b"BM", offset + len(pixels), 0, 0, offset) + info + pixels


def straight(row):
    """Pixels whose colours are no longer multiplied by their alpha, as icons want them."""
    for i in range(0, len(row), 4):
        alpha = row[i + 3]
        if alpha:
            yield bytes(min(255, (part * 255 + alpha // 2) // alpha) for part in row[i:i + 3])
            yield bytes((alpha,))
        else:
            yield bytes(4)


def icon_image(canvas):
    """One image of an icon: 32 bits a pixel, then the mask of what is wholly transparent."""
    rows = list(rows_bottom_up(canvas))
    pixels = b"".join(b"".join(straight(row)) for row in rows)
    mask = b""
    for row in rows:
        bits = "".join("0" if row[i + 3] else "1" for i in range(0, len(row), 4))
        bits += "0" * (-len(bits) % 32)
        mask += int(bits, 2).to_bytes(len(bits) // 8, "big")
    return struct.pack(INFO_HEADER, 40, canvas.width, 2 * canvas.height, 1, 32, 0,
                       len(pixels) + len(mask), 0, 0, 0, 0) + pixels + mask


def icon_file(canvases):
    images = [icon_image(canvas) for canvas in canvases]
    file = struct.pack("<HHH", 0, 1, len(images))
    offset = len(file) + 16 * len(images)
    for canvas, image in zip(canvases, images):
        file += struct.pack("<BBBBHHII", canvas.width, canvas.height, 0, 0, 1, 32, len(image), offset)
        offset += len(image)
    return file + b"".join(images)
