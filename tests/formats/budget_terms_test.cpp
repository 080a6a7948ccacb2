#include "formats/budget_terms.h"

#include <gtest/gtest.h>

using namespace plx;

TEST(BudgetTerms, ATypeCarriesItsTermsOnly) {
    const TermRules plain, by_label{true, false}, anywhere{false, true};
    const std::tuple<int, TermRules, const char*> cases[] = {
        // The slots are those of all labels in slot order, then of an unknown label.
        {kNotCompact, plain, "0 1 2 3 4 5 6 7 8 9 10 -"},
        {0, anywhere, "- - - - - - - - - - - -"},
        {1, plain, "0 1 2 3 - - - - - - - -"},
        {1, anywhere, "0 1 2 3 4 - - - - - - -"},
        {2, plain, "4 4 4 4 4 4 4 4 4 4 4 4"},
        {2, by_label, "- - - 3 4 5 6 7 8 9 10 -"},
        {3, plain, "- - - - - - - 7 8 - - -"},
        {4, anywhere, "- - - - 4 - - 7 8 - - -"},
        {5, plain, "- - - - - 5 6 - - 9 10 -"},
        {6, anywhere, "- - - - - - - - - - - -"}};
    for (const auto& [type, rules, expected] : cases) {
        std::string slots;
        for (const char* label :
             {"FLOW RIGHT FACE", "FLOW FRONT FACE", "FLOW LOWER FACE", "STORAGE", "CONSTANT HEAD", "WELLS",
              "DRAINS", "RECHARGE", "ET", "RIVER LEAKAGE", "HEAD DEP BOUNDS", "GW ET"}) {
            const BudgetSlot slot = slot_of_record(type, label, rules);
            slots += (slots.empty() ? "" : " ") + (slot == kNoSlot ? "-" : std::to_string(slot));
        }
        EXPECT_EQ(slots, expected) << type;
    }
}
