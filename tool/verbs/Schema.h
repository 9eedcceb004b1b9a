// SPDX-License-Identifier: MIT
//
// Schema, the description of documents that carry none themselves.

#pragma once

#include <ko/Orvid.h>

#include "call/Call.h"
#include "output/Failure.h"

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

    /// Whether Loan's root has a schema then: its own, or where it is an object or array the loaded
    /// one.
    bool isFor(const ko::Orvid::Element& root) const;

    /// Whether one was loaded that has no place for the defaults of members or items.
    bool describesNothing() const;

    /// Gives a root without a schema of its own the loaded one, in meta.schema, while this lives.
    /// An array, which has no place for it, becomes a member of an object that has.
    class Loan {
    public:
        Loan(const Schema& schema, ko::Orvid::Element& root);
        Loan(const Loan&) = delete;
        Loan& operator=(const Loan&) = delete;
        ~Loan();

        /// What was the root, wherever it is now.
        ko::Orvid::Element& described() { return m_array == nullptr ? m_root : *m_array; }
        /// Makes the path of an error in it start at the root.
        void correct(Location& location) const;

    private:
        ko::Orvid::Element& m_root;
        bool m_isLent = false;
        bool m_hadMeta = false;
        ko::Orvid::Element m_holder;            ///< of an array
        ko::Orvid::Element* m_array = nullptr;  ///< in the holder; null where the root is no array
    };

private:
    bool isNeededBy(const ko::Orvid::Element& root) const;

    ko::Orvid::Element m_root;  ///< { "meta": { "schema": ... } }, or null
};

}  // namespace orvid_tool
