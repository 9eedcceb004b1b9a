// SPDX-License-Identifier: MIT
//
// A schema from elsewhere.

#include "verbs/Schema.h"

#include "input/Document.h"
#include "input/Input.h"

namespace orvid_tool {

namespace {

using ko::Orvid::Element;
using ko::Orvid::Path;

constexpr const char* k_schemaPath = "meta.schema";

}  // namespace

void Schema::load(const Call& call) {
    if (!call.schemaFile) {
        return;
    }
    if (isStandardInput(*call.schemaFile) && isInputAmong(call.files)) {
        throw UsageError("--schema and FILE cannot both be standard input");
    }
    Element text;
    readFile(*call.schemaFile, text, documentOptions(call.isStrict));
    const Element* const own = Path::tryGetElement(k_schemaPath, text);
    m_root = Element::k_emptyElement;
    m_root.create(k_schemaPath, own != nullptr ? *own : text);
}

bool Schema::isNeededBy(const Element& root) const {
    return !m_root.isNull() && !root.pathExists(k_schemaPath);
}

const Element& Schema::of(const Element& root) const { return isNeededBy(root) ? m_root : root; }

bool Schema::isFor(const Element& root) const {
    return root.isObject() && (!m_root.isNull() || root.pathExists(k_schemaPath));
}

Schema::Loan::Loan(const Schema& schema, Element& root) {
    if (schema.isNeededBy(root) && root.isObject()) {
        m_hadMeta = root.pathExists(Path::k_meta);
        root.create(k_schemaPath, schema.m_root.get(k_schemaPath));
        m_root = &root;
    }
}

Schema::Loan::~Loan() {
    if (m_root != nullptr) {
        Element& holder = m_hadMeta ? m_root->get(Path::k_meta) : *m_root;
        holder.object().erase(m_hadMeta ? Path::k_schema : Path::k_meta);
    }
}

}  // namespace orvid_tool
