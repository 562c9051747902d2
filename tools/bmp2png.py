#!/usr/bin/python3
"""Turns bitmap files of 24 bits a pixel into PNG files beside them, for viewers and documents."""

import argparse
import pathlib
import struct
import sys
import zlib


def chunk(name, data):
    return struct.pack(">I", len(data)) + name + data + struct.pack(">I", zlib.crc32(name + data))


def png_of(bitmap):
    """The PNG form of a bitmap file's bytes."""
    magic, offset = struct.unpack_from("<2s8xI", bitmap)
    width, height, _, depth = struct.unpack_from("<iiHH", bitmap, 18)
    if magic != b"BM" or depth != 24 or height < 0:
        raise ValueError("no bitmap of 24 bits a pixel that begins at the bottom")
    pitch = (width * 3 + 3) // 4 * 4
    rows = bytearray()
    for y in range(height - 1, -1, -1):
        row = bytearray(bitmap[offset + y * pitch:offset + y * pitch + width * 3])
        row[0::3], row[2::3] = row[2::3], row[0::3]
        rows += b"\0" + row
    return (b"\x89PNG\r\n\x1a\n"
            + chunk(b"IHDR", struct.pack(">IIBBBBB", width, height, 8, 2, 0, 0, 0))
            + chunk(b"IDAT", zlib.compress(bytes(rows), 9)) + chunk(b"IEND", b""))


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("bitmaps", nargs="+", type=pathlib.Path)
    parser.add_argument("--replace", action="store_true", help="remove the bitmap files")
    arguments = parser.parse_args()
    for path in arguments.bitmaps:
        try:
            path.with_suffix(".png").write_bytes(png_of(path.read_bytes()))
        except (ValueError, struct.error) as fault:
            sys.exit(f"{path}: {fault}")
        if arguments.replace:
            path.unlink()


if __name__ == "__main__":
    main()
