// Listeners of the library whose virtual functions throw, as those of a program that derives from them may.
#include "binding/vocabulary/rows.h"
#include "platform/hyxCable/cable_damage.h"
#include "platform/hyxOSG/application/example_application_listener.h"
#include "platform/hyxOSG/picking/pick_handler.h"
#include "platform/hyxOSG/renderers/cable_damage_renderer.h"
#include "platform/hyxOSG/renderers/deformable_height_field_renderer.h"
#include "platform/hyxOSG/renderers/pressure_field_renderer.h"
#include "platform/hyxOSG/renderers/spline_renderer.h"
#include "platform/hyxOSG/renderers/spline_renderer_old.h"
#include "platform/hyxUtil/spline.h"

#include <osg/Group>
#include <osgViewer/Viewer>

#include <stdexcept>

namespace {

[[noreturn]] void fail() {
    throw std::runtime_error("on purpose");
}

struct CableDamageRenderer : hyxOSG::CableDamageRenderer {
    using hyxOSG::CableDamageRenderer::CableDamageRenderer;

    void last(double) override { fail(); }
};

struct DeformableHeightFieldRenderer : hyxOSG::DeformableHeightFieldRenderer {
    using hyxOSG::DeformableHeightFieldRenderer::DeformableHeightFieldRenderer;

    void last(hyx::TimeStamp) override { fail(); }
};

struct ExampleApplicationListener : hyxOSG::ExampleApplicationListener {
    void preFrame(hyxOSG::ExampleApplication*) override { fail(); }

    void postFrame(hyxOSG::ExampleApplication*) override { fail(); }
};

struct PickHandler : hyxOSG::PickHandler {
    using hyxOSG::PickHandler::PickHandler;

    void update(float, float) override { fail(); }

    bool keyboard(int, unsigned int, float, float, bool) override { fail(); }

    bool mouse(MouseButtonMask, MouseState, float, float) override { fail(); }

    bool mouseDragged(MouseButtonMask, float, float) override { fail(); }
};

struct PressureFieldRenderer : hyxOSG::PressureFieldRenderer {
    using hyxOSG::PressureFieldRenderer::PressureFieldRenderer;

    void addTriangle(hyxModel::TriangleData const&, hyx::AffineMatrix4x4 const&) override { fail(); }

    void clear() override { fail(); }

    void done() override { fail(); }

    void updateTransform(hyx::AffineMatrix4x4 const&) override { fail(); }
};

struct SplineRenderer : hyxOSG::SplineRenderer {
    using hyxOSG::SplineRenderer::SplineRenderer;

    void removeNotification() override { fail(); }
};

struct SplineRendererOld : hyxOSG::SplineRendererOld {
    using hyxOSG::SplineRendererOld::SplineRendererOld;

    void removeNotification() override { fail(); }
};

// Kept alive for good: a borrowed proxy is all that Python gets.
template <class T, class... A>
T* make(A... arguments) {
    T* object = new T(arguments...);
    object->reference();
    return object;
}

hyxOSG::CableDamageRenderer* throwing_cable_damage_renderer(hyxCable::CableDamage* damage, osg::Group* parent) {
    return make<CableDamageRenderer>(damage, 0.01, parent);
}

hyxOSG::DeformableHeightFieldRenderer* throwing_deformable_height_field_renderer() {
    return make<DeformableHeightFieldRenderer>(nullptr, nullptr);
}

hyxOSG::ExampleApplicationListener* throwing_example_application_listener() {
    return make<ExampleApplicationListener>();
}

hyxOSG::PickHandler* throwing_pick_handler() {
    return make<PickHandler>(nullptr, nullptr);
}

hyxOSG::PressureFieldRenderer* throwing_pressure_field_renderer(osg::Group* root) {
    return make<PressureFieldRenderer>(root);
}

hyxOSG::SplineRenderer* throwing_spline_renderer(hyxUtil::Spline* spline, osg::Group* parent) {
    return make<SplineRenderer>(spline, parent);
}

hyxOSG::SplineRendererOld* throwing_spline_renderer_old(hyxUtil::Spline* spline, osg::Group* parent) {
    return make<SplineRendererOld>(spline, parent);
}

constexpr Declared functions[] = {
    FUNCTION(throwing_cable_damage_renderer,
             FREE(throwing_cable_damage_renderer, (hyxCable::CableDamage*, osg::Group*))),
    FUNCTION(throwing_deformable_height_field_renderer, FREE(throwing_deformable_height_field_renderer, ())),
    FUNCTION(throwing_example_application_listener, FREE(throwing_example_application_listener, ())),
    FUNCTION(throwing_pick_handler, FREE(throwing_pick_handler, ())),
    FUNCTION(throwing_pressure_field_renderer, FREE(throwing_pressure_field_renderer, (osg::Group*))),
    FUNCTION(throwing_spline_renderer, FREE(throwing_spline_renderer, (hyxUtil::Spline*, osg::Group*))),
    FUNCTION(throwing_spline_renderer_old, FREE(throwing_spline_renderer_old, (hyxUtil::Spline*, osg::Group*))),
};

} // namespace

ROWS(functions);
