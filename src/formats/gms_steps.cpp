#include "formats/gms_steps.h"

#include <algorithm>
#include <array>

#include "formats/gms_cards.h"
#include "formats/number_source.h"

namespace plx {
namespace {

constexpr std::size_t kBlockNumbers = 8 * 1024;
/// A damaged file is given up after so many cards without a meaning.
constexpr int kMostUnknownCards = 1000;
constexpr int kMarkerBytes = 4;

}  // namespace

bool GmsSteps::fail(GmsField field, std::int32_t number) {
    fault_ = {field, number, card_begin_};
    state_.ended = true;
    return false;
}

bool GmsSteps::markers() { return !markers_ || skip(2 * kMarkerBytes, GmsField::kMarkers); }

bool GmsSteps::count_card(GmsField field, int& v) {
    std::int32_t count = 0;
    if (!integer(field, count)) return false;
    if (count < 0) return fail(field, count);
    v = count;
    return true;
}

bool GmsSteps::size_card(GmsField field, int& v) {
    std::int32_t size = 0;
    if (!integer(field, size)) return false;
    if (number_width(size) == 0) return fail(field);
    v = field == GmsField::kFloatSize ? float_code(size) : size;
    return true;
}

bool GmsSteps::skip_integer(GmsField field) { return skip(sizeof(std::int32_t), field); }

bool GmsSteps::skip_real(GmsField field) {
    const std::size_t width = number_width(state_.float_size);
    return width > 0 ? skip(static_cast<std::int64_t>(width), field) : fail(GmsField::kFloatSize);
}

bool GmsSteps::number(int size, GmsField field, double& v) {
    std::array<char, 8> bytes;
    if (!in_.read(bytes.data(), number_width(size))) return fail(field);
    widen_numbers(size, bytes.data(), &v, 1);
    return true;
}

bool GmsSteps::read_version() {
    std::int32_t version = 0;
    if (!integer(GmsField::kVersion, version)) return false;
    if (version == kBinaryVersion) return true;
    // Not the version but the length of the first record, unless the file is none of these at all.
    const std::int32_t first = version;
    markers_ = true;
    if (!integer(GmsField::kVersion, version)) return fail(GmsField::kVersion, first);
    return version == kBinaryVersion || fail(GmsField::kVersion, version);
}

bool GmsSteps::take_card(std::int32_t card) {
    switch (card) {
        case gms_card::kObjectType:
            return skip_integer(GmsField::kType);
        case gms_card::kFloatSize:
            return size_card(GmsField::kFloatSize, state_.float_size);
        case gms_card::kFlagSize:
            return size_card(GmsField::kFlagSize, state_.flag_size) && markers();
        case gms_card::kScalarSet:
            state_.in_set = true;
            return markers();
        case gms_card::kVectorSet:
            return fail(GmsField::kVectors);
        case gms_card::kJulianTime:
            return skip(gms_card::kJulianBytes, GmsField::kReferenceTime) && markers();
        case gms_card::kTimeUnits:
            return skip(gms_card::kTimeUnitBytes, GmsField::kTimeUnits) && markers();
        default:
            return state_.in_set ? take_set_card(card) : unknown_card(card);
    }
}

bool GmsSteps::take_set_card(std::int32_t card) {
    switch (card) {
        case gms_card::kVectorType:
            return skip_integer(GmsField::kType) && markers();
        case gms_card::kObjectId:
            return skip_integer(GmsField::kObjectId) && markers();
        case gms_card::kValueCount:
            return count_card(GmsField::kValueCount, state_.values) && markers();
        case gms_card::kCellCount:
            return count_card(GmsField::kCellCount, state_.cells) && markers();
        case gms_card::kName:
            return take_name() && markers();
        case gms_card::kReferenceTime:
            return skip(gms_card::kReferenceTimeBytes, GmsField::kReferenceTime) && markers();
        case gms_card::kReferenceText:
            return skip(gms_card::kReferenceTextBytes, GmsField::kReferenceTime) && markers();
        case gms_card::kActivity:
            return skip_real(GmsField::kActivity) && markers();
        case gms_card::kMapping:
            return skip_real(GmsField::kMapping) && markers();
        default:
            return unknown_card(card);
    }
}

bool GmsSteps::take_name() {
    std::array<char, gms_card::kNameBytes> name;
    if (!in_.read(name.data(), name.size())) return fail(GmsField::kName);
    dataset_.assign(name.begin(), std::find(name.begin(), name.end(), '\0'));
    return true;
}

bool GmsSteps::unknown_card(std::int32_t card) {
    if (counting_) return true;
    if (++unknown_cards_ > kMostUnknownCards) return fail(GmsField::kUnknownCards);
    if (on_unknown_card) on_unknown_card(card);
    return true;
}

GmsSteps::Next GmsSteps::find_step() {
    while (!state_.ended && !state_.at_step) {
        std::int32_t card = 0;
        card_begin_ = in_.position();
        const bool more = in_.read_int(card);
        const bool ends =
            card == gms_card::kEndOfSet || card == gms_card::kScalarSet || card == gms_card::kVectorSet;
        if (!more || (ends && state_.in_set)) {
            if (more && card == gms_card::kEndOfSet && markers_) in_.skip(kMarkerBytes);
            more_datasets_ = !in_.at_end();
            state_.ended = true;
        } else if (card == gms_card::kTimeStep && state_.in_set) {
            state_.at_step = true;
        } else if (!take_card(card)) {
            return Next::kFault;
        }
    }
    return state_.at_step ? Next::kStep : Next::kEnd;
}

bool GmsSteps::step_header(double& time) {
    state_.at_step = false;
    if (state_.flag_size == 0) return fail(GmsField::kFlagSize);
    if (state_.float_size == 0) return fail(GmsField::kFloatSize);
    if (state_.values != values_at_open_) return fail(GmsField::kOtherCount, state_.values);
    double own_flags = 0.0;
    if (!number(state_.flag_size, GmsField::kReferenceTime, own_flags) ||
        !number(state_.float_size, GmsField::kTime, time) || !markers()) {
        return false;
    }
    const auto flag_width = static_cast<std::int64_t>(number_width(state_.flag_size));
    return own_flags == 0.0 || skip(state_.cells * flag_width, GmsField::kStatus);
}

std::int64_t GmsSteps::value_bytes() const {
    return std::int64_t{state_.values} * static_cast<std::int64_t>(number_width(state_.float_size));
}

bool GmsSteps::read_values(double* values) {
    if (value_bytes() > in_.remaining()) return fail(GmsField::kValue);
    if (values == nullptr) return in_.skip(value_bytes());
    const std::size_t width = number_width(state_.float_size);
    const auto count = static_cast<std::size_t>(state_.values);
    block_.resize(kBlockNumbers * width);
    for (std::size_t done = 0; done < count;) {
        const std::size_t n = std::min(count - done, kBlockNumbers);
        if (!in_.read(block_.data(), n * width)) return fail(GmsField::kValue);
        widen_numbers(state_.float_size, block_.data(), values + done, n);
        done += n;
    }
    return true;
}

void GmsSteps::count_steps() {
    const State saved = state_;
    const std::int64_t position = in_.position();
    counting_ = true;
    double time = 0.0;
    while (find_step() == Next::kStep && step_header(time) && in_.skip(value_bytes())) {
        ++count_;
        if (!markers()) break;
    }
    counting_ = false;
    fault_ = {};
    state_ = saved;
    in_.seek(position);
}

bool GmsSteps::open() {
    if (!read_version()) return false;
    const Next found = find_step();
    if (found == Next::kFault) return false;
    if (found == Next::kEnd) return fail(GmsField::kNoStep);
    values_at_open_ = state_.values;
    count_steps();
    return true;
}

GmsSteps::Next GmsSteps::next(double* values, double& time) {
    const Next found = find_step();
    if (found != Next::kStep) return found;
    if (!step_header(time) || !read_values(values)) return Next::kFault;
    ++read_;
    // The step is whole; what should close it is of no use any more.
    if (markers_ && !in_.skip(2 * kMarkerBytes)) state_.ended = true;
    return Next::kStep;
}

}  // namespace plx
