// A handle to a light of the scene.
#pragma once

#include "platform/hyx/values/vec3.h"
#include "platform/hyx/values/vec4.h"
#include "platform/hyx/values/vec4f.h"

#include <osg/LightSource>
#include <osg/Referenced>
#include <osg/ref_ptr>

namespace hyxOSG {

/// Reads and sets one light of the scene graph. Copies of a handle mean the same light; a handle keeps its light alive,
/// but the light does not need the handle.
///
/// A handle without a light has light number -1, reads as a light of the standard values, and ignores what is set.
class LightSource : public osg::Referenced {
public:
    /// \param lightSource the light; null makes a handle without a light
    explicit LightSource(osg::LightSource* lightSource);
    /// Another handle to the same light.
    LightSource(LightSource const& other);
    /// Makes this handle mean the other handle's light.
    LightSource& operator=(LightSource const& other);
    ~LightSource() override;

    /// The light's number in the graphics library, from 0; -1 without a light.
    int getLightNum() const;

    /// Colour that reaches every surface, whatever its direction.
    void setAmbient(hyx::Vec4f const& color);
    /// Colour of the light on matt surfaces.
    void setDiffuse(hyx::Vec4f const& color);
    /// Colour of the highlights.
    void setSpecular(hyx::Vec4f const& color);
    /// Colour that reaches every surface, whatever its direction.
    hyx::Vec4f getAmbient() const;
    /// Colour of the light on matt surfaces.
    hyx::Vec4f getDiffuse() const;
    /// Colour of the highlights.
    hyx::Vec4f getSpecular() const;

    /// Places the light. Homogeneous: with w = 1 a point in metres, with w = 0 a light from far away, where x, y and z
    /// give the direction towards it.
    /// \throws std::invalid_argument for components that are not finite, or all zero
    void setPosition(hyx::Vec4 const& position);
    /// The place of the light, homogeneous.
    hyx::Vec4 getPosition() const;
    /// The direction in which a spot light shines.
    /// \throws std::invalid_argument for components that are not finite, or all zero
    void setDirection(hyx::Vec3 const& direction);
    /// The direction in which a spot light shines.
    hyx::Vec3 getDirection() const;

    /// The part of the attenuation that does not depend on the distance. Brightness is divided by
    /// constant + linear d + quadratic d^2, d in metres; lights from far away are not attenuated.
    /// \throws std::invalid_argument for a factor that is negative or not finite
    void setConstantAttenuation(float factor);
    /// The part of the attenuation that grows with the distance, per metre.
    /// \throws std::invalid_argument for a factor that is negative or not finite
    void setLinearAttenuation(float factor);
    /// The part of the attenuation that grows with the square of the distance, per square metre.
    /// \throws std::invalid_argument for a factor that is negative or not finite
    void setQuadraticAttenuation(float factor);
    /// How much a spot light is brighter in its middle, 0 (even) to 128.
    /// \throws std::invalid_argument for an exponent out of range
    void setSpotExponent(float exponent);
    /// Half the opening angle of a spot light in degrees, 0 to 90; 180 shines in all directions.
    /// \throws std::invalid_argument for an angle out of range
    void setSpotCutoff(float degrees);
    /// The part of the attenuation that does not depend on the distance.
    float getConstantAttenuation() const;
    /// The part of the attenuation that grows with the distance.
    float getLinearAttenuation() const;
    /// The part of the attenuation that grows with the square of the distance.
    float getQuadraticAttenuation() const;
    /// How much a spot light is brighter in its middle.
    float getSpotExponent() const;
    /// Half the opening angle of a spot light in degrees; 180: all directions.
    float getSpotCutoff() const;

private:
    osg::Light* light() const;
    osg::Light const& readable() const;

    osg::ref_ptr<osg::LightSource> m_lightSource;
};

} // namespace hyxOSG
