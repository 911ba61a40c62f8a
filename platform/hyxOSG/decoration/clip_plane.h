// A plane that cuts away part of the scene.
#pragma once

#include "platform/hyx/particles/particle_system.h"
#include "platform/hyx/values/plane.h"
#include "platform/hyx/values/vec3.h"

#include <osg/ClipNode>

#include <map>
#include <memory>

namespace hyxOSG {

class CutFaces;

/// A group whose children are drawn only on the side that the plane's normal points to. The plane is in the coordinates
/// of the group. Bodies whose meshes are closed are filled where they are cut, in their own look; open ones show their
/// inside.
///
/// A picture can have as many cuts as the graphics driver can do, six at least; drawing one with more of them throws
/// std::runtime_error.
class ClipPlane : public osg::ClipNode {
public:
    /// \param plane the cutting plane, in metres
    explicit ClipPlane(hyx::Plane const& plane);
    /// \param position a point of the plane
    /// \param normal towards the side that stays; need not have unit length
    /// \throws std::invalid_argument for values that are not finite and for a normal of no length
    ClipPlane(hyx::Vec3 const& position, hyx::Vec3 const& normal);
    /// The points that stay have a x + b y + c z + d >= 0.
    /// \throws std::invalid_argument for values that are not finite and for a = b = c = 0
    ClipPlane(double a, double b, double c, double d);

    char const* libraryName() const override { return "hyxOSG"; }

    char const* className() const override { return "ClipPlane"; }

    /// Moves the plane.
    void setClipPlane(hyx::Plane const& plane);
    /// Moves the plane to a point, keeping its normal.
    /// \throws std::invalid_argument for coordinates that are not finite
    void setPosition(hyx::Vec3 const& position);
    /// Turns the plane about its position.
    /// \throws std::invalid_argument for values that are not finite and for a normal of no length
    void setNormal(hyx::Vec3 const& normal);
    /// Turns the cut on or off. Default on.
    void setEnable(bool enable);
    /// Whether the plane cuts.
    bool getEnable() const;
    /// The plane.
    hyx::Plane getPlane() const;
    /// The point of the plane set last, else the one nearest to the origin.
    hyx::Vec3 getPosition() const;
    /// The unit normal, towards the side that stays.
    hyx::Vec3 getNormal() const;

    /// Chooses the particles that clipAgainstParticleSystem sorts; kept alive by the plane. Those hidden before are
    /// shown again. Null: none.
    void setParticleSystemToClip(hyx::ParticleSystem* particles);
    /// Makes the particles whose centres lie on the cut side wholly transparent and gives the others their opacity
    /// back; the simulation still moves all of them. Here the plane is taken in world coordinates. Call it after a
    /// step; with the cut turned off all are shown.
    void clipAgainstParticleSystem();

    void accept(osg::NodeVisitor& visitor) override;

    /// The state that made the cut in the picture gathered last; null where the cut had no part in it.
    osg::StateSet* lastCut() const { return m_lastCut; }

protected:
    ~ClipPlane() override;

private:
    void place(hyx::Vec3 const& position, hyx::Vec3 const& normal);
    void showParticles();

    hyx::Vec3 m_position;
    hyx::Vec3 m_normal;
    bool m_enabled = true;
    osg::ref_ptr<osg::StateSet> m_lastCut;
    std::unique_ptr<CutFaces> m_faces;
    hyx::ref_ptr<hyx::ParticleSystem> m_particles;
    std::map<hyx::Index, float> m_hidden; ///< opacity before hiding, by particle
};

} // namespace hyxOSG
