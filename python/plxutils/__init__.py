"""Reads text and gzip files, places images and converts models and projects with the PLXUtils library.

The library is looked for at the first call that needs it, see `library`.
"""

from ._georef import GeoRef
from ._gms import GMS_TYPES, GmsResult, convert_gms
from ._library import LibraryNotFound, library
from ._modflow import KINDS, OUTPUTS, RULES, ModelResult, convert_modflow
from ._text import LineReader, Writer
from ._version import VERSION as __version__

__all__ = [
    "GMS_TYPES",
    "KINDS",
    "OUTPUTS",
    "RULES",
    "GeoRef",
    "GmsResult",
    "LibraryNotFound",
    "LineReader",
    "ModelResult",
    "Writer",
    "__version__",
    "convert_gms",
    "convert_modflow",
    "library",
]
