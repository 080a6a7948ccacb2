#include "formats/budget_terms.h"

namespace plx {

const std::array<BudgetTerm, kSlotCount>& budget_terms() {
    static constexpr std::array<BudgetTerm, kSlotCount> kTerms{{
        {kFlowRightFace, "FLOW RIGHT FACE", nullptr},
        {kFlowFrontFace, "FLOW FRONT FACE", nullptr},
        {kFlowLowerFace, "FLOW LOWER FACE", nullptr},
        {kStorage, "STORAGE", "STORAGE"},
        {kConstantHead, "CONSTANT HEAD", "CONSTANT_HEAD"},
        {kWells, "WELLS", "WELLS"},
        {kDrains, "DRAINS", "DRAINS"},
        {kRecharge, "RECHARGE", "RECHARGE"},
        {kEt, "ET", "ET"},
        {kRiverLeakage, "RIVER LEAKAGE", "RIVER_LEAKAGE"},
        {kGeneralHead, "HEAD DEP BOUNDS", "GENERAL_HEAD"},
    }};
    return kTerms;
}

BudgetSlot slot_of_label(const std::string& label) {
    for (const BudgetTerm& term : budget_terms()) {
        if (label == term.label) return term.slot;
    }
    return kNoSlot;
}

BudgetSlot slot_of_record(int type, const std::string& label, const TermRules& rules) {
    // Some writers use list records for other terms; hosts that ask for the plain rule count on every one as
    // constant head.
    if (type == 2 && !rules.list_by_label) return kConstantHead;
    const BudgetSlot slot = slot_of_label(label);
    if (slot == kConstantHead && rules.constant_head_anywhere && type != 0) {
        return type >= kNotCompact && type <= 5 ? slot : kNoSlot;
    }
    const bool face = slot >= kFlowRightFace && slot <= kFlowLowerFace;
    bool carried = false;
    switch (type) {
        case kNotCompact:
            carried = true;
            break;
        case 1:
            carried = face || slot == kStorage;
            break;
        case 2:
            carried = !face;
            break;  // a face flow has a value in every cell; a list cannot stand for it
        case 3:
        case 4:
            carried = slot == kRecharge || slot == kEt;
            break;
        case 5:
            carried = slot == kWells || slot == kDrains || slot == kRiverLeakage || slot == kGeneralHead;
            break;
        default:
            break;
    }
    return carried ? slot : kNoSlot;
}

}  // namespace plx
