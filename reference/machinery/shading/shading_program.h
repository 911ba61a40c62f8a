// The fragment program that lights the decorated scene. The vertex stage stays the fixed one, so that vertex colours,
// unlit lines, clip planes and scaled normals behave as without a program; two texture coordinate generators hand
// position and normal in eye coordinates to the fragments.
#pragma once

#include <osg/Program>
#include <osg/StateSet>
#include <osg/TexGenNode>

namespace hyxOSG::decorator {

/// Texture units 0 to 6 belong to the textures of the scene's nodes.
enum ShadingUnit : unsigned int {
    BASE_TEXTURE_UNIT = 0,
    EYE_NORMAL_UNIT = 5,   ///< coordinates only
    EYE_POSITION_UNIT = 7, ///< coordinates only
    SHADOW_MAP_UNIT = 8,   ///< the first shadow map; the others follow
};

inline constexpr unsigned int MAX_SHADOW_MAPS = 3;

/// What a program is made for; programs differ only in these.
struct ShadingOptions {
    unsigned int lights = 1;     ///< the lights that are on, a bit each
    int shadowLight = 0;         ///< index of the light that throws the shadows
    unsigned int shadowMaps = 0; ///< 0, 1 or MAX_SHADOW_MAPS
    bool softShadows = false;
    bool blackShadows = false; ///< shadows take all light, and casters receive none
    bool perPixelHighlights = false;

    bool operator==(ShadingOptions const&) const = default;
};

/// A state set that draws with the program: the program, its uniforms at their resting values and the coordinate
/// generators' modes. The scene needs the eye position generator as well.
osg::ref_ptr<osg::StateSet> createShadingState(ShadingOptions const& options);

/// The node that puts the position in eye coordinates on its unit; it takes effect for everything in the same view.
osg::ref_ptr<osg::TexGenNode> createEyePositionGenerator();

} // namespace hyxOSG::decorator
