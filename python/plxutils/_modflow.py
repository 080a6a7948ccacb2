"""Models of the MODFLOW family into field files."""

from __future__ import annotations

import ctypes
from dataclasses import dataclass
from pathlib import Path
from typing import Any, Callable, Iterable, List, Optional, Sequence, Tuple, Union

from ._arguments import (PathLike, callback, chosen, decoded_path, encoded_path, input_file, one_of,
                         output_folder, real, rectangle)
from ._calls import Run, decoded
from ._library import StepFunction, library

KINDS = ("auto", "modflow", "modflow2000", "gms", "gms_hdf5", "visual")
RULES = ("modflow", "prescribed")
OUTPUTS = ("elevation", "geo_layer", "head_nodes", "ccf", "elev_top", "elev_bottom", "material", "porosity",
           "head_cells", "boundary_flows", "mt3d")

_ERRORS, _WARNINGS, _FILES = range(3)
_NODES, _CELLS, _STEPS, _TRANSPORT_TIMES, _BYTES = range(5)


@dataclass(frozen=True)
class ModelResult:
    """What `convert_modflow` did."""

    files: Tuple[Path, ...]
    """The files written, in their order."""
    errors: Tuple[str, ...]
    """Faults that left the result incomplete, and what the library reported."""
    warnings: Tuple[str, ...]
    """What a person should know although everything asked for was written."""
    nodes: int
    cells: int
    """Active cells."""
    steps: int
    """Flow time steps with a field file."""
    transport_times: int
    """Transport times with a field file."""
    bytes: int
    """Written, before compression."""

    @property
    def succeeded(self) -> bool:
        """True when everything asked for was written."""
        return not self.errors


def convert_modflow(project: PathLike, *, kind: str = "auto", outputs: Union[str, Iterable[str], None] = None,
                    porosity: Union[float, Sequence[float], None] = None,
                    extents: Optional[Sequence[float]] = None, compress: bool = False,
                    rules: str = "modflow", destination: Optional[PathLike] = None,
                    on_progress: Optional[Callable[[int, int], None]] = None,
                    trace: Optional[PathLike] = None) -> ModelResult:
    """Converts a model into the folders GENERAL, MODFLOW and MT3D.

    :param project: name file (.nam, .mfn), super file (.mfs), HDF5 project (.gpr) or Visual MODFLOW project
        (.vmf).
    :param kind: one of `KINDS`; "auto": the file tells.
    :param outputs: names out of `OUTPUTS`, also as one text with commas; "none" or an empty list for the mesh
        without values; None for all that the model has.
    :param porosity: a fraction for all layers, or one for each from the top; the last one serves the rest.
    :param extents: xmin, ymin, xmax, ymax: only cells whose centre lies in that rectangle.
    :param compress: compressed field files (.pfz).
    :param rules: "modflow" reads as the modelling programs do, "prescribed" as PLX has always done.
    :param destination: folder of the results, made when it is missing; None: the project's own, where some kinds
        of models also leave a log.
    :param on_progress: gets the number of field files written and of those expected.
    :param trace: file for what the library prints; left out it is dropped.

    An exception of the callback is raised when the conversion is over; it is not called after it.
    """
    source = input_file(project, "project")
    one_of(kind, KINDS, "kind")
    one_of(rules, RULES, "rules")
    fractions = _fractions(porosity)
    flags = _flags(outputs, bool(fractions))
    box = rectangle(extents)
    callback(on_progress, "on_progress")
    place = b"" if destination is None else encoded_path(output_folder(destination, "destination"), "destination")
    name = encoded_path(source, "project")
    loaded = library()
    with Run(trace) as run:
        step = StepFunction()
        if on_progress is not None:
            step = run.callback(StepFunction, lambda done, total, user: run.ask(on_progress, done, total))
        report = loaded.PLX_convert_modflow(
            name, kind.encode(), _array(ctypes.c_int, flags), _array(ctypes.c_double, fractions),
            len(fractions), _array(ctypes.c_double, box), int(bool(compress)), rules.encode(), place, step, None)
        if not report:
            raise MemoryError
        try:
            result = _result(loaded, report)
        finally:
            loaded.PLX_report_delete(report)
    return result


def _fractions(porosity: Union[float, Sequence[float], None]) -> List[float]:
    if porosity is None:
        return []
    value: Any = porosity.item() if getattr(porosity, "ndim", None) == 0 else porosity
    given: List[Any] = list(value) if hasattr(value, "__iter__") else [value]
    fractions = [real(fraction, "porosity") for fraction in given]
    if any(not 0.0 <= fraction <= 1.0 for fraction in fractions):
        raise ValueError("porosity: values are fractions from 0 to 1")
    return fractions


def _flags(outputs: Union[str, Iterable[str], None], porosity_given: bool) -> Optional[List[int]]:
    """A flag for each output; None for all that the model has."""
    if isinstance(outputs, str) and outputs.strip().lower() == "none":
        outputs = []
    wanted = chosen(outputs, OUTPUTS, "outputs")
    if wanted is None:
        return None
    if "boundary_flows" in wanted and "ccf" not in wanted:
        raise ValueError("outputs: boundary_flows needs ccf: both come from the flow file")
    return [int(name in wanted or (name == "porosity" and porosity_given)) for name in OUTPUTS]


def _array(kind: Any, values: Optional[Sequence[Any]]) -> Any:
    return (kind * len(values))(*values) if values else None


def _texts(loaded: ctypes.CDLL, report: int, which: int) -> List[bytes]:
    texts = []
    for i in range(loaded.PLX_report_count(report, which)):
        size = loaded.PLX_report_text(report, which, i, None, 0) + 1
        buffer = ctypes.create_string_buffer(max(size, 1))
        loaded.PLX_report_text(report, which, i, buffer, size)
        texts.append(buffer.value)
    return texts


def _result(loaded: ctypes.CDLL, report: int) -> ModelResult:
    def number(which: int) -> int:
        return int(loaded.PLX_report_number(report, which))

    return ModelResult(
        files=tuple(Path(decoded_path(name)) for name in _texts(loaded, report, _FILES)),
        errors=tuple(decoded(text) for text in _texts(loaded, report, _ERRORS)),
        warnings=tuple(decoded(text) for text in _texts(loaded, report, _WARNINGS)),
        nodes=number(_NODES), cells=number(_CELLS), steps=number(_STEPS),
        transport_times=number(_TRANSPORT_TIMES), bytes=number(_BYTES))
