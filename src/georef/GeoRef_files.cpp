#include <cstddef>
#include <cstdio>
#include <memory>

#include "platform/platform.h"
#include "plxutils/georef/GeoRef.h"

namespace {

/// A text file that is created where its name says; complete only when `finished` is true.
class TextOutput {
public:
    explicit TextOutput(const char* name) : file_(plx::platform::open_file(name ? name : "", "w")) {}
    std::FILE* get() const { return file_.get(); }
    /// Closes the file; false when a byte of it could not be written, as on a full disk.
    bool finished() {
        const bool written = std::ferror(file_.get()) == 0;
        return std::fclose(file_.release()) == 0 && written;
    }

private:
    struct Close {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };
    std::unique_ptr<std::FILE, Close> file_;
};

}  // namespace

int GeoRef::write_world(const char* name) {
    TextOutput file(name);
    if (!file.get()) {
        std::printf("The file %s could not be opened.\n", name ? name : "");
        return 0;
    }
    const auto fit = fit_corners(false);
    // The terms of X are 1, x, y, those of Y are 1, y, x.
    const auto& x = fit->x_polynomial_.coefficients;
    const auto& y = fit->y_polynomial_.coefficients;
    for (const double number : {x[1], y[2], x[2], y[1], x[0], y[0]}) {
        std::fprintf(file.get(), "%lf\n\n", number);
    }
    return file.finished() ? 1 : 0;
}

int GeoRef::write_GCP(const char* name) {
    TextOutput file(name);
    if (!file.get()) {
        std::fputs("The file was not opened\n", stdout);
        return 0;
    }
    for (std::size_t i = 0; i < srcX.size(); ++i) {
        std::fprintf(file.get(), "%lf\t%lf\t%lf\t%lf\n", dstX[i], -dstY[i], srcX[i], row_sign() * srcY[i]);
    }
    return file.finished() ? 1 : 0;
}
