import ctypes
import os
from concurrent.futures import ThreadPoolExecutor

import pytest
from conftest import run_program

import plxutils
from plxutils import convert_gms, convert_modflow


LIBRARY = plxutils.library()
LIBRARY.GMS_PromptValue.restype = ctypes.c_double


def expect_files_of_the_tool(folder, result, command, project, *arguments):
    """The same files with the same bytes; logs tell of the run and do not count."""
    run_program("PLXCONVERT", command, project, "--quiet", "--dest", folder / "Tool", *arguments)
    ours, tool = ({file.relative_to(place): file.read_bytes() for file in place.rglob("*.*") if file.suffix != ".log"}
                  for place in (folder / "Ours", folder / "Tool"))
    assert result.errors == () and result.succeeded and ours == tool
    assert {file.relative_to(folder / "Ours") for file in result.files} == set(ours)


@pytest.mark.parametrize("project, options, arguments", [
    ("quarry.gpr", {}, ""),
    ("quarry.gpr", {"compress": False, "subfolders": True, "types": ["tin"]}, "--plain --subfolders --types tin"),
    ("quarry_hdf5.gpr", {"types": "scat2d,tin", "extents": (0, 0, 1e4, 1e4)}, "--types scat2d,tin"),
])
def test_gms_files_are_those_of_the_tool(quarry, tmp_path, project, options, arguments):
    result = convert_gms(quarry / project, tmp_path / "Ours", **options)
    expect_files_of_the_tool(tmp_path, result, "gms", quarry / project, *arguments.split())


@pytest.mark.parametrize("options, arguments", [
    ({}, ""),
    ({"outputs": "head_cells,mt3d", "compress": True, "porosity": 0.25},
     "--outputs head_cells,mt3d --compress --porosity 0.25"),
    ({"kind": "modflow2000", "outputs": ["elevation", "head_nodes"], "extents": (500, 0, 2500, 1800),
      "rules": "prescribed"}, "--outputs elevation,head_nodes --crop 500 0 2500 1800 --rules prescribed"),
])
def test_model_files_are_those_of_the_tool(valley, tmp_path, capfd, options, arguments):
    steps = []
    result = convert_modflow(valley / "valley.nam", destination=tmp_path / "Ours", **options,
                             on_progress=lambda *numbers: steps.append(numbers))
    assert capfd.readouterr().out == ""
    expect_files_of_the_tool(tmp_path, result, "modflow", valley / "valley.nam", *arguments.split())
    assert result.steps == 11 and len(steps) == 11 + result.transport_times and steps[-1][0] == steps[-1][1]
    assert result.nodes > result.cells > 0 and (result.cells == 4815 or "extents" in options) and result.bytes > 0


def test_the_trace_goes_to_its_file_and_what_callbacks_print_to_the_caller(quarry, tmp_path, capfd):
    convert_gms(quarry / "quarry.gpr", tmp_path, on_status=lambda text: os.write(1, b"S"), trace=tmp_path / ".trace",
                on_error=print)
    LIBRARY.GMS_DoStatus(b"nobody hears it"), LIBRARY.GMS_DoError(b"nobody hears it"), os.write(1, b"after")
    assert set(capfd.readouterr().out.split("S")) == {"", "after"}
    assert "DataSet water deleted" in (tmp_path / ".trace").read_text()


def test_names_of_other_encodings_and_files_that_a_callback_took_away(tmp_path):
    (tmp_path / "site.gpr").write_text("TIN hill.tin\n")
    (tmp_path / "hill.tin").write_bytes(b"TIN\nBEGT\nTNAM h\xfcgel\nID 1\nVERT 3\n"
                                         b"0 0 1\n1 0 2\n0 1 3\nTRI 1\n1 2 3\nENDT\n")
    result = convert_gms(tmp_path / "site.gpr", tmp_path, on_status=lambda text: text.encode())
    assert len(result.files) == 2 and set(map(os.fsencode, result.files)) == {
        os.fsencode(tmp_path) + b"/tin_h\xfcgel_elevation" + ending for ending in (b".gmf", b".pff")}

    def remove(text):
        for file in tmp_path.glob("*.gmf"):
            file.unlink()

    fewer = convert_gms(tmp_path / "site.gpr", tmp_path, on_status=remove)
    assert 0 < fewer.bytes < result.bytes


def test_time_steps_of_datasets(tmp_path):
    (tmp_path / "site.gpr").write_text("DATA depth.dat\nTIN hill.tin\n")
    (tmp_path / "hill.tin").write_text("TIN\nBEGT\nTNAM hill\nID 1\nVERT 3\n0 0 1\n1 0 2\n0 1 3\nTRI 1\n1 2 3\nENDT\n")
    (tmp_path / "depth.dat").write_text("DATASET\nOBJTYPE tin\nBEGSCL\nOBJID 1\nND 3\nNC 1\nNAME depth\n"
                                        "TS 0 0.0\n1\n2\n3\nTS 0 9.0\n4\n5\n6\nENDDS\n")
    assert convert_gms(tmp_path / "site.gpr", tmp_path, time=8).succeeded
    assert b"0.000000 0.000000 4.000000" in (tmp_path / "hill_depth.gmf").read_bytes()
    assert "End of Data" in convert_gms(tmp_path / "site.gpr", tmp_path, lenient=False).errors[0]


@pytest.mark.parametrize("failing", ["on_status", "on_error", "prompt", "on_progress"])
def test_exceptions_of_callbacks_are_raised_at_the_end(quarry, tmp_path, failing):
    calls = []

    def provoke(text):
        if text == "GMSPROJ":
            LIBRARY.GMS_DoError(b"seen"), LIBRARY.GMS_PromptValue(b"how much?"), LIBRARY.GMS_StartProgress(0, 10)

    def fail(*arguments):
        calls.append(arguments)
        raise KeyError(failing)

    with pytest.raises(KeyError, match=failing):
        convert_gms(quarry / "quarry.gpr", tmp_path, **{"on_status": provoke, failing: fail})
    assert len(calls) == 1 and len(list(tmp_path.glob("*.gmf"))) == 4


@pytest.mark.parametrize("replacement", [(), (lambda text: None,)], ids=["null", "function"])
def test_callbacks_get_texts_and_numbers_and_hooks_may_be_replaced(quarry, tmp_path, replacement):
    kept = LIBRARY.GMS_SetStatusFunc.argtypes[0](*replacement)
    seen = []

    def status(text):
        if text == "GMSPROJ":
            seen.append(LIBRARY.GMS_PromptValue(b"how much?"))
            LIBRARY.GMS_StartProgress(5, 25), LIBRARY.GMS_SetProgress(10)
            LIBRARY.GMS_DoError("Größe\n".encode()), LIBRARY.GMS_DoError("Größe\n".encode())
            LIBRARY.GMS_SetErrorFunc(kept), LIBRARY.GMS_SetStatusFunc(kept)
            LIBRARY.GMS_DoError(b"nobody hears it"), LIBRARY.GMS_DoStatus(b"GMSPROJ")

    result = convert_gms(quarry / "quarry.gpr", tmp_path, on_status=status, on_error=seen.append,
                         prompt=lambda text: seen.append(text) or 2.5, on_progress=lambda *n: seen.append(n))
    assert seen == ["how much?", 2.5, (0, 20), (5, 20), "Größe\n", "Größe\n"]
    assert result.errors == ("Größe",) and len(list(tmp_path.glob("*.gmf"))) == 4


def test_threads_take_turns_and_callbacks_start_nothing(quarry, tmp_path):
    with ThreadPoolExecutor(4) as pool:
        results = pool.map(lambda i: convert_gms(quarry / "quarry.gpr", tmp_path / str(i)), range(4))
    assert [(len(result.files), result.errors) for result in results] == [(6, ())] * 4
    with pytest.raises(RuntimeError, match="callback"):
        convert_gms(quarry / "quarry.gpr", tmp_path, on_status=lambda _: convert_gms(quarry / "quarry.gpr", tmp_path))


@pytest.mark.parametrize("convert, name, text, expected", [
    (convert_gms, "bad.gpr", "nothing of GMS\n", "nothing was written"),
    (convert_modflow, "bad.nam", "DIS 10 missing.dis\nBAS6 11 missing.ba6\n", "missing.dis")])
def test_faults_of_the_input_are_errors(tmp_path, convert, name, text, expected):
    (tmp_path / name).write_text(text)
    result = convert(tmp_path / name, destination=tmp_path / "out")
    assert expected in " ".join(result.errors) and len(set(result.errors)) == len(result.errors)
