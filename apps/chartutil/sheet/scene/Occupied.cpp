// SPDX-License-Identifier: MIT
#include "apps/chartutil/sheet/scene/Occupied.h"

#include <algorithm>
#include <boost/geometry/geometries/box.hpp>
#include <boost/geometry/geometries/point.hpp>
#include <boost/geometry/index/rtree.hpp>
#include <utility>

namespace bgi = boost::geometry::index;

namespace {

using Corner = boost::geometry::model::point<double, 2, boost::geometry::cs::cartesian>;
using Rectangle = boost::geometry::model::box<Corner>;
using Numbered = std::pair<Rectangle, std::size_t>;

Rectangle RectangleOf(const Occupied::Box& box) { return {{box.left, box.top}, {box.right, box.bottom}}; }

std::vector<Numbered> NumberedOf(const std::vector<Occupied::Box>& boxes) {
    std::vector<Numbered> numbered;
    numbered.reserve(boxes.size());
    for (const Occupied::Box& box : boxes) numbered.emplace_back(RectangleOf(box), numbered.size());
    return numbered;
}

} // namespace

// The one source that compiles the index.
struct Occupied::Index {
    bgi::rtree<Numbered, bgi::quadratic<16>> boxes;
};

Occupied::Occupied() : m_index(std::make_unique<Index>()) {}
Occupied::Occupied(const std::vector<Box>& boxes)
    : m_index(new Index{decltype(Index::boxes)(NumberedOf(boxes))}) {}
Occupied::Occupied(const Occupied& other) : m_index(std::make_unique<Index>(*other.m_index)) {}
Occupied::Occupied(Occupied&& other) noexcept = default;
Occupied& Occupied::operator=(Occupied other) noexcept {
    m_index.swap(other.m_index);
    return *this;
}
Occupied::~Occupied() = default;

void Occupied::Take(const Box& box) { m_index->boxes.insert({RectangleOf(box), m_index->boxes.size()}); }

bool Occupied::IsFree(const Box& box) const {
    return m_index->boxes.qbegin(bgi::intersects(RectangleOf(box))) == m_index->boxes.qend();
}

std::vector<Occupied::Box> Occupied::Touching(const Box& box) const {
    std::vector<Box> found;
    for (auto at = m_index->boxes.qbegin(bgi::intersects(RectangleOf(box))); at != m_index->boxes.qend();
         ++at) {
        const Rectangle& one = at->first;
        found.push_back({one.min_corner().get<0>(), one.min_corner().get<1>(), one.max_corner().get<0>(),
                         one.max_corner().get<1>()});
    }
    return found;
}

bool Occupied::HasTouching(const Box& box, const std::function<bool(std::size_t number)>& isSuch) const {
    return std::any_of(m_index->boxes.qbegin(bgi::intersects(RectangleOf(box))), m_index->boxes.qend(),
                       [&](const Numbered& one) { return isSuch(one.second); });
}
