// Shows grains as stones, in one draw for each kind.
#include "reference/hyxOSG/renderers/soil_meshes.h"

#include "platform/hyxOSG/visuals/read_file.h"
#include "reference/hyxOSG/renderers/surface_mesh.h"
#include "reference/machinery/meshes/conversions.h"
#include "reference/machinery/model_files/guarded_reading.h"
#include "reference/machinery/shading/material_colors.h"

#include <osg/Material>
#include <osgDB/FileUtils>

#include <cmath>
#include <numbers>
#include <stdexcept>

namespace hyxOSG {

namespace {

// A flattened ball of few corners, pushed in and out a little by a fixed rule so that no grain looks turned on a lathe.
osg::ref_ptr<osg::Node> makeStone() {
    constexpr unsigned int rows = 5, columns = 7;
    SurfaceMesh stone("stone");
    auto const add = [&](double polar, double azimuth, unsigned int number) {
        double const radius = 0.85 + 0.15 * std::sin(12.9898 * number);
        stone.positions().push_back(osg::Vec3(osg::Vec3d(std::sin(polar) * std::cos(azimuth),
                                                         std::sin(polar) * std::sin(azimuth), 0.8 * std::cos(polar)) *
                                              radius));
    };
    unsigned int number = 0;
    add(0, 0, number++);
    for (unsigned int row = 1; row < rows; ++row)
        for (unsigned int column = 0; column < columns; ++column)
            add(std::numbers::pi * row / rows, 2 * std::numbers::pi * column / columns, number++);
    add(std::numbers::pi, 0, number++);
    auto const at = [&](unsigned int row, unsigned int column) {
        return row == 0 ? 0 : row == rows ? number - 1 : 1 + (row - 1) * columns + column % columns;
    };
    for (unsigned int row = 0; row < rows; ++row)
        for (unsigned int column = 0; column < columns; ++column) {
            unsigned int const a = at(row, column), b = at(row + 1, column), c = at(row + 1, column + 1),
                               d = at(row, column + 1);
            for (unsigned int corner : {a, b, c})
                stone.triangles().push_back(corner);
            for (unsigned int corner : {a, c, d})
                stone.triangles().push_back(corner);
        }
    stone.computeNormals();
    osg::ref_ptr<osg::Material> const material = new osg::Material;
    setDiffuse(*material, osg::Vec4(0.5f, 0.4f, 0.3f, 1));
    stone.node()->getOrCreateStateSet()->setAttributeAndModes(material);
    return stone.node();
}

} // namespace

SoilMeshes::SoilMeshes() {
    m_group->setName("soil meshes");
    m_group->getOrCreateStateSet()->setMode(GL_NORMALIZE, osg::StateAttribute::ON);
    load("", "");
}

void SoilMeshes::load(std::string const& model, std::string const& texture) {
    osg::ref_ptr<osg::Node> const mesh = model.empty() ? makeStone() : osg::ref_ptr<osg::Node>(readNodeFile(model));
    if (!mesh)
        throw std::runtime_error("the model of soil grains cannot be read: " + model);
    osg::ref_ptr<osg::Image> const image = texture.empty() ? nullptr : readPicture(osgDB::findDataFile(texture)).thing;
    if (!texture.empty() && !image)
        throw std::runtime_error("the texture of soil grains cannot be read: " + texture);
    osg::StateSet* const state = m_group->getOrCreateStateSet();
    if (image) {
        osg::ref_ptr<osg::Texture2D> const surface = new osg::Texture2D(image);
        surface->setResizeNonPowerOfTwoHint(false);
        state->setTextureAttributeAndModes(0, surface);
    } else {
        state->removeTextureAttribute(0, osg::StateAttribute::TEXTURE);
    }
    osg::BoundingSphere const bound = mesh->getBound();
    double const radius = bound.radius() > 0 ? bound.radius() : 1;
    m_mesh = mesh;
    m_toUnit = osg::Matrixd::translate(-bound.center()) * osg::Matrixd::scale(1 / radius, 1 / radius, 1 / radius);
    clear();
}

void SoilMeshes::clear() {
    m_group->removeChildren(0, m_group->getNumChildren());
}

void SoilMeshes::update(hyx::ParticleSystem const& grains, hyx::Vec3 const& origin) {
    std::vector<hyx::Particle> const& particles = grains.getParticles();
    auto const count = static_cast<unsigned int>(particles.size());
    if (m_group->getNumChildren() > count)
        m_group->removeChildren(count, m_group->getNumChildren() - count);
    while (m_group->getNumChildren() < count) {
        osg::ref_ptr<osg::MatrixTransform> const place = new osg::MatrixTransform;
        place->setDataVariance(osg::Object::DYNAMIC);
        place->addChild(m_mesh);
        m_group->addChild(place);
    }
    for (unsigned int i = 0; i < count; ++i) {
        hyx::Particle const& particle = particles[i];
        static_cast<osg::MatrixTransform*>(m_group->getChild(i))
            ->setMatrix(m_toUnit * osg::Matrixd::scale(particle.radius, particle.radius, particle.radius) *
                        osg::Matrixd::rotate(toOsg(particle.rotation)) *
                        osg::Matrixd::translate(toOsg(particle.position - origin)));
    }
}

} // namespace hyxOSG
