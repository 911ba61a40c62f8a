// Makes labels, and takes them away.
#include "platform/hyxOSG/visuals/text_visuals.h"

#include "platform/hyxOSG/application/example_application.h"
#include "platform/hyxOSG/nodes/geometry_node.h"
#include "platform/hyxOSG/visuals/finders.h"
#include "reference/hyx/values/number_checks.h"
#include "reference/machinery/meshes/conversions.h"
#include "reference/machinery/meshes/line_meshes.h"
#include "reference/machinery/shading/node_state.h"
#include "reference/machinery/text/fonts.h"
#include "reference/machinery/text/lettering.h"

#include <osg/Geode>

#include <cmath>
#include <stdexcept>

namespace hyxOSG {

osg::Geode* createText(std::string const& text, hyx::Vec3 const& position, hyx::Vec4f const& color, double size) {
    if (!(size > 0) || !std::isfinite(size))
        throw std::invalid_argument("the size of a text must be a positive number of metres");
    osg::ref_ptr<Lettering> const letters = new Lettering;
    letters->setTypeface(findFont(usualFont));
    letters->write(text);
    letters->setCharacterSize(static_cast<float>(size));
    letters->setPosition(toOsg(hyx::requireFinite(position, "the place of a text")));
    letters->setColor(toOsg(requireColor(color)));
    letters->setAlignment(osgText::Text::CENTER_BOTTOM);
    letters->setAxisAlignment(osgText::Text::SCREEN);
    osg::ref_ptr<osg::Geode> geode = new osg::Geode;
    geode->addDrawable(letters);
    geode->setNodeMask(~ExampleApplication::CASTS_SHADOWS_MASK); // letters turned to the eye would cast torn ones
    osg::StateSet& state = *geode->getOrCreateStateSet();
    state.setMode(GL_LIGHTING, setByScript & ~osg::StateAttribute::ON);
    state.setMode(GL_CULL_FACE, setByScript & ~osg::StateAttribute::ON);
    return geode.release();
}

bool addText(hyxCollide::Geometry const* geometry, osg::Group* root, std::string const& text,
             hyx::Vec3 const& localPosition, hyx::Vec4f const& color, double size) {
    osg::ref_ptr<osg::Geode> const label = createText(text, localPosition, color, size);
    GeometryNode* const node = findGeometryNode(geometry, root);
    return node && node->addChild(label);
}

bool removeText(hyxCollide::Geometry const* geometry, osg::Group* root, std::size_t index) {
    osgText::Text* const text = findText(geometry, root, index);
    osg::Node* const geode = text && text->getNumParents() ? text->getParent(0) : nullptr;
    GeometryNode* const node = findGeometryNode(geometry, root);
    return geode && node && node->removeChild(geode);
}

} // namespace hyxOSG
