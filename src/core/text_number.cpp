#include "core/text_number.h"

#include <algorithm>
#include <limits>

namespace plx {
namespace {

bool is_digit(char c) { return c >= '0' && c <= '9'; }

bool is_hex_digit(char c) { return is_digit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F'); }

const char* skip_blanks(const char* p, const char* last) {
    while (p != last && (*p == ' ' || (*p >= '\t' && *p <= '\r'))) ++p;
    return p;
}

// What one scan over the digits finds: value = mantissa * 10^exponent as long as nothing was dropped.
struct Decimal {
    std::uint64_t mantissa = 0;
    int kept = 0;  // significant digits in mantissa, at most 19
    bool dropped = false;
    std::int64_t exponent = 0;
    const char* first = nullptr;  // of the digits, the point included
    const char* digits_end = nullptr;
};

void take_digit(Decimal& d, char c) {
    if (d.kept < 19) {
        d.mantissa = d.mantissa * 10 + static_cast<std::uint64_t>(c - '0');
        if (d.mantissa != 0) ++d.kept;
    } else {
        d.dropped = true;
        ++d.exponent;
    }
}

// Null when there is no digit.
const char* scan_digits(const char* p, const char* last, Decimal& d) {
    d.first = p;
    while (p != last && is_digit(*p)) take_digit(d, *p++);
    bool any = p != d.first;
    if (p != last && *p == '.') {
        const char* fraction = ++p;
        while (p != last && is_digit(*p)) take_digit(d, *p++);
        any = any || p != fraction;
        d.exponent -= p - fraction;
    }
    d.digits_end = p;
    return any ? p : nullptr;
}

// Returns p unchanged when no exponent stands there.
const char* scan_exponent(const char* p, const char* last, std::int64_t& exponent) {
    if (p == last || ((*p | 0x20) != 'e' && (*p | 0x20) != 'd')) return p;
    const char* q = p + 1;
    const bool negative = q != last && *q == '-';
    if (q != last && (*q == '-' || *q == '+')) ++q;
    if (q == last || !is_digit(*q)) return p;
    // Large enough to over- or underflow whatever digits stand in front, small enough to be added to.
    constexpr std::int64_t kLimit = std::int64_t{1} << 40;
    std::int64_t value = 0;
    for (; q != last && is_digit(*q); ++q) value = std::min(value * 10 + (*q - '0'), kLimit);
    exponent += negative ? -value : value;
    return q;
}

// The nearest double for what the exact short cut does not cover.
double nearest(const Decimal& d, std::int64_t typed_exponent) {
    if (d.mantissa == 0) return 0.0;
    // 770 digits decide every rounding; a digit 1 stands for all that follows.
    constexpr int kDigits = 770;
    char text[kDigits + 40];
    char* out = text;
    std::int64_t exponent = typed_exponent;
    bool point = false;
    bool rest = false;
    for (const char* p = d.first; p != d.digits_end; ++p) {
        if (*p == '.') {
            point = true;
        } else if (out == text && *p == '0') {
            exponent -= point ? 1 : 0;
        } else if (out - text < kDigits) {
            *out++ = *p;
            exponent -= point ? 1 : 0;
        } else {
            rest = rest || *p != '0';
            exponent += point ? 0 : 1;
        }
    }
    if (rest) {
        *out++ = '1';
        --exponent;
    }
    const std::int64_t magnitude =
        exponent + (out - text);  // the value lies in [10^(magnitude-1), 10^magnitude)
    if (magnitude > 310) return HUGE_VAL;
    if (magnitude < -330) return 0.0;
    *out++ = 'e';
    out = std::to_chars(out, text + sizeof text, static_cast<int>(exponent)).ptr;
    double value = 0.0;
    const auto result = std::from_chars(text, out, value);
    if (result.ec == std::errc::result_out_of_range) return magnitude > 0 ? HUGE_VAL : 0.0;
    return value;
}

}  // namespace

const char* parse_any_double(const char* first, const char* last, double& value) {
    value = 0.0;
    const char* p = skip_blanks(first, last);
    const bool negative = p != last && *p == '-';
    if (p != last && (*p == '-' || *p == '+')) ++p;
    if (last - p > 2 && p[0] == '0' && (p[1] | 0x20) == 'x' && is_hex_digit(p[2])) return nullptr;
    Decimal d;
    p = scan_digits(p, last, d);
    if (!p) return nullptr;
    std::int64_t typed = 0;
    p = scan_exponent(p, last, typed);
    const std::int64_t exponent = d.exponent + typed;
    double magnitude;
    // Both factors are exact here, so the one operation rounds correctly.
    if (!d.dropped && d.mantissa < (std::uint64_t{1} << 53) && exponent >= -22 && exponent <= 22) {
        magnitude = static_cast<double>(d.mantissa);
        magnitude = exponent < 0 ? magnitude / kPowersOfTen[-exponent] : magnitude * kPowersOfTen[exponent];
    } else {
        magnitude = nearest(d, typed);
    }
    value = negative ? -magnitude : magnitude;
    return p;
}

double to_double(std::string_view text) {
    double value;
    parse_double(text.data(), text.data() + text.size(), value);
    return value;
}

int to_int(std::string_view text) {
    const char* last = text.data() + text.size();
    const char* p = skip_blanks(text.data(), last);
    const bool negative = p != last && *p == '-';
    if (p != last && (*p == '-' || *p == '+')) ++p;
    constexpr std::int64_t kLimit = std::int64_t{1} << 40;
    std::int64_t value = 0;
    for (; p != last && is_digit(*p); ++p) value = std::min(value * 10 + (*p - '0'), kLimit);
    if (negative) value = -value;
    constexpr std::int64_t kLowest = std::numeric_limits<int>::min();
    constexpr std::int64_t kHighest = std::numeric_limits<int>::max();
    return static_cast<int>(std::clamp(value, kLowest, kHighest));
}

int truncate_to_int(double v) {
    return v > -2147483649.0 && v < 2147483648.0 ? static_cast<int>(v) : std::numeric_limits<int>::min();
}

char* format_fixed_any(char* out, double v, int decimals) {
    if (std::signbit(v)) *out++ = '-';
    if (!std::isfinite(v)) {
        std::memcpy(out, std::isnan(v) ? "nan" : "inf", 3);
        return out + 3;
    }
    return std::to_chars(out, out + kFixedMax - 1, std::fabs(v), std::chars_format::fixed, decimals).ptr;
}

}  // namespace plx
