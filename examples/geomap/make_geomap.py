#!/usr/bin/env python3
"""Draws geomap.png, the scan of a small geological sketch map, and writes its control points to geomap.gcp.

The map is made up. Its grid is in metres, X to the east and Y to the north; the sheet lies a little askew in the
scan, and paper has shrunk more across than along. Control points are crosses of the grid, read by eye.

Usage: make_geomap.py [FOLDER]    (default: beside this script)
"""
import math
import pathlib
import struct
import sys
import zlib

WIDTH, HEIGHT = 480, 360
WEST, EAST, SOUTH, NORTH, GRID = 4512000.0, 4514500.0, 5648000.0, 5650000.0, 500.0
METRES_ALONG, METRES_ACROSS, TILT = 6.10, 6.12, math.radians(1.4)
CORNER = (30.4, 9.3)  # column and row of the sheet's north-west corner
PALETTE = [(250, 248, 240), (40, 40, 40), (64, 120, 190), (236, 231, 178), (170, 205, 215), (214, 190, 150),
           (186, 205, 160), (178, 108, 110), (255, 255, 255), (200, 50, 40)]
PAPER, INK, WATER, ALLUVIUM, LIMESTONE, SANDSTONE, MARL, BASALT, WHITE, FAULT = range(len(PALETTE))
WELLS = [(4512420.0, 5649480.0), (4513190.0, 5648690.0), (4513820.0, 5649120.0), (4514150.0, 5648330.0)]
# X and Y of a cross, and by how many pixels the reading missed it.
READINGS = [(WEST, NORTH, 0.4, -0.3), (4513000.0, 5649500.0, -0.6, 0.2), (EAST, NORTH, 0.1, 0.5),
            (WEST, 5649000.0, -0.3, -0.6), (4513500.0, 5649000.0, 0.7, 0.3), (4514000.0, 5648500.0, 1.4, -0.9),
            (WEST, SOUTH, 0.2, 0.4), (4513000.0, SOUTH, -0.5, -0.2), (EAST, SOUTH, -0.4, 0.6)]
DIGITS = {'0': '75557', '1': '26227', '2': '71747', '3': '71717', '4': '55711', '5': '74717', '6': '74757',
          '7': '71122', '8': '75757', '9': '75717'}


def to_pixel(x, y):
    along, across = (x - WEST) / METRES_ALONG, (NORTH - y) / METRES_ACROSS
    return (CORNER[0] + along * math.cos(TILT) - across * math.sin(TILT),
            CORNER[1] + along * math.sin(TILT) + across * math.cos(TILT))


def to_world(column, row):
    c, r = column - CORNER[0], row - CORNER[1]
    return (WEST + METRES_ALONG * (c * math.cos(TILT) + r * math.sin(TILT)),
            NORTH - METRES_ACROSS * (r * math.cos(TILT) - c * math.sin(TILT)))


def river(y):
    return 4513350.0 + 260.0 * math.sin((y - SOUTH) / 330.0) + 0.25 * (NORTH - y)


def unit(x, y):
    """What crops out: layers that dip to the south-east, thrown by a fault, pierced by a plug of basalt."""
    if math.hypot(x - 4512780.0, 1.2 * (y - 5648560.0)) < 190.0 + 25.0 * math.sin(x / 40.0):
        return BASALT
    if abs(x - river(y)) < 95.0 + 35.0 * math.sin(y / 170.0):
        return ALLUVIUM
    side = (x - 4513900.0) + 0.55 * (y - 5649000.0)
    if abs(side) < 10.0:
        return FAULT
    depth = 0.55 * (x - WEST) - 0.85 * (y - SOUTH) + 70.0 * math.sin(x / 210.0) + (330.0 if side > 0 else 0.0)
    return LIMESTONE if depth < -620.0 else MARL if depth < 30.0 else SANDSTONE if depth < 640.0 else LIMESTONE


def colour(column, row):
    x, y = to_world(column, row)
    beside = max(WEST - x, x - EAST, SOUTH - y, y - NORTH)
    if beside > 0.0:
        return INK if beside < 8.0 or 22.0 < beside < 29.0 else PAPER
    from_well = min(math.hypot(x - wx, y - wy) for wx, wy in WELLS)
    if from_well < 26.0:
        return INK if from_well > 15.0 else WHITE
    gx, gy = (abs(v - GRID * math.floor(v / GRID + 0.5)) for v in (x, y))
    if max(gx, gy) < 28.0 and min(gx, gy) < 3.5:
        return INK
    return WATER if abs(x - river(y)) < 17.0 else unit(x, y)


def draw_number(pixels, number, left, top):
    for place, digit in enumerate(str(number)):
        for i, bits in enumerate(DIGITS[digit]):
            for j in range(3):
                if int(bits) & 4 >> j:
                    pixels[top + i][left + 4 * place + j] = INK


def draw():
    pixels = [[colour(column, row) for column in range(WIDTH)] for row in range(HEIGHT)]
    for number, (x, y) in enumerate(WELLS, 1):
        column, row = to_pixel(x, y)
        draw_number(pixels, number, round(column) + 6, round(row) - 6)
    for x in range(int(WEST), int(EAST) + 1, int(GRID)):
        column, row = to_pixel(float(x), SOUTH)
        draw_number(pixels, x, round(column) - 13, round(row) + 7)
    return pixels


def deflate(data):
    """Runs of one byte in the fixed code: bytes of zlib's own packing change with its version."""
    bits, count = 0, 0

    def put(value, width):
        nonlocal bits, count
        bits |= value << count
        count += width

    def put_code(symbol):
        code, width = ((symbol + 48, 8) if symbol < 144 else (symbol + 256, 9) if symbol < 256 else
                       (symbol - 256, 7) if symbol < 280 else (symbol - 88, 8))
        put(int(format(code, f'0{width}b')[::-1], 2), width)

    put(3, 3)
    at = 0
    while at < len(data):
        put_code(data[at])
        run = 0
        while at + 1 + run < len(data) and data[at + 1 + run] == data[at] and run < 258:
            run += 1
        at += 1
        if run == 258 or 3 <= run <= 10:
            put_code(285 if run == 258 else 254 + run)
            put(0, 5)
            at += run
        elif run > 10:
            extra = (run - 3).bit_length() - 3
            put_code(257 + 4 * extra + (run - 3 >> extra))
            put((run - 3) & (1 << extra) - 1, extra)
            put(0, 5)
            at += run
    put_code(256)
    return b'\x78\x01' + bits.to_bytes((count + 7) // 8, 'little') + struct.pack('>I', zlib.adler32(data))


def chunk(kind, data):
    return struct.pack('>I', len(data)) + kind + data + struct.pack('>I', zlib.crc32(kind + data))


def png(pixels):
    """Four bits a pixel; each row is stored as its difference from the one above."""
    above, lines = bytes(WIDTH // 2), b''
    for row in pixels:
        packed = bytes(a << 4 | b for a, b in zip(row[::2], row[1::2]))
        lines += b'\x02' + bytes((a - b) % 256 for a, b in zip(packed, above))
        above = packed
    return (b'\x89PNG\r\n\x1a\n' + chunk(b'IHDR', struct.pack('>2I5B', WIDTH, HEIGHT, 4, 3, 0, 0, 0)) +
            chunk(b'PLTE', bytes(v for rgb in PALETTE for v in rgb)) + chunk(b'IDAT', deflate(lines)) +
            chunk(b'IEND', b''))


def control_points():
    points = []
    for x, y, miss_column, miss_row in READINGS:
        column, row = to_pixel(x, y)
        points.append((x, y, round(2 * (column + miss_column)) / 2, round(2 * (row + miss_row)) / 2))
    return points


def residuals(points):
    """Of X and Y after the best plane through each: least squares by normal equations about the mean."""
    n = len(points)
    mx, my, mc, mr = (sum(p[k] for p in points) / n for k in range(4))
    c, r = [p[2] - mc for p in points], [p[3] - mr for p in points]
    cc, cr, rr = (sum(a * b for a, b in zip(u, v)) for u, v in ((c, c), (c, r), (r, r)))
    columns = []
    for wanted in ([p[0] - mx for p in points], [p[1] - my for p in points]):
        cw, rw = (sum(a * b for a, b in zip(u, wanted)) for u in (c, r))
        by_column, by_row = ((cw * rr - rw * cr) / (cc * rr - cr * cr), (rw * cc - cw * cr) / (cc * rr - cr * cr))
        columns.append([w - by_column * a - by_row * b for w, a, b in zip(wanted, c, r)])
    return list(zip(*columns))


def gcp(points):
    left = [math.hypot(*r) for r in residuals(points)]
    rms = math.sqrt(sum(d * d for d in left) / len(left))
    return ('# X, minus Y, column, row: metres, and pixels with rows counted downwards\n'
            f'# first degree: RMS {rms:.4f} m, longest {max(left):.4f} m\n' +
            ''.join(f'{x:.6f}\t{-y:.6f}\t{column:.6f}\t{row:.6f}\n' for x, y, column, row in points))


def main():
    folder = pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else pathlib.Path(__file__).parent
    (folder / 'geomap.png').write_bytes(png(draw()))
    (folder / 'geomap.gcp').write_bytes(gcp(control_points()).encode())


if __name__ == '__main__':
    main()
