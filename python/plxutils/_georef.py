"""Places of images in the world."""

from __future__ import annotations

import ctypes
import errno
import numbers
import os
import sys
import weakref
from pathlib import Path
from typing import Any, Callable, Iterable, List, NamedTuple, Optional, Sequence, Tuple

from ._arguments import PathLike, absolute, decoded_path, encoded_path, real, refuse_neighbour, spelt_as_found, whole
from ._library import Mappings, library

# Fewer points lower the type; two make a similarity.
_POINTS_OF_TYPE = {1: 0, 2: 2, 3: 3, 4: 3, 5: 6, 6: 10, 7: 15}
_LARGEST_INT = 2**31 - 1


class ControlPoint(NamedTuple):
    """A place in the image and the place in the world that it shows."""

    column: float
    row: float
    X: float
    Y: float


class GeoRef:
    """Maps image columns and rows to the world by control points, and back.

    Columns count to the right and rows downwards from the image's first pixel, for every type of fit. World X
    and Y grow to the right and upwards.

    :param points: control points (column, row, X, Y).
    """

    def __init__(self, points: Iterable[Sequence[float]] = ()) -> None:
        self._points: List[ControlPoint] = []
        self._handle: Optional[int] = None
        self._release: Callable[[], Any] = lambda: None
        self._type: Optional[int] = None
        self._wanted: Optional[int] = None
        self._row_sign = 1.0
        for point in points:
            self.add(*point)

    def add(self, column: float, row: float, X: float, Y: float) -> GeoRef:
        """Adds a control point and returns the object; a fit has to follow."""
        self._points.append(ControlPoint(real(column, "column"), real(row, "row"), real(X, "X"), real(Y, "Y")))
        self._forget()
        return self

    def __reduce__(self) -> Tuple[Any, ...]:
        # The handle belongs to this object and this process: a copy fits the points again.
        return _again, (type(self), self.points, self._wanted)

    @property
    def points(self) -> Tuple[ControlPoint, ...]:
        return tuple(self._points)

    @property
    def type(self) -> Optional[int]:
        """The type of the fit, which few points lower; None before the first."""
        return self._type

    def fit(self, type: int = 4) -> GeoRef:
        """Fits the control points and returns the object.

        :param type: 1 translation, 2 similarity of the first two points, 3 scale and offset per axis, 4 to 7
            polynomials of degree 1 to 4, from 3, 6, 10 and 15 points.
        """
        wanted = whole(type, "type", 1, 7)
        count = len(self._points)
        if count == 0:
            raise ValueError("a fit needs control points")
        while count < _POINTS_OF_TYPE[wanted]:
            wanted -= 1
        self._forget()
        loaded = library()
        handle = loaded.GeoRef_new(count)
        if not handle:
            raise MemoryError
        self._release = weakref.finalize(self, loaded.GeoRef_delete, handle)
        # The first two types know no mirrored images: they take rows that count upwards.
        self._row_sign = -1.0 if wanted <= 2 else 1.0
        for i, point in enumerate(self._points):
            loaded.GeoRef_set_gcp_values(handle, i, point.column, self._row_sign * point.row, point.X, point.Y)
        if not loaded.GeoRef_process_type(handle, wanted):
            raise MemoryError
        self._handle = handle
        self._wanted = wanted
        self._type = 1 if wanted == 2 and self._without_scale() else wanted
        return self

    def project(self, column: Any, row: Any) -> Tuple[Any, Any]:
        """Image to world: X and Y of numbers, of numpy arrays (as arrays) or of sequences (as lists)."""
        return _each(library().GeoRef_project_point, self._fitted(), column, row)

    def reverse(self, X: Any, Y: Any) -> Tuple[Any, Any]:
        """World to image: column and row, of the same kinds of values as `project`."""
        # The way back of a translation takes -Y and gives -row.
        sign = -1.0 if self._type == 1 else 1.0
        return _each(library().GeoRef_reverse_project_point, self._fitted(), X, Y, sign)

    @property
    def residuals(self) -> List[float]:
        """For each control point the distance, in world units, to where the fit puts it."""
        loaded, handle = library(), self._fitted()
        return [loaded.GeoRef_rms_error(handle, i) for i in range(len(self._points))]

    @property
    def rms(self) -> float:
        """Root mean square of the residuals."""
        return float(library().GeoRef_rms_total_error(self._fitted()))

    def write_world(self, image: PathLike) -> Path:
        """Writes the fit as the world file of an image (site.tif: site.tfw) and returns its path.

        An older file is kept as a backup beside it. The name is lower-cased, and polynomials become the affine
        map of three corners of the control points.

        :raises OSError: when the file could not be written.
        """
        return self._write("GeoRef_write_world", image)

    def write_gcp(self, image: PathLike) -> Path:
        """The same for the control points, as the GCP file of an image (site.tif: site.gcp)."""
        return self._write("GeoRef_write_gcp", image)

    @classmethod
    def read_gcp(cls, image: PathLike) -> GeoRef:
        """The control points of the GCP file beside an image, or of the GCP file itself; at most 100.

        :raises OSError: FileNotFoundError when there is none.
        """
        folder, base, _ = _taken_apart(image)
        file = spelt_as_found(folder, f"{base}gcp")
        if (folder / f"{base}gcp").exists():
            refuse_neighbour(folder / f"{base}gcp", "image")
        if file is None:
            raise FileNotFoundError(errno.ENOENT, "no GCP file lies there", str(folder / f"{base}gcp"))
        name = encoded_path(folder / base, "image")
        rows = _mappings(lambda maps: library().parseGCPFile(name, None, maps))
        if not rows:
            raise ValueError(f"'{file}' holds no control points")
        return cls((column, row, X, -minus_y) for X, minus_y, column, row in rows)

    @classmethod
    def read_world(cls, image: PathLike, width: int, height: int) -> GeoRef:
        """Three corners of an image, placed as the world file beside it tells.

        :param width, height: the image's size in pixels.
        :raises OSError: FileNotFoundError when there is no world file.
        """
        columns, lines = whole(width, "width", 1, _LARGEST_INT), whole(height, "height", 1, _LARGEST_INT)
        folder, base, extension = _taken_apart(image)
        name, letters = encoded_path(folder / base, "image"), os.fsencode(extension.lower())
        rows = _mappings(lambda maps: library().parseWorldFile(name, None, letters, maps, columns, lines))
        if not rows:
            raise FileNotFoundError(errno.ENOENT, "no world file lies beside it", str(image))
        return cls((x, -y, X, Y) for x, y, X, Y in rows)

    def _without_scale(self) -> bool:
        a, b = self._points[:2]
        return (a.column == b.column or a.X == b.X) and (a.row == b.row or a.Y == b.Y)

    def _forget(self) -> None:
        self._release()
        self._handle = self._type = self._wanted = None

    def _fitted(self) -> int:
        if self._handle is None:
            raise ValueError("fit() has to come first")
        return self._handle

    def _write(self, function: str, image: PathLike) -> Path:
        handle = self._fitted()
        folder, base, extension = _taken_apart(image)
        name = encoded_path(folder / (base + extension), "image")
        buffer = ctypes.create_string_buffer(name, len(name) + 8)
        done = getattr(library(), function)(handle, buffer)
        named = decoded_path(buffer.value)
        written = spelt_as_found(folder, os.path.basename(named))
        if not done or written is None:
            raise OSError(f"'{named}' could not be written")
        return written


def _again(kind: Callable[[Iterable[Sequence[float]]], GeoRef], points: Tuple[ControlPoint, ...],
           wanted: Optional[int]) -> GeoRef:
    copy = kind(points)
    return copy if wanted is None else copy.fit(wanted)


def _taken_apart(image: PathLike) -> Tuple[Path, str, str]:
    """Folder, name up to its last dot, and what follows the dot."""
    place = absolute(image, "image")
    stem, _, extension = place.name.rpartition(".")
    if not stem or not extension:
        raise ValueError(f"image: '{image}' has no extension")
    return place.parent, f"{stem}.", extension


def _mappings(parse: Callable[[Any], Any]) -> List[Tuple[float, float, float, float]]:
    maps = Mappings()
    count = parse(ctypes.byref(maps))
    try:
        return [(maps[i][0], maps[i][1], maps[i][2], maps[i][3]) for i in range(count)]
    finally:
        library().GeoRef_free_gcp_mappings(ctypes.byref(maps), count)


def _each(convert: Any, handle: int, x: Any, y: Any, sign: float = 1.0) -> Tuple[Any, Any]:
    """Converts a pair of numbers, or each pair of two arrays or sequences; second values take the sign."""
    first, second = ctypes.c_double(), ctypes.c_double()
    to_first, to_second = ctypes.byref(first), ctypes.byref(second)

    def one(a: float, b: float) -> Tuple[float, float]:
        if not convert(handle, a, sign * b, to_first, to_second):
            raise MemoryError
        return first.value, sign * second.value

    if isinstance(x, numbers.Real) and isinstance(y, numbers.Real):
        try:
            return one(float(x), float(y))
        except OverflowError:
            raise ValueError("coordinate: the number is too large") from None
    numpy: Any = sys.modules.get("numpy")
    if numpy is not None and (isinstance(x, numpy.ndarray) or isinstance(y, numpy.ndarray)):
        a, b = numpy.broadcast_arrays(_reals(numpy, x), _reals(numpy, y))
        pairs = numpy.array([one(p, q) for p, q in zip(a.ravel().tolist(), b.ravel().tolist())], float)
        both = pairs.reshape(a.shape + (2,))
        return both[..., 0], both[..., 1]
    xs, ys = list(x), list(y)
    if len(xs) != len(ys):
        raise ValueError(f"{len(xs)} first and {len(ys)} second coordinates are no pairs")
    done = [one(real(p, "coordinate"), real(q, "coordinate")) for p, q in zip(xs, ys)]
    return [pair[0] for pair in done], [pair[1] for pair in done]


def _reals(numpy: Any, values: Any) -> Any:
    if numpy.ma.isMaskedArray(values):
        raise TypeError("coordinate: a masked array is not taken, since its mask would be lost")
    array = numpy.asarray(values)
    if array.dtype.kind not in "biuf":
        raise TypeError(f"coordinate: numbers are expected, not {array.dtype}")
    return array.astype(float)
