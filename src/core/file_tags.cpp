#include "core/file_tags.h"

#include <cstdio>

#include "core/ascii_text.h"
#include "core/c_boundary.h"
#include "plxutils/core/VXFileReader.h"
#include "plxutils/core/VXUtilities.h"

namespace plx {
namespace {

constexpr int kSlotsPerStep = 20;

std::string_view view(const String& text) {
    return {text.c_str(), static_cast<std::size_t>(text.GetLength())};
}

}  // namespace

void FileTags::load_once(const char* stored_name) {
    if (loaded_) return;
    // First of all, because the tag file's own name is expanded while it is opened.
    loaded_ = true;
    grow();
    VXFileReader reader;
    if (!reader.Open(stored_name)) return;
    for (int next = 0;; ++next) {
        const int words = reader.ReadLine("\r\n\t ,", true, true, false);
        if (words < 0 || words == 1) return;
        if (words == 0)
            std::printf("ERROR: Project Tag file (file_tags.txt) has an error on line %d\n",
                        reader.CurrentLineNumber());
        if (next >= tagNames.size) grow();
        if (next >= tagValues.size) return;
        tagNames[next] = reader.GetWord(0);
        tagValues[next] = reader.GetWord(1);
    }
}

void FileTags::set(const char* tag, const char* value) {
    if (!tag || !*tag) return;
    int slot = -1;
    for (int i = tagNames.size - 1; i >= 0; --i)
        if (tagNames[i].GetLength() == 0) slot = i;
    for (int i = tagNames.size - 1; i >= 0; --i)
        if (tagNames[i] == tag) slot = i;
    if (slot < 0) {
        slot = tagNames.size;
        grow();
    }
    if (slot >= tagValues.size) return;
    tagNames[slot] = tag;
    tagValues[slot] = value;
}

const String* FileTags::find(std::string_view token) const {
    for (int i = 0; i < tagNames.size; ++i)
        if (equal_no_case(view(tagNames[i]), token)) return &tagValues[i];
    return nullptr;
}

void FileTags::grow() {
    tagNames.Resize(tagNames.size + kSlotsPerStep, String());
    tagValues.Resize(tagValues.size + kSlotsPerStep, String());
}

FileTags& file_tags() {
    // Never released: hosts name files from their own static objects' destructors.
    static FileTags& tags = *new FileTags;
    tags.load_once("$XP_PATH<0>/data/special/file_tags.txt");
    return tags;
}

}  // namespace plx

void SetFileTag(const char* tag, const char* value) {
    plx::guarded([=] { plx::file_tags().set(tag, value); });
}
