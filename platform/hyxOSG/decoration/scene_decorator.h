// The frame around a scene: background, lights, shadows, logo, text rows and a rendered cursor.
#pragma once

#include "platform/hyx/values/string.h"
#include "platform/hyx/values/vec3.h"
#include "platform/hyx/values/vec4f.h"
#include "platform/hyxOSG/decoration/light_source.h"

#include <osg/BoundingBox>
#include <osg/BoundingSphere>
#include <osg/Group>
#include <osg/LightSource>
#include <osg/Material>
#include <osg/MatrixTransform>
#include <osg/StateSet>
#include <osg/Texture2D>
#include <osg/Vec2f>

#include <array>
#include <memory>
#include <string>

namespace hyxOSG {

/// A group that draws its children lit, shadowed and in front of a background, with a logo and text rows over them.
///
/// The decorator's children, as its child operations count them, are those of the shadowed scene: they cast and
/// receive shadows as their node masks allow (bit 64 casts, bit 128 receives). What stands under the non-shadowed
/// scene is lit by the same lights and takes no part in the shadows. The decorator's own parts are not among the
/// children.
///
/// Window positions are in pixels from the lower left corner unless stated otherwise. Changes of the logo, text and
/// window size are laid out in the next update traversal, so several changes cost one layout.
class SceneDecorator : public osg::Group {
public:
    /// Where the logo stands.
    enum LogoLocation {
        UPPER_LEFT = 1,
        LOWER_LEFT = 2,
        UPPER_RIGHT = 3,
        LOWER_RIGHT = 4,
        FREE = 5, ///< at the logo position
    };

    /// The decorator's lights, a bit each.
    enum Lights {
        LIGHT0 = 1,
        LIGHT1 = 2,
        LIGHT2 = 4,
        ALL = 7,
    };

    /// How shadows are made.
    enum ShadowMethod {
        SOFT_SHADOWMAP = 0,                  ///< one shadow map, filtered edges
        SHADOWMAP = 1,                       ///< one shadow map, hard edges
        SHADOWVOLUME = 2,                    ///< exact edges of closed meshes
        PARALLELLSPLIT_SHADOWMAP = 3,        ///< three maps, finer near the camera
        LIGHTSPACEPERSPECTIVE_SHADOWMAP = 4, ///< one map, fitted to what the camera sees
        SHADOWTEXTURE = 5,                   ///< black spots in the shape of the casters; what casts receives none
        NO_SHADOWS = 6,
    };

    /// A decorator with two-colour background, light 0 on, soft shadow maps chosen but not enabled.
    /// \param width,height the window in pixels, both positive
    /// \param shadowMapSize width and height of a shadow map in texels, 16 to 8192
    /// \throws std::invalid_argument for sizes out of range
    SceneDecorator(int width, int height, int shadowMapSize = 1024);

    char const* libraryName() const override { return "hyxOSG"; }

    char const* className() const override { return "SceneDecorator"; }

    /// Turns the decoration on or off. Off, the scene and its lights are drawn as they are, without background,
    /// shadows, logo, text and cursor. Default on.
    void setEnable(bool enable);
    /// Whether the decoration is on.
    bool getEnable() const;
    /// Whether the decoration is on; the same as getEnable.
    bool isEnabled() const;

    /// Turns shadows on or off, keeping the method. Default off.
    void setEnableShadows(bool enable);
    /// Whether shadows are on.
    bool getEnableShadows() const;
    /// Chooses how shadows are made; NO_SHADOWS draws none. A method that the graphics driver cannot do is replaced by
    /// the nearest that it can, with one warning.
    /// \throws std::invalid_argument for a value that is no method
    void setShadowMethod(ShadowMethod method);
    /// The method chosen last, also where another one stands in for it.
    ShadowMethod getShadowMethod() const;

    /// Width and height of the shadow maps in texels: the finer, the sharper and the slower.
    /// \throws std::invalid_argument unless 16 to 8192
    void setShadowMapSize(int size);
    /// Width and height of the shadow maps in texels.
    int getShadowMapSize() const;

    /// Draws no shadows while more than this many meshes would throw them and the processor draws, not a graphics
    /// processor. 0, the default, draws them always. Shadow volumes and shadow textures know no limit.
    /// \throws std::invalid_argument for a negative number
    void setShadowCasterLimit(int meshes);
    /// How many meshes may throw shadows where the processor draws; 0 means any number.
    int getShadowCasterLimit() const;

    /// Ambient light in the colours of the background, or of a sky box in the scene: from the sky above, darker from
    /// the ground below, or the same from all sides for a background of one colour. Without lamps it is all the light
    /// of the sky. Default off: the same grey from everywhere.
    void setEnableSkyLight(bool enable);
    /// Whether ambient light has the colours of the background.
    bool getEnableSkyLight() const;

    /// Darkens places that things near them hide from the sky: under bodies, in corners and grooves. Default off. Parts
    /// that one sees through take no part in it. Where the graphics driver has no programs nothing changes.
    void setEnableContactShade(bool enable);
    /// Whether hidden places are darker.
    bool getEnableContactShade() const;

    /// Lights each pixel by the library's program, also where no shadow method needs it. Default off: without shadows,
    /// and where the graphics driver has no programs, light is computed at the corners of the meshes. Nodes with a
    /// program of their own keep it.
    /// \param perPixelHighlights whether the program draws highlights
    void setEnableShaderState(bool enable, bool perPixelHighlights = true);
    /// Whether the decorator's program is used without shadows, too.
    bool getEnableShaderState() const;

    /// Turns the lights in the mask on and the others off.
    /// \param mask a sum of LIGHT0, LIGHT1 and LIGHT2; other bits are ignored
    void setEnableLights(Lights mask = ALL);
    /// The mask of the lights that are on.
    Lights getEnabledLights() const;
    /// The index, 0 to 2, of one light.
    /// \throws std::invalid_argument unless the light is LIGHT0, LIGHT1 or LIGHT2
    static int lightToIndex(Lights light);
    /// Chooses whether calculateLightPositions moves a light. Default true for all.
    /// \param light a light, or a sum of lights
    void setEnableCalculateLightPositions(Lights light, bool enable);
    /// Whether calculateLightPositions moves this light.
    /// \throws std::invalid_argument unless the light is LIGHT0, LIGHT1 or LIGHT2
    bool getEnableCalculateLightPositions(Lights light) const;
    /// Chooses the light that throws the shadows. Default LIGHT0.
    /// \return false, and nothing changes, unless the light is LIGHT0, LIGHT1 or LIGHT2
    bool setShadowLightSource(Lights light);
    /// The light that throws the shadows.
    osg::LightSource* getShadowLightSource();
    /// The scene-graph node of a light; null unless the light is LIGHT0, LIGHT1 or LIGHT2.
    osg::LightSource* getOSGLight(Lights light);
    /// A handle to a light.
    /// \throws std::invalid_argument unless the light is LIGHT0, LIGHT1 or LIGHT2
    LightSource getLightSource(Lights light);

    /// Places the lights around the shadowed and the non-shadowed scene. Without a scene the lights stay.
    void calculateLightPositions();
    /// Places the lights around a node as it stands in its own coordinates. Null or empty: the lights stay.
    void calculateLightPositions(osg::Node* node);
    /// Places the lights around a box. An invalid box: the lights stay.
    void calculateLightPositions(osg::BoundingBox const& box);
    /// Places the lights around a sphere: light 0 above and to the left of the front, light 1 to the right, light 2
    /// behind, each about three radii away. An invalid sphere: the lights stay.
    void calculateLightPositions(osg::BoundingSphere const& sphere);

    /// One colour for the whole background.
    void setBackgroundColor(hyx::Vec4f const& color);
    /// One colour for the whole background, components 0 to 1.
    void setBackgroundColor(hyx::Vec3 color);
    /// A vertical run between two colours.
    void setBackgroundColor(hyx::Vec4f const& upper, hyx::Vec4f const& lower);
    /// A vertical run between two colours, components 0 to 1.
    void setBackgroundColor(hyx::Vec3 upper, hyx::Vec3 lower);
    /// A colour in each corner.
    void setBackgroundColor(hyx::Vec4f const& upperLeft, hyx::Vec4f const& upperRight, hyx::Vec4f const& lowerLeft,
                            hyx::Vec4f const& lowerRight);
    /// A colour in each corner, components 0 to 1.
    void setBackgroundColor(hyx::Vec3 upperLeft, hyx::Vec3 upperRight, hyx::Vec3 lowerLeft, hyx::Vec3 lowerRight);
    /// The colours of the corners: upper left, upper right, lower left, lower right.
    std::array<osg::Vec4, 4> getBackgroundColors() const;

    /// Gives the scene a texture, seen on everything that has texture coordinates and no texture of its own. An empty
    /// name takes it away.
    /// \return false, and nothing changes, when the image cannot be read
    bool setBaseTexture(std::string const& file);

    /// Shows or hides the logo. Default on; nothing is seen until a logo is given.
    void setEnableLogo(bool enable);
    /// Whether the logo is shown.
    bool getEnableLogo() const;
    /// Takes the logo from an image file.
    /// \param alpha opacity, 0 to 1
    /// \return false, and nothing changes, when the image cannot be read
    bool setLogoFile(std::string const& file, float alpha = 1.0f);
    /// Takes the logo from a texture, in its image's size at most the maximum logo dimension. Null: no logo.
    /// \param alpha opacity, 0 to 1
    void setLogo(osg::Texture2D* texture, float alpha = 1.0f);
    /// The logo's texture; null without one.
    osg::Texture2D* getLogo();
    /// Chooses the logo's place. Default LOWER_RIGHT.
    /// \throws std::invalid_argument for a value that is no location
    void setLogoLocation(LogoLocation location);
    /// The logo's place.
    LogoLocation getLogoLocation() const;
    /// The logo's distance from its corner, or with FREE from the lower left corner of the window, as fractions of
    /// the window's width and height.
    void setLogoPosition(float x, float y);
    /// The logo's width and height in pixels. A write to it changes the logo.
    osg::Vec2f& getLogoDimension();
    /// The largest width and height in pixels that a new logo takes.
    osg::Vec2f getMaximumLogoDimension() const;
    /// Sets the largest width and height in pixels and fits the present logo, keeping its proportions. Default 256 by
    /// 128.
    /// \throws std::invalid_argument unless both are positive and finite
    void setMaximumLogoDimension(float width, float height);
    /// The logo position of a new decorator.
    static osg::Vec2f getDefaultLogoPosition();
    /// The material of decorated nodes that set none; one for all decorators.
    static osg::Material* getDefaultDecoratorMaterial();

    /// Writes a text row. Row 0 is the uppermost; an empty text clears the row.
    /// \throws std::invalid_argument for a negative row or one beyond 999
    void setText(int row, hyx::String const& text, hyx::Vec4f const& color = hyx::Vec4f(1, 1, 1, 1));
    /// Clears all text rows.
    void clearText();
    /// The font of the text rows.
    std::string getFontName() const;
    /// Chooses the font of the text rows by name or file. A font that is not found leaves the rows in the built-in
    /// font, with a warning. Default DejaVuSans.
    void setFontName(std::string const& name);
    /// Height of a text row's characters in pixels.
    float getFontSize() const;
    /// Height of a text row's characters in pixels, before the pixel scale. Default 14.
    /// \throws std::invalid_argument unless the size is positive and finite
    void setFontSize(float size);

    /// Tells the decorator the window's size in pixels. A size that is not positive (a minimised window) is ignored.
    void updateWindowSize(int width, int height);
    /// Scale of text, logo and cursor on screens with small pixels. Default 1.
    /// \throws std::invalid_argument unless the scale is positive and finite
    void setScreenPixelScale(float scale);
    /// The node above everything drawn over the scene; what is added to it is drawn in pixel coordinates.
    osg::MatrixTransform* getHud();
    /// Takes everything off the head-up display: the text rows and all nodes that were added to it.
    void resetHUD();

    /// Draws a cursor at the cursor position, for windows whose own cursor is not in the picture. Default off.
    void setEnableRenderedCursor(bool enable);
    /// Whether the cursor is drawn.
    bool getEnableRenderedCursor() const;
    /// Moves the drawn cursor, in pixels from the lower left corner.
    void updateCursorPosition(float x, float y);

    /// The state that the whole decorated scene inherits.
    osg::StateSet* getDecoratorStateSet();
    /// The group whose children cast and receive shadows.
    osg::Group* getShadowedScene();
    /// The group whose children take no part in the shadows.
    osg::Group* getNonShadowedScene();

    /// Adds a node to the shadowed scene. False for null; refuses a node that the scene stands below.
    bool addChild(osg::Node* node) override;
    /// Inserts a node into the shadowed scene, at its end when the index is beyond it. False for null.
    bool insertChild(unsigned int index, osg::Node* node) override;
    /// Removes a node, from the non-shadowed scene when it stands there. False when it stands in neither.
    bool removeChild(osg::Node* node) override;
    /// Removes nodes of the shadowed scene from an index on. False when the index is beyond the end.
    bool removeChild(unsigned int index, unsigned int count = 1);
    /// Puts a node in the place of another one, also in the non-shadowed scene. False when the old one is in neither
    /// or the new one is null.
    bool replaceChild(osg::Node* oldNode, osg::Node* newNode) override;
    /// Puts a node in the place of the one at an index of the shadowed scene. False when there is none or for null.
    bool setChild(unsigned int index, osg::Node* node) override;
    /// Removes nodes of the shadowed scene from an index on. False when the index is beyond the end.
    bool removeChildren(unsigned int index, unsigned int count) override;

    void traverse(osg::NodeVisitor& visitor) override;
    osg::BoundingSphere computeBound() const override;

protected:
    ~SceneDecorator() override;

private:
    struct Implementation;
    std::unique_ptr<Implementation> m_implementation;
};

} // namespace hyxOSG
