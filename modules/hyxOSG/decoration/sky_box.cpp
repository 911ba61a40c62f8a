// The sky of six images.
#include "platform/hyxOSG/decoration/sky_box.h"

#include "binding/vocabulary/rows.h"

namespace {

constexpr Declared sky_box_rows[] = {
    FUNCTION(new_SkyBox, NEW(hyxOSG::SkyBox,
                             (std::string const&, std::string const&, std::string const&, double, float), 0.0, 1.0f)),
    FUNCTION(delete_SkyBox, DELETE(hyxOSG::SkyBox)),
    REGISTER(hyxOSG::SkyBox, SkyBox),
    INIT(SkyBox),
};

} // namespace

ROWS(sky_box_rows);
