// Recording and playback of the states of bodies and grains.
#pragma once

#include "platform/hyx/bodies/rigid_body.h"
#include "platform/hyx/objects/referenced.h"
#include "platform/hyx/values/types.h"

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace hyxSDK {
class Simulation;
} // namespace hyxSDK

namespace hyx {

/// A file (HDF5) of sessions, each a row of states of the bodies of one simulation.
///
/// A session is a group with the names and shapes of its bodies, the times, and for each span of time with the same
/// bodies their positions, rotations and velocities as extendable arrays, and those of the grains of particle systems.
/// While it is recorded, a session lies in a log beside the file (`run.h5.log`), to which each state is added at once.
/// Closing makes it part of the file, which until then stays as it was; a log that a killed process or a full disk left
/// behind becomes part of it when the file is next recorded to, played back or listed.
class Journal : public hyx::Referenced {
public:
    /// How a session is recorded.
    struct Settings {
        bool single = false;      ///< single precision: half the size
        bool compressed = false;  ///< deflated: smaller still, slower
        bool incremental = false; ///< follow bodies that come and go
        bool velocities = true;   ///< record velocities too
        bool contacts = true;     ///< record contact points with their forces too
        double frequency = 0;     ///< states per simulated second; 0 for every step
        /// Gives what else is to be known of these bodies, such as their look: any text, recorded with them once.
        std::function<std::string(RigidBodyPtrVector const&)> describe;
    };

    Journal();

    /// Starts to record a session called `session` (empty: `session_1`, `session_2` ...) for the file `path`. With
    /// `append` the sessions already in the file stay. Throws std::filesystem::filesystem_error when it cannot be
    /// written, and std::runtime_error when it is damaged, or has the session already.
    void record(std::string const& path, std::string const& session, Settings const& settings, bool append);

    /// Opens `path` for playback of `session` (empty: the first). Throws std::runtime_error for a missing or damaged
    /// file or session; damaged parts of a session are passed over with a notification.
    void play(std::string const& path, std::string const& session = "");

    /// Ends recording or playback. What was recorded becomes part of the file, or throws
    /// std::filesystem::filesystem_error and stays in the log.
    void close();

    /// Whether a session is being recorded.
    bool isRecording() const;
    /// Whether a session is being played back.
    bool isPlaying() const;
    /// Path of the open file; empty for none.
    std::string getPath() const;
    /// Name of the open session; empty for none.
    std::string getSessionName() const;
    /// Number of states recorded or to be played.
    size_t getNumStates() const;

    /// Records the state of `simulation` when one is due; with `force` in any case.
    void store(hyxSDK::Simulation* simulation, bool force = false);

    /// Puts the next state into `simulation`: bodies and joints are found by name, particle systems by their order, and
    /// made as they were recorded when they are missing. The contacts of the simulation's space are the recorded ones
    /// until its next step. Returns false at the end.
    bool playNext(hyxSDK::Simulation* simulation);
    /// Puts the last state at or before `time` into `simulation`, or the first one, as `playNext`, which goes on from
    /// there. Returns false when nothing is played.
    bool playAt(hyxSDK::Simulation* simulation, double time);
    /// Goes so many states forward, or back (negative), from the one that is shown, to the ends at most.
    bool playRelative(hyxSDK::Simulation* simulation, int states);

    /// Time of the first state that is played back, in simulated seconds.
    double getStartTime() const;
    /// Time of the last state that is played back.
    double getEndTime() const;
    /// What `Settings::describe` gave when the shown bodies were recorded; empty for none.
    std::string getDescription() const;
    /// The conditions of the recording as JSON: `version`, `timeStep`, `gravity`; empty in journals that lack them.
    std::string getConditions() const;
    /// The bodies that playback shows, as they were recorded.
    RigidBodyPtrVector getShownBodies() const;
    /// Angle or distance of each recorded joint in the state that is shown, by name.
    std::map<std::string, double> getJointPositions() const;

    /// Names of the sessions in the file `path`, in the order recorded. Throws std::runtime_error for a missing or
    /// damaged file.
    static std::vector<std::string> listSessions(std::string const& path);

protected:
    ~Journal() override;

private:
    struct Implementation;
    std::unique_ptr<Implementation> m_implementation;
};

} // namespace hyx
