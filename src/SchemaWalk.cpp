// SPDX-License-Identifier: MIT
//
// The walk through the schema: `properties` and the key for an object step, `items` for an array
// step.

#include "SchemaWalk.h"

#include <ko/Orvid/PathParser.h>

#include "Ancestors.h"
#include "PathStep.h"

namespace ko::Orvid {

namespace {

/// Path text ends at this byte and has no empty keys.
constexpr char k_pathEnd = static_cast<char>(0xFF);

bool isExpressible(const std::string& key) {
    return !key.empty() && key.find(k_pathEnd) == std::string::npos;
}

class SchemaWalker : public PathParserListener {
public:
    explicit SchemaWalker(const Element& root) : m_current(&root) {
        descend(Path::k_meta);
        descend(Path::k_schema);
    }

    bool cbObjectProperty(const std::string& key) override {
        m_isExact = m_isExact && isExpressible(key);
        descend(Path::k_metaObjectProperty);
        descend(key);
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
    void descend(const std::string& key) {
        m_current = m_current == nullptr ? nullptr : childAt(*m_current, key);
    }

    const Element* m_current;  ///< null where the schema holds nothing
    bool m_isExact = true;
};

}  // namespace

std::optional<const Element*> walkToDefault(const Element& element, const Path& path) {
    if (path.str().find(k_pathEnd) != std::string::npos) {
        return std::nullopt;
    }
    SchemaWalker walker(*element.root());
    walkDown(
        element, nullptr, [&](const std::string& key) { walker.cbObjectProperty(key); },
        [&](unsigned int index) { walker.cbArrayItem(index); });
    PathParser(&walker).parse(path.str());
    return walker.result();
}

}  // namespace ko::Orvid
