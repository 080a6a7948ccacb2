#pragma once

#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

/// Numbers from and to text. Nothing here depends on the locale and nothing throws.
namespace plx {

/// Powers of ten that a double holds exactly.
inline constexpr double kPowersOfTen[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                          1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                          1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

/// parse_double without its short cut, for any text.
const char* parse_any_double(const char* first, const char* last, double& value);

/// What nearly every number of an array looks like: blanks, up to 18 digits with a point among them, no
/// exponent. Null, with nothing stored, when the text is anything else.
inline const char* parse_short_double(const char* p, const char* last, double& value) {
    while (p != last && *p == ' ') ++p;
    const bool negative = p != last && *p == '-';
    p += negative ? 1 : 0;
    const auto digit = [&p, last] { return p != last && static_cast<unsigned char>(*p - '0') < 10; };
    const char* const first = p;
    std::uint64_t mantissa = 0;
    while (digit()) mantissa = mantissa * 10 + static_cast<std::uint64_t>(*p++ - '0');
    std::ptrdiff_t digits = p - first, decimals = 0;
    if (p != last && *p == '.') {
        const char* const fraction = ++p;
        while (digit()) mantissa = mantissa * 10 + static_cast<std::uint64_t>(*p++ - '0');
        decimals = p - fraction;
        digits += decimals;
    }
    // A letter may begin an exponent or turn a zero into a hexadecimal number.
    if (digits < 1 || digits > 18 || (p != last && *p >= 'A')) return nullptr;
    // Both operands are exact, so the division rounds correctly.
    if (mantissa >= (std::uint64_t{1} << 53)) return nullptr;
    const double magnitude = static_cast<double>(mantissa) / kPowersOfTen[decimals];
    value = negative ? -magnitude : magnitude;
    return p;
}

/// Reads a decimal number: leading blanks (space, tab, CR, LF, VT, FF) are skipped, then the longest prefix
/// of the form
/// [+-]digits[.digits][exponent] counts; exponent letters are e, E, d and D and need a digit. "inf", "nan"
/// and hexadecimal numbers are not numbers. The nearest double is returned: +-HUGE_VAL on overflow, 0 or a
/// denormal on underflow.
/// @return the first byte after the number, or null (and value 0) when there is none.
inline const char* parse_double(const char* first, const char* last, double& value) {
    const char* const end = parse_short_double(first, last, value);
    return end != nullptr ? end : parse_any_double(first, last, value);
}

/// The number at the beginning of the text, 0 when there is none.
double to_double(std::string_view text);

/// Leading blanks, a sign and decimal digits; 0 when there is none, clamped to the range of int.
int to_int(std::string_view text);

/// Drops the fraction. NaN and values outside int give -2147483648, as the processors' own conversion does.
int truncate_to_int(double v);

/// Room that the formatting functions below need at `out`.
inline constexpr std::size_t kFixedMax = 400;

/// What is too rare to be fast: very large values, infinities, NaN.
char* format_fixed_any(char* out, double v, int decimals);

/// Two decimal digits for each value below 100.
inline constexpr auto kDigitPairs = [] {
    std::array<char, 200> pairs{};
    for (std::size_t i = 0; i < 100; ++i) {
        pairs[2 * i] = static_cast<char>('0' + i / 10);
        pairs[2 * i + 1] = static_cast<char>('0' + i % 10);
    }
    return pairs;
}();

inline void put_pair(char* out, std::uint32_t value) { std::memcpy(out, &kDigitPairs[2 * value], 2); }

/// Writes a non-negative integer and returns the end.
inline char* format_unsigned(char* out, std::uint64_t value) {
    char digits[20];
    char* begin = digits + sizeof digits;
    while (value >= 100) {
        begin -= 2;
        put_pair(begin, static_cast<std::uint32_t>(value % 100));
        value /= 100;
    }
    if (value >= 10) {
        begin -= 2;
        put_pair(begin, static_cast<std::uint32_t>(value));
    } else {
        *--begin = static_cast<char>('0' + value);
    }
    const auto count = static_cast<std::size_t>(digits + sizeof digits - begin);
    std::memcpy(out, begin, count);
    return out + count;
}

/// |v| * scale rounded to an integer, exact ties to even, for |v| below 8e12 and a scale up to 1e6; `bits`
/// are those of v without the sign.
inline std::uint64_t scaled_integer(std::uint64_t bits, std::uint64_t scale) {
    __extension__ using Wide = unsigned __int128;
    const std::uint64_t mantissa = (bits & 0xfffffffffffffULL) | 0x10000000000000ULL;
    const int shift = 1075 - static_cast<int>(bits >> 52);
    // Below 2^-27 every supported scale rounds to 0; denormals, whose leading bit is not set, are among them.
    if (shift > 80) return 0;
    const Wide product = static_cast<Wide>(mantissa) * scale;
    auto whole = static_cast<std::uint64_t>(product >> shift);
    const Wide rest = product & ((static_cast<Wide>(1) << shift) - 1);
    const Wide half = static_cast<Wide>(1) << (shift - 1);
    if (rest > half || (rest == half && (whole & 1))) ++whole;
    return whole;
}

template <int kDecimals>
inline char* format_fixed(char* out, double v) {
    static_assert(kDecimals == 3 || kDecimals == 6);
    constexpr std::uint64_t kScale = kDecimals == 3 ? 1000 : 1000000;
    std::uint64_t bits;
    std::memcpy(&bits, &v, sizeof bits);
    const bool negative = (bits >> 63) != 0;
    bits &= 0x7fffffffffffffffULL;
    // Also false for NaN: then the bits are those of a larger number.
    if (!(std::fabs(v) < 8e12)) return format_fixed_any(out, v, kDecimals);
    *out = '-';
    out += negative ? 1 : 0;
    const std::uint64_t scaled = scaled_integer(bits, kScale);
    const std::uint64_t whole = scaled / kScale;
    const auto fraction = static_cast<std::uint32_t>(scaled % kScale);
    if (whole < 10) {
        *out++ = static_cast<char>('0' + whole);
    } else {
        out = format_unsigned(out, whole);
    }
    *out++ = '.';
    if constexpr (kDecimals == 6) {
        put_pair(out, fraction / 10000);
        put_pair(out + 2, fraction / 100 % 100);
        put_pair(out + 4, fraction % 100);
    } else {
        *out = static_cast<char>('0' + fraction / 100);
        put_pair(out + 1, fraction % 100);
    }
    return out + kDecimals;
}

/// Write the bytes that printf gives for "%lf", "%.3lf" and "%d" in the C locale, without a NUL; `out` holds
/// kFixedMax bytes. The end is returned.
inline char* format_fixed6(char* out, double v) { return format_fixed<6>(out, v); }
inline char* format_fixed3(char* out, double v) { return format_fixed<3>(out, v); }
inline char* format_int(char* out, int v) { return std::to_chars(out, out + kFixedMax, v).ptr; }

}  // namespace plx
