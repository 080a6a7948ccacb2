#pragma once

#include <cstdint>
#include <cstdio>
#include <functional>
#include <string>
#include <vector>

#include "formats/record_file.h"

namespace plx {

/// The part of a GMS dataset file that a reader could not make sense of; kNone: nothing is wrong.
enum class GmsField {
    kNone,
    kVersion,
    kType,
    kFloatSize,
    kFlagSize,
    kObjectId,
    kValueCount,
    kCellCount,
    kName,
    kReferenceTime,
    kActivity,
    kMapping,
    kTimeUnits,
    kMarkers,
    kTime,
    kStatus,
    kValue,
    kVectors,       ///< the file has vectors
    kNoStep,        ///< the file ends before any time step
    kOtherCount,    ///< the number of values changes from step to step
    kUnknownCards,  ///< there are too many unknown cards for a dataset file
};

struct GmsFault {
    GmsField field = GmsField::kNone;
    std::int32_t number = 0;    ///< what was found, for kVersion, kValueCount, kCellCount and kOtherCount
    std::int64_t position = 0;  ///< of the card
};

/// Reads the time steps of the first scalar dataset of a binary GMS dataset file one by one.
///
/// Source: GMS binary dataset file, little-endian, with or without record markers: version 3000, then cards
/// (see gms_cards.h) with their payload. Card 210 or the end of the file ends the dataset. Status flags are
/// passed over. Memory does not grow with the file.
class GmsSteps {
public:
    enum class Next { kStep, kEnd, kFault };

    /// @param file  stays the caller's; @param name  for messages.
    GmsSteps(std::FILE* file, std::string name) : in_(file, std::move(name)) {}

    /// Told each card that has no meaning; it and what follows are read as cards.
    std::function<void(std::int32_t)> on_unknown_card;

    /// Reads up to the first time step and counts the steps by their sizes; false with a fault().
    bool open();
    const std::string& name() const { return in_.name(); }
    const std::string& dataset() const { return dataset_; }
    int values() const { return state_.values; }
    int cells() const { return state_.cells; }
    /// Whole steps in the file.
    std::int64_t count() const { return count_; }
    /// Whole steps that were not read yet.
    std::int64_t left() const { return count_ - read_; }
    /// True when there is more in the file than its first dataset.
    bool more_datasets() const { return more_datasets_; }
    /// Reads the next step's values, as many as values() told after open(), or passes over them when `values`
    /// is null. How many they are is only a number in the file until they were there once.
    Next next(double* values, double& time);
    const GmsFault& fault() const { return fault_; }

private:
    /// What the cards before a place in the file have set.
    struct State {
        int float_size = 0, flag_size = 0;  ///< size codes
        int values = 0, cells = 0;
        bool in_set = false, ended = false, at_step = false;
    };

    bool fail(GmsField field, std::int32_t number = 0);
    bool integer(GmsField field, std::int32_t& v) { return in_.read_int(v) || fail(field); }
    bool count_card(GmsField field, int& v);
    bool size_card(GmsField field, int& v);
    bool skip(std::int64_t bytes, GmsField field) { return in_.skip(bytes) || fail(field); }
    bool skip_integer(GmsField field);
    bool skip_real(GmsField field);
    bool markers();
    bool number(int size, GmsField field, double& v);

    bool read_version();
    bool take_card(std::int32_t card);
    bool take_set_card(std::int32_t card);
    bool take_name();
    bool unknown_card(std::int32_t card);
    Next find_step();
    bool step_header(double& time);
    bool read_values(double* values);
    std::int64_t value_bytes() const;
    void count_steps();

    RecordFile in_;
    State state_;
    GmsFault fault_;
    std::int64_t card_begin_ = 0;
    std::string dataset_;
    std::int64_t count_ = 0, read_ = 0;
    int values_at_open_ = 0, unknown_cards_ = 0;
    bool markers_ = false, more_datasets_ = false, counting_ = false;
    std::vector<char> block_;
};

}  // namespace plx
