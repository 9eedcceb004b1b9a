// SPDX-License-Identifier: MIT
//
// Schema, the description of documents that carry none themselves.

#pragma once

#include <ko/Orvid.h>

#include "call/Call.h"

namespace orvid_tool {

class Schema {
public:
    /// Reads the schema's file, where there is one: a document with a schema in meta.schema, or
    /// else a schema itself. It is read as documentOptions() says. Throws Failure, and UsageError
    /// where a document is standard input as well.
    void load(const Call& call);

    /// The root to look defaults up from: the document's own where it has a schema in meta.schema
    /// or none was loaded, or else one that holds the loaded schema alone.
    const ko::Orvid::Element& of(const ko::Orvid::Element& root) const;

    /// Whether Loan's root has a schema then: its own, or where it is an object the loaded one.
    bool isFor(const ko::Orvid::Element& root) const;

    /// Gives a root without a schema of its own the loaded one, in meta.schema, while this lives.
    class Loan {
    public:
        Loan(const Schema& schema, ko::Orvid::Element& root);
        Loan(const Loan&) = delete;
        Loan& operator=(const Loan&) = delete;
        ~Loan();

    private:
        ko::Orvid::Element* m_root = nullptr;  ///< null when nothing was lent
        bool m_hadMeta = false;
    };

private:
    bool isNeededBy(const ko::Orvid::Element& root) const;

    ko::Orvid::Element m_root;  ///< { "meta": { "schema": ... } }, or null
};

}  // namespace orvid_tool
