// Drawing a scene anywhere but into a window.
#pragma once

#include "platform/hyx/objects/referenced.h"
#include "platform/hyx/values/types.h"
#include "platform/hyx/values/vec2.h"
#include "platform/hyx/values/vec2u.h"
#include "platform/hyx/values/vec3.h"

#include <osg/Camera>
#include <osg/Texture2D>

#include <memory>

namespace hyxOSG {

class ImageCaptureBase;

/// A camera that draws off-screen, before the main camera, into a frame buffer of its own size.
///
/// Give its camera the nodes to draw (the application's `addRenderTarget` does that and puts the camera into the
/// scene). The view is the camera's own, or follows a reference camera. An image capture takes its images from this
/// target.
class RenderTarget : public hyx::Referenced {
public:
    /// What is drawn into the result; the numbers are those of the scene-graph camera.
    enum BufferComponent : int { DEPTH_BUFFER = 0, COLOR_BUFFER = 3 };

    /// The pixels of the result; the numbers are those of OpenGL.
    enum TextureFormat : int { DEPTH_COMPONENT = 0x1902, RGB = 0x1907, RGBA = 0x1908 };

    /// How the near and far planes follow what is drawn; the numbers are those of the scene-graph camera.
    enum ComputeNearFarMode : int {
        DO_NOT_COMPUTE_NEAR_FAR = 0,
        COMPUTE_NEAR_FAR_USING_BOUNDING_VOLUMES = 1,
        COMPUTE_NEAR_FAR_USING_PRIMITIVES = 2,
        COMPUTE_NEAR_USING_PRIMITIVES = 3
    };

    /// A colour target of this size in pixels, 1 to 16384. Throws `std::invalid_argument` for a size out of range.
    RenderTarget(hyx::UInt width, hyx::UInt height);

    /// Lets view and projection follow another camera from frame to frame, whatever is set here meanwhile; null ends
    /// that and keeps the last ones. The reference camera is observed, not kept alive.
    void setReferenceCamera(osg::Camera const* camera);

    /// Sets the capture that takes images of this target; kept alive. Null removes it. Throws `std::invalid_argument`
    /// for a depth target, which has no colours.
    void setImageCapture(ImageCaptureBase* imageCapture);
    /// The capture that takes images of this target, or null.
    ImageCaptureBase* getImageCapture() const;

    /// Changes the size in pixels, 1 to 16384, from the next frame on. Throws `std::invalid_argument` for a size out of
    /// range.
    void setSize(hyx::UInt width, hyx::UInt height);
    /// Changes the size in pixels, (width, height).
    void setSize(hyx::Vec2u size);
    /// The size in pixels, (width, height).
    hyx::Vec2u getSize() const;

    /// The camera that draws; owned by the target.
    osg::Camera* getCamera() const;

    /// Adds a callback that runs each frame before the target is drawn, with the graphics context current; several run
    /// in the order in which they were added. Kept alive by the camera; null is ignored.
    void addPreRenderCallback(osg::Camera::DrawCallback* callback);

    /// Sets the view: positions in metres. Throws `std::invalid_argument` when eye and center coincide or up points
    /// along the view.
    void setViewMatrixAsLookAt(hyx::Vec3 const& eye, hyx::Vec3 const& center, hyx::Vec3 const& up);
    /// Copies the view of another camera as it is now; null throws `std::invalid_argument`.
    void setViewMatrixFromOtherCamera(osg::Camera const* camera);

    /// Sets a perspective projection.
    /// \param fieldOfViewY vertical opening angle in degrees, between 0 and 180.
    /// \param aspectRatio width by height.
    /// \param zNear distance of the near clipping plane in metres, above 0.
    /// \param zFar distance of the far one, above zNear.
    /// Throws `std::invalid_argument` for values out of range.
    void setProjectionMatrixAsPerspective(double fieldOfViewY, double aspectRatio, double zNear, double zFar);
    /// Copies the projection of another camera as it is now; null throws `std::invalid_argument`.
    void setProjectionMatrixFromOtherCamera(osg::Camera const* camera);
    /// Sets a parallel projection; all values in metres. Throws `std::invalid_argument` for an empty volume.
    void setProjectionMatrixAsOrtho(double left, double right, double bottom, double top, double zNear, double zFar);

    /// Sets how the near and far planes follow what is drawn; default `COMPUTE_NEAR_FAR_USING_BOUNDING_VOLUMES` for
    /// colour and `DO_NOT_COMPUTE_NEAR_FAR` for depth. Throws `std::invalid_argument` for a number that is no mode.
    void setComputeNearFarMode(ComputeNearFarMode mode);

    /// Where a point of the world, in metres, appears on the target, in pixels from its lower left corner; fractions
    /// count. Outside the target for a point that is not visible, (NaN, NaN) for one in or behind the plane of the eye.
    /// The point is not changed.
    hyx::Vec2 calculateScreenCoords(hyx::Vec3& worldPosition) const;

    /// Draws only nodes whose mask shares a bit with this one. Default: all bits but that of the head-up display.
    void setCameraCullMask(int mask);
    /// The cull mask.
    int getCameraCullMask() const;

protected:
    /// See `RenderToImage` for the parameters.
    RenderTarget(hyx::UInt width, hyx::UInt height, BufferComponent component, hyx::UInt samples, TextureFormat format);
    ~RenderTarget() override;

    /// Called in the draw of each frame when the target is complete and bound for reading.
    virtual void finishFrame(osg::RenderInfo& renderInfo);

    /// The texture that receives the result.
    osg::Texture2D* resultTexture() const;
    BufferComponent bufferComponent() const;

private:
    void readFrame(osg::RenderInfo& renderInfo);

    struct Implementation;
    std::unique_ptr<Implementation> m_implementation;
};

} // namespace hyxOSG
