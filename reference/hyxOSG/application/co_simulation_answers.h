// What another process can ask of an application.
#pragma once

#include <string>

namespace hyxNet {
class CoSimulationServer;
} // namespace hyxNet

namespace hyxOSG {

class ExampleApplication;

/// Follows one request (JSON) and returns the answer (JSON with `ok` true); throws when it cannot be followed.
///
///   {"do": "list"}                                      time, time step, names of bodies
///   {"do": "get", "body": NAME}                         position, rotation (x y z w), velocity, angular velocity
///   {"do": "set", "body": NAME, "position": [..], ..}   any of those, and force and torque for the next step
///   {"do": "joints"}                                    position, speed, motor force and motor speed (null: off) of
///   each joint
///   {"do": "drive", "joint": NAME, "speed": V}          switches its motor on; off for null. "force": F, its greatest
///   force
///   {"do": "step", "count": N}                          steps the simulation, answers the time
///   {"do": "call", "function": NAME, "argument": ..}    calls a function of the main script with the argument as JSON
///   text
///   {"do": "stop"}                                      ends the loop
std::string answerCoSimulation(ExampleApplication& application, hyxNet::CoSimulationServer& server,
                               std::string const& request);

} // namespace hyxOSG
