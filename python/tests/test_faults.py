import os
import subprocess
import sys

import pytest

import plxutils
from plxutils import GeoRef, LineReader, Writer, convert_gms, convert_modflow

POINTS = [(0, 0, 1000, 5000), (99, 49, 1198, 4902), (0, 49, 1000, 4902)]


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
    (lambda folder: convert_modflow(folder / "a.gpr", trace="/no/such/trace"), FileNotFoundError, "trace")])
def test_wrong_arguments_and_missing_files_raise(tmp_path, use, fault, text):
    (tmp_path / "a.gpr").write_text("")
    with pytest.raises(fault, match=text):
        use(tmp_path)


LOOK = "import plxutils\ntry:\n    plxutils.library()\nexcept ImportError as fault:\n    print(fault)"


@pytest.mark.parametrize("library, text", [
    ("/no/such.so", "not found; set PLXUTILS_LIBRARY to its file. Tried:\n  /no/such.so"), (__file__, __file__),
    ("/lib/x86_64-linux-gnu/libc.so.6", "lacks PLX_version" if sys.platform == "linux" else "")])
def test_a_library_that_does_not_fit_is_told(library, text):
    environment = {**os.environ, "PLXUTILS_LIBRARY": library, "PYTHONPATH": os.path.dirname(plxutils.__path__[0])}
    assert text in subprocess.check_output([sys.executable, "-c", LOOK], env=environment, text=True)
