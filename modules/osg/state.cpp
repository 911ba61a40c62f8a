// How nodes are drawn: state sets, materials, programs and uniforms.
#include "modules/osg/scene_graph_rows.h"

#include <osg/Material>
#include <osg/Program>
#include <osg/StateSet>
#include <osg/Texture>
#include <osg/Uniform>

#include <stdexcept>
#include <string>

namespace {

constexpr osg::Material::Face front = osg::Material::FRONT, both = osg::Material::FRONT_AND_BACK;

osg::Vec4f diffuse(osg::Material const& self) {
    return self.getDiffuse(front);
}

osg::Vec4f ambient(osg::Material const& self) {
    return self.getAmbient(front);
}

osg::Vec4f specular(osg::Material const& self) {
    return self.getSpecular(front);
}

osg::Vec4f emission(osg::Material const& self) {
    return self.getEmission(front);
}

float shininess(osg::Material const& self) {
    return self.getShininess(front);
}

void set_diffuse(osg::Material& self, osg::Vec4f const& color) {
    self.setDiffuse(both, color);
}

void set_ambient(osg::Material& self, osg::Vec4f const& color) {
    self.setAmbient(both, color);
}

void set_specular(osg::Material& self, osg::Vec4f const& color) {
    self.setSpecular(both, color);
}

void set_emission(osg::Material& self, osg::Vec4f const& color) {
    self.setEmission(both, color);
}

void set_shininess(osg::Material& self, float value) {
    self.setShininess(both, value);
}

// Ambient and diffuse colours are those of the vertices, or the material's own.
void set_vertex_colors(osg::Material& self, bool decide) {
    self.setColorMode(decide ? osg::Material::AMBIENT_AND_DIFFUSE : osg::Material::OFF);
}

osg::Material* material(osg::StateSet& self) {
    return static_cast<osg::Material*>(self.getAttribute(osg::StateAttribute::MATERIAL));
}

osg::StateAttribute* attribute(osg::StateSet& self, int type) {
    return self.getAttribute(static_cast<osg::StateAttribute::Type>(type));
}

osg::Texture* texture(osg::StateSet& self, unsigned int unit) {
    return static_cast<osg::Texture*>(self.getTextureAttribute(unit, osg::StateAttribute::TEXTURE));
}

void set_attribute(osg::StateSet& self, osg::StateAttribute& value) {
    self.setAttributeAndModes(&value);
}

// The scene graph keeps a list as long as the highest unit.
void set_texture(osg::StateSet& self, unsigned int unit, osg::StateAttribute& value) {
    constexpr unsigned int units = 32; // that graphics cards have for a program
    if (unit >= units)
        throw std::out_of_range("there is no texture unit " + std::to_string(unit) + ", the last one is " +
                                std::to_string(units - 1));
    self.setTextureAttributeAndModes(unit, &value);
}

void set_mode(osg::StateSet& self, unsigned int mode, unsigned int value) {
    self.setMode(mode, value);
}

unsigned int mode(osg::StateSet const& self, unsigned int mode) {
    return self.getMode(mode);
}

void add_uniform(osg::StateSet& self, osg::Uniform& uniform) {
    self.addUniform(&uniform);
}

osg::Uniform* uniform(osg::StateSet& self, std::string const& name) {
    return self.getUniform(name);
}

bool is_transparent(osg::StateSet const& self) {
    return self.getRenderingHint() == osg::StateSet::TRANSPARENT_BIN;
}

osg::Uniform* float_uniform(std::string const& name, float value) {
    return new osg::Uniform(name.c_str(), value);
}

osg::Uniform* vector_uniform(std::string const& name, osg::Vec4f const& value) {
    return new osg::Uniform(name.c_str(), value);
}

float float_value(osg::Uniform const& self) {
    float value = 0;
    if (!self.get(value))
        throw std::invalid_argument("uniform \"" + self.getName() + "\" holds no float");
    return value;
}

int int_value(osg::Uniform const& self) {
    int value = 0;
    if (!self.get(value))
        throw std::invalid_argument("uniform \"" + self.getName() + "\" holds no int");
    return value;
}

bool add_shader(osg::Program& self, osg::Shader* shader) {
    return shader && self.addShader(shader);
}

osg::Shader* shader(int type, std::string const& source) {
    return new osg::Shader(static_cast<osg::Shader::Type>(type), source);
}

constexpr Declared state_rows[] = {
    SHARED_CLASS_ROWS(osg::StateAttribute, StateAttribute),
    FUNCTION(new_StateSet, NEW(osg::StateSet, ())),
    FUNCTION(StateSet_setMode, ADAPTER(osg::StateSet, setMode, set_mode, (unsigned int, unsigned int))),
    FUNCTION(StateSet_getMode, ADAPTER(osg::StateSet, getMode, mode, (unsigned int) const)),
    FUNCTION(StateSet_getAttribute, SHARED(ADAPTER(osg::StateSet, getAttribute, attribute, (int)))),
    FUNCTION(StateSet_setAttributeAndModes,
             ADAPTER(osg::StateSet, setAttributeAndModes, set_attribute, (osg::StateAttribute&))),
    FUNCTION(StateSet_getMaterial, SHARED(ADAPTER(osg::StateSet, getMaterial, material, ()))),
    FUNCTION(StateSet_getTexture, SHARED(ADAPTER(osg::StateSet, getTexture, texture, (unsigned int)))),
    FUNCTION(StateSet_setTextureAttributeAndModes,
             ADAPTER(osg::StateSet, setTextureAttributeAndModes, set_texture, (unsigned int, osg::StateAttribute&))),
    FUNCTION(StateSet_addUniform, ADAPTER(osg::StateSet, addUniform, add_uniform, (osg::Uniform&))),
    FUNCTION(StateSet_getUniform, SHARED(ADAPTER(osg::StateSet, getUniform, uniform, (std::string const&)))),
    FUNCTION(StateSet_isTransparent, ADAPTER(osg::StateSet, isTransparent, is_transparent, () const)),
    SHARED_CLASS_ROWS(osg::StateSet, StateSet),

    FUNCTION(new_Material, NEW(osg::Material, ())),
    FUNCTION(Material_getDiffuse, ADAPTER(osg::Material, getDiffuse, diffuse, () const)),
    FUNCTION(Material_setDiffuse, ADAPTER(osg::Material, setDiffuse, set_diffuse, (osg::Vec4f const&))),
    FUNCTION(Material_getAmbient, ADAPTER(osg::Material, getAmbient, ambient, () const)),
    FUNCTION(Material_setAmbient, ADAPTER(osg::Material, setAmbient, set_ambient, (osg::Vec4f const&))),
    FUNCTION(Material_getSpecular, ADAPTER(osg::Material, getSpecular, specular, () const)),
    FUNCTION(Material_setSpecular, ADAPTER(osg::Material, setSpecular, set_specular, (osg::Vec4f const&))),
    FUNCTION(Material_getEmission, ADAPTER(osg::Material, getEmission, emission, () const)),
    FUNCTION(Material_setEmission, ADAPTER(osg::Material, setEmission, set_emission, (osg::Vec4f const&))),
    FUNCTION(Material_getShininess, ADAPTER(osg::Material, getShininess, shininess, () const)),
    FUNCTION(Material_setVertexColors, ADAPTER(osg::Material, setVertexColors, set_vertex_colors, (bool))),
    FUNCTION(Material_setShininess, ADAPTER(osg::Material, setShininess, set_shininess, (float))),
    SHARED_CLASS_ROWS(osg::Material, Material),

    FUNCTION(new_Uniform, MAKE(osg::Uniform, float_uniform, (std::string const&, float)),
             MAKE(osg::Uniform, vector_uniform, (std::string const&, osg::Vec4f const&))),
    FUNCTION(Uniform_getFloat, ADAPTER(osg::Uniform, getFloat, float_value, () const)),
    FUNCTION(Uniform_getInt, ADAPTER(osg::Uniform, getInt, int_value, () const)),
    SHARED_CLASS_ROWS(osg::Uniform, Uniform),

    FUNCTION(new_Shader, MAKE(osg::Shader, shader, (int, std::string const&))),
    FUNCTION(Shader_getShaderSource, METHOD(osg::Shader, getShaderSource, () const)),
    SHARED_CLASS_ROWS(osg::Shader, Shader),
    FUNCTION(new_Program, NEW(osg::Program, ())),
    FUNCTION(Program_addShader, ADAPTER(osg::Program, addShader, add_shader, (osg::Shader*))),
    FUNCTION(Program_getNumShaders, METHOD(osg::Program, getNumShaders, () const)),
    SHARED_CLASS_ROWS(osg::Program, Program),
};

} // namespace

ROWS(state_rows);
