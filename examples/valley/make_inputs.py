#!/usr/bin/env python3
"""Writes the text inputs of the valley model beside this script.

Everything follows from a few formulas: the line of the valley, its width, its floor and the filled channel below
it. Lengths are metres, times days; x runs east from the western edge, y south from the northern one.
"""
import math
import pathlib

FOLDER = pathlib.Path(__file__).parent
LAYERS = 3
# The grid is finer around the well field in the east and along the middle of the valley.
WIDTHS = [100.0] * 30 + [80.0] * 3 + [50.0] * 14 + [80.0] * 3 + [100.0] * 10
HEIGHTS = [90.0] * 13 + [60.0] * 4 + [40.0] * 8 + [60.0] * 4 + [90.0] * 11
ROWS, COLUMNS = len(HEIGHTS), len(WIDTHS)
BASE = 228.0


def centres(sizes):
    edges = [0.0]
    for size in sizes:
        edges.append(edges[-1] + size)
    return [(a + b) / 2 for a, b in zip(edges, edges[1:])]


X, Y = centres(WIDTHS), centres(HEIGHTS)


def middle(x):
    """y of the river."""
    return sum(HEIGHTS) / 2 + 260.0 * math.sin(x / 900.0) + 90.0 * math.sin(x / 310.0 + 1.0)


def half_width(x, layer):
    """From the river to the edge of a layer's aquifer: the lower ones fill a narrower channel."""
    return (1050.0 + 180.0 * math.sin(x / 1300.0 + 0.6)) * (1.0, 0.84, 0.62)[layer]


def across(x, y):
    """0 at the river, 1 at the valley's edge."""
    return abs(y - middle(x)) / half_width(x, 0)


def floor(x):
    return 318.0 - 0.0022 * x


def top(x, y):
    bumps = 0.6 * math.sin(x / 170.0) * math.cos(y / 140.0)
    return floor(x) + 16.0 * min(across(x, y), 1.4) ** 2 + bumps


def surfaces(x, y):
    depth = max(0.0, 1.0 - across(x, y) ** 2)
    ground = top(x, y)
    gravel = min(ground - 4.0, floor(x) - 9.0 - 8.0 * depth + 0.5 * math.sin(x / 260.0))
    silt = gravel - 3.0 - 7.0 * depth * (1.0 + 0.3 * math.sin(x / 700.0 + y / 500.0))
    return ground, gravel, silt


def grid(value):
    return [[value(i, j) for j in range(COLUMNS)] for i in range(ROWS)]


def flag(layer, i, j):
    """1 inside the aquifer, -1 where the valley's two ends hold the head of the upper gravel, else 0."""
    if abs(Y[i] - middle(X[j])) > half_width(X[j], layer):
        return 0
    return -1 if layer == 0 and j in (0, COLUMNS - 1) else 1


def lines(rows, form, per_line):
    for row in rows:
        for at in range(0, len(row), per_line):
            yield ''.join(form % value for value in row[at:at + per_line])


def write(name, *parts):
    with open(FOLDER / name, 'w', newline='\n') as file:
        for part in parts:
            for line in [part] if isinstance(part, str) else part:
                print(line.rstrip(), file=file)


def write_grid_files():
    ground, gravel, silt = ([[surfaces(x, y)[n] for x in X] for y in Y] for n in range(3))
    write('valley_top.dat', lines(ground, ' %.2f', 15))
    write('valley_silt.dat', lines(silt, ' %.3f', 12))
    write('valley.dis',
          '# Valley of the Alder Brook: upper gravel, silt, lower gravel', '# metres, days',
          '%4d %4d %4d    2    4    2   NLAY NROW NCOL NPER ITMUNI LENUNI' % (LAYERS, ROWS, COLUMNS), '0 0 0   LAYCBD',
          'INTERNAL 1.0 (FREE) -1   DELR', lines([WIDTHS], ' %g', 10),
          'INTERNAL 1.0 (10F8.1) -1   DELC', lines([HEIGHTS], '%8.1f', 10),
          'OPEN/CLOSE valley_top.dat 1.0 (FREE) -1   top of the ground',
          'INTERNAL 1.0 (12F8.2) -1   bottom of the upper gravel', lines(gravel, '%8.2f', 12),
          'OPEN/CLOSE valley_silt.dat 1.0 (FREE) -1   bottom of the silt',
          'CONSTANT %.1f   base of the lower gravel' % BASE,
          '245.0  1 1.0 SS   winter and spring', '120.0 10 1.2 TR   dry summer')
    flags = [grid(lambda i, j, k=k: flag(k, i, j)) for k in range(LAYERS)]
    heads = grid(lambda i, j: floor(X[j]) - 2.0 + 1.2 * min(across(X[j], Y[i]), 1.0))
    write('valley_ibound_1.dat', lines(flags[0], ' %d', 30))
    write('valley.ba6', '# Cells and starting heads', 'FREE',
          'OPEN/CLOSE valley_ibound_1.dat 1 (FREE) -1   upper gravel',
          'INTERNAL 1 (60I3) -1   silt', lines(flags[1], '%3d', 60),
          'INTERNAL 1 (FREE) -1   lower gravel', lines(flags[2], ' %d', 60),
          '1.0E+30   head of cells that are none',
          'INTERNAL 1.0 (15F8.2) -1   heads of the upper gravel', lines(heads, '%8.2f', 15),
          'CONSTANT 312.0', 'CONSTANT 312.0')


def write_flow_package():
    upper = grid(lambda i, j: 14 + 22 * max(0.0, 1.0 - across(X[j], Y[i])) + 4 * math.sin(X[j] / 430.0))
    write('valley.lpf', '# The upper gravel keeps its full thickness; its specific storage spreads a drainable',
          '# porosity of 0.12 over about 15 m.', '51 -888.0 0   ILPFCB HDRY NPLPF',
          '0 0 0   LAYTYP', '0 0 0   LAYAVG', '1.0 1.0 1.0   CHANI', '0 0 0   LAYVKA', '0 0 0   LAYWET',
          'INTERNAL 1.0 (20F6.1) -1   K of the upper gravel', lines(upper, '%6.1f', 20),
          'CONSTANT 2.5   vertical', 'CONSTANT 8.0E-3   specific storage',
          'CONSTANT 0.08  K of the silt', 'CONSTANT 4.0E-3   vertical', 'CONSTANT 6.0E-5   specific storage',
          'CONSTANT 26.0  K of the lower gravel', 'CONSTANT 2.6   vertical', 'CONSTANT 1.5E-5   specific storage')
    write('valley.pcg', '60 300 1   MXITER ITER1 NPCOND',
          '1.0E-6 1.0E-6 1.0 0 0 0 1.0   HCLOSE RCLOSE RELAX NBPOL IPRPCG MUTPCG DAMP')


def river_cells():
    """Cells along the river from west to east; the two ends hold their head anyway."""
    row = [min(range(ROWS), key=lambda i, x=x: abs(Y[i] - middle(x))) for x in X]
    for j in range(1, COLUMNS - 1):
        step = 1 if row[j] >= row[j - 1] else -1
        for i in range(row[j - 1] + step if row[j] != row[j - 1] else row[j], row[j] + step, step):
            yield i, j


def write_stresses():
    river = []
    for i, j in river_cells():
        stage = floor(X[j]) - 1.4
        bed = 0.05 if X[j] < 3000.0 else 0.12
        conductance = bed * 9.0 * min(WIDTHS[j], HEIGHTS[i]) / 0.5
        river.append('1 %d %d %.3f %.2f %.3f %d' % (i + 1, j + 1, stage, conductance, stage - 1.6, 1 + (X[j] >= 3000.0)))
    write('valley.riv', '# Layer Row Column Stage Conductance Bed Reach', '%d 51 AUXILIARY REACH' % len(river),
          '%d 0   spring' % len(river), river, '-1 0   summer')
    drains = []
    for j in range(6, 24):
        y = middle(X[j]) + 0.55 * half_width(X[j], 0)
        i = min(range(ROWS), key=lambda n: abs(Y[n] - y))
        drains.append('1 %d %d %.2f 35.0' % (i + 1, j + 1, top(X[j], Y[i]) - 4.0 - 0.0006 * (X[j] - X[6])))
    write('valley.drn', '# The ditch on the southern terrace: Layer Row Column Elevation Conductance',
          '%d 51' % len(drains), '%d 0' % len(drains), drains, '-1 0')
    wells = [(3, 18, 36, 950.0), (3, 21, 40, 1200.0), (3, 24, 44, 800.0), (1, 12, 20, 120.0)]
    summer = [(k, i, j, 1.4 * q) for k, i, j, q in wells] + [(3, 20, 46, 700.0), (1, 27, 14, 260.0)]
    write('valley.wel', '# Layer Row Column Rate', '%d 51' % len(summer),
          *(part for period in (wells, summer)
            for part in ('%d 0' % len(period), ['%d %d %d %.1f' % (k, i, j, -q) for k, i, j, q in period])))
    zones = grid(lambda i, j: 7.5 if across(X[j], Y[i]) > 0.75 else 5.5 if X[j] < 3000.0 else 4.5)
    write('valley.rch', '# To the highest cell', '3 51   NRCHOP IRCHCB', '1   INRECH, spring',
          'INTERNAL 1.0E-4 (30F5.1) -1', lines(zones, '%5.1f', 30), '1   INRECH, summer', 'CONSTANT 0.5E-4')


def write_lists():
    steps = [(1, 1)] + [(2, s) for s in range(1, 11)]
    write('valley.oc', 'HEAD SAVE UNIT 50', 'COMPACT BUDGET AUXILIARY',
          *('PERIOD %d STEP %d\n  SAVE HEAD\n  SAVE BUDGET' % s for s in steps))
    names = ['LIST 6 valley.lst', 'DIS 10 valley.dis', 'BAS6 11 valley.ba6', 'LPF 12 valley.lpf', 'WEL 13 valley.wel',
             'DRN 14 valley.drn', 'RIV 15 valley.riv', 'RCH 16 valley.rch', 'PCG 17 valley.pcg', 'OC 18 valley.oc',
             'DATA(BINARY) 50 valley.hds', 'DATA(BINARY) 51 valley.cbb']
    write('valley.nam', '# Valley of the Alder Brook', names)


def control(form, value, layout=''):
    """A control record of MT3DMS: fields of ten columns, the format in twenty."""
    return '%10d%10s %s' % (form, value, layout)


def write_transport():
    """Nitrate comes down with the recharge of the fields, most of it south of the brook; a tip beside the drains
    keeps its cell full of tracer, and a spill of it lies between the wells."""
    def between(i, j):
        return (Y[i] - middle(X[j])) / half_width(X[j], 0)

    surface = [[[surfaces(x, y)[n] for x in X] for y in Y] for n in range(3)] + [grid(lambda i, j: BASE)]
    thickness = [grid(lambda i, j, k=k: surface[k][i][j] - surface[k + 1][i][j]) for k in range(LAYERS)]
    pores = grid(lambda i, j: 0.16 + 0.08 * max(0.0, 1.0 - across(X[j], Y[i])))
    tip = (0, 30, 33)

    def boundary(layer, i, j):
        return -1 if (layer, i, j) == tip else flag(layer, i, j)

    def spill(i, j):
        distance = math.hypot(X[j] - 3500.0, Y[i] - 1840.0)
        return 40.0 * math.exp(-(distance / 130.0) ** 2) if distance < 400.0 else 0.0

    nitrate = grid(lambda i, j: 8.0 + 24.0 * min(1.0, max(0.0, between(i, j))))
    tracer = grid(lambda i, j: 100.0 if (0, i, j) == tip else spill(i, j))
    layer_arrays = []
    for k in range(LAYERS):
        layer_arrays += [control(103, '1.0'), lines(thickness[k], ' %.2f', 15)]
    boundaries = []
    for k in range(LAYERS):
        boundaries += [control(100, '1', '(60I3)'), lines(grid(lambda i, j, k=k: boundary(k, i, j)), '%3d', 60)]
    times = [60.0, 120.0, 180.0, 240.0, 300.0, 365.0]
    write('valley.btn', 'Valley of the Alder Brook', 'metres, days, g/m3',
          ('%10d' * 6) % (LAYERS, ROWS, COLUMNS, 2, 2, 2), '   d   m   g', ' T F T F F F F F F F', ' 0 0 0',
          control(103, '1.0'), lines([WIDTHS], ' %g', 10), control(103, '1.0'), lines([HEIGHTS], ' %g', 10),
          control(103, '1.0'), lines(surface[0], ' %.2f', 15), *layer_arrays,
          control(103, '1.0'), lines(pores, ' %.3f', 12), control(0, '0.35'),
          control(100, '0.01', '(20F5.1)'), lines(grid(lambda i, j: 21.0 + 2.0 * math.sin(X[j] / 700.0)), '%5.1f', 20),
          *boundaries,
          control(100, '1.0', '(15F6.1)'), lines(nitrate, '%6.1f', 15), control(0, '12.0'), control(0, '6.0'),
          control(103, '1.0'), lines(tracer, ' %.4g', 20), control(0, '0.0'), control(0, '0.0'),
          '   1.0E+30       0.0', ('%10d' * 4) % (0, 0, 0, 0) + '         T',
          '%10d' % len(times), ''.join('%10.1f' % t for t in times), '%10d%10d' % (0, 1), '         T%10d' % 1,
          '     245.0         1       1.0', '       0.0     10000       1.0       0.0',
          '     120.0        10       1.2', '       0.0     10000       1.0       0.0')
    fields = grid(lambda i, j: 70.0 if between(i, j) > 0.3 else 25.0 if between(i, j) < -0.4 else 10.0)
    write('valley.ssm', ' T T T F T F F F F F', '%10d' % 1000, '%10d   winter and spring' % 1,
          control(100, '1.0', '(30F4.0)'), lines(fields, '%4.0f', 30), control(0, '0.0'), '%10d' % 0,
          '%10d   summer' % -1, '%10d' % 0)
    write('valley.mts', 'MT3DSUP', 'SPC Nitrate', 'SPC Tracer', 'REFTIME 2023 12 1 0 0 0', 'UNITS d m g',
          'BTN valley.btn', 'SSM valley.ssm', 'CON valley001.ucn', 'CON valley002.ucn', 'END')


write_grid_files()
write_flow_package()
write_stresses()
write_lists()
write_transport()
