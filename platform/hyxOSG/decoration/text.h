// A piece of text in the scene.
#pragma once

#include "platform/hyx/values/string.h"
#include "platform/hyx/values/vec3.h"
#include "platform/hyx/values/vec4.h"
#include "platform/hyx/values/vec4f.h"

#include <osg/Geode>
#include <osg/ref_ptr>

namespace hyxOSG {

class Lettering;

/// A node that shows one text, UTF-8, with line breaks at newlines. Its character size is in metres, or in pixels where
/// it stands on the head-up display. It is not lit.
class Text : public osg::Geode {
public:
    /// The plane that the text lies in.
    enum AxisAlignment {
        XY_PLANE = 0,
        REVERSED_XY_PLANE = 1,
        XZ_PLANE = 2,
        REVERSED_XZ_PLANE = 3,
        YZ_PLANE = 4,
        REVERSED_YZ_PLANE = 5,
        SCREEN = 6, ///< always turned to the camera
        USER_DEFINED_ROTATION = 7,
    };

    /// What stands behind the characters to lift them off the background.
    enum BackdropType {
        DROP_SHADOW_BOTTOM_RIGHT = 0,
        DROP_SHADOW_CENTER_RIGHT = 1,
        DROP_SHADOW_TOP_RIGHT = 2,
        DROP_SHADOW_BOTTOM_CENTER = 3,
        DROP_SHADOW_TOP_CENTER = 4,
        DROP_SHADOW_BOTTOM_LEFT = 5,
        DROP_SHADOW_CENTER_LEFT = 6,
        DROP_SHADOW_TOP_LEFT = 7,
        OUTLINE = 8,
        NONE = 9,
    };

    /// The point of the text that stands at its position.
    enum AlignmentType {
        LEFT_TOP = 0,
        LEFT_CENTER = 1,
        LEFT_BOTTOM = 2,
        CENTER_TOP = 3,
        CENTER_CENTER = 4,
        CENTER_BOTTOM = 5,
        RIGHT_TOP = 6,
        RIGHT_CENTER = 7,
        RIGHT_BOTTOM = 8,
        LEFT_BASE_LINE = 9,
        CENTER_BASE_LINE = 10,
        RIGHT_BASE_LINE = 11,
        LEFT_BOTTOM_BASE_LINE = 12,
        CENTER_BOTTOM_BASE_LINE = 13,
        RIGHT_BOTTOM_BASE_LINE = 14,
        BASE_LINE = LEFT_BASE_LINE,
    };

    /// What is drawn, a bit each.
    enum DrawModeMask {
        TEXT = 1,
        BOUNDINGBOX = 2,       ///< a white frame around the text
        FILLEDBOUNDINGBOX = 4, ///< a dark, half transparent field behind the text
        ALIGNMENT = 8,         ///< a white cross at the position
    };

    /// An empty text at the origin, white, one metre high, in the XZ plane.
    Text();
    /// A text, one metre high, in the XZ plane.
    Text(hyx::String const& text, hyx::Vec3 const& position = hyx::Vec3(),
         hyx::Vec4 const& color = hyx::Vec4(1, 1, 1, 1));

    char const* libraryName() const override { return "hyxOSG"; }

    char const* className() const override { return "Text"; }

    /// Chooses the font by name or file; one that is not found leaves the font as it is, with a warning.
    void setFont(hyx::String const& font);
    /// Height of the characters.
    /// \throws std::invalid_argument unless the size is positive and finite
    void setCharacterSize(float size);
    /// Colour of the characters, components 0 to 1.
    void setColor(hyx::Vec4f const& color);
    /// Where the text stands.
    /// \throws std::invalid_argument for coordinates that are not finite
    void setPosition(hyx::Vec3 const& position);
    /// Chooses the plane that the text lies in.
    /// \throws std::invalid_argument for a value that is no alignment
    void setAxisAlignment(AxisAlignment alignment);
    /// Chooses what stands behind the characters. Default NONE.
    /// \throws std::invalid_argument for a value that is no backdrop
    void setBackdropType(BackdropType backdrop);
    /// Chooses what is drawn. Default TEXT; 0 draws nothing.
    /// \throws std::invalid_argument for bits that mean nothing
    void setDrawMode(DrawModeMask mask);
    /// Changes the text.
    void setText(hyx::String const& text);
    /// Chooses the point of the text that stands at its position. Default LEFT_BASE_LINE.
    /// \throws std::invalid_argument for a value that is no alignment
    void setAlignment(AlignmentType alignment);

protected:
    ~Text() override;

private:
    osg::ref_ptr<Lettering> m_text;
};

/// Takes a reference on a text; null is ignored.
void Text_reference(Text* text);
/// Gives a reference on a text back, which deletes it with the last one; null is ignored.
void Text_unreference(Text* text);

} // namespace hyxOSG
