#!/usr/bin/env python3
"""Drives the flat functions of the shared library given as argument, as a script would."""
import ctypes
import os
import pathlib
import sys
import tempfile

STEP = ctypes.CFUNCTYPE(None, ctypes.c_int, ctypes.c_int, ctypes.c_void_p)


def load(path):
    library = ctypes.CDLL(path)
    handle, flag, text = ctypes.c_void_p, ctypes.c_int, ctypes.c_char_p
    for name, result, types in [
            ("GMStoPLX_parse_project", handle, [handle]),
            ("VXFileReader_new", handle, []),
            ("PLX_convert_modflow", handle, [text, text, handle, handle, flag, handle, flag, text, text, STEP, handle]),
            ("PLX_report_text", flag, [handle, flag, flag, text, flag]),
            ("PLX_report_count", flag, [handle, flag]), ("PLX_report_delete", None, [handle]),
            ("PLX_report_number", ctypes.c_longlong, [handle, flag])]:
        function = getattr(library, name)
        function.restype, function.argtypes = result, types
    return library


def printed(work):
    """What `work` makes the library print, as C's stdio writes it."""
    flush, output = ctypes.CDLL(None).fflush, os.dup(1)
    flush(None)
    with tempfile.TemporaryFile() as file:
        os.dup2(file.fileno(), 1)
        work()
        flush(None)
        os.dup2(output, 1)
        file.seek(0)
        return file.read()


def ask_before_the_first_word(library, reader):
    """There is no such word, and a reader says so by its results only."""
    text, value, number = ctypes.create_string_buffer(b"abc"), ctypes.c_double(7), ctypes.c_int(7)
    assert library.VXFileReader_GetWord(reader, -1, text, 4) == 0 and text.value == b""
    assert library.VXFileReader_WordToInt(reader, -1, ctypes.byref(number)) == 0 and number.value == 7
    assert library.VXFileReader_WordToDouble(reader, -2, ctypes.byref(value)) == 0 and value.value == 7
    assert library.VXFileReader_WordToChemValue(reader, -1, ctypes.byref(value)) == 0 and value.value == -1.0e9


def read_lines(library, path):
    """Reads a line and asks for words that are not there."""
    reader = ctypes.c_void_p(library.VXFileReader_new())
    assert library.VXFileReader_Open(reader, bytes(path)) == -1
    assert library.VXFileReader_ReadLine(reader, b" ", 1, 1, 0) == 2
    shown = printed(lambda: ask_before_the_first_word(library, reader))
    assert shown == b"", shown
    library.VXFileReader_delete(reader)


def texts(library, report, which):
    """All texts of a report."""
    found = []
    for i in range(library.PLX_report_count(report, which)):
        buffer = ctypes.create_string_buffer(library.PLX_report_text(report, which, i, None, 0) + 1)
        library.PLX_report_text(report, which, i, buffer, len(buffer))
        found.append(buffer.value.decode())
    return found


def convert_model(library, model, folder):
    """Converts a model with a callback that asks for another conversion and fails."""
    inner = []

    def again(done, _total, _user):
        if done == 1:
            inner.append(library.PLX_convert_modflow(model, b"gms", None, None, 0, None, 0, None, None, STEP(), None))
        raise ValueError("a fault of the script")

    sys.unraisablehook = lambda fault: None
    step = STEP(again)
    report = library.PLX_convert_modflow(model, None, None, None, 0, None, 1, None, bytes(folder), step, None)
    sys.unraisablehook = sys.__unraisablehook__
    assert texts(library, report, 0) == [], texts(library, report, 0)
    files = [pathlib.Path(name) for name in texts(library, report, 2)]
    assert files and all(file.is_file() for file in files), files
    assert sum(file.suffix == ".pfz" for file in files) == 5, files
    refused = texts(library, inner[0], 0)
    assert len(refused) == 1 and "is no GMS super file" in refused[0], refused
    for which in (-1, 3, 99):
        assert library.PLX_report_count(report, which) == library.PLX_report_number(report, which + 6) == 0, which
    library.PLX_report_delete(inner[0])
    library.PLX_report_delete(report)


def main():
    library = load(sys.argv[1])
    assert library.GMStoPLX_parse_project(None) is None
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        (folder / "two.txt").write_text("two words\n")
        read_lines(library, folder / "two.txt")
        convert_model(library, sys.argv[2].encode(), folder)


if __name__ == "__main__":
    main()
