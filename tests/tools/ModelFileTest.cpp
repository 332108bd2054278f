// Models from files of several formats, and from files that hold none.
#include "replay/ModelFile.h"

#include "replay/ReadError.h"
#include "viewer/MeshEdges.h"

#include <gtest/gtest.h>

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace {

class ModelFile : public testing::Test {
protected:
    ModelFile() {
        const auto* test = testing::UnitTest::GetInstance()->current_test_info();
        m_folder = std::filesystem::temp_directory_path() /
                   ("ModelFile" + std::string(test->name()) + "-" + std::to_string(::getpid()));
        std::filesystem::create_directories(m_folder);
    }
    ~ModelFile() override { std::filesystem::remove_all(m_folder); }

    [[nodiscard]] std::string PathOf(const std::string& name) const { return (m_folder / name).string(); }
    std::string Write(const std::string& name, const std::string& content) const {
        std::ofstream(PathOf(name), std::ios::binary) << content;
        return PathOf(name);
    }

private:
    std::filesystem::path m_folder;
};

// The corners of each face of a cube, seen from outside; bits 0 to 2 of a corner are X to Z.
constexpr int Faces[6][4] = {{0, 2, 3, 1}, {4, 5, 7, 6}, {0, 1, 5, 4}, {2, 6, 7, 3}, {0, 4, 6, 2}, {1, 3, 7, 5}};

// A cube of two units about a centre as OBJ faces.
std::string ObjCube(const std::string& name, double x, int firstVertex) {
    std::string text = "o " + name + "\n";
    for (int corner = 0; corner < 8; ++corner) {
        text += "v " + std::to_string(x + (corner & 1 ? 1 : -1)) + (corner & 2 ? " 1" : " -1") +
                (corner & 4 ? " 1\n" : " -1\n");
    }
    for (const auto& face : Faces) {
        text += "f";
        for (const int corner : face) {
            text += " " + std::to_string(firstVertex + corner);
        }
        text += "\n";
    }
    return text;
}

// A triangle of an STL file for each half of each side of a unit cube; no corner is shared.
std::string StlCube() {
    std::string text = "solid cube\n";
    for (const auto& face : Faces) {
        for (const std::array<int, 3> half : {std::array{0, 1, 2}, std::array{0, 2, 3}}) {
            text += "facet normal 0 0 0\nouter loop\n";
            for (const int i : half) {
                const int corner = face[i];
                text += std::string("vertex ") + (corner & 1 ? "1" : "0") + (corner & 2 ? " 1" : " 0") +
                        (corner & 4 ? " 1\n" : " 0\n");
            }
            text += "endloop\nendfacet\n";
        }
    }
    return text + "endsolid cube\n";
}

double VolumeOf(const viewer::Part& part) {
    double volume = 0;
    for (const viewer::Triangle& t : part.triangles) {
        const dg::DVec3 normal = viewer::GetAreaNormal(part.vertices, t);
        volume += dg::DotProduct(part.vertices[t[0]] - dg::DPoint3D::ORIGIN, normal) / 6;
    }
    return volume;
}

TEST_F(ModelFile, ReadsTheObjectsOfAnObjFileAsParts) {
    const auto model =
        replay::LoadModelFile(Write("two cubes.obj", ObjCube("left", -5, 1) + ObjCube("right", 5.25, 9)));
    EXPECT_EQ(model->name, "two cubes");
    ASSERT_EQ(model->parts.size(), 2U);
    EXPECT_EQ(model->parts[0].name, "left");
    EXPECT_EQ(model->parts[1].name, "right");
    EXPECT_EQ(model->GetBounds(), dg::DBox({-6, -1, -1}, {6.25, 1, 1})) << "coordinates stay as they are";
    for (const viewer::Part& part : model->parts) {
        EXPECT_EQ(part.vertices.size(), 8U);
        EXPECT_EQ(part.triangles.size(), 12U);
        EXPECT_EQ(part.edges.size(), 12U) << "no diagonals";
        EXPECT_NEAR(VolumeOf(part), 8, 1e-9) << "outside is outside";
    }
    EXPECT_FALSE(model->parts[0].color == model->parts[1].color) << "parts without a material can be told apart";
}

TEST_F(ModelFile, JoinsTheCornersOfAnStlFile) {
    const auto model = replay::LoadModelFile(Write("cube.stl", StlCube()));
    ASSERT_EQ(model->parts.size(), 1U);
    const viewer::Part& part = model->parts.front();
    EXPECT_EQ(part.vertices.size(), 8U);
    EXPECT_EQ(part.edges.size(), 12U);
    EXPECT_NEAR(VolumeOf(part), 1, 1e-9);
    EXPECT_FALSE(part.name.empty());
}

TEST_F(ModelFile, AppliesPlacementsAndKeepsMirroredPartsOutsideOut) {
    // One triangle (0 0 0), (1 0 0), (0 1 0), facing +Z, under two nodes: one moved, one mirrored and moved.
    const std::string text = R"({
        "asset": {"version": "2.0"}, "scene": 0, "scenes": [{"nodes": [0]}],
        "nodes": [{"name": "root", "translation": [0, 0, 5], "children": [1, 2]},
                  {"name": "wing", "mesh": 0, "translation": [10, 0, 0]},
                  {"name": "wing", "mesh": 0, "translation": [-10, 0, 0], "scale": [-1, 1, 1]}],
        "materials": [{"name": "paint", "pbrMetallicRoughness": {"baseColorFactor": [0.25, 0.5, 0.75, 1]}}],
        "meshes": [{"primitives": [{"attributes": {"POSITION": 0}, "material": 0}]}],
        "accessors": [{"bufferView": 0, "componentType": 5126, "count": 3, "type": "VEC3",
                       "min": [0, 0, 0], "max": [1, 1, 0]}],
        "bufferViews": [{"buffer": 0, "byteLength": 36}],
        "buffers": [{"byteLength": 36, "uri": "data:application/octet-stream;base64,)"
                             "AAAAAAAAAAAAAAAAAACAPwAAAAAAAAAAAAAAAAAAgD8AAAAA"
                             R"("}]})";
    const auto model = replay::LoadModelFile(Write("wings.gltf", text));
    ASSERT_EQ(model->parts.size(), 2U);
    EXPECT_EQ(model->parts[0].name, "wing");
    EXPECT_EQ(model->parts[1].name, "wing 2");
    EXPECT_EQ(model->GetBounds(), dg::DBox({-11, 0, 5}, {11, 1, 5}));
    for (const viewer::Part& part : model->parts) {
        ASSERT_EQ(part.triangles.size(), 1U);
        EXPECT_GT(viewer::GetAreaNormal(part.vertices, part.triangles[0]).z, 0) << part.name;
        EXPECT_EQ(part.color, dg::Color(0.25F, 0.5F, 0.75F, 1)) << part.name;
    }
}

TEST_F(ModelFile, AFaultIsOneLineThatNamesTheFile) {
    std::filesystem::create_directory(PathOf("folder.obj"));
    const std::string rubbish("\x7F\x00\xFFrubbish\n\x01\x02", 13);
    const std::vector<std::string> paths = {
        PathOf("missing.obj"),
        PathOf("folder.obj"),
        Write("empty.obj", ""),
        Write("prose.obj", "This is a letter.\nIt holds no model.\n"),
        Write("points.obj", "v 0 0 0\nv 1 0 0\nv 0 1 0\np 1 2 3\nl 1 2\n"),
        Write("not a number.obj", "v nan 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n"),
        Write("index.obj", "v 0 0 0\nv 1 0 0\nf 1 2 99\n"),
        Write("rubbish.stl", rubbish),
        Write("cut off.stl", StlCube().substr(0, 30)),
        Write("model.unheard-of", "text"),
    };
    for (const std::string& path : paths) {
        try {
            static_cast<void>(replay::LoadModelFile(path));
            ADD_FAILURE() << path << " was read";
        } catch (const replay::ReadError& fault) {
            const std::string text = fault.what();
            EXPECT_EQ(text.rfind(path + ": ", 0), 0U) << text;
            EXPECT_EQ(text.find('\n'), std::string::npos) << text;
            EXPECT_GT(text.size(), path.size() + 12) << text;
        }
    }
}

}  // namespace
