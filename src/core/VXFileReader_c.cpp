#include "plxutils/c/VXFileReader.h"

#include <climits>

#include "core/c_boundary.h"
#include "plxutils/core/VXFileReader.h"

namespace {

using plx::copy_text, plx::guarded, plx::minus_one_if, plx::text_or_empty;

VXFileReader* reader_of(VXFileReaderHandle* handle) { return reinterpret_cast<VXFileReader*>(handle); }

/// What `work` returns on the reader; `failed` for a null handle and when it throws.
template <class Work>
int on_reader(VXFileReaderHandle* handle, int failed, Work work) {
    if (handle == nullptr) return failed;
    return guarded(failed, [&] { return work(*reader_of(handle)); });
}

/// A word index of which the class prints nothing: it complains of negative ones, and past the last word
/// there is no word either.
int silent(int i) { return i < 0 ? INT_MAX : i; }

}  // namespace

VXFileReaderHandle* VXFileReader_new(void) {
    return guarded<VXFileReaderHandle*>(
        nullptr, [] { return reinterpret_cast<VXFileReaderHandle*>(new VXFileReader); });
}

void VXFileReader_delete(VXFileReaderHandle* reader) {
    guarded([reader] { delete reader_of(reader); });
}

int VXFileReader_Open(VXFileReaderHandle* reader, const char* name) {
    return on_reader(reader, 0,
                     [name](VXFileReader& r) { return minus_one_if(r.Open(text_or_empty(name))); });
}

int VXFileReader_Close(VXFileReaderHandle* reader) {
    return on_reader(reader, 0, [](VXFileReader& r) { return minus_one_if(r.Close()); });
}

int VXFileReader_ReadLine(VXFileReaderHandle* reader, const char* delims, int skipComments, int trim,
                          int atMarker) {
    return on_reader(reader, -1, [=](VXFileReader& r) {
        return r.ReadLine(text_or_empty(delims), skipComments != 0, trim != 0, atMarker != 0);
    });
}

int VXFileReader_WordsFound(VXFileReaderHandle* reader) {
    return on_reader(reader, 0, [](VXFileReader& r) { return r.WordsFound(); });
}

int VXFileReader_CurrentLine(VXFileReaderHandle* reader, char* dst, int len) {
    return on_reader(reader, 0, [=](VXFileReader& r) { return copy_text(r.CurrentLine(), dst, len); });
}

int VXFileReader_GetWord(VXFileReaderHandle* reader, int i, char* dst, int len) {
    return on_reader(reader, 0, [=](VXFileReader& r) { return copy_text(r.GetWord(silent(i)), dst, len); });
}

int VXFileReader_FindWord(VXFileReaderHandle* reader, const char* w, int caseSensitive) {
    return on_reader(reader, -1,
                     [=](VXFileReader& r) { return r.FindWord(text_or_empty(w), caseSensitive != 0); });
}

int VXFileReader_WordToInt(VXFileReaderHandle* reader, int i, int* v) {
    if (v == nullptr) return 0;
    return on_reader(reader, 0, [=](VXFileReader& r) { return minus_one_if(r.WordToInt(silent(i), *v)); });
}

int VXFileReader_WordToDouble(VXFileReaderHandle* reader, int i, double* v) {
    if (v == nullptr) return 0;
    return on_reader(reader, 0, [=](VXFileReader& r) { return minus_one_if(r.WordToDouble(silent(i), *v)); });
}

int VXFileReader_WordToChemValue(VXFileReaderHandle* reader, int i, double* v) {
    if (v == nullptr) return 0;
    return on_reader(reader, 0, [=](VXFileReader& r) {
        int flag = 0;
        return minus_one_if(r.WordToChemValue(silent(i), 0.1, -1.0e8, *v, flag));
    });
}

int VXFileReader_CurrentLineNumber(VXFileReaderHandle* reader) {
    return on_reader(reader, 0, [](VXFileReader& r) { return r.CurrentLineNumber(); });
}

int VXFileReader_Filename(VXFileReaderHandle* reader, char* dst, int len) {
    return on_reader(reader, 0, [=](VXFileReader& r) { return copy_text(r.Filename(), dst, len); });
}

int VXFileReader_isEOF(VXFileReaderHandle* reader) {
    return on_reader(reader, -1, [](VXFileReader& r) { return minus_one_if(r.isEOF()); });
}
