"""What a conversion needs of the process while it runs: its standard output and the hooks of the library."""

from __future__ import annotations

import contextlib
import ctypes
import errno
import os
import sys
import threading
from typing import Any, Callable, Iterator, List, Optional, Tuple

from ._arguments import PathLike
from ._library import (MessageFunction, ProgressFunction, PromptFunction, StartFunction, library)

_MOST_ERRORS = 1000
_STANDARD_OUTPUT = 1


class _SystemDescriptors:
    """The descriptors of the C library that prints the trace; on Windows it is not the one Python uses."""

    def __init__(self) -> None:
        windows = sys.platform == "win32"
        self._c: Any = ctypes.CDLL("msvcrt") if windows else ctypes.CDLL(None)
        self._c.fflush.argtypes = [ctypes.c_void_p]
        self._own = windows

    def open(self, name: str) -> int:
        flags = os.O_WRONLY | os.O_CREAT | os.O_TRUNC
        if not self._own:
            return os.open(name, flags, 0o666)
        fd = int(self._c._wopen(name, flags | getattr(os, "O_BINARY", 0), 0o600))
        if fd < 0:
            raise OSError(f"'{name}' cannot be opened for writing")
        return fd

    def duplicate(self, fd: int) -> int:
        """-1 for a closed one."""
        if self._own:
            return int(self._c._dup(fd))
        try:
            return os.dup(fd)
        except OSError as fault:
            if fault.errno != errno.EBADF:
                raise
            return -1

    def replace(self, source: int, target: int) -> None:
        self._c._dup2(source, target) if self._own else os.dup2(source, target)

    def close(self, fd: int) -> None:
        self._c._close(fd) if self._own else os.close(fd)

    def flush(self) -> None:
        self._c.fflush(None)


def _flush_python() -> None:
    with contextlib.suppress(Exception):
        sys.stdout.flush()


class Diversion:
    """Sends what is printed to standard output into a file while a with block runs, but for `paused` parts."""

    def __init__(self, trace: Optional[PathLike]) -> None:
        # Opened here so that a wrong name is told before anything runs.
        name = os.devnull if trace is None else os.fsdecode(trace)
        if not name:
            raise ValueError("trace: an empty path names no file")
        self._system = _SystemDescriptors()
        self._target = self._system.open(name)
        self._saved = -1

    def __enter__(self) -> Diversion:
        _flush_python()
        self._system.flush()
        self._saved = self._system.duplicate(_STANDARD_OUTPUT)
        self._system.replace(self._target, _STANDARD_OUTPUT)
        return self

    def __exit__(self, *fault: object) -> None:
        self._system.flush()
        if self._saved >= 0:
            self._system.replace(self._saved, _STANDARD_OUTPUT)
            self._system.close(self._saved)
        else:
            self._system.close(_STANDARD_OUTPUT)
        self._system.close(self._target)
        self._saved = -1

    @contextlib.contextmanager
    def paused(self) -> Iterator[None]:
        """What a callback prints belongs to the caller, not to the trace."""
        if self._saved < 0:
            yield
            return
        self._system.flush()
        self._system.replace(self._saved, _STANDARD_OUTPUT)
        try:
            yield
        finally:
            _flush_python()
            self._system.flush()
            self._system.replace(self._target, _STANDARD_OUTPUT)


class Errors:
    """Texts of the error hook: without their line ends, a repeated one once, and not without bound."""

    def __init__(self) -> None:
        self._texts: List[str] = []
        self._dropped = 0

    def add(self, message: str) -> None:
        text = message.rstrip("\r\n\t")
        if len(self._texts) >= _MOST_ERRORS:
            self._dropped += 1
        elif text and self._texts[-1:] != [text]:
            self._texts.append(text)

    def texts(self) -> Tuple[str, ...]:
        more = [f"and {self._dropped} further messages"] if self._dropped else []
        return tuple(self._texts + more)


_running = threading.Lock()
_owner: Optional[int] = None


class Run:
    """One conversion: diverts standard output, registers hooks and takes them away again at the end.

    Hooks and standard output belong to the process, so that a second conversion waits for the first one.
    Exceptions cannot pass through the library: the first one is kept, the callbacks are left out from then
    on, and it is raised when the with block ends.
    """

    def __init__(self, trace: Optional[PathLike]) -> None:
        if _owner == threading.get_ident():
            raise RuntimeError("a callback of a conversion cannot start another one")
        self._diversion = Diversion(trace)
        self._fault: Optional[BaseException] = None
        self._kept: List[Any] = []
        self.errors = Errors()

    def __enter__(self) -> Run:
        global _owner
        _running.acquire()
        try:
            self._diversion.__enter__()
        except BaseException:
            _running.release()
            raise
        _owner = threading.get_ident()
        return self

    def __exit__(self, *raised: object) -> None:
        global _owner
        try:
            loaded = library()
            loaded.GMS_SetStatusFunc(MessageFunction())
            loaded.GMS_SetErrorFunc(MessageFunction())
            loaded.GMS_SetPromptFunc(PromptFunction())
            loaded.GMS_SetStartProgressFunc(StartFunction())
            loaded.GMS_SetProgressFunc(ProgressFunction())
            self._diversion.__exit__()
        finally:
            _owner = None
            _running.release()
        if self._fault is not None:
            raise self._fault

    def callback(self, kind: Any, function: Callable[..., Any], default: Any = None) -> Any:
        """A C function that calls `function` and lives as long as this object."""

        def guarded(*arguments: Any) -> Any:
            if self._fault is not None:
                return default
            try:
                return function(*arguments)
            except BaseException as fault:  # pylint: disable=broad-except
                self._fault = fault
                return default

        made = kind(guarded)
        self._kept.append(made)
        return made

    def ask(self, function: Any, *arguments: Any) -> Any:
        """Calls a function of the caller, who sees what it prints."""
        with self._diversion.paused():
            return function(*arguments)

    def hook_errors(self, on_error: Optional[Callable[[str], None]]) -> None:
        def report(message: Optional[bytes]) -> None:
            text = decoded(message)
            self.errors.add(text)
            if on_error is not None:
                self.ask(on_error, text)

        library().GMS_SetErrorFunc(self.callback(MessageFunction, report))


def decoded(message: Optional[bytes]) -> str:
    """A message of the library; it may quote bytes of any file."""
    return (message or b"").decode("mbcs" if sys.platform == "win32" else "utf-8", "replace")
