// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <vector>

/// Rectangles of the paper that something stands in, so that nothing else is put on it. They are numbered
/// from 0, and found in a time that hardly grows with how many there are. Copied by value.
class Occupied {
public:
    struct Box {
        double left, top, right, bottom;
    };

    Occupied();
    explicit Occupied(const std::vector<Box>& boxes); ///< faster than taking one after the other
    Occupied(const Occupied& other);
    Occupied(Occupied&& other) noexcept;
    Occupied& operator=(Occupied other) noexcept;
    ~Occupied();

    void Take(const Box& box);

    /// Whether none of them touches the box.
    bool IsFree(const Box& box) const;

    std::vector<Box> Touching(const Box& box) const;

    /// Whether one that touches the box is such a one, by its number.
    bool HasTouching(const Box& box, const std::function<bool(std::size_t number)>& isSuch) const;

private:
    struct Index;
    std::unique_ptr<Index> m_index;
};
