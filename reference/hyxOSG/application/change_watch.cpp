// Sums up what a picture shows.
#include "reference/hyxOSG/application/change_watch.h"

#include "platform/hyx/bodies/rigid_body.h"
#include "platform/hyxSDK/simulation.h"

#include <osg/Camera>
#include <osg/Geometry>
#include <osg/MatrixTransform>
#include <osg/NodeVisitor>
#include <osg/PositionAttitudeTransform>
#include <osg/Uniform>
#include <osgText/Text>

#include <algorithm>
#include <string_view>
#include <utility>

namespace hyxOSG {
namespace {

constexpr std::chrono::milliseconds settling{300}; ///< a picture is one frame late, and scripts answer later still
constexpr std::chrono::milliseconds leastRest{500};
constexpr int restShare = 150;          ///< rests are so many times as long as what is drawn between them takes
constexpr unsigned int mostRead = 1024; ///< bytes

/// Fowler-Noll-Vo over words: tells apart, hides nothing.
class Sum {
public:
    template <class Value>
    void add(Value const& value) {
        auto const* bytes = reinterpret_cast<char const*>(&value);
        addBytes({bytes, sizeof value});
    }

    void addBytes(std::string_view bytes) {
        for (char const byte : bytes)
            m_sum = (m_sum ^ static_cast<unsigned char>(byte)) * 0x100000001b3;
    }

    void add(osg::Matrixd const& matrix) {
        addBytes({reinterpret_cast<char const*>(matrix.ptr()), 16 * sizeof(double)});
    }

    std::uint64_t get() const { return m_sum; }

private:
    std::uint64_t m_sum = 0xcbf29ce484222325;
};

class SceneSum : public osg::NodeVisitor {
public:
    explicit SceneSum(Sum& sum) : osg::NodeVisitor(TRAVERSE_ACTIVE_CHILDREN), m_sum(sum) {}

    void apply(osg::Node& node) override {
        m_sum.add(&node);
        m_sum.add(node.getNodeMask());
        if (osg::StateSet const* state = node.getStateSet())
            addState(*state);
        traverse(node);
    }

    void apply(osg::Transform& node) override {
        if (auto const* matrix = node.asMatrixTransform())
            m_sum.add(matrix->getMatrix());
        else if (auto const* attitude = node.asPositionAttitudeTransform()) {
            m_sum.add(attitude->getPosition());
            m_sum.add(attitude->getAttitude());
            m_sum.add(attitude->getScale());
        }
        apply(static_cast<osg::Node&>(node));
    }

    void apply(osg::Drawable& drawable) override {
        if (auto const* text = dynamic_cast<osgText::Text const*>(&drawable)) {
            m_sum.add(text->getPosition());
            m_sum.add(text->getColor());
            for (unsigned int const letter : text->getText())
                m_sum.add(letter);
        } else if (osg::Geometry* geometry = drawable.asGeometry()) {
            osg::Geometry::ArrayList arrays;
            geometry->getArrayList(arrays);
            for (auto const& array : arrays)
                if (array->getTotalDataSize() <= mostRead)
                    addData(*array); // small ones, such as the background's, may be written anew in each frame
                else
                    m_sum.add(array->getModifiedCount());
            for (auto const& primitives : geometry->getPrimitiveSetList())
                m_sum.add(primitives->getModifiedCount());
        }
        apply(static_cast<osg::Node&>(drawable));
    }

private:
    void addState(osg::StateSet const& state) {
        // By value: some are set anew in each frame.
        for (auto const& [name, uniform] : state.getUniformList()) {
            if (osg::FloatArray const* values = uniform.first->getFloatArray())
                addData(*values);
            else if (osg::IntArray const* numbers = uniform.first->getIntArray())
                addData(*numbers);
        }
    }

    void addData(osg::Array const& array) {
        m_sum.addBytes({static_cast<char const*>(array.getDataPointer()), array.getTotalDataSize()});
    }

    Sum& m_sum;
};

} // namespace

bool ChangeWatch::isDue(osg::Camera& camera, osg::Node& scene, hyxSDK::Simulation const& simulation,
                        std::uint64_t input) {
    Sum sum;
    sum.add(input);
    sum.add(camera.getViewMatrix());
    // Without what the near and far planes make of it, which are worked out anew in each frame.
    for (auto const& [row, column] : {std::pair(0, 0), {1, 1}, {2, 0}, {2, 1}})
        sum.add(camera.getProjectionMatrix()(row, column));
    sum.add(simulation.getTimeStamp());
    for (auto const& body : simulation.getRigidBodies()) {
        hyx::Vec3 const position = body->getPosition();
        hyx::Quat const rotation = body->getRotation();
        for (double const part : {position.x, position.y, position.z, rotation.x, rotation.y, rotation.z, rotation.w})
            sum.add(part);
    }
    SceneSum visitor(sum);
    scene.accept(visitor);

    auto const now = Clock::now();
    if (std::exchange(m_justDrawn, false))
        m_cost = now - m_drawn;
    if (sum.get() != m_seen)
        m_changed = now;
    m_seen = sum.get();
    bool const due =
        now - m_changed < settling || now - m_drawn > std::max<Clock::duration>(leastRest, restShare * m_cost);
    if (due)
        m_drawn = now;
    m_justDrawn = due;
    return due;
}

} // namespace hyxOSG
