// Reads what a window shows into memory that a script gave.
#pragma once

#include <vector>

namespace osg {
class State;
class Viewport;
} // namespace osg

namespace hyxOSG {

/// Pictures of the read buffer that is bound, as rows of RGB bytes from the top.
class PictureReader {
public:
    /// `rgb` takes three bytes for each pixel of the viewport.
    void read(osg::Viewport const& viewport, osg::State& state, unsigned char* rgb);

private:
    std::vector<unsigned char> m_pixels; ///< as the driver gives them: kept, for new memory costs more than the copy
};

} // namespace hyxOSG
