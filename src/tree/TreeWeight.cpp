// SPDX-License-Identifier: MIT
//
// Weighing a tree, with the containers that are still to be weighed in a stack.

#include "tree/TreeWeight.h"

#include <ko/Orvid/Array.h>
#include <ko/Orvid/Object.h>

#include <vector>

#include "tree/Tree.h"

namespace ko::Orvid {

namespace {

std::uint64_t weightOfText(const Element& element) {
    switch (element.type()) {
        case etString:
            return element.string().size();
        case etNumber:
            return element.number().toString().size();
        default:
            return 0;
    }
}

class Weighing {
public:
    explicit Weighing(std::uint64_t enough) : m_enough(enough) {}

    std::uint64_t of(const Element& root) {
        add(root);
        while (!m_open.empty() && m_weight <= m_enough) {
            const Element& element = *m_open.back();
            m_open.pop_back();
            if (element.isArray()) {
                for (const Element& item : element.array()) {
                    add(item);
                }
            } else {
                for (const auto& [key, value] : element.object()) {
                    m_weight += key.size();
                    add(value);
                }
            }
        }
        return m_weight;
    }

private:
    void add(const Element& element) {
        m_weight += k_elementWeight + weightOfText(element);
        if (isContainer(element.data())) {
            m_open.push_back(&element);
        }
    }

    std::uint64_t m_enough;
    std::uint64_t m_weight = 0;
    std::vector<const Element*> m_open;
};

}  // namespace

std::uint64_t weightOf(const Element& root, std::uint64_t enough) {
    return Weighing(enough).of(root);
}

}  // namespace ko::Orvid
