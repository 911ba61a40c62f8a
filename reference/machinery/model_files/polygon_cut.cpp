// Cuts off one ear after the other.
#include "reference/machinery/model_files/polygon_cut.h"

#include <numeric>

namespace hyxOSG {
namespace {

constexpr std::size_t mostCut = 500; ///< the time grows with the third power

bool isInside(osg::Vec3 const& p, std::array<osg::Vec3, 3> const& corners, osg::Vec3 const& normal) {
    for (std::size_t i = 0; i < 3; ++i)
        if (((corners[(i + 1) % 3] - corners[i]) ^ (p - corners[i])) * normal <= 0)
            return false;
    return true;
}

osg::Vec3 normalOf(std::span<osg::Vec3 const> corners) {
    osg::Vec3 normal;
    for (std::size_t i = 2; i < corners.size(); ++i)
        normal += (corners[i - 1] - corners[0]) ^ (corners[i] - corners[0]);
    return normal;
}

class Cutter {
public:
    explicit Cutter(std::span<osg::Vec3 const> corners)
        : m_corners(corners), m_normal(normalOf(corners)), m_left(corners.size()) {
        std::iota(m_left.begin(), m_left.end(), 0u);
    }

    std::vector<std::array<unsigned int, 3>> cut() {
        std::vector<std::array<unsigned int, 3>> triangles;
        while (m_left.size() > 3) {
            std::size_t ear = 0;
            if (m_corners.size() <= mostCut)
                while (ear < m_left.size() && !isEar(ear))
                    ++ear;
            ear %= m_left.size(); // a twisted one has no ear: any corner will do
            triangles.push_back(at(ear));
            m_left.erase(m_left.begin() + static_cast<long>((ear + 1) % m_left.size()));
        }
        triangles.push_back(at(0));
        return triangles;
    }

private:
    std::array<unsigned int, 3> at(std::size_t first) const {
        return {m_left[first], m_left[(first + 1) % m_left.size()], m_left[(first + 2) % m_left.size()]};
    }

    bool isEar(std::size_t first) const {
        auto const ear = at(first);
        std::array const corners{m_corners[ear[0]], m_corners[ear[1]], m_corners[ear[2]]};
        if (((corners[1] - corners[0]) ^ (corners[2] - corners[0])) * m_normal <= 0)
            return false;
        for (unsigned int const other : m_left)
            if (other != ear[0] && other != ear[1] && other != ear[2] && isInside(m_corners[other], corners, m_normal))
                return false;
        return true;
    }

    std::span<osg::Vec3 const> m_corners;
    osg::Vec3 m_normal;
    std::vector<unsigned int> m_left;
};

} // namespace

std::vector<std::array<unsigned int, 3>> cutPolygon(std::span<osg::Vec3 const> corners) {
    if (corners.size() < 3)
        return {};
    return Cutter(corners).cut();
}

} // namespace hyxOSG
