// Keeps fronts of meshes in front below transforms that mirror, which turn the order of the corners around.
#include <osg/FrontFace>
#include <osg/Transform>
#include <osgUtil/CullVisitor>

#include <utility>

namespace hyxOSG {
namespace {

osg::StateSet* orderOfCorners(bool mirrored) {
    static auto const make = [](osg::FrontFace::Mode mode) {
        osg::ref_ptr<osg::StateSet> made = new osg::StateSet;
        made->setAttribute(new osg::FrontFace(mode));
        return made;
    };
    static osg::ref_ptr<osg::StateSet> const clockwise = make(osg::FrontFace::CLOCKWISE);
    static osg::ref_ptr<osg::StateSet> const counterClockwise = make(osg::FrontFace::COUNTER_CLOCKWISE);
    return (mirrored ? clockwise : counterClockwise).get();
}

class FaceKeepingVisitor : public osgUtil::CullVisitor {
public:
    using osgUtil::CullVisitor::apply;

    osgUtil::CullVisitor* clone() const override { return new FaceKeepingVisitor(*this); }

    void apply(osg::Transform& node) override {
        bool const relative = node.getReferenceFrame() == osg::Transform::RELATIVE_RF;
        bool const mirrored = mirrors(node) != (relative && m_mirrored);
        if (mirrored == m_mirrored) {
            CullVisitor::apply(node);
            return;
        }
        bool const above = std::exchange(m_mirrored, mirrored);
        pushStateSet(orderOfCorners(mirrored));
        CullVisitor::apply(node);
        popStateSet();
        m_mirrored = above;
    }

private:
    bool mirrors(osg::Transform& node) {
        osg::Matrixd place;
        node.computeLocalToWorldMatrix(place, this);
        osg::Vec3d const x(place(0, 0), place(0, 1), place(0, 2)), y(place(1, 0), place(1, 1), place(1, 2)),
            z(place(2, 0), place(2, 1), place(2, 2));
        return (x ^ y) * z < 0;
    }

    bool m_mirrored = false;
};

[[maybe_unused]] bool const inUse = [] {
    osgUtil::CullVisitor::prototype() = new FaceKeepingVisitor;
    return true;
}();

} // namespace
} // namespace hyxOSG
