// SPDX-License-Identifier: MIT
//
// Scratch, a list that is lent out: filters ask for short lists again and again.

#pragma once

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

#include "query/NodeList.h"

namespace ko::Orvid {

/// The lists that are not in use, with room for those that are.
struct ListPool {
    std::vector<std::unique_ptr<NodeList>> lists;
    std::size_t made = 0;
};

/// An empty list, which goes back in the end.
class Scratch {
public:
    Scratch(ListPool& pool, std::size_t capacity) : m_pool(pool) {
        if (pool.lists.empty()) {
            pool.lists.reserve(pool.made + 1);
            m_list = std::make_unique<NodeList>();
            ++pool.made;
        } else {
            m_list = std::move(pool.lists.back());
            pool.lists.pop_back();
        }
        m_list->reset(capacity);
    }
    ~Scratch() { m_pool.lists.push_back(std::move(m_list)); }
    Scratch(const Scratch&) = delete;
    Scratch& operator=(const Scratch&) = delete;

    NodeList& operator*() noexcept { return *m_list; }
    NodeList* operator->() noexcept { return m_list.get(); }

private:
    ListPool& m_pool;
    std::unique_ptr<NodeList> m_list;
};

}  // namespace ko::Orvid
