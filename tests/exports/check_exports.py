#!/usr/bin/env python3
"""Compares what a library exports with a list.

usage: check_exports.py LIBRARY [--list FILE] [--update]

LIBRARY is libPLXUtils.so or PLXUtils.dll; one list serves both. --update rewrites the list. Tells what is new and what
is missing and ends with 1 when they differ; with 2 when the exports cannot be read.

The list holds demangled names, sorted. What depends on the platform is left out or brought into one form: the
several variants of a constructor or destructor, integer types of equal width, names of types beside their type data,
and constants and tables of which every program has a copy.
"""
import argparse
import pathlib
import re
import subprocess
import sys

EXPORT_ROW = re.compile(r'^\s*\[\s*\d+\](?:\s+\+base\[\s*\d+\])?(?:\s+[0-9a-f]{4})?\s+(\S+)$')
ELF_OWN = {'_init', '_fini', '__bss_start', '_edata', '_end'}
# Classes that are whole in their headers: their users make these tables, and the optimiser drops the library's.
HEADER_TABLES = {'vtable for cgElement', 'vtable for cgList'}


def run(command, text=None):
    try:
        return subprocess.run(command, input=text, capture_output=True, text=True, check=True).stdout
    except (OSError, subprocess.CalledProcessError) as fault:
        print(f'{command[0]}: {fault}\n{getattr(fault, "stderr", None) or ""}', file=sys.stderr)
        sys.exit(2)


def exported_by_dll(library):
    """The names in the export table, mangled."""
    tables = run(['x86_64-w64-mingw32-objdump', '-p', str(library)])
    _, _, names = tables.partition('[Ordinal/Name Pointer] Table')
    found = []
    for line in names.splitlines()[1:]:
        row = EXPORT_ROW.match(line)
        if row:
            found.append(row.group(1))
        elif found:
            break
    return run(['x86_64-w64-mingw32-c++filt', '-n'], '\n'.join(found)).splitlines()


def exported_by_elf(library):
    """The names that other modules may link to."""
    rows = run(['nm', '-D', '--defined-only', '--no-demangle', str(library)]).splitlines()
    mangled = [row.split()[-1].split('@')[0] for row in rows]
    return run(['c++filt'], '\n'.join(name for name in mangled if name not in ELF_OWN)).splitlines()


def normal(name):
    """One form of a name for all compilers and systems; empty for a name that does not count."""
    if name in HEADER_TABLES or re.match(r'(typeinfo name|guard variable) for |(.*::)?k[A-Z]\w*$', name):
        return ''
    name = re.sub(r'\b_(IO_FILE|iobuf)\b', 'FILE', name)
    name = re.sub(r'\blong long\b', 'long', name)
    name = re.sub(r'\b(\d+)ull?\b', r'\1u', name)
    return name.replace('[abi:cxx11]', '')


def main():
    parser = argparse.ArgumentParser(description='Compares what a library exports with a list.')
    parser.add_argument('library', type=pathlib.Path)
    parser.add_argument('--list', type=pathlib.Path, default=pathlib.Path(__file__).with_name('exports.txt'))
    parser.add_argument('--update', action='store_true', help='rewrite the list')
    given = parser.parse_args()
    if not given.library.is_file():
        parser.error(f'{given.library}: no such file')
    read = exported_by_dll if given.library.suffix.lower() == '.dll' else exported_by_elf
    found = {normal(name) for name in read(given.library)} - {''}
    if not found:
        print(f'{given.library}: no exports were found', file=sys.stderr)
        return 2
    if given.update:
        given.list.write_text(''.join(name + '\n' for name in sorted(found)), encoding='ascii')
        print(f'{len(found)} names in {given.list}')
        return 0
    expected = set(given.list.read_text(encoding='ascii').splitlines())
    for title, names in (('exported, but not in the list', found - expected),
                         ('in the list, but not exported', expected - found)):
        for name in sorted(names):
            print(f'{title}: {name}')
    if found != expected:
        print(f'{given.library} and {given.list} differ; after a change on purpose: check_exports.py --update')
        return 1
    print(f'{len(found)} names, all as listed')
    return 0


if __name__ == '__main__':
    sys.exit(main())
