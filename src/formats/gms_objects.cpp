#include "formats/gms_objects.h"

#include <algorithm>
#include <cstdint>

namespace plx {
namespace {

/// A count says how much room to take at first at most this often; beyond it, room grows with the lines.
constexpr int kTrustedCount = 1 << 16;

template <class T>
void make_room(std::vector<T>& list, int count) {
    list.clear();
    list.reserve(static_cast<std::size_t>(std::clamp(count, 0, kTrustedCount)));
}

void clear(GmsPoints& points, int count) {
    make_room(points.x, count);
    make_room(points.y, count);
    make_room(points.z, count);
}

bool read_nodes(WordLines& lines, GmsTin& tin) {
    int count = 0;
    const bool counted = lines.integer(1, count);
    clear(tin.nodes, count);
    tin.triangles.clear();
    for (int i = 0; i < count; ++i) {
        double x = 0.0, y = 0.0, z = 0.0;
        if (!lines.next() || !lines.number(0, x) || !lines.number(1, y) || !lines.number(2, z)) return false;
        tin.nodes.x.push_back(x);
        tin.nodes.y.push_back(y);
        tin.nodes.z.push_back(z);
    }
    return counted;
}

/// The current line is the one after the nodes. Its first word is whatever the writer of the file put there.
bool read_triangles(WordLines& lines, GmsTin& tin) {
    int count = 0;
    if (!lines.integer(1, count)) return false;
    make_room(tin.triangles, count);
    for (int i = 0; i < count; ++i) {
        int a = 0, b = 0, c = 0;
        if (!lines.next() || !lines.integer(0, a) || !lines.integer(1, b) || !lines.integer(2, c))
            return false;
        tin.triangles.push_back({zero_based(a), zero_based(b), zero_based(c)});
    }
    return true;
}

/// Goes to a line with this first word. The current line counts, because an object that was cut short ends
/// where the next one begins.
bool find_line(WordLines& lines, std::string_view keyword) {
    return lines.word(0) == keyword || lines.find(keyword);
}

}  // namespace

int zero_based(int number) {
    return static_cast<int>(std::max(std::int64_t{number} - 1, std::int64_t{INT32_MIN}));
}

GmsRead read_tin(WordLines& lines, GmsTin& tin, const std::function<void(const GmsTin&)>& at_vertices) {
    if (!find_line(lines, "BEGT")) return GmsRead::kEnd;
    tin = {};
    while (lines.next()) {
        const std::string_view keyword = lines.word(0);
        if (keyword == "ENDT") return GmsRead::kObject;
        if (keyword == "BEGT") tin = {};
        if (keyword == "TNAM") tin.name = lines.word(1);
        if (keyword == "ID") lines.integer(1, tin.id);
        if (keyword != "VERT") continue;
        at_vertices(tin);
        if (!read_nodes(lines, tin)) return GmsRead::kBadPoints;
        if (!lines.next()) return GmsRead::kBadTriangles;
        if (lines.word(0) == "ENDT") return GmsRead::kObject;
        if (!read_triangles(lines, tin)) return GmsRead::kBadTriangles;
    }
    return GmsRead::kCut;
}

GmsRead read_scatter(WordLines& lines, GmsScatter& set) {
    if (!find_line(lines, "BEGSET")) return GmsRead::kEnd;
    set = {};
    while (lines.next()) {
        const std::string_view keyword = lines.word(0);
        if (keyword == "ENDSET") return GmsRead::kObject;
        if (keyword == "BEGSET") set = {};
        if (keyword == "NAME") set.name = lines.word(1);
        if (keyword == "ID") lines.integer(1, set.id);
        if (keyword != "IXY") continue;
        int count = 0;
        if (!lines.integer(1, count)) return GmsRead::kBadPoints;
        clear(set.points, count);
        for (int i = 0; i < count; ++i) {
            double x = 0.0, y = 0.0;
            if (!lines.next() || !lines.number(1, x) || !lines.number(2, y)) return GmsRead::kBadPoints;
            set.points.x.push_back(x);
            set.points.y.push_back(y);
        }
    }
    return GmsRead::kCut;
}

}  // namespace plx
