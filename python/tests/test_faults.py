import copy
import os
import pickle
import subprocess
import sys

import pytest

import plxutils
from plxutils import GeoRef, LineReader, Writer, convert_gms, convert_modflow

POINTS = [(0, 0, 1000, 5000), (99, 49, 1198, 4902), (0, 49, 1000, 4902)]




def project(make):
    """Arrays that would lose something as plain numbers."""
    return lambda folder: GeoRef(POINTS).fit().project(make(pytest.importorskip("numpy")), 1)


@pytest.mark.parametrize("use, fault, text", [
    (lambda folder: LineReader(folder / "none.dat"), FileNotFoundError, "none.dat"),
    (lambda folder: LineReader(folder / ".hidden"), ValueError, "begins with a dot"),
    (lambda folder: Writer(folder / "no" / "out.txt"), OSError, "cannot be opened"),
    (lambda folder: GeoRef([(1, 2, "3", 4)]), TypeError, "X: a number"),
    (lambda folder: GeoRef(POINTS).fit().add(1, 2, 3, 4).residuals, ValueError, "fit"),
    (lambda folder: GeoRef(POINTS).fit().project([1, 2], [3]), ValueError, "no pairs"),
    (lambda folder: GeoRef.read_gcp(folder / "none.tif"), FileNotFoundError, "none.gcp"),
    (lambda folder: GeoRef(POINTS).fit().write_world(folder / "no" / "a.tif"), OSError, "could not be written"),
    (lambda folder: convert_gms(folder / "a.gpr", folder, types="tin,tins"), ValueError, "'tins' is not known"),
    (lambda folder: convert_modflow(folder / "a.gpr", outputs=["boundary_flows"]), ValueError, "needs ccf"),
    (lambda folder: convert_modflow(folder / "a.gpr", porosity=[0.1, 1.5]), ValueError, "fractions"),
    (lambda folder: convert_modflow(folder / "a.gpr", trace="/no/such/trace"), FileNotFoundError, "trace"),
    (lambda folder: convert_modflow(folder / "a.gpr", porosity=10**400), ValueError, "too large"),
    (lambda folder: GeoRef(POINTS).fit().project(10**400, 1), ValueError, "too large"),
    (project(lambda numpy: numpy.array([b"1"])), TypeError, "numbers are expected"),
    (project(lambda numpy: numpy.array([1j])), TypeError, "numbers are expected"),
    (project(lambda numpy: numpy.ma.array([1.0], mask=[True])), TypeError, "masked"),
    (lambda folder: LineReader(folder / "a.gpr").to_int(1.0), TypeError, "float"),
    (lambda folder: LineReader(folder / "a.gpr", delimiters="§"), ValueError, "one byte"),
    (lambda folder: copy.copy(LineReader(folder / "a.gpr")), TypeError, "LineReader cannot be copied"),
    (lambda folder: pickle.dumps(Writer(folder / "out.txt")), TypeError, "Writer cannot be copied"),
    (lambda folder: Writer("/"), ValueError, "names no folder and file"),
    (lambda folder: LineReader(folder / "Twin.dat"), ValueError, "differs from 'twin.dat'"),
    (lambda folder: GeoRef.read_gcp(folder / "Twin.gcp"), ValueError, "differs from 'twin.gcp'"),
    (lambda folder: Writer(folder / "keep.txt"), ValueError, "differs from 'Keep.txt'"),
    (lambda folder: Writer(folder / "Twin.dat", append=True), ValueError, "differs from 'twin.dat'"),
    (lambda folder: convert_gms(folder / "a.gpr", folder / "res"), ValueError, "differs from 'Res'")])
def test_wrong_arguments_and_missing_files_raise(tmp_path, use, fault, text):
    for name in ("a.gpr", "twin.dat", "Twin.dat", "twin.gcp", "Twin.gcp", "Keep.txt"):
        (tmp_path / name).write_text("")
    (tmp_path / "Res").mkdir()
    with pytest.raises(fault, match=text):
        use(tmp_path)


LOOK = "import plxutils\ntry:\n    plxutils.library()\nexcept ImportError as fault:\n    print(fault)"


@pytest.mark.parametrize("library, text", [
    ("/no/such.so", "not found; set PLXUTILS_LIBRARY to its file. Tried:\n  /no/such.so"), (__file__, __file__),
    ("/lib/x86_64-linux-gnu/libc.so.6", "lacks PLX_version" if sys.platform == "linux" else "")])
def test_a_library_that_does_not_fit_is_told(library, text):
    environment = {**os.environ, "PLXUTILS_LIBRARY": library, "PYTHONPATH": os.path.dirname(plxutils.__path__[0])}
    assert text in subprocess.check_output([sys.executable, "-c", LOOK], env=environment, text=True)
