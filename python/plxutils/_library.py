"""Finds and loads the shared library and declares its functions, once for each process."""

from __future__ import annotations

import ctypes
import ctypes.util
import os
import sys
import threading
from ctypes import CFUNCTYPE, POINTER, c_char_p, c_double, c_int, c_longlong, c_void_p
from pathlib import Path
from typing import Any, Dict, List, Optional, Sequence, Tuple

from ._version import VERSION

MessageFunction: Any = CFUNCTYPE(None, c_char_p)
PromptFunction: Any = CFUNCTYPE(c_double, c_char_p)
StartFunction: Any = CFUNCTYPE(None, c_int, c_int)
ProgressFunction: Any = CFUNCTYPE(None, c_int)
StepFunction: Any = CFUNCTYPE(None, c_int, c_int, c_void_p)
Mappings = POINTER(POINTER(c_double))

_HANDLE = c_void_p
_TEXT = c_char_p
_REALS = POINTER(c_double)
_INTS = POINTER(c_int)

_Signature = Tuple[Any, Sequence[Any]]

# Name: what it returns, and its arguments. Buffers that the library writes are passed as char arrays.
_SIGNATURES: Dict[str, _Signature] = {
    "PLX_version": (_TEXT, []),
    "VXFileReader_new": (_HANDLE, []),
    "VXFileReader_delete": (None, [_HANDLE]),
    "VXFileReader_Open": (c_int, [_HANDLE, _TEXT]),
    "VXFileReader_Close": (c_int, [_HANDLE]),
    "VXFileReader_ReadLine": (c_int, [_HANDLE, _TEXT, c_int, c_int, c_int]),
    "VXFileReader_WordsFound": (c_int, [_HANDLE]),
    "VXFileReader_CurrentLine": (c_int, [_HANDLE, _TEXT, c_int]),
    "VXFileReader_GetWord": (c_int, [_HANDLE, c_int, _TEXT, c_int]),
    "VXFileReader_FindWord": (c_int, [_HANDLE, _TEXT, c_int]),
    "VXFileReader_WordToInt": (c_int, [_HANDLE, c_int, _INTS]),
    "VXFileReader_WordToDouble": (c_int, [_HANDLE, c_int, _REALS]),
    "VXFileReader_WordToChemValue": (c_int, [_HANDLE, c_int, _REALS]),
    "VXFileReader_CurrentLineNumber": (c_int, [_HANDLE]),
    "VXFileReader_Filename": (c_int, [_HANDLE, _TEXT, c_int]),
    "VXFileReader_isEOF": (c_int, [_HANDLE]),
    "VXFileWriter_new": (_HANDLE, []),
    "VXFileWriter_delete": (None, [_HANDLE]),
    "VXFileWriter_Open": (c_int, [_HANDLE, _TEXT]),
    "VXFileWriter_OpenForAppend": (c_int, [_HANDLE, _TEXT]),
    "VXFileWriter_OpenCompressed": (c_int, [_HANDLE, _TEXT]),
    "VXFileWriter_Close": (c_int, [_HANDLE]),
    "VXFileWriter_Failed": (c_int, [_HANDLE]),
    "VXFileWriter_Filename": (c_int, [_HANDLE, _TEXT, c_int]),
    "VXFileWriter_Write": (c_int, [_HANDLE, _TEXT]),
    "VXFileWriter_WriteLine": (c_int, [_HANDLE, _TEXT]),
    "GeoRef_new": (_HANDLE, [c_int]),
    "GeoRef_delete": (c_int, [_HANDLE]),
    "GeoRef_set_gcp_values": (c_int, [_HANDLE, c_int] + [c_double] * 4),
    "GeoRef_process_type": (c_int, [_HANDLE, c_int]),
    "GeoRef_project_point": (c_int, [_HANDLE, c_double, c_double, _REALS, _REALS]),
    "GeoRef_reverse_project_point": (c_int, [_HANDLE, c_double, c_double, _REALS, _REALS]),
    "GeoRef_rms_error": (c_double, [_HANDLE, c_int]),
    "GeoRef_rms_total_error": (c_double, [_HANDLE]),
    "GeoRef_write_world": (c_int, [_HANDLE, _TEXT]),
    "GeoRef_write_gcp": (c_int, [_HANDLE, _TEXT]),
    "GeoRef_free_gcp_mappings": (c_int, [POINTER(Mappings), c_int]),
    "parseGCPFile": (c_int, [_TEXT, _TEXT, POINTER(Mappings)]),
    "parseWorldFile": (c_int, [_TEXT, _TEXT, _TEXT, POINTER(Mappings), c_int, c_int]),
    "GMS_SetPromptFunc": (None, [PromptFunction]),
    "GMS_SetErrorFunc": (None, [MessageFunction]),
    "GMS_SetStatusFunc": (None, [MessageFunction]),
    "GMS_SetStartProgressFunc": (None, [StartFunction]),
    "GMS_SetProgressFunc": (None, [ProgressFunction]),
    "GMStoPLX_new": (_HANDLE, []),
    "GMStoPLX_delete": (None, [_HANDLE]),
    "GMStoPLX_Set_Project": (_HANDLE, [_HANDLE, _TEXT]),
    "GMStoPLX_Set_Destination": (_HANDLE, [_HANDLE, _TEXT]),
    "GMStoPLX_Compress": (_HANDLE, [_HANDLE, c_int]),
    "GMStoPLX_Use_Subfolders": (_HANDLE, [_HANDLE, c_int]),
    "GMStoPLX_Object_Types": (_HANDLE, [_HANDLE] + [c_int] * 9),
    "GMStoPLX_Extents": (_HANDLE, [_HANDLE, c_int] + [c_double] * 4),
    "GMStoPLX_Lenient_Datasets": (_HANDLE, [_HANDLE, c_int]),
    "GMStoPLX_Choose_Time": (_HANDLE, [_HANDLE, c_int, c_double]),
    "GMStoPLX_parse_project": (_HANDLE, [_HANDLE]),
    "PLX_convert_modflow": (_HANDLE, [_TEXT, _TEXT, _INTS, _REALS, c_int, _REALS, c_int, _TEXT, _TEXT, StepFunction,
                                      c_void_p]),
    "PLX_report_delete": (None, [_HANDLE]),
    "PLX_report_count": (c_int, [_HANDLE, c_int]),
    "PLX_report_text": (c_int, [_HANDLE, c_int, c_int, _TEXT, c_int]),
    "PLX_report_number": (c_longlong, [_HANDLE, c_int]),
}


class LibraryNotFound(ImportError):
    """The shared library was not found or does not fit; the text tells what was tried."""


_loaded: Optional[ctypes.CDLL] = None
_lock = threading.Lock()


def library() -> ctypes.CDLL:
    """The loaded library, with the signatures of its functions declared.

    Looked for, in this order: the file that the environment variable PLXUTILS_LIBRARY names (then nothing
    else is tried), the folder of this package, and the places that the system searches.

    :raises LibraryNotFound: when no library was found or it lacks a function of this package.
    """
    global _loaded
    if _loaded is None:
        with _lock:
            if _loaded is None:
                _loaded = _load()
    return _loaded


def _load() -> ctypes.CDLL:
    tried: List[str] = []
    for name in _candidates():
        try:
            loaded = ctypes.CDLL(name)
        except OSError as fault:
            tried.append(f"{name}: {fault}")
            continue
        _declare(loaded, name)
        return loaded
    raise LibraryNotFound("the PLXUtils library was not found; set PLXUTILS_LIBRARY to its file. Tried:\n  "
                          + "\n  ".join(tried))


def _candidates() -> List[str]:
    given = os.environ.get("PLXUTILS_LIBRARY")
    if given:
        return [os.path.abspath(given)]
    major = VERSION.split(".")[0]
    names = ["PLXUtils.dll"] if sys.platform == "win32" else ["libPLXUtils.so", f"libPLXUtils.so.{major}"]
    folder = Path(__file__).resolve().parent
    beside = [str(folder / name) for name in names]
    # The names are tried as they are too, since the system's own search also knows what ctypes does not:
    # run paths, LD_LIBRARY_PATH, folders added by os.add_dll_directory.
    found = ctypes.util.find_library("PLXUtils")
    return beside + names[::-1] + ([found] if found and found not in names else [])


def _declare(loaded: ctypes.CDLL, name: str) -> None:
    missing = []
    for function, (result, arguments) in _SIGNATURES.items():
        try:
            entry = getattr(loaded, function)
        except AttributeError:
            missing.append(function)
            continue
        entry.restype, entry.argtypes = result, list(arguments)
    if missing:
        raise LibraryNotFound(f"{name} is no PLXUtils library of version {VERSION}: it lacks "
                              + ", ".join(missing))
    version = loaded.PLX_version().decode()
    if version.split(".")[:2] != VERSION.split(".")[:2]:
        raise LibraryNotFound(f"{name} has version {version}, and this package needs that of {VERSION}")
