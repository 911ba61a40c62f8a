// The application's pictures, films and render targets.
#include "reference/hyxOSG/application/application_implementation.h"
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
    auto const kept = Implementation::keep(*this);
    auto const window = m_implementation->ensureWindow(*this);
    if (m_implementation->debug.enabled())
        m_implementation->debug.update(m_implementation->ensureSimulation());
    osg::ref_ptr<osg::Image> const image = window->grab(getTimeStamp());
    writeImageFile(*image, fileName.empty() ? nextScreenshotName() : std::string(fileName));
}

ImageCapture* ExampleApplication::getImageCapture() {
    if (!m_implementation->imageCapture) {
        m_implementation->imageCapture = new ImageCapture(&m_implementation->ensureSimulation());
        m_implementation->imageCapture->setEnableSyncWithSimulation(m_implementation->captureSync);
        if (m_implementation->window)
            m_implementation->window->camera()->addFinalDrawCallback(m_implementation->imageCapture->getDrawCallback());
    }
    return m_implementation->imageCapture.get();
}

ImageCapture const* ExampleApplication::getImageCapture() const {
    return m_implementation->imageCapture.get();
}

VideoFFMPEGPipeCapture* ExampleApplication::getVideoServerCapture() {
    if (!m_implementation->videoCapture) {
        constexpr double framesPerSecond = 30;
        WindowRequest const& size = m_implementation->windowRequest;
        m_implementation->videoCapture =
            new VideoFFMPEGPipeCapture(size.width, size.height, framesPerSecond, &m_implementation->ensureSimulation());
        m_implementation->videoCapture->setEnableSyncWithSimulation(m_implementation->captureSync);
        if (m_implementation->window)
            m_implementation->window->camera()->addFinalDrawCallback(m_implementation->videoCapture->getDrawCallback());
    }
    return m_implementation->videoCapture.get();
}

void ExampleApplication::setupVideoCaptureRenderTotexture() {
    if (m_implementation->renderToTexture)
        return;
    auto const window = m_implementation->ensureWindow(*this);
    hyx::Vec2u const size = getVideoServerCapture()->getImageResolution();
    m_implementation->renderToTexture = new RenderToTexture(size.x, size.y);
    m_implementation->renderToTexture->setReferenceCamera(window->camera());
    // The film now holds the texture's pictures, not those of the window.
    window->camera()->removeFinalDrawCallback(m_implementation->videoCapture->getDrawCallback());
    m_implementation->renderToTexture->setImageCapture(m_implementation->videoCapture.get());
    addRenderTarget(m_implementation->renderToTexture.get(), nullptr);
}

RenderToTexture* ExampleApplication::getVideoCaptureRendertoTexture() {
    return m_implementation->renderToTexture.get();
}

osg::Camera* ExampleApplication::getTextureCamera() {
    return m_implementation->renderToTexture ? m_implementation->renderToTexture->getCamera() : nullptr;
}

void ExampleApplication::setEnableCaptureSyncWithSimulation(bool enable) {
    m_implementation->captureSync = enable;
    if (m_implementation->imageCapture)
        m_implementation->imageCapture->setEnableSyncWithSimulation(enable);
    if (m_implementation->videoCapture)
        m_implementation->videoCapture->setEnableSyncWithSimulation(enable);
}

bool ExampleApplication::getEnableCaptureSyncWithSimulation() const {
    return m_implementation->captureSync;
}

void ExampleApplication::addRenderTarget(RenderTarget* target, osg::Node* node) {
    if (!target)
        throw std::invalid_argument("a render target is needed, not None");
    removeRenderTarget(target);
    m_implementation->renderTargets[target] = {target, node};
    osg::Camera* camera = target->getCamera();
    camera->addChild(node ? node : m_implementation->graph.decorator());
    m_implementation->graph.root()->addChild(camera);
}

bool ExampleApplication::removeRenderTarget(RenderTarget* target) {
    auto const known = m_implementation->renderTargets.find(target);
    if (known == m_implementation->renderTargets.end())
        return false;
    osg::Camera* camera = target->getCamera();
    m_implementation->graph.root()->removeChild(camera);
    camera->removeChildren(0, camera->getNumChildren());
    m_implementation->renderTargets.erase(known);
    return true;
}

} // namespace hyxOSG
