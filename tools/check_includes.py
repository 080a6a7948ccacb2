#!/usr/bin/env python3
"""Checks the rules of includes: who may include whom, no circles among headers, every header compiles alone.

usage: tools/check_includes.py [--root FOLDER] [--compiler g++] [--jobs 2] [--no-compile]

Prints "file:line: reason" for each finding. Exit code 0 without findings, 1 with some, 2 for wrong usage.
"""
import argparse
import concurrent.futures
import os
import pathlib
import re
import subprocess
import sys

# Folder = layer. What a layer may include besides itself and plxutils/export.h.
LAYERS = {
    'platform': set(),
    'core': {'platform'},
    'math': {'core'},
    'geometry': {'core', 'math'},
    'interpolate': {'core', 'geometry'},
    'georef': {'core', 'math'},
    'formats': {'core', 'platform'},
    'converters': {'core', 'math', 'geometry', 'interpolate', 'formats', 'platform'},
    'gms': {'core', 'formats', 'platform'},
}
# Single headers beyond the table: leaves that include nothing which would close a circle.
EXTRA = {
    'geometry': {'platform/host_runtime.h'},
    'georef': {'platform/platform.h', 'platform/part_file.h'},
    'converters': {'gms/callbacks.h', 'plxutils/gms/GMSCallbacks.h'},
    'gms': {'converters/field_file_writer.h'},
}
# The flat C interface stands for every layer and is implemented beside each object.
C_LAYER = 'c'
# System headers that only these files may include.
GUARDED = [
    (re.compile(r'zlib\.h$'), re.compile(r'src/core/(VXInputFile|VXOutputFile|text_files|[a-z0-9_]*(stream|gzip|gz_file))[^/]*$'),
     'zlib belongs to the stream files of core'),
    (re.compile(r'(hdf5|H5[A-Za-z]*)\.h$'), re.compile(r'src/formats/hdf5_(reader|storage)\.cpp$'),
     'HDF5 belongs to formats/hdf5_reader and hdf5_storage'),
    (re.compile(r'^(unsupported/)?Eigen/'), re.compile(r'src/georef/fit_polynomial\.cpp$'),
     'Eigen belongs to georef/fit_polynomial'),
    (re.compile(r'(?i)^(windows|winbase|oleauto|oaidl)\.h$'), re.compile(r'src/platform/[a-z_]+\.cpp$'),
     'Windows headers belong to sources of platform'),
]
SOURCES = {'.h', '.hpp', '.c', '.cpp'}
HEADERS = {'.h', '.hpp'}
INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]')
COMMENT_OR_TEXT = re.compile(r'//[^\n]*|/\*.*?\*/|"(?:\\.|[^"\\\n])*"', re.S)


def without_comments(text):
    def blank(match):
        found = match.group(0)
        return found if found.startswith('"') else '\n' * found.count('\n')
    return COMMENT_OR_TEXT.sub(blank, text)


class Source:
    """A file of the project: its area ('include', 'src', 'tests', ...), its layer, and its include lines."""

    def __init__(self, root, path):
        self.path = path
        self.name = path.relative_to(root).as_posix()
        parts = self.name.split('/')
        self.area = parts[0]
        at = 2 if self.area == 'include' else 1
        self.layer = parts[at] if len(parts) > at + 1 else ''
        self.text = without_comments(path.read_text(encoding='utf-8'))
        self.includes = []  # (line, quoted, name)
        for number, line in enumerate(self.text.splitlines(), 1):
            match = INCLUDE.match(line)
            if match:
                self.includes.append((number, match.group(1) == '"', match.group(2)))


class Checker:
    def __init__(self, root):
        self.root = root
        self.findings = []
        self.sources = []
        for area in ('include', 'src', 'app', 'examples', 'tests', 'bench', 'fuzz'):
            for path in sorted((root / area).rglob('*')):
                if path.suffix in SOURCES and path.is_file():
                    self.sources.append(Source(root, path))
        self.by_name = {source.name: source for source in self.sources}

    def find(self, source, line, reason):
        self.findings.append((source.name, line, reason))

    def resolve(self, source, name):
        """The project's own file that an include names, or None for a header of somebody else."""
        roots = ['include', 'src']
        if source.area in ('app', 'examples', 'bench', 'fuzz'):
            roots += [source.area]
        if source.area == 'tests':
            roots += ['tests']
        beside = source.path.parent.joinpath(name)
        for place in [beside] + [self.root / folder / name for folder in roots]:
            normal = os.path.relpath(os.path.normpath(place), self.root).replace(os.sep, '/')
            if normal in self.by_name:
                return self.by_name[normal]
        return None

    def check_rules(self):
        for source in self.sources:
            for line, quoted, name in source.includes:
                target = self.resolve(source, name)
                self.check_system_header(source, line, name)
                if target is None:
                    if quoted and not self.is_foreign(source, name):
                        self.find(source, line, f'there is no header "{name}"')
                    continue
                self.check_spelling(source, line, name, target)
                reason = self.forbidden(source, target)
                if reason:
                    self.find(source, line, f'"{name}": {reason}')
            self.check_platform_switch(source)

    @staticmethod
    def is_foreign(source, name):
        return source.area in ('app', 'examples', 'tests', 'bench', 'fuzz') and not name.startswith('plxutils/')

    def check_system_header(self, source, line, name):
        if source.area not in ('include', 'src'):
            return
        for pattern, allowed, reason in GUARDED:
            if pattern.search(name) and not allowed.search(source.name):
                self.find(source, line, f'<{name}>: {reason}')

    def check_platform_switch(self, source):
        if source.area not in ('include', 'src') or source.layer == 'platform' or source.name.endswith('/export.h'):
            return
        for number, line in enumerate(source.text.splitlines(), 1):
            if re.match(r'\s*#\s*(if|elif|ifdef|ifndef)\b.*\b_WIN(32|64)\b', line):
                self.find(source, number, 'the system is asked for in platform only')

    def check_spelling(self, source, line, name, target):
        if name.startswith('.') or '/../' in name:
            self.find(source, line, f'"{name}": includes name the folder from an include root, without ".."')
        elif '/' not in name and source.area in ('include', 'src', 'tests'):
            self.find(source, line, f'"{name}": an include names its folder')
        elif source.area in ('include', 'src') and target.area == 'include' and not name.startswith('plxutils/'):
            self.find(source, line, f'"{name}": a public header is included as plxutils/...')

    def forbidden(self, source, target):
        """Why the include is against the rules; None when it is not."""
        if target.name.endswith('plxutils/export.h'):
            return None
        if source.area == 'include':
            if target.area != 'include':
                return 'a public header includes public headers only'
            if not source.layer:  # PLXUtils.h is all of them
                return None
            return self.between_layers(source.layer, target)
        if source.area == 'src':
            if target.area not in ('include', 'src'):
                return 'the library includes only its own headers'
            return self.between_layers(source.layer, target)
        if source.area in ('app', 'examples'):
            if target.area in ('include', source.area):
                return None
            return f'{source.area} includes plxutils/... only, like any host'
        if source.area == 'tests':
            return self.from_tests(source, target)
        return None

    @staticmethod
    def between_layers(layer, target):
        short = target.name.removeprefix('src/').removeprefix('include/')
        if layer == C_LAYER:
            return None if target.layer == C_LAYER else 'the C headers include C headers only'
        if layer not in LAYERS:
            return f'folder {layer or "(none)"} is not a layer of the table'
        if target.layer in (layer, C_LAYER) or target.layer in LAYERS[layer] or short in EXTRA.get(layer, ()):
            return None
        return f'{layer} may not include {target.layer}'

    def from_tests(self, source, target):
        if target.area == 'tests' and target.layer in (source.layer, 'support'):
            return None
        if target.area not in ('include', 'src'):
            return 'a test includes the library, its own folder and support'
        if source.layer in LAYERS:
            return self.between_layers(source.layer, target)
        if source.layer in ('capi', 'cli', 'conversion') and target.area != 'include':
            return f'tests/{source.layer} sees what a host sees: plxutils/... only'
        return None

    def check_circles(self):
        graph = {}
        for source in self.sources:
            if source.path.suffix in HEADERS:
                targets = ((line, self.resolve(source, name)) for line, _, name in source.includes)
                graph[source.name] = [(line, found.name) for line, found in targets if found]
        done, path = set(), []

        def visit(name):
            if name in done:
                return
            path.append(name)
            for line, target in graph.get(name, ()):
                if target in path:
                    circle = path[path.index(target):] + [target]
                    self.findings.append((name, line, 'headers in a circle: ' + ' -> '.join(circle)))
                else:
                    visit(target)
            path.pop()
            done.add(name)

        for name in graph:
            visit(name)

    def check_alone(self, compiler, jobs):
        headers = [source for source in self.sources
                   if source.path.suffix in HEADERS and source.area in ('include', 'src', 'app', 'tests')]
        with concurrent.futures.ThreadPoolExecutor(jobs) as pool:
            for found in pool.map(lambda header: self.compile_alone(compiler, header), headers):
                self.findings.extend(found)
        return len(headers)

    def compile_alone(self, compiler, header):
        roots = [self.root / 'include', self.root / 'src']
        if header.area in ('app', 'tests'):
            roots += [self.root / header.area, header.path.parent]
        folders = [word for folder in roots for word in ('-I', str(folder))]
        languages = [['-x', 'c++', '-std=c++20']]
        if header.layer == C_LAYER and header.area == 'include':
            languages.append(['-x', 'c', '-std=c11'])
        found = []
        for language in languages:
            run = subprocess.run([compiler, *language, '-fsyntax-only', '-Wall', '-Wextra', *folders, '-'],
                                 input=f'#include "{header.path}"\n', text=True, capture_output=True, check=False)
            if run.returncode != 0 or 'warning:' in run.stderr:
                found.append(self.first_complaint(header, run.stderr))
        return found

    def first_complaint(self, header, text):
        for line in text.splitlines():
            match = re.match(r'(.+?):(\d+):\d+: (?:fatal )?(?:error|warning): (.*)', line)
            if match:
                place = os.path.relpath(match.group(1), self.root)
                number = int(match.group(2)) if place == header.name else 1
                where = '' if place == header.name else f' ({place}:{match.group(2)})'
                return (header.name, number, f'does not compile alone: {match.group(3)}{where}')
        return (header.name, 1, 'does not compile alone: ' + (text.strip().splitlines() or ['no message'])[-1])


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument('--root', type=pathlib.Path, default=pathlib.Path(__file__).resolve().parent.parent)
    parser.add_argument('--compiler', default=os.environ.get('CXX', 'g++'))
    parser.add_argument('--jobs', type=int, default=2)
    parser.add_argument('--no-compile', action='store_true', help='leave out the compilation of each header')
    arguments = parser.parse_args()

    checker = Checker(arguments.root.resolve())
    if not checker.sources:
        print(f'check_includes.py: no sources below {arguments.root}', file=sys.stderr)
        return 2
    checker.check_rules()
    checker.check_circles()
    compiled = 0 if arguments.no_compile else checker.check_alone(arguments.compiler, max(1, arguments.jobs))
    for name, line, reason in sorted(checker.findings):
        print(f'{name}:{line}: {reason}')
    print(f'{len(checker.sources)} files, {compiled} headers compiled alone, {len(checker.findings)} findings')
    return 1 if checker.findings else 0


if __name__ == '__main__':
    sys.exit(main())
