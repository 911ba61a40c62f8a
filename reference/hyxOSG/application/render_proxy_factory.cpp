// Makes and takes away visuals of whole simulations and assemblies.
#include "platform/hyxOSG/application/render_proxy_factory.h"

#include "platform/hyxOSG/visuals/create_visual.h"

#include <stdexcept>

namespace hyxOSG {

RenderProxyFactory::RenderProxyFactory(osg::Group* root) : m_root(root) {
    if (!root)
        throw std::invalid_argument("the factory of visuals needs a group to put them under");
}

osg::Group* RenderProxyFactory::create(hyxSDK::Simulation* simulation, float detailRatio, bool evenIfSensor) {
    if (!simulation)
        return nullptr;
    return keep(simulation, createVisual(simulation, m_root.get(), detailRatio, evenIfSensor));
}

osg::Group* RenderProxyFactory::create(hyxSDK::Assembly* assembly, float detailRatio, bool evenIfSensor) {
    if (!assembly)
        return nullptr;
    return keep(assembly, createVisual(assembly, m_root.get(), detailRatio, evenIfSensor));
}

osg::Group* RenderProxyFactory::keep(void const* object, osg::Group* visual) {
    remove(object);
    if (visual)
        m_proxies[object] = visual;
    return visual;
}

bool RenderProxyFactory::remove(void const* object) {
    auto const proxy = m_proxies.find(object);
    if (proxy == m_proxies.end())
        return false;
    m_root->removeChild(proxy->second);
    m_proxies.erase(proxy);
    return true;
}

void RenderProxyFactory::clear() {
    while (!m_proxies.empty())
        remove(m_proxies.begin()->first);
}

size_t RenderProxyFactory::getNumProxies() const {
    return m_proxies.size();
}

osg::Group* RenderProxyFactory::getRoot() const {
    return m_root.get();
}

} // namespace hyxOSG
