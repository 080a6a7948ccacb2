"""GMS projects into surfaces, field files and boreholes."""

from __future__ import annotations

from dataclasses import dataclass
from pathlib import Path
from typing import Callable, Iterable, List, Optional, Sequence, Tuple, Union

from ._arguments import (PathLike, callback, chosen, decoded_path, encoded_path, input_file, output_folder, real,
                         rectangle, spelt_as_found)
from ._calls import Run, decoded
from ._library import MessageFunction, ProgressFunction, PromptFunction, StartFunction, library

GMS_TYPES = ("modflow", "mt3d", "femwater", "image", "scat3d", "scat2d", "grid2d", "tin", "borehole")

# The status text that announces the files of a kind of object, and the subfolder that they go to.
_ANNOUNCEMENTS = {
    "Writing TIN Output files": "TINS",
    "Writing 2D Scatterpoint Output files": "SCATTER2D",
    "Writing BORE Output files": "BORE",
}


@dataclass(frozen=True)
class GmsResult:
    """What `convert_gms` did."""

    files: Tuple[Path, ...]
    """The files written, in their order."""
    errors: Tuple[str, ...]
    """What the library reported."""
    bytes: int
    """Size of the files, but for those that a callback took away."""

    @property
    def succeeded(self) -> bool:
        """True when files were written and nothing was reported."""
        return bool(self.files) and not self.errors


class _Files:
    """Gathers the files that status texts tell of, as "   NAME" behind an announcement."""

    def __init__(self, destination: Path, subfolders: bool) -> None:
        self._destination = destination
        self._subfolders = subfolders
        self._folder = destination
        self.found: List[Path] = []

    def note(self, text: str) -> None:
        for announcement, subfolder in _ANNOUNCEMENTS.items():
            if self._subfolders and text.startswith(announcement):
                self._folder = self._destination / subfolder
        if text.startswith("   "):
            file = spelt_as_found(self._folder, text.strip())
            # Of objects with the same name the later one replaces the file.
            if file is not None and file not in self.found:
                self.found.append(file)


def convert_gms(project: PathLike, destination: PathLike, *, compress: bool = True, subfolders: bool = False,
                types: Union[str, Iterable[str], None] = None, extents: Optional[Sequence[float]] = None,
                lenient: bool = True, time: Optional[float] = None,
                on_status: Optional[Callable[[str], None]] = None,
                on_error: Optional[Callable[[str], None]] = None,
                on_progress: Optional[Callable[[int, int], None]] = None,
                prompt: Optional[Callable[[str], float]] = None,
                trace: Optional[PathLike] = None) -> GmsResult:
    """Converts the surfaces and boreholes of a GMS project (.gpr, text or HDF5).

    :param destination: folder of the results, made when it is missing.
    :param compress: compressed field files (.pfz); those of TINs of text projects stay plain.
    :param subfolders: a folder for each kind of object.
    :param types: names out of `GMS_TYPES`, also as one text with commas; None for all.
    :param extents: xmin, ymin, xmax, ymax in the project's coordinates.
    :param lenient: reads dataset files as newer programs write them.
    :param time: takes the values of the time step nearest to it, in the dataset's unit, not of the first.
    :param on_status: gets each status text, with or without a line end.
    :param on_error: gets each error, which the result holds too.
    :param on_progress: gets what is done and the total whenever the library tells.
    :param prompt: answers a question of the library with a number.
    :param trace: file for what the library prints; left out it is dropped.

    Exceptions of callbacks are raised when the conversion is over; no callback is called after the first. The
    files are known by the library's status texts: a callback must not take the status hook away.
    """
    source = input_file(project, "project")
    wanted = chosen(types, GMS_TYPES, "types")
    box = rectangle(extents)
    moment = None if time is None else real(time, "time")
    for value, name in ((on_status, "on_status"), (on_error, "on_error"), (on_progress, "on_progress"),
                        (prompt, "prompt")):
        callback(value, name)
    place = output_folder(destination, "destination")
    loaded = library()

    def configure(converter: int) -> None:
        loaded.GMStoPLX_Set_Project(converter, encoded_path(source, "project"))
        loaded.GMStoPLX_Set_Destination(converter, encoded_path(place, "destination"))
        loaded.GMStoPLX_Compress(converter, int(bool(compress)))
        loaded.GMStoPLX_Use_Subfolders(converter, int(bool(subfolders)))
        loaded.GMStoPLX_Object_Types(converter, *(int(wanted is None or kind in wanted) for kind in GMS_TYPES))
        if box is not None:
            loaded.GMStoPLX_Extents(converter, 1, *box)
        loaded.GMStoPLX_Lenient_Datasets(converter, int(bool(lenient)))
        if moment is not None:
            loaded.GMStoPLX_Choose_Time(converter, 1, moment)

    files = _Files(place, bool(subfolders))
    with Run(trace) as run:
        run.hook_errors(on_error)
        _hook_status(run, files, on_status)
        _hook_progress(run, on_progress)
        if prompt is not None:
            answer = run.callback(PromptFunction, lambda text: float(run.ask(prompt, decoded(text))), 0.0)
            loaded.GMS_SetPromptFunc(answer)
        converter = loaded.GMStoPLX_new()
        if not converter:
            raise MemoryError
        try:
            configure(converter)
            loaded.GMStoPLX_parse_project(converter)
        finally:
            loaded.GMStoPLX_delete(converter)
    errors = run.errors.texts()
    if not files.found and not errors:
        errors = (f"'{source}': nothing was written: it is no GMS project or holds no objects of these types",)
    return GmsResult(tuple(files.found), errors, sum(map(_size, files.found)))


def _size(file: Path) -> int:
    try:
        return file.stat().st_size
    except FileNotFoundError:
        return 0


def _hook_status(run: Run, files: _Files, on_status: Optional[Callable[[str], None]]) -> None:
    def report(message: Optional[bytes]) -> None:
        # A name keeps its bytes; what the caller sees is readable.
        files.note(decoded_path(message or b""))
        if on_status is not None:
            run.ask(on_status, decoded(message))

    library().GMS_SetStatusFunc(run.callback(MessageFunction, report))


def _hook_progress(run: Run, on_progress: Optional[Callable[[int, int], None]]) -> None:
    if on_progress is None:
        return
    span = [0, 0]

    def start(first: int, last: int) -> None:
        span[:] = first, last
        run.ask(on_progress, 0, last - first)

    def step(value: int) -> None:
        run.ask(on_progress, value - span[0], span[1] - span[0])

    library().GMS_SetStartProgressFunc(run.callback(StartFunction, start))
    library().GMS_SetProgressFunc(run.callback(ProgressFunction, step))
