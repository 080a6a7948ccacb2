#include "conversion/small_model.h"

#include <algorithm>
#include <filesystem>
#include <iterator>

#include "support/capture_stdout.h"

namespace plx::test {

SmallModel::SmallModel() {
    namespace fs = std::filesystem;
    fs::copy(fs::path(PLX_TEST_DATA) / "small", folder.path());
    std::fill(std::begin(outputs), std::end(outputs), 1);
}

void SmallModel::replace(const std::string& name, const std::string& from, const std::string& to) const {
    std::string text = folder.read(name);
    folder.write(name, text.replace(text.find(from), from.size(), to));
}

ConversionReport SmallModel::convert(const ReadingRules& rules, bool compress) {
    MODFLOW2000_Converter factory;
    factory.reading_rules = rules;
    factory.output_folder = out.path().string().c_str();
    factory.keep_log = false;
    VXFile project(folder.file("small.nam").c_str());
    double porosity[] = {0.25, 0.3};
    capture_stdout([&] {
        Converter().create_converter(factory, project, 2, porosity, compress, outputs, false, 0, 0, 0, 0);
    });
    return factory.report;
}

}  // namespace plx::test
