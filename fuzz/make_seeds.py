#!/usr/bin/env python3
"""Makes the inputs from which the fuzz targets start, out of the examples.

usage: make_seeds.py SOLVER FOLDER     SOLVER: the program valley_solver; FOLDER/<target> gets the seeds

The valley model is solved, cut down to 2 layers, 3 rows and 4 columns, the grid that the targets have, and written as
make_dresses.py writes it. Each file comes with several first bytes, which choose the ways of reading.
"""
import pathlib
import shutil
import struct
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
VALLEY, QUARRY, SMALL = ROOT / 'examples/valley', ROOT / 'examples/quarry', ROOT / 'tests/data/small'
sys.path.insert(0, str(VALLEY))
import make_dresses  # noqa: E402

LAYERS, ROWS, COLUMNS = 2, 3, 4
CELLS = ROWS * COLUMNS
SEPARATOR = b'\n====\n'
MOST_BYTES = 40_000


def cut(model, values):
    """The first rows and columns of a layer's values, where there is still something to see."""
    return [values[row * model.columns + column] for row in range(ROWS) for column in range(COLUMNS)]


def shrink(model):
    small = make_dresses.Valley.__new__(make_dresses.Valley)
    small.layers, small.rows, small.columns, small.cells = LAYERS, ROWS, COLUMNS, CELLS
    small.widths, small.heights = model.widths[:COLUMNS], model.heights[:ROWS]
    small.surfaces = [cut(model, surface) for surface in model.surfaces[:LAYERS + 1]]
    small.flags = [cut(model, flags) for flags in model.flags[:LAYERS]]
    small.heads = [cut(model, heads) for heads in model.heads[:LAYERS]]
    small.soils = [[cut(model, soil) for soil in soils] for soils in model.soils[:LAYERS]]
    small.periods, small.no_flow = model.periods, model.no_flow
    return small


def layers_of(model, path):
    """(header without NCOL and NROW, layer, values) of a head or concentration file, of the small grid's layers."""
    data, size = path.read_bytes(), 44 + 4 * model.cells
    for at in range(0, min(len(data), 6 * model.layers * size), size):
        columns, rows, layer = struct.unpack_from('<3i', data, at + 32)
        values = struct.unpack_from('<%df' % model.cells, data, at + 44)
        if layer <= LAYERS:
            yield data[at:at + 32], layer, cut(model, values)


def record(parts, markers):
    body = b''.join(parts)
    return struct.pack('<i', len(body)) * markers + body + struct.pack('<i', len(body)) * markers


def reals(values, width):
    return struct.pack('<%d%s' % (len(values), 'f' if width == 4 else 'd'), *values)


def layer_file(records, markers=False, width=4, times=2):
    """times: reals in the header, behind the numbers."""
    out = b''
    for header, layer, values in records:
        numbers = 4 * (4 - times)
        stamp = reals(struct.unpack_from('<%df' % times, header, numbers), width)
        place = struct.pack('<3i', COLUMNS, ROWS, layer)
        out += record([header[:numbers], stamp, header[16:], place], markers)
        out += record([reals(values, width)], markers)
    return out


def link_file(markers=False, width=4, old=False):
    def array(text, values, layers=b''):
        head = struct.pack('<5i', 1, 1, COLUMNS, ROWS, LAYERS) + text.ljust(16).encode()
        return record([head], markers) + (record([layers], markers) if layers else b'') + record(
            [reals(values, width)], markers)

    def entries(text, places):
        head = struct.pack('<5i', 1, 1, COLUMNS, ROWS, LAYERS) + text.ljust(16).encode()
        out = record([head, struct.pack('<i', len(places))], markers)
        return out + b''.join(record([struct.pack('<3i', *p), reals([-2.5], width)], markers) for p in places)

    count = 9 if old else 21
    out = record([b'MT3D3.00.99' if old else b'MT3D4.00.00', struct.pack('<%di' % count, *[1] * count)], markers)
    for name in ('THKSAT', 'QXX', 'QYY', 'QZZ', 'STO'):
        out += array(name, [0.5 * n for n in range(CELLS * LAYERS)])
    for name in ('CNH', 'WEL', 'DRN', 'RIV', 'STR', 'GHB'):
        out += entries(name, [(1, 1, 1), (2, 3, 4)])
    return out + array('RCH', [0.1] * CELLS, struct.pack('<%di' % CELLS, *[1] * CELLS))


def budget_file(markers, width):
    """A record of every type."""
    out = b''

    def header(text, kind):
        return struct.pack('<2i16s3i', 1, 1, text.ljust(16).encode(), COLUMNS, ROWS, -LAYERS) + struct.pack(
            '<i', kind) + reals([1.0, 1.0, 1.0], width)

    def add(*parts):
        nonlocal out
        out += record(parts, markers)

    add(struct.pack('<2i16s3i', 1, 1, b'FLOW RIGHT FACE '[:16], COLUMNS, ROWS, LAYERS))
    add(reals([1.5] * CELLS * LAYERS, width))
    full = [0.25] * CELLS * LAYERS
    for kind, text in ((1, 'STORAGE'), (2, 'CONSTANT HEAD'), (3, 'RECHARGE'), (4, 'ET'), (5, 'WELLS')):
        head = header(text, kind)
        add(head[:36])
        add(head[36:])
        if kind == 1:
            add(reals(full, width))
        elif kind == 3:
            add(struct.pack('<%di' % CELLS, *[1] * CELLS))
            add(reals(full[:CELLS], width))
        elif kind == 4:
            add(reals(full[:CELLS], width))
        else:
            if kind == 5:
                add(struct.pack('<i', 2), b'IFACE'.ljust(16))
            add(struct.pack('<i', 2))
            for cell in (3, 20):
                add(struct.pack('<i', cell), reals([-4.0] * (2 if kind == 5 else 1), width))
    return out


def transport_package(model):
    """BTN with every form of an array."""
    def control(code, value, form='(4F8.0)'):
        return '%10d%10s%20s' % (code, value, form)

    rows = [' '.join(['0.25'] * COLUMNS)] * ROWS
    lines = ['# Valley', '# small', '%10d%10d%10d%10d%10d%10d' % (LAYERS, ROWS, COLUMNS, 2, 1, 1),
             '%4s%4s%4s' % ('d', 'm', 'g'), ' T T T F F', ' 0' * LAYERS, control(0, 50), control(0, 40),
             control(103, 1), *[' '.join(model.surfaces[0][r * COLUMNS:][:COLUMNS]) for r in range(ROWS)],
             control(100, 1, '(4F6.1)'), *['   5.0   5.0   5.0   5.0'] * ROWS,
             control(101, 1), '1', '1 3 1 4 7.5', control(103, 0), *rows,
             control(102, 0, '(4I2)'), '2', '0.2 0.3', *[' 1 1 2 2'] * ROWS]
    return '\n'.join(lines + ['']).encode()


class Seeds:
    def __init__(self, folder):
        self.folder = folder
        self.count = 0

    def add(self, targets, *parts, choices=(0, 0xff, 0x15, 0x6a)):
        body = SEPARATOR.join(part if isinstance(part, bytes) else part.read_bytes() for part in parts)[:MOST_BYTES]
        for target in targets.split():
            for choice in choices:
                path = self.folder / target / ('%04d' % self.count)
                path.parent.mkdir(parents=True, exist_ok=True)
                path.write_bytes(bytes([choice]) + body)
                self.count += 1


def small_dresses(solver, folder):
    """Solves the model and writes the cut one; its folder and the model."""
    whole, small = folder / 'whole', folder / 'small'
    shutil.rmtree(folder, ignore_errors=True)
    shutil.copytree(VALLEY, whole, ignore=shutil.ignore_patterns('*.cpp', '*.h', '__pycache__'))
    subprocess.run([solver, whole], check=True, stdout=subprocess.DEVNULL)
    small.mkdir()
    for path in whole.iterdir():
        if path.suffix in ('.mts', '.wel', '.drn', '.riv', '.rch', '.oc', '.ssm', '.lpf', '.pcg', '.nam'):
            shutil.copyfile(path, small / path.name)
    model = make_dresses.Valley(whole)
    for name, times in (('valley.hds', 2), ('valley001.ucn', 1), ('valley002.ucn', 1)):
        records = list(layers_of(model, whole / name))
        for markers in (False, True):
            for width in (4, 8):
                suffix = '' if (markers, width) == (False, 4) else '.%d%d' % (markers, width)
                (small / (name + suffix)).write_bytes(layer_file(records, markers, width, times))
    model = shrink(model)
    shutil.copyfile(SMALL / 'small.cbb', small / 'valley.cbb')
    (small / 'valley.ftl').write_bytes(link_file())
    (small / 'valley.btn').write_bytes(transport_package(model))
    for name in ('modflow96', 'gms', 'gms_hdf5', 'visual'):
        getattr(make_dresses, 'write_' + name)(model, small, folder / name)
    return model


def model_seeds(seeds, work):
    text, other = work / 'gms', b'1 2 3 4 5 6 7 8 9 10 11 12\n'
    arrays = 'array_records discretization basic_package block_centered_flow'
    for name in ('valley.nam', 'valley.mfn'):
        for path in sorted(work.glob('*/' + name)):
            seeds.add('name_file', path, choices=(0,))
    for folder in (text, work / 'gms_hdf5/valley_MODFLOW'):
        seeds.add('discretization', folder / 'valley.dis', other, other, choices=(0, 0xff, 0x80, 0x1f))
        seeds.add('basic_package', folder / 'valley.ba6', other, other, choices=(0x40, 0xff))
        seeds.add('array_records', b'\n'.join((folder / 'valley.ba6').read_bytes().split(b'\n')[2:]), other, other,
                  choices=(0x40, 0x7f, 0x48))
        seeds.add('super_file', work / 'gms/valley.mfs', choices=(0,))
    seeds.add('discretization', SMALL / 'small.dis', other, other)
    seeds.add('basic_package', SMALL / 'small.ba6', other, other, choices=(0x40, 0xff))
    seeds.add('basic_package', work / 'modflow96/valley.bas', other, other, choices=(0, 0x3f, 0x80))
    seeds.add('block_centered_flow', work / 'modflow96/valley.bcf', other, other, choices=(0, 0x3f, 0xff))
    records = (b'CONSTANT 1.5\nINTERNAL 2 (4F4.1) -1 #a\n 1.0 2.0 3.0 4.0\n5 6 7 8\n9 10 11 12\n'
               b'EXTERNAL 14 1.0 (FREE)\n'
               b'OPEN/CLOSE values.dat 1.0 (BINARY) 0\n        14       2.0           (12I3)        -1\n'
               b'HDF5 1.0 -1 "valley.h5" "Arrays/top1" 1 0 12\n         0       3.0\n INTERNAL 1 (FREE)\n3*1.0 9*2,/\n')
    for values in (other, struct.pack('<2i2f16s3i12f', 1, 1, 1, 1, b'HEAD', 4, 3, 1, *range(12))):
        seeds.add(arrays, records, other, values, choices=(0x40, 0x7f, 0x48, 0x5d))
    seeds.add('mt3d_settings', work / 'gms/valley.mts', choices=(0,))
    seeds.add('transport_package', work / 'small/valley.btn', choices=(0, 1))
    seeds.add('visual_modflow', work / 'visual/valley.vmf', work / 'visual/valley.vmg', choices=(0,))


def result_seeds(seeds, work):
    ways = (0, 1, 2, 3)
    for path in sorted((work / 'small').glob('valley.hds*')) + [SMALL / 'small.hds']:
        seeds.add('heads', path, choices=ways)
    for path in sorted((work / 'small').glob('valley00*.ucn*')):
        seeds.add('concentrations', path, choices=(0, 1))
    for path in sorted(work.glob('gms_hdf5/valley_MT3DMS/*.con')):
        seeds.add('concentrations', path, choices=(2, 3))
        seeds.add('gms_binary_datasets', path, choices=(0, 1))
    seeds.add('flows', SMALL / 'small.cbb', choices=ways)
    for markers in (False, True):
        for width in (4, 8):
            seeds.add('flows', budget_file(markers, width), choices=ways)
            for old in (False, True):
                seeds.add('link_file', link_file(markers, width, old), choices=(0, 1))


def gms_seeds(seeds):
    ways = (0, 0x01, 0x1e)
    seeds.add('gms_text_project', QUARRY / 'quarry.gpr', choices=ways)
    seeds.add('tin', QUARRY / 'quarry.tin', choices=ways)
    seeds.add('scatter', QUARRY / 'quarry.xy', choices=ways)
    seeds.add('borehole', QUARRY / 'quarry.bor', choices=ways)
    seeds.add('materials', QUARRY / 'quarry.mat', choices=ways)
    for name in ('quarry_water.dat', 'quarry_samples.dat'):
        seeds.add('gms_ascii_datasets', QUARRY / name, choices=(0, 1))
    seeds.add('gms_binary_datasets', QUARRY / 'quarry_thickness.bin', choices=(0, 1))
    for path in (QUARRY / 'quarry_hdf5.gpr', VALLEY / 'valley_hdf5.gpr'):
        seeds.add('hdf5_project', path, choices=ways)


def word_seeds(seeds):
    lines = (b'# wells\nsite, "MW 1" <5 nd 1.5D+03 \'x y\'\n\n@@ 3 4 missing pinch-out # end\r\n'
             b'na nondetect -999 1e400\n')
    seeds.add('lines', lines, choices=range(0, 64, 3))
    seeds.add('lines', QUARRY / 'quarry.bor', choices=(3, 27))
    tags = b'# tags\n$HOME> c:\\data\n$WORK> "$HOME>/my work"\n$LOOP> $LOOP>x\n'
    seeds.add('tokens_and_tags', tags, b'$WORK>\\sub/../a.$EXTRA>b$LOOP>$XP_PATH<0>/special', choices=(0,))
    seeds.add('world_and_gcp_files', ROOT / 'examples/geomap/geomap.gcp', choices=(0,))
    seeds.add('world_and_gcp_files', b'2.0\n0.5\n\n-0.5\n# size\n-2.0\n4500.0\n5600.0\n', choices=(1,))


def absurd_seeds(seeds):
    """Counts that no file can hold and texts nested without end, which mutations would take long to find."""
    many, all_ways = b'2147483647', (0, 0x7f, 0xff)
    heads = {'array_records': b'', 'discretization': b'2 3 4 2147483647 4 2\n0 0\n',
             'basic_package': b'a\nb\n2 3 4 2147483647 4\nFREE\n0 0\n',
             'block_centered_flow': b'0 51 -888.0 0 1.0 1 0\n3 3\n'}
    for target, head in heads.items():
        for control in (b'INTERNAL 1 (999999999F9.1)', b'INTERNAL 1 (FREE)', b'INTERNAL 1 (9999(9999(9999(9999F1.0))))',
                        b'INTERNAL 1 ' + b'(' * 3000, b'INTERNAL 1 (2147483647X,F1.0)', b'INTERNAL 1 (999999/,F9.0)',
                        b'EXTERNAL 99999 1.0', b'EXTERNAL 11 1.0', b'OPEN/CLOSE site.txt 1 (BINARY)',
                        b'HDF5 1 -1 "valley.h5" "Arrays/top1" 9 0 2147483647', b'HDF5 1 -1 "valley.h5" "/" 1 0 12'):
            arrays = (control + b'\n' + many + b'*1.5\n') * 12
            seeds.add(target, head + arrays, b'1 2\n', b'', choices=(0, 0x3f, 0xff, 0x5d))
    for size in (b'2147483647 1 1 1 4', b'1 2147483647 2147483647 1 4', b'20000 1 1 1 4', b'1 141 141 99999999 4'):
        seeds.add('basic_package', b'a\nb\n' + size + b'\nFREE\n0 0\nCONSTANT 1\n' * 3, b'', b'', choices=(0, 0x3f))
        seeds.add('discretization', size + b'\n0\n' + b'CONSTANT 1\n' * 9, b'', b'', choices=(0, 0x7f))
    package = b'a\nb\n         2         3         4         1         1         1\n d m g\n T T T F\n 0 0\n'
    for code in (b'101', b'102', b'103', b'100'):
        array = b'       ' + code + b'         0             (9999F1)\n' + many + b'\n'
        seeds.add('transport_package', package + array * 8, choices=(0, 1))
    dataset = b'DATASET\nOBJTYPE tin\nBEGSCL\nOBJID 1\nND %s\nNC %s\nNAME a\nTS 1 0\n1\n1\nENDDS\n' % (many, many)
    seeds.add('gms_ascii_datasets', dataset, choices=(0, 1))
    seeds.add('gms_ascii_datasets', dataset.replace(b'SCL', b'VEC').replace(b'TS 1', b'TS 0') * 50, choices=(0, 1))
    for target, text in (('tin', b'TIN\nBEGT\nID 1\nVERT %s\n1 2 3\nTRI %s\n1 2 3\nENDT\n'),
                         ('scatter', b'SCAT2D\nBEGSET\nNAME a\nID 1\nIXY %s\n1 2 3\n%s\nENDSET\n'),
                         ('borehole', b'BHOLES\nBEGH\nNAME a\nCONT %s\n1 2 3 %s\nENDH\n')):
        seeds.add(target, text % (many, many), choices=all_ways)
    seeds.add('materials', b''.join(b'MN %d a\n' % (n * 65521 - 2**31) for n in range(2000)), choices=all_ways)
    dates = b'\nREFTIME 999999999 99 99 99 99 99\nREFTIME -1 0 0 0 0 0\n'
    seeds.add('super_file', b'MF2KSUP\nMAT\n' + b'1 ' * 9000 + dates, choices=(0,))
    seeds.add('tokens_and_tags', b'$A> $B>$B>\n$B> $A>$A>\n', b'$A>' * 9000, choices=(0,))
    seeds.add('tokens_and_tags', b'$A> a\n', b'/..' * 9000, choices=(0,))


def absurd_binaries(seeds):
    card = struct.pack
    for counts in ((2**31 - 1, 2**31 - 1), (2**31 - 1, 0), (1, 2**31 - 1), (0, 0)):
        for kind in (130, 140):
            body = card('<7i', 3000, 100, 1, 110, 4, 120, 1) + card('<7i', kind, 160, 1, 170, counts[0], 180, counts[1])
            steps = card('<ibff', 200, 1, 0.0, 1.0) * 2000
            seeds.add('gms_binary_datasets', body + steps, choices=(0, 1))
    numbers = card('<5i', 1, 1, COLUMNS, ROWS, LAYERS)
    for name in (b'WEL', b'MNW', b'CNH', b'STR'):
        seeds.add('link_file', b'MT3D4.00.00' + card('<21i', *[1] * 21) + numbers + name.ljust(16) +
                  card('<i', 2**31 - 1) + b'\0' * 400, choices=(0, 1))
    for kind in (2, 5):
        head = card('<2i16s3ii3f', 1, 1, b'WELLS'.ljust(16), COLUMNS, ROWS, -LAYERS, kind, 1, 1, 1)
        seeds.add('flows', head + card('<2i', 2**31 - 1, 2**31 - 1) + b'\0' * 400, choices=(0, 1))
    for step in (2**31 - 1, 9_999_999):
        heads = card('<2i2f16s3i', step, step, 1, 1, b'HEAD'.rjust(16), COLUMNS, ROWS, 1) + b'\0' * 48
        seeds.add('heads', heads * 2, choices=(0, 1, 2, 3))


def main(arguments):
    if len(arguments) != 2:
        print(__doc__, file=sys.stderr)
        return 2
    solver, folder = pathlib.Path(arguments[0]).resolve(), pathlib.Path(arguments[1]).resolve()
    work = folder.parent / 'seed_model'
    small_dresses(solver, work)
    shutil.rmtree(folder, ignore_errors=True)
    seeds = Seeds(folder)
    model_seeds(seeds, work)
    result_seeds(seeds, work)
    gms_seeds(seeds)
    word_seeds(seeds)
    absurd_seeds(seeds)
    absurd_binaries(seeds)
    print('%d seeds in %s' % (seeds.count, folder))
    return 0


if __name__ == '__main__':
    sys.exit(main(sys.argv[1:]))
