// Makes the prisms that a shader pulls into shadow volumes.
#include "reference/hyxOSG/decoration/volume_mesh.h"

#include <osg/TriangleFunctor>

namespace hyxOSG::decorator {
namespace {

struct Prisms {
    osg::ref_ptr<osg::Vec4Array> places = new osg::Vec4Array;
    osg::ref_ptr<osg::Vec3Array> normals = new osg::Vec3Array;
    osg::ref_ptr<osg::Vec3Array> middles = new osg::Vec3Array;
    osg::ref_ptr<osg::DrawElementsUInt> triangles = new osg::DrawElementsUInt(GL_TRIANGLES);

    // The last argument came and went with the versions of the scene-graph library.
    void operator()(osg::Vec3 const& a, osg::Vec3 const& b, osg::Vec3 const& c, bool = false) {
        osg::Vec3 const normal = (b - a) ^ (c - a);
        if (normal.length2() == 0)
            return;
        auto const first = static_cast<unsigned int>(places->size());
        for (float stays : {1.0f, 0.0f})
            for (osg::Vec3 const& corner : {a, b, c}) {
                places->push_back(osg::Vec4(corner, stays));
                normals->push_back(normal);
                middles->push_back((a + b + c) / 3.0f);
            }
        // Near cap, far cap and three sides, all counter-clockwise seen from outside.
        static unsigned int const faces[] = {0, 1, 2, 5, 4, 3, 3, 4, 1, 3, 1, 0, 4, 5, 2, 4, 2, 1, 5, 3, 0, 5, 0, 2};
        for (unsigned int corner : faces)
            triangles->push_back(first + corner);
    }
};

} // namespace

osg::ref_ptr<osg::Geometry> createVolumeMesh(osg::Drawable& drawable) {
    osg::TriangleFunctor<Prisms> prisms;
    drawable.accept(prisms);
    if (prisms.triangles->empty())
        return nullptr;
    osg::ref_ptr<osg::Geometry> mesh = new osg::Geometry;
    mesh->setVertexArray(prisms.places);
    mesh->setNormalArray(prisms.normals, osg::Array::BIND_PER_VERTEX);
    mesh->setTexCoordArray(0, prisms.middles);
    mesh->addPrimitiveSet(prisms.triangles);
    mesh->setUseDisplayList(false);
    mesh->setUseVertexBufferObjects(true);
    mesh->setCullingActive(false); // its shadow may be in view when it is not
    return mesh;
}

} // namespace hyxOSG::decorator
