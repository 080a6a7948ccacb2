#!/usr/bin/env python3
"""The manual page and the completion of plxconvert know every command and option that --help names, and no others.

usage: check_help.py PLXCONVERT MANUALPAGE COMPLETION
"""
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

TOOL, PAGE, COMPLETION = sys.argv[1:4]


class Help:
    """What 'plxconvert COMMAND --help' tells."""

    def __init__(self, command):
        self.text = subprocess.run([TOOL, *command, '--help'], capture_output=True, text=True, check=True).stdout
        self.options, self.valued = set(), set()
        for names, value in re.findall(r'^  (-[\w,-]+)( \S)?', self.text, re.M):
            self.options.update(names.split(','))
            self.valued.update(names.split(',') if value else ())

    def block(self, title):
        """The first words of the lines below a title."""
        found = re.search(rf'^{title}:\n((?:  .*\n)+)', self.text, re.M)
        return re.findall(r'^  (\w+)', found.group(1), re.M) if found else []


def all_commands(command=()):
    yield command
    for name in Help(command).block('Subcommands'):
        yield from all_commands((*command, name))


def options_of_page():
    """{section: options}: the sections of the manual page and the options that head their paragraphs."""
    text = pathlib.Path(PAGE).read_text(encoding='ascii').replace(r'\-', '-')
    found = {}
    for part in re.split(r'^\.S[HS] ', text, flags=re.M)[1:]:
        title = part.splitlines()[0].strip('"').removeprefix('COMMAND ')
        tags = ' '.join(re.findall(r'^\.TP\n(.*)', part, re.M))
        found[title] = set(re.findall(r'(?<![\w-])--?[a-z][a-z-]*', tags))
    return found


def bash(script, folder=None, *arguments):
    command = ['bash', '-c', f'. "$0"; compopt() {{ :; }}; {script}', os.path.abspath(COMPLETION), *arguments]
    return subprocess.run(command, capture_output=True, text=True, check=True, cwd=folder).stdout.splitlines()


def complete(words, folder=None):
    return bash('COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1)); _plxconvert; printf "%s\\n" "${COMPREPLY[@]}"', folder,
                'plxconvert', *words)


class CommandHelp(unittest.TestCase):
    def test_page_and_completion_have_the_options_of_every_command(self):
        page = options_of_page()
        commands = list(all_commands())
        self.assertGreater(len(commands), 9)
        for command in commands:
            with self.subTest(command=command):
                told = Help(command)
                self.assertEqual(page[' '.join(command) or 'OPTIONS'], told.options)
                self.assertEqual(set(complete([*command, '-'])), told.options)
                if told.block('Subcommands'):
                    self.assertEqual(complete([*command, '']), told.block('Subcommands'))

    def test_completion_knows_which_options_take_a_value(self):
        for command in all_commands():
            told = Help(command)
            for option in told.options:
                with self.subTest(command=command, option=option):
                    script = 'command=$1 prev=$2 cur=; _plxconvert_value && echo yes || echo no'
                    known = bash(script, None, ' '.join(command), option)
                    self.assertEqual(known[-1], 'yes' if option in told.valued else 'no')

    def test_completion_offers_the_words_of_an_option(self):
        for command, option, title, more in (('modflow', '--kind', 'Kinds', ['auto']),
                                             ('modflow', '--outputs', 'Outputs', []),
                                             ('modflow', '--rules', 'Rules', []),
                                             ('gms', '--types', 'Types', ['all']),
                                             ('gms', '--rules', 'Rules', [])):
            with self.subTest(command=command, option=option):
                self.assertEqual(set(complete([command, option, ''])), {*Help([command]).block(title), *more})
        self.assertEqual(complete(['modflow', '--outputs', 'ccf,elev_t']), ['ccf,elev_top'])
        self.assertEqual(complete(['gms', '--rules', '=', 'm']), ['modern'])
        self.assertEqual(complete(['gms', '--rules', '=']), ['modern', 'prescribed'])

    def test_completion_offers_files_that_fit(self):
        with tempfile.TemporaryDirectory() as folder:
            for name in ('a b.nam', 'SITE.GPR', 'site.gcp', 'map.TIF', 'w.csv', 'out.pfz', 'noext'):
                pathlib.Path(folder, name).touch()
            pathlib.Path(folder, 'sub').mkdir()
            for words, expected in ((['modflow', ''], {'a b.nam', 'SITE.GPR', 'sub'}),
                                    (['modflow', '--quiet', 'a'], {'a b.nam'}),
                                    (['modflow', 'a b.nam', '--dest', ''], {'sub'}),
                                    (['gms', ''], {'SITE.GPR', 'sub'}),
                                    (['interpolate', ''], {'w.csv', 'sub'}),
                                    (['interpolate', 'w.csv', '-o', ''], {'out.pfz', 'sub'}),
                                    (['georef', 'fit', ''], {'site.gcp', 'sub'}),
                                    (['georef', 'gcp', 'm'], {'map.TIF'}),
                                    (['info', ''], {''})):
                with self.subTest(words=words):
                    self.assertEqual(set(complete(words, folder)), expected)

    @unittest.skipUnless(shutil.which('groff'), 'no groff')
    def test_page_is_set_without_warnings(self):
        run = subprocess.run(['groff', '-man', '-ww', '-z', '-Tutf8', PAGE], capture_output=True, text=True, check=True)
        self.assertEqual(run.stderr, '')


unittest.main(argv=sys.argv[:1])
