// What stands behind a decorator: its subtree, and the parts that draw it.
#pragma once

#include "platform/hyxOSG/decoration/scene_decorator.h"
#include "reference/hyxOSG/decoration/background.h"
#include "reference/hyxOSG/decoration/contact_shade.h"
#include "reference/hyxOSG/decoration/decorator_lights.h"
#include "reference/hyxOSG/decoration/drawn_cursor.h"
#include "reference/hyxOSG/decoration/logo.h"
#include "reference/hyxOSG/decoration/text_rows.h"
#include "reference/machinery/shading/shading_program.h"
#include "reference/machinery/shading/shadow_support.h"

#include <osg/Camera>
#include <osg/MatrixTransform>
#include <osg/Texture2D>
#include <osgShadow/ShadowedScene>

#include <string>

namespace hyxOSG {

/// The decorator's subtree: background, lit scene (lights, shadowed and non-shadowed part) and overlay.
struct SceneDecorator::Implementation {
    Implementation(int width, int height, int mapSize);

    decorator::ShadingOptions shading() const;

    /// Turns parts on and off and puts the program and the shadow technique in.
    void updateParts();
    /// Whether there is a node that may stand in the decorated scene.
    bool fits(osg::Node const* node) const;

    bool drawsWithProgram() const { return shaderState || drawnMethod != NO_SHADOWS; }

    /// Follows what the window's driver has turned out to do.
    void followSupport();

    /// Takes the light of a sky box in the scene, or else of the background.
    void followSky();

    /// Once for each method in a row.
    void warnOfReplacement();

    void updateLights() { lights.applyModes(*scene->getOrCreateStateSet()); }

    void layOut();

    /// The colours behind the scene, which are those of the sky and the ground around it, too.
    void setBackground(osg::Vec4 const& upperLeft, osg::Vec4 const& upperRight, osg::Vec4 const& lowerLeft,
                       osg::Vec4 const& lowerRight);

    void setSkyLight(osg::Vec3 const& sky, osg::Vec3 const& ground);

    osg::Vec2f window;
    unsigned int shadowMapSize;
    unsigned int shadowCasterLimit = 0;
    bool enabled = true;
    bool shadowsEnabled = false;
    ShadowMethod method = SOFT_SHADOWMAP;
    ShadowMethod drawnMethod = NO_SHADOWS;
    ShadowMethod replacedMethod = NO_SHADOWS; ///< the one warned of last
    bool shaderState = false;
    bool perPixelHighlights = true;
    bool skyLight = false;
    bool contactShade = false;
    float pixelScale = 1;

    osg::ref_ptr<decorator::ShadowSupportProbe> shadowSupport = new decorator::ShadowSupportProbe;
    decorator::Background background;
    decorator::DecoratorLights lights;
    decorator::Logo logo;
    decorator::TextRows rows;
    decorator::DrawnCursor cursor;
    osg::ref_ptr<osg::Group> scene = new osg::Group;
    osg::ref_ptr<osgShadow::ShadowedScene> shadowed = new osgShadow::ShadowedScene;
    // State that comes and goes lies on groups of its own, out of the way of what a script sets.
    osg::ref_ptr<osg::Group> lit = new osg::Group;
    osg::ref_ptr<osg::Group> aside = new osg::Group;
    osg::ref_ptr<decorator::ContactShade> contacts = new decorator::ContactShade;
    osg::ref_ptr<osg::Group> unshadowed = new osg::Group;
    osg::ref_ptr<osg::Camera> overlay;
    osg::ref_ptr<osg::MatrixTransform> hud = new osg::MatrixTransform;
    osg::ref_ptr<osg::Texture2D> whiteTexture;
};

} // namespace hyxOSG
