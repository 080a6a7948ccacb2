#!/usr/bin/env python3
"""Writes small.hds, small.cbb, small001.ucn and MT3D002.UCN: made-up results in MODFLOW's binary layouts, with round numbers that are easy to find
again in the converted files. Little-endian, 32-bit reals, no record markers."""
import struct

NLAY, NROW, NCOL = 2, 3, 4
STEPS = [(1, 1, 30.0), (2, 1, 54.0), (2, 2, 90.0)]  # period, step, total time
HNOFLO, HDRY = -999.99, -1.0e30
INACTIVE = {(0, 0, 3), (0, 1, 3)}
DRY = {(0, 2, 3)}  # dry in the last step


def head(k, i, j, n):
    if (k, i, j) in INACTIVE:
        return HNOFLO
    if (k, i, j) in DRY and n == 2:
        return HDRY
    return 15.0 - k - 0.5 * i - 0.25 * j - 0.125 * n


def array(value):
    cells = [(k, i, j) for k in range(NLAY) for i in range(NROW) for j in range(NCOL)]
    return b''.join(struct.pack('<f', value(*c)) for c in cells)


def heads():
    out = b''
    for n, (per, step, tot) in enumerate(STEPS):
        for k in range(NLAY):
            out += struct.pack('<iiff16siii', step, per, tot, tot, b'            HEAD', NCOL, NROW, k + 1)
            out += b''.join(struct.pack('<f', head(k, i, j, n)) for i in range(NROW) for j in range(NCOL))
    return out


def record(n, label, kind, data):
    per, step, tot = STEPS[n]
    out = struct.pack('<ii16siii', step, per, label.rjust(16).encode(), NCOL, NROW, -NLAY)
    return out + struct.pack('<ifff', kind, 1.0, tot, tot) + data


def cells_list(entries):
    return struct.pack('<i', len(entries)) + b''.join(struct.pack('<if', c, v) for c, v in entries)


def budget():
    out = b''
    one_layer = [0.25 * (i + 1) for i in range(NROW * NCOL)]
    for n in range(len(STEPS)):
        if n > 0:
            out += record(n, 'STORAGE', 1, array(lambda k, i, j: 0.0 if k else 0.5 * j - 0.25 * n))
        out += record(n, 'CONSTANT HEAD', 2, cells_list([(1, 3.5 + n), (13, -1.25)]))
        out += record(n, 'FLOW RIGHT FACE', 1, array(lambda k, i, j: 0.0 if j == NCOL - 1 else 1.0 + j + 0.1 * n))
        out += record(n, 'FLOW FRONT FACE', 1, array(lambda k, i, j: 0.0 if i == NROW - 1 else -1.0 - i))
        out += record(n, 'FLOW LOWER FACE', 1, array(lambda k, i, j: 0.0 if k else 0.01 * (i * NCOL + j)))
        wells = struct.pack('<i', 2) + b'IFACE'.rjust(16) + struct.pack('<i', 2)
        wells += b''.join(struct.pack('<iff', c, q, 6.0) for c, q in [(6, -20.0 - n), (19, 4.5)])
        out += record(n, 'WELLS', 5, wells)
        # a second record of the same term in one step, as two packages of one kind write it
        out += record(n, 'WELLS', 5, struct.pack('<i', 1) + cells_list([(24, -7.75)]))
        out += record(n, 'DRAINS', 5, struct.pack('<i', 1) + cells_list([(10, -0.625)]))
        out += record(n, 'RIVER LEAKAGE', 2, cells_list([(5, 2.25), (6, 2.5)]))
        out += record(n, 'HEAD DEP BOUNDS', 5, struct.pack('<i', 1) + cells_list([(12, 0.875)]))
        layers = struct.pack('<12i', *[1] * 10 + [2, 2])
        out += record(n, 'RECHARGE', 3, layers + struct.pack('<12f', *one_layer))
        out += record(n, 'ET', 4, struct.pack('<12f', *[-0.5 if i % 3 == 0 else 0.0 for i in range(12)]))
    return out


def concentrations(species):
    out = b''
    for step, time in ((4, 12.5), (9, 60.0)):
        for k in range(NLAY):
            out += struct.pack('<iiif16siii', step, 1, 1, time, b'CONCENTRATION', NCOL, NROW, k + 1)
            cells = [(k, i, j) for i in range(NROW) for j in range(NCOL)]
            out += b''.join(struct.pack('<f', 1.0e30 if c in INACTIVE else species + c[2] + time / 8) for c in cells)
    return out


with open('small001.ucn', 'wb') as f:
    f.write(concentrations(1))
with open('MT3D002.UCN', 'wb') as f:
    f.write(concentrations(20))
with open('small.hds', 'wb') as f:
    f.write(heads())
with open('small.cbb', 'wb') as f:
    f.write(budget())
