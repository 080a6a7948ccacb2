"""Checks of what callers hand in, done before the library is called, and the texts that go to it."""

from __future__ import annotations

import errno
import math
import numbers
import operator
import os
import re
import sys
from pathlib import Path
from typing import Any, Iterable, List, Optional, Sequence, Tuple, Union

PathLike = Union[str, "os.PathLike[str]"]

_WINDOWS = sys.platform == "win32"
_LONGEST_NAME = 127
_LONGEST_PATH = 1023


def absolute(path: PathLike, what: str) -> Path:
    """The absolute form of a path that the library can store.

    :raises ValueError: for a name that its stored form would change into another one.
    """
    text = os.fspath(path)
    if not isinstance(text, str):
        raise TypeError(f"{what}: a path of text is expected, not {type(text).__name__}")
    if not text:
        raise ValueError(f"{what}: an empty path names no file")
    place = Path(os.path.abspath(text))
    fault = _fault(place)
    if fault:
        raise ValueError(f"{what}: the library cannot use '{place}': {fault}")
    return place


def _fault(place: Path) -> str:
    parts = place.parts[1:]
    if not parts:
        return "it names no folder and file"
    if any(part.startswith(".") for part in parts):
        return "a name in it begins with a dot"
    if any(len(os.fsencode(part)) > _LONGEST_NAME for part in parts) or len(os.fsencode(place)) > _LONGEST_PATH:
        return f"it is too long ({_LONGEST_NAME} bytes for a name, {_LONGEST_PATH} in all)"
    if re.search(r'[*?"\0]' if _WINDOWS else r'[*?"\\\0]', "".join(parts)):
        return "a name in it holds a character that the library does not take"
    if re.search(r"\$.*>", str(place)):
        return "it holds a '$' that is followed by a '>'"
    return ""


def encoded_path(place: Path, what: str) -> bytes:
    """The bytes of a path as the library takes them: the code page's on Windows, else the system's."""
    if not _WINDOWS:
        return os.fsencode(place)
    try:
        return str(place).encode("mbcs", "strict")
    except UnicodeEncodeError:
        raise ValueError(f"{what}: the system's code page cannot spell '{place}'") from None


def decoded_path(name: bytes) -> str:
    return name.decode("mbcs") if _WINDOWS else os.fsdecode(name)


def input_file(path: PathLike, what: str) -> Path:
    """An existing file.

    :raises OSError: FileNotFoundError, or IsADirectoryError for a folder.
    :raises ValueError: when the library would open a neighbour whose name differs in case only.
    """
    place = absolute(path, what)
    if place.is_dir():
        raise IsADirectoryError(errno.EISDIR, os.strerror(errno.EISDIR), str(place))
    if not place.exists():
        raise FileNotFoundError(errno.ENOENT, os.strerror(errno.ENOENT), str(place))
    refuse_neighbour(place, what)
    return place


def output_file(path: PathLike, what: str) -> Path:
    """A file to be written; a new one gets a name in lower case.

    :raises ValueError: when the library would write to a neighbour whose name differs in case only.
    """
    place = absolute(path, what)
    if place.exists() or not (place.parent / _lower(place.name)).exists():
        refuse_neighbour(place, what)
    return place


def output_folder(path: PathLike, what: str) -> Path:
    """A folder, made when it is missing."""
    place = absolute(path, what)
    for neighbour in _alike(place.parent, place.name):
        _refuse(place, neighbour, what)
    place.mkdir(parents=True, exist_ok=True)
    return place


def _lower(name: str) -> str:
    """As the library does it: ASCII letters only."""
    return os.fsdecode(os.fsencode(name).lower())


def _alike(folder: Path, name: str) -> List[Path]:
    """Entries of that name whatever the case of its letters, in the order of their bytes."""
    wanted = _lower(name)
    try:
        found = sorted((entry for entry in os.listdir(folder) if _lower(entry) == wanted), key=os.fsencode)
    except OSError:
        return []
    return [folder / entry for entry in found]


def spelt_as_found(folder: Path, name: str) -> Optional[Path]:
    """The file that the library means by a name: that in lower case, else the first in the order of bytes."""
    stored = folder / (name if _WINDOWS else _lower(name))
    if stored.exists():
        return stored
    alike = _alike(folder, name)
    return alike[0] if alike else None


def refuse_neighbour(place: Path, what: str) -> None:
    found = spelt_as_found(place.parent, place.name)
    if found is not None:
        _refuse(place, found, what)


def _refuse(place: Path, found: Path, what: str) -> None:
    if _WINDOWS or found == place or (place.exists() and found.exists() and found.samefile(place)):
        return
    raise ValueError(f"{what}: '{place}' differs from '{found.name}' only in the case of its letters, "
                     "by which the library does not tell names apart")


def text_bytes(text: str, what: str, encoding: str = "utf-8") -> bytes:
    if not isinstance(text, str):
        raise TypeError(f"{what}: a text is expected, not {type(text).__name__}")
    data = text.encode(encoding, "surrogateescape")
    if b"\0" in data:
        raise ValueError(f"{what}: a text with a NUL character would be cut there")
    return data


def real(value: Any, what: str) -> float:
    if isinstance(value, bool) or not isinstance(value, numbers.Real):
        raise TypeError(f"{what}: a number is expected, not {value!r}")
    try:
        number = float(value)
    except OverflowError:
        raise ValueError(f"{what}: the number is too large") from None
    if not math.isfinite(number):
        raise ValueError(f"{what}: a finite number is expected, not {number}")
    return number


def whole(value: Any, what: str, least: int, most: int) -> int:
    if isinstance(value, bool):
        raise TypeError(f"{what}: a whole number is expected, not {value!r}")
    try:
        number = operator.index(value)
    except TypeError:
        raise TypeError(f"{what}: a whole number is expected, not {value!r}") from None
    if not least <= number <= most:
        raise ValueError(f"{what}: {number} is not between {least} and {most}")
    return number


def rectangle(value: Optional[Sequence[float]]) -> Optional[Tuple[float, float, float, float]]:
    """xmin, ymin, xmax, ymax; None stays None."""
    if value is None:
        return None
    edges = [real(edge, "extents") for edge in value]
    if len(edges) != 4:
        raise ValueError(f"extents: four numbers (xmin, ymin, xmax, ymax) are expected, not {len(edges)}")
    if not (edges[0] <= edges[2] and edges[1] <= edges[3]):
        raise ValueError("extents: xmin must not exceed xmax, nor ymin ymax")
    return edges[0], edges[1], edges[2], edges[3]


def one_of(value: str, names: Sequence[str], what: str) -> str:
    if value not in names:
        raise ValueError(f"{what}: {value!r} is not known; the names are {', '.join(names)}")
    return value


def chosen(value: Union[str, Iterable[str], None], names: Sequence[str], what: str) -> Optional[List[str]]:
    """Names of a list, also as one text with commas; None, and "all", mean everything and give None."""
    if value is None:
        return None
    words = value.split(",") if isinstance(value, str) else list(value)
    if any(not isinstance(word, str) for word in words):
        raise TypeError(f"{what}: names are expected, not {value!r}")
    words = [word.strip().lower() for word in words]
    if words == ["all"]:
        return None
    return [one_of(word, names, what) for word in words]


def callback(value: Any, what: str) -> Any:
    if value is not None and not callable(value):
        raise TypeError(f"{what}: a function is expected, not {value!r}")
    return value
