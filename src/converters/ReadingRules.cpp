#include "plxutils/converters/ReadingRules.h"

#include <iterator>

namespace plx {

const ReadingRuleName* reading_rule_names(int& count) {
    using R = ReadingRules;
    static constexpr ReadingRuleName kNames[] = {
        {"flows_by_period", &R::flows_by_period},
        {"true_row_edges", &R::true_row_edges},
        {"skip_empty_words", &R::skip_empty_words},
        {"unit_zero_is_constant", &R::unit_zero_is_constant},
        {"zero_multiplier_is_one", &R::zero_multiplier_is_one},
        {"obey_array_formats", &R::obey_array_formats},
        {"average_active_only", &R::average_active_only},
        {"any_nonzero_ibound", &R::any_nonzero_ibound},
        {"model_no_flow_heads", &R::model_no_flow_heads},
        {"result_files_by_content", &R::result_files_by_content},
        {"list_terms_by_label", &R::list_terms_by_label},
        {"join_repeated_terms", &R::join_repeated_terms},
        {"load_heads_for_cells", &R::load_heads_for_cells},
        {"full_time_words", &R::full_time_words},
        {"material_is_layer", &R::material_is_layer},
        {"head_records_only", &R::head_records_only},
        {"detect_result_layout", &R::detect_result_layout},
        {"steps_from_flow_file", &R::steps_from_flow_file},
        {"tab_separates_words", &R::tab_separates_words},
        {"free_bcf_record", &R::free_bcf_record},
    };
    count = static_cast<int>(std::size(kNames));
    return kNames;
}

}  // namespace plx
