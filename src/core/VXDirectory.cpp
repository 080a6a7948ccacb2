#include "plxutils/core/VXDirectory.h"

#include "platform/platform.h"

VXDirectory::VXDirectory() { SetDirectory(nullptr, false); }

VXDirectory::VXDirectory(const char* path, bool hasFile) { SetDirectory(path, hasFile); }

VXDirectory::VXDirectory(String path, bool hasFile) { SetDirectory(path.c_str(), hasFile); }

VXDirectory::VXDirectory(const VXDirectory& other) = default;

VXDirectory& VXDirectory::operator=(const VXDirectory& other) {
    dir = other.dir;
    return *this;
}

void VXDirectory::SetDirectory(const char* path, bool hasFile) {
    String text(path);
    if (text.GetLength() == 0)
        text = plx::platform::system_drive().c_str();
    else if (hasFile)
        text = text.Left(text.ReverseFind('\\'));
    text.TrimRight("\\");
    dir.Swap(text);
}

void VXDirectory::SetDirectory(VXDirectory other) { dir.Swap(other.dir); }

String VXDirectory::GetDirectory(bool withSeparator) const { return withSeparator ? dir + '\\' : dir; }

VXDirectory::operator String() const { return dir; }

VXDirectory VXDirectory::GetParentDirectory(int levels) const {
    String text(dir);
    for (int i = 0; i < levels && text.GetLength() >= 3; ++i) {
        text = text.Left(text.ReverseFind('\\'));
        text.TrimRight("\\");
    }
    return VXDirectory(text, false);
}
