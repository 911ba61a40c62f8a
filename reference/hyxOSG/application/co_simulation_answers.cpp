// Follows requests of co-simulation.
#include "reference/hyxOSG/application/co_simulation_answers.h"

#include "platform/hyx/joints/constraint1dof.h"
#include "platform/hyxNet/co_simulation_server.h"
#include "platform/hyxOSG/application/example_application.h"
#include "platform/hyxPython/script_manager.h"
#include "platform/hyxSDK/simulation.h"
#include "reference/hyxNet/call_result.h"
#include "reference/hyxOSG/application/body_state_json.h"

#include <stdexcept>

namespace hyxOSG {
namespace {

using nlohmann::json;

hyx::RigidBody& findBody(ExampleApplication& application, json const& request) {
    std::string const name = request.value("body", "");
    hyx::RigidBody* body = application.getSimulation()->getRigidBody(name);
    if (!body)
        throw std::invalid_argument("there is no body '" + name + "'");
    return *body;
}

json listBodies(ExampleApplication& application) {
    json names = json::array();
    for (auto const& body : application.getSimulation()->getRigidBodies())
        names.push_back(std::string(body->getName()));
    return {{"time", application.getTimeStamp()}, {"timeStep", application.getTimeStep()}, {"bodies", names}};
}

json listJoints(ExampleApplication& application) {
    json joints = json::object();
    for (auto const& constraint : application.getSimulation()->getConstraints()) {
        auto const* joint = dynamic_cast<hyx::Constraint1DOF const*>(constraint.get());
        if (!joint || joint->getName().empty())
            continue;
        hyx::Motor1D const& motor = *joint->getMotor1D();
        joints[std::string(joint->getName())] = {{"position", joint->getAngle()},
                                                 {"speed", joint->getCurrentSpeed()},
                                                 {"force", motor.getCurrentForce()},
                                                 {"motor", motor.isEnabled() ? json(motor.getSpeed()) : json()}};
    }
    return {{"joints", joints}};
}

void drive(ExampleApplication& application, json const& request) {
    std::string const name = request.value("joint", "");
    auto* joint = dynamic_cast<hyx::Constraint1DOF*>(application.getSimulation()->getConstraint(name));
    if (!joint)
        throw std::invalid_argument("there is no joint '" + name + "' that turns or slides");
    json const speed = request.value("speed", json());
    json const force = request.value("force", json());
    if (!(speed.is_null() || speed.is_number()) ||
        !(force.is_null() || (force.is_number() && force.get<double>() >= 0)))
        throw std::invalid_argument("'speed' must be a number or null, and 'force' a number of at least 0");
    if (speed.is_number())
        joint->getMotor1D()->setSpeed(speed.get<double>());
    if (force.is_number())
        joint->getMotor1D()->setForceRange(hyx::RangeReal(force.get<double>()));
    joint->getMotor1D()->setEnable(speed.is_number());
}

json step(ExampleApplication& application, json const& request) {
    long const count = request.value("count", 1L);
    constexpr long most = 100000;
    if (count < 1 || count > most)
        throw std::invalid_argument("'count' must be 1 to 100000");
    for (long i = 0; i < count && !application.breakRequested(); ++i)
        application.stepSimulation();
    return {{"time", application.getTimeStamp()}};
}

json call(ExampleApplication& application, hyxNet::CoSimulationServer& server) {
    std::string const name = server.getCalledFunction();
    if (!application.coSimulationCallPython(&server)) {
        // The caller learns of the failure; the script's traceback is for who runs this process.
        if (auto* manager = hyxPython::ScriptManager::instance("", "", "", false))
            manager->registerError("co-simulation call");
        throw std::runtime_error("the function '" + name + "' is missing in the main script, or failed");
    }
    return {{"result", hyxNet::callResult(server.getCallResult())}};
}

} // namespace

std::string answerCoSimulation(ExampleApplication& application, hyxNet::CoSimulationServer& server,
                               std::string const& request) {
    json const wanted = json::parse(request);
    std::string const what = wanted.value("do", "");
    json answer = json::object();
    if (what == "list")
        answer = listBodies(application);
    else if (what == "get")
        answer = bodyState(findBody(application, wanted));
    else if (what == "set")
        setBodyState(findBody(application, wanted), wanted);
    else if (what == "joints")
        answer = listJoints(application);
    else if (what == "drive")
        drive(application, wanted);
    else if (what == "step")
        answer = step(application, wanted);
    else if (what == "call")
        answer = call(application, server);
    else if (what == "stop")
        application.stop();
    else
        throw std::invalid_argument("'do' must be list, get, set, joints, drive, step, call or stop, not '" + what +
                                    "'");
    answer["ok"] = true;
    return answer.dump(-1, ' ', false, json::error_handler_t::replace);
}

} // namespace hyxOSG
