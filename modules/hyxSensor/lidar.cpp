// Rows of the laser scanners.
#include "platform/hyxSensor/lidar.h"

#include "binding/vocabulary/number_arrays.h"
#include "binding/vocabulary/rows.h"
#include "platform/hyx/bodies/frame.h"
#include "platform/hyx/bodies/material.h"
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
            for (double const coordinate : {hit.position.x, hit.position.y, hit.position.z})
                *to++ = static_cast<float>(coordinate);
    });
}

// One row of bytes for each hit, as `Cloud` in python/extras/point_files.py reads them.
#pragma pack(push, 1)

struct CloudPoint {
    double x, y, z, time;
    float intensity, distance;
    std::uint32_t identity;
    std::uint16_t ring;
    std::uint8_t return_number, num_returns;
};

#pragma pack(pop)

PyObject* cloud(hyxSensor::Lidar const& self) {
    auto const& hits = self.getHits();
    return vocabulary::new_array<unsigned char>(hits.size(), sizeof(CloudPoint), [&](unsigned char* to) {
        for (LidarHit const& hit : hits) {
            CloudPoint const point{hit.position.x,
                                   hit.position.y,
                                   hit.position.z,
                                   hit.time,
                                   hit.intensity,
                                   hit.distance,
                                   hit.identity,
                                   static_cast<std::uint16_t>(hit.ring),
                                   static_cast<std::uint8_t>(hit.returnNumber),
                                   static_cast<std::uint8_t>(hit.numReturns)};
            to = std::copy_n(reinterpret_cast<unsigned char const*>(&point), sizeof point, to);
        }
    });
}

PyObject* ring_elevations(hyxSensor::Lidar const& self) {
    return vocabulary::to_list(self.getRingElevations());
}

void set_ring_elevations(hyxSensor::Lidar& self, PyObject* elevations) {
    std::vector<double> const values = vocabulary::read_all_numbers(elevations);
    self.setRingElevations(hyx::RealVector(values.begin(), values.end()));
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
        taken[i].position = place;
        taken[i].intensity = static_cast<float>(values[i]);
        taken[i].distance = static_cast<float>((place - origin).length());
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
    FUNCTION(Lidar_setRingElevations,
             CONTAINER(ADAPTER(hyxSensor::Lidar, setRingElevations, set_ring_elevations, (PyObject*)))),
    FUNCTION(Lidar_getRingElevations, ADAPTER(hyxSensor::Lidar, getRingElevations, ring_elevations, () const)),
    FUNCTION(Lidar_setRolling, METHOD(hyxSensor::Lidar, setRolling, (bool))),
    FUNCTION(Lidar_getRolling, METHOD(hyxSensor::Lidar, getRolling, () const)),
    FUNCTION(Lidar_setMaxReturns, METHOD(hyxSensor::Lidar, setMaxReturns, (hyx::UInt))),
    FUNCTION(Lidar_getMaxReturns, METHOD(hyxSensor::Lidar, getMaxReturns, () const)),
    FUNCTION(Lidar_setBeamDivergence, METHOD(hyxSensor::Lidar, setBeamDivergence, (hyx::Real))),
    FUNCTION(Lidar_getBeamDivergence, METHOD(hyxSensor::Lidar, getBeamDivergence, () const)),
    FUNCTION(Lidar_setReturnSeparation, METHOD(hyxSensor::Lidar, setReturnSeparation, (hyx::Real))),
    FUNCTION(Lidar_getReturnSeparation, METHOD(hyxSensor::Lidar, getReturnSeparation, () const)),
    FUNCTION(Lidar_setReflectivity, METHOD(hyxSensor::Lidar, setReflectivity, (hyx::Material*, hyx::Real))),
    FUNCTION(Lidar_getReflectivity, METHOD(hyxSensor::Lidar, getReflectivity, (hyx::Material*) const)),
    FUNCTION(Lidar_setTransparency, METHOD(hyxSensor::Lidar, setTransparency, (hyx::Material*, hyx::Real))),
    FUNCTION(Lidar_getTransparency, METHOD(hyxSensor::Lidar, getTransparency, (hyx::Material*) const)),
    FUNCTION(Lidar_setDropout, METHOD(hyxSensor::Lidar, setDropout, (hyx::Real))),
    FUNCTION(Lidar_getDropout, METHOD(hyxSensor::Lidar, getDropout, () const)),
    FUNCTION(Lidar_setLeastIntensity, METHOD(hyxSensor::Lidar, setLeastIntensity, (hyx::Real))),
    FUNCTION(Lidar_getLeastIntensity, METHOD(hyxSensor::Lidar, getLeastIntensity, () const)),
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
    FUNCTION(Lidar_getCloud, ADAPTER(hyxSensor::Lidar, getCloud, cloud, () const)),
    FUNCTION(Lidar_getRevision, METHOD(hyxSensor::Lidar, getRevision, () const)),
    FUNCTION(Lidar_getRingCounts, ADAPTER(hyxSensor::Lidar, getRingCounts, ring_counts, () const)),
    FUNCTION(delete_Lidar, DELETE(hyxSensor::Lidar)),
    REGISTER(hyxSensor::Lidar, Lidar),
    INIT(Lidar),
    FUNCTION(new_LidarHit, NEW(hyxSensor::LidarHit, ())),
    FUNCTION(LidarHit_position_get, GET(hyxSensor::LidarHit, position)),
    FUNCTION(LidarHit_position_set, SET(hyxSensor::LidarHit, position, (hyx::Vec3 const&))),
    FUNCTION(LidarHit_intensity_get, GET(hyxSensor::LidarHit, intensity)),
    FUNCTION(LidarHit_intensity_set, SET(hyxSensor::LidarHit, intensity, (float))),
    FUNCTION(LidarHit_distance_get, GET(hyxSensor::LidarHit, distance)),
    FUNCTION(LidarHit_distance_set, SET(hyxSensor::LidarHit, distance, (float))),
    FUNCTION(LidarHit_ring_get, GET(hyxSensor::LidarHit, ring)),
    FUNCTION(LidarHit_ring_set, SET(hyxSensor::LidarHit, ring, (unsigned int))),
    FUNCTION(LidarHit_time_get, GET(hyxSensor::LidarHit, time)),
    FUNCTION(LidarHit_time_set, SET(hyxSensor::LidarHit, time, (double))),
    FUNCTION(LidarHit_identity_get, GET(hyxSensor::LidarHit, identity)),
    FUNCTION(LidarHit_identity_set, SET(hyxSensor::LidarHit, identity, (unsigned int))),
    FUNCTION(LidarHit_returnNumber_get, GET(hyxSensor::LidarHit, returnNumber)),
    FUNCTION(LidarHit_returnNumber_set, SET(hyxSensor::LidarHit, returnNumber, (unsigned int))),
    FUNCTION(LidarHit_numReturns_get, GET(hyxSensor::LidarHit, numReturns)),
    FUNCTION(LidarHit_numReturns_set, SET(hyxSensor::LidarHit, numReturns, (unsigned int))),
    FUNCTION(delete_LidarHit, DELETE(hyxSensor::LidarHit)),
    REGISTER(hyxSensor::LidarHit, LidarHit),
    INIT(LidarHit),
};

} // namespace

ROWS(lidar_rows);
