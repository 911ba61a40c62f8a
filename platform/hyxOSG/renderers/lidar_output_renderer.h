// Draws what a lidar has hit as points coloured by the returned intensity.
#pragma once

#include "platform/hyx/objects/ref_ptr.h"
#include "platform/hyxOSG/renderers/lidar_output_renderer_legend_point.h"

#include <osg/Group>
#include <osg/Vec4>
#include <osg/Vec4f>

#include <functional>
#include <memory>

namespace hyxSensor {
class Lidar;
} // namespace hyxSensor

namespace hyxOSG {

class LidarOutputRendererColorFunctionCallback;
class ScalarColorMap;

/// A scene node that shows the hit points of a lidar. Put it under the scene root: every update traversal takes the
/// lidar's new output, if there is any, so no further call is needed. All points that are shown lie in one vertex
/// buffer; their colours are computed when the output or the colouring changes, never per frame.
///
/// Points with a coordinate that is not finite are left out. An intensity that is not a number counts as 0.
class LidarOutputRenderer : public osg::Group {
public:
    /// How an intensity becomes a colour.
    struct IntensityState {
        /// From the scaled intensity to a colour of components 0 to 1.
        using ColorFunc = std::function<osg::Vec4f(float)>;

        /// The ready-made colourings, named and numbered as ScalarColorMap::ColorRangePreset; each spans the
        /// scaled intensities 0 to 1.
        enum Mode {
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
    };

    /// \param lidar the lidar whose output is shown; kept alive by the renderer. Null: nothing is shown.
    /// \param alwaysOnTop draw the points over everything in front of them
    LidarOutputRenderer(hyxSensor::Lidar const* lidar, bool alwaysOnTop = false);

    /// Shows the same lidar with the same settings; the points shown so far are not copied.
    LidarOutputRenderer(LidarOutputRenderer const& other);

    /// Size of a hit point relative to the usual three pixels. Default 1.
    /// \throws std::invalid_argument unless the scale is positive and finite
    void setHitPointScale(float scale);
    /// Size of a hit point relative to the usual three pixels.
    float getHitPointScale() const;

    /// Factor on every intensity before it is turned into a colour. Default 1.
    /// \throws std::invalid_argument unless the scale is finite
    void setIntensityScale(float scale);
    /// Factor on every intensity before it is turned into a colour.
    float getIntensityScale() const;

    /// Simulated seconds that a hit point stays visible. Default 0: only the latest output is shown.
    /// \throws std::invalid_argument for a negative value or one that is not a number
    void setHitPointLifetime(float lifetime);
    /// Simulated seconds that a hit point stays visible.
    float getHitPointLifetime() const;

    /// Whether the points are drawn over everything in front of them. Default false.
    void setHitPointsAlwaysOnTop(bool alwaysOnTop);
    /// Whether the points are drawn over everything in front of them.
    bool isAlwaysRenderedOnTop() const;

    /// Colours by one of the ready-made colourings; a new renderer uses RAINBOW.
    /// \throws std::invalid_argument for an unknown mode
    void setIntensityColorFunctionFromMode(IntensityState::Mode mode);

    /// Colours linearly from `low` at intensity 0 to `high` at `maxIntensity` and above.
    /// \throws std::invalid_argument unless `maxIntensity` is positive and finite
    void setIntensityColorFunctionFromInterpolation(osg::Vec4 low, osg::Vec4 high, float maxIntensity);

    /// Colours by a legend: linearly between neighbouring points, with the end colours beyond the first and the last.
    /// Points are sorted by intensity first; those whose intensity is not finite are ignored; of several with one
    /// intensity the first and the last make a sharp edge. An empty legend draws everything white.
    /// \param legend the points; their intensities are fractions of `maxIntensity`
    /// \param maxIntensity the intensity that a legend point of intensity 1 stands for
    /// \throws std::invalid_argument unless `maxIntensity` is positive and finite
    void setIntensityColorFunctionFromLegend(LidarOutputRendererLegend const& legend, float maxIntensity);

    /// Colours by any function. It is called once for each point when the point is first shown, and again for all
    /// points that are shown after the colouring or the intensity scale has changed.
    /// \throws std::invalid_argument for an empty function
    void setIntensityColorFunction(IntensityState::ColorFunc function);

    /// Colours by a copy of the callback's colour function, under the rule of setIntensityColorFunction. Shades
    /// of gray take over when the callback ends.
    /// \throws std::invalid_argument for null
    void setIntensityColorFunctionReplacement(LidarOutputRendererColorFunctionCallback* callback);

    /// The colours over the intensities that the lidar measured, before they are scaled: for a legend up to its last
    /// point or `maxIntensity`, for others where the scaled intensity is 0 to 1. A function is asked at even places.
    /// The same object until they change; writing to it changes no picture. Passes on what the function throws.
    hyx::ref_ptr<ScalarColorMap> getColorScale() const;

    void traverse(osg::NodeVisitor& visitor) override;

protected:
    ~LidarOutputRenderer() override;

private:
    struct Implementation;
    std::unique_ptr<Implementation> m_implementation;
};

} // namespace hyxOSG
