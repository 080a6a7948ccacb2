"""Text files line by line, plain or compressed."""

from __future__ import annotations

import codecs
import ctypes
import operator
import os
import weakref
from types import TracebackType
from typing import Any, Iterable, Iterator, List, Optional, Type, cast

from ._arguments import PathLike, encoded_path, input_file, output_file, spelt_as_found, text_bytes
from ._library import library

_FIRST_BUFFER = 512
# The library formats a line in a buffer of 8192 bytes.
_LONGEST_LINE = 8000


class _Stream:
    """A handle of the library that is released once: by close, by a with block, or with its object."""

    def __init__(self, kind: str, path: "os.PathLike[str]", encoding: str) -> None:
        "".encode(encoding)  # An unknown encoding is told here.
        # The mark at the front is the affair of the stream, or each text would get one.
        self._marked = codecs.lookup(encoding).name == "utf-8-sig"
        self._kind = kind
        self._path = os.fspath(path)
        self._encoding = "utf-8" if self._marked else encoding
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
            _Stream.close(self)
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

    def __reduce_ex__(self, protocol: Any) -> Any:
        raise TypeError(f"a {type(self).__name__} cannot be copied")


class LineReader(_Stream):
    """Reads a text file, plain or gzip, as lines of words; iteration gives a list of words for each line.

    A word that begins with a quote or an apostrophe reaches to the next one and keeps separators; separators
    that follow each other count as one.

    :param delimiters: the characters that separate words, each of one byte in the encoding.
    :param skip_comments: lines that are empty or begin with "#" are passed over, and words that begin with "#"
        end a line.
    :param trim: blanks and tabs around a line are removed first.
    :param at_marker: only what stands behind the first "@@" of a line counts.
    :param encoding: of the file; bytes that do not fit are kept as surrogates. "utf-8-sig" leaves out a byte
        order mark at the front.
    :raises OSError: when the file cannot be opened.
    """

    def __init__(self, path: PathLike, *, delimiters: str = " \t,", skip_comments: bool = True,
                 trim: bool = True, at_marker: bool = False, encoding: str = "utf-8") -> None:
        place = input_file(path, "path")
        name = encoded_path(place, "path")
        self._delimiters = _single_bytes(delimiters, encoding)
        self._flags = int(bool(skip_comments)), int(bool(trim)), int(bool(at_marker))
        super().__init__("Reader", place, encoding)
        self._buffer = ctypes.create_string_buffer(_FIRST_BUFFER)
        self._opened("Open", name)
        self._mark = b""
        if self._marked:
            self._look_for_mark(name)

    def _look_for_mark(self, name: bytes) -> None:
        handle = self._open_handle()
        if self._call("ReadLine", handle, b"", 0, 0, 0) >= 0:
            first = self._bytes("CurrentLine", handle)
            if first.startswith(codecs.BOM_UTF8):
                # As separators the bytes of the mark vanish before the words, unless they occur in them.
                self._mark = codecs.BOM_UTF8
                self._marked = not any(byte in self._mark for byte in first[len(self._mark):])
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
        handle = self._open_handle()
        mark = self._mark if self._marked and self.line_number == 0 else b""
        count = self._call("ReadLine", handle, self._delimiters + mark, *self._flags)
        if count == 0 and mark and self._flags[0] and self.line_number == 1:
            # Without its mark that line is empty or a comment.
            count = self._call("ReadLine", handle, self._delimiters, *self._flags)
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
        index = operator.index(index)
        # ctypes would cut a larger index to the bits of an int.
        if not 0 <= index < self._call("WordsFound", handle):
            return None
        return value.value if self._call(function, handle, index, ctypes.byref(value)) else None

    def _text(self, function: str, *arguments: Any) -> str:
        data = self._bytes(function, *arguments)
        if self._mark and self.line_number == 1 and data.startswith(self._mark):
            data = data[len(self._mark):]
        return data.decode(self._encoding, "surrogateescape")

    def _bytes(self, function: str, *arguments: Any) -> bytes:
        """A text that the library copies without telling its length: the buffer grows until all of it fits."""
        while self._call(function, *arguments, self._buffer, len(self._buffer)):
            # What did not fit ends without a NUL.
            if self._buffer[-1] == b"\0":
                return self._buffer.value
            self._buffer = ctypes.create_string_buffer(4 * len(self._buffer))
        return b""


def _single_bytes(delimiters: str, encoding: str) -> bytes:
    if not isinstance(delimiters, str):
        raise TypeError(f"delimiters: a text is expected, not {type(delimiters).__name__}")
    encoding = "utf-8" if codecs.lookup(encoding).name == "utf-8-sig" else encoding
    for delimiter in delimiters:
        if len(text_bytes(delimiter, "delimiters", encoding)) != 1:
            raise ValueError(f"delimiters: {delimiter!r} is not one byte in {encoding}")
    return text_bytes(delimiters, "delimiters", encoding)


class Writer(_Stream):
    """Writes a text file with the line ends of Windows.

    The library lower-cases the name of a new file: "Notes.TXT" makes notes.txt, which `path` tells. Output is
    buffered: only `close`, or the end of a with block, tells whether all of it was written.

    :param append: adds to an existing file.
    :param compressed: writes a gzip file; not together with `append`.
    :param encoding: of the file; "utf-8-sig" puts a byte order mark in front of a new one.
    :raises OSError: when the file cannot be opened.
    :raises ValueError: for a name that differs from that of an existing file in the case of its letters only.
    """

    def __init__(self, path: PathLike, *, append: bool = False, compressed: bool = False,
                 encoding: str = "utf-8") -> None:
        if append and compressed:
            raise ValueError("append and compressed: a compressed file cannot be appended to")
        place = output_file(path, "path")
        name = encoded_path(place, "path")
        super().__init__("Writer", place, encoding)
        self._opened("OpenForAppend" if append else "OpenCompressed" if compressed else "Open", name)
        self._path = os.fspath(spelt_as_found(place.parent, place.name) or place)
        if self._marked and not (append and os.path.getsize(self._path)):
            self._call("Write", self._open_handle(), codecs.BOM_UTF8)

    def __enter__(self) -> Writer:
        self._open_handle()
        return self

    def __exit__(self, kind: Optional[Type[BaseException]], fault: Optional[BaseException],
                 trace: Optional[TracebackType]) -> None:
        try:
            self.close()
        except OSError:
            # What went wrong first is what the caller has to know.
            if kind is None:
                raise

    def close(self) -> None:
        """Completes the file; more than once does nothing.

        :raises OSError: when not all that was written has reached the file.
        """
        if self._handle is None:
            return
        self._call("Close", self._handle)
        failed = self._call("Failed", self._handle)
        super().close()
        if failed:
            raise OSError(f"'{self._path}': not all of it could be written")

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
