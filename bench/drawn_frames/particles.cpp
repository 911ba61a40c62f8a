// Many moving particles: as a plain point cloud, and through the particle drawable in each rendering mode.
#include "bench/drawn_frames/turns.h"
#include "platform/hyx/particles/particle_system.h"
#include "platform/hyxOSG/nodes/particle_system_drawable.h"

#include <osg/Geode>

#include <random>

namespace {

hyx::ref_ptr<hyx::ParticleSystem> make_particles(int count) {
    std::mt19937 numbers(1);
    std::uniform_real_distribution<double> place(-4, 4);
    hyx::ref_ptr<hyx::ParticleSystem> particles = new hyx::ParticleSystem;
    particles->setParticleRadius(0.03);
    for (int i = 0; i < count; ++i)
        particles->createParticle(hyx::Vec3(place(numbers), place(numbers), 0.5 * place(numbers)), hyx::Vec3());
    return particles;
}

/// What a program of its own would do: copy the places into a vertex buffer in each frame, colours once.
class PlainCloud : public osg::NodeCallback {
public:
    explicit PlainCloud(hyx::ParticleSystem const& particles)
        : m_particles(particles), m_positions(new osg::Vec3Array(particles.getNumParticles())) {
        osg::ref_ptr<osg::Vec4ubArray> const colors = new osg::Vec4ubArray;
        for (hyx::Particle const& particle : m_particles.getParticles())
            colors->push_back(osg::Vec4ub(static_cast<unsigned char>(255 * particle.color.x), 128, 64, 255));
        geometry = bench::make_points(m_positions, colors, 5);
        rewrite();
    }

    void operator()(osg::Node* node, osg::NodeVisitor* visitor) override {
        rewrite();
        traverse(node, visitor);
    }

    osg::ref_ptr<osg::Geometry> geometry;

private:
    void rewrite() {
        auto place = m_positions->begin();
        for (hyx::Particle const& particle : m_particles.getParticles())
            *place++ = osg::Vec3d(particle.position.x, particle.position.y, particle.position.z);
        m_positions->dirty();
        geometry->dirtyBound();
    }

    hyx::ParticleSystem const& m_particles;
    osg::ref_ptr<osg::Vec3Array> m_positions;
};

} // namespace

// Four times: the plain cloud, points, quads, and meshes; shaded plainly, in the size of about five pixels.
extern "C" void particles(int count, int rounds, double* best) {
    auto const application = bench::make_application(hyx::Vec3(0, -9, 6), hyx::Vec3(0, 0, 0));
    auto const system = make_particles(count);
    osg::ref_ptr<PlainCloud> const plain = new PlainCloud(*system);
    plain->geometry->setUpdateCallback(plain);
    std::vector<bench::Case> cases{{plain->geometry}};
    using Drawable = hyxOSG::ParticleSystemDrawable;
    for (auto const mode : {Drawable::SPRITES, Drawable::QUAD_SPRITES, Drawable::TRIANGLES}) {
        osg::ref_ptr<osg::Geode> const geode = new osg::Geode;
        geode->addDrawable(new Drawable(system, mode, Drawable::SIMPLE_SPRITES));
        cases.push_back({geode});
    }
    bench::take_turns(*application, cases, rounds, best);
    plain->geometry->setUpdateCallback(nullptr);
}
