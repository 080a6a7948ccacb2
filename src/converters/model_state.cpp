#include "converters/model_state.h"

#include <cstdio>

namespace plx {

ModelState::ModelState(ConverterFactory& owner)
    : factory(owner), streams(owner.unit_files, [&owner] {
          // The inputs of a GMS model lie beside its super file, which may be in another folder.
          const bool gms = owner.super_file.GetFilePath().length() > 0;
          return std::string((gms ? owner.super_file : owner.project_file).GetDirectoryName().c_str());
      }) {}

TextRules ModelState::text_rules() const {
    const ReadingRules& rules = factory.reading_rules;
    TextRules text;
    text.skip_empty_words = rules.skip_empty_words;
    text.unit_zero_is_constant = rules.unit_zero_is_constant;
    text.zero_multiplier_is_one = rules.zero_multiplier_is_one;
    text.obey_formats = rules.obey_array_formats;
    text.tab_separates = rules.tab_separates_words;
    if (gms_files) {
        // GMS ends its lines with a blank, which is no value by any rules, and a bad number is always told.
        text.hdf5_records = text.skip_empty_words = text.tab_separates = text.check_words = true;
    }
    return text;
}

void ModelState::note_text_rules() {
    ReadingRules& used = factory.report.rules_used;
    used.skip_empty_words |= text_used.skip_empty_words && !gms_files;
    used.unit_zero_is_constant |= text_used.unit_zero_is_constant;
    used.zero_multiplier_is_one |= text_used.zero_multiplier_is_one;
    used.obey_array_formats |= text_used.obey_formats;
    used.tab_separates_words |= text_used.tab_separates && !gms_files;
}

void ModelState::report_problems() {
    for (const std::string& problem : problems) fail(problem);
    problems.clear();
}

void ModelState::fail(const std::string& text) {
    std::printf("%s\n", text.c_str());
    factory.report.errors.push_back(text);
}

void ModelState::note(const std::string& text) { factory.report.errors.push_back(text); }

void ModelState::warn(const std::string& text) {
    std::printf("%s\n", text.c_str());
    factory.report.warnings.push_back(text);
}

bool adopt_layout(ModelState& model, RecordFile& file, const ResultLayout& layout) {
    if (!layout.record_markers && layout.real_bytes == 4) return true;
    if (!model.factory.reading_rules.detect_result_layout) {
        model.fail(file.name() +
                   ": byte 0: the file has 64-bit reals or Fortran record markers, which are not read by "
                   "these rules");
        return false;
    }
    model.factory.report.rules_used.detect_result_layout = true;
    file.set_layout(layout);
    return true;
}

}  // namespace plx
