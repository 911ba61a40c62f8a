// Grids in the plane and in space.

#include "platform/hyxOSG/visuals/grid_axes.h"
#include "platform/osg/attachment.h"
#include "reference/machinery/meshes/conversions.h"
#include "reference/machinery/meshes/line_meshes.h"
#include "reference/machinery/meshes/mesh_builder.h"
#include "reference/machinery/shading/vertex_colors.h"

#include <osg/Geode>

#include <stdexcept>
#include <string>

namespace hyxOSG {
namespace {

osg::Vec4 const gridColor(0.6f, 0.6f, 0.6f, 1);

void checkCells(unsigned int cells, unsigned int most) {
    if (cells < 1 || cells > most)
        throw std::invalid_argument("a grid needs 1 to " + std::to_string(most) + " cells along each edge, not " +
                                    std::to_string(cells));
}

float part(unsigned int place, unsigned int cells) {
    return static_cast<float>(place) / static_cast<float>(cells);
}

void addLine(osg::Vec3Array& points, osg::Vec3 const& start, osg::Vec3 const& way) {
    points.push_back(start);
    points.push_back(start + way);
}

/// Lines along `along` from each knot of the net of `u` and `v`.
void addNet(osg::Vec3Array& points, osg::Vec3 const& corner, osg::Vec3 const& u, unsigned int cellsU,
            osg::Vec3 const& v, unsigned int cellsV, osg::Vec3 const& along) {
    for (unsigned int j = 0; j <= cellsV; ++j)
        for (unsigned int i = 0; i <= cellsU; ++i)
            addLine(points, corner + u * part(i, cellsU) + v * part(j, cellsV), along);
}

osg::ref_ptr<osg::Geometry> checkerboard(unsigned int cellsU, unsigned int cellsV, osg::Vec3 const& corner,
                                         osg::Vec3 const& u, osg::Vec3 const& v) {
    MeshBuilder mesh;
    osg::ref_ptr<osg::Vec4Array> const colors = new osg::Vec4Array;
    for (unsigned int j = 0; j < cellsV; ++j)
        for (unsigned int i = 0; i < cellsU; ++i) {
            osg::Vec3 const start = corner + u * part(i, cellsU) + v * part(j, cellsV);
            osg::Vec3 const sideU = u / static_cast<float>(cellsU), sideV = v / static_cast<float>(cellsV);
            mesh.addQuad(start, start + sideU, start + sideU + sideV, start + sideV);
            float const shade = (i + j) % 2 ? 0.35f : 0.75f;
            colors->insert(colors->end(), 4, osg::Vec4(shade, shade, shade, 1));
        }
    osg::ref_ptr<osg::Geometry> const board = mesh.build();
    useVertexColors(*board, colors.get());
    return board;
}

osg::ref_ptr<osg::Geode> geodeWith(osg::Geometry* geometry) {
    osg::ref_ptr<osg::Geode> const geode = new osg::Geode;
    geode->addDrawable(geometry);
    return geode;
}

} // namespace

osg::Geometry* createGrid(unsigned int numCellsU, unsigned int numCellsV, osg::Vec3 const& corner,
                          osg::Vec3 const& edgeU, osg::Vec3 const& edgeV, bool filled) {
    checkCells(numCellsU, filled ? 1000 : 10000);
    checkCells(numCellsV, filled ? 1000 : 10000);
    if (filled)
        return checkerboard(numCellsU, numCellsV, corner, edgeU, edgeV).release();
    osg::ref_ptr<osg::Vec3Array> const points = new osg::Vec3Array;
    for (unsigned int i = 0; i <= numCellsU; ++i)
        addLine(*points, corner + edgeU * part(i, numCellsU), edgeV);
    for (unsigned int j = 0; j <= numCellsV; ++j)
        addLine(*points, corner + edgeV * part(j, numCellsV), edgeU);
    return lineMesh(points, GL_LINES, gridColor, 1).release();
}

osg::Geode* createGrid(unsigned int numCellsU, unsigned int numCellsV, hyx::Vec3 const& corner, hyx::Vec3 const& edgeU,
                       hyx::Vec3 const& edgeV, osg::Group* root) {
    osg::ref_ptr<osg::Geode> geode = geodeWith(
        createGrid(numCellsU, numCellsV, osg::Vec3(toOsg(corner)), osg::Vec3(toOsg(edgeU)), osg::Vec3(toOsg(edgeV))));
    if (!root)
        return geode.release();
    osg::attach(*root, *geode);
    return geode.get();
}

osg::Geometry* create3DGrid(unsigned int numCellsU, unsigned int numCellsV, unsigned int numCellsW,
                            osg::Vec3 const& corner, osg::Vec3 const& edgeU, osg::Vec3 const& edgeV,
                            osg::Vec3 const& edgeW, float lineWidth) {
    for (unsigned int const cells : {numCellsU, numCellsV, numCellsW})
        checkCells(cells, 500);
    osg::ref_ptr<osg::Vec3Array> const points = new osg::Vec3Array;
    addNet(*points, corner, edgeU, numCellsU, edgeV, numCellsV, edgeW);
    addNet(*points, corner, edgeV, numCellsV, edgeW, numCellsW, edgeU);
    addNet(*points, corner, edgeW, numCellsW, edgeU, numCellsU, edgeV);
    return lineMesh(points, GL_LINES, gridColor, lineWidth).release();
}

osg::Geode* create3DGrid(unsigned int numCellsU, unsigned int numCellsV, unsigned int numCellsW,
                         hyx::Vec3 const& corner, hyx::Vec3 const& edgeU, hyx::Vec3 const& edgeV,
                         hyx::Vec3 const& edgeW, float lineWidth) {
    return geodeWith(create3DGrid(numCellsU, numCellsV, numCellsW, osg::Vec3(toOsg(corner)), osg::Vec3(toOsg(edgeU)),
                                  osg::Vec3(toOsg(edgeV)), osg::Vec3(toOsg(edgeW)), lineWidth))
        .release();
}

} // namespace hyxOSG
