#include "cli/small_model.h"

#include <filesystem>
#include <iterator>
#include <vector>

#include "support/result_files.h"

namespace plx::test {

namespace {

ResultStamp stamp(int step) { return {step, 1, 15.0 * step, 2, 3, 4}; }

std::string flows() {
    ResultWriter writer;
    for (const int step : {1, 2}) {
        writer.list(stamp(step), "CONSTANT HEAD", {{1, {2.5}}});
        for (const char* face : {"FLOW RIGHT FACE", "FLOW FRONT FACE", "FLOW LOWER FACE"}) {
            writer.array(stamp(step), face, std::vector<double>(24, 0.25));
        }
        writer.list(stamp(step), "WELLS", {{6, {-1.0}}, {18, {-1.5}}});
    }
    return writer.bytes();
}

}  // namespace

std::ptrdiff_t entry_count(const TempFolder& folder) {
    return std::distance(std::filesystem::directory_iterator(folder.path()), {});
}

std::string small_model_heads() {
    ResultWriter writer;
    for (const int step : {1, 2}) {
        for (const int layer : {1, 2}) writer.layer(stamp(step), layer, std::vector<double>(12, 15.0));
    }
    return writer.bytes();
}

std::string write_small_model(const TempFolder& folder) {
    folder.write("site.lst", "\n");
    folder.write("site.dis",
                 "# a small model\n2 3 4 1 4 2\n0 0\nCONSTANT 100\nCONSTANT 50\nCONSTANT 20\nCONSTANT 10\n"
                 "CONSTANT 0\n30 2 1.0 TR\n");
    folder.write("site.ba6",
                 "# a small model\nFREE\nINTERNAL 1 (FREE) -1\n-1 1 1 1\n1 1 1 1\n1 1 1 0\nCONSTANT 1\n-999\n"
                 "CONSTANT 15\nCONSTANT 15\n");
    folder.write("site.hds", small_model_heads());
    folder.write("site.cbb", flows());
    return folder.write("site.nam",
                        "LIST 6 site.lst\nDIS 10 site.dis\nBAS6 11 site.ba6\nDATA(BINARY) 30 site.hds\n"
                        "DATA(BINARY) 31 site.cbb\n");
}

}  // namespace plx::test
