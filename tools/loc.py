#!/usr/bin/env python3
"""Counts lines of code and of tests, neither blank nor comment, and lists the longest files and functions.

usage: tools/loc.py [--root FOLDER] [--all]

Code is include, src, app, examples and python/plxutils; tests are everything below tests and python/tests. The ratio should lie between 0.25 and 0.33.
C, C++, Python and shell count; build files, documents and data do not. The exit code is 0 whatever the figures.
"""
import argparse
import io
import pathlib
import re
import sys
import tokenize

CODE = ('include', 'src', 'app', 'examples', 'python/plxutils')
TESTS = ('tests', 'python/tests')
OTHER = ('bench', 'fuzz', 'tools')
BAND = (0.25, 0.33)
CXX = {'.h', '.hpp', '.c', '.cpp'}
KEYWORDS = {'if', 'for', 'while', 'switch', 'catch', 'return', 'else', 'do', 'try'}
# Comments, raw strings, strings, and characters (not the digit separators of 1'000).
CXX_TOKEN = re.compile(r'//[^\n]*|/\*.*?\*/|R"(?P<mark>[^()\\ ]{0,16})\(.*?\)(?P=mark)"|"(?:\\.|[^"\\\n])*"'
                       r"|(?<![0-9A-Za-z_])'(?:\\.|[^'\\\n])+'", re.S)


def plain_cxx(text, keep_text):
    """The text with comments blanked, and the contents of strings too unless `keep_text`; lines stay in place."""
    def blank(match):
        found = match.group(0)
        if found.startswith('/'):
            return '\n' * found.count('\n')
        if keep_text:
            return found
        return '""' + '\n' * found.count('\n') if '"' in found[:2] or found.startswith('R') else "' '"
    return CXX_TOKEN.sub(blank, text)


def count_filled(text):
    return sum(1 for line in text.splitlines() if line.strip())


def count_python(text):
    """Lines that hold a token other than comments and strings that stand alone."""
    lines, statement = set(), []
    layout = {tokenize.NL, tokenize.COMMENT, tokenize.INDENT, tokenize.DEDENT, tokenize.ENCODING, tokenize.ENDMARKER}
    for token in tokenize.generate_tokens(io.StringIO(text).readline):
        if token.type == tokenize.NEWLINE:
            if any(part.type != tokenize.STRING for part in statement):
                for part in statement:
                    lines.update(range(part.start[0], part.end[0] + 1))
            statement = []
        elif token.type not in layout:
            statement.append(token)
    return len(lines)


def count_shell(text):
    return sum(1 for line in text.splitlines() if line.strip() and not line.lstrip().startswith('#'))


def count_lines(path, text):
    if path.suffix in CXX:
        return count_filled(plain_cxx(text, keep_text=True))
    if path.suffix == '.py' or (path.suffix == '' and text.startswith('#!') and 'python' in text.splitlines()[0]):
        return count_python(text)
    if path.suffix == '.sh' or (path.suffix == '' and text.startswith('#!')):
        return count_shell(text)
    return None


def function_name(head):
    """Name of the function whose text before its body is `head`; None when it is no function."""
    head = re.sub(r'(?m)^\s*#.*$', '', head)
    head = re.sub(r'\[\[.*?\]\]|__attribute__\s*\(\(.*?\)\)|\b(?:PLX_PRINTF|alignas|noexcept|requires|explicit)\s*\([^()]*\)',
                  ' ', head).strip()
    if re.match(r'(inline\s+)?(namespace|class|struct|union|enum|extern\s*"")\b', head) and ')' not in head:
        return None
    operator = re.search(r'([\w:]*\boperator\s*(?:\(\)|\[\]|[^\s(]+|\s\w+))\s*\(', head)
    if operator:
        return operator.group(1)
    match = re.search(r'([~\w:]+)\s*(?:<[^<>()]*>)?\s*\(', head)
    if not match or match.group(1) in KEYWORDS or re.search(r'(?<![=<>!])=(?!=)', head[:match.start()]):
        return None
    if match.group(1).startswith('TEST') or match.group(1) == 'BENCHMARK':
        return re.sub(r'\s+', '', head[match.start():head.rfind(')') + 1])
    return match.group(1)


def opens_member(head):
    """True when the brace after `head` initialises a member of a constructor, so that the body is still to come."""
    return re.search(r'\)\s*(?:noexcept\s*)?:(?!:)', head) and re.search(r'[\w>]\s*$', head)


def functions(text):
    """(name, first line, lines) of the C++ functions of a file, found by their braces."""
    code = re.sub(r'(?m)^[ \t]*#(?:[^\n]*\\\n)*[^\n]*$', lambda m: '\n' * m.group(0).count('\n'), plain_cxx(text, False))
    found, start, at = [], 0, 0
    depth, inside = 0, None  # inside: (name, first line) of the function or data whose braces are counted
    while at < len(code):
        c = code[at]
        if inside is None and c in ';}':
            start = at + 1
        elif c == '{':
            head = code[start:at]
            if inside is not None:
                depth += 1
            elif opens_member(head):
                at = matching_brace(code, at)
            elif function_name(head) or '=' in head or re.search(r'[\w>\]]\s*$', head) and not scope(head):
                begin = start + len(head) - len(head.lstrip())
                inside, depth = (function_name(head), code.count('\n', 0, begin) + 1), 1
            else:
                start = at + 1
        elif c == '}' and inside is not None:
            depth -= 1
            if depth == 0:
                if inside[0]:
                    found.append((inside[0], inside[1], code.count('\n', 0, at) + 2 - inside[1]))
                inside, start = None, at + 1
        at += 1
    return found


def scope(head):
    """True for the head of a namespace, class, struct, union or linkage block, whose inside is looked into."""
    head = re.sub(r'template\s*<[^{}]*?>\s*(?=class|struct|union)', '', head)
    return re.search(r'(?:^|\s)(?:namespace|class|struct|union|extern)\b', head) or not head.strip()


def matching_brace(code, at):
    depth = 0
    while at < len(code):
        depth += {'{': 1, '}': -1}.get(code[at], 0)
        if depth == 0:
            return at
        at += 1
    return at - 1


class File:
    def __init__(self, root, path):
        self.name = path.relative_to(root).as_posix()
        text = path.read_text(encoding='utf-8', errors='replace')
        self.count = count_lines(path, text)
        self.length = len(text.splitlines())
        self.functions = functions(text) if path.suffix in CXX else []


def files_below(root, folders):
    found = []
    for folder in folders:
        for path in sorted((root / folder).rglob('*')):
            if path.is_file() and 'data' not in path.relative_to(root).parts[1:2]:
                if path.suffix in CXX | {'.py', '.sh', ''}:
                    file = File(root, path)
                    if file.count is not None:
                        found.append(file)
    return found


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument('--root', type=pathlib.Path, default=pathlib.Path(__file__).resolve().parent.parent)
    parser.add_argument('--all', action='store_true', help='also list every folder')
    arguments = parser.parse_args()
    root = arguments.root.resolve()

    code, tests, other = (files_below(root, folders) for folders in (CODE, TESTS, OTHER))
    code_lines, test_lines = sum(f.count for f in code), sum(f.count for f in tests)
    print(f'code   {code_lines:7d} lines in {len(code)} files ({", ".join(CODE)})')
    print(f'tests  {test_lines:7d} lines in {len(tests)} files')
    print(f'other  {sum(f.count for f in other):7d} lines in {len(other)} files ({", ".join(OTHER)})')
    if code_lines:
        ratio = test_lines / code_lines
        place = 'below' if ratio < BAND[0] else 'above' if ratio > BAND[1] else 'inside'
        print(f'tests to code {ratio:.3f}, {place} the band {BAND[0]:.2f} to {BAND[1]:.2f}')
    if arguments.all:
        print_folders(code, tests)

    everything = code + tests + other
    print('\nlongest files (all lines)')
    for file in sorted(everything, key=lambda f: -f.length)[:10]:
        print(f'{file.length:6d}  {file.name}')
    print('\nlongest functions')
    listed = [(length, name, f'{f.name}:{line}') for f in everything for name, line, length in f.functions]
    for length, name, place in sorted(listed, reverse=True)[:10]:
        print(f'{length:6d}  {name}  {place}')
    return 0


def print_folders(code, tests):
    folders = {}
    for kind, files in enumerate((code, tests)):
        for file in files:
            parts = file.name.split('/')
            folder = parts[2] if parts[0] == 'include' and len(parts) > 3 else parts[1] if len(parts) > 2 else parts[0]
            folders.setdefault(folder, [0, 0])[kind] += file.count
    print(f'\n{"folder":14s} {"code":>7s} {"tests":>7s} {"ratio":>7s}')
    for folder, (lines, checks) in sorted(folders.items()):
        ratio = f'{checks / lines:7.2f}' if lines else '      -'
        print(f'{folder:14s} {lines:7d} {checks:7d} {ratio}')


if __name__ == '__main__':
    sys.exit(main())
