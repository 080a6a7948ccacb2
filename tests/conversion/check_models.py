#!/usr/bin/python3
"""Converts every published MODFLOW model of a model library and holds the trees against the library's own figures.

usage: check_models.py PLXCONVERT LIBRARY

LIBRARY holds models/ and tools/check_expected.py. Ends with 77 (skipped) where it does not exist.
"""
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


def name_files(models):
    for folder, _, files in sorted(os.walk(models)):
        for name in sorted(files):
            path = os.path.join(folder, name)
            if name.lower().endswith('.nam') and is_modflow(path):
                yield path


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
    for project in name_files(models):
        with tempfile.TemporaryDirectory(prefix='plx_models_') as out:
            good &= run([tool, 'modflow', project, '--dest', out, '--quiet']) is not None
        described = run([tool, 'info', project, '--json'])
        good &= described is not None and json.loads(described.stdout) is not None
        if os.path.isfile(os.path.join(os.path.dirname(project), 'EXPECTED.json')):
            folders.add(os.path.dirname(project))
    command = tool + ' modflow {project} --dest {out} --quiet'
    checked = subprocess.run(['/usr/bin/python3', checker, '--convert', command] + sorted(folders))
    return 0 if good and checked.returncode == 0 else 1


if __name__ == '__main__':
    sys.exit(main())
