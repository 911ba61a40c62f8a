// Shapes put together from others.
#pragma once

#include "platform/hyx/values/affine_matrix4x4.h"
#include "platform/hyx/values/vector.h"
#include "platform/hyxCollide/shape.h"

namespace hyxCollide {

/// Several shapes that count as one.
class Compound : public Shape {
public:
    Compound() = default;

    /// Throws std::invalid_argument for null and for a shape that is, or contains, a compound, plane or height field.
    void add(Shape* shape, hyx::AffineMatrix4x4 const& local = hyx::AffineMatrix4x4());

    /// How many shapes it consists of.
    hyx::UInt getNumShapes() const { return m_parts.size(); }

    /// Throws std::out_of_range for a part that is not there, as does the next.
    Shape* getShape(hyx::UInt index) const { return m_parts.at(index).shape.get(); }

    /// From a part to the whole.
    hyx::AffineMatrix4x4 const& getLocalTransform(hyx::UInt index) const { return m_parts.at(index).local; }

    Type getType() const override { return COMPOUND; }

    /// The sum over all parts; overlaps count twice.
    hyx::Real getVolume() const override;
    void getBound(hyx::Vec3& lower, hyx::Vec3& upper) const override;

protected:
    ~Compound() override;

private:
    struct Part {
        hyx::ref_ptr<Shape> shape;
        hyx::AffineMatrix4x4 local;
    };

    hyx::Vector<Part> m_parts;
};

} // namespace hyxCollide
