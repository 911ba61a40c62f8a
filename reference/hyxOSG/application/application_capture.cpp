// The application's pictures, films and render targets.
#include "platform/osg/attachment.h"
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
    m_implementation->showPresentState(*this);
    osg::ref_ptr<osg::Image> const image = window->grab(getTimeStamp());
    writeImageFile(*image, fileName.empty() ? nextScreenshotName() : std::string(fileName));
}

hyx::Vec2u ExampleApplication::getPictureSize() {
    auto const kept = Implementation::keep(*this);
    auto const window = m_implementation->ensureWindow(*this);
    osg::Viewport const& viewport = *window->camera()->getViewport();
    return hyx::Vec2u(hyx::UInt(viewport.width()), hyx::UInt(viewport.height()));
}

void ExampleApplication::readPicture(unsigned char* rgb, hyx::Vec2u size, bool fresh) {
    auto const kept = Implementation::keep(*this);
    if (hyx::Vec2u const drawn = getPictureSize(); !rgb || size.x != drawn.x || size.y != drawn.y)
        throw std::invalid_argument("the picture has " + std::to_string(drawn.x) + " x " + std::to_string(drawn.y) +
                                    " pixels: give memory of that size");
    if (fresh)
        m_implementation->showPresentState(*this);
    auto const window = m_implementation->window;
    window->readPicture(getTimeStamp(), fresh, rgb);
}

void ExampleApplication::drawRenderTargets() {
    auto const kept = Implementation::keep(*this);
    auto const window = m_implementation->ensureWindow(*this);
    window->handleEvents(getTimeStamp());
    window->draw(window->offscreen() ? Pass::TARGETS : Pass::EVERYTHING);
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
    m_implementation->renderToTexture->setCameraCullMask(~0); // a film shows the head-up display, too
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
    osg::Camera* camera = target->getCamera();
    if (node) {
        osg::requireAttachable(*camera, *node);
        osg::requireAttachable(*m_implementation->graph.root(), *node);
    }
    removeRenderTarget(target);
    m_implementation->renderTargets[target] = {target, node};
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
