#pragma once

#include <optional>
#include <string>
#include <vector>

#include "formats/budget_records.h"
#include "formats/budget_terms.h"
#include "formats/record_file.h"

namespace plx {

/// True when a file begins as a link file does: with the text "MT3D3.00.99" or "MT3D4.00.00" in any case,
/// binary, as text, or with `markers_too` behind a Fortran record marker. The stream is left at its start.
bool begins_as_link(std::FILE* file, bool markers_too);
/// True for the text form of a link file: its first line begins with a blank and an apostrophe.
bool is_text_link(std::FILE* file);
/// Tells the layout of a link file from its header and its first record; empty for other files. The stream's
/// position is put back.
std::optional<ResultLayout> detect_link_layout(std::FILE* file);
/// Reads the file's header at its begin. Source: 11 characters, then int32: WEL DRN RCH EVT RIV GHB CHD ISS
/// NPER (which packages run; CHD is a count), in the newer version also STR RES FHB DRT ETS TLK IBS LAK MNW
/// USR1-3.
///
/// @param[out] old_version  "MT3D3.00.99" with 9 numbers; otherwise "MT3D4.00.00" with 21.
bool read_link_header(RecordFile& in, bool& old_version);

enum class LinkNext { kRecord, kEnd, kCutShort, kUnknown };
/// Reads the next record's header and passes over its data.
///
/// Source: KPER, KSTP (in this order), NCOL, NROW, NLAY (int32), TEXT[16], then for THKSAT, QXX, QYY, QZZ,
/// STO a real per cell; for CNH, WEL, DRN, RIV, GHB a count and entries of K, I, J (int32, from 1) and Q
/// (real); for RCH, EVT a layer (int32) and a value (real) per cell of one layer. Signs are those of a budget
/// file. Records of other labels (streams, reservoirs and more) are passed over when one of these forms, or
/// entries with two numbers more, ends where another record of the same grid or nothing follows; kUnknown
/// when none does.
///
/// The record comes in the terms of a budget file: arrays as records that are not compact, lists as ITYPE 2
/// (read them with read_link_list), layer and value arrays as ITYPE 3; `label` is the link file's own.
LinkNext next_link_record(RecordFile& in, BudgetRecord& record);
/// Slot of a link file's label; kNoSlot for saturated thickness and unknown ones.
BudgetSlot slot_of_link_label(const std::string& label);
/// Adds the entries of a list record as cell numbers of the record's grid; an entry outside it gets the cell
/// number 0. False when the record is no list or is cut short; nothing is added then.
bool read_link_list(RecordFile& in, const BudgetRecord& record, std::vector<BudgetEntry>& entries);

}  // namespace plx
