#include "plxutils/c/VXFileWriter.h"

#include "core/c_boundary.h"
#include "plxutils/core/VXOutputFile.h"

namespace {

using plx::copy_text, plx::guarded, plx::minus_one_if, plx::text_or_empty;

VXOutputFile* stream_of(VXFileWriterHandle* handle) { return reinterpret_cast<VXOutputFile*>(handle); }

/// What `work` returns on the stream; 0 for a null handle and when it throws.
template <class Work>
int on_writer(VXFileWriterHandle* handle, Work work) {
    if (handle == nullptr) return 0;
    return guarded(0, [&] { return work(*stream_of(handle)); });
}

int open(VXFileWriterHandle* writer, const char* name, bool compressed, bool append) {
    return on_writer(writer, [=](VXOutputFile& stream) {
        return minus_one_if(stream.Open(text_or_empty(name), compressed, append));
    });
}

}  // namespace

VXFileWriterHandle* VXFileWriter_new(void) {
    return guarded<VXFileWriterHandle*>(
        nullptr, [] { return reinterpret_cast<VXFileWriterHandle*>(new VXOutputFile); });
}

void VXFileWriter_delete(VXFileWriterHandle* writer) {
    guarded([writer] { delete stream_of(writer); });
}

int VXFileWriter_Open(VXFileWriterHandle* writer, const char* name) {
    return open(writer, name, false, false);
}

int VXFileWriter_OpenForAppend(VXFileWriterHandle* writer, const char* name) {
    return open(writer, name, false, true);
}

int VXFileWriter_OpenCompressed(VXFileWriterHandle* writer, const char* name) {
    return open(writer, name, true, false);
}

int VXFileWriter_Close(VXFileWriterHandle* writer) {
    return on_writer(writer, [](VXOutputFile& stream) { return minus_one_if(stream.Close()); });
}

int VXFileWriter_Failed(VXFileWriterHandle* writer) {
    return on_writer(writer, [](VXOutputFile& stream) { return minus_one_if(stream.Failed()); });
}

int VXFileWriter_Filename(VXFileWriterHandle* writer, char* dst, int len) {
    return on_writer(writer, [=](VXOutputFile& stream) { return copy_text(stream.Filename(), dst, len); });
}

int VXFileWriter_Write(VXFileWriterHandle* writer, const char* text) {
    return on_writer(writer, [text](VXOutputFile& stream) { return stream.Write(text_or_empty(text)); });
}

int VXFileWriter_WriteLine(VXFileWriterHandle* writer, const char* text) {
    return on_writer(writer, [text](VXOutputFile& stream) { return stream.WriteLine(text_or_empty(text)); });
}
