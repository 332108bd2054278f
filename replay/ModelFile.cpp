#include "replay/ModelFile.h"

#include "replay/InputFile.h"
#include "replay/ReadError.h"
#include "viewer/MeshEdges.h"

#include <assimp/Importer.hpp>
#include <assimp/config.h>
#include <assimp/postprocess.h>
#include <assimp/scene.h>

#include <array>
#include <cmath>
#include <filesystem>
#include <set>
#include <string_view>

namespace replay {

namespace {

// For meshes without a material of their own.
constexpr std::array<dg::Color, 6> Palette = {{{0.55F, 0.60F, 0.66F, 1},
                                               {0.25F, 0.47F, 0.76F, 1},
                                               {0.30F, 0.62F, 0.42F, 1},
                                               {0.88F, 0.84F, 0.72F, 1},
                                               {0.93F, 0.75F, 0.22F, 1},
                                               {0.62F, 0.45F, 0.70F, 1}}};

// Only faces and their places count. Without normals and texture coordinates, corners that differ in nothing else
// become one vertex, which is what sharp edges are found by.
const aiScene* ReadScene(Assimp::Importer& importer, const std::string& path) {
    importer.SetPropertyInteger(AI_CONFIG_PP_RVC_FLAGS,
                                aiComponent_NORMALS | aiComponent_TANGENTS_AND_BITANGENTS | aiComponent_COLORS |
                                    aiComponent_TEXCOORDS | aiComponent_BONEWEIGHTS | aiComponent_ANIMATIONS |
                                    aiComponent_TEXTURES | aiComponent_LIGHTS | aiComponent_CAMERAS);
    importer.SetPropertyInteger(AI_CONFIG_PP_SBP_REMOVE, aiPrimitiveType_POINT | aiPrimitiveType_LINE);
    return importer.ReadFile(path, aiProcess_RemoveComponent | aiProcess_Triangulate | aiProcess_SortByPType |
                                       aiProcess_JoinIdenticalVertices);
}

// A message of the library as one line.
std::string OneLine(std::string_view message) {
    std::string line;
    for (const char c : message) {
        line += static_cast<unsigned char>(c) < 0x20 ? ' ' : c;
    }
    return line.empty() ? "unknown format" : line;
}

class SceneReader {
public:
    SceneReader(const aiScene& scene, const std::string& path) : m_scene(scene), m_path(path) {}

    std::shared_ptr<const viewer::Model> Read() {
        m_model->name = std::filesystem::path(m_path).stem().string();
        if (m_scene.mRootNode != nullptr) {
            AddNode(*m_scene.mRootNode, aiMatrix4x4());
        }
        if (m_model->parts.empty()) {
            throw ReadError(m_path, "the model holds no triangles");
        }
        return m_model;
    }

private:
    void AddNode(const aiNode& node, const aiMatrix4x4& parent) {
        const aiMatrix4x4 placement = parent * node.mTransformation;
        for (unsigned int i = 0; i < node.mNumMeshes; ++i) {
            const aiMesh& mesh = *m_scene.mMeshes[node.mMeshes[i]];
            AddMesh(mesh, placement, node.mName.length > 0 ? node.mName.C_Str() : mesh.mName.C_Str());
        }
        for (unsigned int i = 0; i < node.mNumChildren; ++i) {
            AddNode(*node.mChildren[i], placement);
        }
    }

    void AddMesh(const aiMesh& mesh, const aiMatrix4x4& placement, const std::string& name) {
        viewer::Part part;
        // A placement that mirrors turns the outside in; the triangles are turned back.
        const bool mirrored = aiMatrix3x3(placement).Determinant() < 0;
        for (unsigned int i = 0; i < mesh.mNumFaces; ++i) {
            const aiFace& face = mesh.mFaces[i];
            if (face.mNumIndices == 3) {
                part.triangles.push_back(
                    {face.mIndices[0], face.mIndices[mirrored ? 2 : 1], face.mIndices[mirrored ? 1 : 2]});
            }
        }
        if (part.triangles.empty()) {
            return;
        }
        for (unsigned int i = 0; i < mesh.mNumVertices; ++i) {
            const aiVector3D place = placement * mesh.mVertices[i];
            if (!std::isfinite(place.x) || !std::isfinite(place.y) || !std::isfinite(place.z)) {
                throw ReadError(m_path, "the model has a coordinate that is not finite");
            }
            part.vertices.emplace_back(static_cast<double>(place.x), static_cast<double>(place.y),
                                       static_cast<double>(place.z));
        }
        part.name = MakeName(name.empty() ? "part" : name);
        part.color = ColorOf(mesh);
        part.edges = viewer::FindSharpEdges(part);
        m_model->parts.push_back(std::move(part));
    }

    std::string MakeName(const std::string& wanted) {
        std::string name = wanted;
        for (int number = 2; !m_names.insert(name).second; ++number) {
            name = wanted + " " + std::to_string(number);
        }
        return name;
    }

    [[nodiscard]] dg::Color ColorOf(const aiMesh& mesh) const {
        if (mesh.mMaterialIndex < m_scene.mNumMaterials) {
            const aiMaterial& material = *m_scene.mMaterials[mesh.mMaterialIndex];
            aiColor3D color;
            if (std::string_view(material.GetName().C_Str()) != AI_DEFAULT_MATERIAL_NAME &&
                material.Get(AI_MATKEY_COLOR_DIFFUSE, color) == aiReturn_SUCCESS) {
                return {color.r, color.g, color.b, 1};
            }
        }
        return Palette[m_model->parts.size() % Palette.size()];
    }

    const aiScene& m_scene;
    const std::string& m_path;
    std::shared_ptr<viewer::Model> m_model = std::make_shared<viewer::Model>();
    std::set<std::string> m_names;
};

}  // namespace

std::shared_ptr<const viewer::Model> LoadModelFile(const std::string& path) {
    static_cast<void>(OpenInputFile(path));  // for its messages: the library's own do not say why
    Assimp::Importer importer;
    const aiScene* scene = ReadScene(importer, path);
    if (scene == nullptr) {
        throw ReadError(path, "cannot be read as a model: " + OneLine(importer.GetErrorString()));
    }
    return SceneReader(*scene, path).Read();
}

}  // namespace replay
