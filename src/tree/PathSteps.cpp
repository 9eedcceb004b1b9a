// SPDX-License-Identifier: MIT
//
// The steps of a path, taken apart.

#include <ko/Orvid/Path.h>
#include <ko/Orvid/PathParser.h>

namespace ko::Orvid {

namespace {

class StepCollector : public PathParserListener {
public:
    bool cbObjectProperty(const std::string& key) override {
        steps.push_back({key, k_noIndex});
        return true;
    }
    bool cbArrayItem(unsigned int index) override {
        steps.push_back({std::nullopt, index});
        return true;
    }

    std::vector<PathStep> steps;
};

}  // namespace

std::vector<PathStep> Path::steps() const {
    StepCollector collector;
    PathParser(&collector).parse(std::string_view(m_path));
    return std::move(collector.steps);
}

}  // namespace ko::Orvid
