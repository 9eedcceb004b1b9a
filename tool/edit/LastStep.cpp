// SPDX-License-Identifier: MIT
//
// Splitting a path by writing all of its steps but the last again.

#include "edit/LastStep.h"

#include "input/PathSteps.h"
#include "output/Failure.h"

namespace orvid_tool {

LastStep::LastStep(const std::string& path) : m_path(path) {
    const ValueSteps steps = stepsOf(path);
    if (steps.empty()) {
        throw UsageError("the empty path is the whole document: a place in it is expected");
    }
    m_holder = pathOf({steps.begin(), steps.end() - 1});
    m_isKey = steps.back().isKey;
    m_key = steps.back().key;
    m_index = steps.back().index;
}

std::string LastStep::text() const {
    if (m_isKey) {
        return m_key;
    }
    return isStar() ? "[*]" : "[" + std::to_string(m_index) + "]";
}

}  // namespace orvid_tool
