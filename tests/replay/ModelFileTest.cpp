// Models from files of several formats, and from files that hold none.
#include "replay/models/ModelFile.h"

#include "replay/files/ReadError.h"
#include "replay/models/ModelWire.h"
#include "scene/MeshEdges.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <regex>
#include <string>
#include <utility>

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

double VolumeOf(const scene::Part& part) {
    double volume = 0;
    for (const scene::Triangle& t : part.triangles) {
        const dg::DVec3 normal = scene::GetAreaNormal(part.vertices, t);
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
    for (const scene::Part& part : model->parts) {
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
    const scene::Part& part = model->parts.front();
    EXPECT_EQ(part.vertices.size(), 8U);
    EXPECT_EQ(part.edges.size(), 12U);
    EXPECT_NEAR(VolumeOf(part), 1, 1e-9);
    EXPECT_FALSE(part.name.empty());
}

// Triangles (0 0 0), (1 0 0), (0 1 0), facing +Z, under nodes.
std::string GltfTriangle(const std::string& nodes, const std::string& accessor, const std::string& uri) {
    return R"({"asset": {"version": "2.0"}, "scene": 0, "scenes": [{"nodes": [0]}], "nodes": )" + nodes + R"(,
        "materials": [{"name": "paint", "pbrMetallicRoughness": {"baseColorFactor": [0.25, 0.5, 0.75, 1]}}],
        "meshes": [{"primitives": [{"attributes": {"POSITION": 0}, "material": 0}]}],
        "accessors": [{"componentType": 5126, "type": "VEC3", )" +
           accessor + R"(}],
        "bufferViews": [{"buffer": 0, "byteLength": 36}], "buffers": [{"byteLength": 36, "uri": ")" +
           uri + "\"}]}";
}
const std::string PlainAccessor = R"("bufferView": 0, "count": 3, "min": [0, 0, 0], "max": [1, 1, 0])";
const std::string InlineData = "data:application/octet-stream;base64,AAAAAAAAAAAAAAAAAACAPwAAAAAAAAAAAAAAAAAAgD8AAAAA";

TEST_F(ModelFile, StandsUprightWithPlacementsAndKeepsMirroredPartsOutsideOut) {
    // One part is moved, one mirrored and moved.
    const std::string path =
        Write("wings.gltf", GltfTriangle(R"([{"name": "root", "translation": [0, 0, 5], "children": [1, 2]},
                  {"name": "wing\u001b", "mesh": 0, "translation": [10, 0, 0]},
                  {"name": "wing\u001b", "mesh": 0, "translation": [-10, 0, 0], "scale": [-1, 1, 1]}])",
                                         PlainAccessor, InlineData));
    const auto model = replay::LoadModelFile(path);
    ASSERT_EQ(model->parts.size(), 2U);
    EXPECT_EQ(model->parts[0].name, "wing ") << "nothing that a terminal would obey";
    EXPECT_EQ(model->parts[1].name, "wing  2");
    EXPECT_EQ(model->GetBounds(), dg::DBox({-11, -5, 0}, {11, -5, 1}));
    for (const scene::Part& part : model->parts) {
        ASSERT_EQ(part.triangles.size(), 1U);
        EXPECT_LT(scene::GetAreaNormal(part.vertices, part.triangles[0]).y, 0) << part.name;
        EXPECT_EQ(part.color, dg::Color(0.25F, 0.5F, 0.75F, 1)) << part.name;
    }
    replay::ModelOptions options;
    options.up = replay::UpAxis::Z;
    EXPECT_EQ(replay::LoadModelFile(path, options)->GetBounds(), dg::DBox({-11, 0, 5}, {11, 1, 5}));
}

TEST_F(ModelFile, ReadsFilesOutsideItsFolderOnlyWhenItMay) {
    std::filesystem::create_directory(PathOf("inside"));
    Write("paint.mtl", "newmtl paint\nKd 0.25 0.5 0.75\n");
    std::filesystem::create_symlink("../paint.mtl", PathOf("inside/link.mtl"));
    ASSERT_EQ(::mkfifo(PathOf("inside/pipe.mtl").c_str(), 0600), 0);
    for (const char* reference : {"../paint.mtl", "link.mtl", "pipe.mtl"}) {
        SCOPED_TRACE(reference);
        const std::string path =
            Write("inside/painted.obj",
                  std::string("mtllib ") + reference + "\nusemtl paint\nv 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n");
        const bool isFile = std::string(reference) != "pipe.mtl";
        std::string note;
        replay::ModelOptions options;
        options.tellNote = [&](const std::string& text) { note = text; };
        const dg::Color paint(0.25F, 0.5F, 0.75F, 1);
        EXPECT_FALSE(replay::LoadModelFile(path, options)->parts.at(0).color == paint);
        EXPECT_EQ(note.find("paint.mtl, which lies outside") != std::string::npos, isFile) << note;
        options.anyReferences = true;
        EXPECT_EQ(replay::LoadModelFile(path, options)->parts.at(0).color == paint, isFile);
    }
}

TEST_F(ModelFile, IsGivenUpWhenItTakesTooMuch) {
    const std::string path = Write("cube.obj", ObjCube("cube", 0, 1));
    replay::ModelOptions options;
    options.limits.answerBytes = 100;
    EXPECT_THROW(static_cast<void>(replay::LoadModelFile(path, options)), replay::ReadError);
    options.limits = {.time = std::chrono::seconds(0)};
    EXPECT_THROW(static_cast<void>(replay::LoadModelFile(path, options)), replay::ReadError);
    EXPECT_EQ(::waitpid(-1, nullptr, 0), -1) << "a child is left";
}

TEST_F(ModelFile, TrustsNothingThatTheReadingProcessSays) {
    scene::Model model{"", {{"part", {}, {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, {{0, 1, 2}}, {}}}};
    const std::string good = replay::EncodeModel(model);
    EXPECT_EQ(replay::DecodeModel(good).parts.at(0).edges.size(), 3U);
    for (std::size_t size = 0; size < good.size(); ++size) {
        EXPECT_THROW(static_cast<void>(replay::DecodeModel(good.substr(0, size))), replay::ModelFault) << size;
        std::string huge = good;  // a count, where there is one
        huge.replace(size, 1, "\xFF");
        try {
            static_cast<void>(replay::DecodeModel(huge));
        } catch (const replay::ModelFault&) {  // and nothing else
        }
    }
    for (const double wrong : {std::nan(""), HUGE_VAL, 1.1e12}) {
        model.parts[0].vertices[1].y = wrong;
        EXPECT_THROW(static_cast<void>(replay::DecodeModel(replay::EncodeModel(model))), replay::ModelFault) << wrong;
    }
    model.parts[0].vertices[1].y = 0;
    model.parts[0].triangles[0][2] = 3;
    EXPECT_THROW(static_cast<void>(replay::DecodeModel(replay::EncodeModel(model))), replay::ModelFault);
}

TEST_F(ModelFile, AFaultIsOneLineThatNamesTheFile) {
    std::filesystem::create_directory(PathOf("folder.obj"));
    const std::string rubbish("\x7F\x00\xFFrubbish\n\x01\x02", 13);
    std::string chain = "[";
    for (int i = 1; i <= 100'000; ++i) {
        chain += R"({"children": [)" + std::to_string(i) + "]}, ";
    }
    ASSERT_EQ(::mkfifo(PathOf("pipe.obj").c_str(), 0600), 0);
    const std::string node = R"([{"mesh": 0}])";
    const std::pair<std::string, const char*> rows[] = {
        {PathOf("missing.obj"), "No such file"},
        {PathOf("folder.obj"), "folder"},
        {PathOf("pipe.obj"), "no ordinary file"},
        {Write("empty.obj", ""), "too small"},
        {Write("prose.obj", "This is a letter.\nIt holds no model.\n"), "cannot be read as a model: ."},
        {Write("points.obj", "v 0 0 0\nv 1 0 0\nv 0 1 0\np 1 2 3\nl 1 2\n"), "cannot be read as a model: ."},
        {Write("not a number.obj", "v nan 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n"), "cannot be read as a model: ."},
        {Write("index.obj", "v 0 0 0\nv 1 0 0\nf 1 2 99\n"), "index"},
        {Write("far.obj", "v 0 0 0\nv 1e30 0 0\nv 0 1e30 0\nf 1 2 3\n"), "beyond 1e12"},
        {Write("rubbish.stl", rubbish), "cannot be read as a model: ."},
        {Write("cut off.stl", StlCube().substr(0, 30)), "cannot be read as a model: ."},
        {Write("model.unheard-of", "text"), "No suitable reader"},
        {Write("not allowed.raw", "0 0 0 1 0 0 0 1 0\n"), "No suitable reader"},
        {Write("index.ply", "ply\nformat ascii 1.0\nelement vertex 3\nproperty float x\nproperty float y\n"
                            "property float z\nelement face 1\nproperty list uchar int vertex_indices\nend_header\n"
                            "0 0 0\n1 0 0\n0 1 0\n3 0 1 99999\n"),
         "out of range"},
        {Write("folder.obj/outside.gltf", GltfTriangle(node, PlainAccessor, "../empty.obj")), "--model-references"},
        {Write("brackets.gltf", R"({"asset": {"version": "2.0"}, "extras": )" + std::string(500'000, '[')), "crashed"},
        {Write("chain.gltf", GltfTriangle(chain + R"({"mesh": 0}])", PlainAccessor, InlineData)), "crashed"},
        // Under a sanitizer it is that which runs out of memory.
        {Write("huge.gltf", GltfTriangle(node, R"("count": 1000000000, "sparse": {"count": 1, "indices":
            {"bufferView": 0, "componentType": 5123}, "values": {"bufferView": 0}})",
                                         InlineData)),
         "more than 2048 MiB|ended early"},
    };
    for (const auto& [path, error] : rows) {
        try {
            static_cast<void>(replay::LoadModelFile(path));
            ADD_FAILURE() << path << " was read";
        } catch (const replay::ReadError& fault) {
            const std::string text = fault.what();
            EXPECT_EQ(text.rfind(path + ": ", 0), 0U) << text;
            EXPECT_EQ(text.find('\n'), std::string::npos) << text;
            EXPECT_TRUE(std::regex_search(text, std::regex(error))) << text;
        }
    }
}

}  // namespace
