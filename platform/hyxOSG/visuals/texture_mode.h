// The roles that textures can play on a surface.
#pragma once

namespace hyxOSG {

/// What a texture does for the surface that carries it. The value is also the texture unit it is bound to.
enum TextureMode {
    DIFFUSE_TEXTURE = 0,       ///< colour, multiplied with the lit material
    SHADOW_TEXTURE = 1,        ///< coverage: red darkens the surface's direct light (1 = lit, 0 = in shadow)
    SHADOW_JITTER_TEXTURE = 2, ///< offsets (red, green) that break up the edges of the shadow texture
    NORMALMAP_TEXTURE = 3,     ///< tangent-space normals, coded as 0.5 + 0.5 n
    HEIGHTMAP_TEXTURE = 4,     ///< heights (red), seen as bumps and parallax
    SPECULARMAP_TEXTURE = 5,   ///< specular colour, multiplied with the material's
    SPHEREMAP_TEXTURE = 6      ///< mirror ball picture of the surroundings that the surface reflects
};

} // namespace hyxOSG
