// A surface whose heights all change in every frame: as a plain vertex buffer, and through the terrain renderer.
#include "bench/drawn_frames/turns.h"
#include "platform/hyxOSG/nodes/geometry_node.h"
#include "platform/hyxOSG/renderers/terrain_voxel_renderer.h"
#include "platform/hyxTerrain/terrain.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr float element = 0.02f;

float height_at(int x, int y, int frame) {
    return 0.3f * std::sin(0.05f * static_cast<float>(x + 3 * frame)) * std::cos(0.04f * static_cast<float>(y));
}

// What a program of its own would do: positions and normals in vertex buffers that are rewritten in place, one colour.
struct PlainSurface {
    int size;
    osg::ref_ptr<osg::Vec3Array> positions, normals;
    osg::ref_ptr<osg::Geometry> geometry = bench::make_buffered_geometry();

    explicit PlainSurface(int size)
        : size(size), positions(new osg::Vec3Array(size * size)), normals(new osg::Vec3Array(size * size)) {
        osg::ref_ptr<osg::DrawElementsUInt> const triangles = new osg::DrawElementsUInt(GL_TRIANGLES);
        for (unsigned y = 0; y + 1 < static_cast<unsigned>(size); ++y)
            for (unsigned x = 0; x + 1 < static_cast<unsigned>(size); ++x) {
                unsigned const a = y * size + x, b = a + 1, c = a + size, d = c + 1;
                for (unsigned corner : {a, b, d, a, d, c})
                    triangles->push_back(corner);
            }
        geometry->setVertexArray(positions);
        geometry->setNormalArray(normals, osg::Array::BIND_PER_VERTEX);
        geometry->addPrimitiveSet(triangles);
        rewrite(0);
    }

    void rewrite(int frame) {
        auto const clamped = [this](int i) { return std::clamp(i, 0, size - 1); };
        for (int y = 0; y < size; ++y)
            for (int x = 0; x < size; ++x)
                (*positions)[y * size + x].set(static_cast<float>(x) * element, static_cast<float>(y) * element,
                                               height_at(x, y, frame));
        for (int y = 0; y < size; ++y)
            for (int x = 0; x < size; ++x) {
                auto const z = [&](int i, int j) { return (*positions)[clamped(j) * size + clamped(i)].z(); };
                osg::Vec3 normal(z(x - 1, y) - z(x + 1, y), z(x, y - 1) - z(x, y + 1), 2 * element);
                normal.normalize();
                (*normals)[y * size + x] = normal;
            }
        positions->dirty();
        normals->dirty();
        geometry->dirtyBound();
    }
};

void rewrite(hyxTerrain::Terrain& terrain, int size, int frame) {
    for (int y = 0; y < size; ++y)
        for (int x = 0; x < size; ++x)
            terrain.setHeight(x, y, height_at(x, y, frame));
}

/// Rewrites the plain surface within the frame, where the renderer does the same work.
class RewriteEachFrame : public osg::NodeCallback {
public:
    explicit RewriteEachFrame(PlainSurface& surface) : m_surface(surface) {}

    void operator()(osg::Node* node, osg::NodeVisitor* visitor) override {
        m_surface.rewrite(++m_frame);
        traverse(node, visitor);
    }

private:
    PlainSurface& m_surface;
    int m_frame = 0;
};

} // namespace

// Three times: the plain surface rewritten in each frame, the renderer with new heights in each frame, and the renderer
// at rest. The soil's own work is left out.
extern "C" void terrain_surface(int size, int rounds, double* best) {
    auto const width = static_cast<double>(size) * element;
    auto const application =
        bench::make_application(hyx::Vec3(width / 2, -0.6 * width, 0.7 * width), hyx::Vec3(width / 2, width / 2, 0));
    hyx::ref_ptr<hyxTerrain::Terrain> const terrain = new hyxTerrain::Terrain(size, size, element, 1);
    osg::ref_ptr<osg::Group> const drawn = new osg::Group;
    hyx::ref_ptr<hyxOSG::TerrainVoxelRenderer> const renderer = new hyxOSG::TerrainVoxelRenderer(terrain.get(), drawn);
    PlainSurface plain(size);
    plain.geometry->setUpdateCallback(new RewriteEachFrame(plain));
    bench::take_turns(*application,
                      {{plain.geometry}, {drawn, [&](int frame) { rewrite(*terrain, size, frame); }}, {drawn}}, rounds,
                      best);
}
