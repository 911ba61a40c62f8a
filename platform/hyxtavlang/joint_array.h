// The joints of a loaded model, all at once.
#pragma once

#include "platform/hyx/objects/referenced.h"
#include "platform/hyx/values/vector.h"

#include <memory>
#include <string>
#include <vector>

namespace hyxtavlang {

/// The joints of a model that turn or slide, in the order of its file, and their numbers as arrays: radians and newton
/// metres, or metres and newtons. Every `set` throws std::invalid_argument unless there are as many numbers as joints
/// and all are finite.
class JointArray : public hyx::Referenced {
public:
    /// How many joints there are.
    unsigned getNumJoints() const;
    /// Of the joints, in the order of the arrays.
    std::vector<std::string> getNames() const;

    hyx::RealVector getPositions() const;
    /// Puts the bodies to where the joints have these positions, each relative to the one it hangs on; those that hang
    /// on nothing stay. Velocities stay.
    void setPositions(hyx::RealVector const& positions);

    hyx::RealVector getVelocities() const;
    /// Gives the bodies the velocities that the joints' speeds make; those that hang on nothing keep theirs.
    void setVelocities(hyx::RealVector const& velocities);

    /// What drives each joint: what was set, and what its drive gave in the last step.
    hyx::RealVector getEfforts() const;
    /// Puts these efforts on the joints in each step from now on, within their greatest.
    void setEfforts(hyx::RealVector const& efforts);

    /// Where the drives hold the joints; not a number where none does.
    hyx::RealVector getTargets() const;
    /// Lets the drives hold the joints at these positions, with the gain of the file, else stiffly and no faster than
    /// the joints' greatest speeds, and up to the greatest effort. Not a number lets go.
    void setTargets(hyx::RealVector const& targets);

    /// The greatest and least positions; infinite where there is none.
    hyx::RealVector getLowerLimits() const;
    /// Radians or metres; infinite where a joint has none.
    hyx::RealVector getUpperLimits() const;

    struct Implementation;

    explicit JointArray(std::unique_ptr<Implementation> implementation);

protected:
    ~JointArray() override;

private:
    std::unique_ptr<Implementation> m_implementation;
};

} // namespace hyxtavlang
