#!/usr/bin/python3
"""Converts every published MODFLOW and GMS model of a model library and holds the trees against the library's own
figures.

usage: check_models.py PLXCONVERT LIBRARY

LIBRARY holds models/ and tools/check_expected.py. Ends with 77 (skipped) where it does not exist.
"""
import json
import pathlib
import subprocess
import sys
import tempfile

SKIPPED = 77


def is_modflow(name_file):
    words = (line.split() for line in name_file.read_text('latin-1').splitlines())
    return any(line and line[0].upper() in ('BAS', 'BAS6') for line in words)


def is_gms(path):
    """True for a super file that is a whole model, and for a project with one: the library has samples, too."""
    if path.suffix.lower() == '.mfs':
        return path.with_suffix('.dis').is_file()
    return any(is_gms(name) for pattern in ('*.mfs', '*_MODFLOW/*.mfs') for name in path.parent.glob(pattern))


def projects(models):
    for path in sorted(models.rglob('*')):
        kind = path.suffix.lower()
        if kind == '.nam' and is_modflow(path) or kind in ('.mfs', '.gpr') and is_gms(path):
            yield path


def converted(tool, project):
    """Bytes of the results of a project, without the trace, by name."""
    with tempfile.TemporaryDirectory(prefix='plx_models_') as name:
        out = pathlib.Path(name)
        if run([tool, 'modflow', project, '--dest', out, '--quiet']) is None:
            return {}
        return {path.relative_to(out): path.read_bytes() for path in out.glob('*/**/*') if path.is_file()}


def same_in_both_forms(tool, models):
    """One model that GMS wrote with its arrays as text and in an HDF5 file."""
    forms = [models / ('gms_smallgrid_' + form) / 'smallGrid_65.mfs' for form in ('text', 'h5')]
    if not all(form.is_file() for form in forms):
        return True
    text, hdf5 = (converted(tool, form) for form in forms)
    different = sorted(name for name in {*text, *hdf5} if text.get(name) != hdf5.get(name))
    for name in different:
        print('FAILED: text and HDF5 arrays give different files: %s' % name)
    return bool(text) and not different


def run(command):
    done = subprocess.run(command, capture_output=True, text=True, errors='replace')
    if done.returncode != 0:
        print('FAILED (%d): %s\n%s' % (done.returncode, ' '.join(map(str, command)), done.stderr.strip()))
    return done if done.returncode == 0 else None


def main():
    tool, library = sys.argv[1], pathlib.Path(sys.argv[2])
    models, checker = library / 'models', library / 'tools' / 'check_expected.py'
    if not models.is_dir() or not checker.is_file():
        print('no model library at %s' % library)
        return SKIPPED
    good = True
    folders = set()
    for project in projects(models):
        good &= bool(converted(tool, project))
        described = run([tool, 'info', project, '--json'])
        good &= described is not None and json.loads(described.stdout) is not None
        if (project.parent / 'EXPECTED.json').is_file():
            folders.add(project.parent)
    good &= same_in_both_forms(tool, models)
    command = tool + ' modflow {project} --dest {out} --quiet'
    checked = subprocess.run(['/usr/bin/python3', checker, '--convert', command] + sorted(folders))
    return 0 if good and checked.returncode == 0 else 1


if __name__ == '__main__':
    sys.exit(main())
