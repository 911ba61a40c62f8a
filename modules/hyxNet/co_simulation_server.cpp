// The server of co-simulation.
#include "platform/hyxNet/co_simulation_server.h"

#include "binding/vocabulary/rows.h"

namespace {

constexpr Declared co_simulation_server_rows[] = {
    FUNCTION(new_CoSimulationServer, NEW(hyxNet::CoSimulationServer, (int, std::string const&, std::string const&), 0,
                                         std::string(), std::string())),
    FUNCTION(delete_CoSimulationServer, DELETE(hyxNet::CoSimulationServer)),
    FUNCTION(CoSimulationServer_getPort, METHOD(hyxNet::CoSimulationServer, getPort, () const)),
    FUNCTION(CoSimulationServer_getAddress, METHOD(hyxNet::CoSimulationServer, getAddress, () const)),
    FUNCTION(CoSimulationServer_update, METHOD(hyxNet::CoSimulationServer, update, (int), 0)),
    FUNCTION(CoSimulationServer_getCalledFunction, METHOD(hyxNet::CoSimulationServer, getCalledFunction, () const)),
    FUNCTION(CoSimulationServer_getCallArgument, METHOD(hyxNet::CoSimulationServer, getCallArgument, () const)),
    FUNCTION(CoSimulationServer_setCallResult, METHOD(hyxNet::CoSimulationServer, setCallResult, (std::string const&))),
    FUNCTION(CoSimulationServer_getCallResult, METHOD(hyxNet::CoSimulationServer, getCallResult, () const)),
    REGISTER(hyxNet::CoSimulationServer, CoSimulationServer),
    INIT(CoSimulationServer),
};

} // namespace

ROWS(co_simulation_server_rows);
