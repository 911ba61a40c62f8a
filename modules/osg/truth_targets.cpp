// What cameras know of their pixels, into memory of the caller's.
#include "modules/osg/scene_graph_rows.h"
#include "platform/hyx/bodies/body_identity.h"
#include "platform/hyx/bodies/rigid_body.h"
#include "platform/hyxOSG/application/example_application.h"
#include "platform/hyxOSG/capture/truth_target.h"

namespace osgViewer {
namespace {

using hyxOSG::TruthTarget;

TruthTarget& truth(hyxOSG::RenderTarget& target) {
    if (auto* const known = dynamic_cast<TruthTarget*>(&target))
        return *known;
    throw std::invalid_argument("the target was not made by newTruthTarget");
}

hyxOSG::RenderTarget* make_truth_target(unsigned int width, unsigned int height) {
    return new TruthTarget(width, height);
}

void prepare_truth(hyxOSG::RenderTarget& target) {
    truth(target).prepare();
}

// A writable buffer without gaps, or None.
class Memory {
public:
    Memory(PyObject* object, std::size_t bytes) {
        if (object == Py_None)
            return;
        if (PyObject_GetBuffer(object, &view_, PyBUF_C_CONTIGUOUS | PyBUF_WRITABLE) != 0)
            throw vocabulary::PythonError();
        if (bytes != any_size && std::size_t(view_.len) != bytes) {
            PyBuffer_Release(&view_);
            throw std::invalid_argument("a channel takes " + std::to_string(bytes) + " bytes");
        }
    }

    static constexpr std::size_t any_size = -1;

    std::size_t size() const { return std::size_t(view_.len); }

    Memory(Memory const&) = delete;
    Memory& operator=(Memory const&) = delete;

    ~Memory() {
        if (view_.obj)
            PyBuffer_Release(&view_);
    }

    template <class T>
    T* as() const {
        return static_cast<T*>(view_.buf);
    }

private:
    Py_buffer view_{};
};

// Arrays of the target's size, or None for what is not wanted; see TruthTarget::Channels. Of the size of `places` where
// there are some: rows and columns between pixels, as doubles.
void read_truth(hyxOSG::RenderTarget& target, PyObject* depth, PyObject* normals, PyObject* flow, PyObject* identities,
                PyObject* places) {
    TruthTarget const& source = truth(target);
    Memory const spots(places, Memory::any_size);
    bool const everywhere = places == Py_None;
    std::size_t const count =
        everywhere ? std::size_t(target.getSize().x) * target.getSize().y : spots.size() / sizeof(TruthTarget::Place);
    Memory const depths(depth, 4 * count), directions(normals, 12 * count), motion(flow, 8 * count),
        bodies(identities, 4 * count);
    TruthTarget::Channels const channels{depths.as<float>(), directions.as<float>(), motion.as<float>(),
                                         bodies.as<std::uint32_t>()};
    if (everywhere)
        source.read(channels);
    else
        source.read(channels, spots.as<TruthTarget::Place>(), count);
}

void draw_render_targets(hyxOSG::ExampleApplication& application) {
    application.drawRenderTargets();
}

unsigned int body_identity(hyx::RigidBody& body) {
    return hyx::bodyIdentity(body);
}

hyx::RigidBody* identified_body(unsigned int identity) {
    return hyx::identifiedBody(identity);
}

} // namespace
} // namespace osgViewer

namespace {

constexpr Declared truth_target_rows[] = {
    FUNCTION(newTruthTarget, SHARED(FREE(osgViewer::make_truth_target, (unsigned int, unsigned int)))),
    FUNCTION(prepareTruth, FREE(osgViewer::prepare_truth, (hyxOSG::RenderTarget&))),
    FUNCTION(readTruth, FREE(osgViewer::read_truth,
                             (hyxOSG::RenderTarget&, PyObject*, PyObject*, PyObject*, PyObject*, PyObject*))),
    FUNCTION(drawRenderTargets, FREE(osgViewer::draw_render_targets, (hyxOSG::ExampleApplication&))),
    FUNCTION(bodyIdentity, FREE(osgViewer::body_identity, (hyx::RigidBody&))),
    FUNCTION(identifiedBody, SHARED(FREE(osgViewer::identified_body, (unsigned int)))),
};

} // namespace

ROWS(truth_target_rows);
