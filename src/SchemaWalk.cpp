// SPDX-License-Identifier: MIT
//
// The walk through the schema: `properties` and the key for an object step, `items` for an array
// step.

#include "SchemaWalk.h"

#include <ko/Orvid/PathParser.h>

#include <string_view>

#include "Ancestors.h"
#include "PathCharacters.h"
#include "PathStep.h"
#include "PlainSteps.h"

namespace ko::Orvid {

namespace {

/// Path text ends at k_pathEnd and has no empty keys.
bool isExpressible(std::string_view key) {
    return !key.empty() && key.find(k_pathEnd) == std::string_view::npos;
}

class SchemaWalker : public PathParserListener {
public:
    explicit SchemaWalker(const Element& root) : m_current(&root) {
        descend(Path::k_meta);
        descend(Path::k_schema);
    }

    void takeKey(std::string_view key) {
        m_isExact = m_isExact && isExpressible(key);
        descend(Path::k_metaObjectProperty);
        descend(key);
    }
    bool cbObjectProperty(const std::string& key) override {
        takeKey(key);
        return true;
    }
    bool cbArrayItem(unsigned int /*index*/) override {
        descend(Path::k_metaArrayItem);
        return true;
    }
    bool cbParseError(const std::string& /*message*/, const std::string& /*token*/,
                      unsigned int /*start*/, unsigned int /*end*/) override {
        m_isExact = false;
        return false;
    }

    std::optional<const Element*> result() {
        descend(Path::k_default);
        return m_isExact ? std::optional<const Element*>(m_current) : std::nullopt;
    }

private:
    void descend(std::string_view key) {
        m_current = m_current == nullptr ? nullptr : childAt(*m_current, key);
    }

    const Element* m_current;  ///< null where the schema holds nothing
    bool m_isExact = true;
};

/// Takes the steps of a plain path. Answers whether it was one; if not, some were taken.
bool followPlain(std::string_view path, SchemaWalker& walker) {
    PlainSteps steps(path);
    for (PlainSteps::EStep step = steps.next(); step != PlainSteps::EStep::end;
         step = steps.next()) {
        switch (step) {
            case PlainSteps::EStep::key:
                walker.takeKey(steps.key());
                break;
            case PlainSteps::EStep::index:
                walker.cbArrayItem(steps.index());
                break;
            default:
                return false;
        }
    }
    return true;
}

}  // namespace

std::optional<const Element*> walkToDefault(const Element& element, const Path& path) {
    if (path.str().find(k_pathEnd) != std::string::npos) {
        return std::nullopt;
    }
    SchemaWalker walker(*element.root());
    walkDown(
        element, nullptr, [&](const std::string& key) { walker.cbObjectProperty(key); },
        [&](unsigned int index) { walker.cbArrayItem(index); });
    SchemaWalker plain = walker;
    if (followPlain(path.str(), plain)) {
        return plain.result();
    }
    PathParser(&walker).parse(path.str());
    return walker.result();
}

}  // namespace ko::Orvid
