// Darkens the places that things around them hide from the sky: where bodies touch, in corners and in grooves.
#pragma once

#include <osg/Drawable>
#include <osg/Program>

namespace hyxOSG::decorator {

/// Works on the depths of the picture so far, between what is opaque and what one sees through. It reaches a
/// eighteenth of the picture's height around each pixel. Drivers without programs leave it out, and so do passes with
/// programs of their own.
class ContactShade : public osg::Drawable {
public:
    ContactShade();

    osg::BoundingBox computeBoundingBox() const override { return {}; } // takes part in no view

    void drawImplementation(osg::RenderInfo& info) const override;

private:
    osg::ref_ptr<osg::Program> m_program;
};

} // namespace hyxOSG::decorator
