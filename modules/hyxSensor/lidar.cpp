// Rows of the laser scanners.
#include "platform/hyxSensor/lidar.h"

#include "binding/vocabulary/number_arrays.h"
#include "binding/vocabulary/rows.h"
#include "platform/hyx/bodies/frame.h"
#include "platform/hyx/bodies/rigid_body.h"

namespace {

using hyxSensor::LidarHit;

PyObject* hits(hyxSensor::Lidar const& self) {
    return vocabulary::to_list(self.getHits());
}

PyObject* ring_counts(hyxSensor::Lidar const& self) {
    return vocabulary::to_list(self.getRingCounts());
}

// One number of each hit.
template <class Number>
PyObject* numbers_of(hyxSensor::Lidar const& self, Number LidarHit::* member) {
    auto const& hits = self.getHits();
    return vocabulary::new_array<Number>(hits.size(), 0, [&](Number* to) {
        for (LidarHit const& hit : hits)
            *to++ = hit.*member;
    });
}

PyObject* intensities(hyxSensor::Lidar const& self) {
    return numbers_of(self, &LidarHit::intensity);
}

PyObject* distances(hyxSensor::Lidar const& self) {
    return numbers_of(self, &LidarHit::distance);
}

PyObject* rings(hyxSensor::Lidar const& self) {
    return numbers_of(self, &LidarHit::ring);
}

PyObject* points(hyxSensor::Lidar const& self) {
    auto const& hits = self.getHits();
    return vocabulary::new_array<float>(hits.size(), 3, [&](float* to) {
        for (LidarHit const& hit : hits)
            to = std::copy_n(hit.position.ptr(), 3, to);
    });
}

// Three coordinates and one intensity for each hit; the distance is that from the scanner.
void set_hits(hyxSensor::Lidar& self, PyObject* points, PyObject* intensities) {
    std::vector<double> const places = vocabulary::read_rows(points, 3),
                              values = vocabulary::read_all_numbers(intensities);
    if (places.size() != 3 * values.size())
        throw std::invalid_argument("a lidar needs three coordinates and one intensity for each hit");
    hyx::Vec3 const origin = self.getFrame() ? self.getFrame()->getTranslate() : hyx::Vec3();
    std::vector<LidarHit> taken(values.size());
    for (std::size_t i = 0; i < taken.size(); ++i) {
        hyx::Vec3 const place(places[3 * i], places[3 * i + 1], places[3 * i + 2]);
        taken[i] = {hyx::Vec3f(place), static_cast<float>(values[i]), static_cast<float>((place - origin).length()), 0};
    }
    self.setHits(std::move(taken));
}

constexpr Declared lidar_rows[] = {
    FUNCTION(new_Lidar, NEW(hyxSensor::Lidar, (hyx::Frame*), nullptr)),
    FUNCTION(Lidar_setFrame, METHOD(hyxSensor::Lidar, setFrame, (hyx::Frame*))),
    FUNCTION(Lidar_getFrame, SHARED(METHOD(hyxSensor::Lidar, getFrame, () const))),
    FUNCTION(Lidar_setIgnoredBody, METHOD(hyxSensor::Lidar, setIgnoredBody, (hyx::RigidBody*))),
    FUNCTION(Lidar_getIgnoredBody, SHARED(METHOD(hyxSensor::Lidar, getIgnoredBody, () const))),
    FUNCTION(Lidar_setResolution, METHOD(hyxSensor::Lidar, setResolution, (hyx::UInt, hyx::UInt))),
    FUNCTION(Lidar_getNumRings, METHOD(hyxSensor::Lidar, getNumRings, () const)),
    FUNCTION(Lidar_getNumRaysPerRing, METHOD(hyxSensor::Lidar, getNumRaysPerRing, () const)),
    FUNCTION(Lidar_setFieldOfView, METHOD(hyxSensor::Lidar, setFieldOfView, (hyx::Real, hyx::Real))),
    FUNCTION(Lidar_getHorizontalFieldOfView, METHOD(hyxSensor::Lidar, getHorizontalFieldOfView, () const)),
    FUNCTION(Lidar_getVerticalFieldOfView, METHOD(hyxSensor::Lidar, getVerticalFieldOfView, () const)),
    FUNCTION(Lidar_setRange, METHOD(hyxSensor::Lidar, setRange, (hyx::RangeReal))),
    FUNCTION(Lidar_getRange, METHOD(hyxSensor::Lidar, getRange, () const)),
    FUNCTION(Lidar_setDistanceNoise, METHOD(hyxSensor::Lidar, setDistanceNoise, (hyx::Real))),
    FUNCTION(Lidar_getDistanceNoise, METHOD(hyxSensor::Lidar, getDistanceNoise, () const)),
    FUNCTION(Lidar_setSeed, METHOD(hyxSensor::Lidar, setSeed, (hyx::UInt))),
    FUNCTION(Lidar_setScanRate, METHOD(hyxSensor::Lidar, setScanRate, (hyx::Real))),
    FUNCTION(Lidar_getScanRate, METHOD(hyxSensor::Lidar, getScanRate, () const)),
    FUNCTION(Lidar_setEnable, METHOD(hyxSensor::Lidar, setEnable, (bool))),
    FUNCTION(Lidar_getEnable, METHOD(hyxSensor::Lidar, getEnable, () const)),
    FUNCTION(Lidar_scan, METHOD(hyxSensor::Lidar, scan, ())),
    FUNCTION(Lidar_step, METHOD(hyxSensor::Lidar, step, (hyx::Real))),
    FUNCTION(Lidar_setHits, CONTAINER(ADAPTER(hyxSensor::Lidar, setHits, set_hits, (PyObject*, PyObject*)))),
    FUNCTION(Lidar_getHits, ADAPTER(hyxSensor::Lidar, getHits, hits, () const)),
    FUNCTION(Lidar_getPoints, ADAPTER(hyxSensor::Lidar, getPoints, points, () const)),
    FUNCTION(Lidar_getIntensities, ADAPTER(hyxSensor::Lidar, getIntensities, intensities, () const)),
    FUNCTION(Lidar_getDistances, ADAPTER(hyxSensor::Lidar, getDistances, distances, () const)),
    FUNCTION(Lidar_getRings, ADAPTER(hyxSensor::Lidar, getRings, rings, () const)),
    FUNCTION(Lidar_getRevision, METHOD(hyxSensor::Lidar, getRevision, () const)),
    FUNCTION(Lidar_getRingCounts, ADAPTER(hyxSensor::Lidar, getRingCounts, ring_counts, () const)),
    FUNCTION(delete_Lidar, DELETE(hyxSensor::Lidar)),
    REGISTER(hyxSensor::Lidar, Lidar),
    INIT(Lidar),
    FUNCTION(new_LidarHit, NEW(hyxSensor::LidarHit, ())),
    FUNCTION(LidarHit_position_get, GET(hyxSensor::LidarHit, position)),
    FUNCTION(LidarHit_position_set, SET(hyxSensor::LidarHit, position, (hyx::Vec3f const&))),
    FUNCTION(LidarHit_intensity_get, GET(hyxSensor::LidarHit, intensity)),
    FUNCTION(LidarHit_intensity_set, SET(hyxSensor::LidarHit, intensity, (float))),
    FUNCTION(LidarHit_distance_get, GET(hyxSensor::LidarHit, distance)),
    FUNCTION(LidarHit_distance_set, SET(hyxSensor::LidarHit, distance, (float))),
    FUNCTION(LidarHit_ring_get, GET(hyxSensor::LidarHit, ring)),
    FUNCTION(LidarHit_ring_set, SET(hyxSensor::LidarHit, ring, (unsigned int))),
    FUNCTION(delete_LidarHit, DELETE(hyxSensor::LidarHit)),
    REGISTER(hyxSensor::LidarHit, LidarHit),
    INIT(LidarHit),
};

} // namespace

ROWS(lidar_rows);
