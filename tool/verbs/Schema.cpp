// SPDX-License-Identifier: MIT
//
// A schema from elsewhere.

#include "verbs/Schema.h"

#include <string>
#include <utility>

#include "input/Document.h"
#include "input/Input.h"

namespace orvid_tool {

namespace {

using ko::Orvid::Element;
using ko::Orvid::Path;

constexpr const char* k_schemaPath = "meta.schema";
const std::string k_array = "array";  ///< the key of an array in its holder

}  // namespace

void Schema::load(const Call& call) {
    if (!call.schemaFile) {
        return;
    }
    if (isStandardInput(*call.schemaFile) && isInputAmong(call.files)) {
        throw UsageError("--schema and FILE cannot both be standard input");
    }
    Element text;
    readFileOrText("SCHEMA", *call.schemaFile, text, documentOptions(call.isStrict));
    const Element* const own = Path::tryGetElement(k_schemaPath, text);
    m_root = Element::k_emptyElement;
    m_root.create(k_schemaPath, own != nullptr ? *own : text);
}

bool Schema::isNeededBy(const Element& root) const {
    return !m_root.isNull() && !root.pathExists(k_schemaPath);
}

const Element& Schema::of(const Element& root) const { return isNeededBy(root) ? m_root : root; }

bool Schema::isFor(const Element& root) const {
    return (!m_root.isNull() && (root.isObject() || root.isArray())) ||
           root.pathExists(k_schemaPath);
}

bool Schema::describesNothing() const {
    if (m_root.isNull()) {
        return false;
    }
    const Element& schema = m_root.get(k_schemaPath);
    return !schema.isObject() || (!schema.contains("properties") && !schema.contains("items"));
}

Schema::Loan::Loan(const Schema& schema, Element& root) : m_root(root) {
    if (!schema.isNeededBy(root)) {
        return;
    }
    const Element& lent = schema.m_root.get(k_schemaPath);
    if (root.isObject()) {
        m_hadMeta = root.pathExists(Path::k_meta);
        root.create(k_schemaPath, lent);
        m_isLent = true;
    } else if (root.isArray()) {
        m_holder = ko::Orvid::makeObject({{k_array, nullptr}});
        m_holder.create(Path::toSchemaPath(k_array), lent);
        m_array = m_holder.member(k_array);
        *m_array = std::move(root);
    }
}

void Schema::Loan::correct(Location& location) const {
    if (m_array != nullptr && location.path) {
        location.path->erase(0, k_array.length() + (location.isPointer ? 1 : 0));
    }
}

Schema::Loan::~Loan() {
    if (m_array != nullptr) {
        m_root = std::move(*m_array);
    } else if (m_isLent) {
        Element& holder = m_hadMeta ? m_root.get(Path::k_meta) : m_root;
        holder.object().erase(m_hadMeta ? Path::k_schema : Path::k_meta);
    }
}

}  // namespace orvid_tool
