#pragma once

#include <array>
#include <string>

namespace plx {

/// Budget terms that the converters carry, by slot.
enum BudgetSlot {
    kFlowRightFace = 0,
    kFlowFrontFace = 1,
    kFlowLowerFace = 2,
    kStorage = 3,
    kConstantHead = 4,
    kWells = 5,
    kDrains = 6,
    kRecharge = 7,
    kEt = 8,
    kRiverLeakage = 9,
    kGeneralHead = 10,
    kSlotCount = 11,
    kNoSlot = -1
};

struct BudgetTerm {
    BudgetSlot slot;
    const char* label;    ///< as in the flow file, without the blanks at both ends
    const char* section;  ///< keyword of the boundary-flow file; null for the face flows
};

/// All terms in slot order.
const std::array<BudgetTerm, kSlotCount>& budget_terms();
/// Slot of a trimmed label; kNoSlot when it is none of them.
BudgetSlot slot_of_label(const std::string& label);

/// Which labels a record type may carry.
struct TermRules {
    bool list_by_label = false;  ///< an ITYPE 2 record counts by its label (plain: always constant head)
    bool constant_head_anywhere = false;  ///< CONSTANT HEAD is recognised in ITYPE 1, 3, 4 and 5 too
};
/// Type of a record without the compact header.
inline constexpr int kNotCompact = -1;
/// Slot that a record of this type (ITYPE or kNotCompact) and trimmed label fills. Not compact: every label
/// counts; ITYPE 0: none; ITYPE 1: the face flows and storage; 2: constant head, or by label all but the face
/// flows; 3 and 4: recharge and evapotranspiration; 5: wells, drains, rivers and general heads. kNoSlot: the
/// record is skipped.
BudgetSlot slot_of_record(int type, const std::string& label, const TermRules& rules);

}  // namespace plx
