#include <cstddef>
#include <cstdio>
#include <memory>

#include "core/text_number.h"
#include "platform/part_file.h"
#include "plxutils/georef/GeoRef.h"

namespace {

/// A text file that has its name when `finished` is true.
class TextOutput {
public:
    explicit TextOutput(const char* name) : file_(part_.open(name, "wt")) {}
    bool is_open() const { return file_ != nullptr; }
    /// A number with six decimals and what follows it.
    void put(double number, const char* end) {
        char text[plx::kFixedMax];
        const char* const stop = plx::format_fixed<6>(text, number);
        std::fwrite(text, 1, static_cast<std::size_t>(stop - text), file_.get());
        std::fputs(end, file_.get());
    }
    /// Completes the file; false when a byte of it could not be written, as on a full disk.
    bool finished() {
        const bool written = std::ferror(file_.get()) == 0;
        return std::fclose(file_.release()) == 0 && written && part_.put_in_place();
    }

private:
    struct Close {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };
    // Closed before it is removed.
    plx::platform::PartFile part_;
    std::unique_ptr<std::FILE, Close> file_;
};

}  // namespace

int GeoRef::write_world(const char* name) {
    TextOutput file(name);
    if (!file.is_open()) {
        std::printf("The file %s could not be opened.\n", name ? name : "");
        return 0;
    }
    const auto fit = fit_corners(false);
    // The terms of X are 1, x, y, those of Y are 1, y, x.
    const auto& c = fit->polynomials_.coefficients;
    for (const double number : {c[1][0], c[2][1], c[2][0], c[1][1], c[0][0], c[0][1]}) {
        file.put(number, "\n\n");
    }
    return file.finished() ? 1 : 0;
}

int GeoRef::write_GCP(const char* name) {
    TextOutput file(name);
    if (!file.is_open()) {
        std::fputs("The file was not opened\n", stdout);
        return 0;
    }
    for (std::size_t i = 0; i < srcX.size(); ++i) {
        file.put(dstX[i], "\t");
        file.put(-dstY[i], "\t");
        file.put(srcX[i], "\t");
        file.put(row_sign() * srcY[i], "\n");
    }
    return file.finished() ? 1 : 0;
}
