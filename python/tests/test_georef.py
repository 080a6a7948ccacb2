import copy
import math
import pickle

import pytest

from plxutils import GeoRef

CORNERS = [(0, 0, 1000, 5000), (99, 49, 1198, 4902), (0, 49, 1000, 4902), (99, 0, 1198, 5000)]


def moved(column, row):
    """Turned by 30 degrees, widened and moved."""
    c, s = 2 * math.cos(math.pi / 6), 2 * math.sin(math.pi / 6)
    return 1000 + c * column + s * row, 5000 + s * column - c * row


TURNED = [(x, y, *moved(x, y)) for x, y in ((0, 0), (99, 10), (7, 49), (80, 30), (20, 20), (50, 5))]


@pytest.mark.parametrize("points, wanted, fitted", [
    (CORNERS[:1], 7, 1), (TURNED[:2], 4, 2), (TURNED, 2, 2), (CORNERS, 3, 3), (TURNED, 4, 4), (TURNED, 7, 5)])
def test_rows_count_downwards_for_every_type(tmp_path, points, wanted, fitted):
    image = GeoRef(points).fit(wanted)
    assert image.type == fitted
    for column, row, X, Y in image.points:
        assert image.project(column, row) == pytest.approx((X, Y))
        assert image.reverse(X, Y) == pytest.approx((column, row), abs=1e-6)
    assert image.residuals + [image.rms] == pytest.approx([0] * (len(points) + 1), abs=1e-6)
    image.write_gcp(tmp_path / "Photo.TIF")
    for known, read in zip(image.points, GeoRef.read_gcp(tmp_path / "Photo.TIF").points):
        assert read == pytest.approx(known, abs=1e-6)


@pytest.mark.parametrize("duplicate", [copy.copy, copy.deepcopy, lambda image: pickle.loads(pickle.dumps(image))])
@pytest.mark.parametrize("points, type", [(CORNERS[:1], 1), (TURNED, 2), (CORNERS, 4), (CORNERS, None)])
def test_a_copy_has_a_fit_of_its_own(duplicate, points, type):
    image = GeoRef(points) if type is None else GeoRef(points).fit(type)
    other, expected = duplicate(image), type and image.project(7, 5)
    image.add(1, 2, 3, 4).fit(1)
    del image
    assert other.points == tuple(points) and other.type == type
    assert type is None or other.project(7, 5) == expected


def test_residuals_are_world_distances():
    assert GeoRef([(0, 0, 0, 0), (10, 0, 13, 4)]).fit(1).residuals == pytest.approx([2.5, 2.5])


def test_arrays_and_sequences():
    numpy = pytest.importorskip("numpy")
    image = GeoRef(TURNED).fit(4)
    columns, rows = numpy.meshgrid([0.0, 50.0], [0, 20, 40])
    X, Y = image.project(columns, rows)
    assert X.shape == (3, 2) and numpy.allclose((X, Y), moved(columns, rows))
    assert numpy.allclose(image.reverse(X, Y), (columns, rows))
    assert image.project(numpy.float32(1), 2) == image.project(1, 2)
    assert image.project([0, 50], (1, 2))[1] == pytest.approx([moved(0, 1)[1], moved(50, 2)[1]])


def test_world_files(tmp_path):
    for _ in range(2):
        assert GeoRef(CORNERS).fit(4).write_world(tmp_path / "Photo.PNG") == tmp_path / "photo.pgw"
    numbers = [float(word) for word in (tmp_path / "photo.pgw").read_text().split()]
    assert numbers == pytest.approx([2, 0, 0, -2, 1000, 5000]) and (tmp_path / "photo.pgw.backup").exists()
    assert GeoRef.read_world(tmp_path / "Photo.PNG", 100, 50).points == tuple(CORNERS[:3])
