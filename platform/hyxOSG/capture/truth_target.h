// What a camera knows of each pixel besides its colour.
#pragma once

#include "platform/hyxOSG/capture/render_target.h"

#include <cstddef>
#include <cstdint>
#include <memory>

namespace hyxOSG {

/// A render target whose pixels tell distance, normal, body and motion of the surface that is seen, in one pass.
///
/// The axes of the camera are those of computer vision: x to the right, y down, z along the view. Bodies have the
/// identities of `hyx::bodyIdentity`. What is transparent counts as solid. Of what own programs draw (ball
/// impostors, shader splines, point clouds) only the distance is known.
class TruthTarget : public RenderTarget {
public:
    /// \param width in pixels, 1 to 16384.
    /// \param height likewise.
    TruthTarget(hyx::UInt width, hyx::UInt height);

    /// Takes over where the bodies and the camera stand, and where they stood when this was called last. Call it
    /// before each frame, with the bodies' nodes below the target's camera.
    void prepare();

    /// Where the results of the last frame go: rows from the top, null for what is not wanted.
    struct Channels {
        float* depth = nullptr;   ///< metres along the view; infinite where nothing is
        float* normals = nullptr; ///< three numbers a pixel, unit vectors on the side that is seen; 0 where nothing is
        float* flow = nullptr;    ///< two numbers a pixel: where its surface came from, in pixels x and y
        std::uint32_t* identities = nullptr; ///< of the body, 0 for what is none
    };

    void read(Channels const& channels) const;

    /// A place between pixels: the middle of the first one is (0, 0).
    struct Place {
        double row;
        double column;
    };

    /// What rays through any places meet, in their order: round forms exactly, others as the nearest pixel shows them.
    void read(Channels const& channels, Place const* places, std::size_t count) const;

protected:
    ~TruthTarget() override;
    void finishFrame(osg::RenderInfo& renderInfo) override;

private:
    struct Implementation;
    std::unique_ptr<Implementation> m_implementation;
};

} // namespace hyxOSG
