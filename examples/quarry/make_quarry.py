#!/usr/bin/env python3
"""Writes the quarry project beside this script: once as a text project, once as an HDF5 project.

Everything follows from a few formulas, and every number is a multiple of 1/8, so that text, 32-bit and 64-bit
files hold the same. Lengths are metres; x runs east, y north, z up. Needs h5py.
"""
import math
import pathlib
import struct

import h5py
import numpy

FOLDER = pathlib.Path(__file__).parent
CENTRE = (4200.0, 2150.0)
# From the middle of the floor outwards: nodes, radius, elevation. Two faces with a berm between them.
RINGS = [(1, 0.0, 142.0), (8, 40.0, 142.25), (12, 75.0, 143.0), (16, 95.0, 158.0), (24, 130.0, 176.0)]
FACES_NORTH = 6.0  # the rim is that much higher in the north than in the south
TIN_NAME, TIN_ID = 'Quarry floor', 1
SCATTER_NAME, SCATTER_ID = 'Seep samples', 3
OBJECT_TIN, OBJECT_SCATTER = 1, 5
MATERIALS = ['Topsoil', 'Clay', 'Limestone', 'Marl']
# Name, x, y, and the tops of the layers: (z, material number). The last contact is the bottom of the hole.
BORES = [
    ('QB 1', 4090.5, 2260.25, [(184.5, 1), (183.75, 2), (178.125, 3), (131.5, 4), (120.0, 4)]),
    ('QB 2', 4325.0, 2240.0, [(181.0, 1), (180.25, 3), (129.875, 4), (118.5, 4)]),
    ('QB 3', 4215.75, 2010.5, [(172.25, 1), (171.5, 2), (169.0, 3), (127.25, 4), (115.0, 4)]),
]


def eighths(value):
    return round(value * 8) / 8


def nodes():
    points = []
    for count, radius, z in RINGS:
        for i in range(count):
            angle = 2 * math.pi * i / count
            # The pit is longer from west to east; a ramp leaves the floor in the east and climbs the faces.
            x, y = 1.25 * radius * math.cos(angle), radius * math.sin(angle)
            ramp = -5.0 if radius > 75.0 and abs(y) < 20.0 and x > 0.0 else 0.0
            points.append((CENTRE[0] + eighths(x), CENTRE[1] + eighths(y),
                           eighths(z + ramp + FACES_NORTH * (y / 130.0) * (z - 142.0) / 34.0)))
    return points


def triangles():
    """Fills the bands between neighbouring rings, counter-clockwise; node numbers from 0."""
    faces, first = [], 0
    for (inner, _, _), (outer, _, _) in zip(RINGS, RINGS[1:]):
        second, i, j = first + inner, 0, 0
        while i < (inner if inner > 1 else 0) or j < outer:
            a, b = first + i % inner, second + j % outer
            if j < outer and (inner == 1 or i == inner or (j + 1) * inner <= (i + 1) * outer):
                faces.append((a, b, second + (j + 1) % outer))
                j += 1
            else:
                faces.append((a, b, first + (i + 1) % inner))
                i += 1
        first = second
    return faces


def water(x, y, z):
    """Groundwater after the pumps have stopped: falls to the south-east, drawn down in the pit."""
    distance = math.hypot(x - CENTRE[0], y - CENTRE[1])
    return eighths(149.0 - (x - 4000.0) / 160.0 + (y - 2000.0) / 100.0 + min(distance, 160.0) / 32.0)


def thickness(x, y, z):
    """Limestone that is left above the marl."""
    return eighths(z - (129.0 - (x - CENTRE[0]) / 90.0 + (y - CENTRE[1]) / 70.0))


def samples():
    points, values = [], []
    for i in range(12):
        angle, radius = 0.7 + 2.4 * i, 30.0 + 11.0 * i
        x, y = CENTRE[0] + eighths(radius * math.cos(angle)), CENTRE[1] + eighths(0.75 * radius * math.sin(angle))
        points.append((x, y))
        values.append(eighths(38.0 + 240.0 * math.exp(-radius / 70.0) + 6.0 * (i % 3)))
    return points, values


def lines(name, *parts):
    (FOLDER / name).write_text('\n'.join(parts) + '\n', encoding='ascii', newline='\n')


def numbers(rows):
    return '\n'.join(' '.join('%g' % v if isinstance(v, int) else '%.3f' % v for v in row) for row in rows)


def ascii_dataset(name, kind, owner, title, values, cells):
    lines(name, 'DATASET', 'OBJTYPE "%s"' % kind, 'BEGSCL', 'OBJID %d' % owner, 'ND %d' % len(values),
          'NC %d' % cells, 'NAME "%s"' % title, 'TS 0 0.0', numbers([(v,) for v in values]), 'ENDDS')


def record(*parts):
    body = b''.join(parts)
    mark = struct.pack('<i', len(body))
    return mark + body + mark


def binary_dataset(name, kind, owner, title, values, cells):
    def card(number, *payload):
        return struct.pack('<%di' % (1 + len(payload)), number, *payload)
    (FOLDER / name).write_bytes(b''.join([
        record(card(3000), card(100, kind), card(110, 4), card(120, 1)),
        record(card(130)),
        record(card(160, owner)),
        record(card(170, len(values))),
        record(card(180, cells)),
        record(card(190), title.encode().ljust(40, b'\0')),
        record(card(200), struct.pack('<bf', 0, 0.0)),
        record(struct.pack('<%df' % len(values), *values)),
        record(card(210))]))


def text_project(points, faces, tin_data, places, sulfate):
    lines('quarry.gpr', 'GMSPROJ', '# A small limestone quarry.', 'STNGS quarry.ini', 'TIN quarry.tin',
          'SCAT2D quarry.xy', 'BHOLE quarry.bor', 'MAT quarry.mat', 'DATA quarry_thickness.bin',
          'DATA quarry_water.dat', 'DATA quarry_samples.dat')
    lines('quarry.ini', '[Units]', 'Length Units=m')
    lines('quarry.tin', 'TIN', 'BEGT', 'ID %d' % TIN_ID, 'TNAM "%s"' % TIN_NAME, 'VERT %d' % len(points),
          numbers(points), 'TRI %d' % len(faces), numbers([tuple(n + 1 for n in face) for face in faces]), 'ENDT')
    ascii_dataset('quarry_water.dat', 'tin', TIN_ID, 'water', tin_data['water'], len(faces))
    binary_dataset('quarry_thickness.bin', OBJECT_TIN, TIN_ID, 'thickness', tin_data['thickness'], len(faces))
    lines('quarry.xy', 'SCAT2D', 'BEGSET', 'NAME "%s"' % SCATTER_NAME, 'ID %d' % SCATTER_ID,
          'IXY %d' % len(places), numbers([(i + 1, x, y) for i, (x, y) in enumerate(places)]), 'ENDSET')
    ascii_dataset('quarry_samples.dat', 'scat2d', SCATTER_ID, 'sulfate', sulfate, 0)
    lines('quarry.mat', 'MATERIALS', *['MN %d "%s"' % (i + 1, name) for i, name in enumerate(MATERIALS)])
    text = []
    for name, x, y, contacts in BORES:
        text += ['BEGH', 'NAME "%s"' % name, 'CONT %d' % len(contacts),
                 numbers([(x, y, z, material) for z, material in contacts]), 'ENDH']
    lines('quarry.bor', 'BHOLES', *text)


def hdf5_project(points, faces, tin_data, places, sulfate):
    def strings(texts):
        return numpy.array([t.encode() for t in texts], dtype='S%d' % (1 + max(map(len, texts))))

    with h5py.File(FOLDER / 'quarry_hdf5.gpr', 'w') as project:
        def put(name, data, kind):
            project.create_dataset(name, data=numpy.asarray(data, dtype=kind), track_times=False)

        def points_module(module, name, places, datasets):
            put('%s/%s/PROPERTIES/Name' % (module, name), strings([name]), None)
            put('%s/%s/Nodes/NodeLocs' % (module, name), places, '<f8')
            put('%s/%s/Datasets/Guid' % (module, name), strings(['quarry ' + name]), None)
            for title, values in datasets.items():
                put('%s/%s/Datasets/%s/Values' % (module, name, title), values, '<f8')

        points_module('TINModule', TIN_NAME, points, tin_data)
        put('TINModule/%s/Elements/Nodeids' % TIN_NAME, [[n + 1 for n in face] for face in faces], '<i4')
        points_module('2DScatterModule', SCATTER_NAME, [(x, y, 0.0) for x, y in places], {'sulfate': sulfate})
        contacts = [(x, y, z, material) for _, x, y, layers in BORES for z, material in layers]
        for name, column in zip(('X Locations', 'Y Locations', 'Z Locations'), zip(*contacts)):
            put('BoreholeModule/' + name, column, '<f8')
        put('BoreholeModule/Material', [c[3] for c in contacts], '<i4')
        put('BoreholeModule/Number of Contacts', [len(bore[3]) for bore in BORES], '<i4')
        put('BoreholeModule/Name', strings([bore[0] for bore in BORES]), None)
        # The first material of such a table stands for "none" and is passed over by readers.
        put('Material/Id', range(len(MATERIALS) + 1), '<i4')
        put('Material/Name', strings(['none'] + MATERIALS), None)


def main():
    points, faces = nodes(), triangles()
    tin_data = {'water': [water(*p) for p in points], 'thickness': [thickness(*p) for p in points]}
    model = (points, faces, tin_data, *samples())
    text_project(*model)
    hdf5_project(*model)


if __name__ == '__main__':
    main()
