// How much of its life a cable has used up.
#pragma once

#include "platform/hyx/objects/process.h"
#include "platform/hyx/objects/referenced.h"
#include "platform/hyx/values/types.h"
#include "platform/hyxCable/cable.h"

#include <vector>

namespace hyxCable {

/// How much each kind of stress counts, and how many cycles the cable bears.
/// A cycle of stress range S uses up (S / referenceStress) ^ exponent of a life.
struct DamageProperties {
    hyx::Real tensionWeight = 1;     ///< of the stress by the pull along the cable
    hyx::Real bendWeight = 1;        ///< of the stress by bending
    hyx::Real twistWeight = 1;       ///< of the stress by twist
    hyx::Real referenceStress = 1e9; ///< Pa: the range of which one cycle breaks the cable
    hyx::Real exponent = 5;          ///< how steeply the wear grows with the stress
};

/// Wear of a cable: stress cycles of each segment, counted by the rain-flow rule and summed by Miner's.
class CableDamage : public hyx::Process {
public:
    /// The wear of `cable`. Throws `std::invalid_argument` for null or properties that are not above 0.
    explicit CableDamage(Cable* cable, DamageProperties const& properties = DamageProperties());

    /// The cable that is watched.
    Cable* getCable() const;
    /// What its material bears.
    DamageProperties const& getProperties() const;

    /// Takes the cable's loads as they are; to be called once a step.
    void update();
    void postStep(hyx::TimeStamp time, hyx::Real timeStep) override;
    /// Forgets all wear.
    void reset();

    /// How many pieces of the cable are watched.
    hyx::UInt getNumSegments() const;
    /// The stress in Pa of a segment, 0 before the first `update`. Throws `std::out_of_range` past the end.
    hyx::Real getStress(hyx::Index segment) const;
    /// The life that one cycle of the present stress would use up.
    hyx::Real getCurrentDamage(hyx::Index segment) const;
    /// The life used up so far; the segment breaks at 1. Half cycles that are still open count half.
    hyx::Real getAccumulatedDamage(hyx::Index segment) const;
    /// Of the piece that has most; it breaks at 1.
    hyx::Real getMaximumAccumulatedDamage() const;
    /// Rises with every `update`.
    hyx::UInt getRevision() const;

protected:
    ~CableDamage() override;

private:
    struct History {
        hyx::Real stress = 0;
        hyx::Real damage = 0;
        std::vector<hyx::Real> turningPoints;
    };

    hyx::Real stressOf(SegmentLoad const& load) const;
    hyx::Real cycleDamage(hyx::Real range) const;
    void count(History& history, hyx::Real stress) const;

    hyx::ref_ptr<Cable> m_cable;
    DamageProperties m_properties;
    std::vector<History> m_history;
    hyx::UInt m_revision = 0;
};

} // namespace hyxCable
