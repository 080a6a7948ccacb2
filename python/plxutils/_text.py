"""Text files line by line, plain or compressed."""

from __future__ import annotations

import ctypes
import os
import weakref
from types import TracebackType
from typing import Any, Iterable, Iterator, List, Optional, Type, cast

from ._arguments import PathLike, absolute, encoded_path, input_file, text_bytes
from ._library import library

_FIRST_BUFFER = 512
# The library formats a line in a buffer of 8192 bytes.
_LONGEST_LINE = 8000


class _Stream:
    """A handle of the library that is released once: by close, by a with block, or with its object."""

    def __init__(self, kind: str, path: "os.PathLike[str]", encoding: str) -> None:
        "".encode(encoding)  # An unknown encoding is told here.
        self._kind = kind
        self._path = os.fspath(path)
        self._encoding = encoding
        self._library = library()
        handle = self._call("new")
        if not handle:
            raise MemoryError
        self._handle: Optional[int] = handle
        self._release = weakref.finalize(self, getattr(self._library, f"VXFile{kind}_delete"), handle)

    def _call(self, function: str, *arguments: Any) -> Any:
        return getattr(self._library, f"VXFile{self._kind}_{function}")(*arguments)

    def _opened(self, function: str, name: bytes) -> None:
        if not self._call(function, self._open_handle(), name):
            self.close()
            raise OSError(f"'{self._path}' cannot be opened")

    def _open_handle(self) -> int:
        if self._handle is None:
            raise ValueError(f"'{self._path}' is closed")
        return self._handle

    @property
    def path(self) -> str:
        """The absolute path of the file."""
        return self._path

    @property
    def closed(self) -> bool:
        return self._handle is None

    def close(self) -> None:
        """Closes the file; more than once does nothing."""
        self._handle = None
        self._release()

    def __exit__(self, kind: Optional[Type[BaseException]], fault: Optional[BaseException],
                 trace: Optional[TracebackType]) -> None:
        self.close()


class LineReader(_Stream):
    """Reads a text file, plain or gzip, as lines of words; iteration gives a list of words for each line.

    A word that begins with a quote or an apostrophe reaches to the next one and keeps separators; separators
    that follow each other count as one.

    :param delimiters: the characters that separate words.
    :param skip_comments: lines that are empty or begin with "#" are passed over, and words that begin with "#"
        end a line.
    :param trim: blanks and tabs around a line are removed first.
    :param at_marker: only what stands behind the first "@@" of a line counts.
    :param encoding: of the file; bytes that do not fit are kept as surrogates.
    :raises OSError: when the file cannot be opened.
    """

    def __init__(self, path: PathLike, *, delimiters: str = " \t,", skip_comments: bool = True,
                 trim: bool = True, at_marker: bool = False, encoding: str = "utf-8") -> None:
        place = input_file(path, "path")
        name = encoded_path(place, "path")
        self._delimiters = text_bytes(delimiters, "delimiters", encoding)
        self._flags = int(bool(skip_comments)), int(bool(trim)), int(bool(at_marker))
        super().__init__("Reader", place, encoding)
        self._buffer = ctypes.create_string_buffer(_FIRST_BUFFER)
        self._opened("Open", name)

    def __enter__(self) -> LineReader:
        self._open_handle()
        return self

    def __iter__(self) -> Iterator[List[str]]:
        return self

    def __next__(self) -> List[str]:
        words = self.read_line()
        if words is None:
            raise StopIteration
        return words

    def read_line(self) -> Optional[List[str]]:
        """The words of the next line, none for a blank one; None at the end of the file."""
        count = self._call("ReadLine", self._open_handle(), self._delimiters, *self._flags)
        return None if count < 0 else self.words

    @property
    def words(self) -> List[str]:
        """The words of the line that was read last."""
        handle = self._open_handle()
        return [self._text("GetWord", handle, i) for i in range(self._call("WordsFound", handle))]

    @property
    def line(self) -> str:
        """The text of the line that was read last."""
        return self._text("CurrentLine", self._open_handle())

    @property
    def line_number(self) -> int:
        """The number of lines read, those passed over among them."""
        return int(self._call("CurrentLineNumber", self._open_handle()))

    @property
    def at_end(self) -> bool:
        return bool(self._call("isEOF", self._open_handle()))

    def find(self, word: str, *, case_sensitive: bool = False) -> Optional[int]:
        """The index of a word in the line, from 0; None when it is not there."""
        wanted = text_bytes(word, "word", self._encoding)
        index = self._call("FindWord", self._open_handle(), wanted, int(bool(case_sensitive)))
        return None if index < 0 else int(index)

    def to_int(self, index: int) -> Optional[int]:
        """A word as a whole number, cut towards zero; 0 for text, None when there is no such word."""
        return cast(Optional[int], self._number("WordToInt", index, ctypes.c_int()))

    def to_float(self, index: int) -> Optional[float]:
        """A word as a number with a decimal point; 0.0 for text, None when there is no such word."""
        return cast(Optional[float], self._number("WordToDouble", index, ctypes.c_double()))

    def chem_value(self, index: int) -> Optional[float]:
        """A word as a laboratory value: a tenth of N for "<N", -1e8 for "ND" (not detected), -1e9 for "NA"
        and other words for unmeasured; None for other text and when there is no such word."""
        return cast(Optional[float], self._number("WordToChemValue", index, ctypes.c_double()))

    def _number(self, function: str, index: int, value: Any) -> Any:
        handle = self._open_handle()
        # A negative index would print a message of the array.
        if not 0 <= index < self._call("WordsFound", handle):
            return None
        return value.value if self._call(function, handle, index, ctypes.byref(value)) else None

    def _text(self, function: str, *arguments: Any) -> str:
        """A text that the library copies without telling its length: the buffer grows until all of it fits."""
        while self._call(function, *arguments, self._buffer, len(self._buffer)):
            # What did not fit ends without a NUL.
            if self._buffer[-1] == b"\0":
                return self._buffer.value.decode(self._encoding, "surrogateescape")
            self._buffer = ctypes.create_string_buffer(4 * len(self._buffer))
        return ""


class Writer(_Stream):
    """Writes a text file with the line ends of Windows.

    :param append: adds to an existing file.
    :param compressed: writes a gzip file; not together with `append`.
    :raises OSError: when the file cannot be opened.
    """

    def __init__(self, path: PathLike, *, append: bool = False, compressed: bool = False,
                 encoding: str = "utf-8") -> None:
        if append and compressed:
            raise ValueError("append and compressed: a compressed file cannot be appended to")
        place = absolute(path, "path")
        name = encoded_path(place, "path")
        super().__init__("Writer", place, encoding)
        self._opened("OpenForAppend" if append else "OpenCompressed" if compressed else "Open", name)

    def __enter__(self) -> Writer:
        self._open_handle()
        return self

    def write(self, text: str) -> int:
        """Writes a text, each line feed as carriage return and line feed; returns the number of bytes.

        :raises OSError: when not all of it could be written.
        """
        data = text_bytes(text, "text", self._encoding)
        return self._complete(self._call("Write", self._open_handle(), data), len(data) + data.count(b"\n"))

    def write_line(self, text: str = "") -> int:
        """The same with a line end behind the text."""
        data = text_bytes(text, "text", self._encoding)
        if len(data) > _LONGEST_LINE:
            return self.write(text + "\n")
        done = self._call("WriteLine", self._open_handle(), data)
        return self._complete(done, len(data) + data.count(b"\n") + 2)

    def write_lines(self, lines: Iterable[str]) -> None:
        """Writes each text as a line."""
        for line in lines:
            self.write_line(line)

    def _complete(self, done: int, wanted: int) -> int:
        if done != wanted:
            raise OSError(f"'{self._path}': only {done} of {wanted} bytes could be written")
        return done
