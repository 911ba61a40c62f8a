// Makes the visuals that an application shows of its simulations.
#pragma once

#include "platform/hyx/objects/referenced.h"

#include <osg/Group>
#include <osg/ref_ptr>

#include <map>

namespace hyxSDK {
class Assembly;
class Simulation;
} // namespace hyxSDK

namespace hyxOSG {

/// Makes visuals of simulations and assemblies under one group, and takes them away again.
class RenderProxyFactory : public hyx::Referenced {
public:
    /// A factory that puts visuals under `root`; throws std::invalid_argument for null.
    explicit RenderProxyFactory(osg::Group* root);

    /// Makes visuals of what `simulation` holds, in place of those made before. Null gives null.
    osg::Group* create(hyxSDK::Simulation* simulation, float detailRatio = 1.0f, bool evenIfSensor = false);
    /// Makes visuals of what `assembly` holds, in place of those made before. Null gives null.
    osg::Group* create(hyxSDK::Assembly* assembly, float detailRatio = 1.0f, bool evenIfSensor = false);
    /// Takes away the visuals of a simulation or assembly. Returns whether there were any.
    bool remove(void const* object);
    /// Takes all visuals away.
    void clear();

    /// Number of simulations and assemblies that are shown.
    size_t getNumProxies() const;
    /// The group that visuals are put under.
    osg::Group* getRoot() const;

protected:
    ~RenderProxyFactory() override = default;

private:
    osg::Group* keep(void const* object, osg::Group* visual);

    osg::ref_ptr<osg::Group> m_root;
    std::map<void const*, osg::ref_ptr<osg::Group>> m_proxies;
};

} // namespace hyxOSG
