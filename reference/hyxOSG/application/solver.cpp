// The application's choice of the simulation's solver.
#include "reference/hyxOSG/application/application_implementation.h"

#include <strings.h>

#include <stdexcept>

namespace hyxOSG {
namespace {

constexpr char const* names[ExampleApplication::NUM_SOLVERS] = {"MULTI", "ITERATIVE"};

bool isSolver(int value) {
    return value >= 0 && value < ExampleApplication::NUM_SOLVERS;
}

} // namespace

void ExampleApplication::setSolverType(SolverType solverType) {
    if (!isSolver(solverType))
        throw std::invalid_argument("a solver type must be ExampleApplication_MULTI or ExampleApplication_ITERATIVE");
    m_implementation->wantedSolver = solverType;
    m_implementation->ensureSimulation();
    m_implementation->configureSimulation();
}

ExampleApplication::SolverType ExampleApplication::getSolverType() const {
    return SolverType(m_implementation->ensureSimulation().getSolver());
}

ExampleApplication::SolverType ExampleApplication::getSolverType(std::string const& name) const {
    for (int solver = 0; solver < NUM_SOLVERS; ++solver)
        if (strcasecmp(names[solver], name.c_str()) == 0)
            return SolverType(solver);
    return NUM_SOLVERS;
}

std::string ExampleApplication::getSolverName(SolverType solverType) const {
    return isSolver(solverType) ? names[solverType] : "";
}

void ExampleApplication::changeSolver() {
    setSolverType(SolverType((getSolverType() + 1) % NUM_SOLVERS));
}

} // namespace hyxOSG
