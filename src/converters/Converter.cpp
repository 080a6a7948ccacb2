#include "plxutils/converters/Converter.h"

#include <cstdio>
#include <exception>
#include <string>

#include "converters/model_state.h"
#include "plxutils/converters/finish_report.h"

void Converter::create_converter(ConverterFactory& factory, VXFile& project, int porosity_count,
                                 double* porosity, bool compress, int* outputs, bool crop, double x_min,
                                 double x_max, double y_min, double y_max) {
    std::printf("creating converter\t\t\t\t\t\t\t\t\t\t\t\t\t\r");
    if (!project.FileExists()) {
        std::printf("Project file [%s] does not exist.\n", project.GetFilePath().c_str());
        return;
    }
    try {
        factory.project_file = VXFile(project.GetFilePath().c_str());
        factory.x_min = x_min;
        factory.x_max = x_max;
        factory.y_min = y_min;
        factory.y_max = y_max;
        factory.compress = compress;
        factory.crop_to_extents = crop;
        const plx::ConversionOutputs& choices = plx::conversion_outputs();
        for (std::size_t i = 0; outputs != nullptr && i < choices.size(); ++i) {
            factory.*choices[i].flag = outputs[i] != 0;
        }
        if (porosity != nullptr && porosity_count >= 1) {
            factory.default_porosity.SetSize(porosity_count, 0.0);
            for (int i = 0; i < porosity_count; ++i) factory.default_porosity[i] = porosity[i];
        }
        factory.parsePROJECT();
        factory.write_to_PLX();
    } catch (const std::exception& fault) {
        // Nothing throws across the library's boundary; what was written before stays whole.
        factory.report.errors.push_back(std::string("the conversion stopped: ") + fault.what());
        std::printf("%s\n", factory.report.errors.back().c_str());
    }
}
