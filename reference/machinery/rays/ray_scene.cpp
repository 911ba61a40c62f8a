// Asks the shapes that a ray may meet, each in its own coordinates.
#include "reference/machinery/rays/ray_scene.h"

#include "platform/hyxCollide/compound.h"
#include "reference/machinery/bullet/bullet_values.h"
#include "reference/machinery/bullet/exact_ray.h"

#include <algorithm>

namespace hyx {

using hyxCollide::Geometry;
using hyxCollide::Shape;

namespace {

RayBox boxAround(Shape const& shape, btTransform const& place) {
    Vec3 lower;
    Vec3 upper;
    shape.getBound(lower, upper);
    btVector3 const half = toBullet(upper - lower) / 2;
    btVector3 const center = place * (toBullet(lower + upper) / 2);
    btMatrix3x3 const spread = place.getBasis().absolute();
    // A little more, so that rounding loses no ray along a side.
    btVector3 const reach = spread * half * (1 + 1e-9) + btVector3(1, 1, 1) * (1e-12 * center.length());
    return {center - reach, center + reach};
}

/// Around all places between two: what turns may stand out from both ends.
RayBox boxAround(RayBox const& former, RayBox const& present, PoseMotion const& motion, Pose const& pose) {
    RayBox whole = former;
    whole.include(present);
    btVector3 const center = pose.place * pose.center;
    double const radius =
        (present.upper - present.lower).length() / 2 + ((present.upper + present.lower) / 2 - center).length();
    double const angle = motion.angle();
    btVector3 const margin = btVector3(1, 1, 1) * (radius * std::min(2.0, angle * angle / 4));
    return {whole.lower - margin, whole.upper + margin};
}

} // namespace

void RayScene::Moment::set(double share) {
    m_share = share;
    ++m_number;
}

void RayScene::update(hyxCollide::Space const& space, RigidBody const* ignored, bool moving) {
    m_targets.clear();
    m_boxes.clear();
    m_bounded.clear();
    m_endless.clear();
    for (auto& [shape, surface] : m_surfaces)
        surface.used = false;
    Places places;
    for (ref_ptr<Geometry> const& geometry : space.getGeometries()) {
        RigidBody const* body = geometry->getRigidBody();
        if (geometry->getEnableCollisions() && !(body && (body == ignored || !body->isEnabled())))
            add(*geometry, places, moving);
    }
    std::erase_if(m_surfaces, [](auto const& entry) { return !entry.second.used; });
    m_places = std::move(places);
    m_tree.build(m_boxes);
}

void RayScene::add(Geometry& geometry, Places& places, bool moving) {
    Shape& shape = *geometry.getShape();
    AffineMatrix4x4 const place = geometry.getTransform();
    if (shape.getType() != Shape::COMPOUND) {
        addPart(geometry, shape, place, 0, places, moving);
        return;
    }
    auto const& whole = static_cast<hyxCollide::Compound const&>(shape);
    for (UInt i = 0; i < whole.getNumShapes(); ++i)
        addPart(geometry, *whole.getShape(i), whole.getLocalTransform(i) * place, i, places, moving);
}

void RayScene::addPart(Geometry& geometry, Shape& shape, AffineMatrix4x4 const& place, UInt part, Places& places,
                       bool moving) {
    Pose const pose = Pose::of(place, geometry.getRigidBody());
    Known const present{pose, boxAround(shape, pose.place)};
    auto const known = m_places.find({&geometry, part});
    Known const& former = moving && known != m_places.end() ? known->second : present;
    auto const index = static_cast<std::uint32_t>(m_targets.size());
    m_targets.push_back({&geometry, &shape, surfaceOf(shape), PoseMotion(former.pose, pose)});
    if (shape.getType() == Shape::PLANE) {
        m_endless.push_back(index);
    } else {
        m_bounded.push_back(index);
        m_boxes.push_back(m_targets.back().motion.moves()
                              ? boxAround(former.box, present.box, m_targets.back().motion, pose)
                              : present.box);
    }
    places.emplace(std::pair(&geometry, part), present);
}

RaySurface const* RayScene::surfaceOf(Shape& shape) {
    if (hyxCollide::hasExactRay(shape))
        return nullptr;
    Surface& known = m_surfaces[&shape];
    if (!known.shape || known.revision != shape.getRevision())
        known = {&shape, shape.getRevision(), makeRaySurface(shape)};
    known.used = true;
    return known.triangles.get();
}

btTransform const& RayScene::placeOf(Moment& moment, std::uint32_t target) const {
    PoseMotion const& motion = m_targets[target].motion;
    if (!motion.moves() || moment.m_share == 1)
        return motion.present();
    moment.m_places.resize(m_targets.size());
    auto& [number, place] = moment.m_places[target];
    if (number != moment.m_number) {
        place = motion.at(moment.m_share);
        number = moment.m_number;
    }
    return place;
}

void RayScene::meet(Moment& moment, std::uint32_t index, Ray const& ray, std::optional<Hit>& nearest,
                    double& reach) const {
    Target const& target = m_targets[index];
    btTransform const& place = placeOf(moment, index);
    btVector3 const from = place.invXform(ray.origin);
    btVector3 const along = ray.direction * place.getBasis(); // turned back
    Hit hit;
    hit.distance = reach;
    if (target.surface) {
        if (!target.surface->meet(Ray(from, along), hit))
            return;
    } else {
        auto const entry = hyxCollide::castExactRay(*target.shape, from, from + along * reach);
        if (!entry || entry->fraction >= 1)
            return;
        hit.distance = entry->fraction * reach;
        hit.normal = entry->normal;
    }
    reach = hit.distance;
    hit.normal = place.getBasis() * hit.normal;
    hit.target = &target;
    nearest = hit;
}

std::optional<RayScene::Hit> RayScene::cast(Moment& moment, btVector3 const& origin, btVector3 const& direction,
                                            double reach) const {
    Ray const ray(origin, direction);
    std::optional<Hit> nearest;
    for (std::uint32_t const target : m_endless)
        meet(moment, target, ray, nearest, reach);
    m_tree.walk(ray, reach, [&](std::uint32_t i) { meet(moment, m_bounded[i], ray, nearest, reach); });
    return nearest;
}

} // namespace hyx
