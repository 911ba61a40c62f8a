// Visuals whose geometry has left its simulation.
#pragma once

namespace hyxOSG {

class GeometryNode;

/// The visuals are taken out of their scenes before the next frame, not while a scene may be traversed.
class RemovedGeometry {
public:
    static void add(GeometryNode* node);
    static void sweep();

    /// Keeps those that were added since the last sweep: their geometries are back.
    static void forget();
};

} // namespace hyxOSG
