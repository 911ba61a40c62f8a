// Turns what the asset importer reads into nodes.

#include "reference/machinery/meshes/mesh_builder.h"
#include "reference/machinery/model_files/asset_reader.h"
#include "reference/machinery/model_files/file_look_up.h"
#include "reference/machinery/model_files/model_picture.h"
#include "reference/machinery/shading/surface_program.h"

#include <assimp/DefaultIOSystem.h>
#include <assimp/GltfMaterial.h>
#include <assimp/Importer.hpp>
#include <assimp/config.h>
#include <assimp/material.h>
#include <assimp/mesh.h>
#include <assimp/postprocess.h>
#include <assimp/scene.h>
#include <osg/AlphaFunc>
#include <osg/BlendFunc>
#include <osg/CullFace>
#include <osg/Depth>
#include <osg/Geode>
#include <osg/Material>
#include <osg/MatrixTransform>
#include <osg/Texture2D>
#include <osgDB/FileNameUtils>
#include <osgDB/FileUtils>
#include <osgDB/ReadFile>

#include <algorithm>
#include <array>
#include <sstream>
#include <vector>

namespace hyxOSG {
namespace {

using ReadResult = osgDB::ReaderWriter::ReadResult;

osg::Vec4 toOsg(aiColor4D const& color) {
    return {color.r, color.g, color.b, color.a};
}

osg::Vec3 toOsg(aiVector3D const& vector) {
    return {vector.x, vector.y, vector.z};
}

/// Turns one imported scene into nodes.
class SceneConverter {
public:
    SceneConverter(aiScene const& scene, std::string const& folder) : m_scene(scene), m_folder(folder) {
        for (unsigned int i = 0; i < scene.mNumMaterials; ++i)
            m_states.push_back(stateOf(*scene.mMaterials[i]));
        for (unsigned int i = 0; i < scene.mNumMeshes; ++i)
            m_meshes.push_back(meshOf(*scene.mMeshes[i]));
    }

    osg::ref_ptr<osg::Node> convert(aiNode const& source) const {
        aiMatrix4x4 matrix = source.mTransformation;
        matrix.Transpose(); // row vectors here
        osg::ref_ptr<osg::Group> const node =
            matrix.IsIdentity() ? new osg::Group : new osg::MatrixTransform(osg::Matrixf(&matrix.a1));
        node->setName(source.mName.C_Str());
        for (unsigned int i = 0; i < source.mNumMeshes; ++i)
            node->addChild(m_meshes[source.mMeshes[i]]);
        for (unsigned int i = 0; i < source.mNumChildren; ++i)
            node->addChild(convert(*source.mChildren[i]));
        return node;
    }

private:
    osg::ref_ptr<osg::StateSet> stateOf(aiMaterial const& source) const {
        osg::ref_ptr<osg::StateSet> const state = new osg::StateSet;
        osg::ref_ptr<osg::Material> const material = new osg::Material;
        auto const both = osg::Material::FRONT_AND_BACK;
        aiColor4D color;
        float value = 0;
        if (source.Get(AI_MATKEY_COLOR_DIFFUSE, color) == AI_SUCCESS)
            material->setDiffuse(both, toOsg(color));
        if (source.Get(AI_MATKEY_COLOR_AMBIENT, color) == AI_SUCCESS && toOsg(color) != osg::Vec4(0, 0, 0, 1))
            material->setAmbient(both, toOsg(color));
        else
            material->setAmbient(both, material->getDiffuse(osg::Material::FRONT));
        if (source.Get(AI_MATKEY_COLOR_SPECULAR, color) == AI_SUCCESS)
            material->setSpecular(both, toOsg(color));
        if (source.Get(AI_MATKEY_COLOR_EMISSIVE, color) == AI_SUCCESS)
            material->setEmission(both, toOsg(color));
        if (source.Get(AI_MATKEY_SHININESS, value) == AI_SUCCESS)
            material->setShininess(both, std::clamp(value, 0.0f, 128.0f));
        if (source.Get(AI_MATKEY_OPACITY, value) == AI_SUCCESS && value < 1)
            material->setAlpha(both, value);
        if (isOfGltf(source))
            showLinearColors(*material);
        setTransparency(source, *state, *material);
        state->setAttributeAndModes(material);
        if (osg::ref_ptr<osg::Texture2D> const texture = textureOf(source, aiTextureType_DIFFUSE))
            state->setTextureAttributeAndModes(DIFFUSE_TEXTURE, texture);
        setSurface(source, *state);
        return state;
    }

    static bool isOfGltf(aiMaterial const& source) {
        aiString mode;
        return source.Get(AI_MATKEY_GLTF_ALPHAMODE, mode) == AI_SUCCESS;
    }

    /// Factors of glTF are shares of light; drawn colours are as a screen shows them.
    static void showLinearColors(osg::Material& material) {
        auto const both = osg::Material::FRONT_AND_BACK, front = osg::Material::FRONT;
        material.setAmbient(both, onScreen(material.getAmbient(front)));
        material.setDiffuse(both, onScreen(material.getDiffuse(front)));
        material.setEmission(both, onScreen(material.getEmission(front)));
    }

    static osg::Vec4 onScreen(osg::Vec4 color) {
        for (int i = 0; i < 3; ++i)
            color[i] = color[i] <= 0.0031308f ? 12.92f * color[i] : 1.055f * std::pow(color[i], 1 / 2.4f) - 0.055f;
        return color;
    }

    /// A material that says how it lets light through decides; of others the opacity does.
    static void setTransparency(aiMaterial const& source, osg::StateSet& state, osg::Material& material) {
        aiString mode;
        bool const says = source.Get(AI_MATKEY_GLTF_ALPHAMODE, mode) == AI_SUCCESS;
        std::string const word = says ? mode.C_Str() : "";
        if (word == "MASK") {
            float cutoff = 0.5f;
            source.Get(AI_MATKEY_GLTF_ALPHACUTOFF, cutoff);
            state.setAttributeAndModes(new osg::AlphaFunc(osg::AlphaFunc::GEQUAL, cutoff));
        } else if (word == "BLEND" || (!says && material.getDiffuse(osg::Material::FRONT).a() < 1)) {
            state.setAttributeAndModes(new osg::BlendFunc);
            state.setAttributeAndModes(new osg::Depth(osg::Depth::LESS, 0, 1, false));
            state.setRenderingHint(osg::StateSet::TRANSPARENT_BIN);
        } else if (says) {
            material.setAlpha(osg::Material::FRONT_AND_BACK, 1);
        }
        int bothSides = 0;
        if (says && source.Get(AI_MATKEY_TWOSIDED, bothSides) == AI_SUCCESS && !bothSides)
            state.setAttributeAndModes(new osg::CullFace(osg::CullFace::BACK));
    }

    /// What only the program of surfaces can draw.
    void setSurface(aiMaterial const& source, osg::StateSet& state) const {
        if (osg::ref_ptr<osg::Texture2D> const normals = textureOf(source, aiTextureType_NORMALS))
            setNormalMap(state, *normals);
        if (osg::ref_ptr<osg::Texture2D> const glow = textureOf(source, aiTextureType_EMISSIVE))
            setGlowMap(state, *glow);
        float metal = 1, roughness = 1;
        if (!isOfGltf(source) || // others mean other things by these numbers
            source.Get(AI_MATKEY_METALLIC_FACTOR, metal) != AI_SUCCESS ||
            source.Get(AI_MATKEY_ROUGHNESS_FACTOR, roughness) != AI_SUCCESS)
            return;
        setMetalRoughness(state, metal, roughness, textureOf(source, aiTextureType_UNKNOWN));
    }

    osg::ref_ptr<osg::Texture2D> textureOf(aiMaterial const& source, aiTextureType kind) const {
        aiString file;
        if (source.GetTexture(kind, 0, &file) != AI_SUCCESS)
            return nullptr;
        return repeatedTexture(imageOf(file.C_Str()).get());
    }

    osg::ref_ptr<osg::Image> imageOf(char const* file) const {
        if (aiTexture const* const inside = m_scene.GetEmbeddedTexture(file))
            return embedded(*inside);
        return osgDB::readRefImageFile(besideModel(file, m_folder));
    }

    static osg::ref_ptr<osg::Image> embedded(aiTexture const& texture) {
        bool const isFile = texture.mHeight == 0;
        auto* const reader =
            isFile ? osgDB::Registry::instance()->getReaderWriterForExtension(texture.achFormatHint) : nullptr;
        if (!reader)
            return nullptr;
        std::istringstream bytes(std::string(reinterpret_cast<char const*>(texture.pcData), texture.mWidth));
        return reader->readImage(bytes).getImage();
    }

    osg::ref_ptr<osg::Geode> meshOf(aiMesh const& source) const {
        osg::ref_ptr<osg::Geode> const geode = new osg::Geode;
        osg::ref_ptr<osg::Geometry> const mesh = new osg::Geometry;
        mesh->setName(source.mName.C_Str());
        osg::ref_ptr<osg::Vec3Array> const positions = new osg::Vec3Array, normals = new osg::Vec3Array;
        osg::ref_ptr<osg::Vec2Array> const texcoords = new osg::Vec2Array;
        osg::ref_ptr<osg::Vec4Array> const colors = new osg::Vec4Array;
        for (unsigned int i = 0; i < source.mNumVertices; ++i) {
            positions->push_back(toOsg(source.mVertices[i]));
            if (source.HasNormals())
                normals->push_back(toOsg(source.mNormals[i]));
            if (source.HasTextureCoords(0))
                texcoords->push_back({source.mTextureCoords[0][i].x, source.mTextureCoords[0][i].y});
            if (source.HasVertexColors(0))
                colors->push_back(toOsg(source.mColors[0][i]));
        }
        mesh->setVertexArray(positions);
        if (!normals->empty())
            mesh->setNormalArray(normals, osg::Array::BIND_PER_VERTEX);
        if (!texcoords->empty())
            mesh->setTexCoordArray(0, texcoords, osg::Array::BIND_PER_VERTEX);
        if (!colors->empty())
            mesh->setColorArray(colors, osg::Array::BIND_PER_VERTEX);
        addFaces(source, *mesh);
        useVertexBuffers(*mesh);
        geode->addDrawable(mesh);
        geode->setStateSet(m_states.at(source.mMaterialIndex));
        if (!colors->empty() && isOfGltf(*m_scene.mMaterials[source.mMaterialIndex]))
            tint(*mesh, *colors, *m_scene.mMaterials[source.mMaterialIndex], *geode->getStateSet());
        return geode;
    }

    /// Vertex colours of glTF are shares of light, too, by which the material's is multiplied.
    static void tint(osg::Geometry& mesh, osg::Vec4Array& colors, aiMaterial const& source,
                     osg::StateSet const& state) {
        aiColor4D factor(1, 1, 1, 1);
        source.Get(AI_MATKEY_COLOR_DIFFUSE, factor);
        for (osg::Vec4& color : colors)
            color = onScreen(osg::componentMultiply(color, toOsg(factor)));
        auto const& plain = static_cast<osg::Material const&>(*state.getAttribute(osg::StateAttribute::MATERIAL));
        osg::ref_ptr<osg::Material> const material = new osg::Material(plain);
        material->setColorMode(osg::Material::AMBIENT_AND_DIFFUSE);
        mesh.getOrCreateStateSet()->setAttributeAndModes(material);
        if (!state.getAttribute(osg::StateAttribute::BLENDFUNC) && !state.getAttribute(osg::StateAttribute::ALPHAFUNC))
            for (osg::Vec4& color : colors)
                color.a() = 1; // an opaque material's alpha means nothing
    }

    /// The importer sorts faces by their number of corners, so one mesh has one kind.
    static void addFaces(aiMesh const& source, osg::Geometry& mesh) {
        unsigned int const corners = source.mNumFaces ? source.mFaces[0].mNumIndices : 0;
        GLenum const mode = corners == 1 ? GL_POINTS : corners == 2 ? GL_LINES : GL_TRIANGLES;
        osg::ref_ptr<osg::DrawElementsUInt> const elements = new osg::DrawElementsUInt(mode);
        for (unsigned int i = 0; i < source.mNumFaces; ++i)
            for (unsigned int j = 0; j < source.mFaces[i].mNumIndices; ++j)
                elements->push_back(source.mFaces[i].mIndices[j]);
        mesh.addPrimitiveSet(elements);
    }

    aiScene const& m_scene;
    std::string m_folder;
    std::vector<osg::ref_ptr<osg::StateSet>> m_states;
    std::vector<osg::ref_ptr<osg::Geode>> m_meshes;
};

/// Opens only what may be read: a model names materials, buffers and other models.
class GuardedFiles : public Assimp::DefaultIOSystem {
public:
    bool Exists(char const* file) const override { return mayRead(file) && DefaultIOSystem::Exists(file); }

    Assimp::IOStream* Open(char const* file, char const* mode) override {
        return mayRead(file) ? DefaultIOSystem::Open(file, mode) : nullptr;
    }
};

/// Numbers are metres whatever unit the file names, as the reader of the scene-graph library has it.
void leaveOutUnit(aiScene const& scene) {
    aiVector3D scale, place;
    aiQuaternion turn; // unit and axes are all that the importer puts there
    scene.mRootNode->mTransformation.Decompose(scale, turn, place);
    scene.mRootNode->mTransformation = aiMatrix4x4(turn.GetMatrix());
}

ReadResult readAssets(std::string const& path, std::string const& extension) {
    Assimp::Importer importer;
    importer.SetIOHandler(new GuardedFiles); // the importer deletes it
    importer.SetPropertyFloat(AI_CONFIG_PP_GSN_MAX_SMOOTHING_ANGLE, 45);
    aiScene const* const scene =
        importer.ReadFile(path, aiProcess_Triangulate | aiProcess_GenSmoothNormals | aiProcess_JoinIdenticalVertices |
                                    aiProcess_SortByPType | aiProcess_ValidateDataStructure);
    if (!scene || !scene->mRootNode) {
        std::string_view const fault = importer.GetErrorString();
        // None of its readers knows the first bytes.
        bool const isOther = fault.starts_with("No suitable reader");
        return isOther ? ReadResult(ReadResult::FILE_NOT_HANDLED) : ReadResult(std::string(fault));
    }
    if (extension == "dae")
        leaveOutUnit(*scene);
    osg::ref_ptr<osg::Node> const model = SceneConverter(*scene, osgDB::getFilePath(path)).convert(*scene->mRootNode);
    if (extension != "gltf" && extension != "glb" && extension != "dae")
        return model.get();
    osg::ref_ptr<osg::MatrixTransform> const upright =
        new osg::MatrixTransform(osg::Matrixd::rotate(osg::PI_2, osg::Vec3d(1, 0, 0))); // Y is up in these scenes
    upright->addChild(model);
    return upright.get();
}

} // namespace
} // namespace hyxOSG

extern "C" __attribute__((visibility("default"))) hyxOSG::AssetFileReader* const hyxReadAssets = &hyxOSG::readAssets;
