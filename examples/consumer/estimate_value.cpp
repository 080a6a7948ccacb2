// The value at a place between scattered samples: the library's classes from C++.

#include <plxutils/PLXUtils.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

/// The library does not find a name without a folder.
String with_folder(const char* name) {
    const String folder = std::strpbrk(name, "/\\") ? "" : "./";
    return folder + name;
}

/// Adds the samples of a file "x,y,z,value" with one line of titles; false after a message.
bool add_samples(const char* name, VXInterpolate& samples) {
    VXFileReader reader;
    if (!reader.Open(with_folder(name).c_str())) {
        std::fprintf(stderr, "%s: cannot be opened\n", name);
        return false;
    }
    if (reader.ReadLine(",", true, true, false) < 4) {
        std::fprintf(stderr, "%s: no table of four columns\n", name);
        return false;
    }
    while (reader.ReadLine(",", true, true, false) >= 0) {
        double x = 0.0, y = 0.0, z = 0.0, value = 0.0;
        int flag = 0;
        if (!reader.WordToDouble(0, x) || !reader.WordToDouble(1, y) || !reader.WordToDouble(2, z) ||
            !reader.WordToChemValue(3, 0.5, 0.0, value, flag)) {
            std::fprintf(stderr, "%s: line %d is no sample\n", name, reader.CurrentLineNumber());
            return false;
        }
        constexpr double kMissing = -1.0e9;
        if (value != kMissing) samples.add_point(value, x, y, z);
    }
    return true;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 6) {
        std::fputs("usage: estimate_value SAMPLES.csv X Y Z REACH\n", stderr);
        return 2;
    }
    constexpr int kInverseDistance = 1, kTreeDepth = 3;
    VXInterpolate samples(kInverseDistance, kTreeDepth, std::atof(argv[5]), 1.0);
    if (!add_samples(argv[1], samples)) return 1;
    cgPointList found;
    const bool in_reach =
        samples.project_point(std::atof(argv[2]), std::atof(argv[3]), std::atof(argv[4]), found);
    double value = 0.0;
    for (int i = 0; i < found.count(); ++i) value += found[i].data()[2] * found[i].data()[1];
    String text;
    text.Format("%.3f by %d samples%s", value, found.count(), in_reach ? "" : ", none in reach");
    std::printf("%s\n", text.c_str());
    return 0;
}
