// SPDX-License-Identifier: MIT
//
// Splitting a path by writing all of its steps but the last again.

#include "edit/LastStep.h"

#include <sstream>

#include "output/Failure.h"

namespace orvid_tool {

std::string pathOf(const ValueSteps& steps) {
    std::ostringstream path;
    ko::Orvid::PathGenerator generator(path);
    for (const ValueStep& step : steps) {
        if (step.isKey) {
            generator.genObjectProperty(step.key);
        } else {
            generator.genListItem(step.index);
        }
    }
    return path.str();
}

LastStep::LastStep(const std::string& path) : m_path(path) {
    const ValueSteps steps = stepsOf(path);
    if (steps.empty()) {
        throw UsageError("the path must have a step");
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
