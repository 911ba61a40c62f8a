/// The application's pictures, films and render targets.
#include "reference/hyxOSG/application/application_state.h"
#include "reference/hyxOSG/capture/image_file.h"

#include <cstdio>
#include <filesystem>
#include <stdexcept>

namespace hyxOSG {
namespace {

std::string nextScreenshotName() {
    for (int number = 1;; ++number) {
        char name[32];
        std::snprintf(name, sizeof name, "screenshot_%04d.png", number);
        if (!std::filesystem::exists(name))
            return name;
    }
}

} // namespace

void ExampleApplication::takeScreenShot(hyx::String const& fileName) {
    auto const kept = State::keep(*this);
    auto const window = m_state->ensureWindow(*this);
    if (m_state->debug.enabled())
        m_state->debug.update(m_state->ensureSimulation());
    osg::ref_ptr<osg::Image> const image = window->grab(getTimeStamp());
    writeImageFile(*image, fileName.empty() ? nextScreenshotName() : std::string(fileName));
}

ImageCapture* ExampleApplication::getImageCapture() {
    if (!m_state->imageCapture) {
        m_state->imageCapture = new ImageCapture(&m_state->ensureSimulation());
        m_state->imageCapture->setEnableSyncWithSimulation(m_state->captureSync);
        if (m_state->window)
            m_state->window->camera()->addFinalDrawCallback(m_state->imageCapture->getDrawCallback());
    }
    return m_state->imageCapture.get();
}

ImageCapture const* ExampleApplication::getImageCapture() const {
    return m_state->imageCapture.get();
}

VideoFFMPEGPipeCapture* ExampleApplication::getVideoServerCapture() {
    if (!m_state->videoCapture) {
        constexpr double framesPerSecond = 30;
        WindowRequest const& size = m_state->windowRequest;
        m_state->videoCapture =
            new VideoFFMPEGPipeCapture(size.width, size.height, framesPerSecond, &m_state->ensureSimulation());
        m_state->videoCapture->setEnableSyncWithSimulation(m_state->captureSync);
        if (m_state->window)
            m_state->window->camera()->addFinalDrawCallback(m_state->videoCapture->getDrawCallback());
    }
    return m_state->videoCapture.get();
}

void ExampleApplication::setupVideoCaptureRenderTotexture() {
    if (m_state->renderToTexture)
        return;
    auto const window = m_state->ensureWindow(*this);
    hyx::Vec2u const size = getVideoServerCapture()->getImageResolution();
    m_state->renderToTexture = new RenderToTexture(size.x, size.y);
    m_state->renderToTexture->setReferenceCamera(window->camera());
    // The film now holds the texture's pictures, not those of the window.
    window->camera()->removeFinalDrawCallback(m_state->videoCapture->getDrawCallback());
    m_state->renderToTexture->setImageCapture(m_state->videoCapture.get());
    addRenderTarget(m_state->renderToTexture.get(), nullptr);
}

RenderToTexture* ExampleApplication::getVideoCaptureRendertoTexture() {
    return m_state->renderToTexture.get();
}

osg::Camera* ExampleApplication::getTextureCamera() {
    return m_state->renderToTexture ? m_state->renderToTexture->getCamera() : nullptr;
}

void ExampleApplication::setEnableCaptureSyncWithSimulation(bool enable) {
    m_state->captureSync = enable;
    if (m_state->imageCapture)
        m_state->imageCapture->setEnableSyncWithSimulation(enable);
    if (m_state->videoCapture)
        m_state->videoCapture->setEnableSyncWithSimulation(enable);
}

bool ExampleApplication::getEnableCaptureSyncWithSimulation() const {
    return m_state->captureSync;
}

void ExampleApplication::addRenderTarget(RenderTarget* target, osg::Node* node) {
    if (!target)
        throw std::invalid_argument("a render target is needed, not None");
    removeRenderTarget(target);
    m_state->renderTargets[target] = target;
    osg::Camera* camera = target->getCamera();
    camera->addChild(node ? node : m_state->graph.decorator());
    m_state->graph.root()->addChild(camera);
}

bool ExampleApplication::removeRenderTarget(RenderTarget* target) {
    auto const known = m_state->renderTargets.find(target);
    if (known == m_state->renderTargets.end())
        return false;
    osg::Camera* camera = target->getCamera();
    m_state->graph.root()->removeChild(camera);
    camera->removeChildren(0, camera->getNumChildren());
    m_state->renderTargets.erase(known);
    return true;
}

} // namespace hyxOSG
