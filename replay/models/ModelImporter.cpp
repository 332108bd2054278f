// Takes faces, places and colours out of what the library has read, and leaves the rest. Broken files give broken
// scenes, so an index into the scene is checked before it is followed.
#include "replay/models/ModelImporter.h"

#include "replay/models/ModelFolder.h"
#include "replay/models/ModelWire.h"

#include <assimp/Importer.hpp>
#include <assimp/config.h>
#include <assimp/importerdesc.h>
#include <assimp/postprocess.h>
#include <assimp/scene.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

namespace replay {

namespace {

// A format that is read, by the endings that the library names it with, and the axis that is up in what the library
// makes of it. It turns Collada files to Y up as they ask for, and 3DS and MD2 models always. An FBX file names its
// axis itself.
struct ModelFormat {
    std::string_view endings;
    UpAxis up;
};

// Of all formats that the library knows, those that scripts/torture-models finds to read their own samples and to
// refuse broken files without a crash. Where a format does not say which axis is up, its coordinates stay as they are.
constexpr std::array Formats = {
    ModelFormat{"gltf glb", UpAxis::Y}, ModelFormat{"obj", UpAxis::Z},         ModelFormat{"stl", UpAxis::Z},
    ModelFormat{"ply", UpAxis::Z},      ModelFormat{"off", UpAxis::Z},         ModelFormat{"dae xml zae", UpAxis::Y},
    ModelFormat{"fbx", UpAxis::Y},      ModelFormat{"3ds prj", UpAxis::Y},     ModelFormat{"3mf", UpAxis::Z},
    ModelFormat{"x", UpAxis::Y},        ModelFormat{"ac acc ac3d", UpAxis::Y}, ModelFormat{"dxf", UpAxis::Z},
    ModelFormat{"lwo lxo", UpAxis::Y},  ModelFormat{"md2", UpAxis::Y},
};

// For meshes without a material of their own.
constexpr std::array<dg::Color, 6> Palette = {{{0.55F, 0.60F, 0.66F, 1},
                                               {0.25F, 0.47F, 0.76F, 1},
                                               {0.30F, 0.62F, 0.42F, 1},
                                               {0.88F, 0.84F, 0.72F, 1},
                                               {0.93F, 0.75F, 0.22F, 1},
                                               {0.62F, 0.45F, 0.70F, 1}}};

const ModelFormat* FindFormat(const Assimp::Importer& importer, std::size_t index) {
    const aiImporterDesc* about = importer.GetImporterInfo(index);
    const auto found = std::find_if(Formats.begin(), Formats.end(), [&](const ModelFormat& format) {
        return about != nullptr && format.endings == about->mFileExtensions;
    });
    return found != Formats.end() ? &*found : nullptr;
}

// What is not registered is not asked, whatever a file's ending or content.
void KeepOnlyFormats(Assimp::Importer& importer) {
    for (std::size_t i = importer.GetImporterCount(); i-- > 0;) {
        if (FindFormat(importer, i) == nullptr) {
            importer.UnregisterLoader(importer.GetImporter(i));
        }
    }
}

// Only faces and their places count. Without normals and texture coordinates, corners that differ in nothing else
// become one vertex, which is what sharp edges are found by.
const aiScene* ReadScene(Assimp::Importer& importer, const std::string& file) {
    importer.SetPropertyInteger(AI_CONFIG_PP_RVC_FLAGS,
                                aiComponent_NORMALS | aiComponent_TANGENTS_AND_BITANGENTS | aiComponent_COLORS |
                                    aiComponent_TEXCOORDS | aiComponent_BONEWEIGHTS | aiComponent_ANIMATIONS |
                                    aiComponent_TEXTURES | aiComponent_LIGHTS | aiComponent_CAMERAS);
    importer.SetPropertyInteger(AI_CONFIG_PP_SBP_REMOVE, aiPrimitiveType_POINT | aiPrimitiveType_LINE);
    return importer.ReadFile(file, aiProcess_ValidateDataStructure | aiProcess_RemoveComponent |
                                       aiProcess_FindInvalidData | aiProcess_Triangulate | aiProcess_SortByPType |
                                       aiProcess_JoinIdenticalVertices);
}

std::string_view TextOf(const aiString& text) {
    return {text.data, std::min<std::size_t>(text.length, sizeof text.data - 1)};
}

[[noreturn]] void ThrowBroken(const char* what) {
    throw ModelFault(std::string("the model has ") + what + " that is not there");
}

// The element of one of the scene's arrays. Throws ModelFault when there is none.
template <typename Element>
const Element& At(Element* const* elements, unsigned int count, unsigned int index, const char* what) {
    if (elements == nullptr || index >= count || elements[index] == nullptr) {
        ThrowBroken(what);
    }
    return *elements[index];
}

class SceneReader {
public:
    SceneReader(const aiScene& scene, const aiMatrix4x4& placement) : m_scene(scene) {
        if (scene.mRootNode != nullptr) {
            m_open.emplace_back(scene.mRootNode, placement);
        }
    }

    // Without recursion, so that nodes may be nested as deep as they like.
    scene::Model Read() {
        while (!m_open.empty()) {
            const auto [node, parent] = m_open.back();
            m_open.pop_back();
            const aiMatrix4x4 placement = parent * node->mTransformation;
            for (unsigned int i = 0; i < node->mNumMeshes; ++i) {
                const aiMesh& mesh = At(m_scene.mMeshes, m_scene.mNumMeshes, node->mMeshes[i], "a mesh");
                AddMesh(mesh, placement, std::string(TextOf(node->mName.length > 0 ? node->mName : mesh.mName)));
            }
            for (unsigned int i = node->mNumChildren; i-- > 0;) {
                m_open.emplace_back(&At(node->mChildren, node->mNumChildren, i, "a node"), placement);
            }
        }
        return std::move(m_model);
    }

private:
    void AddMesh(const aiMesh& mesh, const aiMatrix4x4& placement, const std::string& name) {
        scene::Part part;
        // A placement that mirrors turns the outside in; the triangles are turned back.
        const bool mirrored = aiMatrix3x3(placement).Determinant() < 0;
        for (unsigned int i = 0; i < mesh.mNumFaces; ++i) {
            const aiFace& face = mesh.mFaces[i];
            if (face.mNumIndices == 3) {
                part.triangles.push_back(
                    {face.mIndices[0], face.mIndices[mirrored ? 2 : 1], face.mIndices[mirrored ? 1 : 2]});
            }
        }
        m_triangles += part.triangles.size();
        if (part.triangles.empty()) {
            return;
        }
        if (m_triangles > MostModelTriangles) {
            throw ModelFault("it holds more than " + std::to_string(MostModelTriangles) + " triangles");
        }
        if (mesh.mVertices == nullptr) {
            ThrowBroken("a vertex");
        }
        part.vertices.reserve(mesh.mNumVertices);
        for (unsigned int i = 0; i < mesh.mNumVertices; ++i) {
            const aiVector3D place = placement * mesh.mVertices[i];
            part.vertices.emplace_back(static_cast<double>(place.x), static_cast<double>(place.y),
                                       static_cast<double>(place.z));
        }
        part.name = name;
        part.color = ColorOf(mesh);
        m_model.parts.push_back(std::move(part));
    }

    [[nodiscard]] dg::Color ColorOf(const aiMesh& mesh) const {
        if (mesh.mMaterialIndex < m_scene.mNumMaterials) {
            const aiMaterial& material =
                At(m_scene.mMaterials, m_scene.mNumMaterials, mesh.mMaterialIndex, "a material");
            aiColor3D color;
            if (std::string_view(material.GetName().C_Str()) != AI_DEFAULT_MATERIAL_NAME &&
                material.Get(AI_MATKEY_COLOR_DIFFUSE, color) == aiReturn_SUCCESS) {
                return {color.r, color.g, color.b, 1};
            }
        }
        return Palette[m_model.parts.size() % Palette.size()];
    }

    const aiScene& m_scene;
    std::vector<std::pair<const aiNode*, aiMatrix4x4>> m_open;  // nodes with their parents' placements
    scene::Model m_model;
    std::size_t m_triangles = 0;
};

UpAxis FindUp(const Assimp::Importer& importer, const aiScene& scene) {
    std::int32_t axis = 0;
    if (scene.mMetaData != nullptr && scene.mMetaData->Get("UpAxis", axis)) {
        return axis == 1 ? UpAxis::Y : UpAxis::Z;
    }
    const ModelFormat* format =
        FindFormat(importer, static_cast<std::size_t>(importer.GetPropertyInteger("importerIndex", -1)));
    return format != nullptr ? format->up : UpAxis::Z;
}

// To a view whose Z axis is up.
aiMatrix4x4 Upright(UpAxis up) {
    return up == UpAxis::Z ? aiMatrix4x4() : aiMatrix4x4(1, 0, 0, 0, 0, 0, -1, 0, 0, 1, 0, 0, 0, 0, 0, 1);
}

}  // namespace

ImportedModel ImportModel(const std::filesystem::path& file, const ModelOptions& options) {
    // Neither is destroyed: to take a broken scene apart is one more way to crash, and the process ends anyway.
    auto& importer = *std::make_unique<Assimp::Importer>().release();
    auto& folder = *std::make_unique<ModelFolder>(file, options.anyReferences).release();
    importer.SetIOHandler(&folder);
    KeepOnlyFormats(importer);
    const aiScene* scene = ReadScene(importer, file.string());
    if (scene == nullptr) {
        const std::string reason = importer.GetErrorString();
        throw ModelFault((reason.empty() ? "unknown format" : reason) +
                         (folder.GetRefused().empty()
                              ? ""
                              : " (it refers to " + folder.GetRefused() + ", which --model-references lets it read)"));
    }
    const UpAxis up = options.up ? *options.up : FindUp(importer, *scene);
    return {SceneReader(*scene, Upright(up)).Read(), folder.GetRefused()};
}

}  // namespace replay
