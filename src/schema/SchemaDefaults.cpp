// SPDX-License-Identifier: MIT
//
// Filling a document with its schema's defaults: a walk through data and schema at once, with the
// places that are still to be looked into in a stack.

#include <ko/Orvid/SchemaDefaults.h>

#include <ko/Orvid/Array.h>
#include <ko/Orvid/Object.h>

#include <ostream>
#include <unordered_set>
#include <utility>
#include <vector>

#include "core/EnumNames.h"
#include "schema/DefaultsAllowance.h"
#include "schema/SchemaNode.h"
#include "tree/childAt.h"
#include "tree/Tree.h"
#include "tree/TreeMove.h"

namespace ko::Orvid {

namespace {

bool isMetaOf(const Element& root, const Element& element) {
    return element.parent() == &root && root.isObject() && element.memberKey() == Path::k_meta;
}

bool isInMeta(const Element& element) {
    const Element* const root = element.root();
    for (const Element* step = &element; step != root; step = step->parent()) {
        if (isMetaOf(*root, *step)) {
            return true;
        }
    }
    return false;
}

/// The descriptions that have a default below them, reached through objects only.
std::unordered_set<const Element*> promisingBelow(const Element& schema) {
    std::vector<std::pair<const Element*, const Element*>> found{{&schema, nullptr}};
    for (std::size_t i = 0; i < found.size(); ++i) {
        const Element* const current = found[i].first;
        if (const Element::TObject* const properties = propertiesOf(*current)) {
            for (const auto& property : *properties) {
                found.emplace_back(&property.second, current);
            }
        }
        if (const Element* const items = childAt(*current, Path::k_metaArrayItem)) {
            found.emplace_back(items, nullptr);
        }
    }
    // Descriptions stand after those that hold them.
    std::unordered_set<const Element*> promising;
    for (auto entry = found.rbegin(); entry != found.rend(); ++entry) {
        const bool holds = defaultOf(*entry->first) != nullptr || promising.count(entry->first) > 0;
        if (holds && entry->second != nullptr) {
            promising.insert(entry->second);
        }
    }
    return promising;
}

class Filling {
public:
    Filling(Element& element, const Element& schema, const FillOptions& options)
        : m_root(*element.root()),
          m_promising(promisingBelow(schema)),
          m_allowance(options.maxElements, m_root) {
        m_open.emplace_back(&element, &schema);
    }

    std::size_t run() {
        try {
            fillAll();
        } catch (...) {
            undo();
            throw;
        }
        return m_count;
    }

private:
    /// A member that was written.
    struct Written {
        Element* object;
        const std::string* key;  ///< the schema's
        bool wasEmpty;           ///< it was there, of type etEmpty
    };

    void fillAll() {
        while (!m_open.empty()) {
            const auto [data, schema] = m_open.back();
            m_open.pop_back();
            if (data->isObject()) {
                fillObject(*data, *schema);
            } else if (data->isArray()) {
                fillArray(*data, *schema);
            }
        }
    }

    void undo() noexcept {
        for (auto written = m_written.rbegin(); written != m_written.rend(); ++written) {
            Element::TObject& members = written->object->object();
            const auto member = members.find(*written->key);
            if (member == members.end()) {
                continue;
            }
            if (written->wasEmpty) {
                Element::destroy(member->second.data());
                Element::create(member->second.data(), etEmpty, &member->second);
            } else {
                members.erase(member);
            }
        }
    }

    void fillObject(Element& data, const Element& schema) {
        const Element::TObject* const properties = propertiesOf(schema);
        if (properties == nullptr) {
            return;
        }
        for (const auto& [key, description] : *properties) {
            const auto present = data.object().find(key);
            Element* child = present == data.object().end() ? nullptr : &present->second;
            if (child != nullptr && isMetaOf(m_root, *child)) {
                continue;
            }
            if (child == nullptr || child->isEmpty()) {
                child = write(data, key, description, child != nullptr);
            }
            if (child != nullptr) {
                m_open.emplace_back(child, &description);
            }
        }
    }

    void fillArray(Element& data, const Element& schema) {
        const Element* const description = childAt(schema, Path::k_metaArrayItem);
        if (description == nullptr) {
            return;
        }
        for (Element& item : data.array()) {
            m_open.emplace_back(&item, description);
        }
    }

    /// The member with its default; null where there is nothing to write.
    Element* write(Element& data, const std::string& key, const Element& description,
                   bool wasEmpty) {
        const Element* const value = defaultOf(description);
        if (value == nullptr && m_promising.count(&description) == 0) {
            return nullptr;
        }
        m_allowance.take(data, key, value);
        Element made;
        if (value != nullptr) {
            copyValue(made, *value);
            ++m_count;
        } else {
            becomeContainer(made, etObject);
        }
        m_written.push_back({&data, &key, wasEmpty});
        Element& member = data.object().resetMember(key);
        swapValues(member, made);
        return &member;
    }

    const Element& m_root;
    std::unordered_set<const Element*> m_promising;
    std::vector<std::pair<Element*, const Element*>> m_open;
    std::vector<Written> m_written;
    DefaultsAllowance m_allowance;
    std::size_t m_count = 0;
};

std::string quoted(const std::string& text) { return "\"" + text + "\""; }

std::string defaultPathOf(const ValueOrigin& origin) {
    return quoted(origin.schemaPath + "." + Path::k_default);
}

/// The path of the element followed by the path.
std::string joined(const std::string& base, const std::string& path) {
    const bool needsDot =
        !base.empty() && !path.empty() && path.front() != '.' && path.front() != '[';
    return base + (needsDot ? "." : "") + path;
}

const NamedEnum k_sourceNames[] = {ORVID_ENUM_NAME("nowhere"), ORVID_ENUM_NAME("data"),
                                   ORVID_ENUM_NAME("schema")};
const NamedEnum k_unknownSource = ORVID_ENUM_NAME(">>Unknown<<");

const NamedEnum& nameOf(ValueSource source) {
    const NamedEnum* const name = nameAt(k_sourceNames, static_cast<int>(source));
    return name == nullptr ? k_unknownSource : *name;
}

}  // namespace

std::size_t fillDefaults(Element& element, const FillOptions& options) {
    const Element* const schema = isInMeta(element) ? nullptr : descriptionOf(element);
    return schema == nullptr ? 0 : Filling(element, *schema, options).run();
}

std::string ValueOrigin::text() const {
    switch (source) {
        case ValueSource::data:
            return quoted(path) + " has a value in the data.";
        case ValueSource::schema:
            return quoted(path) + " has no value in the data; its default is at " +
                   defaultPathOf(*this) + ".";
        default:
            return quoted(path) + " has no value in the data, and there is no default at " +
                   defaultPathOf(*this) + ".";
    }
}

ValueOrigin explainDefault(const Element& element, const Path& path) {
    const Element& none = Element::k_emptyElement;
    const Element& fallback = element.tryGetDefault(path, none);
    const Element& value = element.tryGet(path, none);
    ValueOrigin origin;
    origin.path = joined(element.path(), path.str());
    origin.schemaPath = element.schemaPath() +
                        Path::toSchemaPath(path).str().substr(Path::toSchemaPath("").str().size());
    if (&value != &none) {
        origin.source = ValueSource::data;
        origin.value = &value;
    } else if (&fallback != &none) {
        origin.source = ValueSource::schema;
        origin.value = &fallback;
    }
    return origin;
}

}  // namespace ko::Orvid

std::ostream& operator<<(std::ostream& out, ko::Orvid::ValueSource source) {
    return out << ko::Orvid::nameOf(source);
}

std::wostream& operator<<(std::wostream& out, ko::Orvid::ValueSource source) {
    return out << ko::Orvid::nameOf(source);
}
