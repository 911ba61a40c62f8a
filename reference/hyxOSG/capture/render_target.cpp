// The off-screen camera: its frame buffer, its view and its callbacks.

#include "platform/hyxOSG/capture/render_target.h"

#include "platform/hyxOSG/application/example_application.h"
#include "platform/hyxOSG/capture/image_capture_base.h"
#include "reference/machinery/context/picture_size.h"

#include <osg/FrameBufferObject>
#include <osg/GLExtensions>
#include <osg/NodeVisitor>
#include <osg/RenderInfo>
#include <osg/observer_ptr>

#include <cmath>
#include <functional>
#include <limits>
#include <stdexcept>
#include <vector>

namespace hyxOSG {
namespace {

constexpr hyx::UInt mostSamples = 16;

/// Takes over the matrices of its reference when it is culled: the viewer moves its camera after the update of the
/// scene, so an update callback would always be one frame late.
class FollowingCamera : public osg::Camera {
public:
    void accept(osg::NodeVisitor& visitor) override {
        if (visitor.getVisitorType() == osg::NodeVisitor::CULL_VISITOR) {
            follow();
        }
        osg::Camera::accept(visitor);
    }

    void follow() {
        osg::ref_ptr<osg::Camera const> camera;
        if (reference.lock(camera)) {
            setViewMatrix(camera->getViewMatrix());
            setProjectionMatrix(camera->getProjectionMatrix());
        }
    }

    osg::observer_ptr<osg::Camera const> reference;
};

/// Runs several callbacks; one of them may stand in the list twice, which osg's own chain does not survive.
class CallbackList : public osg::Camera::DrawCallback {
public:
    void operator()(osg::RenderInfo& renderInfo) const override {
        for (auto const& callback : callbacks) {
            callback->run(renderInfo);
        }
    }

    std::vector<osg::ref_ptr<osg::Camera::DrawCallback>> callbacks;
};

/// Calls a function, until it is taken away.
class FunctionCallback : public osg::Camera::DrawCallback {
public:
    void operator()(osg::RenderInfo& renderInfo) const override {
        if (function) {
            function(renderInfo);
        }
    }

    std::function<void(osg::RenderInfo&)> function;
};

void requireSize(hyx::UInt width, hyx::UInt height) {
    if (!isPictureSize(width, height)) {
        throw std::invalid_argument("the size of a render target must be 1 to 16384 pixels each way");
    }
}

void requireCamera(osg::Camera const* camera) {
    if (!camera) {
        throw std::invalid_argument("there is no camera to copy from: pass one");
    }
}

osg::ref_ptr<osg::Texture2D> createTexture(RenderTarget::BufferComponent component, hyx::UInt samples,
                                           RenderTarget::TextureFormat format) {
    osg::ref_ptr<osg::Texture2D> texture = new osg::Texture2D;
    texture->setResizeNonPowerOfTwoHint(false);
    texture->setWrap(osg::Texture::WRAP_S, osg::Texture::CLAMP_TO_EDGE);
    texture->setWrap(osg::Texture::WRAP_T, osg::Texture::CLAMP_TO_EDGE);
    texture->setFilter(osg::Texture::MIN_FILTER, osg::Texture::LINEAR);
    texture->setFilter(osg::Texture::MAG_FILTER, osg::Texture::LINEAR);
    if (component == RenderTarget::DEPTH_BUFFER) {
        texture->setSourceFormat(GL_DEPTH_COMPONENT);
        texture->setSourceType(GL_FLOAT);
        // Smoothed depth is copied from a buffer of 24 bits, and a copy needs the same format.
        texture->setInternalFormat(samples > 1 ? GL_DEPTH_COMPONENT24 : GL_DEPTH_COMPONENT32F);
    } else {
        texture->setSourceFormat(GLenum(format));
        texture->setSourceType(GL_UNSIGNED_BYTE);
        texture->setInternalFormat(format == RenderTarget::RGB ? GL_RGB8 : GL_RGBA8);
    }
    return texture;
}

} // namespace

struct RenderTarget::Implementation {
    void attachResult() {
        camera->detach(osg::Camera::BufferComponent(component));
        camera->attach(osg::Camera::BufferComponent(component), result, 0, 0, false, samples, samples);
        if (component == COLOR_BUFFER) // outlines and shadow volumes count in the stencil buffer
            camera->attach(osg::Camera::PACKED_DEPTH_STENCIL_BUFFER, GL_DEPTH_STENCIL_EXT);
        // The camera's own frame buffer is out of reach when its callbacks run; this one sees the same texture.
        reading = new osg::FrameBufferObject;
        reading->setAttachment(osg::Camera::BufferComponent(component), osg::FrameBufferAttachment(result));
    }

    /// Takes no more samples than the driver has, and its own way to make them.
    void prepareSamples(osg::State& state) {
        auto* const extensions = state.get<osg::GLExtensions>();
        // The GL library hands out this function whether or not the driver has it, so osg would always choose it.
        if (!osg::isGLExtensionSupported(state.getContextID(), "GL_NV_framebuffer_multisample_coverage")) {
            extensions->glRenderbufferStorageMultisampleCoverageNV = nullptr;
        }
        GLint most = 0;
        glGetIntegerv(GL_MAX_SAMPLES, &most);
        if (samples > unsigned(most)) {
            samples = unsigned(most);
            attachResult();
        }
    }

    BufferComponent component = COLOR_BUFFER;
    unsigned samples = 0;
    hyx::Vec2u size;
    osg::ref_ptr<FollowingCamera> camera = new FollowingCamera;
    osg::ref_ptr<osg::Texture2D> result;
    osg::ref_ptr<osg::FrameBufferObject> reading;
    osg::ref_ptr<FunctionCallback> first = new FunctionCallback;
    osg::ref_ptr<CallbackList> before = new CallbackList;
    osg::ref_ptr<FunctionCallback> after = new FunctionCallback;
    hyx::ref_ptr<ImageCaptureBase> capture;
};

RenderTarget::RenderTarget(hyx::UInt width, hyx::UInt height) : RenderTarget(width, height, COLOR_BUFFER, 0, RGBA) {}

RenderTarget::RenderTarget(hyx::UInt width, hyx::UInt height, BufferComponent component, hyx::UInt samples,
                           TextureFormat format)
    : m_implementation(std::make_unique<Implementation>()) {
    requireSize(width, height);
    if (component != COLOR_BUFFER && component != DEPTH_BUFFER) {
        throw std::invalid_argument("a render target draws COLOR_BUFFER or DEPTH_BUFFER, nothing else");
    }
    if (component == COLOR_BUFFER && format != RGB && format != RGBA) {
        throw std::invalid_argument("the format of a colour target must be RGB or RGBA");
    }
    if (component == DEPTH_BUFFER && format != RGB && format != RGBA && format != DEPTH_COMPONENT) {
        throw std::invalid_argument("the format of a depth target must be DEPTH_COMPONENT");
    }
    if (samples > mostSamples) {
        throw std::invalid_argument("a render target takes at most 16 samples a pixel");
    }
    m_implementation->component = component;
    m_implementation->samples = samples > 1 ? unsigned(samples) : 0;
    m_implementation->result = createTexture(component, samples, format);
    if (m_implementation->samples > 0) {
        m_implementation->first->function = [this](osg::RenderInfo& renderInfo) {
            m_implementation->prepareSamples(*renderInfo.getState());
        };
    }
    m_implementation->after->function = [this](osg::RenderInfo& renderInfo) { readFrame(renderInfo); };

    osg::Camera& camera = *m_implementation->camera;
    camera.setName("RenderTarget");
    camera.setRenderOrder(osg::Camera::PRE_RENDER);
    camera.setRenderTargetImplementation(osg::Camera::FRAME_BUFFER_OBJECT);
    camera.setReferenceFrame(osg::Transform::ABSOLUTE_RF);
    camera.setClearMask(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT | GL_STENCIL_BUFFER_BIT);
    camera.setClearColor(osg::Vec4(0, 0, 0, 1));
    camera.setCullMask(~ExampleApplication::HUD_MASK);
    // What is smaller than a pixel may still be at its middle.
    camera.setCullingMode(camera.getCullingMode() & ~osg::CullSettings::SMALL_FEATURE_CULLING);
    camera.setProjectionMatrixAsPerspective(60, double(width) / double(height), 0.1, 100);
    camera.setInitialDrawCallback(m_implementation->first);
    camera.setPreDrawCallback(m_implementation->before);
    camera.setFinalDrawCallback(m_implementation->after);
    setComputeNearFarMode(component == DEPTH_BUFFER ? DO_NOT_COMPUTE_NEAR_FAR
                                                    : COMPUTE_NEAR_FAR_USING_BOUNDING_VOLUMES);
    setSize(width, height);
}

RenderTarget::~RenderTarget() {
    // The scene may keep the camera for longer.
    m_implementation->first->function = nullptr;
    m_implementation->after->function = nullptr;
}

void RenderTarget::setReferenceCamera(osg::Camera const* camera) {
    m_implementation->camera->follow();
    m_implementation->camera->reference = camera;
}

void RenderTarget::setImageCapture(ImageCaptureBase* imageCapture) {
    if (imageCapture && m_implementation->component == DEPTH_BUFFER) {
        throw std::invalid_argument("a depth target has no colours to capture: use a colour target");
    }
    m_implementation->capture = imageCapture;
}

ImageCaptureBase* RenderTarget::getImageCapture() const {
    return m_implementation->capture;
}

void RenderTarget::setSize(hyx::UInt width, hyx::UInt height) {
    requireSize(width, height);
    m_implementation->size = hyx::Vec2u(width, height);
    m_implementation->camera->setViewport(0, 0, int(width), int(height));
    m_implementation->result->setTextureSize(int(width), int(height));
    m_implementation->result->dirtyTextureObject();
    m_implementation->attachResult();
    m_implementation->camera->dirtyAttachmentMap();
}

void RenderTarget::setSize(hyx::Vec2u size) {
    setSize(size.x, size.y);
}

hyx::Vec2u RenderTarget::getSize() const {
    return m_implementation->size;
}

osg::Camera* RenderTarget::getCamera() const {
    return m_implementation->camera;
}

void RenderTarget::addPreRenderCallback(osg::Camera::DrawCallback* callback) {
    if (callback) {
        m_implementation->before->callbacks.emplace_back(callback);
    }
}

void RenderTarget::setViewMatrixAsLookAt(hyx::Vec3 const& eye, hyx::Vec3 const& center, hyx::Vec3 const& up) {
    hyx::Vec3 const direction = center - eye;
    double const sine = direction.normal().cross(up.normal()).length();
    if (!(sine > 1e-9)) {
        throw std::invalid_argument("eye and center must differ, and up must not point along the view");
    }
    m_implementation->camera->setViewMatrixAsLookAt(
        osg::Vec3d(eye.x, eye.y, eye.z), osg::Vec3d(center.x, center.y, center.z), osg::Vec3d(up.x, up.y, up.z));
}

void RenderTarget::setViewMatrixFromOtherCamera(osg::Camera const* camera) {
    requireCamera(camera);
    m_implementation->camera->setViewMatrix(camera->getViewMatrix());
}

void RenderTarget::setProjectionMatrixAsPerspective(double fieldOfViewY, double aspectRatio, double zNear,
                                                    double zFar) {
    bool const valid = fieldOfViewY > 0 && fieldOfViewY < 180 && aspectRatio > 0 && std::isfinite(aspectRatio) &&
                       zNear > 0 && zFar > zNear && std::isfinite(zFar);
    if (!valid) {
        throw std::invalid_argument(
            "a perspective needs an opening angle of 0 to 180 degrees, an aspect ratio above 0 and 0 < near < far");
    }
    m_implementation->camera->setProjectionMatrixAsPerspective(fieldOfViewY, aspectRatio, zNear, zFar);
}

void RenderTarget::setProjectionMatrixFromOtherCamera(osg::Camera const* camera) {
    requireCamera(camera);
    m_implementation->camera->setProjectionMatrix(camera->getProjectionMatrix());
}

void RenderTarget::setProjectionMatrixAsOrtho(double left, double right, double bottom, double top, double zNear,
                                              double zFar) {
    double const volume = (right - left) * (top - bottom) * (zFar - zNear);
    if (volume == 0 || !std::isfinite(volume)) {
        throw std::invalid_argument("a parallel projection needs a volume that is not empty");
    }
    m_implementation->camera->setProjectionMatrixAsOrtho(left, right, bottom, top, zNear, zFar);
}

void RenderTarget::setComputeNearFarMode(ComputeNearFarMode mode) {
    if (mode < DO_NOT_COMPUTE_NEAR_FAR || mode > COMPUTE_NEAR_USING_PRIMITIVES) {
        throw std::invalid_argument("there is no near and far mode " + std::to_string(int(mode)) +
                                    ": use one of the constants");
    }
    m_implementation->camera->setComputeNearFarMode(osg::CullSettings::ComputeNearFarMode(mode));
}

hyx::Vec2 RenderTarget::calculateScreenCoords(hyx::Vec3& worldPosition) const {
    m_implementation->camera->follow();
    osg::Matrixd const toClip =
        m_implementation->camera->getViewMatrix() * m_implementation->camera->getProjectionMatrix();
    osg::Vec4d const clip = osg::Vec4d(worldPosition.x, worldPosition.y, worldPosition.z, 1) * toClip;
    if (!(clip.w() > 0)) {
        double const nowhere = std::numeric_limits<double>::quiet_NaN();
        return hyx::Vec2(nowhere, nowhere);
    }
    return hyx::Vec2((clip.x() / clip.w() + 1) / 2 * double(m_implementation->size.x),
                     (clip.y() / clip.w() + 1) / 2 * double(m_implementation->size.y));
}

void RenderTarget::setCameraCullMask(int mask) {
    m_implementation->camera->setCullMask(osg::Node::NodeMask(mask));
}

int RenderTarget::getCameraCullMask() const {
    return int(m_implementation->camera->getCullMask());
}

void RenderTarget::finishFrame(osg::RenderInfo& renderInfo) {
    if (m_implementation->capture) {
        m_implementation->capture->apply(renderInfo);
    }
}

osg::Texture2D* RenderTarget::resultTexture() const {
    return m_implementation->result;
}

RenderTarget::BufferComponent RenderTarget::bufferComponent() const {
    return m_implementation->component;
}

/// Binds the result for reading while `finishFrame` runs. The binding before is kept: in a host's window it is not the
/// default one.
void RenderTarget::readFrame(osg::RenderInfo& renderInfo) {
    osg::State& state = *renderInfo.getState();
    GLint before = 0;
    glGetIntegerv(GL_READ_FRAMEBUFFER_BINDING, &before);
    m_implementation->reading->apply(state, osg::FrameBufferObject::READ_FRAMEBUFFER);
    glReadBuffer(m_implementation->component == DEPTH_BUFFER ? GL_NONE : GL_COLOR_ATTACHMENT0_EXT);
    finishFrame(renderInfo);
    state.get<osg::GLExtensions>()->glBindFramebuffer(GL_READ_FRAMEBUFFER_EXT, GLuint(before));
}

} // namespace hyxOSG
