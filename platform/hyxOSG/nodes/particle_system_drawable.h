// The grains of a particle system as sprites, quads or small meshes.
#pragma once

#include <osg/Drawable>

#include <memory>

namespace hyx {
class ParticleSystem;
} // namespace hyx

namespace hyxOSG {

/// Draws every particle of a particle system in one call: round impostors or small meshes, read from the system each
/// time the drawable is updated. The system is referenced; a null system draws nothing.
class ParticleSystemDrawable : public osg::Drawable {
public:
    /// How a particle becomes triangles or points.
    enum ParticleRenderingMode {
        SPRITES = 0,      ///< one point sprite a particle; cheapest, limited to the driver's largest point
        QUAD_SPRITES = 1, ///< one camera-facing quad a particle
        TRIANGLES = 2     ///< a small sphere mesh a particle
    };

    /// How a particle is shaded.
    enum ParticleShaderMode {
        SIMPLE_SPRITES = 0,   ///< a lit ball in the particle's colour
        ROTATION_SPRITES = 1, ///< a lit ball with bands that turn with the particle
        ALPHA_SPRITES = 2     ///< a soft, see-through ball whose opacity falls off towards its rim
    };

    /// An empty drawable.
    ParticleSystemDrawable();

    /// Draws `particleSystem` (null: nothing). Modes out of range raise std::invalid_argument.
    explicit ParticleSystemDrawable(hyx::ParticleSystem* particleSystem,
                                    ParticleRenderingMode renderingMode = QUAD_SPRITES,
                                    ParticleShaderMode shaderMode = ROTATION_SPRITES);

    /// Shares the system and modes of `other`; buffers are its own.
    ParticleSystemDrawable(ParticleSystemDrawable const& other,
                           osg::CopyOp const& copyOperation = osg::CopyOp::SHALLOW_COPY);

    /// The shading in use.
    ParticleShaderMode getParticleShaderMode() const;

    /// Changes the shading; an unknown mode raises std::invalid_argument.
    void setParticleShaderMode(ParticleShaderMode shaderMode);

    /// How the particles are drawn: the mode asked for at construction, or the class-wide allowed mode where that is
    /// simpler.
    ParticleRenderingMode getParticleRenderingMode() const;

    /// Draw nothing while false. True at first.
    void setEnable(bool enable);

    /// Whether the particles are drawn.
    bool getEnable() const;

    /// The system that is drawn, null when there is none.
    hyx::ParticleSystem* getParticleSystem() const;

    /// The richest rendering mode that any drawable may use, for machines where quads or triangles are too slow:
    /// a drawable made with a higher mode is drawn with this one. TRIANGLES (no limit) at first. Unknown modes raise
    /// std::invalid_argument.
    static void setAllowedRenderMode(ParticleRenderingMode renderingMode);

    /// The richest rendering mode that any drawable may use.
    static ParticleRenderingMode getAllowedRenderMode();

    /// A new, empty drawable of the same class.
    osg::Object* cloneType() const override;

    /// A new drawable of the same system and modes.
    osg::Object* clone(osg::CopyOp const& copyOperation) const override;

    /// Whether `object` is a ParticleSystemDrawable; false for null.
    bool isSameKindAs(osg::Object const* object) const override;

    /// "hyxOSG".
    char const* libraryName() const override;

    /// "ParticleSystemDrawable".
    char const* className() const override;

    /// Draws the particles into the current context of `renderInfo`; nothing without a context.
    void drawImplementation(osg::RenderInfo& renderInfo) const override;

    /// Encloses all particles with their radii.
    osg::BoundingBox computeBoundingBox() const override;

    /// Reads positions, radii, colours and rotations again; called once a frame by the update traversal.
    void update();

    /// Frees the buffers and textures of `state`'s context, or of all contexts when null.
    void releaseGLObjects(osg::State* state = nullptr) const override;

protected:
    ~ParticleSystemDrawable() override;

private:
    struct Implementation;
    std::unique_ptr<Implementation> m_implementation;
};

} // namespace hyxOSG
