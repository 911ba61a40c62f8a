// How far the wheel takes a camera.
#pragma once

#include <osgGA/OrbitManipulator>

namespace hyxOSG {

/// A notch of the wheel is a tenth of the distance; turned away from the user the wheel goes nearer, to a centimetre,
/// from where the camera goes on past the centre instead of coming to a stand before it.
inline void boundZoom(osgGA::OrbitManipulator& manipulator) {
    manipulator.setWheelZoomFactor(-0.1);
    manipulator.setMinimumDistance(0.01);
}

} // namespace hyxOSG
