// The operations of terrains, and their step.
#include "platform/hyxTerrain/terrain.h"

#include "reference/hyx/values/number_checks.h"
#include "reference/hyxTerrain/avalanche.h"
#include "reference/hyxTerrain/blade_cut.h"
#include "reference/hyxTerrain/columns.h"
#include "reference/hyxTerrain/loose_soil.h"
#include "reference/hyxTerrain/terrain_obstacle.h"
#include "reference/machinery/files/state_keepers.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace hyxTerrain {

using hyx::Real;
using hyx::UInt;
using hyx::Vec3;

namespace {

/// Metres: loads fade with the depth as under a patch of this width, whatever the size of the elements.
constexpr Real loadedWidth = 0.2;

UInt requireSide(UInt columns) {
    if (columns < 2 || columns > 4096)
        throw std::invalid_argument("a terrain has from 2 to 4096 columns along each side");
    return columns;
}

} // namespace

struct Terrain::Implementation {
    Columns columns;
    Avalanche avalanche;
    hyx::ref_ptr<hyx::ParticleSystem> grains = new hyx::ParticleSystem;
    hyx::ref_ptr<hyx::ParticleObstacle> surface;
    LooseSoil loose;
    std::vector<hyx::ref_ptr<DigTool>> tools;
    Vec3 position;
    bool soilParticles = true;

    Implementation(UInt nx, UInt ny, Real elementSize, Real depth)
        : columns(nx, ny, elementSize, depth), avalanche(columns), loose(columns, *grains) {}

    std::size_t at(UInt x, UInt y) const {
        if (x >= columns.nx || y >= columns.ny)
            throw std::out_of_range("there is no such column in the terrain");
        return columns.index(x, y);
    }

    UInt material(UInt index) const {
        if (index >= columns.materials.size())
            throw std::out_of_range("there is no such soil material in the terrain");
        return index;
    }

    /// Hands all soil above `height` of a column to `receive` and returns its mass.
    template <class Receive>
    Real takeAbove(std::size_t c, Real height, Receive&& receive) {
        Real mass = 0;
        while (columns.height(c) > height + 1e-9 * columns.elementSize) {
            Soil const soil = columns.take(c, columns.height(c) - height);
            if (soil.mass <= 0)
                break;
            mass += soil.mass;
            receive(soil);
        }
        return mass;
    }

    /// Gravity downwards in m/s2; columns do not feel what pulls sideways or up.
    Real gravityDown() const { return std::max(-grains->getGravity().z, 0.0); }

    void useTool(DigTool& tool, Real timeStep);
    std::size_t ahead(std::size_t c, Vec3 const& velocity) const;
};

Terrain::Terrain(UInt columnsX, UInt columnsY, Real elementSize, Real depth) {
    hyx::requirePositive(elementSize, "the element size of a terrain");
    hyx::requirePositive(depth, "the depth of a terrain");
    m_implementation =
        std::make_unique<Implementation>(requireSide(columnsX), requireSide(columnsY), elementSize, depth);
    m_implementation->surface = new TerrainObstacle(*this);
    m_implementation->grains->addObstacle(m_implementation->surface.get());
    hyx::keepState(this, [this](hyx::StateBytes& bytes) {
        Implementation& self = *m_implementation;
        bytes(self.position, self.soilParticles);
        self.columns.exchangeState(bytes);
        self.avalanche.exchangeState(bytes);
        hyx::exchangeState(self.grains.get(), bytes);
        self.loose.exchangeState(bytes);
    });
}

// Others may still hold the grains: those left then fall through.
Terrain::~Terrain() {
    hyx::forgetState(this);
    m_implementation->grains->removeObstacle(m_implementation->surface.get());
}

UInt Terrain::getNumColumnsX() const {
    return m_implementation->columns.nx;
}

UInt Terrain::getNumColumnsY() const {
    return m_implementation->columns.ny;
}

Real Terrain::getElementSize() const {
    return m_implementation->columns.elementSize;
}

Real Terrain::getDepth() const {
    return -m_implementation->columns.rock;
}

void Terrain::setPosition(Vec3 const& position) {
    m_implementation->position = position;
}

Vec3 Terrain::getPosition() const {
    return m_implementation->position;
}

Real Terrain::getHeight(UInt x, UInt y) const {
    return m_implementation->columns.height(m_implementation->at(x, y));
}

void Terrain::setHeight(UInt x, UInt y, Real height) {
    hyx::requireFinite(height, "the height of a terrain");
    std::size_t const c = m_implementation->at(x, y);
    Columns& columns = m_implementation->columns;
    height = std::max(height, columns.rock);
    m_implementation->takeAbove(c, height, [](Soil const&) {});
    Real const missing = height - columns.height(c);
    UInt const material = getSurfaceMaterial(x, y);
    if (missing > 0)
        columns.addSolid(c, {missing * columns.area * columns.materials[material].density, material}, 1);
}

std::vector<float> const& Terrain::getHeights() const {
    return m_implementation->columns.heights();
}

Real Terrain::getWorldHeight(Real x, Real y) const {
    Columns const& columns = m_implementation->columns;
    Real const u = std::clamp<Real>((x - m_implementation->position.x) / columns.elementSize, 0, columns.nx - 1);
    Real const v = std::clamp<Real>((y - m_implementation->position.y) / columns.elementSize, 0, columns.ny - 1);
    auto const i = std::min(static_cast<UInt>(u), columns.nx - 2);
    auto const j = std::min(static_cast<UInt>(v), columns.ny - 2);
    Real const s = u - i, t = v - j;
    std::size_t const c = columns.index(i, j);
    return m_implementation->position.z + (columns.height(c) * (1 - s) + columns.height(c + 1) * s) * (1 - t) +
           (columns.height(c + columns.nx) * (1 - s) + columns.height(c + columns.nx + 1) * s) * t;
}

Vec3 Terrain::getWorldNormal(Real x, Real y) const {
    Real const h = 0.5 * m_implementation->columns.elementSize;
    return Vec3(getWorldHeight(x - h, y) - getWorldHeight(x + h, y),
                getWorldHeight(x, y - h) - getWorldHeight(x, y + h), 2 * h)
        .normal();
}

UInt Terrain::addMaterial(SoilMaterial const& material) {
    UInt const index = m_implementation->columns.materials.size();
    m_implementation->columns.materials.push_back(material);
    try {
        setMaterial(index, material);
    } catch (...) {
        m_implementation->columns.materials.pop_back();
        throw;
    }
    return index;
}

UInt Terrain::getNumMaterials() const {
    return m_implementation->columns.materials.size();
}

SoilMaterial Terrain::getMaterial(UInt index) const {
    return m_implementation->columns.materials[m_implementation->material(index)];
}

void Terrain::setMaterial(UInt index, SoilMaterial const& material) {
    hyx::requirePositive(material.density, "the density of soil");
    hyx::requirePositive(material.reposeAngle, "the angle of repose of soil");
    hyx::requirePositive(material.firstPressure, "the first pressure of soil");
    hyx::requireNonNegative(material.shearLength, "the shear length of soil");
    hyx::requireNonNegative(material.compressibility, "the compressibility of soil");
    m_implementation->columns.replaceMaterial(m_implementation->material(index), material);
}

void Terrain::setColumnMaterial(UInt x, UInt y, UInt index, Real depth) {
    hyx::requirePositive(depth, "the depth of a change of soil");
    m_implementation->columns.changeMaterial(m_implementation->at(x, y),
                                             static_cast<unsigned int>(m_implementation->material(index)), depth);
}

std::vector<Voxel> Terrain::getVoxels(UInt x, UInt y) const {
    Columns const& columns = m_implementation->columns;
    std::size_t const c = m_implementation->at(x, y);
    Columns::Column const& column = columns.column(c);
    std::vector<Voxel> voxels;
    Real bottom = columns.rock;
    for (int i = 0; i < column.count; ++i) {
        Columns::Layer const& layer = column.layers[i];
        voxels.push_back({bottom, layer.thickness, layer.mass, 0, columns.compaction(layer), Vec3(), layer.material});
        bottom += layer.thickness;
    }
    if (column.fluidMass > 0)
        voxels.push_back({bottom, columns.fluidThickness(c), 0, column.fluidMass, Columns::loose,
                          column.velocity.toVec3(), column.fluidMaterial});
    return voxels;
}

UInt Terrain::getSurfaceMaterial(UInt x, UInt y) const {
    Columns::Column const& column = m_implementation->columns.column(m_implementation->at(x, y));
    if (column.fluidMass > 0)
        return column.fluidMaterial;
    return column.count > 0 ? column.layers[column.count - 1].material : 0;
}

Real Terrain::getSurfaceCompaction(UInt x, UInt y) const {
    Columns const& columns = m_implementation->columns;
    Columns::Column const& column = columns.column(m_implementation->at(x, y));
    if (column.fluidMass > 0)
        return Columns::loose;
    return column.count > 0 ? columns.compaction(column.layers[column.count - 1]) : 1;
}

Real Terrain::getFluidMass(UInt x, UInt y) const {
    return m_implementation->columns.column(m_implementation->at(x, y)).fluidMass;
}

Vec3 Terrain::getFluidVelocity(UInt x, UInt y) const {
    Columns::Column const& column = m_implementation->columns.column(m_implementation->at(x, y));
    return column.fluidMass > 0 ? column.velocity.toVec3() : Vec3();
}

Real Terrain::getMass() const {
    return m_implementation->columns.mass() + m_implementation->loose.mass();
}

void Terrain::addMass(UInt x, UInt y, Real mass, UInt material) {
    hyx::requireNonNegative(mass, "the mass added to a terrain");
    m_implementation->columns.addSolid(m_implementation->at(x, y), {mass, m_implementation->material(material)},
                                       Columns::loose);
}

Real Terrain::removeAbove(UInt x, UInt y, Real height) {
    hyx::requireFinite(height, "the height of a terrain");
    return m_implementation->takeAbove(m_implementation->at(x, y), height, [](Soil const&) {});
}

Real Terrain::dig(UInt x, UInt y, Real height, Vec3 const& velocity) {
    hyx::requireFinite(height, "the height of a terrain");
    std::size_t const c = m_implementation->at(x, y);
    return m_implementation->takeAbove(c, height, [&](Soil const& soil) {
        m_implementation->loose.free(c, soil, velocity, m_implementation->position);
    });
}

Real Terrain::compact(UInt x, UInt y, Real pressure) {
    hyx::requireFinite(pressure, "the pressure on a terrain");
    std::size_t const c = m_implementation->at(x, y);
    Real const before = m_implementation->columns.height(c);
    if (pressure > 0)
        m_implementation->columns.compact(c, pressure, loadedWidth);
    return before - m_implementation->columns.height(c);
}

void Terrain::disturb() {
    m_implementation->avalanche.wakeAll();
}

void Terrain::addTool(DigTool* tool) {
    if (tool)
        m_implementation->tools.push_back(tool);
}

bool Terrain::removeTool(DigTool* tool) {
    return std::erase_if(m_implementation->tools, [tool](auto const& other) { return other.get() == tool; }) > 0;
}

std::vector<hyx::ref_ptr<DigTool>> const& Terrain::getTools() const {
    return m_implementation->tools;
}

hyx::ParticleSystem* Terrain::getSoilParticles() const {
    return m_implementation->grains.get();
}

void Terrain::setEnableSoilParticles(bool enable) {
    m_implementation->soilParticles = enable;
}

bool Terrain::getEnableSoilParticles() const {
    return m_implementation->soilParticles;
}

void Terrain::step(Real timeStep) {
    hyx::requirePositive(timeStep, "the time step of a terrain");
    std::vector<Vec3> blades;
    for (auto const& tool : m_implementation->tools)
        if (tool->getEnable()) {
            m_implementation->useTool(*tool, timeStep);
            blades.push_back((tool->getWorldEdgeBegin() + tool->getWorldEdgeEnd()) * 0.5);
        }
    m_implementation->avalanche.step(timeStep, m_implementation->gravityDown());
    if (m_implementation->grains->getNumParticles() > 0) {
        m_implementation->grains->step(timeStep);
        m_implementation->loose.settle(timeStep, m_implementation->position, blades,
                                       4 * m_implementation->columns.elementSize);
    }
}

UInt Terrain::getRevision() const {
    return m_implementation->columns.revision();
}

UInt Terrain::getRowRevision(UInt y) const {
    m_implementation->at(0, y);
    return m_implementation->columns.rowRevision(y);
}

void Terrain::Implementation::useTool(DigTool& tool, Real timeStep) {
    Vec3 const velocity = tool.getWorldVelocity();
    std::vector<Cut> const cuts = findCuts(columns, tool, position, timeStep);
    Vec3 const force = soilForce(columns, tool, position, velocity, gravityDown());
    Real mass = 0;
    for (Cut const& cut : cuts)
        mass += takeAbove(cut.column, cut.height, [&](Soil const& soil) {
            if (soilParticles)
                loose.free(cut.column, soil, velocity, position);
            else
                columns.addFluid(ahead(cut.column, velocity), soil, hyx::Vec3f(velocity));
        });
    tool.addDug(mass, force - velocity * (mass / timeStep));
}

// The column two elements ahead of the blade, where it heaps the soil up; the border keeps what would leave.
std::size_t Terrain::Implementation::ahead(std::size_t c, Vec3 const& velocity) const {
    Vec3 const direction = Vec3(velocity.x, velocity.y, 0).normal() * 2.0;
    auto const x = static_cast<UInt>(std::clamp<Real>(std::round(c % columns.nx + direction.x), 0, columns.nx - 1));
    auto const y = static_cast<UInt>(std::clamp<Real>(std::round(c / columns.nx + direction.y), 0, columns.ny - 1));
    return columns.index(x, y);
}

} // namespace hyxTerrain
