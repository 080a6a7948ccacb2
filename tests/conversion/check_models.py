#!/usr/bin/python3
"""Converts every published MODFLOW and GMS model of a model library and holds the trees against the library's own
figures.

usage: check_models.py PLXCONVERT LIBRARY

LIBRARY holds models/ and tools/check_expected.py. Ends with 77 (skipped) where it does not exist.
"""
import glob
import json
import os
import subprocess
import sys
import tempfile

SKIPPED = 77


def is_modflow(name_file):
    with open(name_file, 'rb') as f:
        types = {line.split()[0].upper() for line in f.read().decode('latin-1').splitlines() if line.split()}
    return bool(types & {'BAS', 'BAS6'})


def is_gms(path):
    """True for a super file that is a whole model, and for a project with one: the library has samples, too."""
    stem, extension = os.path.splitext(path)
    if extension == '.mfs':
        return os.path.isfile(stem + '.dis')
    super_files = glob.glob(os.path.join(os.path.dirname(path), '*.mfs')) + \
        glob.glob(os.path.join(os.path.dirname(path), '*_MODFLOW', '*.mfs'))
    return any(is_gms(name) for name in super_files)


def projects(models):
    for folder, _, files in sorted(os.walk(models)):
        for name in sorted(files):
            path = os.path.join(folder, name)
            kind = os.path.splitext(name)[1].lower()
            if kind == '.nam' and is_modflow(path) or kind in ('.mfs', '.gpr') and is_gms(path):
                yield path


def tree(folder):
    """Bytes of the results below a folder, without the trace, by name."""
    found = {}
    for at, _, files in os.walk(folder):
        for name in files if at != folder else ():
            with open(os.path.join(at, name), 'rb') as f:
                found[os.path.relpath(os.path.join(at, name), folder)] = f.read()
    return found


def converted(tool, project):
    with tempfile.TemporaryDirectory(prefix='plx_models_') as out:
        done = run([tool, 'modflow', project, '--dest', out, '--quiet'])
        return tree(out) if done is not None else None


def same_in_both_forms(tool, models):
    """One model that GMS wrote with its arrays as text and in an HDF5 file."""
    forms = [os.path.join(models, 'gms_smallgrid_' + form, 'smallGrid_65.mfs') for form in ('text', 'h5')]
    if not all(os.path.isfile(form) for form in forms):
        return True
    text, hdf5 = (converted(tool, form) for form in forms)
    different = sorted(name for name in {*(text or {}), *(hdf5 or {})} if (text or {}).get(name) != (hdf5 or {}).get(name))
    for name in different:
        print('FAILED: text and HDF5 arrays give different files: %s' % name)
    return bool(text) and not different


def run(command):
    done = subprocess.run(command, capture_output=True, text=True, errors='replace')
    if done.returncode != 0:
        print('FAILED (%d): %s\n%s' % (done.returncode, ' '.join(command), done.stderr.strip()))
    return done if done.returncode == 0 else None


def main():
    tool, library = sys.argv[1:3]
    models, checker = os.path.join(library, 'models'), os.path.join(library, 'tools', 'check_expected.py')
    if not os.path.isdir(models) or not os.path.isfile(checker):
        print('no model library at %s' % library)
        return SKIPPED
    good = True
    folders = set()
    for project in projects(models):
        good &= bool(converted(tool, project))
        described = run([tool, 'info', project, '--json'])
        good &= described is not None and json.loads(described.stdout) is not None
        if os.path.isfile(os.path.join(os.path.dirname(project), 'EXPECTED.json')):
            folders.add(os.path.dirname(project))
    good &= same_in_both_forms(tool, models)
    command = tool + ' modflow {project} --dest {out} --quiet'
    checked = subprocess.run(['/usr/bin/python3', checker, '--convert', command] + sorted(folders))
    return 0 if good and checked.returncode == 0 else 1


if __name__ == '__main__':
    sys.exit(main())
