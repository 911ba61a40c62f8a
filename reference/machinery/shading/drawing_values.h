// Values that are the same all over a drawing, for the programs of all surfaces.
#pragma once

#include <osg/StateSet>

#include <string>

namespace hyxOSG::decorator {

/// What a shader's text begins with. Fragment shaders then have what lights, materials, the sky and the first shadow
/// map are under the names of the table in the source file. A vertex shader that calls `void setDrawingValues()`, which
/// `drawingValuesShader` brings, works them out; where no vertex shader does, they stand for the uniforms themselves.
std::string withDrawingValues(char const* text);

/// The function for vertex shaders.
osg::ref_ptr<osg::Shader> drawingValuesShader();

/// Has the vertex shaders of the programs below `state` work the values out, which all of these must be able to do.
/// Software rasterizers fetch each number of a uniform for each pixel anew, at the price of ten multiplications; what
/// comes from a corner of the triangle is there.
void declareDrawingValues(osg::StateSet& state, bool enable = true);

} // namespace hyxOSG::decorator
