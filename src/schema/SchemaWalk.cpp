// SPDX-License-Identifier: MIT
//
// The walk through the schema: `properties` and the key for an object step, `items` for an array
// step.

#include "schema/SchemaWalk.h"

#include <ko/Orvid/PathParser.h>

#include "path/PathCharacters.h"
#include "path/PlainSteps.h"
#include "schema/SchemaNode.h"
#include "tree/childAt.h"

namespace ko::Orvid {

namespace {

/// Path text ends at k_pathEnd and has no empty keys.
bool isExpressible(std::string_view key) {
    return !key.empty() && key.find(k_pathEnd) == std::string_view::npos;
}

class SchemaWalker : public PathParserListener {
public:
    /// Begins at the description of `element`.
    explicit SchemaWalker(const Element& element) : m_current(element.root()) {
        descend(Path::k_meta);
        descend(Path::k_schema);
        for (const Element* const step : wayTo(element)) {
            if (step->parent()->isArray()) {
                descend(Path::k_metaArrayItem);
            } else {
                takeAny(step->memberKey());
            }
        }
    }

    void take(std::string_view key) {
        descend(Path::k_metaObjectProperty);
        descend(key);
    }
    void take(unsigned int /*index*/) { descend(Path::k_metaArrayItem); }
    /// A key that path text may not be able to express.
    void takeAny(std::string_view key) {
        m_isExact = m_isExact && isExpressible(key);
        take(key);
    }

    bool cbObjectProperty(const std::string& key) override {
        takeAny(key);
        return true;
    }
    bool cbArrayItem(unsigned int index) override {
        take(index);
        return true;
    }
    bool cbParseError(const std::string& /*message*/, const std::string& /*token*/,
                      unsigned int /*start*/, unsigned int /*end*/) override {
        m_isExact = false;
        return false;
    }

    /// Whether the steps so far are those of the path's text.
    bool isExact() const { return m_isExact; }
    /// The default in the description that was reached.
    const Element* toDefault() {
        descend(Path::k_default);
        return m_current;
    }

private:
    void descend(std::string_view key) {
        m_current = m_current == nullptr ? nullptr : childAt(*m_current, key);
    }

    const Element* m_current;  ///< null where the schema holds nothing
    bool m_isExact = true;
};

}  // namespace

std::optional<const Element*> walkToDefault(const Element& element, std::string_view path) {
    const SchemaWalker start(element);
    SchemaWalker walker = start;
    if (!takePlainSteps(path, [&](auto step) { walker.take(step); })) {
        if (path.find(k_pathEnd) != std::string_view::npos) {
            return std::nullopt;
        }
        walker = start;
        PathParser(&walker).parse(path);
    }
    return walker.isExact() ? std::optional(walker.toDefault()) : std::nullopt;
}

std::optional<DataAndSchema> walkToBoth(const Element& element, std::string_view path) {
    SchemaWalker schema(element);
    const Element* data = &element;
    const bool isPlain = takePlainSteps(path, [&](auto step) {
        schema.take(step);
        data = data == nullptr ? nullptr : childAt(*data, step);
    });
    return isPlain && schema.isExact() ? std::optional(DataAndSchema{data, schema.toDefault()})
                                       : std::nullopt;
}

}  // namespace ko::Orvid
