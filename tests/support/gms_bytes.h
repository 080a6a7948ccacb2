#pragma once

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

namespace plx::test {

/// A binary GMS dataset file in the making; with markers every card ends as a record-oriented writer ends it.
class GmsBytes {
public:
    explicit GmsBytes(bool markers) : markers_(markers) {}
    template <class Number>
    GmsBytes& put(Number v) {
        char bytes[sizeof v];
        std::memcpy(bytes, &v, sizeof v);
        text.append(bytes, sizeof v);
        return *this;
    }
    GmsBytes& ints(const std::vector<std::int32_t>& values) {
        for (const auto v : values) put(v);
        return *this;
    }
    GmsBytes& floats(const std::vector<float>& values) {
        for (const float v : values) put(v);
        return *this;
    }
    GmsBytes& end() { return markers_ ? ints({0, 0}) : *this; }
    /// Everything up to the first card of a dataset: a TIN's, 32-bit numbers, flags of one byte.
    GmsBytes& head(int set_card) {
        if (markers_) put(28);
        ints({3000, 100, 1, 110, 4, 120, 1}).end();
        return ints({set_card}).end().ints({160, 3}).end();
    }
    GmsBytes& sizes(int values, int cells) { return ints({170, values}).end().ints({180, cells}).end(); }
    GmsBytes& name(std::string name) {
        name.resize(40);
        put(190);
        text += name;
        return end();
    }
    GmsBytes& step(char flag, float time, const std::string& flags, const std::vector<float>& values) {
        put(200).put(flag).put(time).end();
        text += flags;
        return floats(values).end();
    }
    GmsBytes& close() { return markers_ ? ints({210, 0}) : ints({210}); }

    std::string text;

private:
    bool markers_;
};

}  // namespace plx::test
