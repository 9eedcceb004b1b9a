// SPDX-License-Identifier: MIT
//
// The documents that are measured: generated ones, which are the same in every run, and three
// well-known files from the folder that the environment variable ORVID_CORPUS names, where that is
// set.

#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "peers/peer.h"

namespace orvid_bench {

struct Document {
    std::string name;
    std::string text;
    std::size_t widest = 0;  ///< the member count of its largest object, where that is unusual
};

std::string tweets(std::size_t count);       ///< texts in several scripts, few numbers
std::string catalogue(std::size_t count);    ///< small nested objects, integers
std::string coordinates(std::size_t count);  ///< pairs of doubles
/// Sections with a few members each, described by a schema with defaults under "meta". The member
/// "port" of each server is left to its default.
std::string settings(std::size_t sections);
/// One object; member i has the key wideKey(i), in no alphabetic order, and the value i.
std::string wideObject(std::size_t members);
std::string wideKey(std::size_t i);
std::string longArray(std::size_t items);  ///< integers
/// Objects within each other, `levels` of them, each under the key "level"; the innermost value
/// is 1.
std::string deepObject(std::size_t levels);

/// The path of all the steps of deepObject(levels).
PathTexts deepPath(std::size_t levels);

/// Each generated shape once, at a size of one to a few megabytes (settings: some kilobytes),
/// divided by `share`.
std::vector<Document> generatedDocuments(std::size_t share = 1);

/// canada, citm_catalog and twitter; none where ORVID_CORPUS is not set. Throws std::runtime_error
/// for a file that is missing.
std::vector<Document> corpusDocuments();

/// The one of all these that has that name. Throws std::runtime_error when there is none.
Document documentNamed(const std::string& name);

}  // namespace orvid_bench
