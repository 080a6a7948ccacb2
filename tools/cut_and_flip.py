#!/usr/bin/env python3
"""Cuts and changes the example inputs, byte by byte, and converts what is left of them.

Each file of each input is cut at many places and has bytes changed at many others, one at a time; then plxconvert
reads the whole input in a process of its own, with limits on memory (64 times the input and 256 MiB) and time. A run
is good when it ends with 0 or 1, says why when 1, leaves only whole files that name files that are there, and has
touched nothing but its destination. The conversions of an input take turns, so that both sets of reading rules are
used, and now and then gzip files, `info` and `interpolate`. The same seed makes the same runs.

  tools/cut_and_flip.py PLXCONVERT --all          200 cuts and 500 changed bytes a file: about 60000 runs
  tools/cut_and_flip.py PLXCONVERT --sample 300   so many of those, as many of each input
  tools/cut_and_flip.py PLXCONVERT --all --only 'quarry*' --keep found

Under sanitizers memory is measured instead of limited, and times may be six times as long. Needs valley_solver, from
the same build. Ends with 1 when a run was not good, with 77 on systems without the limits.
"""
import argparse
import collections
import fnmatch
import multiprocessing
import os
import pathlib
import random
import shutil
import signal
import subprocess
import sys
import tempfile
import time

import result_checker

SKIPPED = 77
try:
    import resource
except ImportError:
    print('cut_and_flip: limits of processes are not to be had on this system')
    sys.exit(SKIPPED)

ROOT = pathlib.Path(__file__).resolve().parent.parent
MIB = 1 << 20
LONG_AGO = 10 ** 18
CHUNK = 25
MOST_BYTES_WRITTEN = 2048 * MIB
# What a changed byte becomes, apart from one with a bit turned: what text and binary readers branch on.
TELLING = b'\x00\xff\x7f\x80 -.,"\'#9e\n\r\t\\/*'

# One of an input's commands: its words, with {in} and {out} for the two folders, and its standard input.
Command = collections.namedtuple('Command', 'words stdin', defaults=(None,))
# Files in a folder, and what is done with them. beside: what the tool may write among them.
Input = collections.namedtuple('Input', 'name commands beside', defaults=((),))
# One run: file None is the input as it is; kind is 'cut' or 'flip', place a byte, value what it becomes.
Case = collections.namedtuple('Case', 'file kind place value turn')
Result = collections.namedtuple('Result', 'input case code seconds kilobytes faults')


def command(words, stdin=None):
    return Command(words.split(), stdin)


def model_commands(project):
    """Fifty turns: mostly the two ways of reading in turn, now and then what takes long or reads otherwise."""
    turns = ['modflow {in}/%s --dest {out} --porosity 0.25 --quiet --rules ' % project + rules
             for rules in ('modflow', 'prescribed')] * 25
    turns[7] = turns[23] = turns[38] = 'info {in}/%s --json' % project
    turns[16] = turns[31] = 'interpolate {in}/wells.csv --onto {in}/%s -o {out}/wells.pff' % project
    turns[49] += ' --compress --outputs head_cells,ccf,boundary_flows'
    return [command(turn) for turn in turns]


def quarry_commands(project):
    turns = ['gms {in}/%s --dest {out} --plain --rules modern', 'gms {in}/%s --dest {out} --rules prescribed',
             'gms {in}/%s --dest {out} --subfolders --time 1 --json --rules modern',
             'gms {in}/%s --dest {out} --plain --extents 4000 2000 4300 2200 --rules prescribed', 'info {in}/%s --json']
    return [command(turn % project) for turn in turns]


INPUTS = [
    Input('valley-modflow2000', model_commands('valley.nam')),
    Input('valley-modflow96', model_commands('valley.nam')),
    Input('valley-gms', model_commands('valley.mfs')),
    Input('valley-gms_hdf5', model_commands('valley.gpr')),
    Input('valley-visual', model_commands('valley.vmf')),
    Input('quarry-text', quarry_commands('quarry.gpr')),
    Input('quarry-hdf5', quarry_commands('quarry_hdf5.gpr')),
    Input('geomap-gcp', [command('georef fit {in}/geomap.gcp --json --plot {out}/residuals.svg'),
                         command('georef fit {in}/geomap.gcp --type 5 --prescribed --plot {out}/residuals.svg'),
                         command('georef world {in}/geomap.gcp {in}/geomap.png'),
                         command('georef project {in}/geomap.gcp --reverse', 'places.txt'),
                         command('georef show {in}/geomap.png')], ('geomap.pgw',)),
    Input('geomap-world', [command('georef show {in}/geomap.png'), command('georef gcp {in}/geomap.png'),
                           command('georef gcp {in}/geomap.png --points {in}/points.txt')], ('geomap.gcp',)),
    Input('wells', [command('interpolate {in}/wells.csv --grid 6 5 4 -o {out}/wells.pff'),
                    command('interpolate {in}/wells.csv --grid 3 3 3 --method 2 --power 3 -o {out}/wells.pfz')]),
]


def copy(to, *sources):
    to.mkdir(parents=True)
    for source in sources:
        shutil.copyfile(source, to / source.name)


def prepare_valley(to, solver):
    """The solved valley and its dresses, each in a folder with the wells."""
    examples, plain = ROOT / 'examples', to / 'valley-modflow2000'
    copy(plain, *(f for f in examples.glob('valley/valley*') if f.suffix not in ('.h5', '.gpr')))
    subprocess.run([solver, plain], check=True, stdout=subprocess.DEVNULL)
    (plain / 'valley.lst').unlink()
    subprocess.run([sys.executable, examples / 'valley/make_dresses.py', plain], check=True)
    for dress in (plain / 'dresses').iterdir():
        dress.rename(to / ('valley-' + dress.name))
    (plain / 'dresses').rmdir()
    for folder in to.glob('valley-*'):
        shutil.copyfile(examples / 'wells/wells.csv', folder / 'wells.csv')


def prepare(to, tool, solver):
    """Folders of all inputs below `to`, everything in them dated long ago so that later writing shows."""
    examples = ROOT / 'examples'
    prepare_valley(to, solver)
    quarry = set(examples.glob('quarry/quarry*'))
    copy(to / 'quarry-text', *(quarry - {examples / 'quarry/quarry_hdf5.gpr'}))
    copy(to / 'quarry-hdf5', examples / 'quarry/quarry_hdf5.gpr')
    copy(to / 'geomap-gcp', examples / 'geomap/geomap.gcp', examples / 'geomap/geomap.png')
    copy(to / 'geomap-world', examples / 'geomap/geomap.png')
    copy(to / 'wells', examples / 'wells/wells.csv')
    (to / 'geomap-gcp/places.txt').write_text('# places\n4513500 5649000\n4512000.5 5648000\n')
    (to / 'geomap-world/points.txt').write_text('# column row X Y\n31 9 4512000 5650000\n440 20 4514500 5650000\n'
                                                '431.5 346.5 4514500 5648000\n22.5 336.5 4512000 5648000\n')
    subprocess.run([tool, 'georef', 'world', to / 'geomap-gcp/geomap.gcp', to / 'geomap-world/geomap.png'], check=True,
                   stdout=subprocess.DEVNULL)
    for path in files_below(to):
        os.utime(to / path, ns=(LONG_AGO, LONG_AGO))


def files_below(folder):
    return sorted(str(path.relative_to(folder)) for path in pathlib.Path(folder).rglob('*') if path.is_file())


def cases_of(name, file, size, options):
    """Cuts and flips of a file, the same ones whatever else is run."""
    dice = random.Random('%d %s %s' % (options.seed, name, file))
    cuts = dice.sample(range(size), min(options.cuts, size))
    turn = 0
    for place in cuts:
        yield Case(file, 'cut', place, 0, turn)
        turn += 1
    for _ in range(options.flips if size else 0):
        # Headers steer more than numbers do.
        place = dice.randrange(min(size, 4096) if dice.random() < 0.5 else size)
        value = dice.choice(TELLING) if dice.random() < 0.5 else 256 + dice.randrange(8)
        yield Case(file, 'flip', place, value, turn)
        turn += 1


def damaged(data, case):
    if case.kind == 'cut':
        return data[:case.place]
    byte = data[case.place]
    value = byte ^ (1 << (case.value - 256)) if case.value >= 256 else case.value
    return data[:case.place] + bytes([value if value != byte else byte ^ 0x55]) + data[case.place + 1:]


def snapshot(folder, leave_out):
    """(size, time, node) of all below a folder."""
    found = {}
    for place, folders, names in os.walk(folder):
        if place == leave_out:
            folders.clear()
            continue
        for name in names + folders:
            path = os.path.join(place, name)
            status = os.lstat(path)
            found[path] = (status.st_size, status.st_mtime_ns, status.st_ino) if name in names else 'folder'
    return found


class Place:
    """A folder tree of an input's own in which its runs happen, one after the other."""

    def __init__(self, top, item, options):
        self.item, self.options = item, options
        self.pristine = os.path.join(options.work, 'inputs', item.name)
        self.top = os.path.join(top, item.name)
        self.inputs, self.out = os.path.join(self.top, 'inputs'), os.path.join(self.top, 'out')
        self.streams = os.path.join(top, 'streams')
        self.size = sum(os.path.getsize(os.path.join(self.pristine, f)) for f in files_below(self.pristine))
        self.memory = 64 * self.size + 256 * MIB
        self.checker = result_checker.ResultChecker()
        os.makedirs(self.streams, exist_ok=True)
        self.renew()

    def renew(self):
        shutil.rmtree(self.top, ignore_errors=True)
        shutil.copytree(self.pristine, self.inputs, copy_function=os.link)
        for name in ('out', 'cwd', 'tmp'):
            os.mkdir(os.path.join(self.top, name))
        os.chdir(os.path.join(self.top, 'cwd'))

    def damage(self, case):
        with open(os.path.join(self.pristine, case.file), 'rb') as file:
            data = damaged(file.read(), case)
        path = os.path.join(self.inputs, case.file)
        os.unlink(path)
        with open(path, 'wb') as file:
            file.write(data)
        os.utime(path, ns=(LONG_AGO, LONG_AGO))

    def restore(self, case):
        path = os.path.join(self.inputs, case.file)
        os.unlink(path)
        os.link(os.path.join(self.pristine, case.file), path)

    def run(self, case):
        if case.file:
            self.damage(case)
        before = snapshot(self.top, self.out)
        todo = self.item.commands[case.turn % len(self.item.commands)]
        code, seconds, kilobytes, faults = self.spawn(todo)
        faults += self.judge(code, kilobytes) + self.changes(before) + self.checker.faults(self.out)
        if '--json' in todo.words and code == 0:
            facts = self.checker.file(os.path.join(self.streams, 'out.json'))
            faults += ['standard output: ' + fault for fault in facts.faults]
        if faults and self.options.keep:
            self.keep(case, todo, faults)
        if faults:
            self.renew()
        else:
            shutil.rmtree(self.out)
            os.mkdir(self.out)
            if case.file:
                self.restore(case)
        return Result(self.item.name, case, code, seconds, kilobytes, faults)

    def words(self, todo):
        return [word.replace('{in}', self.inputs).replace('{out}', self.out) for word in todo.words]

    def spawn(self, todo):
        """(exit code or minus the signal, seconds, peak memory, [what was too much])."""
        stdin = os.path.join(self.inputs, todo.stdin) if todo.stdin else os.devnull
        write = os.O_WRONLY | os.O_CREAT | os.O_TRUNC
        streams = [(os.POSIX_SPAWN_OPEN, 0, stdin, os.O_RDONLY, 0)] + [
            (os.POSIX_SPAWN_OPEN, n, os.path.join(self.streams, name), write, 0o600)
            for n, name in ((1, 'out.json'), (2, 'err'))]
        environment = dict(self.options.environment, TMPDIR=os.path.join(self.top, 'tmp'))
        # The child takes the limits over; here they hold for no longer than it takes to start it.
        limits = {resource.RLIMIT_CORE: 0, resource.RLIMIT_FSIZE: MOST_BYTES_WRITTEN}
        if not self.options.sanitized:
            limits[resource.RLIMIT_AS] = self.memory
        old = {limit: resource.getrlimit(limit) for limit in limits}
        start = time.monotonic()
        for limit, soft in limits.items():
            resource.setrlimit(limit, (soft, old[limit][1]))
        try:
            child = os.posix_spawn(self.options.tool, [self.options.tool] + self.words(todo), environment,
                                   file_actions=streams)
        finally:
            for limit, both in old.items():
                resource.setrlimit(limit, both)
        late = []
        signal.signal(signal.SIGALRM, lambda *_: (late.append('hangs'), os.kill(child, signal.SIGKILL)))
        signal.setitimer(signal.ITIMER_REAL, self.options.seconds)
        _, status, usage = os.wait4(child, 0)
        signal.setitimer(signal.ITIMER_REAL, 0)
        return os.waitstatus_to_exitcode(status), time.monotonic() - start, usage.ru_maxrss, late

    def judge(self, code, kilobytes):
        """What exit code, message and memory say."""
        with open(os.path.join(self.streams, 'err'), 'rb') as file:
            message = file.read(1 << 16)
        faults = []
        if code not in (0, 1):
            faults.append('ends with %d: %s' % (code, message[-3000:].decode(errors='replace').strip()))
        if code == 1 and not message.strip():
            faults.append('ends with 1 and without a message')
        # Whoever catches this is short of memory, which the limit must never make it.
        if any(text in message.lower() for text in (b'bad_alloc', b'out of memory', b'not enough memory')):
            faults.append('is over the memory limit: ' + message[-300:].decode(errors='replace').strip())
        if self.options.sanitized and kilobytes * 1024 > 3 * self.memory:
            faults.append('takes %d MiB' % (kilobytes // 1024))
        return faults

    def changes(self, before):
        """What is not as it was around the destination. Takes away what the tool may write there, once it is whole."""
        after, faults = snapshot(self.top, self.out), []
        for path in sorted(set(before) | set(after)):
            name = os.path.relpath(path, self.top)
            new = os.path.dirname(path) == self.inputs and path not in before
            if new and os.path.basename(path) in self.item.beside:
                faults += ['%s: %s' % (name, fault) for fault in self.checker.file(path).faults]
                os.unlink(path)
            elif before.get(path) != after.get(path):
                faults.append('%s was %s' % (name, 'written' if path not in before else
                                             'changed' if path in after else 'removed'))
        return faults

    def keep(self, case, todo, faults):
        """The damaged input with all that came of it, and a line to run it again."""
        to = pathlib.Path(self.options.keep) / ('%s-%s-%s-%d-%d' % (
            self.item.name, (case.file or 'whole').replace('/', '_'), case.kind, case.place, case.value))
        shutil.rmtree(to, ignore_errors=True)
        shutil.copytree(self.top, to)
        line = ' '.join(todo.words).replace('{in}', str(to / 'inputs')).replace('{out}', str(to / 'out'))
        (to / 'fault').write_text('%s %s\n%s\n' % (self.options.tool, line, '\n'.join(faults)))


PLACES = {}


def run_chunk(work):
    """In a worker: the cases of one input; its folder tree stays for the next ones."""
    number, cases, options = work
    item = INPUTS[number]
    if item.name not in PLACES:
        top = os.path.join(options.work, 'worker%d' % os.getpid())
        PLACES[item.name] = Place(top, item, options)
    place = PLACES[item.name]
    os.chdir(os.path.join(place.top, 'cwd'))
    return [place.run(case) for case in cases]


def all_cases(options):
    """[(number of the input, its cases)]: first each command on the input as it is, then the files in turn."""
    found = []
    for number, item in enumerate(INPUTS):
        folder = pathlib.Path(options.work, 'inputs', item.name)
        files = [f for f in files_below(folder) if fnmatch.fnmatch(item.name + '/' + f, options.only + '*')]
        if not files:
            continue
        cases = [case for file in files for case in cases_of(item.name, file, (folder / file).stat().st_size, options)]
        found.append((number, [Case(None, 'whole', 0, 0, turn) for turn in (0, 1)], cases))
    if options.sample:
        share = -(-options.sample // max(len(found), 1))
        dice = random.Random(options.seed)
        found = [(number, whole, dice.sample(cases, min(share, len(cases)))) for number, whole, cases in found]
    return [(number, whole + cases) for number, whole, cases in found]


def report(item, results, seconds):
    codes = collections.Counter(result.code for result in results)
    slowest = max(results, key=lambda result: result.seconds)
    most = max(results, key=lambda result: result.kilobytes)
    faulty = [result for result in results if result.faults]
    print('%-20s %7d runs %7d with 0 %7d with 1 %5d not good  slowest %5.2f s  most %4d MiB  %6.0f s' % (
        item.name, len(results), codes[0], codes[1], len(faulty), slowest.seconds, most.kilobytes // 1024, seconds))
    for result in faulty[:20]:
        case = result.case
        print('  %s %s at %d (%d), %s' % (case.kind, case.file, case.place, case.value,
                                          ' '.join(item.commands[case.turn % len(item.commands)].words)))
        for fault in result.faults[:6]:
            print('    ' + fault.replace('\n', '\n      '))
    sys.stdout.flush()
    return len(faulty)


def run_all(options):
    """Runs everything; the number of runs that were not good."""
    bad = total = 0
    begin = time.monotonic()
    with multiprocessing.Pool(options.jobs, signal.signal, (signal.SIGTERM, signal.SIG_DFL)) as pool:
        for number, cases in all_cases(options):
            start = time.monotonic()
            chunks = [(number, cases[at:at + CHUNK], options) for at in range(0, len(cases), CHUNK)]
            results = [result for part in pool.imap_unordered(run_chunk, chunks) for result in part]
            bad += report(INPUTS[number], results, time.monotonic() - start)
            for result in results:
                # What is whole converts with the rules of the modelling programs, which are the first turn.
                if result.case.file is None and result.case.turn == 0 and result.code != 0:
                    print('  %s does not convert as it is' % result.input)
                    bad += 1
            total += len(results)
    print('%d runs, %d not good, %.0f s' % (total, bad, time.monotonic() - begin))
    return bad


def parse(arguments):
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument('tool', metavar='PLXCONVERT', help='the tool, as built')
    parser.add_argument('--all', action='store_true', help='200 cuts and 500 changed bytes a file')
    parser.add_argument('--cuts', type=int, default=2, help='cuts a file (2)')
    parser.add_argument('--flips', type=int, default=3, help='changed bytes a file (3)')
    parser.add_argument('--sample', type=int, metavar='N', help='N runs of those of --all')
    parser.add_argument('--seed', type=int, default=1, help='another seed, other places (1)')
    parser.add_argument('--jobs', type=int, default=2, help='runs at a time (2)')
    parser.add_argument('--only', default='*', metavar='PATTERN', help="inputs or files, as 'valley-gms/*.dis'")
    parser.add_argument('--keep', metavar='DIR', help='keep the trees of runs that were not good')
    parser.add_argument('--seconds', type=float, default=20.0, help='longest run (20)')
    parser.add_argument('--solver', help="valley_solver (from PLXCONVERT's build)")
    options = parser.parse_args(arguments)
    if options.all or options.sample:
        options.cuts, options.flips = 200, 500
    options.tool = os.path.abspath(options.tool)
    if not options.solver:
        options.solver = os.path.join(os.path.dirname(options.tool), '../../examples/valley/valley_solver')
    if options.keep:
        options.keep = os.path.abspath(options.keep)
    with open(options.tool, 'rb') as file:
        options.sanitized = b'__asan_init' in file.read()
    options.environment = dict(os.environ)
    if options.sanitized:
        options.seconds *= 6
        # Faults of the sanitizers must not end with 1, which is the tool's own.
        for name, own in (('ASAN_OPTIONS', 'detect_leaks=0:'), ('UBSAN_OPTIONS', 'print_stacktrace=1:')):
            given = os.environ.get(name, '')
            options.environment[name] = own + given + ':halt_on_error=1:exitcode=99:quarantine_size_mb=16'
    return options


def main(arguments):
    options = parse(arguments)
    # Whoever ends this early still gets the temporary folder removed.
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(1))
    memory = '/dev/shm' if os.access('/dev/shm', os.W_OK) else None
    with tempfile.TemporaryDirectory(prefix='cut_and_flip.', dir=memory) as work:
        options.work = work
        inputs = pathlib.Path(work, 'inputs')
        prepare(inputs, options.tool, options.solver)
        bad = run_all(options)
        changed = [f for f in files_below(inputs) if os.stat(inputs / f).st_mtime_ns != LONG_AGO]
        for file in changed:
            print('%s was changed by some run' % file)
        # A worker's current folder must not be in the way of removing it.
        os.chdir('/')
    return 1 if bad or changed else 0


if __name__ == '__main__':
    sys.exit(main(sys.argv[1:]))
