// Tells the geometries that use a shape that it has changed.
#include "platform/hyxCollide/shape.h"

#include "reference/machinery/bullet/geometry_implementation.h"
#include "reference/machinery/bullet/shape_implementation.h"

namespace hyxCollide {

Shape::Shape() : m_implementation(std::make_unique<Implementation>()) {}

Shape::~Shape() = default;

void Shape::changed(bool rebuild) {
    ++m_revision;
    Implementation& shared = *m_implementation;
    // Callbacks may add and remove users.
    std::vector<hyx::ref_ptr<Geometry>> const users(shared.users.begin(), shared.users.end());
    if (rebuild) {
        // What was built points into these, so it goes first, all of it before anybody is told.
        auto const tree = std::move(shared.tree);
        auto const triangles = std::move(shared.triangles);
        for (auto const& geometry : users)
            geometry->implementation().rebuild();
    }
    for (Shape* container : std::vector<Shape*>(shared.containers))
        container->changed(rebuild);
    for (auto const& geometry : users)
        geometry->implementation().shapeChanged();
}

} // namespace hyxCollide
