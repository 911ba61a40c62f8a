// Rows of Texture2D.
#include "platform/hyxOSG/nodes/texture2d.h"

#include "binding/vocabulary/rows.h"

namespace {

constexpr Declared texture2d_rows[] = {
    FUNCTION(new_Texture2D, NEW(hyxOSG::Texture2D, (osg::Texture2D*))),
    FUNCTION(Texture2D_getTexture, METHOD(hyxOSG::Texture2D, getTexture, ())),
    REGISTER(hyxOSG::Texture2D, Texture2D),
    INIT(Texture2D),
};

} // namespace

ROWS(texture2d_rows);
