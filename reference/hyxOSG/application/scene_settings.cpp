// The settings of an application that belong to the scene which changes them.
#include "reference/hyxOSG/application/application_implementation.h"
#include "reference/machinery/shading/light_values.h"

#include <osg/Light>

#include <array>
#include <tuple>
#include <vector>

namespace hyxOSG {
namespace {

/// A light's values, apart from the light that nodes and scripts hold.
struct LightValues {
    osg::ref_ptr<osg::Light> values;

    bool operator==(LightValues const& other) const { return values->compare(*other.values) == 0; }
};

void watchLights(SceneChanges& changes, SceneDecorator& decorator) {
    changes.watch([&] { return decorator.getEnabledLights(); }, [&](auto mask) { decorator.setEnableLights(mask); });
    for (auto const light : {SceneDecorator::LIGHT0, SceneDecorator::LIGHT1, SceneDecorator::LIGHT2}) {
        changes.watch([&decorator, light] { return decorator.getEnableCalculateLightPositions(light); },
                      [&decorator, light](bool on) { decorator.setEnableCalculateLightPositions(light, on); });
        osg::ref_ptr<osg::Light> const present = decorator.getOSGLight(light)->getLight();
        changes.watch([present] { return LightValues{new osg::Light(*present)}; },
                      [present](LightValues const& former) { copyLight(*former.values, *present); });
    }
}

void watchDecorator(SceneChanges& changes, SceneDecorator& decorator) {
    changes.watch([&] { return decorator.getBackgroundColors(); },
                  [&](auto const& corners) {
                      auto const color = [&](int i) {
                          return hyx::Vec4f(corners[i].x(), corners[i].y(), corners[i].z(), corners[i].w());
                      };
                      decorator.setBackgroundColor(color(0), color(1), color(2), color(3));
                  });
    changes.watch([&] { return decorator.getEnable(); }, [&](bool on) { decorator.setEnable(on); });
    changes.watch([&] { return decorator.getEnableShadows(); }, [&](bool on) { decorator.setEnableShadows(on); });
    changes.watch([&] { return decorator.getShadowMethod(); }, [&](auto method) { decorator.setShadowMethod(method); });
    changes.watch([&] { return decorator.getEnableShaderState(); },
                  [&](bool on) { decorator.setEnableShaderState(on); });
    changes.watch([&] { return decorator.getShadowMapSize(); }, [&](int size) { decorator.setShadowMapSize(size); });
    changes.watch([&] { return decorator.getShadowCasterLimit(); },
                  [&](int meshes) { decorator.setShadowCasterLimit(meshes); });
    changes.watch([&] { return decorator.getEnableSkyLight(); }, [&](bool on) { decorator.setEnableSkyLight(on); });
    changes.watch([&] { return decorator.getEnableContactShade(); },
                  [&](bool on) { decorator.setEnableContactShade(on); });
    changes.watch([&] { return decorator.getEnableLogo(); }, [&](bool on) { decorator.setEnableLogo(on); });
    changes.watch([&] { return osg::ref_ptr<osg::Texture2D>(decorator.getLogo()); },
                  [&](auto const& logo) { decorator.setLogo(logo); });
    changes.watch([&] { return decorator.getLogoLocation(); },
                  [&](auto location) { decorator.setLogoLocation(location); });
    changes.watch([&] { return decorator.getFontName(); }, [&](auto const& name) { decorator.setFontName(name); });
    changes.watch([&] { return decorator.getFontSize(); }, [&](float size) { decorator.setFontSize(size); });
    changes.watch([&] { return decorator.getEnableRenderedCursor(); },
                  [&](bool on) { decorator.setEnableRenderedCursor(on); });
    changes.watchItems([&] { return SceneGraph::childrenOf(*decorator.getHud()); },
                       [&](auto const& node) { decorator.getHud()->addChild(node); },
                       [&](auto const& node) { decorator.getHud()->removeChild(node); });
    watchLights(changes, decorator);
}

/// The callbacks of an event; those that scenes add are counted.
template <class Event>
struct EventValue {
    Event event;

    bool operator==(EventValue const& other) const { return event.size() == other.event.size(); }
};

void watchEvents(SceneChanges& changes, ExampleApplication& application) {
    auto const watch = [&changes](auto& event) {
        using Value = EventValue<std::decay_t<decltype(event)>>;
        changes.watch([&event] { return Value{event}; }, [&event](Value const& former) { event = former.event; });
    };
    watch(application.m_sceneLoadEvent);
    watch(application.autoStepEvent);
}

} // namespace

void ExampleApplication::Implementation::watchView(SceneChanges& changes) {
    changes.watch([this] { return homeSet; }, [this](bool set) { homeSet = set; });
    changes.watch(
        [this] {
            std::tuple<osg::Vec3d, osg::Vec3d, osg::Vec3d, bool> home;
            orbit->getHomePosition(std::get<0>(home), std::get<1>(home), std::get<2>(home));
            std::get<3>(home) = orbit->getVerticalAxisFixed();
            return home;
        },
        [this](auto const& home) {
            orbit->setVerticalAxisFixed(std::get<3>(home));
            orbit->setHomePosition(std::get<0>(home), std::get<1>(home), std::get<2>(home));
            orbit->home(0);
        });
    changes.watch([this] { return graph.frames(); }, [this](auto const& frames) { graph.setFrames(frames); });
    changes.watch([this] { return std::pair(markers.cellSize().x, markers.cellSize().y); },
                  [this](auto size) { markers.setCellSize(hyx::Vec2(size.first, size.second)); });
    changes.watch([this] { return std::pair(markers.resolution().x, markers.resolution().y); },
                  [this](auto cells) { markers.setResolution(hyx::Vec2u(cells.first, cells.second)); });
    changes.watch([this] { return markers.gridShown(); }, [this](bool on) { markers.showGrid(on); });
    changes.watch([this] { return markers.axesShown(); }, [this](bool on) { markers.showAxes(on); });
    changes.watch([this] { return debug.enabled(); }, [this](bool on) { debug.setEnable(on); });
    changes.watch([this] { return debug.text(); }, [this](bool on) { debug.setText(on); });
    watchDecorator(changes, *graph.decorator());
}

SceneChanges ExampleApplication::Implementation::watchSettings(ExampleApplication& application) {
    SceneChanges changes;
    hyxSDK::Simulation& shown = ensureSimulation();
    changes.watch([&] { return shown.getTimeStep(); }, [&](double step) { shown.setTimeStep(step); });
    changes.watch([this] { return wantedTimeStep; }, [this](auto const& step) { wantedTimeStep = step; });
    changes.watch([&] { return std::array{shown.getGravity().x, shown.getGravity().y, shown.getGravity().z}; },
                  [&](auto const& g) { shown.setGravity(hyx::Vec3(g[0], g[1], g[2])); });
    changes.watch([&] { return shown.getSolver(); }, [&](auto solver) { shown.setSolver(solver); });
    changes.watch([this] { return wantedSolver; }, [this](auto const& solver) { wantedSolver = solver; });
    changes.watch([&] { return shown.getNumIterations(); }, [&](int count) { shown.setNumIterations(count); });
    changes.watch([&] { return shown.getEnableAutoSleep(); }, [&](bool on) { shown.setEnableAutoSleep(on); });

    changes.watch([this] { return stopTime; }, [this](double time) { stopTime = time; });
    changes.watchItems([this] { return listeners; },
                       [&](auto const& listener) { application.addListener(listener.get()); },
                       [&](auto const& listener) { application.removeListener(listener.get()); });
    changes.watch([this] { return stepCallback; }, [this](auto const& callback) { stepCallback = callback; });
    changes.watch([this] { return pauseUpdate; }, [this](bool on) { pauseUpdate = on; });
    changes.watch([&] { return autoStepping; }, [&](bool on) { application.setAutoStepping(on); });
    changes.watch([this] { return pacer.targetFps(); }, [this](double rate) { pacer.setTargetFps(rate); });
    changes.watch([this] { return pacer.realTimeSync(); }, [this](bool on) { pacer.setRealTimeSync(on); });
    changes.watch([this] { return pacer.speed(); }, [this](double speed) { pacer.setSpeed(speed); });
    changes.watch([this] { return autoPause; }, [this](auto const& pairs) { autoPause = pairs; });
    changes.watchItems(
        [this] {
            std::vector<decltype(renderTargets)::mapped_type> targets;
            for (auto const& [target, kept] : renderTargets)
                targets.push_back(kept);
            return targets;
        },
        [&](auto const& kept) { application.addRenderTarget(kept.first, kept.second); },
        [&](auto const& kept) { application.removeRenderTarget(kept.first); });
    watchEvents(changes, application);
    watchView(changes);
    return changes;
}

} // namespace hyxOSG
