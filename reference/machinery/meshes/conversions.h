// Values of the physics library as values of the scene graph and back.
#pragma once

#include "platform/hyx/values/affine_matrix4x4.h"
#include "platform/hyx/values/quat.h"
#include "platform/hyx/values/vec3.h"
#include "platform/hyx/values/vec4.h"
#include "platform/hyx/values/vec4f.h"
#include "reference/hyx/values/number_checks.h"

#include <osg/Matrixd>
#include <osg/Quat>
#include <osg/Vec3d>
#include <osg/Vec4f>

#include <cmath>

namespace hyxOSG {

inline osg::Vec3d toOsg(hyx::Vec3 const& vector) {
    return {vector.x, vector.y, vector.z};
}

inline osg::Vec4f toOsg(hyx::Vec4f const& vector) {
    return {vector.x, vector.y, vector.z, vector.w};
}

inline osg::Vec4f toOsg(hyx::Vec4 const& vector) {
    return toOsg(hyx::Vec4f(vector));
}

/// Of a colour as it is set, so that no frame has to refuse it.
inline hyx::Vec4f requireColor(hyx::Vec4f const& color) {
    for (float const part : {color.x, color.y, color.z, color.w})
        hyx::requireArgument(std::isfinite(part), "the parts of a colour must be finite");
    return color;
}

inline osg::Quat toOsg(hyx::Quat const& rotation) {
    return {rotation.x, rotation.y, rotation.z, rotation.w};
}

inline osg::Matrixd toOsg(hyx::AffineMatrix4x4 const& matrix) {
    return osg::Matrixd(matrix.ptr());
}

inline hyx::Vec3 toHyx(osg::Vec3d const& vector) {
    return {vector.x(), vector.y(), vector.z()};
}

} // namespace hyxOSG
