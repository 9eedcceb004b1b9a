// SPDX-License-Identifier: MIT
//
// StepFollower goes through the tokens of a text and knows whether steps lead to where it is. A
// token away from the way costs one comparison.

#pragma once

#include <array>
#include <cstddef>
#include <string_view>
#include <vector>

#include "text/ValueStep.h"

namespace ko::Orvid::text {

class StepFollower {
public:
    /// The steps must outlive it.
    explicit StepFollower(const ValueSteps& steps) : m_steps(steps) {
        m_far.resize(steps.size() > k_near ? steps.size() - k_near : 0);
    }

    /// A value begins. Returns whether it lies on the way: the first steps lead to it.
    bool begin() noexcept { return m_depth == m_way && (m_depth == 0 || isNext()); }
    /// Whether a value that lies on the way, and begins now, is the one that all steps lead to.
    bool isTarget() const noexcept { return m_depth == m_steps.size(); }

    /// A member begins.
    void key(std::string_view key) noexcept {
        if (m_depth == m_way) {
            const ValueStep& step = m_steps[m_depth - 1];
            m_isMember = step.isKey && key == step.key;
            Level& level = last();
            level.isFound = level.isFound || m_isMember;
        }
    }
    /// The value is a container. `isOnWay` is what begin() returned of it.
    void open(bool isArray, bool isOnWay) {
        if (isOnWay && !isTarget()) {
            ++m_way;
            last() = {isArray, false, 0};
        }
        ++m_depth;
    }
    void close() noexcept {
        if (m_depth == m_way) {
            --m_way;
        }
        --m_depth;
    }

    /// How many containers are open.
    std::size_t depth() const noexcept { return m_depth; }
    /// The step that leads on from the container which is open, when it lies on the way and holds
    /// no such child so far, but may get one; otherwise null.
    const ValueStep* missing() noexcept {
        if (m_depth == 0 || m_depth != m_way) {
            return nullptr;
        }
        const Level& level = last();
        const ValueStep& step = m_steps[m_depth - 1];
        const bool isMissing =
            level.isArray ? !step.isKey && step.index == k_noIndex : step.isKey && !level.isFound;
        return isMissing ? &step : nullptr;
    }

private:
    /// A container on the way.
    struct Level {
        bool isArray;
        bool isFound;        ///< whether the member that is wanted has come
        unsigned int count;  ///< of items so far
    };

    static constexpr std::size_t k_near = 8;

    Level& last() noexcept {
        if (m_way <= k_near) {
            return m_near[m_way - 1];
        }
        return m_far[m_way - 1 - k_near];
    }
    bool isNext() noexcept {
        Level& level = last();
        if (!level.isArray) {
            return m_isMember;
        }
        const ValueStep& step = m_steps[m_depth - 1];
        const unsigned int index = level.count;
        level.count += index < k_noIndex ? 1 : 0;
        return !step.isKey && index == step.index && index != k_noIndex;
    }

    const ValueSteps& m_steps;
    std::size_t m_way = 0;  ///< how many of the containers that are open lie on the way
    std::array<Level, k_near> m_near;
    std::vector<Level> m_far;  ///< those after the first few
    std::size_t m_depth = 0;
    bool m_isMember = false;  ///< whether the member that began last is the one that is wanted
};

}  // namespace ko::Orvid::text
