// SPDX-License-Identifier: MIT
//
// Finding a default by walking the schema itself along a data path, without making the text of the
// schema path first.

#pragma once

#include <ko/Orvid/Element.h>

#include <optional>
#include <string_view>

namespace ko::Orvid {

/// The schema's default for the element at `path` below `element`: null when the schema has none,
/// and std::nullopt when only the text of the whole path can say: a malformed path, or keys that
/// path text cannot express.
std::optional<const Element*> walkToDefault(const Element& element, std::string_view path);

/// Where a path leads; null where it leads nowhere.
struct DataAndSchema {
    const Element* inData;
    const Element* inSchema;  ///< the default
};

/// The element at `path` below `element` and the schema's default for it, with the text read once.
/// std::nullopt for a path that is not plain, and where walkToDefault() returns it.
std::optional<DataAndSchema> walkToBoth(const Element& element, std::string_view path);

}  // namespace ko::Orvid
