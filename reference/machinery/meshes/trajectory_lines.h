// The ways of many moving things as lines, each with its newest points.
#pragma once

#include <osg/Geometry>

#include <cstdint>
#include <deque>
#include <map>
#include <set>

namespace hyxOSG {

/// Keeps the points of each way and writes them into a geometry.
class TrajectoryLines {
public:
    using Key = std::uintptr_t;

    /// Each way keeps `capacity` points.
    /// \throws std::invalid_argument unless there are at least 2
    explicit TrajectoryLines(std::size_t capacity);

    /// Adds a point to the way of `key`, dropping its oldest when it is full.
    void add(Key key, osg::Vec3 const& point, osg::Vec4 const& color);

    void remove(Key key) { m_ways.erase(key); }

    /// Drops all ways but those of `keys`.
    void keepOnly(std::set<Key> const& keys);

    void clear() { m_ways.clear(); }

    std::size_t capacity() const { return m_capacity; }

    std::size_t numPoints() const;
    /// Replaces the content of `geometry` with one line strip a way.
    void writeTo(osg::Geometry& geometry) const;

private:
    struct Point {
        osg::Vec3 position;
        osg::Vec4 color;
    };

    std::size_t m_capacity;
    std::map<Key, std::deque<Point>> m_ways;
};

/// Sets an empty geometry up for lines that change in every frame.
void prepareForLines(osg::Geometry& geometry);

/// A colour for the thing number `index`; neighbours differ clearly.
osg::Vec4 distinctColor(std::size_t index);

} // namespace hyxOSG
