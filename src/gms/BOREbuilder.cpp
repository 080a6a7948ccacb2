#include "plxutils/gms/BOREbuilder.h"

#include <algorithm>
#include <map>
#include <unordered_map>

#include "core/output_names.h"
#include "formats/word_lines.h"
#include "gms/builder_output.h"
#include "gms/callbacks.h"
#include "gms/hdf5_objects.h"
#include "gms/names.h"
#include "gms/pgf_file.h"

namespace {

using namespace plx;

constexpr const char* kSubfolder = "BORE";

bool read_materials(const std::string& path, std::vector<std::unique_ptr<Material>>& materials) {
    WordLines lines;
    if (!lines.open(path.c_str())) {
        GMS_ReportError("Bore : Parse_Mat - Error opening %s\n", path.c_str());
        return false;
    }
    while (lines.next()) {
        if (lines.word(0) != "MN") continue;
        auto material = std::make_unique<Material>();
        if (!lines.integer(1, material->number)) {
            GMS_ReportError("Bore : Parse_Mat - Material number error [%s] in file [%s].\n",
                            std::string(lines.word(1)).c_str(), path.c_str());
            continue;
        }
        material->index = static_cast<int>(materials.size());
        material->name = one_word(std::string(lines.word(2))).c_str();
        materials.push_back(std::move(material));
    }
    return true;
}

bool read_contact(WordLines& lines, std::array<double, 4>& contact) {
    const bool line = lines.next();
    if (!line || !lines.number(0, contact[0]) || !lines.number(1, contact[1]) ||
        !lines.number(2, contact[2])) {
        std::array<std::string, 4> words;
        for (int i = 0; line && i < 4; ++i) words[static_cast<std::size_t>(i)] = lines.word(i);
        GMS_ReportError("Bore : Write_file - Error reading Bore hole data [%s] [%s] [%s] [%s].\n",
                        words[0].c_str(), words[1].c_str(), words[2].c_str(), words[3].c_str());
        return false;
    }
    int number = 0;
    if (!lines.integer(3, number)) {
        GMS_ReportError("Bore : Write_file - Error reading Bore hole material data [%s]\n",
                        std::string(lines.word(3)).c_str());
        return false;
    }
    contact[3] = number;
    return true;
}

/// False after a message when the file cannot be used; its end may come anywhere outside a list of contacts.
bool read_bores(WordLines& lines, std::vector<std::unique_ptr<Bore>>& bores) {
    while (lines.find("BEGH") && lines.next()) {
        auto bore = std::make_unique<Bore>();
        bore->name = one_word(std::string(lines.word(1))).c_str();
        if (!lines.find("CONT")) break;
        int count = 0;
        if (!lines.integer(1, count)) {
            GMS_ReportError("Bore : Write_file - Error reading CONT [%s] in bore file\n",
                            std::string(lines.word(1)).c_str());
            return false;
        }
        for (int i = 0; i < count; ++i) {
            if (!read_contact(lines, bore->contacts.emplace_back())) return false;
        }
        bore->numContacts = static_cast<int>(bore->contacts.size());
        bores.push_back(std::move(bore));
    }
    return true;
}

/// File name without folder and extension, in the letters of the project.
std::string title_of(const std::string& path) {
    const std::string name = last_component(path);
    return name.substr(0, name.rfind('.'));
}

void write_text_bores(BOREbuilder& builder, const std::string& path) {
    GMS_ReportStatus("Writing BORE Output files : \n");
    BuilderOutput file(*builder.owner);
    if (!file.open(output_folder(*builder.owner, kSubfolder), clean_name("BOR_" + title_of(path) + ".pgf"),
                   false, "Bore : Write_file - Error writing to output file [%s]\n")) {
        return;
    }
    // The first of two materials with one number counts.
    std::map<int, const Material*> by_number;
    for (const auto& material : builder.materials) by_number.emplace(material->number, material.get());
    std::vector<std::string> layers;
    for (const auto& [number, material] : by_number) {
        if (number >= 1) layers.emplace_back(material->name.c_str());
    }
    int contacts = 0;
    for (const auto& bore : builder.bores) contacts += bore->numContacts;
    PgfWriter pgf(file.out());
    // Deliberate: the count is that of the borehole file, as existing files have it, although contacts of
    // unknown materials are left out.
    pgf.header("GMStoPLX generated pgf file", layers, contacts);
    for (const auto& bore : builder.bores) {
        for (const auto& contact : bore->contacts) {
            const auto found = by_number.find(static_cast<int>(contact[3]));
            if (found == by_number.end()) continue;
            pgf.contact(contact[0], contact[1], contact[2], found->second->index, bore->name.c_str());
        }
    }
    file.close();
}

void convert_files(BOREbuilder& builder) {
    builder.materials.clear();
    builder.bores.clear();
    if (!read_materials(last_with_extension(builder.sourceFiles, "mat"), builder.materials)) {
        GMS_ReportError("Bore : Write_file - No material data, returning \n");
        return;
    }
    const std::string path = last_with_extension(builder.sourceFiles, "bor");
    WordLines lines;
    if (!lines.open(path.c_str())) {
        GMS_ReportError("Bore : Write_file - Error opening %s\n", path.c_str());
        return;
    }
    if (read_bores(lines, builder.bores)) write_text_bores(builder, path);
}

/// Position of a material's id in the project's list.
std::unordered_map<int, int> material_positions(const GMStoPLX& owner) {
    std::unordered_map<int, int> positions;
    for (int i = 0; i < owner.materialIds.GetSize(); ++i) positions.emplace(owner.materialIds[i], i);
    return positions;
}

void write_group_contacts(PgfWriter& pgf, const GMStoPLX& owner, const Hdf5Bores& bores) {
    const auto positions = material_positions(owner);
    std::size_t i = 0;
    for (std::size_t bore = 0; bore < bores.contacts_of_bore.size(); ++bore) {
        for (int k = 0; k < bores.contacts_of_bore[bore]; ++k, ++i) {
            const auto found = positions.find(bores.materials[i]);
            pgf.contact(bores.contacts.x[i], bores.contacts.y[i], bores.contacts.z[i],
                        found == positions.end() ? -1 : found->second, bores.names[bore]);
        }
    }
}

void convert_group(GMStoPLX& owner) {
    Hdf5Bores bores;
    std::string problem;
    if (!read_hdf5_bores(owner.currentGroup, bores, problem)) {
        report_group_problem("Bore", owner.currentGroup, problem);
        return;
    }
    GMS_ReportStatus("Writing BORE Output files : \n");
    BuilderOutput file(owner);
    if (!file.open(output_folder(owner, kSubfolder), "bor.pgf", false,
                   "Bore : Write_File - Unable to open output file [%s]\n")) {
        return;
    }
    std::vector<std::string> layers;
    layers.reserve(static_cast<std::size_t>(owner.materialNames.GetSize()));
    for (int i = 0; i < owner.materialNames.GetSize(); ++i) {
        layers.emplace_back(owner.materialNames[i].c_str());
    }
    PgfWriter pgf(file.out());
    pgf.header("# GMStoPLX generated .pgf file", layers, static_cast<int>(bores.contacts.x.size()));
    write_group_contacts(pgf, owner, bores);
    file.close();
}

}  // namespace

void BOREbuilder::build() {
    announce_build("Converting Bore data to PGF files.\n\n");
    if (owner->hdf5Project) {
        if (owner->currentGroup == -1) {
            // Deliberate: boreholes say the text of the scatter points, which hosts wait for.
            GMS_ReportStatus("Invalid 2D Scatter Point Data in Group.\n");
        } else {
            convert_group(*owner);
        }
    } else if (sourceFiles.empty()) {
        GMS_ReportStatus("Project contains no BORE data, conversion complete.\n");
    } else {
        convert_files(*this);
    }
}
