// Shoots a scanner's rays, with noise that repeats from run to run.
#include "platform/hyx/bodies/body_identity.h"
#include "platform/hyxSDK/simulation.h"
#include "reference/hyx/values/number_checks.h"
#include "reference/hyxSensor/lidar_implementation.h"
#include "reference/machinery/bullet/bullet_values.h"
#include "reference/machinery/rays/parallel_chunks.h"

#include <cmath>
#include <numbers>

namespace hyxSensor {

using hyx::Real;

namespace {

constexpr hyx::UInt raysPerChunk = 512;
constexpr Real sameTime = 1e-9; // seconds, relative to a step

} // namespace

hyx::UInt Lidar::scan() {
    Implementation& self = *m_implementation;
    std::vector<LidarHit> found;
    if (getSimulation()) {
        self.look(*getSimulation()->getSpace(), false);
        self.shoot(0, self.fan.columns, {getSimulation()->getTimeStamp()}, found);
    }
    self.publish(std::move(found));
    return self.hits.size();
}

void Lidar::step(Real timeStep) {
    hyx::requirePositive(timeStep, "the time step of a lidar");
    Implementation& self = *m_implementation;
    if (!self.enable)
        return;
    if (self.rolling) {
        if (!getSimulation())
            return;
        Real const from = self.seen.value_or(getSimulation()->getTimeStamp());
        self.look(*getSimulation()->getSpace(), self.seen.has_value());
        self.roll(from, from + timeStep);
        self.seen = from + timeStep;
        return;
    }
    self.due += timeStep * self.rate;
    if (self.rate > 0 && self.due < 1 - 1e-9)
        return;
    self.due = std::max(0.0, self.due - std::floor(self.due + 1e-9));
    scan();
}

void Lidar::preStep(hyx::TimeStamp time, Real timeStep) {
    Implementation& self = *m_implementation;
    if (!self.rolling || !self.enable || (self.seen && std::abs(*self.seen - time) <= sameTime * timeStep))
        return;
    // The first step, or the simulation was taken to another time: nothing leads here from what was seen last.
    self.look(*getSimulation()->getSpace(), false);
    self.seen = time;
    self.turn.reset();
}

void Lidar::postStep(hyx::TimeStamp, Real timeStep) {
    step(timeStep);
}

void Lidar::setHits(std::vector<LidarHit> hits) {
    m_implementation->publish(std::move(hits));
}

std::vector<LidarHit> const& Lidar::getHits() const {
    return m_implementation->hits;
}

hyx::UInt Lidar::getRevision() const {
    return m_implementation->revision;
}

std::vector<hyx::UInt> Lidar::getRingCounts() const {
    std::vector<hyx::UInt> counts(getNumRings(), 0);
    for (LidarHit const& hit : m_implementation->hits)
        if (hit.ring < counts.size())
            ++counts[hit.ring];
    return counts;
}

void Lidar::Implementation::look(hyxCollide::Space const& space, bool moving) {
    scene.update(space, ignored.get(), moving);
    hyx::Pose const now = hyx::Pose::of(frame.get());
    motion = hyx::PoseMotion(moving ? pose : now, now);
    pose = now;
}

void Lidar::Implementation::roll(Real from, Real to) {
    Real const period = rate > 0 ? 1 / rate : to - from;
    auto const columns = static_cast<Real>(fan.columns);
    if (!turn)
        turn = Turn{from};
    for (;;) {
        // A column whose moment is the end of this step, but for rounding, belongs to the next.
        Real const reached = std::ceil((to - turn->start) / period * columns - 1e-6);
        auto const end = static_cast<hyx::UInt>(std::clamp(reached, static_cast<Real>(turn->columnsShot), columns));
        shoot(turn->columnsShot, end, {turn->start, period / columns, from, to}, turn->hits);
        turn->columnsShot = end;
        if (end < fan.columns)
            return;
        publish(std::move(turn->hits));
        turn = Turn{turn->start + period};
    }
}

void Lidar::Implementation::publish(std::vector<LidarHit>&& complete) {
    hits = std::move(complete);
    ++revision;
    hyx::sweepIdentities();
}

void Lidar::Implementation::shoot(hyx::UInt first, hyx::UInt end, Schedule const& schedule, std::vector<LidarHit>& to) {
    hyx::UInt const columnsPerChunk = std::max<hyx::UInt>(1, raysPerChunk / fan.elevations.size());
    std::vector<Shots> chunks((end - first + columnsPerChunk - 1) / columnsPerChunk);
    hyx::forChunks(end - first, columnsPerChunk, [&](std::size_t begin, std::size_t stop) {
        chunks[begin / columnsPerChunk] = shootColumns(first + begin, first + stop, schedule);
    });
    for (Shots const& chunk : chunks)
        record(chunk, to);
}

Lidar::Implementation::Shots Lidar::Implementation::shootColumns(hyx::UInt first, hyx::UInt end,
                                                                 Schedule const& schedule) const {
    Shots shots;
    hyx::RayScene::Moment moment;
    std::vector<Echo> echoes;
    for (hyx::UInt column = first; column < end; ++column) {
        Real const share = schedule.share(column);
        moment.set(share);
        btTransform const place = motion.at(share);
        for (hyx::UInt ring = 0; ring < fan.elevations.size(); ++ring) {
            btVector3 const direction = place.getBasis() * fan.direction(ring, column);
            beam.shoot(scene, moment, place.getOrigin(), direction, echoes);
            if (echoes.empty())
                continue;
            shots.pulses.push_back({ring, schedule.time(column), place.getOrigin(), direction, echoes.size()});
            shots.echoes.insert(shots.echoes.end(), echoes.begin(), echoes.end());
        }
    }
    return shots;
}

void Lidar::Implementation::record(Shots const& shots, std::vector<LidarHit>& to) {
    auto echo = shots.echoes.begin();
    for (Pulse const& pulse : shots.pulses) {
        std::size_t const first = to.size();
        for (std::size_t i = 0; i < pulse.numEchoes; ++i)
            if (auto const hit = record(pulse, *echo++))
                to.push_back(*hit);
        for (std::size_t i = first; i < to.size(); ++i) {
            to[i].returnNumber = static_cast<unsigned int>(i - first + 1);
            to[i].numReturns = static_cast<unsigned int>(to.size() - first);
        }
    }
}

std::optional<LidarHit> Lidar::Implementation::record(Pulse const& pulse, Echo const& echo) {
    if (echo.intensity < leastIntensity || (dropout > 0 && randomNumber() < dropout))
        return std::nullopt;
    Real const measured = beam.range.clamp(noise > 0 ? echo.distance + noise * randomNormal() : echo.distance);
    LidarHit hit;
    hit.position = hyx::fromBullet(pulse.origin + pulse.direction * measured);
    hit.time = pulse.time;
    hit.intensity = static_cast<float>(echo.intensity);
    hit.distance = static_cast<float>(measured);
    hit.ring = static_cast<unsigned int>(pulse.ring);
    if (hyx::RigidBody* const body = echo.geometry->getRigidBody())
        hit.identity = hyx::bodyIdentity(*body);
    return hit;
}

Real Lidar::Implementation::randomNumber() {
    return static_cast<Real>(generator() >> 11) * 0x1p-53;
}

// Box and Muller's; the distributions of the standard library differ from one library to the next.
Real Lidar::Implementation::randomNormal() {
    Real const u = randomNumber() + 0x1p-53;
    return std::sqrt(-2 * std::log(u)) * std::cos(2 * std::numbers::pi * randomNumber());
}

} // namespace hyxSensor
