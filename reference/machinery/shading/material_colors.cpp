// Keeps what is lit and what lies in the shade of one hue.
#include "reference/machinery/shading/material_colors.h"

#include <osg/ValueObject>

namespace hyxOSG {
namespace {

char const* const ambientIsSet = "hyx_ambientIsSet";

} // namespace

osg::Material& defaultMaterial() {
    static osg::ref_ptr<osg::Material> const material = [] {
        osg::ref_ptr<osg::Material> made = new osg::Material;
        made->setAmbient(bothFaces, osg::Vec4(0.8f, 0.8f, 0.8f, 1));
        made->setDiffuse(bothFaces, osg::Vec4(0.8f, 0.8f, 0.8f, 1));
        made->setSpecular(bothFaces, osg::Vec4(0.2f, 0.2f, 0.2f, 1));
        made->setShininess(bothFaces, 32);
        return made;
    }();
    return *material;
}

osg::ref_ptr<osg::LightModel> createLightModel(bool twoSided) {
    osg::ref_ptr<osg::LightModel> model = new osg::LightModel;
    model->setAmbientIntensity(osg::Vec4(0.3f, 0.3f, 0.3f, 1));
    model->setColorControl(osg::LightModel::SEPARATE_SPECULAR_COLOR);
    model->setTwoSided(twoSided);
    return model;
}

osg::ref_ptr<osg::Material> copyOf(osg::Material const& material) {
    return new osg::Material(material, osg::CopyOp::DEEP_COPY_USERDATA);
}

void setDiffuse(osg::Material& material, osg::Vec4 const& color) {
    material.setDiffuse(bothFaces, color);
    bool set = false;
    if (!material.getUserValue(ambientIsSet, set))
        material.setAmbient(bothFaces, color);
}

void setAmbient(osg::Material& material, osg::Vec4 const& color) {
    material.setAmbient(bothFaces, color);
    material.setUserValue(ambientIsSet, true);
}

} // namespace hyxOSG
