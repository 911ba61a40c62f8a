// The materials of a model tree as those of bodies.
#pragma once

#include "platform/hyx/bodies/material.h"
#include "platform/hyxtavlang/model_bodies.h"

#include <map>

namespace hyxtavlang {

/// Makes a material once for all shapes that share it.
class BuiltMaterials {
public:
    /// Throws std::invalid_argument for values that no material has.
    hyx::Material* get(tavlang::Physics3D::Material const& given) {
        hyx::ref_ptr<hyx::Material>& made = m_made[&given];
        if (!made) {
            made = new hyx::Material(hyx::Name(given.name));
            made->setFriction(given.friction);
            made->setRestitution(given.restitution);
            if (given.density > 0)
                made->setDensity(given.density);
        }
        return made.get();
    }

private:
    std::map<tavlang::Physics3D::Material const*, hyx::ref_ptr<hyx::Material>> m_made;
};

} // namespace hyxtavlang
