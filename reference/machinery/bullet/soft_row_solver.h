// Solvers that know the softness of each row, which Bullet's own do not.
#pragma once

#include <BulletDynamics/ConstraintSolver/btNNCGConstraintSolver.h>
#include <BulletDynamics/ConstraintSolver/btSequentialImpulseConstraintSolver.h>
#include <BulletDynamics/MLCPSolvers/btDantzigSolver.h>
#include <BulletDynamics/MLCPSolvers/btMLCPSolver.h>

namespace hyx {

/// Makes compliant rows converge. Rows arrive with their softness (m/s per Ns) in `m_cfm`, but bullet only subtracts it
/// from the impulse and leaves it out of the row's effective mass, which diverges for springs softer than the bodies
/// are heavy.
template <class Base>
class SoftRowSolver : public Base {
protected:
    void convertJoints(btTypedConstraint** constraints, int numConstraints, btContactSolverInfo const& info) override {
        Base::convertJoints(constraints, numConstraints, info);
        for (int i = 0; i < this->m_tmpSolverNonContactConstraintPool.size(); ++i)
            soften(this->m_tmpSolverNonContactConstraintPool[i]);
    }

private:
    static void soften(btSolverConstraint& row) {
        double const softness = row.m_cfm;
        if (!(softness > 0) || !(row.m_jacDiagABInv > 0))
            return;
        double const soft = 1 / (1 / row.m_jacDiagABInv + softness);
        row.m_rhs *= soft / row.m_jacDiagABInv;
        row.m_cfm = softness * soft;
        row.m_jacDiagABInv = soft;
    }
};

using SequentialSolver = SoftRowSolver<btSequentialImpulseConstraintSolver>;
using ConjugateSolver = SoftRowSolver<btNNCGConstraintSolver>;

/// Solves all rows together; the softness goes onto the matrix's diagonal.
class DirectSolver : public btMLCPSolver {
public:
    DirectSolver() : btMLCPSolver(&m_method) {}

protected:
    void createMLCPFast(btContactSolverInfo const& info) override {
        btMLCPSolver::createMLCPFast(info);
        for (int i = 0; i < m_allConstraintPtrArray.size() && i < m_tmpSolverNonContactConstraintPool.size(); ++i)
            if (m_allConstraintPtrArray[i] == &m_tmpSolverNonContactConstraintPool[i])
                m_A.setElem(i, i, m_A(i, i) + m_allConstraintPtrArray[i]->m_cfm);
    }

private:
    btDantzigSolver m_method;
};

} // namespace hyx
