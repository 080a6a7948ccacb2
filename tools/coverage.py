#!/usr/bin/env python3
"""Prints line and branch coverage of src/ per folder, from a build with the preset "coverage".

Usage, after the tests have run in that build:

    cmake --preset coverage && cmake --build --preset coverage && ctest --preset coverage
    tools/coverage.py                      the table of folders and the files with most left uncovered
    tools/coverage.py --show name_file     the lines and branches of matching files that no test reaches
    tools/coverage.py --lines 90 --branches src/formats=85    ends with 1 when less is covered

Needs gcov of the compiler that built the tests and nothing else. A branch is one way out of a decision; the
ways that an exception takes, and the calls that may throw one, are no decisions and do not count. Counters
add up over runs: delete the *.gcda files of the build folder to start anew.
"""
import argparse
import collections
import json
import os
import pathlib
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent


def decisions(branches):
    """Counts of the branches that are no part of a call that may throw."""
    kept = []
    for branch in branches:
        if not branch["throw"]:
            kept.append(branch)
        elif kept and kept[-1]["fallthrough"]:
            kept.pop()
    return [branch["count"] for branch in kept]


class File:
    """What was reached of one source file, over all programs that it was compiled into."""

    def __init__(self):
        self.lines = collections.Counter()
        self.branches = collections.Counter()  # (line, number of branches of the line, index) -> count

    def add(self, lines):
        for line in lines:
            number, counts = line["line_number"], decisions(line["branches"])
            self.lines[number] += line["count"]
            for index, count in enumerate(counts):
                self.branches[number, len(counts), index] += count

    def numbers(self):
        """Lines reached, lines, branches taken, branches."""
        reached = [sum(1 for count in part.values() if count) for part in (self.lines, self.branches)]
        return reached[0], len(self.lines), reached[1], len(self.branches)


def read(build, gcov):
    """File by path below the repository, for all sources below src/."""
    files = collections.defaultdict(File)
    counters = sorted(str(path) for path in build.rglob("*.gcda"))
    for start in range(0, len(counters), 20):
        run = subprocess.run([gcov, "--json-format", "--branch-probabilities", "--stdout"] +
                             counters[start:start + 20], cwd=build, capture_output=True, text=True, check=False)
        for text in run.stdout.splitlines():
            report = json.loads(text)
            for source in report["files"]:
                path = os.path.normpath(os.path.join(report["current_working_directory"], source["file"]))
                name = os.path.relpath(path, ROOT)
                if name.startswith("src" + os.sep) and os.path.exists(path):
                    files[name].add(source["lines"])
    return files


def share(part, whole):
    return 100.0 * part / whole if whole else 100.0


def row(name, numbers):
    lines, all_lines, taken, all_branches = numbers
    return (f"{name:42} {share(lines, all_lines):6.1f} % of {all_lines:5} lines "
            f"{share(taken, all_branches):6.1f} % of {all_branches:5} branches")


def show(files, word):
    for name, file in sorted(files.items()):
        if word not in name:
            continue
        print(row(name, file.numbers()))
        source = (ROOT / name).read_text(encoding="utf-8", errors="replace").splitlines()
        partly = {number for (number, _, _), count in file.branches.items() if not count}
        for number in sorted(partly | {number for number, count in file.lines.items() if not count}):
            missed = "line  " if not file.lines[number] else "branch"
            print(f"  {missed} {number:4}: {source[number - 1].strip() if number <= len(source) else ''}")


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--build", type=pathlib.Path, default=ROOT / "build" / "coverage", help="build folder")
    parser.add_argument("--gcov", default="gcov", help="the program, as gcov-12")
    parser.add_argument("--worst", type=int, default=15, help="how many files to list")
    parser.add_argument("--show", metavar="WORD", help="what is not reached in files whose path holds the word")
    parser.add_argument("--lines", type=float, default=0.0, help="per cent of the lines of src/ wanted")
    parser.add_argument("--branches", metavar="FOLDER=PERCENT", help="per cent of a folder's branches wanted")
    args = parser.parse_args()
    files = read(args.build.resolve(), args.gcov)
    if not files:
        sys.exit(f"{args.build}: no counters of src/; build it with the preset coverage and run the tests")
    if args.show:
        return show(files, args.show)
    folders = collections.defaultdict(lambda: [0, 0, 0, 0])
    for name, file in files.items():
        for folder in (os.path.dirname(name), "src"):
            folders[folder] = [a + b for a, b in zip(folders[folder], file.numbers())]
    for name in sorted(folders):
        print(row(name, folders[name]))
    print("\nMost left uncovered:")
    for name in sorted(files, key=lambda n: -(len(files[n].lines) - files[n].numbers()[0] +
                                              len(files[n].branches) - files[n].numbers()[2]))[:args.worst]:
        print(row(name, files[name].numbers()))
    folder, _, wanted = (args.branches or "src=0").partition("=")
    good = share(*folders["src"][:2]) >= args.lines and share(*folders[folder][2:]) >= float(wanted)
    return 0 if good else 1


if __name__ == "__main__":
    sys.exit(main())
