#!/usr/bin/env python3
"""Writes the solved valley model as other programs keep it, so that one model comes in five dresses.

usage: make_dresses.py FOLDER     from FOLDER/valley.nam and its results: FOLDER/dresses/{modflow96,gms,gms_hdf5,visual}
       make_dresses.py --hdf5     the two HDF5 files beside this script, from the inputs beside it; needs h5py

Numbers go from the inputs to the other forms as they are written, so that all five hold the same ones.
"""
import pathlib
import shutil
import struct
import sys

HERE = pathlib.Path(__file__).resolve().parent
SPECIES = ('Nitrate', 'Tracer')
PER_LINE = 15
REFERENCE = '2023 12 1 0 0 0'


class Input:
    """Lines and arrays of a text input; numbers stay the words they are."""

    def __init__(self, path):
        self.folder = path.parent
        self.lines = [line for line in path.read_text().splitlines() if not line.startswith('#')]

    def words(self):
        return self.lines.pop(0).split()

    def array(self, count):
        record = self.words()
        if record[0] == 'CONSTANT':
            return [record[1]] * count
        source = self.lines
        if record[0] == 'OPEN/CLOSE':
            source = (self.folder / record[1]).read_text().splitlines()
        values = []
        while len(values) < count:
            values += source.pop(0).split()
        return values


class Valley:
    """Grid, cells and conductivities of the model in a folder."""

    def __init__(self, folder):
        dis = Input(folder / 'valley.dis')
        self.layers, self.rows, self.columns, periods = (int(word) for word in dis.words()[:4])
        self.cells = self.rows * self.columns
        dis.words()
        self.widths, self.heights = dis.array(self.columns), dis.array(self.rows)
        self.surfaces = [dis.array(self.cells) for _ in range(self.layers + 1)]
        self.periods = [dis.words()[:4] for _ in range(periods)]
        basic = Input(folder / 'valley.ba6')
        basic.words()
        self.flags = [basic.array(self.cells) for _ in range(self.layers)]
        self.no_flow = basic.words()[0]
        self.heads = [basic.array(self.cells) for _ in range(self.layers)]
        flow = Input(folder / 'valley.lpf')
        for _ in range(6):
            flow.words()
        # Conductivity along the layer, across it, specific storage.
        self.soils = [[[float(v) for v in flow.array(self.cells)] for _ in range(3)] for _ in range(self.layers)]

    def thickness(self, layer):
        return [float(a) - float(b) for a, b in zip(self.surfaces[layer], self.surfaces[layer + 1])]


def lines(values):
    for at in range(0, len(values), PER_LINE):
        yield ' '.join(str(value) for value in values[at:at + PER_LINE])


def internal(values):
    return ['INTERNAL 1.0 (FREE) -1', *lines(list(values))]


def write(path, *parts):
    path.parent.mkdir(parents=True, exist_ok=True)
    with open(path, 'w', newline='\n') as file:
        for part in parts:
            for line in [part] if isinstance(part, str) else part:
                print(line, file=file)


def copy(folder, to, **names):
    """Copies results and packages; names: the ending here = the file there."""
    for ending, name in names.items():
        (to / name).parent.mkdir(parents=True, exist_ok=True)
        shutil.copyfile(folder / ('valley.' + ending), to / name)


def species_files(folder, to):
    for n in range(1, len(SPECIES) + 1):
        shutil.copyfile(folder / ('valley%03d.ucn' % n), to / ('valley%03d.ucn' % n))


def name_file(*entries):
    return ['# Valley of the Alder Brook', *entries]


PACKAGES = {ending: 'valley.' + ending for ending in ('wel', 'drn', 'riv', 'rch', 'oc')}


def block_centred_flow(model):
    """BCF of MODFLOW-96. A layer that may fall dry (LAYCON 3) is the one that has its bottom and its top here."""
    yield ''.join('%10s' % field for field in (0, 51, '-888.0', 0, 1.0, 1, 0))
    yield ' '.join(['3'] * model.layers) + '   LAYCON'
    yield 'CONSTANT 1.0   TRPY'
    yield from internal(model.widths)
    yield from internal(model.heights)
    thickness = [model.thickness(k) for k in range(model.layers)]
    for k, (along, across, specific) in enumerate(model.soils):
        storage = ['%.4e' % (s * b) for s, b in zip(specific, thickness[k])]
        yield from internal(storage)
        yield from internal(along)
        yield from internal(model.surfaces[k + 1])
        if k + 1 < model.layers:
            half = zip(thickness[k], across, thickness[k + 1], model.soils[k + 1][1])
            yield from internal('%.5e' % (1.0 / (b / v / 2 + below / vb / 2)) for b, v, below, vb in half)
        yield from internal(storage)
        yield from internal(model.surfaces[k])


def write_modflow96(model, folder, to):
    """MODFLOW-96 knows no steady period before others, so that this one calls them all transient."""
    write(to / 'valley.bas', 'Valley of the Alder Brook', 'upper gravel, silt, lower gravel',
          '%d %d %d %d 4' % (model.layers, model.rows, model.columns, len(model.periods)), 'FREE', '0 0   IAPART ISTRT',
          *(internal(flags) for flags in model.flags), model.no_flow, *(internal(heads) for heads in model.heads),
          [' '.join(period[:3]) for period in model.periods])
    write(to / 'valley.bcf', block_centred_flow(model))
    write(to / 'valley.nam', name_file(
        'LIST 6 valley.lst', 'BAS 11 valley.bas', 'BCF 12 valley.bcf', 'WEL 13 valley.wel', 'DRN 14 valley.drn',
        'RIV 15 valley.riv', 'RCH 16 valley.rch', 'OC 18 valley.oc', 'DATA(BINARY) 50 valley.hds',
        'DATA(BINARY) 51 valley.cbb'))
    copy(folder, to, hds='valley.hds', cbb='valley.cbb', mts='valley.mts', btn='valley.btn', ssm='valley.ssm',
         **PACKAGES)
    species_files(folder, to)


def write_gms_inputs(model, to, array_record):
    """Super file, name file, discretization and basic package. array_record(name, values) gives an array's lines."""
    write(to / 'valley.mfs', 'MF2KSUP', 'IJK -y +x -z', 'NAME 99 "valley.mfn"', 'ORIG 0.0 0.0 0.0', 'ROTZ 0', 'DMAT 1',
          'MAT', ['%d' % (k + 1) for k in range(model.layers)], 'MPSC 1 0 0', 'REFTIME d 1 ' + REFERENCE,
          'UNITS "m"\t"d"\t"g"\t"kg"\t"mg/l"')
    write(to / 'valley.mfn', name_file(
        'LIST 2 valley.out', 'DATA(BINARY) 30 valley.hed', 'DATA(BINARY) 40 valley.ccf', 'DIS 19 valley.dis',
        'BAS6 3 valley.ba6', 'LPF 4 valley.lpf', 'OC 15 valley.oc', 'RCH 16 valley.rch', 'RIV 8 valley.riv',
        'WEL 9 valley.wel', 'DRN 10 valley.drn', 'PCG 14 valley.pcg'))
    names = ['top1'] + ['bot%d' % (k + 1) for k in range(model.layers)]
    write(to / 'valley.dis', '# Discretization',
          '%d %d %d %d 4 2' % (model.layers, model.rows, model.columns, len(model.periods)), '0 ' * model.layers,
          internal(model.widths), internal(model.heights),
          *(array_record(name, values) for name, values in zip(names, model.surfaces)),
          [' '.join(period) for period in model.periods])
    write(to / 'valley.ba6', '# Basic package', 'FREE',
          *(array_record('ibound%d' % (k + 1), flags) for k, flags in enumerate(model.flags)), model.no_flow,
          *(array_record('StartHead%d' % (k + 1), heads) for k, heads in enumerate(model.heads)))


def copy_gms_results(folder, to):
    copy(folder, to, hds='valley.hed', cbb='valley.ccf', lpf='valley.lpf', pcg='valley.pcg', **PACKAGES)


def write_gms(model, folder, to):
    write_gms_inputs(model, to, lambda name, values: internal(values))
    copy_gms_results(folder, to)
    copy(folder, to, mts='valley.mts', btn='valley.btn', ssm='valley.ssm')
    species_files(folder, to)


def concentration_times(path, layer_cells, layers):
    """(time, values of all layers) from an MT3DMS concentration file."""
    data = path.read_bytes()
    record = 44 + 4 * layer_cells
    for at in range(0, len(data), record * layers):
        values = b''.join(data[first + 44:first + record] for first in range(at, at + record * layers, record))
        yield struct.unpack_from('<f', data, at + 12)[0], values


def write_dataset(model, number, source, to):
    """GMS's binary dataset of a species: numbered cards, 32-bit reals, one-byte flags, no record marks."""
    cells = model.cells * model.layers
    grid_3d, grid_id = 7, 1
    out = struct.pack('<7i', 3000, 100, grid_3d, 110, 4, 120, 1)
    out += struct.pack('<7i', 130, 160, grid_id, 170, cells, 180, cells)
    out += struct.pack('<i40s', 190, SPECIES[number - 1].encode())
    active = bytes(flag != '0' for layer in model.flags for flag in layer)
    for time, values in concentration_times(source, model.cells, model.layers):
        # The cells' flags stand at the first time only; later times take them over.
        out += struct.pack('<ibf', 200, bool(active), time) + active + values
        active = b''
    to.parent.mkdir(parents=True, exist_ok=True)
    to.write_bytes(out + struct.pack('<i', 210))


def write_gms_hdf5(model, folder, to):
    inputs, transport = to / 'valley_MODFLOW', to / 'valley_MT3DMS'

    def record(name, values):
        return ['HDF5 1.0 -1 "valley.h5" "Arrays/%s" 1 0 %d' % (name, len(values))]

    write_gms_inputs(model, inputs, record)
    copy_gms_results(folder, inputs)
    copy(folder, transport, mts='valley.mts', btn='valley.btn', ssm='valley.ssm')
    shutil.copyfile(HERE / 'valley_hdf5.gpr', to / 'valley.gpr')
    shutil.copyfile(HERE / 'valley_arrays.h5', inputs / 'valley.h5')
    for n in range(1, len(SPECIES) + 1):
        write_dataset(model, n, folder / ('valley%03d.ucn' % n), transport / ('valley%03d.con' % n))


def edges(sizes):
    at = [0.0]
    for size in sizes:
        at.append(at[-1] + float(size))
    return at


def northings(sizes):
    """y of the edges of rows that are counted from the north."""
    at = edges(sizes)
    return [at[-1] - y for y in at]


def write_visual(model, folder, to):
    write(to / 'valley.vmf', '<Project>', '<Units>', 'Length=m', 'Time=day', '</Units>', '</Project>')
    write(to / 'valley.vmg', 'COLUMN COORDINATES', lines(edges(model.widths)), 'ROW COORDINATES',
          lines(northings(model.heights)), 'CELL STATUS', *(lines(flags) for flags in model.flags),
          'CELL ELEVATIONS', *(lines(surface) for surface in model.surfaces))
    copy(folder, to, hds='valley.hds', ftl='valley.flo')
    for n in range(1, len(SPECIES) + 1):
        shutil.copyfile(folder / ('valley%03d.ucn' % n), to / ('valley.%03d.ucn' % n))


def write_hdf5(model):
    import h5py
    import numpy

    def put(file, path, values):
        file.create_dataset(path, data=values, compression='gzip', compression_opts=9)

    with h5py.File(HERE / 'valley_arrays.h5', 'w', libver='earliest') as file:
        names = ['top1'] + ['bot%d' % (k + 1) for k in range(model.layers)]
        for name, values in zip(names, model.surfaces):
            put(file, 'Arrays/' + name, numpy.array(values, dtype='<f8'))
        for k in range(model.layers):
            put(file, 'Arrays/ibound%d' % (k + 1), numpy.array(model.flags[k], dtype='<i4'))
            put(file, 'Arrays/StartHead%d' % (k + 1), numpy.array(model.heads[k], dtype='<f8'))
    with h5py.File(HERE / 'valley_hdf5.gpr', 'w', libver='earliest') as file:
        file['File Type'] = numpy.array([b'Xmdf'])
        folder = file.create_group('3DGridModule/3DGrid 0/MODFLOW Model 0')
        folder['Name File'] = numpy.array([b'.\\valley_MODFLOW\\valley.mfn'])


def main(arguments):
    if arguments == ['--hdf5']:
        write_hdf5(Valley(HERE))
        return 0
    if len(arguments) != 1 or arguments[0].startswith('-'):
        print(__doc__, file=sys.stderr)
        return 2
    folder = pathlib.Path(arguments[0])
    model = Valley(folder)
    for name, dress in (('modflow96', write_modflow96), ('gms', write_gms), ('gms_hdf5', write_gms_hdf5),
                        ('visual', write_visual)):
        dress(model, folder, folder / 'dresses' / name)
    return 0


if __name__ == '__main__':
    sys.exit(main(sys.argv[1:]))
