#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "gms/dataset_messages.h"

namespace {

struct Case {
    std::string file, prescribed, lenient;
};

std::string missing(const std::string& word) {
    return "failed E:GMStoPLX : read_ascii - Missing -DATASET- in data file " + word + "\n";
}

const std::string kNotReached = "failed E:GMStoPLX : read_ascii - End of Data values not reached\n";
const std::string kBadData = "failed E:GMStoPLX : read_ascii - Invalid Number of Data components\n";

// A card before the first block turns it into one without values, which loses them silently; newer programs
// write such cards. Datasets of elements hold fewer values than they announce.
const std::vector<Case> kCases = {
    {"lines_els_scalar", kNotReached + "[EdgeScalarDataset id 0.03 | 3600:; cells 111]",
     kBadData + "[EdgeScalarDataset id 0.03 | 3600: 1 2 3; cells 111]"},
    {"lines_els_vector", kNotReached + "[EdgeVectorDataset id 0.03 | 60:; cells 111]",
     kBadData + "[EdgeVectorDataset id 0.03 | 60: 1,1,0 2,2,0 3,3,0; cells 111]"},
    {"lines_vertex_scalar", "ok [VertexScalarDataset id 0.03 | 0:; cells 111]",
     "ok [VertexScalarDataset id 0.03 | 0: 1 2 3 4; cells 111]"},
    {"lines_vertex_vector", "ok [VertexVectorDataset id 0.03 | 0:; cells 111]",
     "ok [VertexVectorDataset id 0.03 | 0: 1,1,0 2,1,0 3,2,0 2,2,0; cells 111]"},
    {"mesh_with_numbering_gaps_scalar", missing("SCALAR"), missing("SCALAR")},
    {"not_a_data_file", missing("This"), missing("This")},
    {"quad_and_triangle_els_scalar", kBadData + "[FaceScalarDataset id 0.03 | 3600:; cells 11]",
     kBadData + "[FaceScalarDataset id 0.03 | 3600: 1 2; cells 11]"},
    {"quad_and_triangle_els_vector", kBadData + "[FaceVectorDataset id 0.03 | 60:; cells 11]",
     kBadData + "[FaceVectorDataset id 0.03 | 60: 1,1,0 2,2,0; cells 11]"},
    {"quad_and_triangle_vertex_scalar", "ok [VertexScalarDataset id 0.03 | 0:; cells 11]",
     "ok [VertexScalarDataset id 0.03 | 0: 1 2 3 2 1; cells 11]"},
    {"quad_and_triangle_vertex_scalar_old0", missing("SCALAR"), missing("SCALAR")},
    {"quad_and_triangle_vertex_scalar_old1", missing("TS"), missing("TS")},
    {"quad_and_triangle_vertex_scalar_old2", missing("SCALAR"), missing("SCALAR")},
    {"quad_and_triangle_vertex_scalar_old3", missing("SCALAR"), missing("SCALAR")},
    {"quad_and_triangle_vertex_scalar_tabs", "ok [VertexScalarDataset id 0.03 | 0:; cells 11]",
     "ok [VertexScalarDataset id 0.03 | 0: 1 2 3 2 1; cells 11]"},
    {"quad_and_triangle_vertex_vector", "ok [VertexVectorDataset id 0.03 | 0:; cells 11]",
     "ok [VertexVectorDataset id 0.03 | 0: 1,1,0 2,1,0 3,2,0 2,2,0 1,-2,0; cells 11]"},
    {"quad_and_triangle_vertex_vector_old", missing("VECTOR"), missing("VECTOR")},
};

TEST(PublishedDatasets, EachFileUnderBothSettings) {
    const std::filesystem::path folder = PLX_TEST_DATA "/../../../shared/models/dat_ascii";
    if (!std::filesystem::is_directory(folder)) GTEST_SKIP() << folder << " is not there";
    for (const Case& c : kCases) {
        SCOPED_TRACE(c.file);
        const std::string path = std::filesystem::weakly_canonical(folder / (c.file + ".dat")).string();
        EXPECT_EQ(plx::test::outcome(plx::read_ascii_datasets, path, false), c.prescribed);
        EXPECT_EQ(plx::test::outcome(plx::read_ascii_datasets, path, true), c.lenient);
    }
}

}  // namespace
