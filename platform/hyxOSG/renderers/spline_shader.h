// Many tube pieces in one draw, bent on the graphics card.
#pragma once

#include "platform/hyx/values/quat.h"
#include "platform/hyx/values/vec2.h"
#include "platform/hyx/values/vec3.h"

#include <osg/Array>
#include <osg/Geode>
#include <osg/Geometry>
#include <osg/Program>
#include <osg/Uniform>

#include <cstddef>

namespace hyxOSG {

/// Round tube pieces drawn by a geometry program: each element is a line with a frame and a radius at both ends.
/// A node of the scene graph, to be put under a group. Per frame: `resetCounters`, an `add` for each piece, `update`.
class SplineShader : public osg::Geode {
public:
    /// Room for `capacity` elements; more are taken by growing.
    explicit SplineShader(std::size_t capacity = 256);

    /// Adds a straight piece from `begin` to `end` of `radius` metres. `values` are the red shifts, 0 to 1, at both
    /// ends.
    void add(hyx::Vec3 const& begin, hyx::Vec3 const& end, double radius, hyx::Vec2 const& values = hyx::Vec2());
    /// Adds a straight piece of `length` metres along the Z axis of `rotation` that begins at `position`; `value` is
    /// its red shift.
    void add(hyx::Vec3 const& position, hyx::Quat const& rotation, double radius, double length, double value = 0);
    /// Adds one station of a continuous tube: its place, frame (Z along the tube), radius in metres and red shift. Each
    /// station is joined to the one before, unless `length` is 0, which starts a new tube.
    void add2(hyx::Vec3 const& position, hyx::Quat const& rotation, double radius, double length, double value);
    /// Shows what was added since `resetCounters`.
    void update();
    /// Starts anew with no elements; what is shown stays until `update`.
    void resetCounters();
    /// Shows only the first `count` elements; at most what was added.
    void setNumActiveElements(std::size_t count);
    /// Whether the red shift of the elements colours them, true at first.
    void setUseRedShiftScale(bool use);

    /// The program that bends the tube.
    osg::Program* getProgram();
    /// How many sides a tube has, 12 at first and 4 to 16.
    osg::Uniform* getCircleResolutionUniform();
    /// Colour of the tubes where the red shift is 0.
    osg::Uniform* getCylinderColorUniform();
    /// The direction, in the frame of an element, that the corners of its circle are counted from; X at first.
    osg::Uniform* getCircleNormalUniform();
    /// Places of the stations, two for each element.
    osg::Vec3Array* getVertexArray();
    /// Rotations of the stations as quaternions, sent in place of colours.
    osg::Vec4Array* getQuatsInColorArray();
    /// Radii of the stations in metres.
    osg::FloatArray* getRadiusArray();

protected:
    ~SplineShader() override = default;

private:
    struct Station {
        osg::Vec3 position;
        osg::Vec4 rotation;
        float radius = 0;
        float value = 0;
    };

    void addElement(Station const& from, Station const& to);
    void write(std::size_t place, Station const& station);
    void createState();

    osg::ref_ptr<osg::Geometry> m_geometry;
    osg::ref_ptr<osg::DrawArrays> m_lines;
    osg::ref_ptr<osg::Vec3Array> m_vertices;
    osg::ref_ptr<osg::Vec4Array> m_rotations;
    osg::ref_ptr<osg::FloatArray> m_radii;
    osg::ref_ptr<osg::FloatArray> m_values;
    osg::ref_ptr<osg::Program> m_program;
    osg::ref_ptr<osg::Uniform> m_circleResolution;
    osg::ref_ptr<osg::Uniform> m_cylinderColor;
    osg::ref_ptr<osg::Uniform> m_circleNormal;
    osg::ref_ptr<osg::Uniform> m_useRedShift;
    std::size_t m_added = 0; ///< elements since the last reset
    Station m_last;
    bool m_joins = false; ///< whether the next station is joined to `m_last`
};

} // namespace hyxOSG
