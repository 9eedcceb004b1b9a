// SPDX-License-Identifier: MIT
//
// Queries as values: made, carried out, turned into paths and pointers.

#include <ko/Orvid/JsonPath.h>

#include <ko/Orvid/Exception.h>
#include <ko/Orvid/PathGenerator.h>

#include <algorithm>
#include <limits>
#include <ostream>
#include <utility>

#include "change/PointerStep.h"
#include "core/TextStream.h"
#include "query/Evaluation.h"
#include "query/NormalizedPath.h"
#include "query/QueryParser.h"

namespace ko::Orvid {

namespace {

constexpr std::size_t k_all = std::numeric_limits<std::size_t>::max();

void appendStep(std::string& query, const std::string& step, bool mayBeIndex) {
    const std::optional<unsigned int> index = mayBeIndex ? pointerIndex(step) : std::nullopt;
    if (index) {
        appendNormalized(query, *index);
    } else if (mayBeIndex && step == k_afterLast) {
        throw Exception("A JSON Pointer with a step \"-\" names no element that a query could");
    } else {
        appendNormalized(query, step);
    }
}

/// The only selectors of a singular query, each given to `name` or `index`.
template<class Name, class Index>
void forEachStep(const CompiledQuery& compiled, const Name& name, const Index& index) {
    if (!compiled.query.isSingular) {
        throw Exception("The query is not for one place: " + compiled.text);
    }
    for (const Segment& segment : compiled.query.segments) {
        const Selector& step = segment.selectors.front();
        if (const auto* const key = std::get_if<std::string>(&step)) {
            name(*key);
            continue;
        }
        const long long position = std::get<long long>(step);
        if (position < 0 || position >= static_cast<long long>(k_noIndex)) {
            throw Exception("Only a query can express the index " + std::to_string(position));
        }
        index(static_cast<unsigned int>(position));
    }
}

}  // namespace

namespace {

CompiledQuery compiled(std::string_view query, const QueryOptions& options) {
    try {
        return QueryParser(query, options).parse();
    } catch (ParseException& error) {
        error.addText(query);
        throw;
    }
}

}  // namespace

JsonPath::JsonPath(std::string_view query, const QueryOptions& options)
    : m_compiled(std::make_shared<const CompiledQuery>(compiled(query, options))) {}

JsonPath JsonPath::fromPath(const Path& path) {
    std::string text = "$";
    for (const PathStep& step : path.steps()) {
        if (step.key) {
            appendNormalized(text, *step.key);
        } else if (step.index != k_noIndex) {
            appendNormalized(text, step.index);
        } else {
            throw Exception("A path with \"[*]\" names no element, so no query can stand for it");
        }
    }
    return JsonPath(text);
}

JsonPath JsonPath::fromPointer(const JsonPointer& pointer) {
    std::string text = "$";
    for (const std::string& step : pointer.steps()) {
        appendStep(text, step, true);
    }
    return JsonPath(text);
}

JsonPath JsonPath::fromPointer(const JsonPointer& pointer, const Element& root) {
    std::string text = "$";
    const Element* parent = &root;
    for (const std::string& step : pointer.steps()) {
        appendStep(text, step, parent == nullptr || parent->isArray());
        parent = parent == nullptr ? nullptr : childAtStep(*parent, step);
    }
    return JsonPath(text);
}

const std::string& JsonPath::str() const noexcept { return m_compiled->text; }

bool JsonPath::isSingular() const noexcept { return m_compiled->query.isSingular; }

const std::vector<std::string>& JsonPath::malformedPatterns() const noexcept {
    return m_compiled->malformedPatterns;
}

Path JsonPath::toPath() const {
    TextStream text;
    PathGenerator generator(text);
    const auto name = [&](const std::string& key) {
        if (key.empty()) {
            throw Exception("Path text cannot express the empty key of a query");
        }
        generator.genObjectProperty(key);
    };
    forEachStep(*m_compiled, name, [&](unsigned int index) { generator.genListItem(index); });
    return text.str();
}

JsonPointer JsonPath::toPointer() const {
    JsonPointer pointer;
    forEachStep(
        *m_compiled, [&](const std::string& key) { pointer.push_back(key); },
        [&](unsigned int index) { pointer.push_back(std::to_string(index)); });
    return pointer;
}

std::vector<const Element*> JsonPath::select(const Element& root) const {
    Visits visits(m_compiled->options.maxVisits);
    return evaluate(*m_compiled, root, k_all, visits);
}

std::vector<Element*> JsonPath::select(Element& root) const {
    if (isSingular()) {
        Element* const found = first(root);
        return found == nullptr ? std::vector<Element*>() : std::vector<Element*>{found};
    }
    const std::vector<const Element*> found = select(std::as_const(root));
    std::vector<Element*> result(found.size());
    std::transform(found.begin(), found.end(), result.begin(),
                   [](const Element* element) { return const_cast<Element*>(element); });
    return result;
}

const Element* JsonPath::first(const Element& root) const {
    if (isSingular()) {
        return follow(m_compiled->query, root);
    }
    Visits visits(m_compiled->options.maxVisits);
    const std::vector<const Element*> found = evaluate(*m_compiled, root, 1, visits);
    return found.empty() ? nullptr : found.front();
}

Element* JsonPath::first(Element& root) const {
    return const_cast<Element*>(first(std::as_const(root)));
}

}  // namespace ko::Orvid

std::ostream& operator<<(std::ostream& out, const ko::Orvid::JsonPath& query) {
    return out << query.str();
}
