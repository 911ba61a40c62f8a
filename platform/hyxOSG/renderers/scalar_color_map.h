// Colours for scalar values.
#pragma once

#include "platform/hyx/objects/referenced.h"
#include "platform/hyx/values/types.h"
#include "platform/hyx/values/vec4f.h"
#include "platform/hyxRender/color.h"

#include <osg/Vec4f>
#include <osg/ref_ptr>
#include <osgSim/ColorRange>

#include <memory>

namespace hyxOSG {

/// Maps an interval of values to evenly spaced colours, with linear transitions between neighbours.
class ScalarColorMap : public hyx::Referenced {
public:
    /// Well-known colour tables, from the lowest to the highest value.
    enum ColorRangePreset {
        RAINBOW = 0,
        COOLWARM = 1,
        VIRIDIS = 2,
        INFERNO = 3,
        PLASMA = 4,
        GRAYSCALE = 5,
        BLUE_WHITE_RED = 6,
        CIVIDIS = 7,
        BONE = 8,
        COPPER = 9,
        AFMHOT = 10,
    };

    /// The RAINBOW preset over 0 to 1.
    ScalarColorMap();

    /// \param colors from the lowest to the highest value, evenly spaced; an empty list gives white
    /// \param minScalar value of the first colour
    /// \param maxScalar value of the last colour
    /// \throws std::invalid_argument for limits that are not finite or minScalar > maxScalar
    ScalarColorMap(hyxRender::ColorVector const& colors, hyx::Real minScalar, hyx::Real maxScalar);

    /// \param preset the colours
    /// \param minScalar value of the first colour
    /// \param maxScalar value of the last colour
    /// \throws std::invalid_argument for an unknown preset, limits that are not finite or minScalar > maxScalar
    ScalarColorMap(ColorRangePreset preset, hyx::Real minScalar, hyx::Real maxScalar);

    /// Takes the colours of a preset; the interval stays.
    /// \throws std::invalid_argument for an unknown preset
    void setColorsFromPreset(ColorRangePreset preset);

    /// Takes these colours, evenly spaced over the interval; an empty list gives white.
    void setColors(hyxRender::ColorVector const& colors);
    /// A copy of the colours, from the lowest to the highest value.
    hyxRender::ColorVector getColors() const;

    /// Value of the first colour; raises the value of the last one when that was lower.
    /// \throws std::invalid_argument for a value that is not finite
    void setMinScalar(hyx::Real minScalar);
    /// Value of the last colour; lowers the value of the first one when that was higher.
    /// \throws std::invalid_argument for a value that is not finite
    void setMaxScalar(hyx::Real maxScalar);
    /// Values of the first and the last colour.
    /// \throws std::invalid_argument for limits that are not finite or minScalar > maxScalar
    void setScalarInterval(hyx::Real minScalar, hyx::Real maxScalar);
    /// Value of the first colour.
    hyx::Real getMinScalar() const;
    /// Value of the last colour.
    hyx::Real getMaxScalar() const;

    /// The colour of a value.
    /// \param scalar the value; one that is not a number gives a fully transparent black
    /// \param clamp true: values beyond the interval get the end colours; false: fully transparent black
    hyx::Vec4f getColor(hyx::Real scalar, bool clamp = true) const;
    /// As getColor, as a scene-graph vector.
    osg::Vec4f getColorOSG(hyx::Real scalar, bool clamp = true) const;

    /// The same colours and interval as a colour range of the scene graph; a new one after every change of the map.
    osg::ref_ptr<osgSim::ColorRange> getOsgColorRange() const;

protected:
    ~ScalarColorMap() override;

private:
    struct Implementation;
    std::unique_ptr<Implementation> m_implementation;
};

} // namespace hyxOSG
