// Makes state sets of colours, opacity and pictures.
#include "reference/machinery/model_files/obj_materials.h"

#include "reference/machinery/model_files/model_picture.h"
#include "reference/machinery/model_files/text_scanner.h"
#include "reference/machinery/shading/surface_program.h"

#include <osg/BlendFunc>
#include <osg/Depth>
#include <osg/Material>

#include <algorithm>
#include <optional>

namespace hyxOSG {
namespace {

constexpr auto faces = osg::Material::FRONT_AND_BACK;

struct ObjMaterial {
    std::optional<osg::Vec4> ambient, diffuse, specular, emission;
    float shininess = 0, opacity = 1;
    std::string picture, normals;
};

osg::Vec4 colorAt(TextScanner& line) {
    osg::Vec4 color(0, 0, 0, 1);
    for (int i = 0; i < 3; ++i)
        color[i] = i > 0 && line.lineEnds() ? color[0] : line.number<float>(); // one number is a grey
    return color;
}

/// The file of a map, whose options (`-s 1 1 1`) come first.
std::string fileAt(TextScanner& line) {
    std::string_view rest = line.restOfLine();
    while (rest.starts_with('-')) {
        TextScanner options(rest);
        bool const flag = [&] {
            std::string_view const name = options.word();
            return name == "-clamp" || name == "-blendu" || name == "-blendv" || name == "-cc" || name == "-imfchan" ||
                   name == "-type";
        }();
        if (flag)
            options.word();
        else
            while (!options.lineEnds() &&
                   std::string_view("+-.0123456789").find(options.front()) != std::string_view::npos)
                options.word();
        rest = options.restOfLine();
    }
    return std::string(rest);
}

osg::ref_ptr<osg::StateSet> stateOf(ObjMaterial const& source, std::string const& folder) {
    osg::ref_ptr<osg::StateSet> const state = new osg::StateSet;
    osg::ref_ptr<osg::Material> const material = new osg::Material;
    osg::Vec4 const diffuse = source.diffuse.value_or(osg::Vec4(0.8f, 0.8f, 0.8f, 1));
    osg::Vec4 const black(0, 0, 0, 1);
    material->setDiffuse(faces, diffuse);
    material->setAmbient(faces, source.ambient.value_or(black) == black ? diffuse : *source.ambient);
    material->setSpecular(faces, source.specular.value_or(black));
    material->setEmission(faces, source.emission.value_or(black));
    material->setShininess(faces, std::clamp(source.shininess, 0.0f, 128.0f));
    if (source.opacity < 1) {
        material->setAlpha(faces, std::max(source.opacity, 0.0f));
        state->setAttributeAndModes(new osg::BlendFunc);
        state->setAttributeAndModes(new osg::Depth(osg::Depth::LESS, 0, 1, false));
        state->setRenderingHint(osg::StateSet::TRANSPARENT_BIN);
    }
    state->setAttributeAndModes(material);
    if (osg::ref_ptr<osg::Texture2D> const picture = modelPicture(source.picture, folder))
        state->setTextureAttributeAndModes(DIFFUSE_TEXTURE, picture);
    if (osg::ref_ptr<osg::Texture2D> const normals = modelPicture(source.normals, folder))
        setNormalMap(*state, *normals);
    return state;
}

void readProperty(ObjMaterial& material, std::string_view name, TextScanner& line) {
    if (name == "Ka")
        material.ambient = colorAt(line);
    else if (name == "Kd")
        material.diffuse = colorAt(line);
    else if (name == "Ks")
        material.specular = colorAt(line);
    else if (name == "Ke")
        material.emission = colorAt(line);
    else if (name == "Ns")
        material.shininess = line.number<float>();
    else if (name == "d")
        material.opacity = line.number<float>();
    else if (name == "Tr")
        material.opacity = 1 - line.number<float>();
    else if (name == "map_Kd")
        material.picture = fileAt(line);
    else if (name == "norm")
        material.normals = fileAt(line);
}

} // namespace

std::map<std::string, osg::ref_ptr<osg::StateSet>> readObjMaterials(std::string_view content,
                                                                    std::string const& folder) {
    std::map<std::string, ObjMaterial> materials;
    ObjMaterial* present = nullptr;
    for (TextScanner lines(content); !lines.atEnd(); lines.nextLine()) {
        std::string_view const name = lines.word();
        try {
            if (name == "newmtl")
                present = &materials[std::string(lines.restOfLine())];
            else if (present)
                readProperty(*present, name, lines);
        } catch (ModelFault const&) { // "d -halo 0.5", spectral curves
        }
    }
    std::map<std::string, osg::ref_ptr<osg::StateSet>> states;
    for (auto const& [name, material] : materials)
        states[name] = stateOf(material, folder);
    return states;
}

} // namespace hyxOSG
