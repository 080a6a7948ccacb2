import codecs
import gzip
import os

import pytest

from plxutils import LineReader, Writer

LINES = b'# wells\r\nW1 "two words" <5 # deep\r\n\r\nw2, 3.5D1 nd\r\nW3 x NA'


def file_with(folder, data):
    (folder / "Wells.dat").write_bytes(data)
    return folder / "Wells.dat"


@pytest.mark.parametrize("data, options, expected", [
    (LINES, {}, [["W1", "two words", "<5"], ["w2", "3.5D1", "nd"], ["W3", "x", "NA"]]),
    (gzip.compress(LINES), {"delimiters": ";"}, [['W1 "two words" <5 # deep'], ["w2, 3.5D1 nd"], ["W3 x NA"]]),
    (b"a\n\n #b c", {"skip_comments": False}, [["a"], [], ["#b", "c"]]),
    (b"a @@ 1 2\nb\nc @@3", {"at_marker": True}, [["1", "2"], [], ["3"]])], ids=["plain", "gzip", "comments", "marker"])
def test_lines_are_words(tmp_path, data, options, expected):
    with LineReader(file_with(tmp_path, data), **options) as reader:
        assert not reader.at_end and list(reader) == expected
        assert reader.read_line() is None and reader.at_end


def test_values_of_words(tmp_path):
    with LineReader(file_with(tmp_path, LINES)) as reader:
        values = [(reader.line_number, reader.find("W2"), reader.find("W2", case_sensitive=True), reader.to_int(1),
                   reader.to_float(1), reader.chem_value(2), reader.to_int(-1)) for _ in reader]
    assert values[:2] == [(2, None, None, 0, 0.0, 0.5, None), (4, 0, None, 35, 35.0, -1e8, None)]


@pytest.mark.parametrize("length", [1, 511, 512, 513, 100001])
def test_no_line_is_cut_and_no_byte_lost(tmp_path, length):
    line = b"K\xf6ln " + b"x" * length
    with LineReader(file_with(tmp_path, line + b"\n")) as reader, Writer(tmp_path / "copy.txt") as writer:
        assert reader.read_line() == ["K\udcf6ln", "x" * length]
        assert writer.write_line(reader.line) == len(line) + 2
    assert (tmp_path / "copy.txt").read_bytes() == line + b"\r\n"


@pytest.mark.parametrize("options, unpacked", [({}, bytes), ({"compressed": True}, gzip.decompress)])
def test_writer(tmp_path, options, unpacked):
    with Writer(tmp_path / "out.txt", **options) as writer:
        assert (writer.write_line("abc"), writer.write("a\nb\n")) == (5, 6)
    with Writer(tmp_path / "out.txt", append=True) as writer:
        writer.write_lines(["y" * 9000, ""] * (not options))
    data = unpacked((tmp_path / "out.txt").read_bytes())
    assert data == b"abc\r\na\r\nb\r\n" + (b"y" * 9000 + b"\r\n\r\n") * (not options)


def test_a_writer_tells_the_path_that_it_writes_to(tmp_path):
    for _ in range(2):
        with Writer(tmp_path / "Notes.TXT") as writer:
            writer.write_line("x")
        assert writer.path == str(tmp_path / "notes.txt") and os.path.getsize(writer.path) == 3


@pytest.mark.skipif(not os.path.exists("/dev/full"), reason="needs /dev/full")
@pytest.mark.parametrize("compressed", [False, True])
def test_a_full_disk_is_told_when_the_file_is_closed(compressed):
    writer = Writer("/dev/full", compressed=compressed)
    writer.write_line("lost")
    with pytest.raises(OSError, match="/dev/full.*not all"):
        writer.close()
    assert writer.closed
    with pytest.raises(KeyError), Writer("/dev/full") as writer:
        writer.write_line("lost")
        raise KeyError


@pytest.mark.parametrize("text, expected", [
    ("12 a\n", [(["12", "a"], 12.0)]), ("# wells\n\n3\n", [(["3"], 3.0)]),
    ('"a b" 1\n2', [(["a b", "1"], 0.0), (["2"], 2.0)]),
    ("λ » 1\n", [(["λ", "»", "1"], 0.0)]), ("\n\n", [])])
def test_a_byte_order_mark_is_no_text(tmp_path, text, expected):
    for packed in (bytes, gzip.compress):
        file = file_with(tmp_path, packed(codecs.BOM_UTF8 + text.encode()))
        with LineReader(file, encoding="utf-8-sig") as reader:
            assert [(words, reader.to_float(0)) for words in reader] == expected
    with LineReader(file, encoding="utf-8-sig", skip_comments=False) as reader:
        assert reader.read_line() is not None and reader.line == text.split("\n")[0]
    for _ in range(2):
        with Writer(tmp_path / "out.txt", append=True, encoding="utf-8-sig") as writer:
            assert writer.write_line("a") + writer.write("b") == 4
    assert (tmp_path / "out.txt").read_bytes() == codecs.BOM_UTF8 + b"a\r\nba\r\nb"


def test_closed_streams_refuse_to_work(tmp_path):
    reader, writer = LineReader(file_with(tmp_path, b"a b\n")), Writer(tmp_path / "out.txt")
    for stream in (reader, reader, writer, writer):
        stream.close()
    for use in (reader.read_line, lambda: reader.words, lambda: reader.line, lambda: reader.at_end,
                lambda: reader.to_int(0), lambda: reader.find("a"), writer.write_line, reader.__enter__):
        with pytest.raises(ValueError, match="is closed"):
            use()
