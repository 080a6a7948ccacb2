#!/usr/bin/env python3
"""Drives the flat functions of the shared library given as argument, as a script would."""
import ctypes
import os
import pathlib
import sys
import tempfile

TIN = "TIN\nBEGT\nTNAM {name}\nID {id}\nVERT 3\n0 0 1\n1 0 2\n0 1 3\nTRI 1\n1 2 3\nENDT\n"
DATA = "DATASET\nOBJTYPE tin\nBEGSCL\nOBJID 1\nND 3\nNC 1\nNAME depth\nTS 0 0.0\n1.5\n2.5\n3.5\nENDDS\n"
MESSAGE = ctypes.CFUNCTYPE(None, ctypes.c_char_p)
STEP = ctypes.CFUNCTYPE(None, ctypes.c_int, ctypes.c_int, ctypes.c_void_p)


def load(path):
    library = ctypes.CDLL(path)
    handle, flag, real = ctypes.c_void_p, ctypes.c_int, ctypes.c_double
    arguments = {
        "Set_Project": [ctypes.c_char_p], "Set_Destination": [ctypes.c_char_p], "Compress": [flag],
        "Use_Subfolders": [flag], "Object_Types": [flag] * 9, "Extents": [flag] + [real] * 4,
        "Lenient_Datasets": [flag], "Choose_Time": [flag, real], "parse_project": [],
    }
    for name, result, types in [
            ("PLX_convert_modflow", handle, [ctypes.c_char_p, ctypes.c_char_p, handle, handle, flag, handle, flag,
                                             ctypes.c_char_p, ctypes.c_char_p, STEP, handle]),
            ("PLX_report_text", flag, [handle, flag, flag, ctypes.c_char_p, flag]),
            ("PLX_report_count", flag, [handle, flag]), ("PLX_report_delete", None, [handle]),
            ("PLX_report_number", ctypes.c_longlong, [handle, flag])]:
        function = getattr(library, name)
        function.restype, function.argtypes = result, types
    library.GMStoPLX_new.restype = library.VXFileReader_new.restype = handle
    library.GMStoPLX_delete.argtypes = [handle]
    library.GMStoPLX_delete.restype = None
    for name, types in arguments.items():
        function = getattr(library, "GMStoPLX_" + name)
        function.restype, function.argtypes = handle, [handle] + types
    return library


def convert(library, folder):
    """Converts a project of two surfaces and returns the messages."""
    (folder / "site.gpr").write_text("DATA depth.dat\nTIN hills.tin\n")
    (folder / "hills.tin").write_text(TIN.format(name="hill", id=1) + TIN.format(name='"the mound"', id=2))
    (folder / "depth.dat").write_text(DATA)
    messages = []
    on_status = MESSAGE(lambda text: messages.append("S:" + text.decode()))
    on_error = MESSAGE(lambda text: messages.append("E:" + text.decode()))
    library.GMS_SetStatusFunc(on_status)
    library.GMS_SetErrorFunc(on_error)
    converter = library.GMStoPLX_new()
    assert converter
    assert library.GMStoPLX_Set_Project(converter, bytes(folder / "site.gpr")) == converter
    assert library.GMStoPLX_Set_Destination(converter, bytes(folder / "site.gpr")) == converter
    assert library.GMStoPLX_Set_Destination(converter, bytes(folder)) == converter
    library.GMStoPLX_Use_Subfolders(converter, 1)
    library.GMStoPLX_Object_Types(converter, 0, 0, 0, 0, 0, 0, 0, 1, 0)
    library.GMStoPLX_parse_project(converter)
    library.GMStoPLX_delete(converter)
    library.GMS_SetStatusFunc(MESSAGE())
    library.GMS_SetErrorFunc(MESSAGE())
    return messages


def read_world_file(library, folder):
    """The control points that a world file beside an image of 100 x 50 pixels stands for."""
    (folder / "photo.jgw").write_text("2\n0\n0\n-2\n1000\n5000\n")
    maps = ctypes.POINTER(ctypes.POINTER(ctypes.c_double))()
    count = library.GeoRef_load_gcp_mappings(ctypes.byref(maps), bytes(folder / "Photo.JPG"), 100, 50)
    points = [tuple(maps[i][:4]) for i in range(count)]
    assert library.GeoRef_free_gcp_mappings(ctypes.byref(maps), count) == 1 and not maps
    return points


def printed(work):
    """What `work` makes the library print, as C's stdio writes it."""
    flush, output = ctypes.CDLL(None).fflush, os.dup(1)
    flush(None)
    with tempfile.TemporaryFile() as file:
        os.dup2(file.fileno(), 1)
        try:
            work()
            flush(None)
        finally:
            os.dup2(output, 1)
            os.close(output)
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
        messages = convert(library, folder)
        project = folder / "site.gpr"
        errors = [text for text in messages if text.startswith("E:")]
        expected = f"E:GMStoPLX : set_destination - [{project}] Path leads to file, not directory!\n"
        assert errors == [expected], errors
        assert "S:DATA file added! depth.dat\n" in messages, messages
        written = sorted(path.name.lower() for path in (folder / "TINS").iterdir())
        assert written == ["hill_depth.gmf", "tin_hill_elevation.gmf", "tin_hill_elevation.pff",
                           "tin_the_mound_elevation.gmf", "tin_the_mound_elevation.pff"], written
        surface = next(path for path in (folder / "TINS").iterdir() if path.name.lower() == "hill_depth.gmf")
        corners = [(0, 0, 1000, 5000), (99, -49, 1198, 4902), (0, -49, 1000, 4902)]
        assert read_world_file(library, folder) == corners
        read_lines(library, project)
        convert_model(library, sys.argv[2].encode(), folder)
        assert surface.read_bytes().splitlines()[2] == b"0.000000 0.000000 1.500000"


if __name__ == "__main__":
    main()
