#include "georef/mapping_file.h"

#include <algorithm>
#include <cstring>

#include "core/text_number.h"
#include "platform/platform.h"
#include "plxutils/core/VXUtilities.h"

namespace plx {

MappingLines::MappingLines(const std::string& name) {
    file_.reset(platform::open_file(name.c_str(), "r"));
    if (!file_) {
        std::printf("Error: File [%s] does not exist or cannot be opened.\n", name.c_str());
        std::fflush(stdout);
    }
}

bool MappingLines::next() {
    char line[kMaxLine];
    while (file_ && std::fgets(line, kMaxLine, file_.get())) {
        std::size_t length = std::strlen(line);
        while (length > 0 && (line[length - 1] == '\n' || line[length - 1] == '\r')) --length;
        line[length] = '\0';
        const int count = StrToWords(line, words_.data(), kMaxWords, kWordBytes);
        if (count > 0 && words_[0] != '\0' && words_[0] != '#') return true;
    }
    return false;
}

double MappingLines::number(int k) const {
    return to_double(words_.data() + static_cast<std::ptrdiff_t>(k) * kWordBytes);
}

double** new_mapping_list(const std::vector<Mapping>& mappings) {
    std::vector<std::unique_ptr<double[]>> rows;
    for (const Mapping& mapping : mappings) {
        rows.push_back(std::make_unique<double[]>(mapping.size()));
        std::copy(mapping.begin(), mapping.end(), rows.back().get());
    }
    auto** const list = new double*[rows.size()];
    for (std::size_t i = 0; i < rows.size(); ++i) list[i] = rows[i].release();
    return list;
}

}  // namespace plx
