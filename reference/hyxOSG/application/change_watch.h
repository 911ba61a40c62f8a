// Tells whether there is anything new to draw.
#pragma once

#include <chrono>
#include <cstdint>

namespace osg {
class Camera;
class Node;
} // namespace osg

namespace hyxSDK {
class Simulation;
} // namespace hyxSDK

namespace hyxOSG {

/// Compares what a picture shows with the picture before: the view, the poses of the bodies, the transforms, masks,
/// arrays, texts and uniforms of the scene. State that it does not compare, such as a material that a script has
/// changed, shows with the picture that is due in any case.
class ChangeWatch {
public:
    using Clock = std::chrono::steady_clock;

    /// Whether a picture is due: something has changed within the last moment, or the last picture is half a second
    /// old. `input` is a count of the events so far.
    bool isDue(osg::Camera& camera, osg::Node& scene, hyxSDK::Simulation const& simulation, std::uint64_t input);

private:
    std::uint64_t m_seen = 0;
    Clock::time_point m_changed{};
    Clock::time_point m_drawn{};
    Clock::duration m_cost{}; ///< of drawing the last picture, with what the loop did besides
    bool m_justDrawn = false;
};

} // namespace hyxOSG
