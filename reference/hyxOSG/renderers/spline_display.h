// What the two spline renderers share: which spline is drawn, how, and when anew.
#pragma once

#include "platform/hyx/values/vec4f.h"
#include "reference/hyxOSG/renderers/frame_update.h"
#include "reference/hyxOSG/renderers/tube_drawing.h"

#include <memory>

namespace hyxOSG {

class SplineDisplay {
public:
    /// Draws `spline`, which may be null, under `parent`. Throws std::invalid_argument for a null parent.
    SplineDisplay(hyxUtil::Spline* spline, osg::Group* parent, std::unique_ptr<TubeDrawing> drawing);

    void draw();
    /// Throws std::invalid_argument unless there is one value for each control point.
    void draw(hyx::RealVector const& values);
    /// Draws anew when the spline has changed. Values for another number of points are dropped.
    void follow();

    void remove() { m_shown.remove(); }

    void setSpline(hyxUtil::Spline* spline);

    hyxUtil::Spline* spline() const { return m_spline.get(); }

    void setRadius(double radius);

    double radius() const { return m_radius; }

    void setSegmentsPerMetre(double count);

    double segmentsPerMetre() const { return m_perMetre; }

    void setColor(hyx::Vec4f const& color);

    hyx::Vec4f color() const { return m_color; }

private:
    hyx::ref_ptr<hyxUtil::Spline> m_spline;
    std::unique_ptr<TubeDrawing> m_drawing;
    hyx::RealVector m_values;
    double m_radius = 0.02;
    double m_perMetre = 10;
    hyx::Vec4f m_color = hyx::Vec4f(0.7f, 0.7f, 0.7f, 1);
    hyx::UInt m_drawnRevision = 0;
    ShownNode m_shown;
};

} // namespace hyxOSG
