// SPDX-License-Identifier: MIT
//
// serialize() makes JSON text of an element or a document, in one step, or throws: what it returns
// can be read back. docs/reading-and-writing.md says more; Generator writes to streams, and also
// what cannot be read back.

#pragma once

#include <ko/export.h>
#include <ko/Orvid/Dom.h>
#include <ko/Orvid/Element.h>
#include <ko/Orvid/WriteOptions.h>

#include <string>

namespace ko::Orvid {

/// The element as JSON text. Linear in the size of the tree, of any depth. Throws Exception, whose
/// context is the element in error, for what JSON cannot express: a value of type etEmpty, a NaN,
/// an infinity or another number whose text is none, and strings and keys that are no UTF-8, unless
/// the options allow those. Throws std::bad_alloc.
KO_API std::string serialize(const Element& element,
                             const WriteOptions& options = WriteOptions::compact());
/// The same of a document, without its meta unless it says to write that. Throws Exception where it
/// has no root.
KO_API std::string serialize(const Dom& dom, const WriteOptions& options = WriteOptions::compact());

}  // namespace ko::Orvid
