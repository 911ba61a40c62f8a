// Round shapes in as many facets as their picture needs.
#pragma once

#include <osg/Geode>
#include <osg/Geometry>

#include <functional>
#include <map>

namespace hyxOSG {

/// A geode that draws a round shape finer or coarser, by the pixels that it covers: so that its outline stays within a
/// fifth of a pixel of the true one at detail 1. Everything else that walks the scene (picking, outlines, shadow
/// volumes, copies) meets the one mesh of the detail that was asked for.
class RoundForm : public osg::Geode {
public:
    /// \param make a mesh of so many segments around, with a largest radius of 1 around the y axis
    RoundForm(unsigned int segments, std::function<osg::ref_ptr<osg::Geometry>(unsigned int)> make);

    void traverse(osg::NodeVisitor& visitor) override;
    void resizeGLObjectBuffers(unsigned int contexts) override;
    void releaseGLObjects(osg::State* state) const override;

private:
    osg::Geometry* meshFor(double pixels);

    unsigned int m_segments;
    std::function<osg::ref_ptr<osg::Geometry>(unsigned int)> m_make;
    std::map<unsigned int, osg::ref_ptr<osg::Geometry>> m_others; ///< by their segments; made when first drawn
};

/// While one lives, all forms are drawn in the detail that was asked for: for shadows that are made from the meshes.
class AskedDetail {
public:
    AskedDetail();
    ~AskedDetail();
    AskedDetail(AskedDetail const&) = delete;
    AskedDetail& operator=(AskedDetail const&) = delete;
};

} // namespace hyxOSG
