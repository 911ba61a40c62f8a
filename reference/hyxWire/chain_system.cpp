// Elimination of the bands, then of the border.
#include "reference/hyxWire/chain_system.h"

#include <algorithm>
#include <cmath>

namespace hyxWire {

using hyx::Real;
using hyx::Vec3;

namespace {

constexpr Matrix3 unit{1, 0, 0, 0, 1, 0, 0, 0, 1};

Vec3 operator*(Matrix3 const& m, Vec3 const& v) {
    return Vec3(m[0] * v.x + m[1] * v.y + m[2] * v.z, m[3] * v.x + m[4] * v.y + m[5] * v.z,
                m[6] * v.x + m[7] * v.y + m[8] * v.z);
}

Matrix3 operator*(Matrix3 const& a, Matrix3 const& b) {
    Matrix3 product;
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j)
            product[3 * i + j] = a[3 * i] * b[j] + a[3 * i + 1] * b[3 + j] + a[3 * i + 2] * b[6 + j];
    return product;
}

void subtract(Matrix3& from, Matrix3 const& other) {
    for (int i = 0; i < 9; ++i)
        from[i] -= other[i];
}

void addOuter(Matrix3& to, Vec3 const& a, Vec3 const& b, Real factor) {
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j)
            to[3 * i + j] += factor * a[i] * b[j];
}

Matrix3 inverse(Matrix3 const& m) {
    Vec3 const x(m[0], m[3], m[6]), y(m[1], m[4], m[7]), z(m[2], m[5], m[8]);
    Vec3 const a = y.cross(z), b = z.cross(x), c = x.cross(y);
    Real const scale = 1 / x.dot(a);
    return {a.x * scale, a.y * scale, a.z * scale, b.x * scale, b.y * scale,
            b.z * scale, c.x * scale, c.y * scale, c.z * scale};
}

Matrix3 negativeStiffness(ChainLink const& link) {
    Matrix3 m{-link.tautness, 0, 0, 0, -link.tautness, 0, 0, 0, -link.tautness};
    addOuter(m, link.direction, link.direction, link.tautness - link.stiffness);
    return m;
}

/// Leaves the part of a force along the surface, less the friction that the other part brings.
Vec3 rubbed(ChainNode const& node, Vec3 const& force) {
    return force - (node.normal + node.rubbing) * node.normal.dot(force);
}

void rub(ChainNode const& node, Matrix3& m) {
    Vec3 const across(node.normal.x * m[0] + node.normal.y * m[3] + node.normal.z * m[6],
                      node.normal.x * m[1] + node.normal.y * m[4] + node.normal.z * m[7],
                      node.normal.x * m[2] + node.normal.y * m[5] + node.normal.z * m[8]);
    addOuter(m, node.normal + node.rubbing, across, -1);
}

/// What has to be on the right hand side for the surface: a gap to close and a slip to resist.
Vec3 surfaceSide(ChainNode const& node, Real gap, Vec3 const& slip) {
    return -node.normal * (node.mass * gap) - node.gripped(slip) * node.grip;
}

/// Solves a full system in place by elimination with pivots.
void solveDense(std::vector<Real>& matrix, std::vector<Real>& right) {
    std::size_t const size = right.size();
    for (std::size_t i = 0; i < size; ++i) {
        std::size_t best = i;
        for (std::size_t r = i + 1; r < size; ++r)
            if (std::abs(matrix[r * size + i]) > std::abs(matrix[best * size + i]))
                best = r;
        if (best != i) {
            std::swap_ranges(&matrix[i * size], &matrix[i * size] + size, &matrix[best * size]);
            std::swap(right[i], right[best]);
        }
        for (std::size_t r = i + 1; r < size; ++r) {
            Real const factor = matrix[r * size + i] / matrix[i * size + i];
            for (std::size_t k = i; k < size; ++k)
                matrix[r * size + k] -= factor * matrix[i * size + k];
            right[r] -= factor * right[i];
        }
    }
    for (std::size_t i = size; i-- > 0;) {
        for (std::size_t k = i + 1; k < size; ++k)
            right[i] -= matrix[i * size + k] * right[k];
        right[i] /= matrix[i * size + i];
    }
}

/// To six numbers that are `stride` apart.
void addAt(ChainNode const& node, Vec3 const& force, Real* six, std::size_t stride) {
    Vec3 const moment = node.arm.cross(force);
    for (std::size_t i = 0; i < 3; ++i) {
        six[i * stride] += force[i];
        six[(i + 3) * stride] += moment[i];
    }
}

} // namespace

Real ChainSystem::tension(std::size_t link) const {
    ChainLink const& one = links[link];
    return one.stiffness * (one.stretch + one.direction.dot(moves[link + 1] - moves[link]));
}

/// Of the segments on a point; what they pull without any move counts where `stretched`.
Vec3 ChainSystem::pull(std::size_t node, Moves const& moves, bool stretched) const {
    Vec3 sum;
    auto const add = [&](std::size_t link, Real sign) {
        ChainLink const& one = links[link];
        Vec3 force = one.force(moves[link + 1] - moves[link]);
        if (stretched)
            force += one.direction * (one.stiffness * one.stretch);
        sum += force * sign;
    };
    if (node < links.size())
        add(node, 1);
    if (node > 0)
        add(node - 1, -1);
    return sum;
}

Vec3 ChainSystem::forceOnBody(std::size_t node, Moves const& moves, bool stretched) const {
    Vec3 const pulled = pull(node, moves, stretched);
    return nodes[node].kind == ChainNode::TOUCHES ? pulled - moves[node] * nodes[node].mass : pulled;
}

Real ChainSystem::loadOf(std::size_t node) const {
    return -nodes[node].normal.dot(forceOnBody(node, moves, true));
}

void ChainSystem::addForce(std::size_t node, Real* six) const {
    addAt(nodes[node], forceOnBody(node, moves, true), six, 1);
}

Vec3 ChainSystem::shiftUnder(std::size_t node) const {
    ChainNode const& one = nodes[node];
    if (one.column < 0)
        return Vec3();
    Real const* const s = &shifts[one.column];
    return Vec3(s[0], s[1], s[2]) + Vec3(s[3], s[4], s[5]).cross(one.arm);
}

Vec3 ChainSystem::unitShiftUnder(std::size_t node, std::size_t unknown) const {
    std::size_t const local = unknown - nodes[node].column;
    if (nodes[node].column < 0 || local >= 6)
        return Vec3();
    Vec3 along;
    along[local % 3] = 1;
    return local < 3 ? along : along.cross(nodes[node].arm);
}

void ChainSystem::factor() {
    m_rows.resize(nodes.size());
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        ChainNode const& node = nodes[i];
        Row& row = m_rows[i];
        row.lower = row.upper = Matrix3{};
        Matrix3 diagonal = unit;
        if (node.kind != ChainNode::HELD && node.kind != ChainNode::RIDES) {
            if (i > 0)
                row.lower = negativeStiffness(links[i - 1]);
            if (i < links.size())
                row.upper = negativeStiffness(links[i]);
            if (node.kind == ChainNode::RIDES_ALONE) {
                Matrix3 const freely = mobilityOf(node);
                row.lower = freely * row.lower;
                row.upper = freely * row.upper;
            } else {
                diagonal = {node.mass, 0, 0, 0, node.mass, 0, 0, 0, node.mass};
            }
            subtract(diagonal, row.lower);
            subtract(diagonal, row.upper);
        }
        if (node.kind == ChainNode::TOUCHES) {
            rub(node, row.lower);
            rub(node, row.upper);
            rub(node, diagonal);
            for (int k : {0, 4, 8})
                diagonal[k] += node.grip;
            addOuter(diagonal, node.normal, node.normal, node.mass - node.grip);
            addOuter(diagonal, node.free, node.free, -node.grip);
        }
        if (i > 0)
            subtract(diagonal, row.lower * m_rows[i - 1].upper);
        row.inverse = inverse(diagonal);
        row.upper = row.inverse * row.upper;
    }
}

void ChainSystem::eliminate(Moves& right) const {
    right[0] = m_rows[0].inverse * right[0];
    for (std::size_t i = 1; i < right.size(); ++i)
        right[i] = m_rows[i].inverse * (right[i] - m_rows[i].lower * right[i - 1]);
    for (std::size_t i = right.size() - 1; i-- > 0;)
        right[i] -= m_rows[i].upper * right[i + 1];
}

void ChainSystem::shiftBy(ChainNode const& node, Vec3 const& force, Real* six) const {
    std::size_t const size = shifts.size();
    Vec3 const moment = node.arm.cross(force);
    for (std::size_t i = 0; i < 6; ++i) {
        Real const* const row = &mobility[(node.column + i) * size + node.column];
        six[i] = row[0] * force.x + row[1] * force.y + row[2] * force.z + row[3] * moment.x + row[4] * moment.y +
                 row[5] * moment.z;
    }
}

Matrix3 ChainSystem::mobilityOf(ChainNode const& node) const {
    Matrix3 matrix;
    for (std::size_t k = 0; k < 3; ++k) {
        Vec3 force;
        force[k] = 1;
        Real s[6];
        shiftBy(node, force, s);
        Vec3 const moved = Vec3(s[0], s[1], s[2]) + Vec3(s[3], s[4], s[5]).cross(node.arm);
        for (std::size_t i = 0; i < 3; ++i)
            matrix[3 * i + k] = moved[i];
    }
    return matrix;
}

bool ChainSystem::isCoupled(int column, int other) const {
    for (int i = 0; i < 6; ++i)
        for (int j = 0; j < 6; ++j)
            if (mobility[(column + i) * shifts.size() + other + j] != 0)
                return true;
    return false;
}

/// Most bodies hang on one point of a chain: that takes no border.
void ChainSystem::findAlone() {
    m_onBodies.clear();
    m_unknowns.clear();
    for (std::size_t i = 0; i < nodes.size(); ++i)
        if (nodes[i].column >= 0)
            m_onBodies.push_back(i);
    for (std::size_t const i : m_onBodies)
        if (nodes[i].kind == ChainNode::RIDES && std::none_of(m_onBodies.begin(), m_onBodies.end(), [&](std::size_t k) {
                return k != i && isCoupled(nodes[i].column, nodes[k].column);
            }))
            nodes[i].kind = ChainNode::RIDES_ALONE;
    std::erase_if(m_onBodies, [&](std::size_t i) { return nodes[i].kind == ChainNode::RIDES_ALONE; });
    for (std::size_t const i : m_onBodies)
        if (std::size_t const column = nodes[i].column;
            std::find(m_unknowns.begin(), m_unknowns.end(), column) == m_unknowns.end())
            for (std::size_t k = 0; k < 6; ++k)
                m_unknowns.push_back(column + k);
}

void ChainSystem::solve() {
    shifts.assign(static_cast<std::size_t>(std::sqrt(static_cast<Real>(mobility.size())) + 0.5), 0);
    findAlone();
    factor();
    Moves const still(nodes.size());
    moves.assign(nodes.size(), Vec3());
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        ChainNode const& node = nodes[i];
        if (node.kind == ChainNode::FREE)
            moves[i] = pull(i, still, true);
        else if (node.kind == ChainNode::RIDES_ALONE)
            moves[i] = mobilityOf(node) * pull(i, still, true);
        else if (node.kind == ChainNode::TOUCHES)
            moves[i] = rubbed(node, pull(i, still, true)) + surfaceSide(node, node.gap, node.slip);
    }
    eliminate(moves);
    if (!m_onBodies.empty())
        solveBorder();
    for (std::size_t i = 0; i < nodes.size(); ++i)
        if (nodes[i].kind == ChainNode::RIDES_ALONE)
            shiftBy(nodes[i], pull(i, moves, true), &shifts[nodes[i].column]);
}

/// A unit of each body's shift changes the moves by a column, and these the forces on the bodies.
void ChainSystem::solveBorder() {
    std::size_t const size = m_unknowns.size();
    std::size_t const width = shifts.size();
    std::vector<Real> forces(width), sought(size), matrix(size * size), answers(width * size);
    for (std::size_t const node : m_onBodies)
        addForce(node, &forces[nodes[node].column]);
    m_columns.resize(size);
    for (std::size_t k = 0; k < size; ++k) {
        Moves& column = m_columns[k];
        column.assign(nodes.size(), Vec3());
        for (std::size_t const i : m_onBodies) {
            Vec3 const shift = unitShiftUnder(i, m_unknowns[k]);
            column[i] = nodes[i].kind == ChainNode::TOUCHES ? surfaceSide(nodes[i], -nodes[i].normal.dot(shift), -shift)
                                                            : shift;
        }
        eliminate(column);
        for (std::size_t const i : m_onBodies)
            addAt(nodes[i], forceOnBody(i, column, false), &answers[nodes[i].column * size + k], size);
    }
    for (std::size_t i = 0; i < size; ++i) {
        for (std::size_t const j : m_unknowns) {
            Real const share = mobility[m_unknowns[i] * width + j];
            if (share == 0)
                continue;
            sought[i] += share * forces[j];
            for (std::size_t k = 0; k < size; ++k)
                matrix[i * size + k] -= share * answers[j * size + k];
        }
        matrix[i * size + i] += 1;
    }
    solveDense(matrix, sought);
    for (std::size_t k = 0; k < size; ++k) {
        shifts[m_unknowns[k]] = sought[k];
        for (std::size_t i = 0; i < moves.size(); ++i)
            moves[i] += m_columns[k][i] * sought[k];
    }
}

} // namespace hyxWire
