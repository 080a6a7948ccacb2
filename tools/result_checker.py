"""Reads what plxconvert writes, as docs/formats tells it, and says what does not follow.

ResultChecker().faults(folder) reads everything below a folder: every file is of a kind that is written, whole, and
names only files that are there and have the rows that are asked for.
"""
import collections
import hashlib
import itertools
import json
import os
import re
import sys
import xml.etree.ElementTree
import zlib

# Whole runs of rows are matched at once; possessive matching (Python 3.11) does that at reading speed.
MANY = b'*+' if sys.version_info >= (3, 11) else b'*'
# Inputs hold reals beyond any range, and C prints those by name.
REAL = rb'-?(?:\d+\.\d{6}|inf|nan)'
VALUE = rb'-?(?:\d+(?:\.\d{6})?|inf|nan)'
CORNERS = {b'Tri': 3, b'Quad': 4, b'Tet': 4, b'Pyr': 5, b'Prism': 6, b'Hex': 8}
SECTIONS = rb'DRAINS|WELLS|CONSTANT_HEAD|GENERAL_HEAD|RIVER_LEAKAGE|RECHARGE|ET|STORAGE'
DATE = rb'-?\d+-\d\d-\d\d \d\d:\d\d:\d\d'

# What a file asks of another one: the rows up to `rows`, `columns` wide, with node numbers below `nodes`.
Need = collections.namedtuple('Need', 'name rows columns nodes')
# What is known of a file: its faults, its needs, and its rows, columns and largest node number as a companion.
Facts = collections.namedtuple('Facts', 'faults needs rows columns top', defaults=((), 0, 0, -1))


class Fault(Exception):
    pass


def require(condition, text):
    if not condition:
        raise Fault(text)


def rows_of(item, columns, separator=b' '):
    return separator.join([item] * columns) + rb' ?\r\n'


def many(row):
    return re.compile(b'(?:' + row + b')' + MANY)


class FieldFile:
    """A field file, header and sections in whatever order they stand."""

    DATA = re.compile(rb'(NODE|CELL)_DATA_DEF (\d+) "[^"\r\n]*" "[^"\r\n]*" '
                      rb'(?:(?:VECLEN (\d+) )?IN_FILE ?|FILE "([^"\r\n]+)" ROW (\d+) COLS (\d+))')
    CELLS = re.compile(rb'CELL_SET_DEF (\d+) (\d+) (\w+) "[^"\r\n]*" (?:IN_FILE|FILE "([^"\r\n]+)" ROW (\d+))')
    NODES = re.compile(rb'NODES (?:IN_FILE|FILE "([^"\r\n]+)" ROW (\d+) X 1 Y 2 Z 3)')
    COUNT = re.compile(rb'(NSPACE|NNODES|NUM_NODE_DATA|NUM_CELL_DATA|NCELL_SETS) (\d+)')

    def __init__(self, text):
        self.text, self.at = text, 0
        self.counts = collections.Counter()
        self.values = {b'NODE': [], b'CELL': []}
        self.widths = {b'NODE': 0, b'CELL': 0}
        self.sets, self.needs, self.sections, self.definition = [], [], [], b''
        while self.at < len(text):
            self.line()
        self.finish()

    def line(self):
        end = self.text.find(b'\r\n', self.at)
        require(end >= 0, 'the last line has no end')
        line, self.at = self.text[self.at:end], end + 2
        if line.startswith(b'#'):
            return
        if line.startswith(b'DEFINITION '):
            self.definition = line.split(b' ')[1]
            return
        for pattern, read in ((self.COUNT, self.count), (self.NODES, self.nodes), (self.DATA, self.data),
                              (self.CELLS, self.cells)):
            match = pattern.fullmatch(line)
            if match:
                read(match)
                return
        self.section(line)

    def count(self, match):
        self.counts[match[1]] = int(match[2])

    def take(self, row, count, what):
        match = many(row).match(self.text, self.at)
        found = self.text.count(b'\n', self.at, match.end())
        require(found == count, '%s: %d rows of %d, then %r' % (what, found, count,
                                                               self.text[match.end():match.end() + 60]))
        self.at = match.end()

    def nodes(self, match):
        nodes = self.counts[b'NNODES']
        if match[1]:
            self.needs.append(Need(match[1], int(match[2]) - 1 + nodes, 3, None))
        else:
            self.take(rows_of(REAL, self.counts[b'NSPACE']), nodes, 'NODES')

    def data(self, match):
        kind, number, length, name, row, column = match.groups()
        require(int(number) == len(self.values[kind]), 'data are not numbered in order')
        self.values[kind].append(length)
        if name:
            self.needs.append(Need(name, int(row) - 1 + self.rows(kind), int(column), None))
        else:
            self.widths[kind] += int(length or 1)

    def cells(self, match):
        number, count, kind, name, row = match.groups()
        require(int(number) == len(self.sets) and kind in CORNERS, 'cell set %r' % match[0])
        self.sets.append((int(count), CORNERS[kind]))
        if name:
            self.needs.append(Need(name, int(row) - 1 + int(count), CORNERS[kind], self.counts[b'NNODES']))

    def section(self, line):
        self.sections.append(line)
        if line == b'CELL_START':
            for corners, sets in itertools.groupby(self.sets, lambda each: each[1]):
                start = self.at
                self.take(rows_of(rb'\d+', corners), sum(count for count, _ in sets), 'CELL_START')
                top = max(map(int, self.text[start:self.at].split()), default=-1)
                require(top < self.counts[b'NNODES'], 'a cell at node %d' % top)
            return
        require(line in (b'NODE_DATA_START', b'CELL_DATA_START'), 'line %r' % line[:60])
        kind = line[:4]
        # A section is there for data that are all in other files, too; it has no rows then.
        if self.widths[kind] > 0:
            self.take(rows_of(VALUE, self.widths[kind]), self.rows(kind), line.decode())

    def rows(self, kind):
        return self.counts[b'NNODES'] if kind == b'NODE' else sum(count for count, _ in self.sets)

    def finish(self):
        require(len(self.sets) == self.counts[b'NCELL_SETS'], 'cell sets are missing')
        wanted = b'Mesh'
        for kind, name in ((b'NODE', b'+Node_Data'), (b'CELL', b'+Cell_Data')):
            found, told = len(self.values[kind]), self.counts[b'NUM_%s_DATA' % kind]
            require(found == told, '%d data of %d' % (found, told))
            require((found > 0) == (kind + b'_DATA_START' in self.sections), 'a section is missing')
            wanted += name if found else b''
        require(self.definition == wanted, 'DEFINITION %r with data of %r' % (self.definition, wanted))


def field_file(text):
    return Facts((), FieldFile(text).needs)


def companion(item, columns):
    """Rows of `columns` items behind a comment."""
    row = many(rows_of(item, columns))

    def read(text):
        start = text.find(b'\r\n') + 2
        require(text.startswith(b'# ') and start > 2 and row.fullmatch(text, start), 'rows are not whole')
        top = -1
        if columns == CORNERS[b'Hex']:
            top = max(map(int, text[start:].split()), default=-1)
        return Facts((), (), text.count(b'\n'), columns, top)
    return read


def whole(pattern):
    """A file that is one pattern from its start to its end."""
    compiled = re.compile(pattern)

    def read(text):
        require(compiled.fullmatch(text), 'is not one whole file')
        return Facts(())
    return read


def time_file(text):
    row = DATE + rb', ([^,\r\n]+\.pf[fz]), -1\r\n'
    require(many(row).fullmatch(text), 'lines are not date, field file, -1')
    return Facts((), [Need(name, 0, 0, None) for name in re.findall(row, text)])


def contacts(text):
    match = re.match(rb'(?:# )?GMStoPLX generated [^\r\n]+\r\nElevation [^\r\n]*\r\n(\d+) 1\r\n', text)
    require(match, 'no header')
    rows = many(rb'%s %s %s -?\d+ [^ \r\n]*\r\n' % (REAL, REAL, REAL)).fullmatch(text, match.end())
    require(rows, 'contacts are not whole')
    require(text.count(b'\n', match.end()) <= int(match[1]), 'more contacts than line 3 tells')
    return Facts(())


def drawing(text):
    try:
        xml.etree.ElementTree.fromstring(text)
    except xml.etree.ElementTree.ParseError as fault:
        raise Fault(str(fault)) from fault
    return Facts(())


def json_text(text):
    try:
        json.loads(text.decode())
    except ValueError as fault:
        raise Fault('is not JSON: %s' % fault) from fault
    return Facts(())


FLOWS = (rb'# PLX\\GRV generated file\r\nGRID\r\n' + rb' '.join([REAL] * 3)
         + rb' 0\.0\r\nTIME [^\r\n]*\r\n(?:(?:STEADY_STATE|DATE '
         + DATE + rb'|' + SECTIONS + rb'|' + rb' '.join([REAL] * 4) + rb'(?: [06]\.0)?)\r\n)' + MANY)
SURFACE = (rb'# [^\r\n]*\r\n(?:Units \S+\r\n)?(?:Surface [^\r\n]+\r\n(?:' + rb' '.join([REAL] * 3) + rb' ?\r\n)' + MANY
           + rb'(?:End\r\n)?)*')
KINDS = {
    '.pff': field_file, '.pfz': field_file, '.tcf': time_file, '.gmf': whole(SURFACE), '.pgf': contacts,
    '.xyz': companion(REAL, 3), '.nd': companion(VALUE, 1), '.conn': companion(rb'\d+', 8),
    '.por': companion(REAL, 1), '.dwr': whole(FLOWS), '.dwz': whole(FLOWS), '.svg': drawing, '.json': json_text,
    '.pgw': whole(rb'(?:' + REAL + rb'\r?\n\r?\n){6}'),
    '.gcp': whole(rb'(?:' + b'\t'.join([REAL] * 4) + rb'\r?\n)+'),
    '.log': lambda text: Facts(()),
}


def unpacked(path, data):
    """The text of a file, which is a gzip stream when its first bytes or its name say so."""
    packed = data.startswith(b'\x1f\x8b')
    require(packed or not path.endswith(('.pfz', '.dwz')), 'is not compressed')
    if not packed:
        return data
    stream = zlib.decompressobj(31)
    try:
        text = stream.decompress(data)
    except zlib.error as fault:
        raise Fault(str(fault)) from fault
    require(stream.eof and not stream.unused_data, 'the gzip stream does not end where the file does')
    return text


class ResultChecker:
    """Remembers files by their bytes: most runs on damaged inputs write most files as ever."""

    def __init__(self):
        self.known = {}

    def file(self, path):
        """The facts of one file."""
        with open(path, 'rb') as file:
            data = file.read()
        kind = os.path.splitext(path)[1]
        key = kind, hashlib.sha1(data).digest()
        if key not in self.known:
            try:
                require(kind in KINDS, 'is no kind of file that is written')
                self.known[key] = KINDS[kind](unpacked(path, data))
            except Fault as fault:
                self.known[key] = Facts((str(fault),))
        return self.known[key]

    def faults(self, folder):
        """What is wrong below a folder, one line for each fault; empty when nothing is."""
        facts = {}
        for place, _, names in os.walk(folder):
            for name in names:
                path = os.path.join(place, name)
                facts[path] = self.file(path)
        found = []
        for path, fact in facts.items():
            told = os.path.relpath(path, folder)
            found += ['%s: %s' % (told, fault) for fault in fact.faults]
            for need in fact.needs:
                other = os.path.normpath(os.path.join(os.path.dirname(path), os.fsdecode(need.name).replace('\\', '/')))
                if other not in facts:
                    found.append('%s: names %s, which is not there' % (told, os.fsdecode(need.name)))
                elif facts[other].rows < need.rows or facts[other].columns < need.columns:
                    found.append('%s: wants %d rows of %s' % (told, need.rows, os.fsdecode(need.name)))
                elif need.nodes is not None and facts[other].top >= need.nodes:
                    found.append('%s: a cell at node %d of %d' % (told, facts[other].top, need.nodes))
        return found


def main(arguments):
    found = [fault for folder in arguments for fault in ResultChecker().faults(folder)]
    print('\n'.join(found + ['%d faults' % len(found)]))
    return 1 if found else 0


if __name__ == '__main__':
    sys.exit(main(sys.argv[1:]))
