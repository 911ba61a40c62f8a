// How the program of all surfaces draws the decorated scene.
#pragma once

#include <osg/StateSet>

namespace hyxOSG::decorator {

/// Texture units 0 to 7 belong to the textures of the scene's nodes.
enum ShadingUnit : unsigned int {
    BASE_TEXTURE_UNIT = 0,
    SHADOW_MAP_UNIT = 8, ///< the first shadow map; the others follow
    CASTER_GRID_UNIT = 11,
};

inline constexpr unsigned int MAX_SHADOW_MAPS = 3;

/// What white stands for in the grid that tells at which depth in a shadow map casters may be met.
inline constexpr float CASTER_GRID_DEPTH = 4;

/// What surrounds a scene and is the same for all its surfaces.
struct ShadingOptions {
    int shadowLight = 0;         ///< index of the light that throws the shadows
    unsigned int shadowMaps = 0; ///< 0, 1 or MAX_SHADOW_MAPS
    bool softShadows = false;
    bool blackShadows = false; ///< shadows take all light, and casters receive none
    bool highlights = true;
    bool skyLight = false; ///< ambient light has the colours of the sky and of the ground

    bool operator==(ShadingOptions const&) const = default;
};

/// A state set that draws with the program. Surfaces without a texture need a white one on BASE_TEXTURE_UNIT. Drivers
/// without programs draw with the fixed functions' light at the vertices.
osg::ref_ptr<osg::StateSet> createShadingState(ShadingOptions const& options);

} // namespace hyxOSG::decorator
