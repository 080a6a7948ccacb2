#!/usr/bin/python3
"""Converts a published GMS model and looks in the mesh for the cells of its observation wells, whose world
coordinates and cells stand in the model's own files.

usage: check_wells.py PLXCONVERT LIBRARY

LIBRARY holds models/gms_CH00365. Ends with 77 (skipped) where it does not exist.
"""
import math
import pathlib
import subprocess
import sys
import tempfile

SKIPPED = 77
TOLERANCE = 0.01  # feet


def read_wells(path):
    """(name, x, y, layer, row, column, row offset, column offset) of each well; offsets in cell widths."""
    lines = path.read_text().splitlines()
    places = {}
    for line in lines:
        if line.startswith('#GMSCOMMENT'):
            words = line.replace(',', ' ').split()
            places[words[-1]] = float(words[4]), float(words[5])
    for line in lines:
        words = line.split()
        if words and words[0] in places:
            yield (words[0], *places[words[0]], *map(int, words[1:4]), float(words[6]), float(words[7]))


def read_widths(dis, super_file):
    """DELR, DELC, origin and rotation in radians."""
    lines = [line for line in dis.read_text().splitlines() if not line.startswith('#')]
    first = next(i for i, line in enumerate(lines) if line.startswith('INTERNAL'))
    delr, delc = ([float(word) for word in lines[first + i].split()] for i in (1, 3))
    cards = {}
    for words in map(str.split, super_file.read_text().splitlines()):
        cards.setdefault(words[0] if words else '', words[1:])
    return delr, delc, [float(word) for word in cards['ORIG'][:2]], math.radians(float(cards['ROTZ'][0]))


def read_layer_cells(out, layer):
    """Plan corners of a layer's cells: row edge and column edge from (0, 0) counter to the first corner."""
    coordinates = (out / 'GENERAL' / 'node_coordinates.xyz').read_text().splitlines()
    nodes = [tuple(map(float, line.split()[:2])) for line in coordinates if not line.startswith('#')]
    field = next((out / 'MODFLOW').glob('*.pff')).read_text(errors='replace').splitlines()
    sets = [line.split() for line in field if line.startswith('CELL_SET_DEF')]
    words = next(words for words in sets if '"Layer_%d"' % (layer - 1) in words)
    count, row = int(words[2]), int(words[words.index('ROW') + 1])
    rows = (out / 'GENERAL' / 'connectivity.conn').read_text().splitlines()[row - 1:row - 1 + count]
    return [[nodes[int(node)] for node in line.split()[:4]] for line in rows]


def locate(cells, x, y):
    """Corners of the cell that holds a point."""
    for corners in cells:
        sides = zip(corners, corners[1:] + corners[:1])
        crosses = [(bx - ax) * (y - ay) - (by - ay) * (x - ax) for (ax, ay), (bx, by) in sides]
        if min(crosses) >= 0 or max(crosses) <= 0:
            return corners
    return None


def index_of(value, widths):
    """Cell number from 1 at a distance from the first edge."""
    for number, width in enumerate(widths, 1):
        if value < width:
            return number
        value -= width
    return 0


def check_well(well, cells, widths):
    name, x, y, layer, row, column, row_offset, column_offset = well
    delr, delc, (x0, y0), angle = widths
    corners = locate(cells, x, y)
    if corners is None:
        return '%s: in no cell of layer %d' % (name, layer)
    center = [sum(axis) / 4 for axis in zip(*corners)]

    def local(px, py):
        """Distances from the upper left corner of the grid, along the rows and down the columns."""
        px, py = px - x0, py - y0
        return (px * math.cos(angle) + py * math.sin(angle),
                sum(delc) - (py * math.cos(angle) - px * math.sin(angle)))

    along, down = local(*center)
    found = index_of(down, delc), index_of(along, delr)
    if found != (row, column):
        return '%s: in row %d, column %d instead of %d, %d' % (name, *found, row, column)
    well_along, well_down = local(x, y)
    error = math.hypot(well_along - along - column_offset * delr[column - 1],
                       well_down - down - row_offset * delc[row - 1])
    return '%s: %.4f from its place in the cell' % (name, error) if error > TOLERANCE else None


def main():
    tool, library = sys.argv[1:3]
    model = pathlib.Path(library) / 'models' / 'gms_CH00365'
    inputs = model / 'CH00365_MODFLOW' / 'CH00365'
    if not model.is_dir():
        print('no model library at %s' % library)
        return SKIPPED
    wells = list(read_wells(inputs.with_suffix('.hob')))
    widths = read_widths(inputs.with_suffix('.dis'), inputs.with_suffix('.mfs'))
    with tempfile.TemporaryDirectory(prefix='plx_wells_') as out:
        command = [tool, 'modflow', model / 'CH00365.gpr', '--dest', out, '--quiet']
        subprocess.run(command, check=True)
        layers = {layer: read_layer_cells(pathlib.Path(out), layer) for layer in {well[3] for well in wells}}
    faults = [fault for well in wells if (fault := check_well(well, layers[well[3]], widths))]
    print('\n'.join(faults) or '%d wells lie in their cells' % len(wells))
    return 1 if faults or len(wells) != 5 else 0


if __name__ == '__main__':
    sys.exit(main())
