#include <array>

#include "gms/builder_output.h"
#include "gms/builder_run.h"
#include "gms/callbacks.h"
#include "gms/project_path.h"
#include "plxutils/core/VXFileReader.h"
#include "plxutils/gms/GMStoPLX.h"

namespace {

/// A keyword of a text project, what is told when it is met and the builders that get its file.
struct Keyword {
    const char* word;
    const char* found;
    std::array<FileBuilder*, 2> builders;
};

std::array<Keyword, 15> builder_keywords(GMStoPLX& owner) {
    return {{{"MODFLOW", "MODFLOW file detected!", {&owner.modflow, &owner.mt3d}},
             {"MT3D", "MT3D file detected!", {&owner.mt3d}},
             {"FEMWATER", "FEMWATER file detected!", {&owner.femwater}},
             {"FEMWSOL", "FEMWATER file detected!", {&owner.femwater}},
             {"PTK", "PTK file detected!", {&owner.modflow}},
             {"TIN", "TIN file detected!", {&owner.tin}},
             {"MODFSOL", "MODFLOW file detected!", {&owner.modflow}},
             // Solutions of MT3D go to the MODFLOW builder on purpose: it is the one that knows their grid.
             {"MT3DSOL", "MODFLOW file detected!", {&owner.modflow}},
             {"IMAGE", "IMAGE file detected!", {&owner.image}},
             {"IMG", "GMS 5.0 IMG file detected!", {&owner.image}},
             {"SCAT3D", "SCAT3D file detected!", {&owner.scat3d}},
             {"SCAT2D", "SCAT2D file detected!", {&owner.scat2d}},
             {"GRID2D", "GRID2D file detected!", {&owner.grid2d}},
             {"BHOLE", "BOREHOLE file detected!", {&owner.borehole}},
             {"MAT", "MAT file detected!", {&owner.borehole}}}};
}

void take_line(GMStoPLX& owner, const String& word, const String& name) {
    const String path = plx::project_path(owner.projectSource, name);
    if (word == "STNGS") {
        GMS_ReportStatus("STNGS file detected! %s\n", name.c_str());
        owner.settingsFile.SetFile(path.c_str());
        return;
    }
    if (word == "DATA") {
        GMS_ReportStatus("DATA file detected! %s\n", name.c_str());
        owner.AddDataSet(name.c_str());
        return;
    }
    for (const Keyword& keyword : builder_keywords(owner)) {
        if (word != keyword.word) continue;
        GMS_ReportStatus("%s %s\n", keyword.found, name.c_str());
        for (FileBuilder* builder : keyword.builders) {
            if (builder) builder->AddFile(path.c_str());
        }
        return;
    }
}

void report_options(const GMStoPLX& owner) {
    GMS_ReportStatus("file opened normally\n");
    if (owner.useSubfolders) GMS_ReportStatus("Organizing output into subfolders.");
    if (owner.compress) {
        GMS_ReportStatus("Using compressed .pfz file format.");
    } else {
        GMS_ReportStatus("Using uncompressed .pff file format.");
    }
    if (owner.cropToExtents) {
        GMS_ReportStatus("Cropping data to extents:");
        GMS_ReportStatus("Xmin:\t%15.4lf\tYmin:\t%15.4lf\n", owner.xmin, owner.ymin);
        GMS_ReportStatus("Xmax:\t%15.4lf\tYmax:\t%15.4lf\n", owner.xmax, owner.ymax);
    }
    plx::report_separator();
    GMS_ReportStatus("Parsing Project file.\n\n");
}

void read_lines(GMStoPLX& owner, VXFileReader& reader) {
    while (reader.isOpened() && !reader.isEOF()) {
        const int words = reader.ReadLine("\r\n\t ,", true, true, false);
        GMS_ReportStatus("%s", reader.CurrentLine().c_str());
        if (words < 0 && !reader.isEOF()) {
            GMS_ReportError("GMStoPLX : parse_header - Project file [%s] is damaged after line %d\n",
                            reader.Filename().c_str(), reader.CurrentLineNumber() - 1);
        }
        // A last line without a line break is echoed but not taken: projects are known to end so.
        if (words < 0 || reader.isEOF()) {
            GMS_ReportStatus("- Project file read - Converting files\n");
            return;
        }
        if (words > 0) take_line(owner, reader.GetWord(0), reader.GetWord(1));
    }
}

void run_builders(GMStoPLX& owner) {
    const struct {
        bool wanted;
        FileBuilder& builder;
    } steps[] = {{owner.convertMODFLOW, owner.modflow},   {owner.convertMT3D, owner.mt3d},
                 {owner.convertFEMWATER, owner.femwater}, {owner.convertIMAGE, owner.image},
                 {owner.convertSCAT2D, owner.scat2d},     {owner.convertSCAT3D, owner.scat3d},
                 {owner.convertTIN, owner.tin},           {owner.convertGRID2D, owner.grid2d},
                 {owner.convertBOREHOLE, owner.borehole}};
    for (const auto& step : steps) {
        if (step.wanted) plx::run_builder(step.builder);
    }
}

}  // namespace

bool GMStoPLX::ParseTextProject() {
    GMS_ReportStatus("Old file type");
    VXFileReader reader;
    if (!reader.Open(projectSource.GetFilePath().c_str())) {
        GMS_ReportError("GMStoPLX : parse_header - Error opening project file [%s]!\n",
                        projectSource.GetFilePath().c_str());
        return false;
    }
    report_options(*this);
    read_lines(*this, reader);
    reader.Close();
    run_builders(*this);
    return true;
}
